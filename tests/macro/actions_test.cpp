// Cutting macro code into parsed lines.
#include "macro/actions.h"

#include <gtest/gtest.h>

using namespace macro;

TEST(CutMacroLines, CommentsDropStatementsUpperKeystrokesRaw)
{
    ActionList lines;
    ASSERT_TRUE(CutMacroLines(QStringLiteral("# note\r\n  [setclip \"Keep Case\"]\r\n  Hello  World\r\n[Var = 5]"), lines));
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].Text, QStringLiteral("[SETCLIP \"Keep Case\"]"));
    EXPECT_EQ(lines[0].Command, 22);
    EXPECT_EQ(lines[1].Text, QStringLiteral("  Hello  World"));
    EXPECT_EQ(lines[1].Command, 0);
    EXPECT_EQ(lines[2].Text, QStringLiteral("[VAR=5]"));
    EXPECT_EQ(lines[2].Command, 9);
}

TEST(CutMacroLines, EmptyCodeAndCommentsOnly)
{
    ActionList lines;
    EXPECT_FALSE(CutMacroLines(QString(), lines));
    EXPECT_FALSE(CutMacroLines(QStringLiteral("\r\n\r\n"), lines));
    EXPECT_TRUE(CutMacroLines(QStringLiteral("# only\r\n#comments"), lines));
    EXPECT_TRUE(lines.isEmpty());
}

TEST(CutMacroLines, KeystrokeLineWithStatementWordHasItsCode)
{
    ActionList lines;
    ASSERT_TRUE(CutMacroLines(QStringLiteral("Hello [wait 2] world"), lines));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].Command, 11);
    EXPECT_EQ(lines[0].Text, QStringLiteral("HELLO [WAIT 2] WORLD"));
}
