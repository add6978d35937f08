#pragma once
// sonamark-cli to-file: reads a text file (or standard input) into a WAV or MP3 file.
#include <QStringList>
#include <QTextStream>

namespace platform::espeak {
class EspeakEngine;
}

namespace cli {

inline constexpr auto kToFileCommand = "to-file";

// Exit codes: 0 the file was made, 1 it could not be (the reason on err), 2 bad arguments.
int RunToFile(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &out, QTextStream &err);

} // namespace cli
