// Checkers of the keystroke, wait, clipboard, dialog, window and macro-call statements.
#include "macro/good_statements.h"

#include "macro/commands.h"
#include "macro/good_operands.h"
#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/numbers.h"
#include "macro/variables.h"

namespace macro {

namespace {

using good::OperandRule;

constexpr double kMinWaitSeconds = 0.1;
constexpr double kMaxWaitSeconds = 3600;
constexpr int kMaxClipId = 5;  // clip slots run 1 to 5

HotkeyLookup &hotkeyLookup()
{
    static HotkeyLookup lookup;
    return lookup;
}

QList<HotkeyName> hotkeyNames()
{
    const HotkeyLookup &lookup = hotkeyLookup();
    return lookup ? lookup() : QList<HotkeyName>();
}

// One operand that is a name or a literal; a quote must close the line. [SENDKEYS],
// [SETCLIP] and [COMMAND].
QString goodStringOperand(const QString &line, int number, const char *quoteMessage, OperandRule::Class kind)
{
    const QString form = CanonicalStatement(number);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    if (s.written.contains(kQuote) && !good::LastQuoteClosesLine(s.written))
        return good::Framed(quoteMessage, form);
    return good::CheckOperands(good::OperandWords(s.words), form, {{kind}});
}

// One operand that is a name. [GETCLIP] and [KEYLOG].
QString goodVariableOperand(const QString &line, int number, const char *quoteMessage)
{
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    return good::CheckOperands(good::OperandWords(s.words), CanonicalStatement(number),
                               {{OperandRule::Name, "", nullptr, quoteMessage}});
}

// The clip slot of [GETMULTICLIP n Var] and [SETMULTICLIP n String]: 1 to 5 or a name.
QString goodClipId(const QString &word, const QString &form, const char *invalidId)
{
    if (word.isEmpty())
        return good::InvalidFormat(form);
    if (IsNumber(word)) {
        const double n = Val1(word);
        return n < 1 || n > kMaxClipId ? good::Framed(invalidId, form) : QString();
    }
    const QString message = AllLetters(word, QStringLiteral("clip "));
    return message.isEmpty() ? QString() : message + good::For(form);
}


} // namespace

void SetHotkeyLookup(HotkeyLookup lookup) { hotkeyLookup() = std::move(lookup); }

QString GoodString(const QString &line)
{
    return goodStringOperand(line, CmdSENDKEYS, "Missing quote in string parameter for", OperandRule::NameOrLiteral);
}

QString GoodWAIT(const QString &line)
{
    const QString form = CanonicalStatement(CmdWAIT);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    // A literal is a date, and its "-" are inside the placeholder by now.
    for (const QChar c : s.words)
        if (c == QLatin1Char('=') || c == QLatin1Char(',') || c == QLatin1Char('-'))
            return good::InvalidFormat(form);
    const QStringList words = good::OperandWords(s.words);
    if (words.size() != 1 || words.at(0).isEmpty())
        return good::InvalidFormat(form);
    const QString &word = words.at(0);
    if (IsNumber(word)) {
        const double seconds = Val1(word);
        if (seconds < kMinWaitSeconds || seconds > kMaxWaitSeconds)
            return QStringLiteral("Invalid time (0.1-3600 secs)") + good::For(form);
        return {};
    }
    if (word == kLiteralPlaceholder)
        return {};
    const QString message = AllLetters(word, QString());
    return message.isEmpty() ? QString() : message + good::For(form);
}

QString GoodONOFF(int number, const QString &line)
{
    const QString row = Commands().value(number - 1);
    const QString words = good::Prepare(line).words;
    if (words == row + QLatin1String("ON]") || words == row + QLatin1String("OFF]"))
        return {};
    return good::InvalidFormat(CanonicalStatement(number));
}

QString GoodNOPARAMS(int number, const QString &line)
{
    if (good::Prepare(line).words == Commands().value(number - 1))
        return {};
    return good::InvalidFormat(CanonicalStatement(number));
}

QString GoodGETCLIP(const QString &line)
{
    return goodVariableOperand(line, CmdGETCLIP, "Quotes not allowed in variable for");
}

QString GoodKEYLOG(const QString &line)
{
    return goodVariableOperand(line, CmdKEYLOG, "Quotes not allowed in variable for");
}

QString GoodSETCLIP(const QString &line)
{
    return goodStringOperand(line, CmdSETCLIP, "Quote mismatch in right variable for", OperandRule::NameOrAnyLiteral);
}

QString GoodGETMULTICLIP(const QString &line)
{
    const QString form = CanonicalStatement(CmdGETMULTICLIP);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    QStringList words = good::OperandWords(s.words);
    const QString message = goodClipId(words.value(0), form, "Invalid clip ID (1-5) for");
    if (!message.isEmpty())
        return message;
    words.removeFirst();
    return good::CheckOperands(words, form, {{OperandRule::Name, "", nullptr, "Quotes not allowed in right variable for"}});
}

QString GoodSETMULTICLIP(const QString &line)
{
    const QString form = CanonicalStatement(CmdSETMULTICLIP);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    QStringList words = good::OperandWords(s.words);
    const QString message = goodClipId(words.value(0), form, "Invalid clip ID (1-5) in variable for");
    if (!message.isEmpty())
        return message;
    if (s.written.contains(kQuote) && !good::LastQuoteClosesLine(s.written))
        return good::Framed("Quote mismatch in right variable for", form);
    words.removeFirst();
    return good::CheckOperands(words, form, {{OperandRule::NameOrLiteral}});
}

QString GoodCOMMAND(const QString &line)
{
    return goodStringOperand(line, CmdCOMMAND, "Quote mismatch in right variable for", OperandRule::NameOrLiteral);
}

QString GoodUSERINPUT(const QString &line)
{
    return good::CheckByRules(line, CmdUSERINPUT,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in prompt variable for",
                          "Invalid format in prompt variable for"},
                         {OperandRule::Name, "", nullptr, "Invalid format in right variable for",
                          "Invalid format in right variable for"}});
}

QString GoodYESNOCANCEL(const QString &line)
{
    return good::CheckByRules(line, CmdYESNOCANCEL,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in prompt variable for",
                          "Invalid format in prompt variable for"},
                         {OperandRule::Name}});
}

QString GoodSETFOCUS(const QString &line)
{
    return good::CheckByRules(line, CmdSETFOCUS,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 1st variable for",
                          "Invalid format in 1st variable for"},
                         {OperandRule::Name, "", "Invalid format for answer variable in"}});
}

QString GoodWEBSOURCE(const QString &line)
{
    return good::CheckByRules(line, CmdWEBSOURCE,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 1st variable for",
                          "Invalid format in 1st variable for"},
                         {OperandRule::Name, "", "Invalid format for source variable in"}});
}

QString GoodMACRO(const QString &line)
{
    const QString form = CanonicalStatement(CmdHOTKEY);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const int firstQuote = InStr(s.written, kQuote);
    if (firstQuote > 0 && !good::LastQuoteClosesLine(s.written))
        return QStringLiteral("Missing quote") + good::For(form);
    const QStringList words = good::OperandWords(s.words);
    if (words.size() != 1 || words.at(0).isEmpty())
        return good::InvalidFormat(form);
    const QString &word = words.at(0);
    const QList<HotkeyName> table = hotkeyNames();

    if (firstQuote > 0 && good::IsPlaceholder(word)) {
        // The one literal, as the user wrote it, between the first quote and the last.
        const int lastQuote = InStrRev(s.written, kQuote, -1);
        const QString name = Mid(line, firstQuote + 1, lastQuote - firstQuote - 1);
        for (const HotkeyName &h : table)
            if (name.compare(h.description, Qt::CaseInsensitive) == 0 || name.compare(h.keys, Qt::CaseInsensitive) == 0)
                return {};
        return QStringLiteral("Macro not found") + good::For(form);
    }
    if (IsNumber(word)) {
        const double n = Val1(word);
        return n <= 0 || n > table.size() ? QStringLiteral("Invalid hotkey index") + good::For(form) : QString();
    }
    const QString message = AllLetters(word, QString());
    return message.isEmpty() ? QString() : message + good::For(form) + QLatin1Char('.');
}

} // namespace macro
