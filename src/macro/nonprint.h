#pragma once
// Key names of the keystroke notation ("{ENTER}", "{F1}", ...).
#include <QString>
#include <QStringList>

namespace macro {

inline constexpr int NumNonPrint = 45;

// Fills the table (also filled on first use, so calling it is optional).
void SetNonPrint();
// The 45 key names, in table order.
const QStringList &NonPrint();
// True when the upper-cased text contains any key name of the table.
bool NonPrintableKey(const QString &text);
void HowManyBraces(const QString &text, int &opens, int &closes);
// "{ENTER}" as a line end, "{TAB}" as a tab, any other token as itself.
QString GetNPChar(const QString &token);
// Translates "{ENTER}", "{TAB}" and "~" in a string value; other key names stay.
void ReplaceNonPrintables(QString &text);

} // namespace macro
