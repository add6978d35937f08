// Branches, loops, waits, [CANCEL IF] and assignments, end to end: macro text in, the
// run-time report and the final variable values out.
#include "engine_fixture.h"

#include "engine/control_statements.h"
#include "engine/interpreter.h"
#include "engine/macro_clock.h"
#include "engine/structure_search.h"
#include "macro/actions.h"
#include "macro/sequences.h"
#include "macro/statement_check.h"
#include "macro/variables.h"

#include <QDir>
#include <QTemporaryDir>

using namespace engine;

// Readable failure output for the texts compared below.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

class ControlTest : public MacroRunTest {
protected:
    void TearDown() override
    {
        macro::SetDateTimeSource(nullptr);
        EngineTest::TearDown();
    }
    QStringList typed() const { return fakes.keys.sent; }
};

QStringList keys(std::initializer_list<const char *> texts)
{
    QStringList out;
    for (const char *t : texts)
        out << QStringLiteral("SENDKEYS ") + QLatin1String(t);
    return out;
}

} // namespace

TEST_F(ControlTest, StructureSearchesCountNesting)
{
    ASSERT_TRUE(macro::CutMacroLines(QStringLiteral("[IF A=1]\r\n[IF B=1]\r\n[ELSE]\r\n[ENDIF]\r\n[ELSE]\r\n"
                                                    "[LOOP X<3]\r\n[LOOP Y<3]\r\n[QUITLOOP]\r\n[ENDLOOP]\r\n"
                                                    "[ENDLOOP]\r\n[ENDIF]"),
                                     runState().Actions));
    EXPECT_EQ(GetENDIForELSE(1), 5);  // the inner [ELSE] at 3 is passed by
    EXPECT_EQ(GetENDIForELSE(2), 3);
    EXPECT_EQ(GetENDIF(1), 11);
    EXPECT_EQ(GetENDIF(5), 11);
    EXPECT_EQ(GetENDLOOP(6), 10);
    EXPECT_EQ(GetENDLOOP(8), 9);
    EXPECT_EQ(GetLOOP(10), 6);
    EXPECT_EQ(GetLOOP(8), 7);
    EXPECT_EQ(GetENDLOOP(10), 0);
    EXPECT_EQ(GetLOOP(5), 0);
    EXPECT_TRUE(InsideLOOP(8));
    EXPECT_FALSE(InsideLOOP(11));
    EXPECT_FALSE(InsideLOOP(4));
}

TEST_F(ControlTest, IfElseTakesOneBranchAndNestedElseIsNotTheOuterOne)
{
    const QStringList code = {"[A=2]", "[IF A=1]", "[IF A=2]", "x", "[ELSE]", "y", "[ENDIF]", "[ELSE]", "z",
                              "[ENDIF]", "end"};
    EXPECT_EQ(run(code), QString());
    EXPECT_EQ(typed(), keys({"z", "end"}));
    fakes.keys.sent.clear();
    QStringList one = code;
    one[0] = QStringLiteral("[A=1]");
    EXPECT_EQ(run(one), QString());
    EXPECT_EQ(typed(), keys({"y", "end"}));
    EXPECT_TRUE(messages().isEmpty());

    fakes.keys.sent.clear();
    EXPECT_EQ(run({"[IF 1=2]", "skipped", "[ENDIF]", "after"}), QString());
    EXPECT_EQ(typed(), keys({"after"}));
}

TEST_F(ControlTest, IfMessages)
{
    run({"[IF 1=2]", "a"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR No matching [ENDIF] for [IF Cond] statement"});
    run({"[IF Q=1]", "[ENDIF]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Condition variable not set for [IF Cond] statement"});
    run({"[IF Q=1]"});
    EXPECT_EQ(messages(),
              QStringList{"1) Line 1 FATAL ERROR Condition variable not set and no matching [ENDIF] for [IF Cond] statement"});
    run({"a", "[ELSE]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 2 FATAL ERROR No matching [ENDIF] for [ELSE] statement"});
}

TEST_F(ControlTest, CancelIfEndsTheMacroSilently)
{
    EXPECT_EQ(run({"[N=0]", "[LOOP N<10]", "[N=N+1]", "[CANCEL IF N=4]", "k", "[ENDLOOP]", "never"}), QString());
    EXPECT_EQ(typed(), keys({"k", "k", "k"}));
    EXPECT_EQ(var("N"), "4");
    EXPECT_EQ(fakes.textWindow.shows, 0);
    run({"[CANCEL IF Z>1]", "x"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Condition variable not set for [CANCEL IF Cond] statement"});
}

TEST_F(ControlTest, SequenceLoopTakesValuesInOrderAndKeepsTheLast)
{
    EXPECT_EQ(run({"[S=0]", "[LOOP I=3,1,2]", "[S=S*10+I]", "[ENDLOOP]", "[IF I=2]", "done", "[ENDIF]"}), QString());
    EXPECT_EQ(var("S"), "312");
    EXPECT_EQ(var("I"), "2");
    EXPECT_EQ(typed(), keys({"done"}));
    EXPECT_EQ(macro::sequenceStore().LoopSlotCount, 0);
}

TEST_F(ControlTest, NestedSequenceLoopsRestartTheInnerOneOnReEntry)
{
    // A multiplication table: 3 x 4 products summed, and a count of inner passes.
    EXPECT_EQ(run({"[T=0]", "[C=0]", "[LOOP R=1-3]", "[LOOP K=1,2,3,4]", "[T=T+R*K]", "[C=C+1]", "[ENDLOOP]",
                   "[ENDLOOP]"}),
              QString());
    EXPECT_EQ(var("T"), "60");
    EXPECT_EQ(var("C"), "12");
    EXPECT_EQ(var("R"), "3");
    EXPECT_EQ(var("K"), "4");
}

TEST_F(ControlTest, QuitLoopLeavesTheInnermostSequenceAndReEntryRestarts)
{
    EXPECT_EQ(run({"[C=0]", "[LOOP R=1,2]", "[LOOP K=5-9]", "[C=C+1]", "[IF K=6]", "[QUITLOOP]", "[ENDIF]",
                   "[ENDLOOP]", "[ENDLOOP]"}),
              QString());
    EXPECT_EQ(var("C"), "4");  // K takes 5 and 6 on each of the two outer passes
    EXPECT_EQ(var("K"), "6");
    EXPECT_TRUE(messages().isEmpty());

    run({"[N=0]", "[LOOP N<3]", "[N=N+1]", "[QUITLOOP]", "[ENDLOOP]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 4 FATAL ERROR LOOP sequence not valid for [QUITLOOP] statement"});
    EXPECT_EQ(var("N"), "1");
}

TEST_F(ControlTest, LoopMessages)
{
    run({"[LOOP N<3]", "a"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Condition variable not set for [LOOP Cond] statement"});
    run({"[N=5]", "[LOOP N<3]", "a"});
    EXPECT_EQ(messages(), QStringList{"1) Line 2 FATAL ERROR Missing [ENDLOOP] for [LOOP Cond] statement"});
    run({"a", "[ENDLOOP]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 2 FATAL ERROR No matching LOOP for [ENDLOOP] statement"});
}

TEST_F(ControlTest, BadSequenceIsReportedAndTheLoopRunsUntilTheLineLimit)
{
    // "I=5-2" counts down: no values. Not fatal, so [ENDLOOP] tries it again and again.
    EXPECT_EQ(run({"[LOOP I=5-2]", "[ENDLOOP]"}), QStringLiteral("Too many lines executed"));
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 201);
    EXPECT_TRUE(m[0].startsWith(QStringLiteral("1) Line 1 ")));
    EXPECT_FALSE(m[0].contains(QStringLiteral("FATAL")));
    EXPECT_TRUE(m[0].endsWith(QStringLiteral(" for [LOOP Cond] statement")));
    EXPECT_TRUE(fakes.textWindow.text.endsWith(QStringLiteral("There were 500000 error messages")));
}

TEST_F(ControlTest, WordCountByWalkingTheString)
{
    // Counts the words of a text with MID() and LEN() only.
    const QStringList code = {"[T=\"the quick  brown fox \"]", "[N=LEN(T)]", "[W=0]", "[P=1]", "[B=1]",
                              "[LOOP P<=N]",   "[C=MID(T P P)]",  "[IF C=\" \"]", "[B=1]", "[ELSE]",
                              "[IF B=1]",      "[W=W+1]",         "[ENDIF]",      "[B=0]", "[ENDIF]",
                              "[P=P+1]",       "[ENDLOOP]"};
    EXPECT_EQ(run(code), QString());
    EXPECT_TRUE(messages().isEmpty()) << messages().join('\n').toStdString();
    EXPECT_EQ(var("W"), "4");
    EXPECT_EQ(var("P"), "22");
}

TEST_F(ControlTest, AssignmentsOfNumbersStringsAndSpecialNames)
{
    EXPECT_EQ(run({"[X=2+3*4]", "[Y=(2+3)*4]", "[Z=X]", "[S=\"a\"&\"b\"]", "[U=UCASE(S)&STR(Z)]", "[TIMEOUT=5]"}),
              QString());
    EXPECT_TRUE(messages().isEmpty()) << messages().join('\n').toStdString();
    EXPECT_EQ(var("X"), "14");
    EXPECT_EQ(var("Y"), "20");
    EXPECT_EQ(var("Z"), "14");
    EXPECT_EQ(var("S"), "ab");
    EXPECT_EQ(var("U"), "AB14");
    EXPECT_EQ(macro::variableTable().MacroTimeout, 300.0);
}

TEST_F(ControlTest, AssignmentMessagesAreFatal)
{
    struct Case {
        const char *line;
        const char *message;
    };
    const Case cases[] = {
        {"[X=1/0]", "FATAL ERROR Divide by zero error for [VAR=Val] statement"},
        {"[X=1++2]", "FATAL ERROR Duplicate operators for [VAR=Val] statement"},
        {"[X=(1+2)&\"a\"]", "FATAL ERROR Cannot mix strings and ( ) for [VAR=Val] statement"},
        {"[X=1*-a]", "FATAL ERROR Illegal negative number for [VAR=Val] statement"},
        {"[X=Q]", "FATAL ERROR Invalid variable assignment for [VAR=Val] statement"},
        {"[TIMEOUT=0]", "FATAL ERROR Illegal TIMEOUT value for [VAR=Val] statement"},
        {"[PATH=5]", "FATAL ERROR Invalid use of PATH for [VAR=Val] statement"},
        {"[SONAMARKTEXT=5]", "FATAL ERROR Invalid value for SONAMARKTEXT variable for [VAR=Val] statement"},
        {"[PATH=\"/no/such/folder\"]", "FATAL ERROR Invalid PATH for [VAR=Val] statement"},
        {"[TIMER=5]", "FATAL ERROR This special variable is not allowed in LHS for [VAR=Val] statement"},
    };
    for (const Case &c : cases) {
        run({QLatin1String(c.line), "after"});
        EXPECT_EQ(messages(), QStringList{QStringLiteral("1) Line 1 ") + QLatin1String(c.message)}) << c.line;
    }
    EXPECT_TRUE(typed().isEmpty());
}

TEST_F(ControlTest, PathAndReaderTextAreAssigned)
{
    const QString before = QDir::currentPath();
    QTemporaryDir dir;
    EXPECT_EQ(run({QStringLiteral("[PATH=\"%1\"]").arg(dir.path()), "[SONAMARKTEXT=\"Hi \"&\"there\"]"}), QString());
    EXPECT_TRUE(messages().isEmpty()) << messages().join('\n').toStdString();
    EXPECT_EQ(QDir::currentPath(), QDir(dir.path()).canonicalPath());
    EXPECT_EQ(fakes.readerText.content, QStringLiteral("Hi there"));
    QDir::setCurrent(before);
}

TEST_F(ControlTest, WaitIsNotCountedAgainstTheTimeOut)
{
    // The clock moves 1 s on each look; [WAIT 100] outlasts a one-minute limit.
    double clock = 1000;
    SetMacroClock([&] { return clock += 1; });
    // The naps between looks are the program's delays, which a test can stand in for.
    QList<int> naps;
    shell::SetDelaySleeper([&](int ms) { naps << ms; });
    EXPECT_EQ(run({"[TIMEOUT=1]", "[WAIT 100]", "a", "[WAIT 100]", "b"}), QString());
    EXPECT_EQ(typed(), keys({"a", "b"}));
    EXPECT_GT(clock, 1200);
    EXPECT_FALSE(runState().WaitInProgress);
    EXPECT_GE(naps.size(), 200);
    EXPECT_EQ(naps.count(1), naps.size());  // a millisecond each

    // Without the waits the same time runs the macro out.
    fakes.keys.sent.clear();
    clock = 1000;
    QStringList slow = {"[TIMEOUT=1]"};
    for (int i = 0; i < 100; ++i)
        slow << QStringLiteral("k");
    EXPECT_EQ(run(slow), QStringLiteral("Macro timed out"));
}

TEST_F(ControlTest, WaitAcrossMidnightWaitsItsFullTime)
{
    double clock = 86390;  // 23:59:50
    SetMacroClock([&] {
        clock += 1;
        if (clock >= 86400)
            clock -= 86400;
        return clock;
    });
    EXPECT_EQ(run({"[WAIT 30]", "a"}), QString());
    EXPECT_EQ(typed(), keys({"a"}));
    EXPECT_GE(clock, 20.0);  // 30 s after 23:59:50, not at once
    EXPECT_LT(clock, 40.0);
}

TEST_F(ControlTest, EscEndsAWaitWithoutTheAbortQuestion)
{
    int looks = 0;
    SetMacroClock([&] {
        if (++looks == 5)
            RequestAbort();  // Esc arrives while the wait pumps events
        return 1000.0 + looks * 0.1;
    });
    EXPECT_EQ(run({"[WAIT 2]", "a"}), QString());
    EXPECT_EQ(messages(), QStringList{"1) Line 1 WAIT aborted by user"});
    EXPECT_EQ(typed(), keys({"a"}));
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
    EXPECT_LT(looks, 10);
}

TEST_F(ControlTest, WaitOperandsAndMessages)
{
    double clock = 0;
    SetMacroClock([&] { return clock += 1; });
    macro::SetDateTimeSource([] { return QDateTime(QDate(2024, 3, 9), QTime(12, 0, 0)); });
    EXPECT_EQ(run({"[D=5]", "[WAIT D]", "[WAIT 0]", "[WAIT -3]", "[WAIT \"2024-03-09 11:00:00\"]",
                   "[P=\"2001-01-01\"]", "[WAIT P]", "[WAIT \"soon\"]", "a"}),
              QString());
    EXPECT_EQ(messages(), (QStringList{"1) Line 3 Invalid delay time for [WAIT Secs] statement",
                                      "2) Line 4 Invalid delay time for [WAIT Secs] statement",
                                      "3) Line 8 Invalid delay time for [WAIT Secs] statement"}));
    EXPECT_EQ(typed(), keys({"a"}));
}

TEST_F(ControlTest, WaitUntilAMomentSleepsInSecondsAndCanBeAborted)
{
    QDateTime now(QDate(2024, 3, 9), QTime(12, 0, 0));
    macro::SetDateTimeSource([&] { return now; });
    int sleeps = 0;
    shell::SetDelaySleeper([&](int ms) {
        ++sleeps;
        now = now.addMSecs(ms);
    });
    EXPECT_EQ(ESC_DelayDate(QStringLiteral("2024-03-09 12:00:03")), 1);
    EXPECT_EQ(sleeps, 3);
    EXPECT_EQ(ESC_DelayDate(QStringLiteral("12:00:01")), 1);  // today, already past
    EXPECT_EQ(sleeps, 3);
    EXPECT_EQ(ESC_DelayDate(QStringLiteral("no date")), 0);
    RequestAbort();
    EXPECT_EQ(ESC_DelayDate(QStringLiteral("2024-03-10")), -1);
    EXPECT_FALSE(runState().AbortRequested);
}

TEST_F(ControlTest, AssignmentAndConditionChecks)
{
    struct Case {
        const char *line;  // literals already replaced
        const char *message;
    };
    const Case vars[] = {
        {"[X=TIMER&ALITERAL]", "Cannot mix the TIMER variable with strings"},
        {"[X=STR(TIMER)&ALITERAL]", ""},
        {"[X=1*-2]", ""},
        {"[X=-2+A]", ""},
        {"[X=LEN(S)+VAL(T)*2]", ""},
        {"[X=MID(S 2 4)&ALITERAL]", ""},
        {"[X=MID(S 4 2)]", "Illegal char limits in MID()"},
        {"[X=*2]", "Invalid use of the * operator for [VAR=Val] statement"},
        {"[X=2/]", "Invalid use of the / operator for [VAR=Val] statement"},
        {"[X=(1+2]", "Mismatching ( ) for [VAR=Val] statement"},
        {"[X=ALITERAL&&B]", "Invalid use of the & operator for [VAR=Val] statement"},
        {"[X=A*+B]", "Illegal operator for [VAR=Val] statement"},
        {"[X=A ALITERAL]", "Invalid format for [VAR=Val] statement"},
        {"[X=ALITERAL B]", "Invalid format in RHS for [VAR=Val] statement"},
        {"[X5]", "Invalid format for [VAR=Val] statement"},
        {"[X=ALITERAL&LEN(S)]", "Cannont mix LEN() with strings"},
        {"[X=LEN(S)&ALITERAL]", "Cannot mix strings and LEN() for [VAR=Val] statement"},
    };
    for (const Case &c : vars)
        EXPECT_EQ(macro::GoodVAR(QLatin1String(c.line)), QLatin1String(c.message)) << c.line;

    EXPECT_EQ(macro::GoodIFCond(QStringLiteral("[IF A=1 AND B=2 AND C=3]")), QString());
    EXPECT_EQ(macro::GoodIFCond(QStringLiteral("[IF (A=1 AND B=ALITERAL) OR C>=3]")), QString());
    EXPECT_EQ(macro::GoodIFCond(QStringLiteral("[IF A=1")), QStringLiteral("Missing right bracket for [IF Cond] statement"));
    EXPECT_EQ(macro::GoodIFCond(QStringLiteral("[CANCEL IF A]")),
              QStringLiteral("Missing operator for [CANCEL IF Cond] statement"));
    EXPECT_EQ(macro::GoodIFCond(QStringLiteral("[IF (A=1]")), QStringLiteral("Mismatched ( ) for [IF Cond] statement"));
    EXPECT_EQ(macro::GoodLOOPCond(QStringLiteral("[LOOP I=1,3-5]")), QString());
    EXPECT_EQ(macro::GoodLOOPCond(QStringLiteral("[LOOP I=1,X]")),  // a condition, not a sequence
              QStringLiteral("Only letters allowed in RHS variable name for [LOOP Cond] statement"));
    EXPECT_EQ(macro::GoodCondEqu(QStringLiteral("1+*2")), QStringLiteral("Illegal operator"));
    EXPECT_EQ(macro::GoodLOOPCond(QStringLiteral("[LOOP N<1+*2]")),
              QStringLiteral("Illegal operator for [LOOP Cond] statement"));
}
