#pragma once
// How a hotkey gets to run its macro: the hook only records the request
// (ProcessHotkey); the main window's one-shot RunTimer then calls RunTimer_Timer.
#include <QString>

namespace engine {

// Records macro index (1-based) as PendingHotkey when it exists and is enabled.
// "" or "Error Hotkey <n> not found. No actions taken.".
QString ProcessHotkey(int index);
// The RunTimer tick, after the timer has disabled itself: runs PendingHotkey, or says
// "A macro is already running"; a non-empty result of RunMacro opens the report.
void RunTimer_Timer();

} // namespace engine
