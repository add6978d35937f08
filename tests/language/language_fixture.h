#pragma once
// A macro run's surroundings for language tests: fake platform, a fixed clock and date,
// the default time limit, and a small set of variables.
#include "fakes/fake_services.h"
#include "macro/sequences.h"
#include "macro/variables.h"
#include "shell/on_top_message.h"

#include <gtest/gtest.h>

namespace langtest {

inline constexpr double kClockSeconds = 45296.25;  // 12:34:56.25

class LanguageTest : public ::testing::Test {
protected:
    fakes::FakeServices fakes;

    void SetUp() override
    {
        macro::ResetVariables();
        macro::ResetSequences();
        shell::SetMessageClock([] { return kClockSeconds; });
        macro::SetDateTimeSource([] { return QDateTime(QDate(2024, 3, 9), QTime(7, 5, 30)); });
        fakes.readerText.content = QStringLiteral("Reader text 42");

        macro::SetVarVal(QStringLiteral("N"), 5.0);
        macro::SetVarVal(QStringLiteral("M"), -2.0);
        macro::SetVarVal(QStringLiteral("H"), 0.5);
        macro::SetVarVal(QStringLiteral("Z"), 0.0);
        macro::SetVarVal(QStringLiteral("A"), 1.0);
        macro::SetVarVal(QStringLiteral("B"), 2.0);
        macro::SetVarVal(QStringLiteral("C"), 4.0);
        macro::SetVarVal(QStringLiteral("S"), QStringLiteral("abc"));
        macro::SetVarVal(QStringLiteral("T"), QStringLiteral("abcdef"));
        macro::SetVarVal(QStringLiteral("FIVE"), QStringLiteral("5"));
        macro::SetVarVal(QStringLiteral("UP"), QStringLiteral("ABC"));
        macro::SetVarVal(QStringLiteral("JUNK"), QStringLiteral("12abc"));
        macro::SetVarVal(QStringLiteral("EMPTY"), QString());
        macro::SetVarVal(QStringLiteral("Q"), QStringLiteral("say \"hi\""));
        macro::SetVarVal(QStringLiteral("ASCII"), 65.0);
    }

    void TearDown() override
    {
        shell::SetMessageClock(nullptr);
        macro::SetDateTimeSource(nullptr);
        macro::ResetVariables();
        macro::ResetSequences();
    }
};

} // namespace langtest
