#pragma once
// Shut-down questions, and the login and desktop entries of the Help menu.
#include <QString>
#include <functional>

namespace shell {

// The quit dialogue of the main window's unload. saveText runs when the user wants the
// text saved. Returns false when the user cancelled the unload.
bool ConfirmQuit(const std::function<void()> &saveText);

// mnuHelpStartup_Click: offers to add or remove the login entry that starts the program
// hidden. programPath is the program to start.
void ToggleStartupEntry(const QString &programPath);
// mnuHelpDeskTop_Click: puts a launcher for the program on the desktop.
void AddDesktopEntry(const QString &programPath);
// Text of a .desktop launcher.
QString DesktopEntryText(const QString &programPath, const QString &arguments);

inline constexpr const char *kDesktopEntryName = "sonamark.desktop";

} // namespace shell
