#include "shell/delay.h"

#include <QThread>
#include <atomic>
#include <cmath>

namespace shell {

namespace {
std::atomic_bool g_stopDelay{false};
SleepFn g_sleeper;

void sleepMs(int ms)
{
    if (ms <= 0)
        return;
    if (g_sleeper)
        g_sleeper(ms);
    else
        QThread::msleep(static_cast<unsigned long>(ms));
}
} // namespace

void StopDelay() { g_stopDelay = true; }
void ClearStopDelay() { g_stopDelay = false; }
void SetDelaySleeper(SleepFn sleeper) { g_sleeper = std::move(sleeper); }

void Delay(double seconds)
{
    if (seconds < 1) {
        sleepMs(static_cast<int>(std::lround(seconds * 1000)));
        return;
    }
    const int whole = static_cast<int>(std::floor(seconds));
    for (int i = 0; i < whole; ++i) {
        sleepMs(1000);
        if (g_stopDelay) {
            g_stopDelay = false;
            return;
        }
    }
    sleepMs(static_cast<int>(std::lround((seconds - whole) * 1000)));
}

} // namespace shell
