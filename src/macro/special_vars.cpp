#include "macro/special_vars.h"

#include "macro/macro_text.h"
#include "macro/nonprint.h"
#include "macro/number_format.h"
#include "macro/string_functions.h"
#include "macro/variables.h"

#include <QDir>

namespace macro {

namespace {


// What a pass does at a hit.
enum class Action { Str, Val, ReaderText, Path, Date, Time, Timer, Timeout, Mid, Ucase, LenInCondition };

struct Pass {
    const char *token;  // as searched, "(" included for functions
    int nameLength;     // the word that must stand whole (without "(")
    Action action;
};

QString quoted(const QString &text) { return kQuote + text + kQuote; }

// LEN(x) inside a condition: the length of string variable x, in plain digits.
QString lenInCondition(QString &expression, int position)
{
    constexpr int kLenAndParen = 4;
    if (position > 1 && !QStringLiteral("+-/*>< =(").contains(CharAt(expression, position - 1)))
        return QStringLiteral("Illegal operator in LEN()");
    const int close = InStr(position + kLenAndParen, expression, QStringLiteral(")"));
    if (close == 0)
        return QStringLiteral("Missing right parenthesis");
    QString name = Mid(expression, position + kLenAndParen, close - position - kLenAndParen);
    if (!AllLetters(name, QString()).isEmpty())
        return QStringLiteral("Illegal variable in LEN()");
    int type = kTypeNumber;
    const QString value = GetVarVal(name, type);
    if (name.isEmpty())
        return QStringLiteral("Error assigning value for LEN()");
    if (type != kTypeString)
        return QStringLiteral("Number variables not allowed in LEN()");
    expression = ReplaceString(expression, position, close, QString::number(Len(value)));
    return {};
}

QString apply(Action action, QString &expression, int position, int nameLength)
{
    const int last = position + nameLength - 1;
    switch (action) {
    case Action::Str: return GetSTR(expression, position);
    case Action::Val: return GetVAL(expression, position);
    case Action::Mid: return GetMID(expression, position);
    case Action::Ucase: return GetUCASE(expression, position);
    case Action::LenInCondition: return lenInCondition(expression, position);
    case Action::ReaderText:
        expression = ReplaceString(expression, position, last, quoted(ReaderTextValue()));
        return {};
    case Action::Path:
        expression = ReplaceString(expression, position, last, quoted(QDir::toNativeSeparators(QDir::currentPath())));
        return {};
    case Action::Date:
        expression = ReplaceString(expression, position, last, quoted(CurrentDateText()));
        return {};
    case Action::Time:
        expression = ReplaceString(expression, position, last, quoted(CurrentTimeText()));
        return {};
    case Action::Timer:
        expression = ReplaceString(expression, position, last, SecondsText(TimerSeconds()));
        return {};
    case Action::Timeout:
        expression = ReplaceString(expression, position, last, SecondsText(TimeoutMinutes()));
        return {};
    }
    return {};
}

// One replacing pass from the end backward, skipping hits between quotes and hits
// that are part of a longer word.
// up is the expression in upper case, kept so after each replacement.
QString runPass(QString &expression, QString &up, const Pass &pass)
{
    const QLatin1StringView token(pass.token);
    qsizetype from = up.size() - 1;
    while (from >= 0) {
        const qsizetype at = up.lastIndexOf(token, from);
        if (at < 0)
            break;
        from = at - 1;
        const int position = static_cast<int>(at) + 1;
        if (BetweenQuotes(expression, position) || IsSubstring(expression, position, position + pass.nameLength - 1))
            continue;
        const QString msg = apply(pass.action, expression, position, pass.nameLength);
        if (!msg.isEmpty()) {
            expression.clear();
            return msg;
        }
        up = UpperSameLength(expression);
    }
    return {};
}

QString runPasses(QString &expression, std::initializer_list<Pass> passes)
{
    QString up = UpperSameLength(expression);
    for (const Pass &pass : passes) {
        const QString msg = runPass(expression, up, pass);
        if (!msg.isEmpty())
            return msg;
    }
    return {};
}

void expandKeys(QString &expression)
{
    for (const QChar c : std::as_const(expression)) {
        if (c == QLatin1Char('{') || c == QLatin1Char('~')) {
            ReplaceNonPrintables(expression);
            return;
        }
    }
}

// True when token stands in up outside quotes (checked against text) at any hit.
bool containsOutsideQuotes(const QString &text, const QString &up, QLatin1StringView token)
{
    for (qsizetype at = up.indexOf(token); at >= 0; at = up.indexOf(token, at + 1))
        if (!BetweenQuotes(text, static_cast<int>(at) + 1))
            return true;
    return false;
}

// True when word stands in up as a whole word (IsSubstring false) at any hit; with
// outsideQuotes, hits between quotes do not count, and with notInStr, neither do hits
// right behind "STR(".
bool containsWord(const QString &up, QLatin1StringView word, bool outsideQuotes = false, bool notInStr = false)
{
    for (qsizetype at = up.indexOf(word); at >= 0; at = up.indexOf(word, at + 1)) {
        const int position = static_cast<int>(at) + 1;
        if (IsSubstring(up, position, position + static_cast<int>(word.size()) - 1))
            continue;
        if (outsideQuotes && BetweenQuotes(up, position))
            continue;
        if (notInStr && position >= 5 && Mid(up, position - 4, 4) == QLatin1String("STR("))
            continue;
        return true;
    }
    return false;
}

// True when text may hold a name that one of the special-name passes acts on or
// refuses; TIME covers TIMER and TIMEOUT. Letters compare without case. A character
// beyond ASCII always answers true: some upper-case to ASCII letters (dotless i, long s).
bool mayHoldSpecialName(QStringView text)
{
    const auto at = [&text](qsizetype i, const char *word) {
        const QLatin1StringView name(word);
        if (text.size() - i < name.size())
            return false;
        for (qsizetype k = 0; k < name.size(); ++k)
            if (UpperChar(text[i + k]) != QLatin1Char(name[k]))
                return false;
        return true;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t u = text[i].unicode();
        if (u >= 0x80)
            return true;
        if (u < u'D')
            continue;  // digits, signs, parentheses and A to C start no name
        switch (UpperChar(text[i]).unicode()) {
        case u'V': if (at(i, "VAL(")) return true; break;
        case u'L': if (at(i, "LEN(")) return true; break;
        case u'S': if (at(i, "STR(") || at(i, "SONAMARKTEXT")) return true; break;
        case u'T': if (at(i, "TIME")) return true; break;
        case u'D': if (at(i, "DATE")) return true; break;
        case u'P': if (at(i, "PATH")) return true; break;
        case u'M': if (at(i, "MID(")) return true; break;
        case u'U': if (at(i, "UCASE(")) return true; break;
        default: break;
        }
    }
    return false;
}

QString failWith(QString &expression, const char *message)
{
    expression.clear();
    return QString::fromLatin1(message);
}

} // namespace

QString ReplaceSpecialVars(QString &expression)
{
    if (!mayHoldSpecialName(expression)) {
        expandKeys(expression);
        return {};
    }
    const QString msg = runPasses(expression, {
                                                  {"STR(", 3, Action::Str},
                                                  {"VAL(", 3, Action::Val},
                                                  {"SONAMARKTEXT", 12, Action::ReaderText},
                                                  {"PATH", 4, Action::Path},
                                                  {"DATE", 4, Action::Date},
                                                  {"TIME", 4, Action::Time},
                                                  {"TIMER", 5, Action::Timer},
                                                  {"TIMEOUT", 7, Action::Timeout},
                                                  {"MID(", 3, Action::Mid},
                                                  {"UCASE(", 5, Action::Ucase},
                                                  {"LEN(", 3, Action::LenInCondition},
                                              });
    if (!msg.isEmpty())
        return msg;
    expandKeys(expression);
    return {};
}

QString ReplaceSpecialNumVars(QString &expression)
{
    constexpr int kLenAndParen = 4;
    expression = UpperSameLength(expression);
    if (!mayHoldSpecialName(expression))
        return {};

    // VAL(: whatever GetVAL says, the message is the same.
    for (qsizetype at = expression.lastIndexOf(QLatin1String("VAL(")); at >= 0;
         at = at > 0 ? expression.lastIndexOf(QLatin1String("VAL("), at - 1) : -1) {
        if (!GetVAL(expression, static_cast<int>(at) + 1).isEmpty())
            return failWith(expression, "Can't mix VAL() and number variables");
    }

    // LEN(, quotes not considered.
    for (qsizetype at = expression.lastIndexOf(QLatin1String("LEN(")); at >= 0;
         at = at > 0 ? expression.lastIndexOf(QLatin1String("LEN("), at - 1) : -1) {
        const int position = static_cast<int>(at) + 1;
        if (position > 1 && !QStringLiteral("+-/*(").contains(CharAt(expression, position - 1)))
            return failWith(expression, "Illegal operator for LEN()");
        const int close = InStr(position + kLenAndParen, expression, QStringLiteral(")"));
        if (close == 0)
            return failWith(expression, "Missing right parenthesis for LEN()");
        QString name = Mid(expression, position + kLenAndParen, close - position - kLenAndParen);
        if (!AllLetters(name, QString()).isEmpty())
            return failWith(expression, "Illegal variable in LEN()");
        int type = kTypeNumber;
        const QString value = GetVarVal(name, type);
        if (name.isEmpty())
            return failWith(expression, "Variable not set in LEN()");
        if (type != kTypeString)
            return failWith(expression, "Number variable not allowed in LEN()");
        expression = ReplaceString(expression, position, close, QString::number(Len(value)));
    }

    const QString &up = expression;  // already upper case
    if (containsOutsideQuotes(expression, up, QLatin1StringView("STR(")))
        return failWith(expression, "STR() not allowed in number expression");
    if (containsWord(up, QLatin1StringView("SONAMARKTEXT")))
        return failWith(expression, "Can't mix SONAMARKTEXT and number variables");
    if (containsWord(up, QLatin1StringView("TIME")))
        return failWith(expression, "Can't mix TIME and number variables");
    if (containsWord(up, QLatin1StringView("DATE")))
        return failWith(expression, "Can't mix DATE and number variables");
    if (containsWord(up, QLatin1StringView("PATH")))
        return failWith(expression, "Can't mix PATH and number variables");
    if (containsOutsideQuotes(expression, up, QLatin1StringView("MID(")))
        return failWith(expression, "Can't mix MID() and number variables");
    if (containsOutsideQuotes(expression, up, QLatin1StringView("UCASE(")))
        return failWith(expression, "Can't mix UCASE() and number variables");

    // TIMER, then TIMEOUT, as whole words from the end backward.
    for (const auto &[word, action] : {std::pair{"TIMER", Action::Timer}, std::pair{"TIMEOUT", Action::Timeout}}) {
        const QLatin1StringView token(word);
        for (qsizetype at = expression.lastIndexOf(token); at >= 0;
             at = at > 0 ? expression.lastIndexOf(token, at - 1) : -1) {
            const int position = static_cast<int>(at) + 1;
            const int last = position + static_cast<int>(token.size()) - 1;
            if (!IsSubstring(expression, position, last))
                apply(action, expression, position, static_cast<int>(token.size()));
        }
    }
    return {};
}

QString ReplaceSpecialStringVars(QString &expression)
{
    if (!mayHoldSpecialName(expression)) {
        expandKeys(expression);
        return {};
    }
    QString msg = runPasses(expression, {
                                            {"STR(", 3, Action::Str},
                                            {"SONAMARKTEXT", 12, Action::ReaderText},
                                            {"PATH", 4, Action::Path},
                                        });
    if (!msg.isEmpty())
        return msg;

    const QString up = UpperSameLength(expression);
    if (containsOutsideQuotes(expression, up, QLatin1StringView("LEN(")))
        return failWith(expression, "Can't mix LEN() with strings");
    if (containsOutsideQuotes(expression, up, QLatin1StringView("VAL(")))
        return failWith(expression, "Can't mix VAL() with strings");
    if (containsWord(up, QLatin1StringView("TIMER"), true, true))
        return failWith(expression, "Can't mix the TIMER variable with strings");
    if (containsWord(up, QLatin1StringView("TIMEOUT"), true, true))
        return failWith(expression, "Can't mix the TIMEOUT variable with strings");

    msg = runPasses(expression, {
                                    {"DATE", 4, Action::Date},
                                    {"MID(", 3, Action::Mid},
                                    {"UCASE(", 5, Action::Ucase},
                                    {"TIME", 4, Action::Time},
                                });
    if (!msg.isEmpty())
        return msg;
    expandKeys(expression);
    return {};
}

bool IsInSTR(QString &expression, int first, int last)
{
    if (first < 5 || Mid(expression, first - 4, 4).compare(QLatin1String("STR("), Qt::CaseInsensitive) != 0)
        return false;
    const QString word = UpperSameLength(Mid(expression, first, last - first + 1));
    if (word != QLatin1String("TIMEOUT") && word != QLatin1String("TIMER"))
        return false;
    QString name = word;
    int type = kTypeNumber;
    const QString value = GetVarVal(name, type);
    const int end = CharAt(expression, last + 1) == QLatin1Char(')') ? last + 1 : last;
    expression = ReplaceString(expression, first - 4, end, quoted(value));
    return true;
}

} // namespace macro
