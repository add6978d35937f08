#pragma once
// sonamark-cli batch [--jobs N] [--bitrate KBPS] [--quality ROW] [--exceptions] FILE...
// Reads text documents into MP3 files beside them, several at a time: each document is
// converted by a worker process of this program (the speech library keeps one voice per
// process), up to N at once, one per core by default.
#include <QStringList>
#include <QTextStream>

namespace platform::espeak {
class EspeakEngine;
}

namespace cli {

inline constexpr const char *kBatchCommand = "batch";
// The worker's own first argument: one document, progress lines on standard output.
inline constexpr const char *kBatchWorkerFlag = "--worker";
// A worker's option: the text to speak comes on standard input (the FILE names the MP3);
// with it come --voice N and --pitch P. Its output has the line "spoken" between the
// progress lines when the speech is done and encoding begins.
inline constexpr const char *kBatchTextOnInputFlag = "--text-stdin";

// The parent: hands the documents to workers, shows the progress, reports. Exit status
// 0 when every document was converted, 1 when some were skipped or failed (each listed
// on err), 2 for bad arguments.
// The text of batch --help.
QString BatchUsageText();

int RunBatch(const QStringList &args, QTextStream &out, QTextStream &err);
// A worker (args without the command, starting with kBatchWorkerFlag): converts one
// document. Exit status 0 converted, 1 failed, 3 skipped; the reason on err.
int RunBatchWorker(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &out,
                   QTextStream &err);

} // namespace cli
