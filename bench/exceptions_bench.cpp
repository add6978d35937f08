// Pronunciation exceptions and macro composition on inputs that used to blow up: a clip
// rewritten by an ordinary list, by a list whose changes hold their own words, and a
// macro that includes itself.
#include "engine/composition.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"
#include "reader/exceptions.h"

#include <benchmark/benchmark.h>

namespace {

// About 100,000 characters of ordinary text.
QString clip()
{
    const QString sentence = QStringLiteral("Dr Smith met the CEO of NASA at St Mary's on Main St, approx. at 10 am; ");
    QString text;
    while (text.size() < 100000)
        text += sentence;
    return text;
}

void BM_MakeExceptionsOrdinaryList(benchmark::State &state)
{
    reader::ExceptionsState &s = reader::exceptionsState();
    s.reset();
    s.Exceptions = {{"Dr", "Doctor"}, {"CEO", "chief executive"}, {"NASA", "Nasa"}, {"St", "Saint"},
                    {"approx.", "approximately"}, {"am", "a.m."}, {"Doc", "Doctor"}, {"Main", "main"}};
    const QString text = clip();
    for (auto _ : state) {
        QString t = text;
        reader::MakeExceptions(t);
        benchmark::DoNotOptimize(t.size());
    }
}
BENCHMARK(BM_MakeExceptionsOrdinaryList)->Unit(benchmark::kMillisecond);

// Three changes that each hold their own word five times (the 88-byte list of the
// exceptions tests): goal < 50 ms for the clip.
void BM_MakeExceptionsSelfRepeatingList(benchmark::State &state)
{
    reader::ExceptionsState &s = reader::exceptionsState();
    s.reset();
    s.Exceptions = {{"fox", "fox fox fox fox fox"}, {"fox", "fox fox fox fox fox"}, {"fox", "fox fox fox fox fox!"}};
    const QString text = QString(clip()).replace(QStringLiteral("NASA"), QStringLiteral("fox"));
    for (auto _ : state) {
        QString t = text;
        reader::MakeExceptions(t);
        reader::UnmakeText(t);
        benchmark::DoNotOptimize(t.size());
    }
}
BENCHMARK(BM_MakeExceptionsSelfRepeatingList)->Unit(benchmark::kMillisecond);

// [HOTKEY 1] inside macro 1: the composition ends with "Too many lines of macro code"
// (goal < 1 ms; it used to expand a million lines first).
void BM_ComposeSelfIncludingMacro(benchmark::State &state)
{
    hotkeys::table().reset();
    hotkeys::table().Hotkeys[0] =
        hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("Loop"), QStringLiteral("a\r\n[HOTKEY 1]\r\nb")};
    hotkeys::table().HotkeyCount = 1;
    for (auto _ : state) {
        engine::ParseActions(1);
        benchmark::DoNotOptimize(engine::InsertHOTKEYcode());
    }
}
BENCHMARK(BM_ComposeSelfIncludingMacro)->Unit(benchmark::kMicrosecond);

} // namespace
