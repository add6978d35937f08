#pragma once
// The substitution passes that turn special names and function calls in an
// expression into plain values before it is evaluated. Each returns "" or a message;
// on a message the expression is emptied. A pass scans the upper-cased text from the
// end backward; a hit between quotes, or one that is part of a longer word
// (IsSubstring), is skipped: MYTIME is not the time, TIME inside TIMER is not either.
#include <QString>

namespace macro {

// For conditions. Order: STR(, VAL(, SONAMARKTEXT, PATH, DATE, TIME, TIMER, TIMEOUT,
// MID(, UCASE(, LEN(, then ReplaceNonPrintables when the text holds "{" or "~".
QString ReplaceSpecialVars(QString &expression);
// For number expressions; the expression is upper-cased first. VAL( and LEN( are
// replaced, string-only names refused, TIMER and TIMEOUT replaced by "########.###".
QString ReplaceSpecialNumVars(QString &expression);
// For string expressions. Order: STR(, SONAMARKTEXT, PATH, refusals of LEN(, VAL(,
// TIMER, TIMEOUT, then DATE, MID(, UCASE(, TIME, then ReplaceNonPrintables.
QString ReplaceSpecialStringVars(QString &expression);

// True after replacing STR(TIMER) or STR(TIMEOUT) around the range first..last by the
// value in quotes (no format applied); false, text unchanged, otherwise.
bool IsInSTR(QString &expression, int first, int last);

} // namespace macro
