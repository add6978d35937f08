// Control statements at speed: a macro whose loop runs until the 1,000,000-statement
// limit, mixing a condition [LOOP], [VAR=Val] with arithmetic, [IF] and a short
// sequence loop (goal: the limit reached in under 2 s).
#include "engine/composition.h"
#include "engine/interpreter.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"

#include <benchmark/benchmark.h>

namespace {

const char *const kLoopMacro = "[N=0]\r\n"
                               "[S=0]\r\n"
                               "[LOOP N<100000000]\r\n"
                               "[N=N+1]\r\n"
                               "[S=S+N*2-1]\r\n"
                               "[IF S>5 AND N<>3]\r\n"
                               "[T=S/2]\r\n"
                               "[ELSE]\r\n"
                               "[T=0]\r\n"
                               "[ENDIF]\r\n"
                               "[LOOP J=1,2]\r\n"
                               "[ENDLOOP]\r\n"
                               "[ENDLOOP]\r\n";

void BM_LoopToTheStatementLimit(benchmark::State &state)
{
    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] =
        hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("Busy"), QString::fromLatin1(kLoopMacro)};
    hotkeys::table().HotkeyCount = 1;
    QString result;
    for (auto _ : state) {
        engine::ParseActions(1);
        engine::InitMacroVars();
        QString errorText;
        int errorCount = 0;
        result = engine::ProcessActions(1, errorText, errorCount);
        if (errorCount != 0)
            state.SkipWithError(errorText.toStdString().c_str());
    }
    if (result != QLatin1String("Too many lines executed"))
        state.SkipWithError("the loop did not reach the statement limit");
    state.counters["statements/s"] = benchmark::Counter(static_cast<double>(engine::runState().LinesExecuted - 1),
                                                        benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_LoopToTheStatementLimit)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
