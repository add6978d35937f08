// Typing, mouse, click zones, the key log, focus, commands and questions, run as whole
// macros against the recording fakes.
#include "engine_fixture.h"

#include "engine/input_statements.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "platform/input_hooks.h"

using namespace engine;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList &list, std::ostream *os) { *os << list.join(QLatin1Char('|')).toStdString(); }
QT_END_NAMESPACE

namespace {

class InputStatementTest : public MacroRunTest {
protected:
    void SetUp() override
    {
        MacroRunTest::SetUp();
        hotkeys::hookState().reset();
        shell::SetDelaySleeper([](int) {});
    }
    // The mouse events as "<flags> <x> <y>" in screen pixels of the fake 1920 x 1080 screen.
    QStringList clicks() const
    {
        QStringList out;
        for (const QString &e : fakes.mouse.events) {
            const QStringList f = e.split(QLatin1Char(' '));
            out << QStringLiteral("%1 %2 %3")
                       .arg(f[0])
                       .arg(qRound(f[1].toDouble() * 1920 / 65535.0))
                       .arg(qRound(f[2].toDouble() * 1080 / 65535.0));
        }
        return out;
    }
};

} // namespace

TEST_F(InputStatementTest, SendKeysTypesStringsAndVariablesAndPressesPrintScreenOncePerToken)
{
    EXPECT_EQ(run({"[T=\"from a variable\"]", "[SENDKEYS \"Hello {TAB}World\"]", "[SENDKEYS T]",
                   "[SENDKEYS \"a{PRTSC}b{PRTSC}c\"]", "[SENDKEYS \"tail{prtsc}\"]"}),
              QString());
    EXPECT_EQ(fakes.keys.sent, (QStringList{"SENDKEYS Hello {TAB}World", "SENDKEYS from a variable", "SENDKEYS a",
                                            "KEY 44", "SENDKEYS b", "KEY 44", "SENDKEYS c", "SENDKEYS tail",
                                            "KEY 44"}));
    EXPECT_EQ(fakes.textWindow.shows, 0);
}

TEST_F(InputStatementTest, SendKeysTurnsLineBreaksIntoEnterAndRefusesMissingStrings)
{
    run({"[T=\"one\" & \"{ENTER}\"]", "[SENDKEYS T]", "[SENDKEYS \"\"]", "[SENDKEYS Unset]", "[SENDKEYS \"open]"});
    EXPECT_EQ(fakes.keys.sent, QStringList{"SENDKEYS one~"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 3 Invalid format for [SENDKEYS String] statement",
                                       "2) Line 4 Invalid format for [SENDKEYS String] statement",
                                       "3) Line 5 Invalid format for [SENDKEYS String] statement"}));
}

TEST_F(InputStatementTest, AClickIsMovePressTinyWalkAndReleaseAtOnePoint)
{
    EXPECT_EQ(run({"[X=100]", "[LEFTDOWN X 200]", "[LEFTUP 100 200]"}), QString());
    const QStringList events = clicks();
    ASSERT_EQ(events.size(), 1 + 1 + 299 + 1);
    EXPECT_EQ(events.first(), "8001 100 200");
    EXPECT_EQ(events.at(1), "8002 100 200");
    EXPECT_EQ(events.at(2), "8001 100 200");
    EXPECT_EQ(events.last(), "8004 100 200");
    EXPECT_EQ(hotkeys::hookState().PendingDownKind, 0);
}

TEST_F(InputStatementTest, ALongDragIsReleasedWhereItWasPressedAndRightButtonsUseTheirFlags)
{
    run({"[RIGHTDOWN 10 10]", "[RIGHTUP 900 500]"});
    EXPECT_EQ(clicks(), (QStringList{"8001 10 10", "8008 10 10", "8010 10 10"}));
}

TEST_F(InputStatementTest, UnpairedOrZeroPressesSendNothing)
{
    run({"[LEFTUP 10 10]", "[LEFTDOWN 0 5]", "[LEFTUP 0 5]", "[RIGHTDOWN 5 5]", "[LEFTUP 5 5]", "[LEFTUP 5 5]"});
    EXPECT_TRUE(fakes.mouse.events.isEmpty()) << fakes.mouse.events.join(QLatin1Char(';')).toStdString();
}

TEST_F(InputStatementTest, MousePositionMessages)
{
    run({"[S=\"x\"]", "[LEFTDOWN Nope 5]", "[LEFTDOWN S 5]", "[LEFTDOWN 5 1921]", "[RIGHTUP 5]", "[LEFTDOWN 5 -1]"});
    EXPECT_EQ(messages(),
              (QStringList{"1) Line 2 Value not set for X position for [LEFTDOWN xp yp] statement",
                           "2) Line 3 String variable not allowed for X position for [LEFTDOWN xp yp] statement",
                           "3) Line 4 Invalid Y position for [LEFTDOWN xp yp] statement",
                           "4) Line 5 Invalid format for [RIGHTUP xp yp] statement",
                           "5) Line 6 Invalid Y position for [LEFTDOWN xp yp] statement"}));
}

TEST_F(InputStatementTest, ClickZoneWaitsForAClickInsideAndStoresItsPosition)
{
    ASSERT_TRUE(hotkeys::HookKeyboard());
    int polls = 0;
    shell::SetDelaySleeper([&](int) {
        if (++polls == 2)
            fakes.inputHooks.click(platform::mouse::LeftDown, 5, 5);  // outside: ignored
        if (polls == 3) {
            EXPECT_TRUE(fakes.inputHooks.clickPlan.trapZone);
            fakes.inputHooks.click(platform::mouse::LeftDown, 150, 160);
        }
    });
    EXPECT_EQ(run({"[CLICKZONE 100 100 200 200 CX CY TRUE]", "[SENDKEYS \"hit\"]"}), QString());
    EXPECT_EQ(var("CX"), "150");
    EXPECT_EQ(var("CY"), "160");
    EXPECT_EQ(fakes.keys.sent, QStringList{"SENDKEYS hit"});
    EXPECT_FALSE(fakes.inputHooks.clickPlan.trapZone);  // nothing is swallowed afterwards
    EXPECT_FALSE(hotkeys::hookState().MouseHooked);
}

TEST_F(InputStatementTest, ClickZoneEndsOnAbortAndRefusesBadZonesFatally)
{
    ASSERT_TRUE(hotkeys::HookKeyboard());
    shell::SetDelaySleeper([](int) { runState().AbortRequested = true; });
    fakes.messages.answers = {shell::MsgYes};  // "Abort macro ...?"
    EXPECT_EQ(run({"[CLICKZONE 1 1 9 9 FALSE]", "after"}), "User abort");
    EXPECT_TRUE(fakes.keys.sent.isEmpty());

    const struct {
        const char *line;
        const char *message;
    } rows[] = {
        {"[CLICKZONE 1 1 9 9 MAYBE]", "Invalid TRAP value (TRUE/FALSE)"},
        {"[CLICKZONE Q 1 9 9 TRUE]", "Value not set for Xmin position"},
        {"[CLICKZONE 1 1 9 S TRUE]", "String variable not allowed for YMax position"},
        {"[CLICKZONE 9 1 9 9 TRUE]", "Xmax must be > Xmin"},
        {"[CLICKZONE 1 9 9 2 TRUE]", "Ymax must be > Ymin"},
    };
    shell::SetDelaySleeper([](int) {});
    for (const auto &row : rows) {
        run({"[S=\"s\"]", row.line, "after"});
        EXPECT_EQ(messages(), QStringList{QStringLiteral("1) Line 2 FATAL ERROR ") + QLatin1String(row.message)
                                          + QStringLiteral(" for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement")})
            << row.line;
    }
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
}

TEST_F(InputStatementTest, ClickZoneAndKeyLogNeedTheirHooks)
{
    fakes.inputHooks.keyboardAvailable = false;
    run({"[KEYLOG K]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Keyboard not hooked for [KEYLOG Var] statement"});
    run({"[CLICKZONE 1 1 9 9 TRUE]"});
    EXPECT_EQ(messages(),
              QStringList{"1) Line 1 FATAL ERROR Mouse not hooked for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"});
}

TEST_F(InputStatementTest, KeyLogStartsEmptyAndLaterFetchesWhatWasTyped)
{
    ASSERT_TRUE(hotkeys::HookKeyboard());
    fakes.keys.onDeliver = [&](const QString &line) {
        if (line == QLatin1String("SENDKEYS 1")) {
            fakes.inputHooks.press('H', false, false, true);
            fakes.inputHooks.press('I');
        }
        if (line == QLatin1String("SENDKEYS 2"))
            fakes.inputHooks.press('X');
    };
    EXPECT_EQ(run({"[KEYLOG A]", "1", "[KEYLOG B]", "[KEYLOG RESET]", "2", "[KEYLOG C]", "[KEYLOG 9]"}), QString());
    EXPECT_EQ(var("A"), "");
    EXPECT_EQ(var("B"), "Hi");
    EXPECT_EQ(var("C"), "x");
    EXPECT_EQ(messages(), QStringList{"1) Line 7 Invalid variable format for [KEYLOG Var] statement"});
}

TEST_F(InputStatementTest, SetFocusAnswersYesOrNoAndChecksItsOperands)
{
    fakes.windows.classes = {"xterm"};
    EXPECT_EQ(run({"[C=\"xterm\"]", "[SETFOCUS C A]", "[SETFOCUS \"gedit\" B]"}), QString());
    EXPECT_EQ(var("A"), "YES");
    EXPECT_EQ(var("B"), "NO");
    EXPECT_EQ(fakes.windows.activated, (QStringList{"xterm", "gedit"}));

    run({"[N=1]", "[SETFOCUS Nothing A]", "[SETFOCUS N A]", "[SETFOCUS \"\" A]", "[SETFOCUS \"x\"]",
         "[SETFOCUS \"x\" A1]", "[SETFOCUS \"x]"});
    const QString frame = QStringLiteral(" for [SETFOCUS Classname Ans] statement");
    EXPECT_EQ(messages(), (QStringList{"1) Line 2 Class name variable not assigned" + frame,
                                       "2) Line 3 Number variable not allowed" + frame,
                                       "3) Line 4 Empty class name variable" + frame,
                                       "4) Line 5 Invalid format for answer variable" + frame,
                                       "5) Line 6 Only letters allowed in answer variable name" + frame,
                                       "6) Line 7 Quote mismatch in variable" + frame}));
}

TEST_F(InputStatementTest, CommandStartsProgramsShellLinesAndMailWithoutWaiting)
{
    qputenv("SHELL", "/bin/bash");
    EXPECT_EQ(run({"[COMMAND \"xterm -e top\"]", "[COMMAND \"COMSPEC echo hi > /tmp/x\"]",
                   "[COMMAND \"mailto:someone@example.org\"]"}),
              QString());
    EXPECT_EQ(fakes.desktop.started, (QStringList{"xterm -e top", "/bin/bash -c echo hi > /tmp/x"}));
    EXPECT_EQ(fakes.desktop.opened, QStringList{"mailto:someone@example.org"});

    fakes.desktop.canStart = false;
    run({"[COMMAND \"no-such-program\"]", "never"});
    EXPECT_EQ(messages(),
              QStringList{"1) Line 1 FATAL ERROR Unable to execute command line for [COMMAND String] statement"});
    run({"[COMMAND \"  \"]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Invalid command line for [COMMAND String] statement"});
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
}

TEST_F(InputStatementTest, UserInputAsksInTheBoxOrTheTextWindowAndCancelStoresNothing)
{
    fakes.prompts.replies = {"Mary", "line 1\r\nline 2"};
    EXPECT_EQ(run({"[USERINPUT \"Your name?\" Name]", "[Notes=\"draft\"]", "[USERINPUT \"TEXTBOX\" Notes]",
                   "[USERINPUT \"Again?\" Name]"}),
              QString());
    EXPECT_EQ(fakes.prompts.asked, (QStringList{"input Hotkeys|Your name?", "edit draft", "input Hotkeys|Again?"}));
    EXPECT_EQ(var("Notes"), "line 1\r\nline 2");
    EXPECT_EQ(var("Name"), "");  // the second box was cancelled

    run({"[USERINPUT \"\" A]", "[USERINPUT \"Q\"]", "[USERINPUT \"Q\" A2]"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 1 Invalid title for [USERINPUT Title Var] statement",
                                       "2) Line 2 Invalid response variable name for [USERINPUT Title Var] statement",
                                       "3) Line 3 Only letters allowed in variable name for [USERINPUT Title Var] statement"}));
}

TEST_F(InputStatementTest, YesNoCancelStoresTheAnswerAndTakesInstructionsFromTheVariable)
{
    fakes.messages.answers = {shell::MsgYes, shell::MsgCancel, shell::MsgNo, shell::MsgOk};
    EXPECT_EQ(run({"[A=\"LJUSTIFY\"]", "[YESNOCANCEL \"Go on?\" A]", "[B=30]", "[YESNOCANCEL \"Sure?\" B]",
                   "[YESNOCANCEL \"Really?\" C]", "[D=\"x\"]", "[YESNOCANCEL \"Ready\" D]"}),
              QString());
    EXPECT_EQ(var("A"), "YES");
    EXPECT_EQ(var("B"), "CANCEL");
    EXPECT_EQ(var("C"), "NO");
    EXPECT_EQ(var("D"), "");
    ASSERT_EQ(fakes.messages.shown.size(), 4);
    EXPECT_EQ(fakes.messages.shown[0].align, 0);
    EXPECT_EQ(fakes.messages.shown[0].type, 2);
    EXPECT_EQ(fakes.messages.shown[0].title, "Hotkeys");
    EXPECT_EQ(fakes.messages.shown[1].timeout, 30);
    EXPECT_EQ(fakes.messages.shown[2].timeout, 0);
    EXPECT_EQ(fakes.messages.shown[3].type, 0);  // no question mark: information only

    run({"[YESNOCANCEL \"\" A]", "[YESNOCANCEL \"Q?\" 9]"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 1 Invalid question for [YESNOCANCEL Question Ans] statement",
                                       "2) Line 2 Invalid answer variable name for [YESNOCANCEL Question Ans] statement"}));
}

TEST_F(InputStatementTest, ALongTypingAsksWhetherToGoOnAndHearsTheStopRequest)
{
    QList<bool> answers;
    fakes.keys.onDeliver = [&](const QString &) {
        ASSERT_TRUE(fakes.keys.keepGoing);
        answers << fakes.keys.keepGoing();
        RequestAbort();  // Esc while the text is being typed
        answers << fakes.keys.keepGoing();
    };
    fakes.messages.answers = {shell::MsgYes};  // "Abort macro ...?"
    EXPECT_EQ(run({"[SENDKEYS \"a long text\"]", "never"}), "User abort");
    EXPECT_EQ(answers, (QList<bool>{true, false}));
    EXPECT_FALSE(fakes.keys.keepGoing);  // not left pointing into a finished run
}
