#pragma once
// Texts of the reports shown after a macro run.
#include <QString>

namespace engine {

inline const QString kReportRule = QString(30, QLatin1Char('='));
inline const QString kErrorReportCaption = QStringLiteral("ERROR REPORT");

// The code with each line prefixed by its running number and ":", every line ended
// by CR LF.
QString AddNumbers(const QString &text);

// The run-time report of RunMacro, listing the statement messages of the run.
QString RuntimeReportText(int number, const QString &name, const QString &listing,
                          const QString &errorText, int errorCount);
// The report RunTimer_Timer shows for a non-empty result of RunMacro.
QString RunTimerReportText(int number, const QString &name, const QString &code,
                           const QString &message);
// The report RunCommandLineMacro shows for a non-empty result of RunMacro.
QString CommandLineReportText(int number, const QString &name, const QString &code,
                              const QString &message);

} // namespace engine
