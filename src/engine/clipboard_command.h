#pragma once
// The clipboard command: how sonamark-launch starts a macro in the running program.
// The launcher puts "/", U+00E0, " ", the macro's name (blanks written as "$") and an
// optional wait in seconds on the clipboard; Timer3 finds it within a second.
#include <QString>
#include <functional>

namespace engine {

inline const QString kClipboardCommandPrefix = QStringLiteral("/\u00e0 ");
inline constexpr double kMaxCommandWait = 3600;  // seconds

// Splits "name [seconds]": the text behind the last blank is the wait; "$" in the
// name stands for a blank.
void ParseCommandLineMacro(const QString &line, QString &name, double &seconds);
// Looks the macro up by name, checks it, waits, runs it and reports.
void RunCommandLineMacro(const QString &line);
// Timer3's test of the clipboard, once a second: a command is taken off the clipboard
// and run, and the result is true. Anything else is left alone (false). Faults are
// ignored: the next tick tries again.
bool PollClipboardCommand();

// What the main window does for RunCommandLineMacro. Unset members do nothing.
struct CommandLineUi {
    std::function<void()> hideMainWindow;
    // Opens the hotkey editor at macroIndex (0-based), closing an open editor first.
    std::function<void(int macroIndex)> editMacro;
};
void SetCommandLineUi(CommandLineUi ui);

} // namespace engine
