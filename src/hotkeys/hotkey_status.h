#pragma once
// The whole-macro check: every line of a macro through the statement checker, the errors
// numbered into one report, and the lines they stand on kept for colouring.
#include <QList>
#include <QString>

namespace hotkeys {

// Tidies the macro text (it is changed) and checks every line. "" when nothing is
// wrong, else the numbered messages, a blank line and "There was 1 error found." or
// "There were N errors found.".
QString HotkeyStatus(QString &macro);
// The 1-based line numbers of the errors found by the latest HotkeyStatus, in order.
const QList<int> &ErrorLines();
inline int ErrorLineCount() { return int(ErrorLines().size()); }
// Each line as its running number, ":", the line and a line end.
QString AddNumbers(const QString &text);
// The Check Code report: a rule, "Error Check for" and the label in quotes, the rule,
// the HotkeyStatus report, the rule, and the tidied macro numbered by AddNumbers.
QString CheckCodeReport(const QString &label, const QString &report, const QString &tidied);

} // namespace hotkeys
