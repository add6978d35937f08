#include "macro/string_functions.h"

#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/variables.h"

#include <algorithm>

namespace macro {

namespace {

constexpr QChar kBlank = QLatin1Char(' ');
constexpr int kNameAndParen = 4;   // "STR(", "VAL(", "MID("
constexpr int kUcaseAndParen = 6;  // "UCASE("

QString quoted(const QString &text) { return kQuote + text + kQuote; }

// A failed call: the expression is emptied and the message returned.
QString fail(QString &expression, const QString &message)
{
    expression.clear();
    return message;
}

QString fail(QString &expression, const char *message) { return fail(expression, QString::fromLatin1(message)); }

// The argument of the call at position (name and "(" nameLength long) and the
// position of its ")"; a message when the position or the parenthesis is wrong.
QString argument(const QString &expression, int position, int nameLength, const char *invalidCall,
                 const char *missingParen, QString &arg, int &close)
{
    if (position < 1 || position + nameLength - 1 > Len(expression))
        return QString::fromLatin1(invalidCall);
    close = InStr(position + nameLength, expression, QStringLiteral(")"));
    if (close == 0)
        return QString::fromLatin1(missingParen);
    arg = Mid(expression, position + nameLength, close - position - nameLength);
    return {};
}

bool isFunctionOperand(QChar before)
{
    return QStringLiteral("+-/*>< =(").contains(before);
}

// One MID() limit: a number above 0, or a number variable. Limits come back rounded.
QString midLimit(const QString &word, double &limit, const char *illegal, const char *notSet)
{
    if (IsNumber(word) && Val1(word) > 0) {
        limit = RoundEven(Val1(word));
        return {};
    }
    if (!AllLetters(word, QString()).isEmpty())
        return QString::fromLatin1(illegal);
    QString name = word;
    int type = kTypeNumber;
    const QString value = GetVarVal(name, type);
    if (name.isEmpty())
        return QString::fromLatin1(notSet);
    if (type == kTypeString)
        return QStringLiteral("String variable not allowed in MID()");
    limit = RoundEven(Val1(value));
    if (limit < 1)
        return QStringLiteral("Illegal char limits in MID()");
    return {};
}

} // namespace

QString GetSTR(QString &expression, int position)
{
    QString arg;
    int close = 0;
    QString msg = argument(expression, position, kNameAndParen, "Invalid call to STR()",
                           "Missing right parenthesis in STR()", arg, close);
    if (!msg.isEmpty())
        return fail(expression, msg);
    if (arg.contains(kQuote) || arg.isEmpty())
        return fail(expression, "Illegal format in STR()");

    QString text;
    if (IsNumber(arg)) {
        text = GeneralFormat(Val1(arg));
    } else {
        if (!AllLetters(arg, QString()).isEmpty())
            return fail(expression, "Illegal variable in STR()");
        if (UpperSameLength(arg) == QLatin1String("TIMER")) {
            text = GeneralFormat(TimerSeconds());
        } else {
            QString name = arg;
            int type = kTypeNumber;
            text = GetVarVal(name, type);
            if (name.isEmpty())
                return fail(expression, "Error assigning value for STR()");
            if (type == kTypeString)
                return fail(expression, "String variable not allowed for STR()");
        }
    }
    expression = ReplaceString(expression, position, close, quoted(text));
    return {};
}

QString GetVAL(QString &expression, int position)
{
    if (position > 1 && !isFunctionOperand(CharAt(expression, position - 1)))
        return fail(expression, "Illegal operator in VAL()");
    QString arg;
    int close = 0;
    const QString msg = argument(expression, position, kNameAndParen, "Invalid call to VAL()",
                                 "Missing right parenthesis in VAL()", arg, close);
    if (!msg.isEmpty())
        return fail(expression, msg);

    const QString up = UpperSameLength(arg);
    if (arg.isEmpty())
        return fail(expression, "Error assigning value for VAL()");
    if (up == QLatin1String("PATH"))
        return fail(expression, "Illegal use of PATH in VAL()");
    if (up == QLatin1String("TIME"))
        return fail(expression, "Illegal use of TIME in VAL()");
    if (up == QLatin1String("DATE"))
        return fail(expression, "Illegal use of DATE in VAL()");
    if (up.contains(QLatin1String("STR(")))
        return fail(expression, "Illegal use of STR() in VAL()");
    if (up.contains(QLatin1String("LEN(")))
        return fail(expression, "Illegal use of LEN() in VAL()");
    // The first ")" has already ended the argument, so a call inside always fails.
    if (up.contains(QLatin1String("UCASE(")))
        return fail(expression, "Illegal use of UCASE() in VAL()");
    if (const int mid = InStr(up, QStringLiteral("MID(")); mid > 0) {
        if (mid != 1)
            return fail(expression, "Illegal use of MID() in VAL()");
        QString inner = arg;
        const QString midMsg = GetMID(inner, 1);
        expression.clear();
        return midMsg;
    }

    double value = 0;
    if (up == QLatin1String("TIMER")) {
        value = TimerSeconds();
    } else if (up == QLatin1String("SONAMARKTEXT")) {
        value = Val1(ReaderTextValue());
    } else {
        if (!AllLetters(arg, QString()).isEmpty())
            return fail(expression, "Illegal value in VAL()");
        QString name = arg;
        int type = kTypeNumber;
        const QString text = GetVarVal(name, type);
        if (name.isEmpty())
            return fail(expression, "Illegal value in VAL()");
        if (type == kTypeNumber)
            return fail(expression, "Number variables not allowed in VAL()");
        value = Val1(text);
    }
    expression = ReplaceString(expression, position, close, GeneralFormat(value));
    return {};
}

QString GetUCASE(QString &expression, int position)
{
    QString arg;
    int close = 0;
    const QString msg = argument(expression, position, kUcaseAndParen, "Invalid call to UCASE()",
                                 "Missing right parenthesis in UCASE()", arg, close);
    if (!msg.isEmpty())
        return fail(expression, msg);

    QString text;
    if (arg.contains(kQuote)) {
        text = arg.mid(1, arg.size() - 2);
    } else {
        if (!AllLetters(arg, QString()).isEmpty())
            return fail(expression, "Illegal variable in UCASE()");
        if (UpperSameLength(arg) == QLatin1String("SONAMARKTEXT")) {
            text = ReaderTextValue();
        } else {
            QString name = arg;
            int type = kTypeNumber;
            text = GetVarVal(name, type);
            if (name.isEmpty())
                return fail(expression, "Variable not defined in UCASE()");
            if (type == kTypeNumber)
                return fail(expression, "Number variable not allowed in UCASE()");
        }
    }
    expression = ReplaceString(expression, position, close, quoted(text.toUpper()));
    return {};
}

QString GetMID(QString &expression, int position)
{
    constexpr int kShortestArguments = 5;  // "x 1 1"
    QString arg;
    int close = 0;
    const QString msg = argument(expression, position, kNameAndParen, "Invalid call to MID()",
                                 "Missing right parenthesis in MID()", arg, close);
    if (!msg.isEmpty())
        return fail(expression, msg);
    if (Len(arg) < kShortestArguments)
        return fail(expression, "Illegal char limits in MID()");

    // First argument: a literal or a string variable's name.
    QString literal;
    QString name;
    bool isLiteral = false;
    QString rest;
    if (arg.at(0) == kQuote) {
        const int closeQuote = InStr(2, arg, QStringLiteral("\""));
        if (closeQuote == 0)
            return fail(expression, "Missing quote in MID()");
        if (closeQuote == 2)
            return fail(expression, "Empty string in MID()");
        if (CharAt(arg, closeQuote + 1) != kBlank)
            return fail(expression, "Missing comma in MID()");
        rest = Mid(arg, closeQuote + 2);
        if (rest.contains(kQuote))
            return fail(expression, "Illegal quotes in MID()");
        literal = Mid(arg, 2, closeQuote - 2);
        isLiteral = true;
    } else {
        if (arg.contains(kQuote))
            return fail(expression, "Illegal quotes in MID()");
        const int blank = InStr(arg, QStringLiteral(" "));
        if (blank == 0)
            return fail(expression, "Missing comma in MID()");
        name = Left(arg, blank - 1);
        if (!AllLetters(name, QString()).isEmpty())
            return fail(expression, "Illegal 1st variable format in MID()");
        rest = Mid(arg, blank + 1);
    }

    const int blank = InStr(rest, QStringLiteral(" "));
    if (blank == 0)
        return fail(expression, "Missing comma in MID()");
    const QString second = Left(rest, blank - 1);
    const QString third = Mid(rest, blank + 1);
    if (second.isEmpty())
        return fail(expression, "Missing 2nd variable in MID()");
    if (third.isEmpty())
        return fail(expression, "Missing 3rd variable in MID()");

    double first = 0, last = 0;
    QString limitMsg = midLimit(second, first, "Illegal 2nd variable in MID()", "2nd variable not set in MID()");
    if (limitMsg.isEmpty())
        limitMsg = midLimit(third, last, "Illegal 3rd variable in MID()", "3rd variable not set in MID()");
    if (!limitMsg.isEmpty())
        return fail(expression, limitMsg);
    if (last < first)
        return fail(expression, "Illegal char limits in MID()");

    QString value = literal;
    if (!isLiteral) {
        int type = kTypeNumber;
        QString lookup = name;
        value = GetVarVal(lookup, type);
        if (lookup.isEmpty())
            return fail(expression, "String variable not set in MID()");
        if (type == kTypeNumber)
            return fail(expression, "1st variable must be a string variable in MID()");
    }
    if (value.isEmpty()) {
        if (position > 1 && close < Len(expression)) {
            expression = ReplaceString(expression, position, close, QStringLiteral("\"\""));
            return {};
        }
        return fail(expression, "Illegal char limits in MID()");
    }
    const int length = Len(value);
    const int from = static_cast<int>(std::min<double>(first, length));
    const int to = static_cast<int>(std::min<double>(last, length));
    expression = ReplaceString(expression, position, close, quoted(Mid(value, from, to - from + 1)));
    return {};
}

} // namespace macro
