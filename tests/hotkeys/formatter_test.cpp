// Format Code: indenting tidied macros, and the indent of a statement pasted at the caret.
#include "hotkeys/formatter.h"
#include "macro/tidyup.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

QString lines(const QStringList &l) { return l.join(QStringLiteral("\r\n")); }

QString indented(const QStringList &l)
{
    QString text = lines(l);
    hotkeys::IndentActions(text);
    return text;
}

} // namespace

TEST(Formatter, NestedBlocksIndentByFourAndComeBack)
{
    EXPECT_EQ(indented({"[LOOP I<3]", "[IF A=1]", "[X=1]", "[ELSE]", "# other", "[X=2]", "[ENDIF]", "[ENDLOOP]",
                        "[Y=1]"}),
              lines({"[LOOP I<3]", "    [IF A=1]", "        [X=1]", "    [ELSE]", "        # other", "        [X=2]",
                     "    [ENDIF]", "[ENDLOOP]", "[Y=1]"}));
}

TEST(Formatter, KeystrokeLinesStayAtTheMarginAndQuotedWordsStillOpenALevel)
{
    EXPECT_EQ(indented({"[LOOP I=1,2]", "Hello World", "[ENDLOOP]"}),
              lines({"[LOOP I=1,2]", "Hello World", "[ENDLOOP]"}));
    EXPECT_EQ(indented({"[SENDKEYS \"[IF this]\"]", "[X=1]"}), lines({"[SENDKEYS \"[IF this]\"]", "    [X=1]"}));
}

TEST(Formatter, AnExtraEndStartsAgainAtTheMarginAndFormattingTwiceChangesNothing)
{
    EXPECT_EQ(indented({"[ENDIF]", "[ENDIF]", "[X=1]", "[IF A=1]", "[X=2]"}),
              lines({"[ENDIF]", "[ENDIF]", "[X=1]", "[IF A=1]", "    [X=2]"}));

    QString text = lines({"  [IF   a = 1 ]", "   # note", "  typed   as is", "[LOOP I<2]", "[X = 5]", "[ENDLOOP]",
                          "[ENDIF]"});
    macro::TidyupCode(text);
    hotkeys::IndentActions(text);
    const QString once = text;
    macro::TidyupCode(text);
    hotkeys::IndentActions(text);
    EXPECT_EQ(text, once);
    EXPECT_EQ(once, lines({"[IF a=1]", "    # note", "  typed   as is", "    [LOOP I<2]", "        [X=5]",
                           "    [ENDLOOP]", "[ENDIF]", ""}));
}

TEST(Formatter, ALineFeedAloneDoesNotEndALine)
{
    // The parser sees "ab\n[X = 1]" as one keystroke line: indenting it would type blanks.
    EXPECT_EQ(indented({"[IF A=1]", "ab\n[X = 1]", "[ENDIF]"}), lines({"[IF A=1]", "ab\n[X = 1]", "[ENDIF]"}));
    EXPECT_EQ(indented({"\n[X=1]"}), lines({"\n[X=1]"}));
    EXPECT_EQ(indented({"[IF A=1]", "# a\nb", "[X=1]"}), lines({"[IF A=1]", "    # a\nb", "    [X=1]"}));
}

TEST(Formatter, PastedStatementTakesTheIndentOfTheLineAbove)
{
    const QString text = lines({"[X=1]", "    [IF A=1]", "", ""});
    const int caret = int(text.size()) - 1;  // on the empty line under [IF A=1]
    EXPECT_EQ(hotkeys::GetActionIndent(text, caret, QStringLiteral("[X=2]")), 8);
    EXPECT_EQ(hotkeys::GetActionIndent(text, caret, QStringLiteral("[ENDIF]")), 0);
    const QString loop = lines({"[X=1]", "  [LOOP I<2]", "", ""});
    EXPECT_EQ(hotkeys::GetActionIndent(loop, int(loop.size()) - 1, QStringLiteral("[ENDLOOP]")), 2);  // below 0: the line's own
    const QString keys = lines({"[X=1]", "  typed", "", ""});
    EXPECT_EQ(hotkeys::GetActionIndent(keys, int(keys.size()) - 1, QStringLiteral("[X=2]")), 0);
    EXPECT_EQ(hotkeys::GetActionIndent(QString(), 0, QStringLiteral("[X=2]")), 0);
    EXPECT_EQ(hotkeys::GetActionIndent(QStringLiteral("[IF A=1]\r\n"), 10, QStringLiteral("[X=2]")), 0);
}
