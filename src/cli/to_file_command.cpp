#include "cli/to_file_command.h"

#include "audio/lame_encoder.h"
#include "audio/pcm_queue.h"
#include "audio/read_to_file.h"
#include "audio/speech_formats.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/headless/headless_services.h"
#include "platform/linux/antiword_files.h"
#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/rtf_reader.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/data_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QThread>
#include <atomic>
#include <csignal>
#include <optional>
#include <thread>
#include <unistd.h>

namespace cli {

namespace {

constexpr int kExitMade = 0;
constexpr int kExitNotMade = 1;
constexpr int kExitUsage = 2;
constexpr int kDefaultWavFormatRow = 9;  // 22 kHz, 16 bit [Standard]: the engine's own rate
constexpr int kDefaultQualityRow = 3;    // 128 kbps, the dialog's first bit rate
constexpr int kProgressBarWidth = 40;

const char *const kUsage =
    "usage: sonamark-cli to-file [--voice V] [--rate R] [--volume N] [--pitch P] [--format ROW]\n"
    "                            [--quality ROW] [--bitrate KBPS] [--exceptions] INPUT OUTPUT\n"
    "Reads INPUT (.txt, .rtf, .xml or .doc, or - for standard input) into OUTPUT. An OUTPUT\n"
    "ending in .wav is a wave file; any other gets .mp3 if it has no such ending and is an MP3.\n"
    "  --voice V       a voice as `sonamark-cli voices` lists it\n"
    "  --rate R        -10 .. 10 (0)            --volume N   0 .. 100 (100)\n"
    "  --pitch P       -10 .. 10 (0)\n"
    "  --format ROW    speech format of a .wav, 0 .. 30 (9: 22 kHz, 16 bit); row 18 (True\n"
    "                  Speech) has no codec here. An MP3 is made from 44 kHz, 16 bit speech.\n"
    "  --quality ROW   MP3 quality 0 .. 3 (3): 32, 64, 96 or 128 kbps with its preset\n"
    "  --bitrate KBPS  MP3 bit rate: 32 40 48 56 64 80 96 112 128 160 192 224 256 320\n"
    "  --exceptions    apply the pronunciation exceptions of the data folder first\n"
    "A progress bar goes to standard error when it is a terminal. Ctrl+C cancels.\n"
    "Exit status: 0 the file was made, 1 it could not be (with the reason), 2 bad arguments.\n";

volatile std::sig_atomic_t g_interrupted = 0;
void OnInterrupt(int) { g_interrupted = 1; }

struct Options {
    QString voice, pitch = QStringLiteral("0"), input, output;
    int rate = 0, volume = 100, formatRow = kDefaultWavFormatRow, qualityRow = kDefaultQualityRow;
    std::optional<int> bitRate;
    bool exceptions = false, help = false;
};

std::optional<int> IntIn(const QString &text, int low, int high)
{
    bool ok = false;
    const int v = text.toInt(&ok);
    return ok && v >= low && v <= high ? std::optional<int>(v) : std::nullopt;
}

// The options, or a message saying what is wrong with them.
std::optional<Options> Parse(const QStringList &args, QString *problem)
{
    Options o;
    QStringList positional;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        auto value = [&]() -> std::optional<QString> {
            if (i + 1 >= args.size())
                return std::nullopt;
            return args.at(++i);
        };
        auto number = [&](int low, int high) -> std::optional<int> {
            const auto v = value();
            const auto n = v ? IntIn(*v, low, high) : std::nullopt;
            if (!n)
                *problem = QStringLiteral("%1 takes a number from %2 to %3").arg(a).arg(low).arg(high);
            return n;
        };
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            o.help = true;
        } else if (a == QLatin1String("--voice")) {
            const auto v = value();
            if (!v) { *problem = QStringLiteral("--voice takes a voice name"); return std::nullopt; }
            o.voice = *v;
        } else if (a == QLatin1String("--pitch")) {
            const auto n = number(-10, 10);
            if (!n) return std::nullopt;
            o.pitch = QString::number(*n);
        } else if (a == QLatin1String("--rate")) {
            const auto n = number(-10, 10);
            if (!n) return std::nullopt;
            o.rate = *n;
        } else if (a == QLatin1String("--volume")) {
            const auto n = number(0, 100);
            if (!n) return std::nullopt;
            o.volume = *n;
        } else if (a == QLatin1String("--format")) {
            const auto n = number(0, audio::kSpeechFormatCount - 1);
            if (!n) return std::nullopt;
            o.formatRow = *n;
        } else if (a == QLatin1String("--quality")) {
            const auto n = number(0, audio::kMp3QualityCount - 1);
            if (!n) return std::nullopt;
            o.qualityRow = *n;
        } else if (a == QLatin1String("--bitrate")) {
            const auto n = Mp3BitRateOption(number(1, 1000), problem);
            if (!n)
                return std::nullopt;
            o.bitRate = *n;
        } else if (a == QLatin1String("--exceptions")) {
            o.exceptions = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            *problem = QStringLiteral("unknown option ") + a;
            return std::nullopt;
        } else {
            positional << a;
        }
    }
    if (o.help)
        return o;
    if (positional.size() != 2) {
        *problem = QStringLiteral("to-file takes INPUT and OUTPUT");
        return std::nullopt;
    }
    o.input = positional.at(0);
    // A device (/dev/stdout, /dev/full) is written as it is named.
    const QFileInfo target(positional.at(1));
    const bool device = target.exists() && !target.isFile() && !target.isDir();
    o.output = device ? positional.at(1) : audio::OutputMp3Name(positional.at(1));
    return o;
}

// The text of INPUT, or nothing with *error.
std::optional<QString> ReadInput(const QString &input, QString *error)
{
    if (reader::IsWordFile(input)) {
        platform::AntiwordFiles word;
        QString text;
        if (!word.installed() || !word.readText(input, &text, error)) {
            if (error->isEmpty())
                *error = QStringLiteral("Cannot read %1: antiword is not installed.").arg(input);
            return std::nullopt;
        }
        return text;
    }
    QFile file;
    const bool opened = input == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                    : (file.setFileName(input), file.open(QIODevice::ReadOnly));
    if (!opened || QFileInfo(input).isDir()) {
        *error = QStringLiteral("Cannot read %1: %2").arg(input, opened ? QStringLiteral("it is a folder") : file.errorString());
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (reader::LooksBinary(bytes)) {
        *error = QStringLiteral("%1 is not a text file.").arg(input);
        return std::nullopt;
    }
    if (reader::IsRichTextFile(input) || reader::LooksLikeRtf(bytes)) {
        QString rtfError;
        const reader::RichDocument doc = reader::ReadRtf(bytes, &rtfError);
        if (!rtfError.isEmpty()) {
            *error = QStringLiteral("Cannot read %1: %2").arg(input, rtfError);
            return std::nullopt;
        }
        return doc.plainText();
    }
    return reader::PlainTextOfFile(bytes);
}

class ProgressBar {
public:
    explicit ProgressBar(QTextStream &err) : m_err(err), m_on(isatty(STDERR_FILENO)) {}
    void show(int percent)
    {
        if (!m_on || percent == m_last)
            return;
        m_last = percent;
        const int filled = percent * kProgressBarWidth / 100;
        m_err << "\r[" << QString(filled, QLatin1Char('#')) << QString(kProgressBarWidth - filled, QLatin1Char('.'))
              << "] " << percent << "%" << Qt::flush;
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
};

// Removes a file that is not what it claims to be (and never a device).
void Discard(const QString &name) { audio::KillFileIfExists(name); }

} // namespace

QString ToFileUsageText() { return QString::fromLatin1(kUsage); }

int RunToFile(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &out, QTextStream &err)
{
    QString problem;
    const std::optional<Options> parsed = Parse(args, &problem);
    if (!parsed) {
        err << "to-file: " << problem << "\n" << kUsage;
        return kExitUsage;
    }
    const Options &o = *parsed;
    if (o.help) {
        out << kUsage;
        return kExitMade;
    }
    int voice = -1;
    if (!o.voice.isEmpty()) {
        const QStringList all = engine.voices();
        for (int n = 0; n < all.size() && voice < 0; ++n)
            if (reader::ListedVoiceName(all.at(n)) == o.voice)
                voice = n;
        if (voice < 0) {
            err << "to-file: no voice named " << o.voice << "\n";
            return kExitUsage;
        }
    }

    QString error;
    std::optional<QString> text = ReadInput(o.input, &error);
    if (!text) {
        err << error << "\n";
        return kExitNotMade;
    }
    if (text->trimmed().isEmpty()) {
        err << "There is no text to read in " << o.input << ".\n";
        return kExitNotMade;
    }
    platform::headless::HeadlessServices services(err);
    if (o.exceptions) {
        shell::app().AppFolder = shell::DataFolderPath();
        reader::GetExceptions();
        reader::exceptionsState().ExceptionsOn = true;
        reader::MakeExceptions(*text);
    }
    QString spoken = *text;
    if (o.pitch != QLatin1String("0") && !spoken.toLower().contains(QLatin1String("<xml version")))
        spoken = reader::PitchWrapped(spoken, o.pitch);

    if (!audio::OutputFolderExists(o.output)) {
        err << "The output folder does not exist.\n";
        return kExitNotMade;
    }
    const bool makeMp3 = !audio::IsWavName(o.output);
    audio::ReadToFileVars &vars = audio::readToFileVars();
    vars.MakeMp3 = makeMp3;
    vars.CancelEncoding = false;
    QString wavName = o.output;
    QTemporaryFile temporary(QDir::tempPath() + QStringLiteral("/sonamark-XXXXXX.wav"));
    if (makeMp3) {
        if (!temporary.open()) {
            err << "Cannot make a temporary wave file: " << temporary.errorString() << "\n";
            return kExitNotMade;
        }
        wavName = temporary.fileName();
        temporary.close();
    }

    g_interrupted = 0;
    auto previous = std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
    ProgressBar bar(err);
    audio::SpeakToFileRun run;
    run.text = spoken;
    run.wavName = wavName;
    run.formatConstant = audio::SpeechFormats()[makeMp3 ? audio::kMp3SpeechFormatRow : o.formatRow].constant;
    run.voice = voice;
    run.rate = o.rate;
    run.volume = o.volume;
    run.DoEvents = [] { QCoreApplication::processEvents(); };
    run.cancelled = [] { return g_interrupted != 0; };
    run.progress = [&bar](int percent) { bar.show(percent); };

    // An MP3 is encoded on a second thread while the text is still spoken: the encoder
    // takes the samples as the wave file gets them, chunk by chunk, and makes the same
    // MP3 as it would of the finished wave file.
    audio::PcmQueue queue;
    audio::cLameEncoder encoder;
    std::thread encoding;
    std::atomic<bool> encoded{false};
    if (makeMp3) {
        const audio::Mp3Quality &quality = audio::Mp3Qualities()[o.qualityRow];
        encoder.Re_Initialize(audio::kMp3SampleRate, quality.preset,
                              o.bitRate.value_or(audio::BitRates()[quality.bitRateRow]));
        encoder.setMp3File(o.output);
        // Runs on the encoding thread, the only one that reads or sets CancelEncoding
        // until it has ended.
        encoder.DoEvents = [&vars] {
            if (g_interrupted)
                vars.CancelEncoding = true;
        };
        Discard(o.output);
        run.pcmTap = [&queue](const qint16 *samples, size_t count) { queue.push(samples, count); };
        encoding = std::thread([&encoder, &queue, &encoded] {
            encoder.EncodeFrom(queue, false);
            encoded = true;
        });
    }
    const audio::SpeakOutcome spokenOutcome = audio::SpeakToFile(engine, run, &error);
    if (spokenOutcome == audio::SpeakOutcome::Done) {
        queue.close();
    } else {
        queue.abort();
    }
    if (encoding.joinable()) {
        // The rest of the encoding: its share of the bar by the samples encoded.
        const double total = double(qMax<qint64>(1, queue.pushed()));
        if (spokenOutcome == audio::SpeakOutcome::Done)
            bar.show(50);
        while (!encoded) {
            bar.show(int(50 + 50 * double(encoder.samplesEncoded()) / total));
            QThread::msleep(100);
        }
        encoding.join();
        if (spokenOutcome == audio::SpeakOutcome::Done && !vars.CancelEncoding)
            bar.show(100);
    }

    int status = kExitMade;
    if (spokenOutcome != audio::SpeakOutcome::Done) {
        bar.end();
        err << (spokenOutcome == audio::SpeakOutcome::Cancelled ? QStringLiteral("Read To File cancelled by user.") : error)
            << "\n";
        Discard(wavName);
        if (makeMp3)
            Discard(o.output);
        status = kExitNotMade;
    } else if (makeMp3) {
        bar.end();
        Discard(wavName);
        if (vars.CancelEncoding) {
            err << "Read To File cancelled by user.\n";
            status = kExitNotMade;
        } else if (!encoder.LastError().isEmpty()) {
            err << "Cannot make " << o.output << ": " << encoder.LastError() << "\n";
            Discard(o.output);
            status = kExitNotMade;
        } else {
            out << "Saved to MP3 file : " << o.output << "\n";
        }
    } else {
        bar.end();
        out << "Saved to WAV file : " << o.output << "\n";
    }
    std::signal(SIGINT, previous);
    std::signal(SIGTERM, SIG_DFL);
    vars.CancelEncoding = false;
    return status;
}

std::optional<int> Mp3BitRateOption(std::optional<int> kbps, QString *problem)
{
    const auto &rates = audio::BitRates();
    if (kbps && std::find(std::begin(rates), std::end(rates), *kbps) != std::end(rates))
        return kbps;
    *problem = QStringLiteral("--bitrate takes one of 32 40 48 56 64 80 96 112 128 160 192 224 256 320");
    return std::nullopt;
}

} // namespace cli
