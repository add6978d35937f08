#pragma once
// The control statements: branch ([IF], [ELSE], [ENDIF], [CANCEL IF]), loop ([LOOP],
// [ENDLOOP], [QUITLOOP]), wait ([WAIT]) and assignment ([VAR=Val]). Each takes the
// 1-based line in Actions and returns its message: "" to go on, "GoTo 1" after setting
// NextLine, "<QUIT>", or a message to record (fatal when it begins "FATAL ERROR").
#include <QDateTime>
#include <QString>

namespace engine {

QString DoIF(int line);
QString DoELSE(int line);
QString DoCANCELIF(int line);

QString DoLOOP(int line);
QString DoENDLOOP(int line);
QString DoQUITLOOP(int line);

QString DoWAIT(int line);
// The operand of a [WAIT ...] line: seconds (0 when none), or a moment in date.
double GetWaitTime(int line, QString &date);
// Waits seconds while letting events run. True when the time has passed, false when
// the abort latch was set (the latch is cleared). A midnight inside the wait is counted.
bool ESC_DelayTime(double seconds);
// Waits until the moment in date: 1 when it has come (at once for a past moment),
// 0 for a text that is not a moment, -1 when the abort latch was set (cleared).
int ESC_DelayDate(const QString &date);
// The moment a [WAIT] text names: "yyyy-MM-dd", "yyyy-MM-dd HH:mm[:ss]" (or with "T"),
// or "HH:mm[:ss]" for today. Invalid when the text is none of these.
QDateTime ParseWaitMoment(const QString &text);

QString DoVAR(int line);

} // namespace engine
