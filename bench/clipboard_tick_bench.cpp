// Cost of one idle tick of the clipboard timers on the real Qt clipboard (offscreen
// platform: no X server, so what is measured is our own work per tick, not Qt's timer
// wake-up). Goal: the idle ticks of an hour, Timer1 at 10 a second, stay far under one
// CPU-second: 36,000 ticks at under 25 us each.
#include "platform/qt/qt_clipboard.h"
#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"
#include "shell/app_state.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

namespace {

// The window as the monitor sees it; nothing to show.
class QuietClipView : public reader::ClipView {
public:
    void setClipRow(int, const QString &, bool) override {}
    void setClipCountRow(const QString &, bool) override {}
    void setPicRow(int, const QString &, bool) override {}
    void setPicCountRow(const QString &, bool) override {}
    bool picsEnabled() const override { return false; }
    void setPicsEnabled(bool) override {}
    void setTrayEntryVisible(reader::TrayEntry, bool) override {}
    void setTrayEntryEnabled(reader::TrayEntry, bool) override {}
    void setTrayCaption(reader::TrayEntry, const QString &) override {}
    void popTrayMenu() override {}
    QString clipToggleCaption() const override { return reader::kClipOn; }
    void setClipToggle(const QString &, const QString &) override {}
    void setTimer1Enabled(bool) override {}
    void setTimer3Enabled(bool) override {}
    void setTimer5Enabled(bool) override {}
    void setPasteClearEnabled(bool) override {}
    bool spellClipMode() const override { return false; }
    void setStatusText(const QString &) override {}
    void setPanel1(const QString &) override {}
    void resetClipFont() override {}
    void setSpeechText(const QString &) override {}
    void talk() override {}
};

struct Setup {
    platform::QtClipboard clipboard;
    QuietClipView view;
    Setup()
    {
        platform::Services set;
        set.clipboard = &clipboard;
        platform::install(set);
        reader::SetClipView(&view);
        shell::app().SpeechState = 2;
    }
    ~Setup()
    {
        reader::SetClipView(nullptr);
        platform::install({});
    }
};

// Monitoring, nothing copied: Timer1 finds the clipboard empty.
void BM_Timer1IdleTick(benchmark::State &state)
{
    Setup s;
    s.clipboard.clear();
    for (auto _ : state)
        reader::Timer1_Timer();
}
BENCHMARK(BM_Timer1IdleTick);

// Collecting, a stored text left on the clipboard: Timer3 sees it is stored.
void BM_Timer3IdleTickWithStoredText(benchmark::State &state)
{
    Setup s;
    s.clipboard.setText(QStringLiteral("A sentence that stays on the clipboard while nothing else is copied."));
    reader::Timer3_Timer();
    for (auto _ : state)
        reader::Timer3_Timer();
    if (reader::clipStore().ClipCount != 1)
        state.SkipWithError("the text was not stored once");
}
BENCHMARK(BM_Timer3IdleTickWithStoredText);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
