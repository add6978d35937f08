#pragma once
// sonamark-cli's speech subcommands:
//   voices                      the voices as the reader's list shows them, one a line
//   speak [--voice V] [--rate R] [--volume N] [--pitch P] TEXT|-
//                               speaks to the default output and returns when done
//   to-file [options] INPUT OUTPUT  reads a text file into a WAV or MP3 file (--help)
//   batch [options] FILE...     reads documents into MP3 files beside them (--help)
#include <QStringList>
#include <QTextStream>

namespace cli {

// True when args name a speech subcommand.
bool IsSpeechCommand(const QStringList &args);
// Runs it (an event loop must be possible: call from main with a QCoreApplication).
int RunSpeechCommand(const QStringList &args, QTextStream &out, QTextStream &err);

} // namespace cli
