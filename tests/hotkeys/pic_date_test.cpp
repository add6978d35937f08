// frmPicDate's decisions: the lists and defaults from the clock, the texts it gives, and
// the order of its checks (a past day, a bad or past time, an impossible moment).
#include "hotkeys/pic_date.h"

#include <QTime>
#include <gtest/gtest.h>

using namespace hotkeys;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

const QDateTime kNow(QDate(2025, 3, 7), QTime(15, 4, 5));  // a Friday afternoon

PicDateChoice At(QDate date, int hour, int minute, int second, bool pm)
{
    PicDateChoice c;
    c.date = date;
    c.hour = hour;
    c.minute = minute;
    c.second = second;
    c.pm = pm;
    return c;
}

TEST(PicDate, DefaultsComeFromTheClockOnATwelveHourScale)
{
    const PicDateChoice afternoon = PicDateDefaults(kNow);
    EXPECT_EQ(afternoon.date, QDate(2025, 3, 7));
    EXPECT_EQ(afternoon.hour, 3);
    EXPECT_EQ(afternoon.minute, 4);
    EXPECT_EQ(afternoon.second, 5);
    EXPECT_TRUE(afternoon.pm);
    const PicDateChoice midnight = PicDateDefaults(QDateTime(QDate(2025, 3, 7), QTime(0, 30, 0)));
    EXPECT_EQ(midnight.hour, 12);
    EXPECT_FALSE(midnight.pm);
    const PicDateChoice noon = PicDateDefaults(QDateTime(QDate(2025, 3, 7), QTime(12, 0, 59)));
    EXPECT_EQ(noon.hour, 12);
    EXPECT_TRUE(noon.pm);
    EXPECT_EQ(noon.second, 59);
}

TEST(PicDate, ListsHoldTheClockFaceAndTwoDigitMinutes)
{
    const QStringList hours = PicHourItems();
    ASSERT_EQ(hours.size(), 12);
    EXPECT_EQ(hours.first(), "1");
    EXPECT_EQ(hours.last(), "12");
    const QStringList minutes = PicMinuteItems();
    ASSERT_EQ(minutes.size(), 60);
    EXPECT_EQ(minutes.first(), "00");
    EXPECT_EQ(minutes.at(7), "07");
    EXPECT_EQ(minutes.last(), "59");
}

TEST(PicDate, TextsAreTheDayWithItsMonthNameAndTheTimeWithAmOrPm)
{
    EXPECT_EQ(PicDateText(QDate(2025, 3, 7)), "07/March/2025");
    EXPECT_EQ(PicDateText(QDate(2024, 12, 31)), "31/December/2024");
    EXPECT_EQ(PicTimeText(At(QDate(2025, 3, 7), 3, 7, 9, true)), "3:07:09 PM");
    EXPECT_EQ(PicTimeText(At(QDate(2025, 3, 7), 12, 0, 0, false)), "12:00:00 AM");
}

TEST(PicDate, TwelveAmIsMidnightAndTwelvePmIsNoon)
{
    EXPECT_EQ(PicChoiceMoment(At(QDate(2025, 3, 8), 12, 0, 0, false)), QDateTime(QDate(2025, 3, 8), QTime(0, 0)));
    EXPECT_EQ(PicChoiceMoment(At(QDate(2025, 3, 8), 12, 15, 0, true)), QDateTime(QDate(2025, 3, 8), QTime(12, 15)));
    EXPECT_EQ(PicChoiceMoment(At(QDate(2025, 3, 8), 11, 59, 59, true)),
              QDateTime(QDate(2025, 3, 8), QTime(23, 59, 59)));
    EXPECT_FALSE(PicChoiceMoment(At(QDate(), 1, 0, 0, false)).isValid());
    EXPECT_FALSE(PicChoiceMoment(At(QDate(2025, 3, 8), 13, 0, 0, false)).isValid());
}

struct CheckRow {
    const char *what;
    PicDateChoice choice;
    bool future;
    const char *message;  // "" when taken
    const char *title;
};

TEST(PicDate, ChecksComeInTheirOrderWithTheirTitles)
{
    const QDate today = kNow.date();
    const CheckRow rows[] = {
        {"tomorrow", At(today.addDays(1), 9, 0, 0, false), true, "", ""},
        {"later today", At(today, 3, 4, 6, true), true, "", ""},
        {"yesterday", At(today.addDays(-1), 11, 0, 0, true), true, "You must pick a date in the future",
         "Invalid Date"},
        // Today with a past time is the time check's, not the date check's.
        {"earlier today", At(today, 9, 0, 0, false), true, "The completion time is not valid.", "Invalid Time"},
        {"this very second", At(today, 3, 4, 5, true), true, "The completion time is not valid.", "Invalid Time"},
        {"a day before with a bad time", At(today.addDays(-1), 0, 0, 0, false), true,
         "You must pick a date in the future", "Invalid Date"},
        {"hour 0", At(today.addDays(1), 0, 0, 0, false), true, "The completion time is not valid.", "Invalid Time"},
        {"minute 60", At(today.addDays(1), 1, 60, 0, false), true, "The completion time is not valid.",
         "Invalid Time"},
        {"second -1", At(today.addDays(1), 1, 0, -1, false), true, "The completion time is not valid.",
         "Invalid Time"},
        {"no day", At(QDate(), 1, 0, 0, false), true, "Illegal time/date", "Set Time/Date"},
        // DATEDIFF takes the past.
        {"the past, no future check", At(QDate(1999, 1, 1), 8, 30, 0, false), false, "", ""},
        {"earlier today, no future check", At(today, 9, 0, 0, false), false, "", ""},
        {"bad time, no future check", At(QDate(1999, 1, 1), 13, 0, 0, false), false,
         "The completion time is not valid.", "Invalid Time"},
    };
    for (const CheckRow &row : rows) {
        const PicDateVerdict verdict = CheckPicDate(row.choice, row.future, kNow);
        EXPECT_EQ(verdict.message, QLatin1String(row.message)) << row.what;
        EXPECT_EQ(verdict.title, QLatin1String(row.title)) << row.what;
        EXPECT_EQ(verdict.ok(), *row.message == 0) << row.what;
    }
}

} // namespace
