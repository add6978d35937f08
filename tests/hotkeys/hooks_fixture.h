#pragma once
// Hooks installed on the fake: a hotkeys table filled by the test, hotkeys on, and a
// recording window with plain fields.
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <gtest/gtest.h>

class FieldRecordingWindow : public hotkeys::RecordingWindow {
public:
    QString box, title = QStringLiteral("Sonamark"), status;
    bool answerYes = true, answerMouse = true;
    int monitorStops = 0;
    QStringList handed;
    QString text() const override { return box; }
    void setText(const QString &t) override { box = t; }
    QString caption() const override { return title; }
    void setCaption(const QString &c) override { title = c; }
    void setStatusText(const QString &t) override { status = t; }
    bool askToRecord(bool &includeMouse) override
    {
        includeMouse = answerMouse;
        return answerYes;
    }
    void stopMonitoring() override { ++monitorStops; }
    void openEditor(const QString &code) override { handed << code; }
};

class HooksTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        hotkeys::table().reset();
        engine::runState().reset();
        shell::app().reset();
        hotkeys::hookState().reset();
        engine::ConnectRunner();
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        hotkeys::SetRunTimerStarter([this] { ++runTimerStarts; });
        hotkeys::SetRecordingWindow(&window);
        hotkeys::SetRecordingClock([this] { return clock; });
        ASSERT_TRUE(hotkeys::HookKeyboard());
    }
    void TearDown() override
    {
        hotkeys::SetRunTimerStarter(nullptr);
        hotkeys::SetRecordingWindow(nullptr);
        hotkeys::SetRecordingClock(nullptr);
        hotkeys::hookState().reset();
    }
    int addMacro(const QString &keys, bool active = true)
    {
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[t.HotkeyCount] = hotkeys::Hotkey{active, keys, QStringLiteral("M%1").arg(t.HotkeyCount + 1),
                                                  QStringLiteral("a")};
        return ++t.HotkeyCount;
    }
    fakes::FakeServices fakes;
    FieldRecordingWindow window;
    int runTimerStarts = 0;
    double clock = 1000.0;
};
