#pragma once
// sonamark-cli to-file: reads a text file (or standard input) into a WAV or MP3 file.
#include <QStringList>
#include <QTextStream>
#include <optional>

namespace platform::espeak {
class EspeakEngine;
}

namespace cli {

inline constexpr auto kToFileCommand = "to-file";

// Exit codes: 0 the file was made, 1 it could not be (the reason on err), 2 bad arguments.
// The text of to-file --help.
QString ToFileUsageText();

int RunToFile(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &out, QTextStream &err);

// The value of --bitrate: kbps when it is one of the MP3 bit rates, else nothing, with
// *problem saying which are (to-file and batch take the same ones).
std::optional<int> Mp3BitRateOption(std::optional<int> kbps, QString *problem);

} // namespace cli
