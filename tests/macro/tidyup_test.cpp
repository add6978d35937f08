// The normal form of macro text.
#include "macro/tidyup.h"

#include <gtest/gtest.h>

using macro::TidyupCode;

static QString tidy(const char *code)
{
    QString text = QString::fromUtf8(code);
    TidyupCode(text);
    return text;
}

TEST(Tidyup, StatementLinesLoseBlanks)
{
    EXPECT_EQ(tidy("[IF   a = 1 ]"), QStringLiteral("[IF a=1]\r\n"));
    EXPECT_EQ(tidy("   [  WAIT    2  ]"), QStringLiteral("[WAIT 2]\r\n"));
    EXPECT_EQ(tidy("[X = 5]"), QStringLiteral("[X=5]\r\n"));
    EXPECT_EQ(tidy("[X=\"a  b\"]"), QStringLiteral("[X=\"a  b\"]\r\n"));
    EXPECT_EQ(tidy("[if a = 1 and b = 2]"), QStringLiteral("[if a=1 and b=2]\r\n"));
}

TEST(Tidyup, KeystrokesAndCommentsKeepTheirSpacing)
{
    EXPECT_EQ(tidy("  Hello   World"), QStringLiteral("  Hello   World\r\n"));
    EXPECT_EQ(tidy("  # note   here"), QStringLiteral("# note   here\r\n"));
    EXPECT_EQ(tidy("x  [WAIT  2]"), QStringLiteral("x  [WAIT  2]\r\n"));
}

TEST(Tidyup, BlankLinesAndLineEnds)
{
    EXPECT_EQ(tidy("\r\n\r\na\r\n\r\n\r\nb\r\n\r\n"), QStringLiteral("a\r\nb\r\n"));
    EXPECT_EQ(tidy("\r\n"), QStringLiteral("\r\n"));  // a bare line end is left as it is
    EXPECT_EQ(tidy(""), QStringLiteral("\r\n"));
}

TEST(Tidyup, AnOpenQuoteDoesNotProtectTheNextLine)
{
    EXPECT_EQ(tidy("[X=\"a  b]\r\n[Y  =  2]"), QStringLiteral("[X=\"a  b]\r\n[Y=2]\r\n"));
}

TEST(Tidyup, OnlyCrLfAndLoneCrEndLinesAndTidyingAgainChangesNothing)
{
    // A CR alone ends a line: the blank lines it makes go like the others.
    EXPECT_EQ(tidy("a\r\r\nb"), QStringLiteral("a\r\nb\r\n"));
    EXPECT_EQ(tidy("\ra\r"), QStringLiteral("a\r\n"));
    // A line feed alone is part of its line, and a line end after it is kept.
    EXPECT_EQ(tidy("a\n\nb"), QStringLiteral("a\n\nb\r\n"));
    EXPECT_EQ(tidy("X\r\n\n"), QStringLiteral("X\r\n"));
    const char *const once[] = {"a\r\r\nb", "[LOOP I = 1,3]\n  \r\n[ENDLOOP]", "[X=1]\r\n\n", " [IF A=1]\r\r\n\r"};
    for (const char *code : once) {
        const QString tidied = tidy(code);
        QString again = tidied;
        TidyupCode(again);
        EXPECT_EQ(again, tidied) << code;
    }
}
