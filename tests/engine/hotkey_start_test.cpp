// The ways a macro starts: a hotkey through RunTimer, and the clipboard command.
#include "engine_fixture.h"

#include "engine/clipboard_command.h"
#include "engine/interpreter.h"
#include "engine/run_timer.h"

using namespace engine;

TEST_F(EngineTest, ProcessHotkeyOnlyRecordsEnabledMacros)
{
    addMacro(QStringLiteral("On"), QStringLiteral("a"));
    addMacro(QStringLiteral("Off"), QStringLiteral("b"));
    hotkeys::table().at(2).Active = false;
    EXPECT_EQ(ProcessHotkey(1), QString());
    EXPECT_EQ(shell::app().PendingHotkey, 1);
    EXPECT_EQ(ProcessHotkey(2), QString());
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    EXPECT_EQ(ProcessHotkey(3), QStringLiteral("Error Hotkey 3 not found. No actions taken."));
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
}

TEST_F(EngineTest, RunTimerRunsThePendingMacroAndReportsItsResult)
{
    addMacro(QStringLiteral("Notes"), QStringLiteral("# nothing\r\n# to do"));
    shell::app().PendingHotkey = 1;
    RunTimer_Timer();
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    const QString rule(30, QLatin1Char('='));
    EXPECT_EQ(fakes.textWindow.caption, QString());
    EXPECT_EQ(fakes.textWindow.text, rule + "\r\nError Check for 1 \"Notes\"\r\n" + rule
                                         + "\r\n1:# nothing\r\n2:# to do\r\n" + rule + "\r\nNo actions to execute\r\n");
}

TEST_F(EngineTest, RunTimerRefusesASecondMacro)
{
    addMacro(QStringLiteral("Busy"), QStringLiteral("a"));
    runState().MacroRunning = true;
    shell::app().PendingHotkey = 1;
    RunTimer_Timer();
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, QStringLiteral("A macro is already running\r\n"));
    EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("Run Macro"));
    EXPECT_EQ(shell::app().PendingHotkey, 1);
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
}

TEST_F(EngineTest, ParseCommandLineMacroSplitsAtTheLastBlank)
{
    QString name;
    double seconds = -1;
    ParseCommandLineMacro(QStringLiteral("My$Macro 5"), name, seconds);
    EXPECT_EQ(name, QStringLiteral("My Macro"));
    EXPECT_EQ(seconds, 5);
    ParseCommandLineMacro(QStringLiteral("My Macro"), name, seconds);
    EXPECT_EQ(name, QStringLiteral("My"));
    EXPECT_EQ(seconds, 0);
    ParseCommandLineMacro(QStringLiteral("Solo"), name, seconds);
    EXPECT_EQ(name, QStringLiteral("Solo"));
    EXPECT_EQ(seconds, 0);
}

TEST_F(EngineTest, ClipboardCommandRunsTheNamedMacroAfterItsWait)
{
    addMacro(QStringLiteral("Other"), QStringLiteral("no"));
    addMacro(QStringLiteral("My Macro"), QStringLiteral("typed"));
    QList<int> sleeps;
    shell::SetDelaySleeper([&](int ms) {
        EXPECT_TRUE(fakes.keys.sent.isEmpty());  // the macro runs after the wait
        sleeps << ms;
    });
    bool hidden = false;
    SetCommandLineUi({[&] { hidden = true; }, nullptr});
    fakes.clipboard.content = QStringLiteral("/\u00e0 my$macro 5");
    EXPECT_TRUE(PollClipboardCommand());
    SetCommandLineUi({});
    EXPECT_TRUE(fakes.clipboard.content.isEmpty());
    EXPECT_TRUE(hidden);
    EXPECT_EQ(sleeps, (QList<int>{1000, 1000, 1000, 1000, 1000}));
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS typed")});

    fakes.clipboard.content = QStringLiteral("/a my$macro");  // not a command
    EXPECT_FALSE(PollClipboardCommand());
    EXPECT_EQ(fakes.clipboard.content, QStringLiteral("/a my$macro"));
}

TEST_F(EngineTest, ClipboardCommandMessages)
{
    addMacro(QStringLiteral("Off"), QStringLiteral("typed"));
    addMacro(QStringLiteral("Blank"), QStringLiteral("\r\n"));
    hotkeys::table().at(1).Active = false;
    shell::SetDelaySleeper([](int) {});

    RunCommandLineMacro(QStringLiteral("Nobody"));
    RunCommandLineMacro(QStringLiteral("Blank"));
    fakes.messages.answers = {shell::MsgCancel};
    RunCommandLineMacro(QStringLiteral("Off"));
    fakes.messages.answers = {shell::MsgNo};
    RunCommandLineMacro(QStringLiteral("Off"));  // goes on, but a disabled macro does nothing
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
    fakes.messages.answers = {shell::MsgYes};
    RunCommandLineMacro(QStringLiteral("Off 4000"));
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS typed")});
    EXPECT_TRUE(hotkeys::table().at(1).Active);

    QStringList seen;
    for (const auto &m : std::as_const(fakes.messages.shown))
        seen << m.title + QStringLiteral(": ") + m.text.trimmed();
    EXPECT_EQ(seen, (QStringList{
                        QStringLiteral("QuickLaunch Macro: Macro not found in file /data/Hotkeys.txt"),
                        QStringLiteral("Run Macro: No actions in this macro to run"),
                        QStringLiteral("Run Macro: This macro is disabled. Enable it?"),
                        QStringLiteral("Run Macro: This macro is disabled. Enable it?"),
                        QStringLiteral("Run Macro: This macro is disabled. Enable it?"),
                        QStringLiteral("Run Macro: You can only wait 3600 secs before running a macro. Use the "
                                       "[WAIT Secs] command for wait times longer than 3600 secs."),
                    }));
}

TEST_F(EngineTest, ClipboardCommandReportsAResult)
{
    addMacro(QStringLiteral("Notes"), QStringLiteral("# none"));
    RunCommandLineMacro(QStringLiteral("Notes"));
    const QString rule(30, QLatin1Char('='));
    EXPECT_EQ(fakes.textWindow.caption, QStringLiteral("ERROR REPORT"));
    EXPECT_EQ(fakes.textWindow.text, "\r\n" + rule + "\r\nError Check for Notes 1\r\n" + rule
                                         + "\r\nNo actions to execute\r\n1:# none\r\n");
}

TEST_F(EngineTest, AFaultInTheRunIsReportedAsTheRunsAndThePendingHotkeyIsCleared)
{
    addMacro(QStringLiteral("Only"), QStringLiteral("a"));
    shell::app().PendingHotkey = 501;  // beyond the table: the run fails looking it up
    RunTimer_Timer();
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    ASSERT_EQ(fakes.errors.reports.size(), 1);
    EXPECT_TRUE(fakes.errors.reports[0].startsWith("Error 9 in (Module) modHotkeys::Function RunMacro\r\n"))
        << fakes.errors.reports[0].toStdString();
}
