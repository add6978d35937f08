#include "macro/actions.h"

#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/tidyup.h"

namespace macro {

QString TrimBlanks(const QString &text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text.at(from) == QLatin1Char(' '))
        ++from;
    while (to > from && text.at(to - 1) == QLatin1Char(' '))
        --to;
    return from == 0 && to == text.size() ? text : text.mid(from, to - from);
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
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('\r'))
            continue;
        const QString line = text.mid(lineStart, i - lineStart);
        if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
            ++i;
        lineStart = i + 1;

        const QString trimmed = TrimBlanks(line);
        const bool bracketOrComment =
            trimmed.startsWith(QLatin1Char('#')) || trimmed.startsWith(QLatin1Char('['));
        if (trimmed.startsWith(QLatin1Char('#')))
            continue;  // comment
        ActionLine action;
        action.Text = bracketOrComment ? trimmed : line;
        action.Command = WhichCommand(action.Text);
        if (action.Command != 0)
            UCaseOutsideQuotes(action.Text);
        lines << action;
    }
    return true;
}

} // namespace macro
