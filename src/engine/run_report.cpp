#include "engine/run_report.h"

#include "macro/macro_text.h"

namespace engine {

namespace {
const QString &crlf = macro::kCrLf;
QString quoted(const QString &name) { return QLatin1Char('"') + name + QLatin1Char('"'); }
}

QString AddNumbers(const QString &text)
{
    QString code = text;
    if (!code.endsWith(crlf))
        code += crlf;
    QString out;
    out.reserve(code.size() + code.size() / 8);
    int number = 0;
    qsizetype start = 0;
    for (;;) {
        const qsizetype end = code.indexOf(crlf, start);
        if (end < 0)
            break;
        out += QString::number(++number);
        out += QLatin1Char(':');
        out += QStringView(code).mid(start, end - start);
        out += crlf;
        start = end + 2;
    }
    return out;
}

QString RuntimeReportText(int number, const QString &name, const QString &listing,
                          const QString &errorText, int errorCount)
{
    QString text = kReportRule + crlf;
    text += QStringLiteral("Runtime Error Report for Hotkey ") + QString::number(number) + QLatin1Char(' ')
            + quoted(name) + crlf;
    text += kReportRule + crlf;
    text += AddNumbers(listing);
    text += kReportRule + crlf;
    text += errorText + crlf;
    text += crlf + crlf;
    if (errorCount == 1)
        text += QStringLiteral("There was 1 error message");
    else
        text += QStringLiteral("There were ") + QString::number(errorCount) + QStringLiteral(" error messages");
    return text;
}

QString RunTimerReportText(int number, const QString &name, const QString &code, const QString &message)
{
    return kReportRule + crlf + QStringLiteral("Error Check for ") + QString::number(number) + QLatin1Char(' ')
           + quoted(name) + crlf + kReportRule + crlf + AddNumbers(code) + kReportRule + crlf + message + crlf;
}

QString CommandLineReportText(int number, const QString &name, const QString &code, const QString &message)
{
    return crlf + kReportRule + crlf + QStringLiteral("Error Check for ") + name + QLatin1Char(' ')
           + QString::number(number) + crlf + kReportRule + crlf + message + crlf + AddNumbers(code);
}

} // namespace engine
