#include "hotkeys/pic_date.h"

#include <QLocale>
#include <QTime>

namespace hotkeys {

namespace {

constexpr int kNoon = 12;

// 24-hour clock hour of a 12-hour choice: 12 AM is midnight, 12 PM noon.
int Hour24(const PicDateChoice &choice) { return choice.hour % kNoon + (choice.pm ? kNoon : 0); }

bool OnTheClock(const PicDateChoice &c)
{
    return c.hour >= 1 && c.hour <= kPicHours && c.minute >= 0 && c.minute < kPicMinutes && c.second >= 0
           && c.second < kPicSeconds;
}

} // namespace

PicDateChoice PicDateDefaults(const QDateTime &now)
{
    PicDateChoice choice;
    choice.date = now.date();
    const QTime time = now.time();
    choice.pm = time.hour() >= kNoon;
    choice.hour = time.hour() % kNoon == 0 ? kNoon : time.hour() % kNoon;
    choice.minute = time.minute();
    choice.second = time.second();
    return choice;
}

QStringList PicHourItems()
{
    QStringList items;
    for (int hour = 1; hour <= kPicHours; ++hour)
        items << QString::number(hour);
    return items;
}

QStringList PicMinuteItems()
{
    QStringList items;
    for (int n = 0; n < kPicMinutes; ++n)
        items << QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
    return items;
}

QString PicDateText(const QDate &date) { return QLocale::c().toString(date, QStringLiteral("dd/MMMM/yyyy")); }

QString PicTimeText(const PicDateChoice &c)
{
    return QStringLiteral("%1:%2:%3 %4")
        .arg(c.hour)
        .arg(c.minute, 2, 10, QLatin1Char('0'))
        .arg(c.second, 2, 10, QLatin1Char('0'))
        .arg(c.pm ? QStringLiteral("PM") : QStringLiteral("AM"));
}

QDateTime PicChoiceMoment(const PicDateChoice &choice)
{
    if (!choice.date.isValid() || !OnTheClock(choice))
        return {};
    return QDateTime(choice.date, QTime(Hour24(choice), choice.minute, choice.second));
}

PicDateVerdict CheckPicDate(const PicDateChoice &choice, bool future, const QDateTime &now)
{
    if (future && choice.date.isValid() && choice.date < now.date())
        return {QStringLiteral("You must pick a date in the future"), QStringLiteral("Invalid Date")};
    const QDateTime moment = PicChoiceMoment(choice);
    if (!OnTheClock(choice) || (future && moment.isValid() && moment <= now))
        return {QStringLiteral("The completion time is not valid."), QStringLiteral("Invalid Time")};
    if (!moment.isValid())
        return {QStringLiteral("Illegal time/date"), QStringLiteral("Set Time/Date")};
    return {};
}

} // namespace hotkeys
