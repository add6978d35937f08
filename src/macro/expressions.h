#pragma once
// Number and string expressions, evaluated by rewriting text: a sub-expression is
// computed, its value written back as result text (number_format.h) and the scan
// starts again. Within one level of parentheses all "*" and "/" are reduced first,
// left to right, then the rest is summed left to right; the innermost parentheses
// (first ")" and the nearest "(" before it) go first.
#include <QString>

namespace macro {

// Value of a number expression; message "" on success.
double SolveEquation(const QString &expression, QString &message);
// Left-to-right value of an expression without parentheses; message "" on success.
double GetEquVal(QStringView expression, QString &message);
// The operand-operator-operand range around the operator at position: first and last
// are set, and the sub-text is returned. A "-" right after an operator is a sign.
QString GetLeftRightVars(const QString &text, int position, int &first, int &last);
// Value of a string expression: literals, string variables and functions joined by
// "&"; message "" on success.
QString GetString(const QString &expression, QString &message);
// Pre-analysis of a [VAR=Val] line: returns the left-hand name, rhs the right-hand
// side and isString 1 when the string language applies. On failure the message is
// returned in place of the name and rhs comes back empty.
QString GetVarName(const QString &line, QString &rhs, int &isString);

} // namespace macro
