#pragma once
// Format Code: the indenting of a tidied macro, and the indent a statement pasted at the
// caret should take.
#include <QString>

namespace hotkeys {

inline constexpr int kIndentStep = 4;  // blanks per open [LOOP, [IF or [ELSE

// Indents statement and comment lines by the open [LOOP, [IF and [ELSE words before
// them; keystroke lines stay at the margin. The words are looked for anywhere on a
// line, quoted text included, as the editor always has.
void IndentActions(QString &text);
// The blanks to put before `pasted` inserted at caret (0-based) in text, from the line
// above the caret's line.
int GetActionIndent(const QString &text, int caret, const QString &pasted);

} // namespace hotkeys
