#pragma once
// A clean engine with recording fakes, and a hotkeys table filled by the test.
#include "engine/macro_clock.h"
#include "engine/run_state.h"
#include "fakes/fake_services.h"
#include "hotkeys/hotkeys_table.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"

#include <gtest/gtest.h>

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        hotkeys::table().reset();
        hotkeys::table().HotkeysFileName = QStringLiteral("/data/Hotkeys.txt");
        engine::runState().reset();
        shell::app().reset();
    }
    void TearDown() override
    {
        engine::SetMacroClock(nullptr);
        shell::SetDelaySleeper(nullptr);
    }
    // Adds an enabled macro and returns its number.
    int addMacro(const QString &name, const QString &code, const QString &keys = QString())
    {
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[t.HotkeyCount] = hotkeys::Hotkey{true, keys.isEmpty() ? QStringLiteral("^F%1").arg(t.HotkeyCount + 1) : keys,
                                                  name, code};
        return ++t.HotkeyCount;
    }
    QStringList actionTexts() const
    {
        QStringList texts;
        for (const auto &a : std::as_const(engine::runState().Actions))
            texts << a.Text;
        return texts;
    }
    fakes::FakeServices fakes;
};
