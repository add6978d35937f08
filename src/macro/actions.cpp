#include "macro/actions.h"

#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/tidyup.h"

namespace macro {

namespace {

QStringView blanksTrimmed(QStringView text)
{
    const char16_t *chars = text.utf16();
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && chars[from] == u' ')
        ++from;
    while (to > from && chars[to - 1] == u' ')
        --to;
    return text.sliced(from, to - from);
}

} // namespace

QString TrimBlanks(const QString &text)
{
    const QStringView trimmed = blanksTrimmed(text);
    return trimmed.size() == text.size() ? text : trimmed.toString();
}

bool CutMacroLines(const QString &code, ActionList &lines)
{
    lines.clear();
    QString text = code;
    TidyupCode(text);
    if (text.isEmpty() || text == kCrLf)
        return false;
    if (!text.endsWith(kCrLf))
        text += kCrLf;

    qsizetype lineStart = 0;
    for (qsizetype i = text.indexOf(QLatin1Char('\r')); i >= 0; i = text.indexOf(QLatin1Char('\r'), lineStart)) {
        const QStringView line = QStringView(text).sliced(lineStart, i - lineStart);
        if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
            ++i;
        lineStart = i + 1;

        const QStringView trimmed = blanksTrimmed(line);
        if (trimmed.startsWith(QLatin1Char('#')))
            continue;  // comment
        ActionLine action;
        action.Text = (trimmed.startsWith(QLatin1Char('[')) ? trimmed : line).toString();
        action.Command = WhichCommand(action.Text);
        if (action.Command != 0)
            UCaseOutsideQuotes(action.Text);
        lines << action;
    }
    return true;
}

} // namespace macro
