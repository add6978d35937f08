#pragma once
// The clock of the macro time-out: seconds since midnight, read once per statement.
#include <functional>

namespace engine {

// Seconds since midnight. Between re-synchronisations with the wall clock (at most
// kClockResyncMs apart) it advances by a monotonic timer, which is far cheaper to read
// than the local time.
double MacroClock();

// Tests replace the clock; nullptr restores the real one.
void SetMacroClock(std::function<double()> clock);

} // namespace engine
