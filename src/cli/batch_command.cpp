#include "cli/batch_command.h"

#include "audio/batch_conversion.h"
#include "audio/lame_encoder.h"
#include "audio/read_to_file_vars.h"
#include "cli/to_file_command.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/headless/headless_services.h"
#include "platform/linux/antiword_files.h"
#include "reader/exceptions.h"
#include "shell/app_state.h"
#include "shell/data_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryFile>
#include <QThread>
#include <QTimer>
#include <csignal>
#include <deque>
#include <memory>
#include <optional>
#include <unistd.h>

namespace cli {

namespace {

constexpr int kExitConverted = 0;
constexpr int kExitNotAll = 1;
constexpr int kExitUsage = 2;
constexpr int kExitSkipped = 3;  // worker: the document was left out
constexpr int kMaxJobs = 64;
constexpr int kMaxVoice = 10000;
constexpr int kDefaultQualityRow = 3;  // 128 kbps, as to-file
constexpr int kProgressBarWidth = 40;
constexpr int kCancelPollMs = 50;
constexpr int kWorkerStopWaitMs = 5000;
const char *const kProgressTag = "progress ";
const char *const kSpokenTag = "spoken";

const char *const kUsage =
    "usage: sonamark-cli batch [--jobs N] [--bitrate KBPS] [--quality ROW] [--exceptions] FILE...\n"
    "Reads each document (.txt, .rtf, .xml or .doc) into an MP3 file beside it: the name\n"
    "without its last three characters, plus MP3. An MP3 of that name is replaced.\n"
    "  --jobs N        documents converted at once (default: one per core)\n"
    "  --quality ROW   MP3 quality 0 .. 3 (3): 32, 64, 96 or 128 kbps with its preset\n"
    "  --bitrate KBPS  MP3 bit rate: 32 40 48 56 64 80 96 112 128 160 192 224 256 320\n"
    "  --exceptions    apply the pronunciation exceptions of the data folder first\n"
    "Documents with another ending, missing, unreadable or without text are skipped; a .doc\n"
    "needs antiword. A progress bar goes to standard error when it is a terminal. Ctrl+C\n"
    "cancels. Exit status: 0 all converted, 1 some skipped or failed (listed on standard\n"
    "error), 2 bad arguments.\n";

volatile std::sig_atomic_t g_interrupted = 0;
void OnInterrupt(int) { g_interrupted = 1; }

struct Options {
    int jobs = 0;
    int qualityRow = kDefaultQualityRow;
    std::optional<int> bitRate;
    bool exceptions = false;
    bool help = false;
    bool worker = false;
    // A worker for the batch window: the text as the window speaks it comes on standard
    // input, with the window's voice and pitch.
    bool textOnInput = false;
    int voice = -1;
    QString pitch = QStringLiteral("0");
    QStringList files;
};

std::optional<Options> Parse(const QStringList &args, QString *problem)
{
    Options o;
    bool filesOnly = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        auto number = [&](int low, int high) -> std::optional<int> {
            bool ok = false;
            const int v = i + 1 < args.size() ? args.at(++i).toInt(&ok) : 0;
            if (!ok || v < low || v > high) {
                *problem = QStringLiteral("%1 takes a number from %2 to %3").arg(a).arg(low).arg(high);
                return std::nullopt;
            }
            return v;
        };
        if (filesOnly || !a.startsWith(QLatin1String("--"))) {
            if (a == QLatin1String("-h") && !filesOnly)
                o.help = true;
            else
                o.files << a;
        } else if (a == QLatin1String("--")) {
            filesOnly = true;
        } else if (a == QLatin1String("--help")) {
            o.help = true;
        } else if (a == QLatin1String(kBatchWorkerFlag)) {
            o.worker = true;
        } else if (a == QLatin1String("--jobs")) {
            const auto n = number(1, kMaxJobs);
            if (!n)
                return std::nullopt;
            o.jobs = *n;
        } else if (a == QLatin1String("--quality")) {
            const auto n = number(0, audio::kMp3QualityCount - 1);
            if (!n)
                return std::nullopt;
            o.qualityRow = *n;
        } else if (a == QLatin1String("--bitrate")) {
            const auto n = Mp3BitRateOption(number(1, 1000), problem);
            if (!n)
                return std::nullopt;
            o.bitRate = *n;
        } else if (a == QLatin1String("--exceptions")) {
            o.exceptions = true;
        } else if (o.worker && a == QLatin1String(kBatchTextOnInputFlag)) {
            o.textOnInput = true;
        } else if (o.worker && a == QLatin1String("--voice")) {
            const auto n = number(-1, kMaxVoice);
            if (!n)
                return std::nullopt;
            o.voice = *n;
        } else if (o.worker && a == QLatin1String("--pitch") && i + 1 < args.size()) {
            o.pitch = args.at(++i);
        } else {
            *problem = QStringLiteral("unknown option ") + a;
            return std::nullopt;
        }
    }
    if (!o.help && o.files.isEmpty()) {
        *problem = QStringLiteral("batch takes at least one FILE");
        return std::nullopt;
    }
    if (o.worker && o.files.size() != 1) {
        *problem = QStringLiteral("a batch worker takes one FILE");
        return std::nullopt;
    }
    return o;
}

class ProgressBar {
public:
    explicit ProgressBar(QTextStream &err) : m_err(err), m_on(isatty(STDERR_FILENO)) {}
    void show(int percent, int done, int total)
    {
        if (!m_on || (percent == m_last && done == m_done))
            return;
        m_last = percent;
        m_done = done;
        const int filled = percent * kProgressBarWidth / 100;
        m_err << "\r[" << QString(filled, QLatin1Char('#')) << QString(kProgressBarWidth - filled, QLatin1Char('.'))
              << "] " << percent << "% " << done << "/" << total << Qt::flush;
    }
    void end()
    {
        if (m_on && m_last >= 0)
            m_err << "\n" << Qt::flush;
        m_last = -1;
    }

private:
    QTextStream &m_err;
    bool m_on;
    int m_last = -1;
    int m_done = -1;
};

// One document's fate in the parent.
struct Entry {
    QString file;
    enum State { Waiting, Running, Converted, Skipped, Failed } state = Waiting;
    int percent = 0;
    QString reason;
};

QStringList WorkerArgs(const Options &o, const QString &file)
{
    QStringList args{QLatin1String(kBatchCommand), QLatin1String(kBatchWorkerFlag), QStringLiteral("--quality"),
                     QString::number(o.qualityRow)};
    if (o.bitRate)
        args << QStringLiteral("--bitrate") << QString::number(*o.bitRate);
    if (o.exceptions)
        args << QStringLiteral("--exceptions");
    args << QStringLiteral("--") << file;
    return args;
}

} // namespace

QString BatchUsageText() { return QString::fromLatin1(kUsage); }

int RunBatch(const QStringList &args, QTextStream &out, QTextStream &err)
{
    QString problem;
    const std::optional<Options> parsed = Parse(args, &problem);
    if (!parsed) {
        err << "batch: " << problem << "\n" << kUsage;
        return kExitUsage;
    }
    const Options &o = *parsed;
    if (o.help) {
        out << kUsage;
        return kExitConverted;
    }
    const int jobs = o.jobs > 0 ? o.jobs : qMax(1, QThread::idealThreadCount());

    std::vector<Entry> entries;
    for (const QString &file : o.files) {
        Entry e;
        e.file = file;
        // What can be told from the name is not worth a process.
        if (!audio::FileFormatIsOk(file)) {
            e.state = Entry::Skipped;
            e.reason = audio::SkipReason(audio::BatchSkip::NotADocument);
        } else if (!QFileInfo(file).isFile()) {
            e.state = Entry::Skipped;
            e.reason = audio::SkipReason(audio::BatchSkip::Missing);
        }
        entries.push_back(e);
    }

    g_interrupted = 0;
    auto previousInt = std::signal(SIGINT, OnInterrupt);
    auto previousTerm = std::signal(SIGTERM, OnInterrupt);
    ProgressBar bar(err);
    const QString self = QCoreApplication::applicationFilePath();
    QEventLoop loop;
    std::deque<size_t> waiting;
    for (size_t i = 0; i < entries.size(); ++i)
        if (entries[i].state == Entry::Waiting)
            waiting.push_back(i);
    std::vector<std::unique_ptr<QProcess>> running;
    int finished = 0;
    const int total = int(entries.size());
    auto counted = [&] {
        int done = 0;
        for (const Entry &e : entries)
            done += e.state != Entry::Waiting && e.state != Entry::Running;
        return done;
    };
    auto showProgress = [&] {
        int sum = 0;
        for (const Entry &e : entries)
            sum += e.state == Entry::Running ? e.percent : e.state == Entry::Waiting ? 0 : 100;
        bar.show(total ? sum / total : 100, counted(), total);
    };
    std::function<void()> startNext = [&] {
        while (!g_interrupted && int(running.size()) < jobs && !waiting.empty()) {
            const size_t index = waiting.front();
            waiting.pop_front();
            auto process = std::make_unique<QProcess>();
            QProcess *p = process.get();
            entries[index].state = Entry::Running;
            QObject::connect(p, &QProcess::readyReadStandardOutput, p, [&, p, index] {
                while (p->canReadLine()) {
                    const QByteArray line = p->readLine().trimmed();
                    if (line.startsWith(kProgressTag))
                        entries[index].percent = line.mid(int(qstrlen(kProgressTag))).toInt();
                }
                showProgress();
            });
            QObject::connect(p, &QProcess::finished, p, [&, p, index](int code, QProcess::ExitStatus status) {
                Entry &e = entries[index];
                // The worker's reason is its last line; the speech library may say more before it.
                const QString why = QString::fromUtf8(p->readAllStandardError()).trimmed().section(QLatin1Char('\n'), -1);
                if (status == QProcess::NormalExit && code == kExitConverted) {
                    e.state = Entry::Converted;
                } else if (status == QProcess::NormalExit && code == kExitSkipped) {
                    e.state = Entry::Skipped;
                    e.reason = why;
                } else {
                    e.state = Entry::Failed;
                    e.reason = why.isEmpty() ? QStringLiteral("the worker stopped (%1)").arg(code) : why;
                }
                ++finished;
                p->deleteLater();
                for (auto it = running.begin(); it != running.end(); ++it) {
                    if (it->get() == p) {
                        it->release();  // deleteLater owns it now
                        running.erase(it);
                        break;
                    }
                }
                showProgress();
                startNext();
                if (running.empty())
                    loop.quit();
            });
            p->start(self, WorkerArgs(o, entries[index].file));
            running.push_back(std::move(process));
        }
    };
    QTimer cancelWatch;
    cancelWatch.setInterval(kCancelPollMs);
    QObject::connect(&cancelWatch, &QTimer::timeout, &loop, [&] {
        if (!g_interrupted)
            return;
        cancelWatch.stop();
        for (const auto &p : running)
            p->terminate();
    });
    showProgress();
    startNext();
    if (!running.empty()) {
        cancelWatch.start();
        loop.exec();
    }
    for (const auto &p : running)
        p->waitForFinished(kWorkerStopWaitMs);
    bar.end();
    std::signal(SIGINT, previousInt);
    std::signal(SIGTERM, previousTerm);

    int converted = 0;
    bool all = true;
    for (const Entry &e : entries) {
        if (e.state == Entry::Converted) {
            ++converted;
            continue;
        }
        all = false;
        if (e.state == Entry::Skipped)
            err << "skipped " << e.file << ": " << e.reason << "\n";
        else if (e.state == Entry::Failed)
            err << "failed " << e.file << ": " << e.reason << "\n";
        else if (!g_interrupted)
            err << "not converted " << e.file << "\n";
    }
    if (g_interrupted)
        out << audio::BatchCancelReport(converted) << "\n";
    else
        out << audio::BatchReport(converted) << "\n";
    return all && !g_interrupted ? kExitConverted : kExitNotAll;
}

int RunBatchWorker(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &out,
                   QTextStream &err)
{
    QString problem;
    const std::optional<Options> parsed = Parse(args, &problem);
    if (!parsed || !parsed->worker) {
        err << "batch: " << (parsed ? QStringLiteral("not a worker") : problem) << "\n";
        return kExitUsage;
    }
    const Options &o = *parsed;
    const QString &file = o.files.first();
    platform::headless::HeadlessServices services(err);
    platform::AntiwordFiles word;
    platform::services().wordFiles = &word;

    QString text;
    const audio::BatchSkip skip = o.textOnInput ? audio::BatchSkip::None : audio::ReadBatchDocument(file, &text);
    if (o.textOnInput) {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly)) {
            err << "cannot read the text from standard input\n";
            return kExitNotAll;
        }
        text = QString::fromUtf8(input.readAll());
    }
    if (skip != audio::BatchSkip::None) {
        err << audio::SkipReason(skip) << "\n";
        return kExitSkipped;
    }
    if (o.exceptions) {
        shell::app().AppFolder = shell::DataFolderPath();
        reader::GetExceptions();
        reader::exceptionsState().ExceptionsOn = true;
        reader::MakeExceptions(text);
    }
    // Workers run side by side: each speaks into a wave file of its own in the temporary
    // folder, never the shared one of the data folder.
    QTemporaryFile wav(QDir::tempPath() + QStringLiteral("/sonamark-batch-XXXXXX.wav"));
    if (!wav.open()) {
        err << "cannot make a temporary wave file: " << wav.errorString() << "\n";
        return kExitNotAll;
    }
    wav.close();

    g_interrupted = 0;
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
    audio::ReadToFileVars &vars = audio::readToFileVars();
    vars.MakeMp3 = true;
    vars.CancelEncoding = false;
    const audio::Mp3Quality &quality = audio::Mp3Qualities()[o.qualityRow];
    audio::BatchFileRun run;
    run.text = text;
    run.wavName = wav.fileName();
    run.mp3Name = audio::BatchMp3Name(file);
    run.voice = o.voice;
    run.pitch = o.pitch;
    run.preset = quality.preset;
    run.bitRate = o.bitRate.value_or(audio::BitRates()[quality.bitRateRow]);
    int last = -1;
    run.DoEvents = [&vars] {
        QCoreApplication::processEvents();
        if (g_interrupted)
            vars.CancelEncoding = true;
    };
    run.speechCancelled = [] { return g_interrupted != 0; };
    run.spoken = [&out] { out << kSpokenTag << "\n" << Qt::flush; };
    run.progress = [&out, &last](int percent) {
        if (percent == last)
            return;
        last = percent;
        out << kProgressTag << percent << "\n" << Qt::flush;
    };
    audio::cLameEncoder encoder;
    QString error;
    const audio::BatchOutcome outcome = audio::ConvertOneFile(engine, encoder, run, &error);
    audio::KillFileIfExists(run.wavName);
    switch (outcome) {
    case audio::BatchOutcome::Converted:
        return kExitConverted;
    case audio::BatchOutcome::SpeechCancelled:
    case audio::BatchOutcome::EncodingCancelled:
        audio::KillFileIfExists(run.mp3Name);  // a cut-off MP3 is no conversion
        err << "cancelled\n";
        return kExitNotAll;
    case audio::BatchOutcome::SpeechFailed:
    case audio::BatchOutcome::EncodingFailed:
        break;
    }
    audio::KillFileIfExists(run.mp3Name);
    err << error << "\n";
    return kExitNotAll;
}

} // namespace cli
