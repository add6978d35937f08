#pragma once
#include <functional>

namespace shell {

// Blocks the calling thread (no event pumping). Below 1 second: one sleep. From 1
// second up: whole-second sleeps, testing the stop-delay flag after each (a set flag is
// cleared and the delay ends at once), then the fractional rest.
void Delay(double seconds);
// Sets the stop-delay flag: a running Delay ends after its current second.
void StopDelay();
void ClearStopDelay();

// Tests replace the sleeper to watch the steps; nullptr restores the real one.
using SleepFn = std::function<void(int ms)>;
void SetDelaySleeper(SleepFn sleeper);

} // namespace shell
