// [WAIT Secs]: a pause in seconds or until a moment, that lets events run so that Esc,
// Stop and hotkeys are served. The time spent waiting is not counted against the
// macro's time-out.
#include "engine/control_statements.h"

#include "engine/interpreter.h"
#include "engine/macro_clock.h"
#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"
#include "shell/delay.h"

namespace engine {

namespace {

const QString kAborted = QStringLiteral("WAIT aborted by user");
constexpr double kDateStepSeconds = 1.0;  // ESC_DelayDate sleeps this long between looks
constexpr double kWaitNapSeconds = 0.001;  // ESC_DelayTime naps this long between looks

// Clears the abort latch and tells whether it was set.
bool takeAbort()
{
    bool &latch = runState().AbortRequested;
    const bool was = latch;
    latch = false;
    return was;
}

// The present moment as the macro's DATE and TIME read it (whole seconds).
QDateTime presentMoment()
{
    return QDateTime(QDate::fromString(macro::CurrentDateText(), Qt::ISODate),
                     QTime::fromString(macro::CurrentTimeText(), QStringLiteral("HH:mm:ss")));
}

// Clears WaitInProgress on every way out of DoWAIT.
struct WaitingFlag {
    WaitingFlag() { runState().WaitInProgress = true; }
    ~WaitingFlag() { runState().WaitInProgress = false; }
};

} // namespace

QDateTime ParseWaitMoment(const QString &text)
{
    const QString t = text.trimmed();
    for (const char *format : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd HH:mm", "yyyy-MM-ddTHH:mm:ss", "yyyy-MM-ddTHH:mm"}) {
        const QDateTime moment = QDateTime::fromString(t, QLatin1String(format));
        if (moment.isValid())
            return moment;
    }
    const QDate day = QDate::fromString(t, QStringLiteral("yyyy-MM-dd"));
    if (day.isValid())
        return QDateTime(day, QTime(0, 0));
    for (const char *format : {"HH:mm:ss", "HH:mm", "H:mm:ss", "H:mm"}) {
        const QTime time = QTime::fromString(t, QLatin1String(format));
        if (time.isValid())
            return QDateTime(presentMoment().date(), time);
    }
    return {};
}

double GetWaitTime(int line, QString &date)
{
    date.clear();
    const QString &text = runState().action(line).Text;
    const int firstQuote = macro::InStr(text, QStringLiteral("\""));
    if (firstQuote == 0) {
        const int blank = macro::InStr(text, QStringLiteral(" "));
        if (blank == 0)
            return 0;
        const int close = macro::InStrRev(text, QStringLiteral("]"));
        const QString operand = close > blank ? macro::Mid(text, blank + 1, close - blank - 1).trimmed()
                                              : macro::Mid(text, blank + 1).trimmed();
        const double seconds = macro::Val1(operand);
        if (seconds != 0)
            return seconds;
        if (operand.isEmpty() || !macro::AllLetters(operand, QString()).isEmpty())
            return 0;
        QString name = operand;
        int type = macro::kTypeNumber;
        const QString value = macro::GetVarVal(name, type);
        if (name.isEmpty())
            return 0;  // not set
        if (type == macro::kTypeString) {
            if (ParseWaitMoment(value).isValid())
                date = value;
            return 0;
        }
        return macro::Val1(value);
    }
    const int lastQuote = macro::InStrRev(text, QStringLiteral("\""));
    const QString operand = macro::Mid(text, firstQuote + 1, lastQuote - firstQuote - 1);
    if (lastQuote > firstQuote && !operand.isEmpty() && ParseWaitMoment(operand).isValid())
        date = operand;
    return 0;
}

bool ESC_DelayTime(double seconds)
{
    const double start = MacroClock();
    double now = start;
    while (start + seconds > now) {
        now = MacroClock();
        if (now < start)
            now += kSecondsPerDay;
        if (takeAbort())
            return false;
        DoEvents();
        // A short nap between looks keeps the wait from taking a whole core.
        shell::Delay(kWaitNapSeconds);
    }
    return true;
}

int ESC_DelayDate(const QString &date)
{
    const QDateTime moment = ParseWaitMoment(date);
    if (!moment.isValid())
        return 0;
    qint64 left = presentMoment().secsTo(moment);
    while (left > 0) {
        shell::Delay(kDateStepSeconds);
        left = presentMoment().secsTo(moment);
        if (takeAbort())
            return -1;
        DoEvents();
    }
    return 1;
}

QString DoWAIT(int line)
{
    const WaitingFlag waiting;
    MacroRunState &s = runState();
    const double elapsed = MacroClock() - s.MacroStart;
    QString date;
    const double seconds = GetWaitTime(line, date);
    if (seconds > 0) {
        if (!ESC_DelayTime(seconds))
            return kAborted;
        s.MacroStart = MacroClock() - elapsed;
        return {};
    }
    if (!date.isEmpty()) {
        const int result = ESC_DelayDate(date);
        if (result == -1)
            return kAborted;
        if (result == 0)
            return QStringLiteral("Invalid delay date for [WAIT Secs] statement");
        s.MacroStart = MacroClock() - elapsed;
        return {};
    }
    return QStringLiteral("Invalid delay time for [WAIT Secs] statement");
}

} // namespace engine
