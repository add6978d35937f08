#pragma once
// The normal form of macro text that the checker, the parser and the editor all see.
#include <QString>

namespace macro {

// Strips leading and trailing line ends and drops repeated ones.
void RemoveBlankLinesActionText(QString &text);
// Normalises macro text: statement lines lose leading blanks and repeated blanks,
// conditions and assignments lose their blanks (but for AND and OR); keystroke lines,
// comments' inner spacing and quoted text stay as typed.
void TidyupCode(QString &text);
// Rewrites the conditions of [IF, [CANCEL IF and [LOOP lines and assignment lines with
// RemoveSpaces2.
void RemoveCondSpaces(QString &text);

} // namespace macro
