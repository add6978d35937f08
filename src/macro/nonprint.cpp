#include "macro/nonprint.h"

#include "macro/macro_text.h"

namespace macro {

namespace {

QStringList &table()
{
    static QStringList names = [] {
        QStringList list = {
            QStringLiteral("{BACKSPACE}"), QStringLiteral("{BS}"), QStringLiteral("{BKSP}"),
            QStringLiteral("{BREAK}"), QStringLiteral("{CAPSLOCK}"), QStringLiteral("{DELETE}"),
            QStringLiteral("{DEL}"), QStringLiteral("{DOWN}"), QStringLiteral("{END}"),
            QStringLiteral("{ENTER}"), QStringLiteral("{ESC}"), QStringLiteral("{HELP}"),
            QStringLiteral("{HOME}"), QStringLiteral("{INSERT}"), QStringLiteral("{INS}"),
            QStringLiteral("{LEFT}"), QStringLiteral("{NUMLOCK}"), QStringLiteral("{PGDN}"),
            QStringLiteral("{PGUP}"), QStringLiteral("{PRTSC}"), QStringLiteral("{RIGHT}"),
            QStringLiteral("{SCROLLLOCK}"), QStringLiteral("{TAB}"), QStringLiteral("{UP}"),
        };
        for (int f = 1; f <= 16; ++f)
            list << QStringLiteral("{F%1}").arg(f);
        list << QStringLiteral("{+}") << QStringLiteral("{%}") << QStringLiteral("{^}")
             << QStringLiteral("{{}") << QStringLiteral("{}}");
        return list;
    }();
    return names;
}

} // namespace

void SetNonPrint() { table(); }

const QStringList &NonPrint() { return table(); }

bool NonPrintableKey(const QString &text)
{
    const QString up = text.toUpper();
    for (const QString &name : table())
        if (up.contains(name))
            return true;
    return false;
}

void HowManyBraces(const QString &text, int &opens, int &closes)
{
    opens = static_cast<int>(text.count(QLatin1Char('{')));
    closes = static_cast<int>(text.count(QLatin1Char('}')));
}

QString GetNPChar(const QString &token)
{
    if (token == QLatin1String("{ENTER}"))
        return kCrLf;
    if (token == QLatin1String("{TAB}"))
        return QStringLiteral("\t");
    return token;
}

void ReplaceNonPrintables(QString &text)
{
    // Key names, from the end backward.
    int scan = Len(text);
    while (scan >= 1) {
        const int open = InStrRev(text, QStringLiteral("{"), scan);
        if (open == 0)
            break;
        const int close = InStr(open + 1, text, QStringLiteral("}"));
        if (close == 0)
            break;
        const QString token = Mid(text, open, close - open + 1).toUpper();
        const QString replacement = GetNPChar(token);
        if (replacement != token)
            text = ReplaceString(text, open, close, replacement);
        scan = open - 1;
    }
    // "~" as Enter, unless it stands right after "{".
    for (int i = Len(text); i >= 1; --i) {
        if (CharAt(text, i) != QLatin1Char('~'))
            continue;
        if (i == 1 || CharAt(text, i - 1) != QLatin1Char('{'))
            text = ReplaceString(text, i, i, kCrLf);
    }
}

} // namespace macro
