#include "engine/macro_clock.h"

#include "shell/on_top_message.h"

#include <QElapsedTimer>

namespace engine {

namespace {

constexpr qint64 kClockResyncMs = 250;
constexpr double kSecondsPerDay = 86400.0;

std::function<double()> g_testClock;

struct WallClock {
    QElapsedTimer timer;
    qint64 syncedAtMs = 0;
    double syncedSeconds = 0;
};

} // namespace

double MacroClock()
{
    if (g_testClock)
        return g_testClock();
    static WallClock clock;
    if (!clock.timer.isValid() || clock.timer.elapsed() - clock.syncedAtMs >= kClockResyncMs) {
        if (!clock.timer.isValid())
            clock.timer.start();
        clock.syncedAtMs = clock.timer.elapsed();
        clock.syncedSeconds = shell::SecondsSinceMidnight();
        return clock.syncedSeconds;
    }
    double seconds = clock.syncedSeconds + (clock.timer.elapsed() - clock.syncedAtMs) / 1000.0;
    if (seconds >= kSecondsPerDay)
        seconds -= kSecondsPerDay;
    return seconds;
}

void SetMacroClock(std::function<double()> clock) { g_testClock = std::move(clock); }

} // namespace engine
