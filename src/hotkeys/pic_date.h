#pragma once
// frmPicDate, "Set Wait Time/Date": the moment a [WAIT] or [DATEDIFF] wizard asks for,
// picked as a day in a month view and a time on a 12-hour clock. The window shows the
// choice; the defaults, the texts and the checks are here.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace hotkeys {

inline constexpr int kPicHours = 12;  // 1 to 12
inline constexpr int kPicMinutes = 60;
inline constexpr int kPicSeconds = 60;

struct PicDateChoice {
    QDate date;
    int hour = 12;  // 1 to 12
    int minute = 0;
    int second = 0;
    bool pm = false;
};

// The verdict on a choice: an empty message means it is taken.
struct PicDateVerdict {
    QString message;
    QString title;
    bool ok() const { return message.isEmpty(); }
};

// The day and time of now, the hour on the 12-hour scale.
PicDateChoice PicDateDefaults(const QDateTime &now);

// The entries of the hour, minute and second lists: "1".."12", "00".."59".
QStringList PicHourItems();
QStringList PicMinuteItems();  // also the seconds

// The date as "dd/MMMM/yyyy" with English month names, e.g. "07/March/2025".
QString PicDateText(const QDate &date);
// Hours, minutes and seconds joined by ":", a blank and AM or PM: "3:07:09 PM".
QString PicTimeText(const PicDateChoice &choice);
// The moment chosen; invalid when the date or the time is.
QDateTime PicChoiceMoment(const PicDateChoice &choice);

// The checks of OK, in order: with future, a day before today ("You must pick a date in
// the future", "Invalid Date"); a time off the clock, or with future a moment not after
// now ("The completion time is not valid.", "Invalid Time"), so that today with a past
// time fails here and not on the date; a date and time that do not make a moment
// ("Illegal time/date", "Set Time/Date").
PicDateVerdict CheckPicDate(const PicDateChoice &choice, bool future, const QDateTime &now);

} // namespace hotkeys
