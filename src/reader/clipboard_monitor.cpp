#include "reader/clipboard_monitor.h"

#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/tray_menu_forms.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"

#include <QLoggingCategory>
#include <stdexcept>

Q_LOGGING_CATEGORY(lcMonitor, "sonamark.clipboard.monitor", QtWarningMsg)

namespace reader {

namespace {

const QString kIdleText = QStringLiteral("Sonamark - Idle");
const QString kMonitoringText = QStringLiteral("Monitoring Clipboard..");
const QString kMonitoringTip = QStringLiteral("Monitoring the Clipboard");
const QString kNotMonitoringTip = QStringLiteral("Not monitoring the Clipboard");

MacroRunner g_runner;

bool MacroRunning() { return g_runner.running && g_runner.running(); }

platform::Clipboard &Clipboard()
{
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard)
        throw std::runtime_error("no clipboard");
    return *clipboard;
}

// Sets the toggle, the timers and the buttons for one regime.
void SwitchRegime(ClipView &view, bool monitoring)
{
    if (monitoring) {
        view.setTimer1Enabled(true);
        view.setTimer3Enabled(false);
        view.setTimer5Enabled(false);
        view.setPasteClearEnabled(false);
    } else {
        view.setClipToggle(kClipOff, kNotMonitoringTip);
        view.setTimer1Enabled(false);
        view.setTimer3Enabled(true);
        view.setTimer5Enabled(view.picsEnabled());
        view.setPasteClearEnabled(true);
    }
}

// Steps 3 to 5 of the toggle: the flag, the status text and the tray icon.
QString SettleMonitoring(ClipView &view, bool monitoring)
{
    monitor().Monitoring = monitoring;
    const QString status = MonitorStatusText();
    if (platform::TrayIcon *tray = platform::services().tray) {
        tray->changeIcon(!monitoring             ? platform::TrayPicture::Idle
                         : view.spellClipMode() ? platform::TrayPicture::SpellMonitoring
                                                 : platform::TrayPicture::Monitoring);
    }
    return status;
}

bool g_inTimer1 = false;  // a tick that lets events run is not entered again

} // namespace

void SetMacroRunner(MacroRunner runner) { g_runner = std::move(runner); }

bool MacroIsRunning() { return MacroRunning(); }

MonitorState &monitor()
{
    static MonitorState state;
    return state;
}

QString MonitorStatusText() { return monitor().Monitoring ? kMonitoringText : kIdleText; }

void Timer1_Timer()
{
    ClipView *view = clipView();
    if (!view || g_inTimer1 || shell::app().SpeechState == 0)
        return;  // a clip copied during speech waits for the end of the stream
    g_inTimer1 = true;
    struct Leave {
        ~Leave() { g_inTimer1 = false; }
    } leave;
    const QString text = Clipboard().text();
    if (text.isEmpty())
        return;
    qCDebug(lcMonitor) << "clip of" << text.size() << "characters";
    view->clearExceptionsMade();
    view->resetClipFont();
    if (view->spellClipMode()) {
        cmdClipToggle_Click();
        view->spellCheckClip(text);
        return;
    }
    Add2Clips(text);
    view->setSpeechText(text);
    view->processEvents();
    // Cleared last: the text is seen once and never again.
    Clipboard().clear();
    view->talk();
}

void Timer3_Timer()
{
    // A clipboard held by another program costs one tick; the next one tries again.
    try {
        if (g_runner.pollClipboardCommand && g_runner.pollClipboardCommand())
            return;
        const QString text = Clipboard().text();
        if (text.isEmpty() || IsInClipStore(text))
            return;
        Add2Clips(text);
    } catch (const std::exception &e) {
        qCDebug(lcMonitor) << "collect tick failed:" << e.what();
    }
}

void Timer5_Timer()
{
    try {
        if (const platform::PicturePtr picture = Clipboard().picture())
            AddPicClip(picture);
    } catch (const std::exception &e) {
        qCDebug(lcMonitor) << "picture tick failed:" << e.what();
    }
}

namespace {

// The monitor toggle flips: true when it turns monitoring on (the button then reads
// "Clip On"); turning off is left to SwitchRegime.
bool TogglesOn(ClipView &view)
{
    const bool on = view.clipToggleCaption() == kClipOff;
    if (on)
        view.setClipToggle(kClipOn, kMonitoringTip);
    return on;
}

} // namespace

void cmdClipToggle_Click()
{
    ClipView *view = clipView();
    if (!view)
        return;
    MonitorState &m = monitor();
    const bool on = TogglesOn(*view);
    if (on) {
        platform::Clipboard &clipboard = Clipboard();
        const QString text = clipboard.text();
        if (text.isEmpty() || m.SkipClipPrompt) {
            m.SkipClipPrompt = false;
        } else if (MacroRunning()) {
            clipboard.clear();
        } else {
            shell::MsgBoxOT(view->spellClipMode() ? QStringLiteral("Would you like to spellcheck the clipboard now?")
                                                  : QStringLiteral("Would you like to read the clipboard now?"),
                            1, QStringLiteral("Clip On"));
            // Yes leaves the text for Timer1's next tick.
            if (shell::app().MsgResult != 1)
                clipboard.clear();
        }
    }
    SwitchRegime(*view, on);
    view->setStatusText(SettleMonitoring(*view, on));
}

void TrayLeftClick()
{
    ClipView *view = clipView();
    if (!view)
        return;
    monitor().TrayClipText.clear();
    if (shell::app().SpeechState == 2) {
        FlipMonitoringFromTray();
        return;
    }
    view->processEvents();
    ShortenPopUp2();
    view->popTrayMenu();
}

void FlipMonitoringFromTray()
{
    ClipView *view = clipView();
    if (!view)
        return;
    MonitorState &m = monitor();
    const bool on = TogglesOn(*view);
    if (on) {
        platform::Clipboard &clipboard = Clipboard();
        m.TrayClipText = clipboard.text();
        if (!m.TrayClipText.isEmpty())
            clipboard.clear();
    }
    SwitchRegime(*view, on);
    const QString status = SettleMonitoring(*view, on);
    view->setPanel1(status);
    view->setStatusText(status);
    if (on && !m.TrayClipText.isEmpty()) {
        // The text set aside is offered back: reading it puts it on the clipboard again.
        ShortenPopUp(view->spellClipMode() ? QStringLiteral("Spell check the clipboard")
                                           : QStringLiteral("Read the clipboard"));
        view->popTrayMenu();
    }
}

} // namespace reader
