// Check Code speed: HotkeyStatus of a 2,000-line macro of the usual mix (goal < 50 ms),
// and the hostile cases kept out of the unit tests for their time: a 100,000-character
// condition, 2,000 unclosed blocks, a 10,000-line macro and 500 macros in one table (no
// goal: they must end, and the figure says how long a user would wait).
#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_table.h"

#include <QStringList>
#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

constexpr int kUsualLines = 2000;
constexpr int kLongCondition = 10000;  // " AND "s: a 100,000-character line
constexpr int kUnclosedBlocks = 2000;
constexpr int kManyMacros = 500;
constexpr int kManyMacroLines = 10000;
constexpr int kShortMacroLines = 1000;

// Twenty lines with every kind of line the checker sees, blocks closed, mouse
// positions paired, the file opened and closed; one line with an error.
const QStringList kPattern = {
    QStringLiteral("[IF  counter = 10 AND name = \"a b\"]"),
    QStringLiteral("  Hello {ENTER} world"),
    QStringLiteral("    [Total = Total + 1]"),
    QStringLiteral("# a comment line"),
    QStringLiteral("[ELSE]"),
    QStringLiteral("    [SENDKEYS \"^c\"]"),
    QStringLiteral("[ENDIF]"),
    QStringLiteral("[LOOP I=1,3]"),
    QStringLiteral("    [WAIT 1]"),
    QStringLiteral("    [T = MID(name,1,2) & name]"),
    QStringLiteral("    [CANCEL IF T=\"ab\"]"),
    QStringLiteral("[ENDLOOP]"),
    QStringLiteral("[OPEN 1 \"notes.txt\"]"),
    QStringLiteral("[READ 1 Line]"),
    QStringLiteral("[CLOSE 1]"),
    QStringLiteral("[LEFTDOWN 100 200]"),
    QStringLiteral("[LEFTUP 300 400]"),
    QStringLiteral("[N = LEN(Line) * 2]"),
    QStringLiteral("[HOTKEY 1]"),
    QStringLiteral("[WAIT 0.01]"),
};

QString usualMacro(int lines)
{
    QString code;
    for (int i = 0; i < lines; ++i)
        code += kPattern.at(i % kPattern.size()) + QStringLiteral("\r\n");
    return code;
}

void oneMacroTable()
{
    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("Usual"), QStringLiteral("x")};
    hotkeys::table().HotkeyCount = 1;
}

// Checks code once an iteration and reports its lines and errors.
void checkEachTime(benchmark::State &state, const QString &code)
{
    oneMacroTable();
    QString report;
    for (auto _ : state) {
        QString copy = code;
        report = hotkeys::HotkeyStatus(copy);
        benchmark::DoNotOptimize(report);
    }
    state.counters["lines"] = double(code.count(QStringLiteral("\r\n")));
    state.counters["errors"] = double(hotkeys::ErrorLineCount());
}

void BM_Check2000LineMacro(benchmark::State &state) { checkEachTime(state, usualMacro(kUsualLines)); }
BENCHMARK(BM_Check2000LineMacro)->Unit(benchmark::kMillisecond);

void BM_Check100kCharacterCondition(benchmark::State &state)
{
    checkEachTime(state, QStringLiteral("[IF ") + QStringLiteral("A = 1 AND ").repeated(kLongCondition)
                             + QStringLiteral("B=2]\r\n[ENDIF]\r\n"));
}
BENCHMARK(BM_Check100kCharacterCondition)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_Check2000UnclosedBlocks(benchmark::State &state)
{
    QString code;
    for (int n = 0; n < kUnclosedBlocks; ++n)
        code += QStringLiteral("[IF A=%1]\r\n[LOOP B<2]\r\n").arg(n);
    checkEachTime(state, code);
}
BENCHMARK(BM_Check2000UnclosedBlocks)->Unit(benchmark::kMillisecond)->Iterations(1);

// The hotkeys table of `macros` copies of a macro of `lines` lines, each checked in turn.
void checkTable(benchmark::State &state, int macros, int lines)
{
    const QString code = usualMacro(lines);
    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    for (int n = 0; n < macros; ++n)
        t.Hotkeys[n] = hotkeys::Hotkey{true, QStringLiteral("^%1").arg(n), QStringLiteral("Long %1").arg(n), code};
    t.HotkeyCount = macros;
    int errors = 0;
    for (auto _ : state) {
        errors = 0;
        for (int n = 1; n <= t.HotkeyCount; ++n) {
            QString copy = t.at(n).Code;
            benchmark::DoNotOptimize(hotkeys::HotkeyStatus(copy));
            errors += hotkeys::ErrorLineCount();
        }
    }
    state.counters["lines"] = double(macros) * lines;
    state.counters["errors"] = errors;
}

void BM_Check10000LineMacro(benchmark::State &state) { checkEachTime(state, usualMacro(kManyMacroLines)); }
BENCHMARK(BM_Check10000LineMacro)->Unit(benchmark::kMillisecond)->Iterations(1);

// The whole table: 500 macros of 1,000 lines here; the 10,000-line ones take about 500
// times BM_Check10000LineMacro, so they run only with SONAMARK_BENCH_LONG set.
void BM_Check500MacrosOf1000Lines(benchmark::State &state) { checkTable(state, kManyMacros, kShortMacroLines); }
BENCHMARK(BM_Check500MacrosOf1000Lines)->Unit(benchmark::kMillisecond)->Iterations(1);

const bool kLongRegistered = std::getenv("SONAMARK_BENCH_LONG")
                             && benchmark::RegisterBenchmark("BM_Check500MacrosOf10000Lines",
                                                             [](benchmark::State &state) {
                                                                 checkTable(state, kManyMacros, kManyMacroLines);
                                                             })
                                    ->Unit(benchmark::kMillisecond)
                                    ->Iterations(1);

} // namespace
