#include "reader/date_panel.h"

#include <QLocale>

namespace reader {

QString FormatPanelDate(const QDate &date)
{
    return QLocale::c().toString(date, QStringLiteral("MMM d, yyyy"));
}

std::optional<QString> Timer4_Timer(DatePanelClock &clock, const QDateTime &now)
{
    const QString hoursMinutes = now.time().toString(QStringLiteral("H:mm"));
    if (!clock.rememberedTime.isEmpty() && clock.rememberedTime == hoursMinutes)
        return std::nullopt;
    clock.rememberedTime = hoursMinutes;
    if (clock.rememberedDate == now.date())
        return std::nullopt;
    clock.rememberedDate = now.date();
    return FormatPanelDate(clock.rememberedDate);
}

} // namespace reader
