#pragma once
// The date in the main window's third status panel, kept current by Timer4.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

namespace reader {

inline constexpr int kTimer4FirstIntervalMs = 1;
inline constexpr int kTimer4IntervalMs = 10000;

struct DatePanelClock {
    QString rememberedTime;  // "h:mm", the time up to its second ':'
    QDate rememberedDate;
    void reset() { *this = DatePanelClock(); }
};

// One tick at `now`: the new text of the panel when the date changed, else nothing.
std::optional<QString> Timer4_Timer(DatePanelClock &clock, const QDateTime &now);

// "MMM d, yyyy" with English month names, whatever the locale.
QString FormatPanelDate(const QDate &date);

} // namespace reader
