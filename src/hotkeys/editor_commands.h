#pragma once
// The Hotkeys editor's File menu extras: the printed form of macros, and a desktop
// launcher that runs one macro through sonamark-launch.
#include "hotkeys/hotkeys_table.h"

#include <QString>

namespace hotkeys {

inline const QString kPrintTitle = QStringLiteral("Print Hotkeys");
inline const QString kIconTitle = QStringLiteral("Desktop Icon");

// One macro as printed: its number, key, description, state, and the code with each
// line numbered from 1 so that "ERROR line n" can be found on paper.
QString HotkeyPrintText(int number, const Hotkey &hotkey);
// Every macro of the table in order, each headed as above; "" for an empty table.
QString AllHotkeysPrintText(const HotkeyTable &t);

// The macro name as sonamark-launch takes it: each blank written as "$".
QString LaunchName(const QString &description);
// "sonamark-macro-" and the description with everything but letters and digits made
// "-", ".desktop".
QString MacroLauncherFileName(const QString &description);
// A freedesktop launcher that runs launchProgram with the macro's launch name.
QString MacroLauncherText(const QString &launchProgram, const QString &description);
// Writes the launcher into folder (made when missing), atomically, and marks it
// executable. Returns "" or the reason it could not be written; *path gets the file.
QString WriteMacroLauncher(const QString &folder, const QString &launchProgram, const QString &description,
                           QString *path = nullptr);

// Insert Hotkey: the hooks take the next key combination pressed anywhere, as notation,
// instead of firing it. Starting again forgets a key taken before.
void BeginHotkeyCapture();
// The notation of the key taken since BeginHotkeyCapture, which ends the capture; ""
// while none has been pressed.
QString TakeCapturedKey();
// Ends a capture without a key (cancelled or timed out).
void EndHotkeyCapture();

} // namespace hotkeys
