#include "hotkeys/hotkey_status.h"

#include "hotkeys/hotkeys_table.h"
#include "macro/good_statements.h"
#include "macro/macro_text.h"
#include "macro/tidyup.h"
#include "platform/services.h"

namespace hotkeys {

namespace {

QList<int> g_errorLines;

// The checker reads the hotkeys table for [HOTKEY "name"] and the screen for mouse
// positions through these.
void installCheckerSources()
{
    static const bool installed = [] {
        macro::SetHotkeyLookup([] {
            QList<macro::HotkeyName> names;
            const HotkeyTable &t = table();
            for (int n = 1; n <= t.HotkeyCount; ++n)
                names << macro::HotkeyName{t.at(n).Keys, t.at(n).Description};
            return names;
        });
        macro::SetScreenWidthSource([] {
            const platform::MouseSender *mouse = platform::services().mouse;
            return mouse ? mouse->screenSize().width() : 0;
        });
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace

const QList<int> &ErrorLines() { return g_errorLines; }

QString HotkeyStatus(QString &code)
{
    g_errorLines.clear();
    installCheckerSources();
    if (code.isEmpty())
        return {};
    macro::RemoveBlankLinesActionText(code);
    macro::TidyupCode(code);
    if (code.isEmpty() || code == macro::kCrLf)
        return {};
    if (!code.endsWith(macro::kCrLf))
        code += macro::kCrLf;

    QString report;
    int lineNo = 0;
    int errors = 0;
    int position = 1;
    for (;;) {
        const int end = macro::InStr(position, code, QStringLiteral("\r"));
        if (end == 0)
            break;
        QString line = macro::Mid(code, position, end - position);
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(QLatin1Char('[')) || trimmed.startsWith(QLatin1Char('#')))
            line = trimmed;
        const int pos = position;
        position = end + (macro::CharAt(code, end + 1) == QLatin1Char('\n') ? 2 : 1);
        ++lineNo;
        if (line.startsWith(QLatin1Char('#')))
            continue;
        QString message;
        // Quotes pair up from the left, so one is left open when their count is odd.
        if (line.startsWith(QLatin1Char('[')) && line.count(macro::kQuote) % 2 == 1)
            message = QStringLiteral("ERROR line %1 Missing quote").arg(lineNo);
        if (message.isEmpty())
            message = macro::GoodActionLine(code, line, pos, lineNo);
        if (message.isEmpty())
            continue;
        ++errors;
        if (!report.isEmpty())
            report += macro::kCrLf;
        report += QString::number(errors) + QStringLiteral(") ") + message;
        g_errorLines << lineNo;
    }
    if (errors == 0)
        return {};
    report += macro::kCrLf + macro::kCrLf;
    report += errors == 1 ? QStringLiteral("There was 1 error found.")
                          : QStringLiteral("There were %1 errors found.").arg(errors);
    return report;
}

QString AddNumbers(const QString &text)
{
    QString whole = text;
    if (!whole.endsWith(macro::kCrLf))
        whole += macro::kCrLf;
    QString out;
    int number = 0;
    int position = 1;
    for (;;) {
        const int end = macro::InStr(position, whole, macro::kCrLf);
        if (end == 0)
            break;
        out += QString::number(++number) + QLatin1Char(':') + macro::Mid(whole, position, end - position) + macro::kCrLf;
        position = end + 2;
    }
    return out;
}

QString CheckCodeReport(const QString &label, const QString &report, const QString &tidied)
{
    const QString rule = QString(30, QLatin1Char('='));
    return rule + macro::kCrLf + QStringLiteral("Error Check for \"") + label + QStringLiteral("\"") + macro::kCrLf
           + rule + macro::kCrLf + report + macro::kCrLf + rule + macro::kCrLf + AddNumbers(tidied) + macro::kCrLf;
}

} // namespace hotkeys
