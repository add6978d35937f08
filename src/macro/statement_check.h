#pragma once
// Statement checks of [IF Cond], [CANCEL IF Cond], [LOOP Cond] and [VAR=Val] that the
// statements repeat at every execution, and the word-level checks they are built from.
// They look at shape only and never read a variable. The line has had its quoted
// literals replaced by ALITERAL/AEMPTY (ReplaceLiterals). Results are message fragments
// ("" when good) that the caller finishes.
#include <QString>

namespace macro {

// The condition rules for an [IF ...] or [CANCEL IF ...] line alone (no block matching).
QString GoodIFCond(const QString &line);
// The same for a [LOOP ...] line; a sequence is checked as a sequence.
QString GoodLOOPCond(const QString &line);
// An assignment line "[name=value]".
QString GoodVAR(const QString &line);

// One side of a condition term: short fragments ("Illegal operator", ...).
QString GoodCondEqu(const QString &word);
// Special names and function calls judged by their neighbours; the first fragment.
QString GoodSpecial(const QString &text);
// GoodSpecial, then the CheckRemove functions: the text comes back with the function
// calls replaced by plain words, or emptied with the message returned.
QString RemoveSpecial(QString &text);
// The check-time counterparts of the functions: each checks every call of its kind
// and replaces it by a plain word ("C", or a number for VAL()).
QString CheckRemoveSTR(QString &text);
QString CheckRemoveUCASE(QString &text);
QString CheckRemoveLEN(QString &text);
QString CheckRemoveVAL(QString &text);
QString CheckRemoveMID(QString &text);
// "Invalid format in ( )", "Mismatched ( )" or "".
QString GoodParentheses(const QString &text);
// The text without its parentheses, or "" when the counts of "(" and ")" differ.
QString RemoveParentheses(const QString &text);
// Each word between operators must be a number or a name: "" or a message.
QString CheckRHS(const QString &text);
// True for "-" followed by a word whose Val1 is not 0 ("-2", "-2.5").
bool IsNegNumber(const QString &text);

} // namespace macro
