#include "audio/read_to_file.h"

#include "audio/speech_file_stream.h"
#include "platform/speech_engine.h"
#include "shell/app_state.h"
#include "shell/file_util.h"

#include <QDir>
#include <QFileInfo>
#include <QTime>
#include <cmath>

namespace audio {

namespace {
constexpr int kPercentSpeechOnly = 100;
constexpr int kPercentSpeechOfMp3 = 50;

QString LastFour(const QString &name) { return name.right(4).toLower(); }

// 1-based position of the last blank, or the length when there is none.
int LastBlankOrLength(const QString &text)
{
    const qsizetype blank = text.lastIndexOf(QLatin1Char(' '));
    return int(blank >= 0 ? blank + 1 : text.size());
}
} // namespace

bool IsWavName(const QString &name) { return LastFour(name) == QLatin1String(".wav"); }

bool HasSoundEnding(const QString &name) { return IsWavName(name) || LastFour(name) == QLatin1String(".mp3"); }

QString OutputMp3Name(const QString &name)
{
    return HasSoundEnding(name) ? name : name.trimmed() + QStringLiteral(".mp3");
}

bool ValidMissingFile(const QString &name)
{
    if (shell::FileExists(name))
        return true;
    const qsizetype slash = name.lastIndexOf(QLatin1Char('/'));
    if (slash < 0)
        return false;
    const QString folder = slash == 0 ? QStringLiteral("/") : name.left(slash);
    return QFileInfo(folder).isDir() && name.size() > slash + 1 + 2;
}

bool OutputFolderExists(const QString &name)
{
    const qsizetype slash = name.lastIndexOf(QLatin1Char('/'));
    const QString folder = slash < 0 ? QDir::currentPath() : slash == 0 ? QStringLiteral("/") : name.left(slash);
    return QFileInfo(folder).isDir();
}

QString OverwriteQuestion(const QString &bareWavName)
{
    return QStringLiteral("WARNING: WAV file ") + bareWavName + QStringLiteral(" will be overwritten. Continue?");
}

void SetFNameWAV_MP3(QString &name, const std::function<bool(const QString &)> &overwriteOk)
{
    ReadToFileVars &vars = readToFileVars();
    if (IsWavName(name)) {
        vars.MakeMp3 = false;
        vars.WavFileName = name;
        return;
    }
    if (LastFour(name) != QLatin1String(".mp3"))
        name = name.trimmed() + QStringLiteral(".mp3");
    vars.Mp3FileName = name;
    const qsizetype slash = name.lastIndexOf(QLatin1Char('/'));
    const QString wavBare = name.mid(slash + 1).chopped(4) + QStringLiteral(".wav");
    const QString messageName = slash < 0 ? QString() : wavBare;
    vars.WavFileName = shell::app().AppFolder + wavBare;
    if (shell::FileExists(vars.WavFileName) && overwriteOk && !overwriteOk(messageName)) {
        name.clear();
        return;
    }
    vars.MakeMp3 = true;
}

int ProgressWAV(double now, double start, double end, bool makeMp3)
{
    const int whole = makeMp3 ? kPercentSpeechOfMp3 : kPercentSpeechOnly;
    if (now >= end || end <= start)
        return whole;
    return int(std::lround(std::max(0.0, (now - start) / (end - start)) * whole));
}

void CorrectCharsPerSecond(int textEndPos, double seconds)
{
    if (seconds <= 0)
        return;
    const double rate = std::round(textEndPos / seconds);
    ReadToFileVars &vars = readToFileVars();
    if (rate != vars.CharsPerSecond && rate >= kMinCorrectedCharsPerSecond)
        vars.CharsPerSecond = rate;
}

double Timer() { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; }

SpeakOutcome SpeakToFile(platform::SpeechEngine &engine, const SpeakToFileRun &run, QString *error)
{
    SpeechFileStream stream;
    stream.tap = run.pcmTap;
    if (!stream.Open(run.wavName, run.formatConstant)) {
        if (error)
            *error = stream.errorString();
        return SpeakOutcome::Failed;
    }
    const int ownRate = engine.rate(), ownVolume = engine.volume();
    if (run.voice >= 0)
        engine.setVoice(run.voice);
    engine.setRate(run.rate);
    engine.setVolume(run.volume);
    engine.setAudioOutputStream(&stream);
    engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    engine.speak(run.text, platform::kSpeakAsyncXml);

    ReadToFileVars &vars = readToFileVars();
    vars.TextEndPos = LastBlankOrLength(run.text);
    const double start = Timer();
    const double end = start + vars.TextEndPos / vars.CharsPerSecond;
    vars.ReadToFileBusy = true;
    SpeakOutcome outcome = SpeakOutcome::Done;
    do {
        if (run.DoEvents)
            run.DoEvents();
        if (run.cancelled && run.cancelled()) {
            outcome = SpeakOutcome::Cancelled;
            engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
            break;
        }
        if (run.progress)
            run.progress(ProgressWAV(Timer(), start, end, vars.MakeMp3));
    } while (!engine.waitUntilDone(kWaitUntilDoneMs));
    vars.ReadToFileBusy = false;
    engine.setAudioOutputStream(nullptr);
    engine.setRate(ownRate);
    engine.setVolume(ownVolume);
    const bool complete = stream.Close();
    if (outcome != SpeakOutcome::Done)
        return outcome;
    if (!complete) {
        if (error)
            *error = stream.errorString();
        return SpeakOutcome::Failed;
    }
    CorrectCharsPerSecond(vars.TextEndPos, Timer() - start);
    return SpeakOutcome::Done;
}

} // namespace audio
