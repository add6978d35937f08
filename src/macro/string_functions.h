#pragma once
// The functions of the macro language, each worked in place at the position of its
// name in an expression: STR(x), VAL(x), UCASE(x), MID(x first last). The first ")"
// after the name ends the argument, so no call can hold another call.
// Each returns "" with the call replaced by its value, or a message with the
// expression emptied.
#include <QString>

namespace macro {

// STR(x): the number x (a number, a number variable, TIMER) in the general format,
// in quotes.
QString GetSTR(QString &expression, int position);
// VAL(x): Val1 of the string variable x (or of TIMER, SONAMARKTEXT) in the general
// format, without quotes.
QString GetVAL(QString &expression, int position);
// UCASE(x): the literal, string variable or SONAMARKTEXT upper-cased, in quotes.
QString GetUCASE(QString &expression, int position);
// MID(x first last): characters first to last (1-based, inclusive) of a literal or a
// string variable, in quotes; the three arguments are separated by single blanks.
QString GetMID(QString &expression, int position);

} // namespace macro
