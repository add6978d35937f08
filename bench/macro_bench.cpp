// Macro engine speed: parsing a long macro, and the execution loop's own cost.
#include "engine/composition.h"
#include "engine/interpreter.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"

#include <benchmark/benchmark.h>

namespace {

// 100,000 lines of the usual mix: statements with conditions, assignments,
// keystrokes, comments.
QString longMacro()
{
    const QStringList pattern = {
        QStringLiteral("[IF  counter = 10 AND name = \"a b\"]"),
        QStringLiteral("  Hello {ENTER} world"),
        QStringLiteral("[Total = Total + 1]"),
        QStringLiteral("# a comment line"),
        QStringLiteral("[ELSE]"),
        QStringLiteral("[SENDKEYS \"^c\"]"),
        QStringLiteral("[ENDIF]"),
        QStringLiteral("[LOOP I=1,2,3]"),
        QStringLiteral("[WAIT 1]"),
        QStringLiteral("[ENDLOOP]"),
    };
    QString code;
    for (int i = 0; i < 100000; ++i)
        code += pattern.at(i % pattern.size()) + QStringLiteral("\r\n");
    return code;
}

void BM_ParseActions100kLines(benchmark::State &state)
{
    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("Long"), longMacro()};
    hotkeys::table().HotkeyCount = 1;
    for (auto _ : state) {
        engine::ParseActions(1);
        benchmark::DoNotOptimize(engine::runState().Actions.size());
    }
    state.counters["lines"] = static_cast<double>(engine::runState().Actions.size());
}
BENCHMARK(BM_ParseActions100kLines)->Unit(benchmark::kMillisecond);

void BM_ProcessActions1MNoOpLines(benchmark::State &state)
{
    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("Ends"), QString()};
    hotkeys::table().HotkeyCount = 1;
    engine::runState().Actions = macro::ActionList(1000000, macro::ActionLine{QStringLiteral("[ENDIF]"), 36});
    for (auto _ : state) {
        engine::InitMacroVars();
        QString errorText;
        int errorCount = 0;
        benchmark::DoNotOptimize(engine::ProcessActions(1, errorText, errorCount));
    }
}
BENCHMARK(BM_ProcessActions1MNoOpLines)->Unit(benchmark::kMillisecond);

} // namespace
