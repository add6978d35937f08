// [DATEDIFF DateFrom DateTo Diff] and [FINDSTRING String Substring NChar].
#include "engine/control_statements.h"
#include "engine/file_statements.h"

#include "engine/operands.h"
#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"

#include <QFileInfo>

namespace engine {

namespace {

const QString kDateDiffFrame = QStringLiteral(" for [DATEDIFF DateFrom DateTo Diff] statement");
const QString kFindStringFrame = QStringLiteral(" for [FINDSTRING String Substring NChar] statement");

// A date as a macro writes it: the forms of [WAIT] (ISO dates, with or without a time),
// or a month/day/year or day.month.year date.
QDateTime parseDate(const QString &text)
{
    QDateTime moment = ParseWaitMoment(text);
    if (moment.isValid())
        return moment;
    const QString t = text.trimmed();
    for (const char *format : {"M/d/yyyy", "M/d/yyyy H:mm", "M/d/yyyy H:mm:ss", "d.M.yyyy", "d.M.yyyy H:mm",
                               "d.M.yyyy H:mm:ss"}) {
        moment = QDateTime::fromString(t, QLatin1String(format));
        if (moment.isValid())
            return moment;
        const QDate day = QDate::fromString(t, QLatin1String(format));
        if (day.isValid())
            return QDateTime(day, QTime(0, 0));
    }
    return {};
}

// One date operand of [DATEDIFF]: a date, or a file whose time of last change counts.
QString dateOperand(const OperandToken &token, const QString &caption, QDateTime &moment)
{
    QString value;
    const QString message = OperandValue(token, caption, QString(), value);
    if (!message.isEmpty())
        return message;
    if (value.trimmed().isEmpty())
        return QStringLiteral("Invalid date");
    const QFileInfo file(value);
    if (file.exists() && !value.contains(QLatin1Char('\n'))) {
        moment = file.lastModified();
        return moment.isValid() ? QString() : QStringLiteral("Invalid file date");
    }
    moment = parseDate(value);
    if (moment.isValid())
        return {};
    if (value.toUpper().contains(QLatin1String("C:\\")) || value.contains(QLatin1Char('.'))
        || value.contains(QLatin1Char('/')))
        return QLatin1Char('(') + caption + QStringLiteral(") File not found");
    return QStringLiteral("Invalid date");
}

} // namespace

QString DoDATEDIFF(int line)
{
    QList<OperandToken> tokens;
    if (!SplitOperands(runState().action(line).Text, tokens))
        return QStringLiteral("Quote mismatch in variable") + kDateDiffFrame;
    if (tokens.size() != 3 || tokens.at(2).literal)
        return QStringLiteral("Invalid format") + kDateDiffFrame;
    for (const OperandToken &t : std::as_const(tokens))
        if (t.text.trimmed().isEmpty())
            return QStringLiteral("Invalid date") + kDateDiffFrame;
    const QString letters = macro::AllLetters(tokens.at(2).text, QStringLiteral("Diff "));
    if (!letters.isEmpty())
        return letters + kDateDiffFrame;
    QDateTime from, to;
    QString message = dateOperand(tokens.at(0), QStringLiteral("DateFrom"), from);
    if (message.isEmpty())
        message = dateOperand(tokens.at(1), QStringLiteral("DateTo"), to);
    if (!message.isEmpty())
        return message + kDateDiffFrame;
    // Whole days are calendar days: the midnights between the two, as a calendar counts
    // them, whatever daylight saving does to the hours.
    macro::SetVarVal(tokens.at(2).text, double(from.date().daysTo(to.date())));
    return {};
}

QString DoFINDSTRING(int line)
{
    QList<OperandToken> tokens;
    if (!SplitOperands(runState().action(line).Text, tokens))
        return QStringLiteral("Quote mismatch in variable") + kFindStringFrame;
    if (tokens.size() < 3 || tokens.at(2).literal || !macro::IsVarName(tokens.at(2).text))
        return QStringLiteral("Search variable not defined") + kFindStringFrame;
    if (tokens.size() > 3)
        return QStringLiteral("Invalid format") + kFindStringFrame;
    QString string, substring;
    QString message = OperandValue(tokens.at(0), QStringLiteral("String"), QString(), string);
    if (message.isEmpty())
        message = OperandValue(tokens.at(1), QStringLiteral("Sub-string"), QStringLiteral("sub-string"), substring);
    if (!message.isEmpty())
        return message + kFindStringFrame;

    // NChar is both the start and the answer; unset, a string or 0 start at the beginning.
    const QString &nchar = tokens.at(2).text;
    double start = 0;
    int type = macro::kTypeNumber;
    if (!macro::GetVarNumber(macro::UpperSameLength(nchar), start, type) || type != macro::kTypeNumber)
        start = 0;
    int position = int(start);
    if (position == 0)
        position = 1;
    const int length = macro::Len(string);
    if (qAbs(position) > length)
        position = position > 0 ? 1 : -length;

    int found = 0;
    if (!string.isEmpty() && length >= macro::Len(substring)) {
        auto search = [&](const QString &what) {
            return position >= 0 ? macro::InStr(position, string, what)
                                 : macro::InStrRev(string, what, -position);
        };
        found = search(substring);
        // Both letters stand for a double quote in macro text.
        if (found == 0 && substring == QString(macro::kQuoteMarker))
            found = search(QString(macro::kQuoteMarker2));
    }
    macro::SetVarVal(nchar, double(found));
    return {};
}

} // namespace engine
