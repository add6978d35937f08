#pragma once
// Files shipped with the program (help pages, the XML tutorial, icons): where they are.
// An installed program finds them under its own prefix, bin/../share/sonamark, wherever
// that prefix is (/usr, /usr/local, a folder unpacked from the package). In the build
// tree they are staged beside the programs (build/bin/help, ...), so a program run from
// there finds them too. Every place that looks for a shipped file goes through here.
#include <QString>
#include <QStringList>

namespace shell {

// The folders that may hold shipped files, in the order they are tried, for a program
// in programFolder: PREFIX/share/sonamark, then programFolder itself. Paths are clean,
// without a trailing "/".
QStringList SharedDataFolders(const QString &programFolder);
// The same for the running program.
QStringList SharedDataFolders();

// The full path of the shipped file relativePath ("help/01.html"), from the first of
// folders that holds it; "" when none does.
QString FindShippedFile(const QString &relativePath, const QStringList &folders);
// The same in the running program's folders.
QString FindShippedFile(const QString &relativePath);

} // namespace shell
