#pragma once
// Points where subsystems of later building steps plug into the interpreter. Each
// function here is a stand-in with the effect the interpreter needs today; the owning
// subsystem replaces its body when it lands.
#include "platform/tray_icon.h"

#include <QString>
#include <functional>

namespace engine {

// Variable table (macro variables): cleared at each run's start.
void ResetVariableTable();
// Value of a number variable, for [HOTKEY Var]. False when the variable is not set or
// holds a string.
bool NumberVariableValue(const QString &name, double &value);
// Sequence-loop slots of [LOOP]: cleared at each run's start.
void ResetLoopSlots();
// Files of [OPEN n File]: closes ids 1..9, ignoring failures.
void CloseMacroFiles();
// The mouse hook installed for [CLICKZONE]/[KEYLOG]: removed when a run ends.
void ReleaseMacroMouseHook();
// A run started or ended: the global hooks swallow Esc only while a macro runs.
void RunningStateChanged();
// Whole-macro check of a macro's code: "" when it found no errors. Used by
// RunCommandLineMacro before a run; the whole-macro checker plugs in here.
QString CheckWholeMacro(const QString &code);

// The reader's visible state, which the tray shows again after a run.
struct ReaderState {
    bool monitoring = false;     // the clipboard monitor is on
    bool spellChecking = false;  // monitored text goes to the spell checker
};
// Records the reader's state for the clipboard statements and returns it.
ReaderState SaveReaderState();

// The tray icon's picture and tip (cut to the tip's length).
void ShowTray(platform::TrayPicture picture, const QString &tip);

// Status panel 1 of the main window; the window installs its setter.
void SetStatusTextSink(std::function<void(const QString &)> sink);
void ShowStatusText(const QString &text);

} // namespace engine
