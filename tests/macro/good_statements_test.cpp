// The statement checker on whole lines: keystroke lines, the bracket and command rules
// of GoodActionLine, [VAR=Val] lines, and the statements that need their partner in the
// macro (IF/ELSE/ENDIF, LOOP/ENDLOOP/QUITLOOP, OPEN/READ/WRITE/CLOSE).
#include "good_check_rows.h"

using namespace goodtest;

// --- one line alone ---------------------------------------------------------------------

class LineAloneTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(LineAloneTest, GivesTheFullMessage)
{
    EXPECT_EQ(CheckAlone(GetParam().line), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    KeystrokeLines, LineAloneTest,
    ::testing::Values(
        LineCase{"Hello world", ""},
        LineCase{"{LEFT 3}", ""},                      // a repeat count is cut off before the look-up
        LineCase{"abc{enter}def", ""},                 // key names in any case
        LineCase{"{LEFTY}", "ERROR line 46 Unrecognized non-printable character."},
        LineCase{"x{BOGUS 2}", "ERROR line 46 Unrecognized non-printable character."},
        LineCase{"{ENTER}{LEFTY}", ""},                // only the first token is looked up
        LineCase{"{{}", "ERROR line 7 Mismatched braces {}"},
        LineCase{"{{}{}}", ""},
        LineCase{"a}b{", "ERROR line 46 Unrecognized non-printable character."},  // "{" runs to the end
        LineCase{"'a comment {", "ERROR line 7 Mismatched braces {}"},  // skipped at run time, checked here
        LineCase{"Hello [WAIT 2] world", ""}));        // not "[" first: keystrokes, whatever its code

INSTANTIATE_TEST_SUITE_P(
    BracketsAndCommands, LineAloneTest,
    ::testing::Values(
        LineCase{"[WAIT 2", "ERROR line 7 Command line missing closing bracket."},
        LineCase{"[WAIT 2] x", "ERROR line 7 Extra characters after the closing bracket."},
        LineCase{"[IF]", "ERROR line 7 Command not found."},       // "[IF " needs its blank
        LineCase{"[WAIT]", "ERROR line 7 Command not found."},
        LineCase{"[PAUSE 2]", "ERROR line 7 Command not found."},
        LineCase{"[\"a=b\"]", "ERROR line 7 Command not found."},  // the first "=" is quoted
        LineCase{"[\"a\"=5]", "ERROR line 7 No literals allowed in LHS variable for [VAR=Val] statement."},
        LineCase{"[\"\"=5]", "ERROR line 7 No literals allowed in LHS variable for [VAR=Val] statement."},
        LineCase{"[aliteral=5]", "ERROR line 7 No literals allowed in LHS variable for [VAR=Val] statement."},
        LineCase{"[A1=5]", "ERROR line 7 Only letters allowed in LHS variable name for [VAR=Val] statement."},
        LineCase{"[my var=5]", "ERROR line 7 Only letters allowed in LHS variable name for [VAR=Val] statement."},
        LineCase{"[x\"a\"=5]", "ERROR line 7 Strings not allowed in LHS variable name for [VAR=Val] statement."}));

INSTANTIATE_TEST_SUITE_P(
    Assignments, LineAloneTest,
    ::testing::Values(
        LineCase{"[Var = 5]", ""},
        LineCase{"[x=\"a b\"&y]", ""},
        LineCase{"[x=1*-2]", ""},
        LineCase{"[x=STR(TIMER)&\"s\"]", ""},
        LineCase{"[timeout=0]", ""},                   // the value is judged at run time
        LineCase{"[x=1++2]", "ERROR line 7 Duplicate operators for [VAR=Val] statement"},
        LineCase{"[x=1*-a]", "ERROR line 7 Illegal negative number for [VAR=Val] statement"},
        LineCase{"[x=(1+2)&\"a\"]", "ERROR line 7 Cannot mix strings and ( ) for [VAR=Val] statement"},
        LineCase{"[x=TIMER&\"s\"]", "ERROR line 7 Cannot mix the TIMER variable with strings"},
        LineCase{"[date=5]", "ERROR line 7 This special variable is not allowed in LHS for [VAR=Val] statement"}));

// --- lines that need their partner ---------------------------------------------------------

class LineInMacroTest : public ::testing::TestWithParam<MacroCase> {};

TEST_P(LineInMacroTest, GivesTheFullMessage)
{
    EXPECT_EQ(CheckInMacro(GetParam()), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, LineInMacroTest,
    ::testing::Values(
        MacroCase{{"[IF A=1 AND B=2 AND C=3]", "x", "[ENDIF]"}, 1, ""},  // any number of terms
        MacroCase{{"[IF A=1]", "[ELSE]", "[ENDIF]"}, 2, ""},
        MacroCase{{"[IF A=1]", "[ELSE]", "[ENDIF]"}, 3, ""},
        MacroCase{{"[IF A=1]", "x"}, 1, "ERROR line 1 Missing matching [ENDIF] statement"},
        MacroCase{{"x", "[ENDIF]"}, 2, "ERROR line 2 Missing matching [IF Cond] statement"},
        MacroCase{{"[ELSE]", "[ENDIF]"}, 1, "ERROR line 1 Missing matching [IF Cond] statement"},
        MacroCase{{"[IF A=1]", "[ELSE]", "[ELSE]", "[ENDIF]"}, 3, "ERROR line 3 Missing matching [IF Cond] statement"},
        MacroCase{{"[CANCEL IF X=1]", "y"}, 1, ""},                    // needs no [ENDIF]
        MacroCase{{"[IF ]", "[ENDIF]"}, 1, "ERROR line 1  for [IF Cond] statement"},  // no condition: the frame alone
        MacroCase{{"[IF =1]", "[ENDIF]"}, 1, "ERROR line 1 Missing left variable for [IF Cond] statement"},
        MacroCase{{"[CANCEL IF X=]"}, 1, "ERROR line 1 Missing right variable for [CANCEL IF Cond] statement"},
        MacroCase{{"[IF X=1++2]", "[ENDIF]"}, 1, "ERROR line 1 Illegal operator for [IF Cond] statement"},
        MacroCase{{"[IF A=1]", "[IF B=2]", "[ENDIF]"}, 1, "ERROR line 1 Missing matching [ENDIF] statement"}));

INSTANTIATE_TEST_SUITE_P(
    Loops, LineInMacroTest,
    ::testing::Values(
        MacroCase{{"[LOOP I<3]", "[I=I+1]", "[ENDLOOP]"}, 1, ""},
        MacroCase{{"[LOOP I<3]", "[I=I+1]", "[ENDLOOP]"}, 3, ""},
        MacroCase{{"[LOOP I<3]", "x"}, 1, "ERROR line 1 Missing matching [ENDLOOP] statement"},
        MacroCase{{"x", "[ENDLOOP]"}, 2, "ERROR line 2 Missing matching [LOOP Cond] statement"},
        MacroCase{{"[LOOP I=1-3]", "[QUITLOOP]", "[ENDLOOP]"}, 2, ""},
        MacroCase{{"[LOOP I<]", "[ENDLOOP]"}, 1, "ERROR line 1 Missing right variable for [LOOP Cond] statement"},
        MacroCase{{"[QUITLOOP]"}, 1, "ERROR line 1 No matching LOOP/ENDLOOP for [QUITLOOP] statement."}));

INSTANTIATE_TEST_SUITE_P(
    OpenAndClose, LineInMacroTest,
    ::testing::Values(
        MacroCase{{"[OPEN 1 \"f.txt\"]", "[READ 1 X]", "[CLOSE 1]"}, 1, ""},
        MacroCase{{"[OPEN 1 \"f.txt\"]", "[READ 1 X]", "[CLOSE 1]"}, 2, ""},
        MacroCase{{"[OPEN 1 \"f.txt\"]", "[READ 1 X]", "[CLOSE 1]"}, 3, ""},
        MacroCase{{"[OPEN 1 F]", "[CLOSE 1]"}, 1, ""},                  // the file name in a variable
        MacroCase{{"[OPEN X \"f\"]", "[CLOSE X]"}, 1, ""},              // a variable id waits for run time
        MacroCase{{"[OPEN 10 \"f\"]", "[CLOSE 10]"}, 1, "ERROR line 1 Invalid file ID (1-9) for [OPEN n File] statement"},
        MacroCase{{"[OPEN 0 \"f\"]", "[CLOSE 0]"}, 1, "ERROR line 1 Invalid file ID (1-9) for [OPEN n File] statement"},
        MacroCase{{"[OPEN X1 \"f\"]", "[CLOSE X1]"}, 1,
                  "ERROR line 1 Only letters allowed in ID variable name for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1]", "[CLOSE 1]"}, 1, "ERROR line 1 Invalid format for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 \"f\"]"}, 1, "ERROR line 1 Missing [CLOSE n] statement for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[CLOSE 2]"}, 1,
                  "ERROR line 1 No matching [CLOSE n] file ID for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 1]", "[CLOSE 1]"}, 1,
                  "ERROR line 1 Unit and file variables must be different for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 F2]", "[CLOSE 1]"}, 1,
                  "ERROR line 1 Only letters allowed in variable name for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 \"f\"x]", "[CLOSE 1]"}, 1,
                  "ERROR line 1 Quote mismatch in right variable for [OPEN n File] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[CLOSE 0]"}, 2, "ERROR line 2 Invalid file number (1-9) for [CLOSE n] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[CLOSE 1 2]"}, 2, "ERROR line 2 Invalid format for [CLOSE n] statement"},
        MacroCase{{"[CLOSE 3]"}, 1, "ERROR line 1 Missing [OPEN n File] statement for [CLOSE n] statement"}));

INSTANTIATE_TEST_SUITE_P(
    ReadAndWrite, LineInMacroTest,
    ::testing::Values(
        MacroCase{{"[OPEN 2 \"f\"]", "[WRITE 2 \"hello world\"]", "[CLOSE 2]"}, 2, ""},
        MacroCase{{"[OPEN 2 \"f\"]", "[WRITE 2 X]", "[CLOSE 2]"}, 2, ""},
        MacroCase{{"[OPEN 1 \"f\"]", "[READ 1 \"x\"]", "[CLOSE 1]"}, 2,
                  "ERROR line 2 Invalid quote for [READ n Rec] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[READ 12 X]", "[CLOSE 1]"}, 2,
                  "ERROR line 2 Invalid file ID (1-9) for [READ n Rec] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[READ 1 1]", "[CLOSE 1]"}, 2,
                  "ERROR line 2 Unit and output variables must be different for [READ n Rec] statement"},
        MacroCase{{"[READ 1 X]"}, 1, "ERROR line 1 Missing [OPEN n File] statement for [READ n Rec] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[READ 1 X]", "[WRITE 1 Y]", "[CLOSE 1]"}, 2,
                  "ERROR line 2 Can't mix READ/WRITE statements for [READ n Rec] statement"},
        MacroCase{{"[OPEN 1 \"f\"]", "[READ 1 X]", "[WRITE 1 Y]", "[CLOSE 1]"}, 3,
                  "ERROR line 3 Can't mix READ/WRITE statements for [WRITE n Rec] statement"},
        MacroCase{{"[OPEN 2 \"f\"]", "[WRITE 2 \"a\" X]", "[CLOSE 2]"}, 2,
                  "ERROR line 2 Quote mismatch in right variable for [WRITE n Rec] statement"},
        MacroCase{{"[OPEN 2 \"f\"]", "[WRITE 2 2]", "[CLOSE 2]"}, 2,
                  "ERROR line 2 Unit and output variables must be different for [WRITE n Rec] statement"},
        MacroCase{{"[OPEN 2 \"f\"]", "[WRITE 0 X]", "[CLOSE 2]"}, 2,
                  "ERROR line 2 Invalid file ID (1-9) for [WRITE n Rec] statement"}));

// --- GoodCommandFormat on its own ------------------------------------------------------------

TEST(GoodCommandFormat, AnUnpairedQuoteIsReportedBeforeAnyChecker)
{
    EXPECT_EQ(macro::GoodCommandFormat(QString(), macro::CmdWAIT, QStringLiteral("[WAIT \"x]"), 1),
              QStringLiteral("Missing quote"));
}

TEST(GoodCommandFormat, ACodeOutsideTheTableNamesNoStatement)
{
    EXPECT_EQ(macro::GoodCommandFormat(QString(), 49, QStringLiteral("[WAIT 1]"), 1),
              QStringLiteral("Invalid format for  statement"));
}

TEST(GoodCommandFormat, GivesTheFragmentWithoutTheLinePrefix)
{
    EXPECT_EQ(macro::GoodCommandFormat(QString(), macro::CmdWAIT, QStringLiteral("[wait 0]"), 1),
              QStringLiteral("Invalid time (0.1-3600 secs) for [WAIT Sec] statement"));
}
