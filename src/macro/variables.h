#pragma once
// Macro variables: the name rule.
#include <QString>

namespace macro {

// "" when text is a variable name (every character from "A" to "z" by code; the
// empty text passes); otherwise the message, built with caption ("LHS ", ...).
QString AllLetters(const QString &text, const QString &caption);

} // namespace macro
