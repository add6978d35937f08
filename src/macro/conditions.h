#pragma once
// Conditions of [IF Cond], [CANCEL IF Cond] and [LOOP Cond], evaluated by rewriting
// text: each comparison term is replaced by 0 or 1, each parenthesis level by the
// AND/OR value of its first two terms.
//
// Only two terms count at one parenthesis level: GetANDORVal combines the first two
// values with the first connector and ignores the rest, with no AND-before-OR
// precedence. [IF A=1 AND B=2 AND C=3] does not look at C; a macro nests instead:
// [IF (A=1 AND B=2) AND C=3].
#include "macro/actions.h"

#include <QString>

namespace macro {

// The condition of the [IF ...], [CANCEL IF ...] or [LOOP ...] line action, which
// stands at action index (1-based), blanks removed by RemoveSpaces; a sequence loop's
// first entry also takes a slot for index and sets the loop variable to the first
// value. state is 1 when a condition or a started sequence is returned, 0 with a
// message.
QString GetCond(const ActionLine &action, int index, int &state);
// "TRUE", "FALSE" or a message; on a message the condition is emptied.
QString TestCond(QString &condition);
// 1 when the comparison term holds, 0 otherwise; message "" on success.
int GetCondVal(QStringView term, QString &message);
// The term around the comparison operator at position, first and last set. Quotes are
// honoured; blanks end a term.
QString GetLeftRightCondVars(const QString &text, int position, int &first, int &last);
// The value (0 or 1) of a text of 0s and 1s joined by " AND " and " OR ": only the
// first two count.
int GetANDORVal(QStringView text, QString &message);
// True when the two-character operator at position touches a further "<", ">" or "="
// on either side.
bool IllegalOperator(const QString &text, int position);

} // namespace macro
