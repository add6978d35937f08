#include "macro/good_operands.h"

#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/variables.h"

namespace macro::good {

StatementText Prepare(const QString &line)
{
    StatementText s;
    s.written = UpperSameLength(line);
    s.words = s.written;
    s.missingQuote = ReplaceLiterals(s.words);
    return s;
}

QStringList OperandWords(const QString &words)
{
    const int blank = InStr(words, QStringLiteral(" "));
    if (blank == 0)
        return {};
    QString body = Mid(words, blank + 1);
    if (body.endsWith(QLatin1Char(']')))
        body.chop(1);
    return body.split(QLatin1Char(' '));
}

bool IsPlaceholder(const QString &word) { return word == kLiteralPlaceholder || word == kEmptyPlaceholder; }

bool HoldsPlaceholder(const QString &word)
{
    return word.contains(kLiteralPlaceholder) || word.contains(kEmptyPlaceholder);
}

bool LastQuoteClosesLine(const QString &written)
{
    const int last = InStrRev(written, kQuote, -1);
    return last > 0 && CharAt(written, last + 1) == QLatin1Char(']');
}

QString For(const QString &form) { return QStringLiteral(" for ") + form + QStringLiteral(" statement"); }

QString Framed(const char *text, const QString &form)
{
    return QLatin1String(text) + QLatin1Char(' ') + form + QStringLiteral(" statement");
}

QString InvalidFormat(const QString &form) { return QStringLiteral("Invalid format") + For(form); }

namespace {

QString checkOne(const QString &word, const QString &form, const OperandRule &rule)
{
    if (word.isEmpty())
        return rule.missing ? Framed(rule.missing, form) : InvalidFormat(form);
    const bool literalAllowed = (rule.kind == OperandRule::NameOrLiteral && word == kLiteralPlaceholder)
        || (rule.kind == OperandRule::NameOrAnyLiteral && IsPlaceholder(word));
    if (literalAllowed)
        return {};
    if (HoldsPlaceholder(word) && rule.quoted) {
        // A literal glued to other text, or one where only a name may stand.
        const bool glued = !IsPlaceholder(word);
        if (glued || rule.kind == OperandRule::Name)
            return Framed(rule.quoted, form);
    }
    const QString message = AllLetters(word, QLatin1String(rule.caption));
    if (message.isEmpty())
        return {};
    return rule.notName ? Framed(rule.notName, form) : message + For(form);
}

} // namespace

QString CheckOperands(const QStringList &words, const QString &form, std::initializer_list<OperandRule> rules)
{
    int i = 0;
    for (const OperandRule &rule : rules) {
        const QString message = checkOne(words.value(i), form, rule);
        if (!message.isEmpty())
            return message;
        ++i;
    }
    return words.size() > i ? InvalidFormat(form) : QString();
}

QString CheckByRules(const QString &line, int number, std::initializer_list<OperandRule> rules)
{
    const StatementText s = Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    return CheckOperands(OperandWords(s.words), CanonicalStatement(number), rules);
}

} // namespace macro::good
