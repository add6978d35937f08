#include "macro/expressions.h"

#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/special_vars.h"
#include "macro/variables.h"

#include <QLoggingCategory>

#include <algorithm>

namespace macro {

namespace {

Q_LOGGING_CATEGORY(lcExpr, "sonamark.macro.expr", QtWarningMsg)

constexpr QChar kAmpersand = QLatin1Char('&');
constexpr QChar kPlus = QLatin1Char('+');


// A "-" counts as an operator only when the character before it is not one.
bool operatorAt(QStringView text, int i)
{
    const QChar c = CharAt(text, i);
    if (!IsOperator(c))
        return false;
    return c != QLatin1Char('-') || !IsOperator(CharAt(text, i - 1));
}

// First and last position of the operand-operator-operand range around the operator
// at position.
void operandRange(QStringView text, int position, int &first, int &last)
{
    first = 1;
    for (int i = position - 1; i >= 2; --i) {
        if (operatorAt(text, i)) {
            first = i + 1;
            break;
        }
    }
    last = Len(text);
    for (int i = position + 2; i <= Len(text) - 1; ++i) {
        if (operatorAt(text, i)) {
            last = i - 1;
            break;
        }
    }
}

// Positions first to last of text become the result text of value.
void replaceByResult(QString &text, int first, int last, double value)
{
    char16_t result[kResultTextRoom];  // left uninitialised: WriteResultText fills it
    const QStringView written(result, WriteResultText(value, result));
    text.replace(first - 1, last - first + 1, written.data(), written.size());
}

// Reduces every "*" and "/" of text, left to right, each to its result text.
bool reduceProducts(QString &text, QString &message)
{
    for (;;) {
        int at = 0;
        for (int i = 1; i < Len(text); ++i) {
            const QChar c = CharAt(text, i);
            if (c == QLatin1Char('*') || c == QLatin1Char('/')) {
                at = i;
                break;
            }
        }
        if (at == 0)
            return true;
        int first = 0, last = 0;
        operandRange(text, at, first, last);
        const double value = GetEquVal(QStringView(text).mid(first - 1, last - first + 1), message);
        if (!message.isEmpty())
            return false;
        replaceByResult(text, first, last, value);
    }
}

// One operand of GetEquVal: a number by the number test, or a number variable.
bool operandValue(QStringView wordView, double &value, QString &message)
{
    value = Val1(wordView);
    if (value != 0 || wordView == QLatin1String("0"))  // the number test
        return true;
    if (!IsVarName(wordView)) {
        message = QStringLiteral("Illegal equation variable");
        return false;
    }
    int type = kTypeNumber;
    if (!GetVarNumber(UpperNameView(wordView), value, type) || type == kTypeString) {
        message = QStringLiteral("String variable not allowed");
        return false;
    }
    return true;
}

// True when word stands in up as a whole word somewhere.
bool hasWholeWord(const QString &up, QLatin1StringView word)
{
    for (qsizetype at = up.indexOf(word); at >= 0; at = up.indexOf(word, at + 1)) {
        const int position = static_cast<int>(at) + 1;
        if (!IsSubstring(up, position, position + static_cast<int>(word.size()) - 1))
            return true;
    }
    return false;
}

// True when word stands whole, from the end backward, and not as STR(word).
bool hasWordOutsideStr(const QString &text, QLatin1StringView word)
{
    const QString up = UpperSameLength(text);
    for (qsizetype at = up.lastIndexOf(word); at >= 0; at = at > 0 ? up.lastIndexOf(word, at - 1) : -1) {
        const int first = static_cast<int>(at) + 1;
        const int last = first + static_cast<int>(word.size()) - 1;
        if (IsSubstring(up, first, last))
            continue;
        QString probe = text;
        if (!IsInSTR(probe, first, last))
            return true;
    }
    return false;
}

QString varFailure(QString &rhs, const QString &message)
{
    rhs.clear();
    return message;
}

} // namespace

QString GetLeftRightVars(const QString &text, int position, int &first, int &last)
{
    operandRange(text, position, first, last);
    return Mid(text, first, last - first + 1);
}

double GetEquVal(QStringView expression, QString &message)
{
    message.clear();
    if (std::any_of(expression.begin(), expression.end(), [](QChar c) { return c == kQuote || c == kAmpersand; })) {
        message = QStringLiteral("Illegal string variable in equation");
        return 0;
    }
    const FramedText framed(expression, kPlus);
    const QStringView text = framed.view();

    double total = 0;
    bool haveTotal = false;
    QChar pending = kPlus;  // the operator in front of the operand being read
    int lastOperator = 1;
    for (int i = 2; i <= Len(text); ++i) {
        const QChar c = CharAt(text, i);
        if (!IsOperator(c))
            continue;
        if (c == QLatin1Char('-') && IsOperator(CharAt(text, i - 1)))
            continue;  // the sign of the next operand
        const QStringView word = text.mid(lastOperator, i - lastOperator - 1);
        double value = 0;
        if (!operandValue(word, value, message))
            return 0;
        if (!haveTotal) {
            total = value;
            haveTotal = true;
        } else if (pending == kPlus) {
            total += value;
        } else if (pending == QLatin1Char('-')) {
            total -= value;
        } else if (pending == QLatin1Char('*')) {
            total *= value;
        } else {
            if (value == 0) {
                message = QStringLiteral("Divide by zero error");
                return 0;
            }
            total /= value;
        }
        pending = c;
        lastOperator = i;
    }
    if (total == 0)
        return 0;
    return ResultValue(total);
}

double SolveEquation(const QString &expression, QString &message)
{
    QString text = expression;
    message = ReplaceSpecialNumVars(text);
    if (!message.isEmpty())
        return 0;
    for (int close = InStr(text, QLatin1Char(')')); close > 0; close = InStr(text, QLatin1Char(')'))) {
        const int open = InStrRev(text, QLatin1Char('('), close);
        if (open == 0) {
            message = QStringLiteral("Missing left parenthesis");
            return 0;
        }
        QString inner = Mid(text, open + 1, close - open - 1);
        if (!reduceProducts(inner, message))
            return 0;
        const double value = GetEquVal(inner, message);
        if (!message.isEmpty())
            return 0;
        replaceByResult(text, open, close, value);
    }
    if (!reduceProducts(text, message))
        return 0;
    const double value = GetEquVal(text, message);
    if (!message.isEmpty())
        qCDebug(lcExpr) << expression << "->" << message;
    return value;
}

QString GetString(const QString &expression, QString &message)
{
    QString text = expression;
    message = ReplaceSpecialStringVars(text);
    if (!message.isEmpty())
        return {};
    const QString joined = ReplaceAmpersandInQuotes(text);
    const FramedText framed(joined, kAmpersand);
    const QStringView parts = framed.view();

    QString result;
    int type = kTypeNumber;
    int lastAmpersand = 1;
    for (int i = 2; i <= Len(parts); ++i) {
        if (CharAt(parts, i) != kAmpersand)
            continue;
        const QStringView word = parts.mid(lastAmpersand, i - lastAmpersand - 1);
        lastAmpersand = i;
        if (ContainsChar(word, kQuote)) {
            result += word.mid(1, word.size() - 2);
            continue;
        }
        if (!IsVarName(word)) {
            message = QStringLiteral("Illegal variable name");
            return {};
        }
        QString name = Borrowed(word);
        const QString value = GetVarVal(name, type);
        if (name.isEmpty()) {
            message = QStringLiteral("Variable not set");
            return {};
        }
        if (type == kTypeNumber) {
            message = QStringLiteral("Illegal variable type");
            return {};
        }
        result += value;
    }
    return RestoreAmpersand(result);
}

QString GetVarName(const QString &line, QString &rhs, int &isString)
{
    isString = 0;
    const int equals = InStr(line, QStringLiteral("="));
    if (equals < 2)
        return varFailure(rhs, QStringLiteral("Missing assignment variable") + kVarStatement);
    rhs = Mid(line, equals + 1);
    if (rhs.endsWith(QLatin1Char(']')))
        rhs.chop(1);
    if (rhs.trimmed().isEmpty())
        return varFailure(rhs, QStringLiteral("Missing RHS") + kVarStatement);
    QString withoutLiterals = rhs;
    if (!ReplaceLiterals(withoutLiterals).isEmpty())
        return varFailure(rhs, QStringLiteral("Missing quote from RHS") + kVarStatement);

    const QString up = UpperSameLength(rhs);
    if (rhs.contains(kQuote) || rhs.contains(kAmpersand) || up.contains(QLatin1String("MID("))
        || up.contains(QLatin1String("STR(")) || up.contains(QLatin1String("UCASE(")))
        isString = 1;
    if (isString == 0
        && (hasWholeWord(up, QLatin1StringView("ASCII")) || hasWholeWord(up, QLatin1StringView("TIME"))
            || hasWholeWord(up, QLatin1StringView("DATE"))))
        isString = 1;
    if (isString == 1 && up.contains(QLatin1String("LEN(")))
        return varFailure(rhs, QStringLiteral("Cannot mix strings and LEN()") + kVarStatement);
    if (isString == 1 && up.contains(QLatin1String("VAL(")))
        return varFailure(rhs, QStringLiteral("Cannot mix strings and VAL()") + kVarStatement);

    const QString name = Mid(line, 2, equals - 2);
    int type = kTypeNumber;
    if (isString == 0
        && (up == QLatin1String("ASCII") || up == QLatin1String("SONAMARKTEXT") || up == QLatin1String("PATH"))) {
        const QString nameMsg = AllLetters(rhs, QStringLiteral("RHS variable "));
        if (!nameMsg.isEmpty())
            return varFailure(rhs, nameMsg + kVarStatement);
        QString lookup = rhs;
        GetVarVal(lookup, type);
        if (lookup.isEmpty())
            return varFailure(rhs, QStringLiteral("Variable not set") + kVarStatement);
        if (type == kTypeNumber)
            return varFailure(rhs, QStringLiteral("RHS of ") + rhs + QStringLiteral(" must be string type") + kVarStatement);
        isString = 1;
    }
    if (isString == 1 && UpperSameLength(name) == QLatin1String("TIMEOUT"))
        return varFailure(rhs, QStringLiteral("TIMEOUT must be assigned a number type") + kVarStatement);
    if (isString == 1) {
        if (hasWordOutsideStr(rhs, QLatin1StringView("TIMEOUT")))
            return varFailure(rhs, QStringLiteral("Cannot mix TIMEOUT variable with string type") + kVarStatement);
        if (hasWordOutsideStr(withoutLiterals, QLatin1StringView("TIMER")))
            return varFailure(rhs, QStringLiteral("Cannot mix TIMER variable with string type") + kVarStatement);
    }
    if (isString == 0 && !rhs.isEmpty() && AllLetters(rhs, QString()).isEmpty()) {
        QString lookup = rhs;
        GetVarVal(lookup, type);
        if (lookup.isEmpty())
            return varFailure(rhs, QStringLiteral("Variable not set") + kVarStatement);
        if (type == kTypeString)
            isString = 1;
    }
    return name;
}

} // namespace macro
