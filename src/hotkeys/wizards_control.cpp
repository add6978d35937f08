// Wizards of the control statements: [IF], [LOOP], [QUITLOOP], [CANCEL IF], [VAR=Val],
// [WAIT] with its date dialog, and [HOTKEY n].
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"
#include "macro/variables.h"

#include <QLocale>
#include <QRegularExpression>

namespace hotkeys {

using namespace wizard;

namespace {

const QString kLoopWord = QStringLiteral("[LOOP ");
const QString kEndLoopWord = QStringLiteral("[ENDLOOP]");
constexpr double kWaitShortest = 0.1;   // seconds
constexpr double kWaitLongest = 3600.0; // seconds
constexpr int kHoursOnDial = 12;


// True when a [LOOP ...] before caret is still open there: the loops and ends are
// counted backwards from the caret, so a closed inner loop is passed by.
bool InsideLoop(const QString &macro, int caret)
{
    const QString before = macro.left(qBound(0, caret, int(macro.size()))).toUpper();
    int closed = 0;
    qsizetype from = before.size();
    while (from > 0) {
        const qsizetype loop = before.lastIndexOf(kLoopWord, from - 1);
        const qsizetype end = before.lastIndexOf(kEndLoopWord, from - 1);
        if (loop < 0 && end < 0)
            return false;
        if (loop > end) {
            if (closed == 0)
                return true;
            --closed;
            from = loop;
        } else {
            ++closed;
            from = end;
        }
    }
    return false;
}

// A condition asked by input box, built into "[<row>cond]" and judged by its checker.
bool AskCondition(WizardAsker &ask, int command, const QString &title, const QString &prompt, QString &line)
{
    QString condition;
    if (!AskValue(ask, title, prompt, {}, condition))
        return false;
    line = helpWord(command) + condition + QLatin1Char(']');
    return CheckedOrAccepted(ask, command, line, title);
}

int MonthNumber(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber)
        return number;
    for (const QLocale &locale : {QLocale::c(), QLocale::system()})
        for (int m = 1; m <= 12; ++m)
            for (QLocale::FormatType form : {QLocale::LongFormat, QLocale::ShortFormat})
                if (text.compare(locale.monthName(m, form), Qt::CaseInsensitive) == 0
                    || text.compare(locale.standaloneMonthName(m, form), Qt::CaseInsensitive) == 0)
                    return m;
    return 0;
}

} // namespace

QStringList mnuFunctionsIFTHENELSE_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdIF)))
        return {};
    QString line;
    if (!AskCondition(ask, macro::CmdIF, QStringLiteral("IF"), QStringLiteral("Enter the IF condition, e.g. X=Y"), line))
        return {};
    return {line, QStringLiteral("[ELSE]"), QStringLiteral("[ENDIF]")};
}

QStringList mnuFunctionsDO_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdLOOP)))
        return {};
    QString line;
    if (!AskCondition(ask, macro::CmdLOOP, QStringLiteral("LOOP"), QStringLiteral("Enter the LOOP condition, e.g. X=1,3-10"),
                      line))
        return {};
    return {line, kEndLoopWord};
}

QStringList mnuFunctionsQUITLOOP_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdQUITLOOP)))
        return {};
    const QString title = QStringLiteral("QUITLOOP");
    if (!InsideLoop(context.macro, context.caret)
        && ask.message(QStringLiteral("No matching [LOOP Cond] statement. Continue?"), kYesNo, title) != WizardYes)
        return {};
    switch (AskChoice(ask, QStringLiteral("Would you like to include an [If Cond] statement?"), title)) {
    case WizardYes: {
        QString line;
        if (!AskCondition(ask, macro::CmdIF, title, QStringLiteral("Enter the IF condition"), line))
            return {};
        return {line, QStringLiteral("[QUITLOOP]"), QStringLiteral("[ENDIF]")};
    }
    case WizardNo:
        return {QStringLiteral("[QUITLOOP]")};
    default:
        return {};
    }
}

QStringList mnuFunctionsCancel_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCANCELIF)))
        return {};
    QString line;
    if (!AskCondition(ask, macro::CmdCANCELIF, QStringLiteral("CANCEL IF"), QStringLiteral("Enter CANCEL condition, e.g. X=Y"),
                      line))
        return {};
    return {line};
}

QStringList mnuFunctionsSetVAR_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdVAR)))
        return {};
    const QString title = QStringLiteral("VAR=");
    QString name, value;
    if (!AskName(ask, title, QStringLiteral("Enter the variable name"), name))
        return {};
    const QString prompt = name + QStringLiteral("=? (Enter the right hand side of the equation)\n")
                           + QStringLiteral("(include double quotes for literal strings)");
    if (!AskValue(ask, title, prompt, {}, value))
        return {};
    const QString line = QLatin1Char('[') + name + QLatin1Char('=') + value + QLatin1Char(']');
    if (!CheckedOrAccepted(ask, macro::CmdVAR, line, title))
        return {};
    return {line};
}

QStringList mnuFunctionsWait_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdWAIT)))
        return {};
    const QString title = QStringLiteral("WAIT");
    switch (AskChoice(ask, QStringLiteral("Would you like to enter a time and date to wait for?"), title)) {
    case WizardYes:
        return SetPicTimeDate(ask);
    case WizardNo: {
        QString seconds;
        if (!AskValue(ask, title, QStringLiteral("Enter seconds to wait or a variable name"),
                      NumberOrName(kWaitShortest, kWaitLongest, QStringLiteral("Value must be between 0.1 and 3600.0 seconds.")),
                      seconds))
            return {};
        return {Statement(title, {seconds})};
    }
    default:
        return {};
    }
}

QStringList mnuFunctionsMACRO_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdHOTKEY)))
        return {};
    const QString title = QStringLiteral("HOTKEY");
    const int count = int(context.hotkeys.size());
    switch (AskChoice(ask, QStringLiteral("Would you like to name the hotkey by its descriptor (Yes) or by its index or a variable (No)?"),
                      title)) {
    case WizardYes: {
        QString name;
        const Validator noQuote = [](const QString &answer) {
            return answer.contains(QLatin1Char('"')) ? QStringLiteral("A string can not hold a double quote") : QString();
        };
        if (!AskValue(ask, title, QStringLiteral("Enter the hotkey descriptor e.g. ^{F1} -or- Select All"), noQuote, name))
            return {};
        bool known = false;
        for (const macro::HotkeyName &hotkey : context.hotkeys)
            known = known || name.compare(hotkey.description, Qt::CaseInsensitive) == 0
                    || name.compare(hotkey.keys, Qt::CaseInsensitive) == 0;
        const QString fault = QStringLiteral("Macro not found for ") + macro::CanonicalStatement(macro::CmdHOTKEY)
                              + QStringLiteral(" statement. Continue?");
        if (!known && ask.message(fault, kYesNo, title) != WizardYes)
            return {};
        return {Statement(title, {Quoted(name)})};
    }
    case WizardNo: {
        const QString outOfRange = QStringLiteral("Invalid hotkey index (NumHotkeys=") + QString::number(count) + QLatin1Char(')');
        const Validator index = [count, outOfRange](const QString &answer) {
            if (IsPlainNumber(answer)) {
                bool whole = false;
                const int n = answer.toInt(&whole);
                return whole && n >= 1 && n <= count ? QString() : outOfRange;
            }
            return macro::AllLetters(answer, QString());
        };
        QString n;
        if (!AskValue(ask, title, QStringLiteral("Enter the hotkey index or variable"), index, n))
            return {};
        return {Statement(title, {n})};
    }
    default:
        return {};
    }
}

QDateTime PicDateMoment(const QString &date, const QString &time)
{
    const QStringList parts = date.trimmed().split(QLatin1Char('/'));
    if (parts.size() != 3)
        return {};
    bool dayOk = false, yearOk = false;
    const QDate day(parts.at(2).trimmed().toInt(&yearOk), MonthNumber(parts.at(1).trimmed()),
                    parts.at(0).trimmed().toInt(&dayOk));
    if (!dayOk || !yearOk || !day.isValid())
        return {};

    static const QRegularExpression clock(
        QStringLiteral("^\\s*(\\d{1,2}):(\\d{1,2}):(\\d{1,2})\\s*([AaPp][Mm])?\\s*$"));
    const QRegularExpressionMatch m = clock.match(time);
    if (!m.hasMatch())
        return {};
    int hour = m.captured(1).toInt();
    const QString half = m.captured(4).toUpper();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > kHoursOnDial)
            return {};
        hour %= kHoursOnDial;
        if (half == QLatin1String("PM"))
            hour += kHoursOnDial;
    }
    const QTime at(hour, m.captured(2).toInt(), m.captured(3).toInt());
    if (!at.isValid())
        return {};
    return QDateTime(day, at);
}

QString WaitMomentText(const QDateTime &moment) { return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

namespace {

// frmPicDate and the combined moment; "Illegal time/date" when the texts don't read.
QString PickMoment(WizardAsker &ask, bool future)
{
    QString date, time;
    if (!ask.dateTime(future, date, time))
        return {};
    const QDateTime moment = PicDateMoment(date, time);
    if (!moment.isValid()) {
        ask.message(QStringLiteral("Illegal time/date"), kOk, QStringLiteral("Set Time/Date"));
        return {};
    }
    return Quoted(WaitMomentText(moment));
}

} // namespace

QStringList SetPicTimeDate(WizardAsker &ask)
{
    const QString moment = PickMoment(ask, true);
    if (moment.isEmpty())
        return {};
    return {Statement(QStringLiteral("WAIT"), {moment})};
}

QString SetPicTimeDateDiff(WizardAsker &ask) { return PickMoment(ask, false); }

} // namespace hotkeys
