#pragma once
// The clipboard monitor: two polling regimes that never run together. Monitoring
// (Timer1, every 100 ms) takes whatever text turns up, empties the clipboard and speaks
// it; collecting (Timer3 and Timer5, every second) leaves the clipboard alone, stores new
// text and pictures in the clip store, and recognises the clipboard command.
#include <QString>
#include <functional>

namespace reader {

inline constexpr int kTimer1IntervalMs = 100;
inline constexpr int kTimer3IntervalMs = 1000;
inline constexpr int kTimer5IntervalMs = 1000;

inline const QString kClipOff = QStringLiteral("Clip Off");  // cmdClipToggle when not monitoring
inline const QString kClipOn = QStringLiteral("Clip On");

struct MonitorState {
    bool Monitoring = false;    // the Timer1 regime is on
    QString TrayClipText;       // clipboard text set aside when the tray switched monitoring on
    bool SkipClipPrompt = false;  // the next switch to monitoring asks nothing

    void reset() { *this = MonitorState(); }
};

MonitorState &monitor();

// The macro runner above the monitor, which installs itself here. Unset members answer
// that no macro runs and that the clipboard holds no command.
struct MacroRunner {
    std::function<bool()> running;  // a macro is running now
    // Timer3's look for the clipboard command: true when one was taken and run.
    std::function<bool()> pollClipboardCommand;
};
void SetMacroRunner(MacroRunner runner);
// True while the installed runner says a macro runs.
bool MacroIsRunning();

// "Monitoring Clipboard.." or "Sonamark - Idle".
QString MonitorStatusText();

void Timer1_Timer();
void Timer3_Timer();
void Timer5_Timer();
// Flips between monitoring and collecting, asking what to do with text already there.
void cmdClipToggle_Click();
// A left click on the tray icon that no macro or recording took: flips monitoring when
// no speech is under way, else offers Pause, Stop and Cancel.
void TrayLeftClick();
// The tray's way of switching: sets the clipboard text aside instead of asking, and
// offers it back in a two-row menu.
void FlipMonitoringFromTray();

} // namespace reader
