// Latency of a global hotkey on a real X server: from the XTest press of the hotkey's
// key to the first statement of its macro (goal: under 30 ms). Runs the X11 hooks, the
// hook logic, RunTimer and the interpreter as the program does; needs a display
// (scripts/with-desktop.sh). The macro's first line is a keystroke line, which a
// stand-in key sender timestamps.
#include "engine/run_state.h"
#include "engine/run_timer.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "platform/services.h"
#include "platform/x11/x11_input_hooks.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <chrono>
#include <thread>

// After Qt and benchmark: X.h defines None and Bool.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace {

constexpr int kStatementTimeoutMs = 2000;

class StampingKeySender : public platform::KeySender {
public:
    std::function<void()> onSend;
    void sendKeys(const QString &) override
    {
        if (onSend)
            onSend();
    }
    void pressKey(int) override {}
};

void Key(Display *display, KeySym sym, bool down)
{
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, sym), down, CurrentTime);
    XFlush(display);
}

void BM_HotkeyToFirstStatement(benchmark::State &state)
{
    int argc = 1;
    char name[] = "hotkey_latency_bench";
    char *argv[] = {name};
    QCoreApplication app(argc, argv);
    Display *sender = XOpenDisplay(nullptr);
    if (!sender) {
        state.SkipWithError("no X display (run through scripts/with-desktop.sh)");
        return;
    }
    platform::x11::X11InputHooks hooks;
    StampingKeySender keys;
    platform::Services services;
    services.inputHooks = &hooks;
    services.keys = &keys;
    platform::install(services);

    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^%k"), QStringLiteral("Probe"),
                                                 QStringLiteral("a")};
    hotkeys::table().HotkeyCount = 1;
    shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
    QTimer runTimer;
    runTimer.setSingleShot(true);
    runTimer.setInterval(1);
    QObject::connect(&runTimer, &QTimer::timeout, [] { engine::RunTimer_Timer(); });
    hotkeys::SetRunTimerStarter([&runTimer] { runTimer.start(); });
    if (!hotkeys::HookKeyboard()) {
        state.SkipWithError("the X server has no XTest or XInput 2.2");
        return;
    }
    // Let the hooks' thread take its grabs.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    QCoreApplication::processEvents();

    QElapsedTimer clock;
    qint64 statementAt = -1;
    QEventLoop loop;
    keys.onSend = [&] {
        statementAt = clock.nsecsElapsed();
        loop.quit();
    };
    int missed = 0;
    for (auto _ : state) {
        Key(sender, XK_Control_L, true);
        Key(sender, XK_Alt_L, true);
        statementAt = -1;
        clock.start();
        Key(sender, XK_k, true);
        QTimer::singleShot(kStatementTimeoutMs, &loop, &QEventLoop::quit);
        loop.exec();
        Key(sender, XK_k, false);
        Key(sender, XK_Alt_L, false);
        Key(sender, XK_Control_L, false);
        if (statementAt < 0) {
            ++missed;
            state.SetIterationTime(kStatementTimeoutMs / 1000.0);
        } else {
            state.SetIterationTime(statementAt / 1e9);
        }
        // Let the run end and the releases arrive before the next press.
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    state.counters["missed"] = missed;
    hotkeys::UnhookKeyboard();
    hotkeys::SetRunTimerStarter(nullptr);
    platform::install({});
    XCloseDisplay(sender);
}
BENCHMARK(BM_HotkeyToFirstStatement)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace
