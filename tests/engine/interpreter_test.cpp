// Running macros: keystrokes, limits, abort, messages and the run-time report.
#include "engine_fixture.h"

#include "engine/dispatch.h"
#include "engine/interpreter.h"
#include "engine/keystrokes.h"
#include "engine/macro_clock.h"
#include "engine/run_timer.h"

#include <stdexcept>

using namespace engine;

namespace {
const QString kRule(30, QLatin1Char('='));
}

TEST_F(EngineTest, KeystrokeLinesAreSentAsTyped)
{
    const int n = addMacro(QStringLiteral("Keys"), QStringLiteral("# greet\r\n  Hello  World\r\n[ENDIF]\r\n'skipped\r\n{ENTER}"));
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.keys.sent, (QStringList{QStringLiteral("SENDKEYS   Hello  World"), QStringLiteral("SENDKEYS {ENTER}")}));
    EXPECT_EQ(fakes.textWindow.shows, 0);
    EXPECT_FALSE(runState().MacroRunning);
    EXPECT_EQ(fakes.tray.tip, QStringLiteral("Sonamark - Idle"));
}

TEST_F(EngineTest, EmptyDisabledAndCommentOnlyMacros)
{
    EXPECT_EQ(RunMacro(addMacro(QStringLiteral("Empty"), QString())), QStringLiteral("No actions to parse"));
    EXPECT_EQ(RunMacro(addMacro(QStringLiteral("Notes"), QStringLiteral("# a\r\n# b"))), QStringLiteral("No actions to execute"));
    const int off = addMacro(QStringLiteral("Off"), QStringLiteral("abc"));
    hotkeys::table().at(off).Active = false;
    EXPECT_EQ(RunMacro(off), QString());
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
    EXPECT_THROW(RunMacro(501), std::out_of_range);
}

TEST_F(EngineTest, RuntimeReportListsNumberedMessages)
{
    // Messages that are not fatal are numbered and the macro goes on.
    const QString code = QStringLiteral("# first\r\n[GETMULTICLIP 6 X]\r\nab\r\n[CLOSE 1]");
    const int n = addMacro(QStringLiteral("Two"), code);
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS ab")});
    EXPECT_EQ(fakes.textWindow.caption, QStringLiteral("ERROR REPORT"));
    const QString expected = kRule + "\r\nRuntime Error Report for Hotkey 1 \"Two\"\r\n" + kRule
                             + "\r\n1:# first\r\n2:[GETMULTICLIP 6 X]\r\n3:ab\r\n4:[CLOSE 1]\r\n" + kRule + "\r\n"
                             + "1) Line 1 Invalid clip number (1-5) for [GETMULTICLIP n Var] statement"
                             + "\r\n2) Line 3 No files open for [CLOSE n] statement"
                             + "\r\n\r\n\r\nThere were 2 error messages";
    EXPECT_EQ(fakes.textWindow.text, expected);
}

TEST_F(EngineTest, RuntimeReportIsModalAndTheRunLastsUntilItIsClosed)
{
    const int n = addMacro(QStringLiteral("Two"), QStringLiteral("[GETMULTICLIP 6 X]\r\n[CLOSE 1]"));
    addMacro(QStringLiteral("Other"), QStringLiteral("zz"));
    bool runningWhileOpen = false;
    fakes.textWindow.whileModal = [&] {
        runningWhileOpen = runState().MacroRunning;
        // The user presses the other macro's hotkey while reading the report.
        shell::app().PendingHotkey = 2;
        RunTimer_Timer();
    };
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.textWindow.modalShows, 1);
    EXPECT_TRUE(runningWhileOpen);
    // The second macro was refused: nothing typed, and the report was not replaced.
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
    EXPECT_EQ(fakes.textWindow.shows, 1);
    EXPECT_TRUE(fakes.textWindow.text.contains(QStringLiteral("Runtime Error Report for Hotkey 1 \"Two\"")));
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, QStringLiteral("A macro is already running\r\n"));
    EXPECT_FALSE(runState().MacroRunning);
}

TEST_F(EngineTest, FatalMessageEndsTheRunWithAReportAndNoResult)
{
    // A keystroke line holding a statement word is dispatched as that statement.
    const int n = addMacro(QStringLiteral("Fatal"), QStringLiteral("a\r\nx[HOTKEY 1]\r\nb"));
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS a")});
    EXPECT_TRUE(fakes.textWindow.text.endsWith(
        QStringLiteral("1) Line 2 FATAL ERROR Hotkey not found referenced in line 2\r\n\r\n\r\nThere was 1 error message")));
}

TEST_F(EngineTest, MessagesAreTruncatedAt200ButCounted)
{
    addMacro(QStringLiteral("Many"), QStringLiteral("x"));
    MacroRunState &s = runState();
    s.Actions = macro::ActionList(300, macro::ActionLine{QString(), 0});  // empty keystroke lines
    InitMacroVars();
    QString errorText;
    int errorCount = 0;
    EXPECT_EQ(ProcessActions(1, errorText, errorCount), QString());
    EXPECT_EQ(errorCount, 300);
    const QStringList lines = errorText.split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 201);
    EXPECT_EQ(lines.first(), QStringLiteral("1) Line 1 Invalid command line for sending keystrokes"));
    EXPECT_EQ(lines.at(198), QStringLiteral("199) Line 199 Invalid command line for sending keystrokes"));
    EXPECT_EQ(lines.at(199), QString());
    EXPECT_EQ(lines.at(200), QStringLiteral("<<Error messages were truncated at 200>>"));
}

TEST_F(EngineTest, OneMillionStatementsRunAndTheNextIsRefused)
{
    addMacro(QStringLiteral("Long"), QStringLiteral("x"));
    MacroRunState &s = runState();
    QString errorText;
    int errorCount = 0;
    s.Actions = macro::ActionList(1000000, macro::ActionLine{QStringLiteral("[ENDIF]"), 36});
    InitMacroVars();
    EXPECT_EQ(ProcessActions(1, errorText, errorCount), QString());
    s.Actions << macro::ActionLine{QStringLiteral("[ENDIF]"), 36};
    InitMacroVars();
    EXPECT_EQ(ProcessActions(1, errorText, errorCount), QStringLiteral("Too many lines executed"));
    EXPECT_EQ(s.LinesExecuted, 1000001);
    EXPECT_EQ(errorCount, 0);
}

TEST_F(EngineTest, TimeOutEndsTheRunAndMidnightIsCrossed)
{
    double clock = 1000;
    SetMacroClock([&] { return clock += 1000; });  // each look at the clock: 1000 s later
    QString code;
    for (int i = 1; i <= 20; ++i)
        code += QStringLiteral("k%1\r\n").arg(i);
    const int n = addMacro(QStringLiteral("Slow"), code);
    EXPECT_EQ(RunMacro(n), QStringLiteral("Macro timed out"));
    EXPECT_EQ(fakes.keys.sent.size(), 10);  // 10,800 s allow ten lines

    // Started at 22:13:20; at 01:23:20 the next day three hours and ten minutes have passed.
    QList<double> ticks = {80000, 86000, 5000};
    SetMacroClock([&] { return ticks.size() > 1 ? ticks.takeFirst() : ticks.first(); });
    fakes.keys.sent.clear();
    EXPECT_EQ(RunMacro(addMacro(QStringLiteral("Night"), QStringLiteral("a\r\nb\r\nc"))), QStringLiteral("Macro timed out"));
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS a")});
}

TEST_F(EngineTest, AbortQuestionNoGoesOnYesStops)
{
    const int n = addMacro(QStringLiteral("Stoppable"), QStringLiteral("a\r\nb\r\nc"));
    fakes.keys.onDeliver = [](const QString &line) {
        if (line == QLatin1String("SENDKEYS a"))
            RequestAbort();
    };
    fakes.messages.answers = {shell::MsgNo};
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.keys.sent.size(), 3);
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, QStringLiteral("Abort macro \"Stoppable\"?\r\n"));
    EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("ABORT"));
    EXPECT_EQ(fakes.messages.shown[0].type, 1);

    fakes.keys.sent.clear();
    fakes.messages.answers = {shell::MsgYes};
    EXPECT_EQ(RunMacro(n), QStringLiteral("User abort"));
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS a")});
    EXPECT_FALSE(runState().AbortRequested);
}

TEST_F(EngineTest, AFaultInAStatementIsReportedAndTheMacroGoesOn)
{
    const int n = addMacro(QStringLiteral("Faulty"), QStringLiteral("bad\r\ngood"));
    fakes.keys.onDeliver = [](const QString &line) {
        if (line == QLatin1String("SENDKEYS bad"))
            throw std::runtime_error("device gone");
    };
    EXPECT_EQ(RunMacro(n), QString());
    EXPECT_EQ(fakes.keys.sent.last(), QStringLiteral("SENDKEYS good"));
    ASSERT_EQ(fakes.errors.reports.size(), 1);
    EXPECT_TRUE(fakes.errors.reports[0].contains(QStringLiteral("(Module) modDoHotkeys::Function Keystrokes_Only")));
    EXPECT_EQ(fakes.textWindow.shows, 0);
}

TEST_F(EngineTest, PrintScreenKeepsTheTokenAndGoesOnPressing)
{
    addMacro(QStringLiteral("Shot"), QStringLiteral("x"));
    runState().MacroStart = MacroClock();
    runState().Actions = {macro::ActionLine{QStringLiteral("ab{PRTSC}cd"), 0}};
    struct Enough {};
    int presses = 0;
    fakes.keys.onDeliver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("KEY")) && ++presses == 3)
            throw Enough{};
    };
    EXPECT_THROW(Keystrokes_Only(1), Enough);
    EXPECT_EQ(fakes.keys.sent, (QStringList{QStringLiteral("SENDKEYS ab"), QStringLiteral("KEY 44"),
                                            QStringLiteral("SENDKEYS ab"), QStringLiteral("KEY 44"),
                                            QStringLiteral("SENDKEYS ab"), QStringLiteral("KEY 44")}));

    // The user's stop request ends the pressing.
    fakes.keys.sent.clear();
    presses = 0;
    fakes.keys.onDeliver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("KEY")) && ++presses == 2)
            RequestAbort();
    };
    EXPECT_EQ(Keystrokes_Only(1), QString());
    EXPECT_EQ(presses, 2);
    runState().AbortRequested = false;
    fakes.keys.onDeliver = nullptr;

    // Each press counts against the run's line limit, so a whole run still ends.
    fakes.keys.sent.clear();
    const int shot = addMacro(QStringLiteral("Endless shot"), QStringLiteral("[N=1]\r\n{PRTSC}\r\n[N=2]"));
    EXPECT_EQ(RunMacro(shot), QStringLiteral("Too many lines executed"));
    EXPECT_EQ(fakes.keys.sent.count(QStringLiteral("KEY 44")), kMaxLinesExecuted - 1);
    EXPECT_EQ(fakes.keys.sent.size(), kMaxLinesExecuted - 1);  // nothing typed behind the last press

    // In lower case the token is found once, and the whole line is then typed.
    fakes.keys.sent.clear();
    runState().LinesExecuted = 0;
    runState().MacroStart = MacroClock();
    runState().Actions = {macro::ActionLine{QStringLiteral("ab{prtsc}cd"), 0}};
    EXPECT_EQ(Keystrokes_Only(1), QString());
    EXPECT_EQ(fakes.keys.sent, (QStringList{QStringLiteral("SENDKEYS ab"), QStringLiteral("KEY 44"),
                                            QStringLiteral("SENDKEYS ab{prtsc}cd")}));
}
