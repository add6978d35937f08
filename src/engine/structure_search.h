#pragma once
// Jump targets of the control statements, found by scanning the statement codes of
// Actions when the statement runs: no block structure is built ahead. Each search
// starts at the line next to the given one and keeps a nesting counter from 0.

namespace engine {

// Forward: the [ENDLOOP] that closes the [LOOP] at line; 0 when there is none.
int GetENDLOOP(int line);
// Backward: the [LOOP] that the [ENDLOOP] or [QUITLOOP] at line belongs to; 0 when none.
int GetLOOP(int line);
// Forward: the [ENDIF] of the [IF] or [ELSE] at line; 0 when none.
int GetENDIF(int line);
// Forward: the [ELSE] or [ENDIF] of the [IF] at line; only [ENDIF] closes a nested
// [IF], so an inner [ELSE] is passed by. 0 when none.
int GetENDIForELSE(int line);
// True when the nearest [LOOP] at or above line has its first [ENDLOOP] at or after
// line (used by the statement checks, not at run time).
bool InsideLOOP(int line);

} // namespace engine
