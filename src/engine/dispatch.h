#pragma once
// DoAction: runs one line of Actions by its statement code.
#include <QString>

namespace engine {

// Executes line (1-based) of Actions and returns the statement's message: "" for
// nothing to report, "GoTo 1" after a jump, "<QUIT>", or a message to record (a text
// beginning "FATAL ERROR" ends the macro). A fault inside a statement is reported
// through the failure window and gives "".
QString DoAction(int line);

} // namespace engine
