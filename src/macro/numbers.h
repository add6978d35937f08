#pragma once
// Numbers of the macro language.
#include <QString>

namespace macro {

// The language's lenient number: 0 for a blank text or for one holding anything other
// than digits, ".", "E", "-" and "+"; otherwise the longest leading number ("1-2" is 1).
double Val1(QStringView text);
inline double Val1(const QString &text) { return Val1(QStringView(text)); }

} // namespace macro
