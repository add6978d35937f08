// libFuzzer target for the macro language: any text as a macro is parsed and run on the
// headless services, under a clock that runs fast, so that every run ends by its limits
// within about a hundred statements. Waits sleep nowhere, and a long one is cut short.
#include "engine/interpreter.h"
#include "engine/macro_clock.h"
#include "engine/run_state.h"
#include "fuzz_support.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/variables.h"
#include "platform/headless/headless_services.h"
#include "shell/app_state.h"
#include "shell/delay.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

constexpr double kSecondsPerRead = 1.0;         // the macro clock moves on this much a look
constexpr double kLongestRunSeconds = 100.0;    // so a run ends after about 100 statements

// A wait runs on the clock too, one look a second, and [WAIT 1E30] would never end: after
// this many naps inside one wait the fuzzer presses Esc, as a user would.
constexpr int kNapsBeforeEsc = 2000;

double g_now = 0;
int g_naps = 0;

void nap(int)
{
    engine::MacroRunState &run = engine::runState();
    if (!run.WaitInProgress) {
        g_naps = 0;
        return;
    }
    if (++g_naps >= kNapsBeforeEsc) {
        g_naps = 0;
        run.AbortRequested = true;
    }
}

double fastClock()
{
    // A macro may set its own time-out; the fuzzer keeps it short.
    double &limit = macro::variableTable().MacroTimeout;
    if (limit > kLongestRunSeconds)
        limit = kLongestRunSeconds;
    g_now += kSecondsPerRead;
    return g_now;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    engine::SetMacroClock(fastClock);
    shell::SetDelaySleeper(nap);
    // Macros never change the table, so it is filled once; each input only puts its
    // text in the first macro.
    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    t.HotkeysFileName = fuzz::folder() + QStringLiteral("Hotkeys.txt");
    t.Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^%a"), QStringLiteral("Fuzzed"), QString()};
    t.Hotkeys[1] = hotkeys::Hotkey{true, QStringLiteral("^%b"), QStringLiteral("Helper"),
                                   QStringLiteral("[VAR A=A+1]\r\n[IF A>3]\r\n[SENDKEYS \"x\"]\r\n[ENDIF]")};
    t.HotkeyCount = 2;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString diagnostics;
    QTextStream diag(&diagnostics);
    platform::headless::HeadlessServices services(diag);
    // A fuzzed macro must not reach the network or start programs.
    platform::Services reach = platform::services();
    reach.web = nullptr;
    reach.desktop = nullptr;
    platform::install(reach);
    hotkeys::table().Hotkeys[0].Code = QString::fromUtf8(fuzz::bytes(data, size));
    engine::runState().reset();
    shell::app().reset();
    g_now = 0;
    g_naps = 0;
    engine::RunMacro(1);
    if (engine::runState().MacroRunning)
        fuzz::fail("the run ended with the macro still marked running");
    return 0;
}
