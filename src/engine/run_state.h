#pragma once
// The single state of a running macro. Only one macro runs at a time. The language keeps
// its own part (variables and the time limit, sequence slots) in macro/, the hooks keep
// what they collect for [KEYLOG] and [CLICKZONE] in hotkeys::HookState.
#include "macro/actions.h"

#include <QString>

namespace engine {

struct MacroRunState {
    macro::ActionList Actions;   // the parsed macro, line n at Actions[n-1]
    int LinesExecuted = 0;       // statements executed in this run
    int NextLine = 1;            // first line of the next pass; written by every jump
    int LastLine = 0;            // last line of a pass
    double MacroStart = 0;       // seconds since midnight when the run started
    bool WaitInProgress = false;  // [WAIT] sleeping: the time-out test is suspended
    bool MacroRunning = false;
    bool AbortRequested = false;  // the abort latch (Esc, tray click, Stop button)
    int OpenFileCount = 0;

    int ActionCount() const { return static_cast<int>(Actions.size()); }
    // Line by 1-based number; outside 1..ActionCount throws std::out_of_range.
    macro::ActionLine &action(int line);
    void reset() { *this = MacroRunState(); }
};

MacroRunState &runState();

// Sets the abort latch; the running macro asks whether to stop after its statement.
void RequestAbort();

// Lets queued events run (timers, hotkeys, clicks) when an event loop exists.
void DoEvents();

} // namespace engine
