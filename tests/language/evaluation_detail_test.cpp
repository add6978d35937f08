// Details the evaluators keep however they scan a text: numbers read as a full
// conversion reads them, every decimal of a result, special names in any case, and
// texts too short to hold an operand.
#include "language_fixture.h"

#include "macro/conditions.h"
#include "macro/expressions.h"
#include "macro/number_format.h"
#include "macro/special_vars.h"

#include <cmath>
#include <random>
#include <utility>

using namespace macro;
using langtest::LanguageTest;

namespace {

// Same double, sign of zero included.
void expectSameDouble(double actual, double expected, const QString &text)
{
    EXPECT_EQ(actual, expected) << qPrintable(text);
    EXPECT_EQ(std::signbit(actual), std::signbit(expected)) << qPrintable(text);
}

TEST(NumberReading, DecimalsReadAsAFullConversionReadsThem)
{
    // Fifteen and sixteen digits, and one beyond exact integers, among them.
    const char *texts[] = {"0.1", "-0.3", "2.675", "+.25", "5.", "007.50", "-0", "0.000000000000001", "123456789012345",
                           "1234567890123456", "9007199254740993", "0.30000000000000004", "99999999999999.9", "1e3",
                           "-2.5E-3"};
    for (const char *t : texts) {
        const QString text = QString::fromLatin1(t);
        expectSameDouble(Val1(text), text.toDouble(), text);
    }

    std::mt19937_64 random(20241123);
    for (int i = 0; i < 20000; ++i) {
        QString text = QString::number(static_cast<qulonglong>(random() % 1000000000000ULL));
        const int decimals = static_cast<int>(random() % 9);
        if (decimals > 0)
            text += QLatin1Char('.') + QString::number(random() % 1000000000ULL).rightJustified(decimals, QLatin1Char('0')).left(decimals);
        if (random() % 3 == 0)
            text.prepend(QLatin1Char('-'));
        expectSameDouble(Val1(text), text.toDouble(), text);
    }
}

TEST(NumberReading, LenientTextsStayLenient)
{
    struct Row { QString text; double value; };
    const Row rows[] = {
        {QStringLiteral("-"), 0}, {QStringLiteral("."), 0}, {QStringLiteral("+"), 0}, {QStringLiteral("--1"), 0},
        {QStringLiteral("1.5.2"), 1.5}, {QStringLiteral("3-"), 3}, {QStringLiteral("\t8\t"), 8},
        {QStringLiteral("\u0661\u0662"), 0},  // Arabic-Indic digits are not digits here
        {QStringLiteral("\uFF11"), 0},        // nor is a full-width one
        {QStringLiteral("1\u00A0"), 1},       // a trailing no-break space is trimmed
    };
    for (const Row &r : rows)
        expectSameDouble(Val1(r.text), r.value, r.text);
}

TEST(ResultDigits, BinaryFractionsWriteEveryDecimal)
{
    EXPECT_EQ(ResultText(1.0 / 32768), QStringLiteral(".000030517578125"));
    EXPECT_EQ(ResultText(-3.625), QStringLiteral("-3.625"));
    EXPECT_EQ(ResultText(1099511627776.5), QStringLiteral("1099511627776.5"));
    // The general pattern path writes the same text for every such value.
    for (const double whole : {0.0, 1.0, 12345.0, 1099511627776.0}) {
        for (int k = 1; k < 32768; k += 97) {
            const double value = -(whole + k / 32768.0);
            const QString text = ResultText(value);
            ASSERT_EQ(text, FormatNumber(value, kResultPattern)) << value;
            ASSERT_EQ(ResultValue(value), Val1(text)) << value;
        }
    }
}

TEST(ResultDigits, OtherValuesReadBackFromTheirText)
{
    for (const double value : {0.1 + 0.2, 7.0 / 3, -1e-20, 123456789.123456789, 1e17 / 3, 5e-16})
        EXPECT_EQ(ResultValue(value), Val1(ResultText(value))) << value;
}

TEST(NameTest, AgreesWithTheNameRule)
{
    const char *words[] = {"", "A", "AEMPT", "AEMPTY", "xAEMPTY", "ALITERAL", "ALITERALS", "ALITERA", "A1", "a_b", "[x]",
                           "B C", "\xE9"};
    for (const char *w : words) {
        const QString word = QString::fromLatin1(w);
        EXPECT_EQ(IsVarName(word), AllLetters(word, QString()).isEmpty()) << w;
    }
    EXPECT_FALSE(IsVarName(QStringLiteral("AEMPTY")));
    EXPECT_TRUE(IsVarName(QStringLiteral("a_b")));  // "_" lies between "Z" and "a"
}

TEST_F(LanguageTest, SpecialNamesAreFoundInAnyCase)
{
    QString cond = QStringLiteral("len(s)=3");
    EXPECT_EQ(TestCond(cond), QStringLiteral("TRUE"));
    cond = QStringLiteral("Ucase(S)=UP");
    EXPECT_EQ(TestCond(cond), QStringLiteral("TRUE"));

    QString msg;
    EXPECT_EQ(SolveEquation(QStringLiteral("timer*2"), msg), 2 * langtest::kClockSeconds);
    EXPECT_EQ(msg, QString());
    EXPECT_EQ(GetString(QStringLiteral("date&\"!\""), msg), QStringLiteral("2024-03-09!"));
    EXPECT_EQ(msg, QString());
}

TEST_F(LanguageTest, LettersBeyondAsciiThatUpperCaseIntoANameCount)
{
    // Dotless i upper-cases to I and long s to S, so these spell TIME and STR(.
    QString msg;
    EXPECT_EQ(GetString(QStringLiteral("t\u0131me"), msg), QStringLiteral("07:05:30"));
    EXPECT_EQ(msg, QString());
    SolveEquation(QStringLiteral("1+\u017Ftr(N)"), msg);
    EXPECT_EQ(msg, QStringLiteral("STR() not allowed in number expression"));
    QString text = QStringLiteral("\u00E9+TIMER");
    EXPECT_EQ(ReplaceSpecialNumVars(text), QString());
    EXPECT_EQ(text, QStringLiteral("\u00C9+45296.25"));
}

TEST_F(LanguageTest, TextsTooShortForAnOperand)
{
    // An empty operand ("++") is taken for a string.
    for (const auto &[text, message] : {std::pair{"", ""}, {"+", ""}, {"++", "String variable not allowed"}}) {
        QString msg;
        EXPECT_EQ(GetEquVal(QString::fromLatin1(text), msg), 0.0) << text;
        EXPECT_EQ(msg, QString::fromLatin1(message)) << text;
    }
    QString msg;
    EXPECT_EQ(GetString(QString(), msg), QString());
    EXPECT_EQ(msg, QString());
    EXPECT_EQ(GetANDORVal(QString(), msg), 0);
    // " OR " closes the last term only when the text does not already end in a blank.
    EXPECT_EQ(GetANDORVal(QStringLiteral(" 1 AND 1 "), msg), 0);
    EXPECT_EQ(msg, QString());
}

} // namespace
