#pragma once
// The macro interpreter: one run of one macro, synchronously, on the calling thread.
#include <QString>

namespace engine {

inline constexpr int kMaxLinesExecuted = 1000000;  // statements in one run
inline constexpr int kMaxReportedErrors = 200;     // the 200th message becomes the truncation line
inline constexpr double kSecondsPerDay = 86400.0;

// Runs macro number index (1-based): parses, expands [HOTKEY n], runs, and shows the
// run-time report when statements reported messages. Returns "" or the message that
// ended the run ("No actions to parse", "User abort", "Too many lines executed", ...).
// A disabled macro does nothing and returns "".
QString RunMacro(int index);
// The execution loop over Actions.
QString ProcessActions(int index, QString &errorText, int &errorCount);
// True when the run has used up MacroTimeout (never while [WAIT] sleeps).
bool MACRO_Expired();

void InitMacroVars();
void CloseAll();
void SetupRunningMacro(int index);
void FinishRunningMacro();
void RestoreCurrentState();

} // namespace engine
