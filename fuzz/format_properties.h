#pragma once
// What Check Code and Format Code keep on any macro text, shared by the check_format
// fuzz target and the formatter property test. Format Code is TidyupCode then
// IndentActions. For any text:
//  - formatting the formatted text changes nothing;
//  - the formatted text parses (CutMacroLines) to the same lines: same statement codes,
//    same texts but for leading blanks;
//  - HotkeyStatus gives the same messages, line numbers aside, on the same lines.
#include "hotkeys/formatter.h"
#include "hotkeys/hotkey_status.h"
#include "macro/actions.h"
#include "macro/tidyup.h"

#include <QList>
#include <QString>

namespace props {

inline constexpr qsizetype kShownChars = 600;  // of a text quoted in a failure

inline QString Formatted(QString text)
{
    macro::TidyupCode(text);
    hotkeys::IndentActions(text);
    return text;
}

// A text for a failure message: line ends and other control characters as escapes,
// cut after kShownChars.
inline QString Shown(const QString &text)
{
    QString out;
    for (qsizetype i = 0; i < text.size() && i < kShownChars; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r'))
            out += QLatin1String("\\r");
        else if (c == QLatin1Char('\n'))
            out += QLatin1String("\\n");
        else if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            out += c;
    }
    if (text.size() > kShownChars)
        out += QStringLiteral("...(%1 characters)").arg(text.size());
    return QLatin1Char('"') + out + QLatin1Char('"');
}

struct Parse {
    bool ok = false;  // CutMacroLines' answer
    QList<int> commands;
    QStringList texts;  // leading blanks dropped
    bool operator==(const Parse &) const = default;
};

inline Parse Parsed(const QString &code)
{
    Parse p;
    macro::ActionList lines;
    p.ok = macro::CutMacroLines(code, lines);
    for (const macro::ActionLine &line : lines) {
        qsizetype blanks = 0;
        while (blanks < line.Text.size() && line.Text.at(blanks) == QLatin1Char(' '))
            ++blanks;
        p.commands << line.Command;
        p.texts << line.Text.mid(blanks);
    }
    return p;
}

struct Check {
    QString messages;  // the report with "ERROR line N" as "ERROR line"
    QList<int> errorLines;
    bool operator==(const Check &) const = default;
};

// The report without the numbers after "ERROR line ".
inline QString withoutLineNumbers(const QString &report)
{
    static const QLatin1String kErrorLine("ERROR line ");
    QString out;
    out.reserve(report.size());
    qsizetype from = 0;
    for (qsizetype at = report.indexOf(kErrorLine); at >= 0; at = report.indexOf(kErrorLine, from)) {
        qsizetype digits = at + kErrorLine.size();
        while (digits < report.size() && report.at(digits).isDigit())
            ++digits;
        out += QStringView(report).sliced(from, at - from);
        out += QLatin1String("ERROR line");
        from = digits;
    }
    out += QStringView(report).sliced(from);
    return out;
}

inline Check Checked(QString code)
{
    return Check{withoutLineNumbers(hotkeys::HotkeyStatus(code)), hotkeys::ErrorLines()};
}

inline QString firstDifference(const Parse &a, const Parse &b)
{
    if (a.ok != b.ok)
        return QStringLiteral("CutMacroLines answers %1, then %2").arg(a.ok).arg(b.ok);
    if (a.commands.size() != b.commands.size())
        return QStringLiteral("%1 lines, then %2").arg(a.commands.size()).arg(b.commands.size());
    for (qsizetype i = 0; i < a.commands.size(); ++i)
        if (a.commands.at(i) != b.commands.at(i) || a.texts.at(i) != b.texts.at(i))
            return QStringLiteral("line %1: code %2 %3, then code %4 %5")
                .arg(i + 1)
                .arg(a.commands.at(i))
                .arg(Shown(a.texts.at(i)))
                .arg(b.commands.at(i))
                .arg(Shown(b.texts.at(i)));
    return {};
}

inline QString joined(const QList<int> &numbers)
{
    QStringList out;
    for (int n : numbers)
        out << QString::number(n);
    return out.join(QLatin1Char(','));
}

// "" when every property holds on macro, else the first one broken, with the texts.
inline QString BrokenFormatProperty(const QString &macro)
{
    const QString once = Formatted(macro);
    const QString twice = Formatted(once);
    // The texts are quoted only for a failure, not for every text that passes.
    const auto head = [&] { return QStringLiteral("macro %1\nformatted %2\n").arg(Shown(macro), Shown(once)); };
    if (twice != once)
        return head() + QStringLiteral("formatting again gives %1").arg(Shown(twice));

    const Parse before = Parsed(macro);
    const Parse after = Parsed(once);
    if (before != after)
        return head() + QStringLiteral("the parse changed: ") + firstDifference(before, after);

    const Check checkedBefore = Checked(macro);
    const Check checkedAfter = Checked(once);
    if (checkedBefore.messages != checkedAfter.messages)
        return head() + QStringLiteral("the check changed: %1\nthen %2")
                          .arg(Shown(checkedBefore.messages), Shown(checkedAfter.messages));
    if (checkedBefore.errorLines != checkedAfter.errorLines)
        return head() + QStringLiteral("the error lines changed: %1, then %2")
                          .arg(joined(checkedBefore.errorLines), joined(checkedAfter.errorLines));
    return {};
}

} // namespace props
