#pragma once
// Dialog strings: the title operand of [USERINPUT Title Var] that opens a common dialog
// instead of asking for typed text. "dialog+Type+Title+Path+Ext+Flag+Flag..." (or
// "dialgs+..." for the result as a short path), the marker in any case.
#include <QList>
#include <QString>

namespace hotkeys {

inline constexpr int kMaxDialogFlags = 10;  // more than this and none takes effect
inline constexpr int kLastDialogField = 14;

// True when title begins with "dialog+" or "dialgs+" in any case.
bool IsDialogString(const QString &title);
// "dialgs+": the caller wants the short form of the path.
bool WantsShortPath(const QString &title);

// The fields of a dialog string: type, title, path, extension (upper-cased) and the
// values of the flags that have one, in order; flagCount counts them.
void ParseDialog(const QString &text, QString &type, QString &title, QString &path, QString &extension,
                 QList<qint32> &flags, qint16 &flagCount);
// The common dialog value of a flag name ("cdlOFNAllowMultiselect" ...), 0 when unknown.
qint32 GetCDL(const QString &name);

// Shows the dialog the string asks for through the Prompts port and answers the chosen
// path, or "" when cancelled. A string without a type is emptied (the statement's
// "Invalid dialog string").
QString LaunchDialog(QString &text);

// The short form of a path: here, its canonical absolute form (links resolved), or the
// cleaned absolute path when it does not exist.
QString GetShortPath(const QString &path);

} // namespace hotkeys
