#pragma once
// Parsed macro lines: the text as it will run and its statement code.
#include <QList>
#include <QString>

namespace macro {

struct ActionLine {
    QString Text;     // trimmed and upper-cased outside quotes for a statement; raw keystrokes
    int Command = 0;  // statement code 1..48 (commands.h), 0 for a keystroke line
    // The line's text passed the check that [IF], [LOOP] and [VAR=Val] make before they
    // run. That check reads the text alone, so a run makes it once a line.
    bool TextChecked = false;
};

using ActionList = QList<ActionLine>;

// Cuts macro code into lines after TidyupCode: comments are dropped, statement lines
// are trimmed and upper-cased outside quotes, keystroke lines keep their blanks.
// Returns false, leaving lines empty, when the tidied code is empty or a bare line end.
bool CutMacroLines(const QString &code, ActionList &lines);

// Trim of blanks only (tabs and other white space stay).
QString TrimBlanks(const QString &text);

} // namespace macro
