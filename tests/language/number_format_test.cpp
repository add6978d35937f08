// Result text, the seconds format, the general format and the number test.
#include "macro/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace macro;

namespace {

struct FormatRow {
    double value;
    const char *pattern;
    const char *expected;
};

TEST(NumberFormat, PatternsDropZerosAndKeepThePoint)
{
    const FormatRow rows[] = {
        {0.5, kResultPattern, ".5"},
        {3.0, kResultPattern, "3."},
        {-2.25, kResultPattern, "-2.25"},
        {-0.5, kResultPattern, "-.5"},
        {7.0 / 3.0, kResultPattern, "2.333333333333333"},
        {0.1 + 0.2, kResultPattern, ".3"},                // cut at fifteen places
        {1e-20, kResultPattern, "."},                     // no digits left
        {123456789012345678.0, kResultPattern, "123456789012345680."},
        {45296.25, kSecondsPattern, "45296.25"},
        {180.0, kSecondsPattern, "180."},
        {1.23456, kSecondsPattern, "1.235"},
        {0.0, "###", ""},
        {12.5, "###", "13"},                              // halves go away from zero
        {-12.5, "###", "-13"},
        {0.0, "0.#", "0."},
        {1.25, "0.#", "1.3"},
        {0.15, "0.#", "0.2"},                              // as it reads, not as stored
        {0.75, "0.#", "0.8"},
    };
    for (const FormatRow &r : rows)
        EXPECT_EQ(FormatNumber(r.value, r.pattern), QString::fromLatin1(r.expected))
            << r.value << " by " << r.pattern;
}

TEST(NumberFormat, ResultTextWritesZeroAsZero)
{
    EXPECT_EQ(ResultText(0.0), QStringLiteral("0"));
    EXPECT_EQ(ResultText(-0.0), QStringLiteral("0"));
    EXPECT_EQ(ResultText(0.5), QStringLiteral(".5"));
}

TEST(NumberFormat, ResultTextOfAnOverflowIsAFault)
{
    EXPECT_THROW(ResultText(std::numeric_limits<double>::infinity()), std::overflow_error);
    EXPECT_THROW(ResultText(std::nan("")), std::overflow_error);
}

TEST(NumberFormat, GeneralFormatIsShortestRoundTrip)
{
    EXPECT_EQ(GeneralFormat(3.0), QStringLiteral("3"));
    EXPECT_EQ(GeneralFormat(0.5), QStringLiteral("0.5"));
    EXPECT_EQ(GeneralFormat(-2.25), QStringLiteral("-2.25"));
    EXPECT_EQ(GeneralFormat(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
    EXPECT_EQ(GeneralFormat(1e20), QStringLiteral("1E+20"));
    EXPECT_EQ(Val1(GeneralFormat(1e20)), 1e20);
    EXPECT_EQ(GeneralFormat(45296.25f), QStringLiteral("45296.25"));
}

TEST(NumberFormat, NumberTest)
{
    struct Row {
        const char *word;
        bool number;
    };
    const Row rows[] = {
        {"0", true},    {"5", true},   {".5", true},  {"3.", true},  {"-2", true},
        {"0.0", false}, {"00", false}, {".0", false}, {".", false},  {"", false},
        {"12a", false}, {"A", false},  {"1E3", true}, {"-0", false},
    };
    for (const Row &r : rows)
        EXPECT_EQ(IsNumber(QString::fromLatin1(r.word)), r.number) << r.word;
}

TEST(NumberFormat, RoundingTiesGoToEven)
{
    EXPECT_EQ(RoundEven(1.5), 2.0);
    EXPECT_EQ(RoundEven(2.5), 2.0);
    EXPECT_EQ(RoundEven(-0.5), -0.0);
}

} // namespace
