// String helpers of macro text.
#include "macro/macro_text.h"
#include "macro/nonprint.h"
#include "macro/numbers.h"
#include "macro/variables.h"

#include <gtest/gtest.h>

using namespace macro;

static QString spaced(QString text, void (*fn)(QString &))
{
    fn(text);
    return text;
}

TEST(RemoveSpaces, KeepsQuotedBlanksAndTheBlanksOfAndOr)
{
    EXPECT_EQ(spaced(QStringLiteral("A = \"b c\" AND d = 1"), RemoveSpaces), QStringLiteral("A=\"b c\" AND D=1"));
    EXPECT_EQ(spaced(QStringLiteral("a = 1 or b = 2"), RemoveSpaces), QStringLiteral("A=1 OR B=2"));
    EXPECT_EQ(spaced(QStringLiteral("a = 1 or b = 2"), RemoveSpaces2), QStringLiteral("a=1 or b=2"));
    // The AND pass does not look at quotes: a quoted " and " comes out in capitals.
    EXPECT_EQ(spaced(QStringLiteral("x = \"p and q\""), RemoveSpaces), QStringLiteral("X=\"p AND q\""));
}

TEST(RemoveSpaces, ConnectorsCaseAndNonAsciiText)
{
    struct Row {
        const char16_t *text;
        const char16_t *upper;   // RemoveSpaces
        const char16_t *typed;   // RemoveSpaces2
    };
    const Row rows[] = {
        {u"a = 1 and b = 2 or c = 3 AND d = 4", u"A=1 AND B=2 OR C=3 AND D=4", u"a=1 and b=2 or c=3 AND d=4"},
        {u"x AND AND y or  or z", u"X AND ANDY OR  OR Z", u"x AND ANDy or  or z"},
        {u"mid(s 1 2) and x = mid(t 3 4)", u"MID(S 1 2) AND X=MID(T 3 4)", u"mid(s 1 2) and x=mid(t 3 4)"},
        // The full upper case of \u00df is two letters; the text must not shift against its copy.
        {u"stra\u00dfe = 1 and b = 2", u"STRA\u00dfE=1 AND B=2", u"stra\u00dfe=1 and b=2"},
        {u"\u00e9t\u00e9 = \"a b\" or c = 1", u"\u00c9T\u00c9=\"a b\" OR C=1", u"\u00e9t\u00e9=\"a b\" or c=1"},
        {u"a\u00c8b = 1 and c = 2", u"A B=1 AND C=2", u"a b=1 and c=2"},
        {u"a\u00e8b = \"\u00e8\"", u"A B=\"\u00e8\"", u"a\u00e8b=\"\u00e8\""},
    };
    for (const Row &r : rows) {
        const QString text = QString::fromUtf16(r.text);
        EXPECT_EQ(spaced(text, RemoveSpaces).toStdString(), QString::fromUtf16(r.upper).toStdString()) << text.toStdString();
        EXPECT_EQ(spaced(text, RemoveSpaces2).toStdString(), QString::fromUtf16(r.typed).toStdString()) << text.toStdString();
    }
}

TEST(RemoveSpaces, KeepsTheArgumentsOfMidApart)
{
    EXPECT_EQ(spaced(QStringLiteral("x = MID(s 1 2) & y"), RemoveSpaces2), QStringLiteral("x=MID(s 1 2)&y"));
    EXPECT_EQ(spaced(QStringLiteral("x = MID(\"a b\" 1 2)"), RemoveSpaces2), QStringLiteral("x=MID(\"a b\" 1 2)"));
}

TEST(MidCommas, OddCountLeavesTheTextAlone)
{
    QString even = QStringLiteral("MID(S,1,2)");
    MIDSpaces4Commas(even);
    EXPECT_EQ(even, QStringLiteral("MID(S 1 2)"));
    QString odd = QStringLiteral("MID(S,1)");
    MIDSpaces4Commas(odd);
    EXPECT_EQ(odd, QStringLiteral("MID(S,1)"));
    QString quoted = QStringLiteral("MID(\"a,b\",1,2)");
    MIDSpaces4Commas(quoted);
    EXPECT_EQ(quoted, QStringLiteral("MID(\"a,b\" 1 2)"));
}

TEST(Literals, PlaceholdersAndMissingQuote)
{
    QString text = QStringLiteral("[X=\"ab\"&\"\"]");
    EXPECT_EQ(ReplaceLiterals(text), QString());
    EXPECT_EQ(text, QStringLiteral("[X=ALITERAL&AEMPTY]"));
    QString open = QStringLiteral("[X=\"ab]");
    EXPECT_EQ(ReplaceLiterals(open), QStringLiteral("Missing quote"));
    EXPECT_EQ(open, QStringLiteral("[X="));

    QString joined = QStringLiteral("\"a\"&B&\"c\"");
    EXPECT_EQ(RemoveAllLiterals(joined), QStringLiteral("B"));
    QString bad = QStringLiteral("B\"a\"");
    EXPECT_EQ(RemoveAllLiterals(bad), QString());
    EXPECT_TRUE(bad.isEmpty());
}

TEST(Quotes, MarkersAndPositions)
{
    QString text = QStringLiteral("say \"hi\"");
    ReplaceQuotes(text);
    EXPECT_EQ(text, QStringLiteral("say \u00e0hi\u00e0"));
    text += QChar(0xC0);
    RestoreQuotes(text);
    EXPECT_EQ(text, QStringLiteral("say \"hi\"\""));

    const QString line = QStringLiteral("a \"b c\" c");
    EXPECT_TRUE(BetweenQuotes(line, 5));
    EXPECT_FALSE(BetweenQuotes(line, 9));
    EXPECT_EQ(InStr1(1, line, QStringLiteral("c")), -6);
    EXPECT_EQ(InStr1(7, line, QStringLiteral("c")), 9);
    EXPECT_EQ(InStr1(1, line, QStringLiteral(" ")), 0);  // a blank search is no search
    EXPECT_EQ(InStrRev1(line, QStringLiteral("c"), 8), -6);

    QString mixed = QStringLiteral("[set \"Ab\" x]");
    UCaseOutsideQuotes(mixed);
    EXPECT_EQ(mixed, QStringLiteral("[SET \"Ab\" X]"));
    EXPECT_EQ(RestoreAmpersand(ReplaceAmpersandInQuotes(QStringLiteral("a&\"b&c\""))), QStringLiteral("a&\"b&c\""));
    EXPECT_EQ(ReplaceAmpersandInQuotes(QStringLiteral("a&\"b&c\"")), QStringLiteral("a&\"b\u00e5c\""));
}

TEST(Substrings, WordBoundaries)
{
    EXPECT_TRUE(IsSubstring(QStringLiteral("MYTIME"), 3, 6));
    EXPECT_TRUE(IsSubstring(QStringLiteral("TIMER"), 1, 4));
    EXPECT_FALSE(IsSubstring(QStringLiteral("TIME+1"), 1, 4));
}

TEST(CondOperators, TwoCharacterOperatorsBecomeMarkers)
{
    EXPECT_EQ(ReplaceCondOperators(QStringLiteral("a<=b")), QStringLiteral("a\u00e7b"));
    EXPECT_EQ(ReplaceCondOperators(QStringLiteral("a=>b")), QStringLiteral("a\u00e8b"));
    EXPECT_EQ(ReplaceCondOperators(QStringLiteral("a<>b")), QStringLiteral("a\u00e0b"));
    EXPECT_EQ(ReplaceCondOperators(QStringLiteral("a><b")), QStringLiteral("ab"));
    EXPECT_EQ(ReplaceCondOperators(QStringLiteral("a=b")), QStringLiteral("a=b"));
}

TEST(NonPrintables, EnterTabAndTilde)
{
    QString text = QStringLiteral("a{ENTER}b{TAB}");
    ReplaceNonPrintables(text);
    EXPECT_EQ(text, QStringLiteral("a\r\nb\t"));
    QString left = QStringLiteral("{left}");
    ReplaceNonPrintables(left);
    EXPECT_EQ(left, QStringLiteral("{left}"));
    QString tilde = QStringLiteral("~x{~}");
    ReplaceNonPrintables(tilde);
    EXPECT_EQ(tilde, QStringLiteral("\r\nx{~}"));
    QString breaks = QStringLiteral("a\r\nb");
    ReplacevbCrLf(breaks);
    EXPECT_EQ(breaks, QStringLiteral("a~b"));
}

TEST(Names, AllLettersMessages)
{
    EXPECT_EQ(AllLetters(QStringLiteral("Abc_z"), QString()), QString());
    EXPECT_EQ(AllLetters(QString(), QString()), QString());
    EXPECT_EQ(AllLetters(QStringLiteral("A1"), QStringLiteral("LHS ")),
              QStringLiteral("Only letters allowed in LHS variable name"));
    EXPECT_EQ(AllLetters(QStringLiteral("XALITERAL"), QString()), QStringLiteral("Strings not allowed in variable name"));
    EXPECT_EQ(AllLetters(QStringLiteral("AEMPTY"), QString()), QStringLiteral("Empty string in variable name"));
}

TEST(Numbers, Val1IsLenientOnlyOnNumberCharacters)
{
    EXPECT_EQ(Val1(QStringLiteral(" 12 ")), 12);
    EXPECT_EQ(Val1(QStringLiteral("12a")), 0);
    EXPECT_EQ(Val1(QStringLiteral("1-2")), 1);
    EXPECT_EQ(Val1(QStringLiteral("1E3")), 1000);
    EXPECT_EQ(Val1(QStringLiteral("-2.5")), -2.5);
}
