// The status panel's date, refreshed as the day changes.
#include "reader/date_panel.h"

#include <gtest/gtest.h>

using reader::DatePanelClock;

TEST(DatePanel, ShowsTheDateOnTheFirstTickAndAgainOnlyWhenTheDayChanges)
{
    DatePanelClock clock;
    const QDate day(2026, 11, 23);
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day, QTime(23, 58, 10))), "Nov 23, 2026");
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day, QTime(23, 58, 40))), std::nullopt);
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day, QTime(23, 59, 0))), std::nullopt);
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day.addDays(1), QTime(0, 0, 5))), "Nov 24, 2026");
    // Midnight to midnight a week later: the same minute, another day, still caught once
    // the minute moves on.
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day.addDays(8), QTime(0, 0, 30))), std::nullopt);
    EXPECT_EQ(reader::Timer4_Timer(clock, QDateTime(day.addDays(8), QTime(0, 1, 0))), "Dec 1, 2026");
}

TEST(DatePanel, MonthNamesAreEnglishWhateverTheLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(reader::FormatPanelDate(QDate(2027, 3, 5)), "Mar 5, 2027");
    QLocale::setDefault(before);
}
