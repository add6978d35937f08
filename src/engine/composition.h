#pragma once
// Building Actions from a macro's code, with [HOTKEY n] lines replaced in place and
// recursively by the lines of the macros they name.
#include <QString>

namespace engine {

inline constexpr int kMaxCompositionLines = 1000000;  // lines scanned in one composition

// Rebuilds Actions from macro index's code: "" or "No actions to parse".
QString ParseActions(int index);
// All Actions texts, each followed by CR LF.
QString GetAllActions();
// True when some line of Actions begins, ignoring case, with "[HOTKEY ".
bool IsHOTKEYcommand();
// Expands every [HOTKEY n] line: "" or a message beginning "FATAL ERROR".
QString InsertHOTKEYcode();
// Replaces line by the lines of macroIndex: "", "Hotkey not found" or a message of
// ParseMacroActions.
QString ReplaceIntoMacro(int line, int macroIndex);
// "", "No macro actions to parse" or "No macro lines to insert.".
QString ParseMacroActions(int line, int macroIndex);
// 1-based macro number named by the [HOTKEY n] at line, or 0.
int GetMacroIndex(int line);
// The same for a line's text.
int MacroIndexOfText(const QString &text);
// The [HOTKEY n] statement at run time, for a line that composition has left.
QString DoMACRO(int &line);

} // namespace engine
