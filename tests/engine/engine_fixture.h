#pragma once
// A clean engine with recording fakes, and a hotkeys table filled by the test.
#include "engine/interpreter.h"
#include "engine/macro_clock.h"
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/variables.h"
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
        engine::ConnectRunner();
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

// Runs whole macros and reads their run-time report and variables.
class MacroRunTest : public EngineTest {
protected:
    // Runs code as a macro of its own; returns RunMacro's result.
    QString run(const QStringList &lines)
    {
        fakes.textWindow.text.clear();
        return engine::RunMacro(addMacro(QStringLiteral("M%1").arg(hotkeys::table().HotkeyCount + 1),
                                 lines.join(QStringLiteral("\r\n"))));
    }
    // The numbered messages of the last report, one per entry; empty when none was shown.
    QStringList messages() const
    {
        const QString &text = fakes.textWindow.text;
        if (text.isEmpty())
            return {};
        const QString rule = QString(30, QLatin1Char('=')) + QStringLiteral("\r\n");
        const qsizetype from = text.lastIndexOf(rule) + rule.size();
        const qsizetype to = text.lastIndexOf(QStringLiteral("\r\n\r\n\r\n"));
        return text.mid(from, to - from).split(QStringLiteral("\r\n"));
    }
    static QString var(const QString &name)
    {
        QString n = name;
        int type = 0;
        const QString value = macro::GetVarVal(n, type);
        return n.isEmpty() ? QStringLiteral("<unset>") : value;
    }
};
