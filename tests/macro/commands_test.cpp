// Statement codes of macro lines, and the two fixed tables.
#include "macro/commands.h"
#include "macro/nonprint.h"

#include <gtest/gtest.h>

using namespace macro;

struct CommandCase {
    const char *line;
    int code;
};

class WhichCommandTest : public ::testing::TestWithParam<CommandCase> {};

TEST_P(WhichCommandTest, GivesTheStatementCode)
{
    EXPECT_EQ(WhichCommand(QString::fromUtf8(GetParam().line)), GetParam().code) << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(
    TrickyLines, WhichCommandTest,
    ::testing::Values(
        CommandCase{"Hello [WAIT 2] world", 11},       // a statement word anywhere
        CommandCase{"[Var = 5]", 9},                   // name trimmed before the letter test
        CommandCase{"[A1=5]", 0},                      // digit: not a name
        CommandCase{"[=\"x\"]", 0},                    // "=" at position 2
        CommandCase{"[X=\"a=b\"]", 9},
        CommandCase{"[\"a=b\"]", 0},                   // first "=" between quotes
        CommandCase{"[SETCLIP \"[IF x]\"]", 2},        // quoted text is searched too; row 2 first
        CommandCase{"[IFFY]", 0},                      // the row's trailing blank is part of it
        CommandCase{"[if x=1]", 2},                    // the line is upper-cased
        CommandCase{"[CANCEL IF X=1]", 15},
        CommandCase{"[SPELLCHECKMODE ON]", 13},        // before [SPELLCHECK]
        CommandCase{"[SPELLCHECK]", 14},
        CommandCase{"[SPELLCHECK ]", 0},               // an operand-less row ends in "]"
        CommandCase{"[PRINT x]", 18},
        CommandCase{"[PRINTSELECTED]", 17},
        CommandCase{"[ENDLOOP]", 34},
        CommandCase{"[LOOP I=1,2]", 1},
        CommandCase{"[HOTKEY 3]", 29},
        CommandCase{"[WEBSOURCE U S]", 48},
        CommandCase{"[Under_score=1]", 9},             // "_" lies between "Z" and "a"
        CommandCase{"plain keys", 0}));

TEST(CommandTables, CommandsHaveTheFixedOrder)
{
    SetCommands();
    const QStringList &rows = Commands();
    ASSERT_EQ(rows.size(), 48);
    EXPECT_EQ(rows.at(0), QStringLiteral("[LOOP "));
    EXPECT_EQ(rows.at(8), QStringLiteral("[VAR="));
    EXPECT_EQ(rows.at(13), QStringLiteral("[SPELLCHECK]"));
    EXPECT_EQ(rows.at(28), QStringLiteral("[HOTKEY "));
    EXPECT_EQ(rows.at(35), QStringLiteral("[ENDIF]"));
    EXPECT_EQ(rows.at(47), QStringLiteral("[WEBSOURCE "));
    EXPECT_EQ(CanonicalStatement(5), QStringLiteral("[OPEN n File]"));
}

TEST(CommandTables, NonPrintHas45NamesInOrder)
{
    SetNonPrint();
    const QStringList &names = NonPrint();
    ASSERT_EQ(names.size(), NumNonPrint);
    EXPECT_EQ(names.first(), QStringLiteral("{BACKSPACE}"));
    EXPECT_EQ(names.at(19), QStringLiteral("{PRTSC}"));
    EXPECT_EQ(names.at(23), QStringLiteral("{UP}"));
    EXPECT_EQ(names.at(24), QStringLiteral("{F1}"));
    EXPECT_EQ(names.at(39), QStringLiteral("{F16}"));
    EXPECT_EQ(names.last(), QStringLiteral("{}}"));
    EXPECT_TRUE(NonPrintableKey(QStringLiteral("abc{f12}")));
    EXPECT_FALSE(NonPrintableKey(QStringLiteral("{F17}")));
}
