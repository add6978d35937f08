#pragma once
// The global keyboard and mouse hooks: install, and the decisions for each event. The
// hook implementation calls KeyboardCallback and MouseCallback on the GUI thread; what
// must be swallowed it decides by itself, from the plans sent by UpdateHookPlan.
#include "platform/input_hooks.h"

#include <QString>
#include <functional>

namespace hotkeys {

// Install the hooks and record the result in KeyboardHooked / MouseHooked.
bool HookKeyboard();
void UnhookKeyboard();
bool HookMouse();
void UnhookMouse();

// The hook procedures: true when the event is swallowed. A swallowed key that left a
// macro in PendingHotkey starts RunTimer.
bool KeyboardCallback(const platform::KeyEvent &event);
bool MouseCallback(const platform::MouseEvent &event);

// The hooks found hotkeys that another program holds: one message (title "HotKeys")
// names those of the enabled macros not named before, with their macros, and says what
// it means. Each hotkey is named once in a session.
void HotkeysTaken(const QList<platform::KeyCombination> &taken);

// The decisions (KeyEvent / MouseEvent of the hook state hold the event).
bool IsHooked(int virtualKey);
bool IsMouseHooked(int message, int x, int y);

// What the hooks must swallow in the present state: the enabled hotkeys (when hotkeys
// are on or a macro runs), Esc while a macro runs, every key during hotkey capture;
// clicks for point capture and a trapping click zone.
platform::KeyPlan CurrentKeyPlan();
platform::ClickPlan CurrentClickPlan();
// Sends both plans to the hooks; call after any change of the state they depend on
// (the table, the Hotkeys option, a run's start and end, captures, click zones).
void UpdateHookPlan();

// The macro runner above the hooks, which installs itself here. Unset members answer
// that no macro runs, let Esc abort nothing and give a hotkey no macro.
struct MacroRunner {
    std::function<bool()> running;      // a macro is running now
    std::function<void()> requestAbort;  // Esc while it runs: set its abort latch
    // Records macro index (1-based) for RunTimer: "" or the message to show.
    std::function<QString(int index)> processHotkey;
};
void SetMacroRunner(MacroRunner runner);

// Enables the main window's RunTimer (one-shot start of PendingHotkey).
void SetRunTimerStarter(std::function<void()> start);
// Cancels a running [WEBSOURCE] fetch when Esc is pressed.
void SetWebFetchCanceller(std::function<void()> cancel);

// Seconds since midnight for the recording clock; tests replace it (nullptr: real).
void SetRecordingClock(std::function<double()> clock);
double RecordingClock();

} // namespace hotkeys
