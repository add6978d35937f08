#pragma once
// Where the program keeps its data files.
#include <QString>

namespace shell {

// $SONAMARK_HOME if set, else $XDG_DATA_HOME/sonamark/, else ~/.local/share/sonamark/;
// always with a trailing "/".
QString DataFolderPath();

// Fixes AppFolder and makes sure the folder exists and can be written. Shows the fatal
// message and returns false when it cannot be used.
bool SetEnvar();

// The folder whose .desktop files are started at login.
QString StartupFolderPath();
// The user's desktop folder.
QString DesktopFolderPath();

} // namespace shell
