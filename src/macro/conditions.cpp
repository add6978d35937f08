#include "macro/conditions.h"

#include "macro/commands.h"
#include "macro/expressions.h"
#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/sequences.h"
#include "macro/special_vars.h"
#include "macro/variables.h"

#include <QLoggingCategory>
#include <QVarLengthArray>
#include <limits>
#include <stdexcept>

namespace macro {

namespace {

Q_LOGGING_CATEGORY(lcCond, "sonamark.macro.cond", QtWarningMsg)

constexpr QChar kEquals = QLatin1Char('=');
constexpr QChar kLess = QLatin1Char('<');
constexpr QChar kGreater = QLatin1Char('>');

// Shortest lines that can hold a condition.
constexpr int kMinIfLine = 8;         // "[IF A=1]"
constexpr int kMinCancelIfLine = 15;  // "[CANCEL IF A=1]"
constexpr int kMinLoopLine = 10;      // "[LOOP A=1]"

bool isCompareChar(QChar c) { return c == kLess || c == kGreater || c == kEquals; }

bool isTermMark(QChar c)
{
    return isCompareChar(c) || c == kLessEqualMarker || c == kNotEqualMarker || c == kGreaterEqualMarker;
}

bool isTwoCharOperator(QChar a, QChar b)
{
    return (a == kGreater && b == kEquals) || (a == kLess && b == kEquals) || (a == kEquals && b == kGreater)
           || (a == kEquals && b == kLess) || (a == kLess && b == kGreater);
}

// Whether each position (1-based, index i-1) lies between quotes.
QVarLengthArray<bool, 128> quoteMap(QStringView text)
{
    QVarLengthArray<bool, 128> inside(text.size());
    bool odd = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        inside[i] = odd;
        if (text.at(i) == kQuote)
            odd = !odd;
    }
    return inside;
}

// One operand of a term, typed and written as GetCondVal compares it.
struct Operand {
    bool isString = false;
    QString text;   // a string's value
    double number = 0;
};

bool readOperand(QStringView word, Operand &operand, QString &message)
{
    const bool isName = IsVarName(word);
    int type = kTypeNumber;
    double value = 0;
    if (isName) {
        if (!GetVarNumber(UpperNameView(word), value, type)) {
            message = QStringLiteral("Condition variable not set");
            return false;
        }
    } else {
        type = ContainsChar(word, kQuote) ? kTypeString : kTypeNumber;
    }

    if (type == kTypeString) {
        operand.isString = true;
        operand.text = GetString(Borrowed(word), message);
        return message.isEmpty();
    }
    if (!isName) {
        value = SolveEquation(Borrowed(word), message);
        if (!message.isEmpty())
            return false;
    }
    // Written back as result text and read again, like every intermediate value.
    operand.number = ResultValue(value);
    return true;
}

// Numbers order below strings; strings compare by character code.
int compare(const Operand &left, const Operand &right)
{
    if (left.isString != right.isString)
        return left.isString ? 1 : -1;
    if (left.isString) {
        const int c = QString::compare(left.text, right.text, Qt::CaseSensitive);
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    }
    return left.number < right.number ? -1 : (left.number > right.number ? 1 : 0);
}

bool holds(QChar op, int order)
{
    if (op == kEquals)
        return order == 0;
    if (op == kLess)
        return order < 0;
    if (op == kGreater)
        return order > 0;
    if (op == kLessEqualMarker)
        return order <= 0;
    if (op == kGreaterEqualMarker)
        return order >= 0;
    return order != 0;  // kNotEqualMarker
}

// First and last position of the term around the comparison operator at position.
void condTermRange(QStringView text, int position, int &first, int &last)
{
    const auto inQuotes = quoteMap(text);
    auto endsTerm = [&](int i) { return !inQuotes[i - 1] && IsCondOperator(CharAt(text, i)); };
    first = 1;
    for (int i = position - 1; i >= 1; --i) {
        if (endsTerm(i)) {
            first = i + 1;
            break;
        }
    }
    last = Len(text);
    const int from = IsCondOperator(CharAt(text, position + 1)) ? position + 2 : position + 1;
    for (int i = from; i <= Len(text); ++i) {
        if (endsTerm(i)) {
            last = i - 1;
            break;
        }
    }
}

// Replaces every comparison term of text by its 0 or 1. Inside parentheses a
// two-character operator that touches a further operator is refused.
bool reduceComparisons(QString &text, bool insideParentheses, QString &message)
{
    int i = 1;
    while (i <= Len(text) - 1) {
        const QChar c = CharAt(text, i);
        const bool twoChar = isTwoCharOperator(c, CharAt(text, i + 1));
        if (!twoChar && !isCompareChar(c)) {
            ++i;
            continue;
        }
        if (twoChar && insideParentheses && IllegalOperator(text, i)) {
            message = QStringLiteral("Illegal operator");
            return false;
        }
        int first = 0, last = 0;
        condTermRange(text, i, first, last);
        const QStringView term = QStringView(text).mid(first - 1, last - first + 1);
        const int value = twoChar ? GetCondVal(ReplaceCondOperators(term.toString()), message)
                                  : GetCondVal(term, message);
        if (!message.isEmpty())
            return false;
        text.replace(first - 1, last - first + 1, value ? QLatin1Char('1') : QLatin1Char('0'));
        i = 1;
    }
    return true;
}

QString conditionOf(const QString &line, const QString &keyword)
{
    const int at = InStr(line, keyword);
    const int from = (at > 0 ? at : 1) + Len(keyword);
    QString cond = Mid(line, from, Len(line) - from);
    RemoveSpaces(cond);
    return cond;
}

// The first entry of a sequence loop: a slot, its values, the variable's first value.
QString startSequence(int index, const QString &cond, int &state)
{
    const QString statement = QStringLiteral(" for [LOOP Cond] statement");
    if (!cond.contains(kEquals))
        return QStringLiteral("Sequence operator must be =") + statement;
    if (cond.contains(QLatin1Char('(')) || cond.contains(QLatin1Char(')')))
        return QStringLiteral("Parentheses not allowed in sequence") + statement;
    int slot = 0;
    SetNextLOOPIndex(slot);
    if (slot < 1)
        return QStringLiteral("Invalid LOOP structure") + statement;
    SequenceSlot &s = sequenceStore().slot(slot);
    s.LoopSeqLine = index;
    s.LoopSeqPos = 1;
    const int equals = InStr(cond, QStringLiteral("="));
    const QString msg = Token(Mid(cond, equals + 1), slot);
    if (!msg.isEmpty()) {
        ResetLoopSequence(slot);
        return msg + statement;
    }
    if (s.LoopSeqCount == 0) {
        ResetLoopSequence(slot);
        return QStringLiteral("Invalid sequence") + statement;
    }
    SetVarVal(Left(cond, equals - 1), s.LoopSeqValues.at(0));
    state = 1;
    return cond;
}

} // namespace

QString GetCond(const ActionLine &action, int index, int &state)
{
    state = 0;
    const QString &line = action.Text;
    switch (action.Command) {
    case CmdIF:
        if (Len(line) < kMinIfLine)
            return QStringLiteral("Illegal format for [IF Cond] statement");
        state = 1;
        return conditionOf(line, QStringLiteral("[IF "));
    case CmdCANCELIF:
        if (Len(line) < kMinCancelIfLine)
            return QStringLiteral("Illegal format for [CANCEL IF Cond] statement");
        state = 1;
        return conditionOf(line, QStringLiteral("[CANCEL IF "));
    case CmdLOOP: {
        if (Len(line) < kMinLoopLine)
            return QStringLiteral("Illegal format for [LOOP Cond] statement");
        const QString cond = conditionOf(line, QStringLiteral("[LOOP "));
        if (!IsSequence(cond)) {
            state = 1;
            return cond;
        }
        return startSequence(index, cond, state);
    }
    default:
        return {};
    }
}

QString TestCond(QString &condition)
{
    auto failed = [&condition](const QString &message) {
        qCDebug(lcCond) << condition << "->" << message;
        condition.clear();
        return message;
    };
    if (condition.trimmed().isEmpty())
        return failed(QStringLiteral("No condition"));
    QString message = ReplaceSpecialVars(condition);
    if (!message.isEmpty())
        return failed(message);

    for (int close = InStr(condition, QLatin1Char(')')); close > 0; close = InStr(condition, QLatin1Char(')'))) {
        const int open = InStrRev(condition, QLatin1Char('('), close);
        if (open == 0)
            return failed(QStringLiteral("No matching left parenthesis"));
        QString inner = Mid(condition, open + 1, close - open - 1);
        if (!reduceComparisons(inner, true, message))
            return failed(message);
        const int value = GetANDORVal(inner, message);
        if (!message.isEmpty())
            return failed(message);
        condition = ReplaceString(condition, open, close, QString::number(value));
    }
    if (!reduceComparisons(condition, false, message))
        return failed(message);
    const int value = GetANDORVal(condition, message);
    if (!message.isEmpty())
        return failed(message);
    return value == 1 ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

QString GetLeftRightCondVars(const QString &text, int position, int &first, int &last)
{
    condTermRange(text, position, first, last);
    return Mid(text, first, last - first + 1);
}

int GetCondVal(QStringView term, QString &message)
{
    message.clear();
    const FramedText framed(term, kEquals);
    const QStringView text = framed.view();

    Operand left;
    QChar op;
    int lastMark = 1;
    for (int i = 2; i <= Len(text); ++i) {
        if (!isTermMark(CharAt(text, i)))
            continue;
        const QStringView word = text.mid(lastMark, i - lastMark - 1);
        if (op.isNull()) {
            if (!readOperand(word, left, message))
                return 0;
            op = CharAt(text, i);
            lastMark = i;
            continue;
        }
        Operand right;
        if (!readOperand(word, right, message))
            return 0;
        return holds(op, compare(left, right)) ? 1 : 0;
    }
    return 0;
}

int GetANDORVal(QStringView text, QString &message)
{
    message.clear();
    // The text upper-cased, with a blank in front and " OR " at the end unless it
    // already starts and ends with a blank.
    QVarLengthArray<QChar, 128> chars;
    chars.reserve(text.size() + 5);
    const bool front = text.isEmpty() || text.front() != QLatin1Char(' ');
    if (front)
        chars.append(QLatin1Char(' '));
    for (const QChar c : text)
        chars.append(UpperChar(c));
    const QStringView body = QStringView(chars.constData(), chars.size()).mid(front ? 1 : 0);
    if (!body.contains(QLatin1String(" AND ")) && !body.contains(QLatin1String(" OR "))) {
        // A number beyond the integer's range overflows: an unforeseen fault for the
        // routine's reporter, as any overflow is.
        const double value = RoundEven(Val1(body));
        if (!(value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max()))
            throw std::overflow_error("Overflow");
        return static_cast<int>(value);
    }
    if (chars.back() != QLatin1Char(' ')) {
        const QStringView orEnd(u" OR ");
        chars.append(orEnd.data(), orEnd.size());
    }
    const QStringView t(chars.constData(), chars.size());

    int wordStart = 2;
    int held = -1;
    bool heldIsAnd = false;
    const auto startsAt = [&t](int i, const char *word) {
        for (int k = 0; word[k]; ++k)
            if (t[i - 1 + k] != QLatin1Char(word[k]))
                return false;
        return true;
    };
    for (int i = 2; i <= Len(t) - 3; ++i) {
        const bool isAnd = startsAt(i, " AND");
        if (!isAnd && !startsAt(i, " OR "))
            continue;
        const QStringView word = t.mid(wordStart - 1, i - wordStart);
        if (word != QLatin1String("0") && word != QLatin1String("1")) {
            message = QStringLiteral("Invalid boolean operation");
            return 0;
        }
        const int value = word == QLatin1String("1") ? 1 : 0;
        if (held < 0) {
            held = value;
            heldIsAnd = isAnd;
            wordStart = i + (isAnd ? 5 : 4);
            i = wordStart - 1;
            continue;
        }
        return heldIsAnd ? (held && value ? 1 : 0) : (held || value ? 1 : 0);
    }
    return 0;
}

bool IllegalOperator(const QString &text, int position)
{
    return isCompareChar(CharAt(text, position - 1)) || isCompareChar(CharAt(text, position + 2));
}

} // namespace macro
