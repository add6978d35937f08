#include "reader/speech.h"

#include "macro/number_format.h"
#include "macro/numbers.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QLocale>
#include <QLoggingCategory>
#include <stdexcept>

Q_LOGGING_CATEGORY(lcReaderSpeech, "sonamark.speech", QtWarningMsg)

namespace reader {

namespace {

constexpr double kPauseSettleSeconds = 1.0;  // the engine has stopped before the tip is set
const QString kResume = QStringLiteral("Resume");
const QString kPause = QStringLiteral("Pause");
const QString kIdleText = QStringLiteral("Sonamark - Idle");
const QString kMonitoringText = QStringLiteral("Monitoring Clipboard..");
const QString kWindowCaption = QStringLiteral("Sonamark - Text-To-Speech Reader");
const QString kReaderTip = QStringLiteral("Reader: ");

SpeechView *g_view = nullptr;

platform::SpeechEngine &engine()
{
    platform::SpeechEngine *e = platform::services().speech;
    if (!e)
        throw std::runtime_error("no speech engine");
    return *e;
}

int runningState() { return engine().status().RunningState; }

// A failing engine call is skipped and the routine goes on with its next statement.
template <typename F>
void IgnoringFailure(F &&call)
{
    try {
        call();
    } catch (const std::exception &e) {
        qCDebug(lcReaderSpeech) << "engine call failed:" << e.what();
    }
}

void MarkOptionsChanged()
{
    if (!shell::app().WindowLoading)
        shell::app().OptionsDirty = true;
}

QString IdleOrMonitoringText()
{
    return g_view->clipToggleCaption() == QLatin1String("Clip Off") ? kIdleText : kMonitoringText;
}

QString PercentText(const QString &lead)
{
    return lead + macro::FormatNumber(speechVars().ProgressPct, "###") + QLatin1Char('%');
}

// Without an audio device speech goes on silently; the status says so, once.
void SayIfNoAudio()
{
    SpeechVars &vars = speechVars();
    if (vars.NoAudioSaid || !engine().status().NoAudioOutput)
        return;
    vars.NoAudioSaid = true;
    g_view->setStatusText(kNoAudioText);
}

// False when no voice is installed at all; that is said once, and Talk does nothing.
bool EnsureVoiceSelected()
{
    if (g_view->voiceRowCount() == 0) {
        SpeechVars &vars = speechVars();
        if (!vars.NoVoiceSaid) {
            vars.NoVoiceSaid = true;
            shell::MsgBoxOT(kNoVoiceText, 0, QStringLiteral("Speech"));
        }
        return false;
    }
    if (g_view->listIndex() < 0)
        g_view->setListIndex(0);
    return true;
}

// Steps 4 to 11 of Talk. useSelection is false for the tray's Talk, which speaks the
// whole text and keeps HighlightBase.
void SpeakTextBox(bool useSelection)
{
    SpeechVars &vars = speechVars();
    const QString whole = g_view->text();
    if (whole.isEmpty())
        return;
    if (g_view->exceptionsOn())
        g_view->applyExceptions();
    const QString text = g_view->text();
    const int row = g_view->listIndex();
    IgnoringFailure([&] { engine().setVoice(vars.VoiceIndex.at(row)); });
    vars.HighlightOn = true;
    IgnoringFailure([] { engine().speak(QString(), platform::kSpeakPurgeBeforeSpeak); });

    const QString selected = useSelection ? g_view->selectedText() : QString();
    const QString spoken = selected.isEmpty() ? text : selected;
    if (useSelection)
        vars.HighlightBase = selected.isEmpty() ? 0 : g_view->selStart();
    const QString pitch = shell::settings().PitchOpt;
    QString request = spoken;
    if (pitch != QLatin1String("0") && !text.toLower().contains(QLatin1String("<xml version")))
        request = PitchWrapped(spoken, pitch);
    vars.TextEndPos = LastBlankOrLength(request);
    IgnoringFailure([&] { engine().speak(request, platform::kSpeakAsyncXml); });
    g_view->setTimer2Enabled(true);
}

void Bind()
{
    platform::SpeechEngine &e = engine();
    e.onStartStream = [] { v_StartStream(); };
    e.onEndStream = [] { V_EndStream(); };
    e.onWord = [](int position, int length) { v_Word(position, length); };
}

} // namespace

const QString kNoAudioText = QStringLiteral("No audio device: speech is silent");
const QString kNoVoiceText = QStringLiteral(
    "No speech voice is installed, so text cannot be read aloud. Install the espeak-ng-data "
    "package and start Sonamark again.");

int FallbackVoiceRow(const QStringList &rows, const QString &languageName)
{
    if (rows.isEmpty())
        return -1;
    const QString english = QStringLiteral("English (America)");
    if (!languageName.isEmpty() && !languageName.startsWith(QLatin1String("English"))) {
        for (int row = 0; row < rows.size(); ++row)
            if (rows.at(row).startsWith(languageName, Qt::CaseInsensitive))
                return row;
    }
    const int american = rows.indexOf(english);
    return american >= 0 ? american : 0;
}

SpeechVars &speechVars()
{
    static SpeechVars vars;
    return vars;
}

std::optional<QString> ListedVoiceName(const QString &d)
{
    if (d.contains(QLatin1String("Microsoft Mary")) || d.contains(QLatin1String("Microsoft Mike"))
        || d.contains(QLatin1String("Microsoft Sam")))
        return d.mid(10);
    if (d.contains(QLatin1String("Sample")))
        return std::nullopt;
    if (d.contains(QLatin1String("Cepstral")))
        return d.mid(9);
    if (d.contains(QLatin1String("NeoSpeech")))
        return d.mid(10, 4);
    return d;
}

QString PitchWrapped(const QString &text, const QString &pitchOpt)
{
    const QString crlf = QStringLiteral("\r\n");
    return QStringLiteral("<xml version=\"1.0\">") + crlf + QStringLiteral("<SAPI>") + crlf
        + QStringLiteral("<PITCH MIDDLE=\"") + pitchOpt + QStringLiteral("\">") + text
        + QStringLiteral("</PITCH>") + crlf + QStringLiteral("</SAPI>") + crlf + QStringLiteral("</xml>");
}

int PitchHeadLength(const QString &pitchOpt)
{
    // The head up to the pitch value is 44 characters, and '">' follows it.
    return 46 + pitchOpt.trimmed().size();
}

int LastBlankOrLength(const QString &text)
{
    const int blank = text.lastIndexOf(QLatin1Char(' '));
    return blank >= 0 ? blank + 1 : text.size();
}

void CreateSpeechObject(SpeechView *view)
{
    g_view = view;
    SpeechVars &vars = speechVars();
    view->clearVoiceList();
    Bind();
    vars.VoiceCount = 0;
    const QStringList descriptions = engine().voices();
    for (int n = 0; n < descriptions.size(); ++n) {
        const std::optional<QString> name = ListedVoiceName(descriptions.at(n));
        if (!name)
            continue;
        if (vars.VoiceCount >= kMaxVoices)
            throw std::out_of_range("Subscript out of range");
        view->addVoiceRow(*name);
        vars.VoiceIndex[vars.VoiceCount] = n;
        ++vars.VoiceCount;
    }
    const shell::Settings &s = shell::settings();
    QStringList rows;
    for (int row = 0; row < view->voiceRowCount(); ++row)
        rows << view->voiceRow(row);
    int start = rows.indexOf(s.VoiceOpt);
    if (start < 0)
        start = FallbackVoiceRow(rows, QLocale::languageToString(QLocale::system().language()));
    if (start >= 0) {
        view->setListIndex(start);
        view->setVoiceTip(kReaderTip + rows.at(start));
    }
    platform::SpeechEngine &e = engine();
    e.setVolume(int(shell::Val(s.VolumeOpt)));
    view->setVolumeSlider(e.volume());
    view->setVolumeTip(s.VolumeOpt);
    e.setRate(int(shell::Val(s.RateOpt)));
    view->setRateSlider(e.rate());
    view->setRateTip(s.RateOpt);
    view->setPitchSlider(int(shell::Val(s.PitchOpt)));
    view->setPitchTip(s.PitchOpt);
    SayIfNoAudio();
}

void ReleaseSpeechObject()
{
    if (platform::SpeechEngine *e = platform::services().speech) {
        e->onStartStream = nullptr;
        e->onEndStream = nullptr;
        e->onWord = nullptr;
    }
    g_view = nullptr;
}

void cmdTalk_Click()
{
    const int state = runningState();
    if (state == platform::kRunningSpeaking)
        return;
    if (state != platform::kRunningDone && g_view->cmdPauseCaption() == kResume) {
        cmdPause_Click();
        return;
    }
    if (state == platform::kRunningDone && !EnsureVoiceSelected())
        return;
    SpeakTextBox(true);
}

void mnuTalk_Click()
{
    if (g_view->mnuTalkCaption() != QLatin1String("Talk")) {
        platform::Clipboard *clip = platform::services().clipboard;
        clip->clear();
        clip->setText(g_view->firstClipRow());
        g_view->restorePopUp();
        return;
    }
    const int state = runningState();
    if (state == platform::kRunningDone) {
        if (!EnsureVoiceSelected())
            return;
        const QString clipText = platform::services().clipboard->text();
        if (!clipText.isEmpty()) {
            if (shell::app().TextDirty) {
                shell::MsgBoxOT(QStringLiteral("Save changes first?"), 1, QStringLiteral("Save"));
                if (shell::app().MsgResult == 1)
                    g_view->saveFile();
            }
            g_view->setText(clipText);
            Reset_txtSpeech();
        }
        SpeakTextBox(false);
    } else if (state != platform::kRunningSpeaking && g_view->mnuPauseCaption() == kResume) {
        mnuPause_Click();
    }
}

void cmdPause_Click()
{
    if (g_view->cmdPauseCaption() == kResume) {
        g_view->setPauseCaptions(kPause);
        engine().resume();
    } else if (runningState() == platform::kRunningSpeaking) {
        g_view->setPauseCaptions(kResume);
        engine().pause();
        shell::Delay(kPauseSettleSeconds);
        g_view->setStatusText(PercentText(QStringLiteral("Paused ")));
    }
}

void mnuPause_Click()
{
    if (g_view->mnuPauseCaption().contains(QLatin1String("clipboard"))) {
        g_view->restorePopUp();
        return;
    }
    if (!g_view->mnuPauseVisible())
        g_view->restorePopUp2();
    if (g_view->mnuPauseCaption() == kResume) {
        g_view->setPauseCaptions(kPause);
        engine().resume();
        shell::app().SpeechState = 0;
    } else if (runningState() == platform::kRunningSpeaking) {
        g_view->setPauseCaptions(kResume);
        engine().pause();
        shell::app().SpeechState = 1;
        shell::Delay(kPauseSettleSeconds);
        g_view->setStatusText(PercentText(QStringLiteral("Paused ")));
    }
}

void cmdStop_Click()
{
    SpeechVars &vars = speechVars();
    const int state = runningState();
    if (state == platform::kRunningSpeaking) {
        vars.HighlightOn = false;
        engine().speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    } else if (state != platform::kRunningDone) {
        IgnoringFailure([] { engine().resume(); });
        g_view->setPauseCaptions(kPause);
        vars.HighlightOn = false;
        engine().speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    }
    vars.ProgressPct = 0;
    g_view->setStatusText(IdleOrMonitoringText());
}

void mnuStop_Click()
{
    if (!g_view->mnuStopVisible())
        g_view->restorePopUp2();
    cmdStop_Click();
}

void List1_Click()
{
    const int row = g_view->listIndex();
    if (row < 0)
        return;
    shell::settings().VoiceOpt = g_view->voiceRow(row);
    g_view->setVoiceTip(kReaderTip + shell::settings().VoiceOpt);
    MarkOptionsChanged();
}

void VolumeSldr_Scroll(int value)
{
    engine().setVolume(value);
    shell::settings().VolumeOpt = QString::number(engine().volume());
    g_view->setVolumeTip(shell::settings().VolumeOpt);
    MarkOptionsChanged();
}

void RateSldr_Scroll(int value)
{
    engine().setRate(value);
    shell::settings().RateOpt = QString::number(engine().rate());
    g_view->setRateTip(shell::settings().RateOpt);
    MarkOptionsChanged();
}

void PitchSldr_Scroll(int value)
{
    shell::settings().PitchOpt = QString::number(value);
    g_view->setPitchTip(shell::settings().PitchOpt);
    MarkOptionsChanged();
}

void Timer2_Timer()
{
    SpeechVars &vars = speechVars();
    const platform::SpeechStatus status = engine().status();
    if (status.RunningState == platform::kRunningSpeaking) {
        if (vars.TextEndPos > 0) {
            if (status.InputWordPosition > vars.TextEndPos)
                vars.ProgressPct = 0;
            else
                vars.ProgressPct = int(macro::RoundEven(double(status.InputWordPosition) / vars.TextEndPos * 100));
        }
        const bool paused = g_view->mnuPauseCaption() == kResume;
        g_view->setStatusText(PercentText(paused ? QStringLiteral("Paused ") : QStringLiteral("Speaking ")));
        shell::app().SpeechState = 0;
    } else if (status.RunningState == platform::kRunningDone) {
        vars.ProgressPct = 100;
        g_view->setTimer2Enabled(false);
        g_view->setStatusText(IdleOrMonitoringText());
        shell::app().SpeechState = 2;
        SayIfNoAudio();  // the device may have failed during this stream
    }
}

void v_StartStream() { shell::app().SpeechState = 0; }

void V_EndStream() { shell::app().SpeechState = 2; }

void v_Word(int characterPosition, int length)
{
    const SpeechVars &vars = speechVars();
    if (!vars.HighlightOn || !g_view)
        return;
    const QString pitch = shell::settings().PitchOpt;
    int start = vars.HighlightBase + characterPosition;
    if (pitch != QLatin1String("0"))
        start -= PitchHeadLength(pitch);
    g_view->select(start, length);
    g_view->setPanel2(QStringLiteral("Ln %1, Col %2").arg(g_view->currentLine()).arg(g_view->currentColumn()));
}

void Reset_txtSpeech()
{
    shell::AppState &app = shell::app();
    if (app.CurrentFile.isEmpty())
        return;
    app.CurrentFile.clear();
    app.TextDirty = false;
    if (!g_view)
        return;  // no window yet (or any more): only the document state changes
    g_view->setCaption(kWindowCaption);
    g_view->applyDefaultFormat();
}

} // namespace reader
