#include "macro/statement_check.h"

#include "macro/check_helpers.h"
#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/numbers.h"
#include "macro/sequences.h"
#include "macro/variables.h"

namespace macro {

namespace {

const QString kIfRow = QStringLiteral("[IF ");
const QString kCancelIfRow = QStringLiteral("[CANCEL IF ");
const QString kLoopRow = QStringLiteral("[LOOP ");

constexpr QChar kBlank = QLatin1Char(' ');

bool isPlaceholder(const QString &word) { return word == kLiteralPlaceholder || word == kEmptyPlaceholder; }

qsizetype firstPlaceholderIndex(const QString &text)
{
    const qsizetype a = text.indexOf(kLiteralPlaceholder);
    const qsizetype e = text.indexOf(kEmptyPlaceholder);
    if (a < 0)
        return e;
    return e < 0 ? a : qMin(a, e);
}

bool isName(const QString &word) { return !word.isEmpty() && AllLetters(word, QString()).isEmpty(); }

bool isOneOf(QChar c, const char *set)
{
    for (const char *p = set; *p; ++p)
        if (c == QLatin1Char(*p))
            return true;
    return false;
}

// Quoted literals and placeholders in the text: a text with any is a string text.
int literalCount(const QString &text)
{
    return static_cast<int>(text.count(kQuote) + text.count(kLiteralPlaceholder) + text.count(kEmptyPlaceholder));
}

// Next position (1-based) from start of word in up that is not part of a longer name.
// For a function token ("STR(") only the character before matters.
int findWord(const QString &up, const QString &word, int start)
{
    const bool call = word.endsWith(QLatin1Char('('));
    for (int at = InStr(start, up, word); at > 0; at = InStr(at + 1, up, word)) {
        const int last = at + Len(word) - 1;
        if (call ? !isName(QString(CharAt(up, at - 1))) : !IsSubstring(up, at, last))
            return at;
    }
    return 0;
}

// The argument of the call of token at position: "" with close 0 when no ")" follows.
QString callArgument(const QString &text, int at, const QString &token, int &close)
{
    close = InStr(at + Len(token), text, QStringLiteral(")"));
    if (close == 0)
        return {};
    return Mid(text, at + Len(token), close - at - Len(token));
}

// --- GoodSpecial, one form at a time -----------------------------------------------------

// A special name with the characters allowed before and after it; the fragment of the
// first hit that fails. nextToAmp is given for a neighbour "&", other for the rest
// (the before-fragment when after is null).
struct NameRule {
    const char *word;
    const char *before;
    const char *after;
    const char *badBefore;  // neighbour before is wrong
    const char *badAfter;   // neighbour after is wrong
    const char *withAmp;    // either neighbour is "&" (nullptr: the two above apply)
};

QString checkName(const QString &up, const NameRule &rule)
{
    if (!up.contains(QLatin1String(rule.word)))
        return {};
    const QString word = QLatin1String(rule.word);
    for (int at = findWord(up, word, 1); at > 0; at = findWord(up, word, at + 1)) {
        const QChar before = CharAt(up, at - 1);
        const QChar after = CharAt(up, at + Len(word));
        const bool beforeOk = before.isNull() || isOneOf(before, rule.before);
        const bool afterOk = after.isNull() || isOneOf(after, rule.after);
        if (beforeOk && afterOk)
            continue;
        if (rule.withAmp && (before == QLatin1Char('&') || after == QLatin1Char('&')))
            return QLatin1String(rule.withAmp);
        return QLatin1String(beforeOk ? rule.badAfter : rule.badBefore);
    }
    return {};
}

const char *const kStringBefore = "&=(";
const char *const kStringAfter = "&=) ";
const char *const kNumberNeighbours = "=+-/*(";
const char *const kNumberAfter = "=+-/*)";

QString checkSTR(const QString &up)
{
    const QString token = QStringLiteral("STR(");
    for (int at = findWord(up, token, 1); at > 0; at = findWord(up, token, at + 1)) {
        const QChar before = CharAt(up, at - 1);
        if (!before.isNull() && !isOneOf(before, kStringBefore))
            return QStringLiteral("Illegal format for STR()");
        int close = 0;
        const QString arg = callArgument(up, at, token, close).trimmed();
        if (close == 0)
            return QStringLiteral("Missing closing parenthesis in STR()");
        if (arg.contains(kQuote) || isPlaceholder(arg))
            return QStringLiteral("No quotes allowed in STR()");
        if (!isName(arg) && !IsNumber(arg))
            return QStringLiteral("Illegal number in STR()");
    }
    return {};
}

// LEN( and VAL(: numbers only.
QString checkNumberCall(const QString &up, const QString &token, const char *withAmp, const char *badFormat,
                        const char *noClose)
{
    for (int at = findWord(up, token, 1); at > 0; at = findWord(up, token, at + 1)) {
        const QChar before = CharAt(up, at - 1);
        if (!before.isNull() && !isOneOf(before, kNumberNeighbours))
            return QLatin1String(before == QLatin1Char('&') ? withAmp : badFormat);
        int close = 0;
        const QString arg = callArgument(up, at, token, close).trimmed();
        if (close == 0)
            return QLatin1String(noClose);
        if (!isName(arg))
            return QLatin1String(badFormat);
    }
    return {};
}

QString checkUCASE(const QString &up)
{
    const QString token = QStringLiteral("UCASE(");
    for (int at = findWord(up, token, 1); at > 0; at = findWord(up, token, at + 1)) {
        const QChar before = CharAt(up, at - 1);
        if (!before.isNull() && !isOneOf(before, kStringBefore))
            return QStringLiteral("Missing operator (&) for UCASE()");
        int close = 0;
        const QString arg = callArgument(up, at, token, close).trimmed();
        if (close == 0)
            return QStringLiteral("Missing right parenthesis for UCASE()");
        if (!isName(arg) && !isPlaceholder(arg))
            return QStringLiteral("Illegal format for UCASE()");
    }
    return {};
}

// A MID() limit: a number above 0 or a name.
bool goodLimit(const QString &word) { return isName(word) || (IsNumber(word) && Val1(word) > 0); }

// The three arguments of MID(x first last), separated by single blanks (or by the
// commas that MIDCommas4Spaces puts in their place): "" or the fragment.
QString checkMidArguments(const QString &arg, const char *noQuotes, const char *firstBad, const char *limitsBad)
{
    if (arg.contains(kQuote))
        return QLatin1String(noQuotes);
    QString a = arg;
    a.replace(QLatin1Char(','), kBlank);
    const int blank1 = InStr(a, QStringLiteral(" "));
    if (blank1 == 0)
        return QStringLiteral("Missing space in MID()");
    const QString first = Left(a, blank1 - 1);
    if (!isName(first) && !isPlaceholder(first))
        return QLatin1String(firstBad);
    const int blank2 = InStr(blank1 + 1, a, QStringLiteral(" "));
    const QString second = blank2 == 0 ? Mid(a, blank1 + 1) : Mid(a, blank1 + 1, blank2 - blank1 - 1);
    if (second.isEmpty())
        return QStringLiteral("Missing 2nd variable in MID()");
    const QString third = blank2 == 0 ? QString() : Mid(a, blank2 + 1);
    if (third.isEmpty())
        return QStringLiteral("Missing 3rd variable in MID()");
    if (!goodLimit(second))
        return QStringLiteral("Illegal 2nd variable in MID()");
    if (!goodLimit(third))
        return QStringLiteral("Illegal 3rd variable in MID()");
    if (IsNumber(second) && IsNumber(third) && Val1(third) < Val1(second))
        return QLatin1String(limitsBad);
    return {};
}

QString checkMID(const QString &up)
{
    const QString token = QStringLiteral("MID(");
    for (int at = findWord(up, token, 1); at > 0; at = findWord(up, token, at + 1)) {
        const QChar before = CharAt(up, at - 1);
        if (!before.isNull() && !isOneOf(before, kStringBefore))
            return QStringLiteral("Missing operator (&) for MID()");
        int close = 0;
        const QString arg = callArgument(up, at, token, close);
        if (close == 0)
            return QStringLiteral("Missing right parenthesis for MID()");
        const QString message = checkMidArguments(arg, "No quotes allowed in MID()", "Illegal 1st variable format in MID()",
                                                  "Illegal char limits in MID()");
        if (!message.isEmpty())
            return message;
    }
    return {};
}

// --- CheckRemove: each call checked, then replaced -----------------------------------------

using ArgumentCheck = QString (*)(const QString &arg);

QString checkAndReplace(QString &text, const QString &token, const char *noClose, ArgumentCheck check,
                        const QString &replacement)
{
    for (int at = findWord(UpperSameLength(text), token, 1); at > 0;
         at = findWord(UpperSameLength(text), token, at + 1)) {
        int close = 0;
        const QString arg = callArgument(text, at, token, close);
        if (close == 0)
            return QLatin1String(noClose);
        const QString message = check(arg.trimmed());
        if (!message.isEmpty())
            return message;
        text = ReplaceString(text, at, close, replacement);
    }
    return {};
}

bool holdsStringPart(const QString &text) { return text.contains(kQuote) || text.contains(QLatin1Char('&')); }

bool holdsArithmetic(const QString &text)
{
    for (const QChar c : text)
        if (IsOperator(c))
            return true;
    return false;
}

// Empties text and hands the message back when there is one.
QString fail(QString &text, const QString &message)
{
    if (!message.isEmpty())
        text.clear();
    return message;
}


// The literals of a string text and the "&" joining them removed: null when a literal
// is joined to anything by other than "&".
QString removePlaceholders(const QString &text)
{
    QStringList kept;
    for (const QString &piece : text.split(QLatin1Char('&'))) {
        const QString word = piece.trimmed();
        if (isPlaceholder(word))
            continue;
        if (word.contains(kLiteralPlaceholder) || word.contains(kEmptyPlaceholder))
            return QString();
        kept << piece;
    }
    return kept.isEmpty() ? QStringLiteral(" ") : kept.join(QLatin1Char('&'));
}

// The steps shared by GoodVAR and GoodCondEqu on a right-hand text without blanks at
// its edges. The messages are short; VAR adds its own frame where it differs.
struct SideMessages {
    bool forVar;
    QString frame;  // " for [VAR=Val] statement" or ""
};

QString parenthesisCharacters(const QString &t, const SideMessages &m)
{
    for (int i = 1; i <= Len(t); ++i) {
        const QChar c = CharAt(t, i);
        if (c == QLatin1Char('(')) {
            const QChar next = CharAt(t, i + 1);
            if (isOneOf(next, "+*/"))
                return (m.forVar ? QStringLiteral("Wrong use of operator") : QStringLiteral("Invalid use of operator")) + m.frame;
            if (next == QLatin1Char(')'))
                return (m.forVar ? QStringLiteral("Wrong use of ( )") : QStringLiteral("Invalid use of ( )")) + m.frame;
            if (next == QLatin1Char('-') && !IsNegNumber(Mid(t, i + 1)))
                return QStringLiteral("Invalid negative number") + m.frame;
        } else if (c == QLatin1Char(')')) {
            const QChar previous = CharAt(t, i - 1);
            if (isOneOf(previous, "+*/"))
                return QStringLiteral("Invalid use of operator") + m.frame;
            if (previous == QLatin1Char('('))
                return (m.forVar ? QStringLiteral("Wrong use of ( )") : QStringLiteral("Invalid use of ( )")) + m.frame;
        }
    }
    return {};
}

// Steps from the literal count on (VAR steps 8 to 18); rhs has had its calls removed.
QString checkSide(QString rhs, int literals, const SideMessages &m)
{
    QString message = parenthesisCharacters(rhs, m);
    if (!message.isEmpty())
        return message;
    const bool hasParentheses = rhs.contains(QLatin1Char('(')) || rhs.contains(QLatin1Char(')'));
    if (literals > 0 && hasParentheses)
        return QStringLiteral("Cannot mix strings and ( )") + m.frame;
    if (rhs.count(QLatin1Char('(')) != rhs.count(QLatin1Char(')')))
        return QStringLiteral("Mismatching ( )") + m.frame;
    if (hasParentheses) {
        rhs = RemoveParentheses(rhs);
        if (rhs.isEmpty())
            return (m.forVar ? QStringLiteral("Wrong use of ( )") : QStringLiteral("Invalid use of ( )")) + m.frame;
    }
    if (rhs.count(kQuote) % 2 != 0)
        return QStringLiteral("Missing quote") + m.frame;
    if (literals > 0) {
        rhs = removePlaceholders(rhs);
        if (rhs.isNull())
            return QStringLiteral("Invalid format in RHS") + m.frame;
        if (rhs.trimmed().isEmpty())
            return {};
    }
    const bool joined = rhs.contains(QLatin1Char('&'));
    if (!joined) {
        const QString t = rhs.trimmed();
        if (t.isEmpty() || t == QLatin1String("/") || t == QLatin1String("*") || t == QLatin1String("-"))
            return QStringLiteral("Invalid format in right hand side") + m.frame;
    }
    if (rhs.contains(kBlank))
        return QStringLiteral("No spaces allowed in variable") + m.frame;
    if (m.forVar) {
        if (rhs.contains(QLatin1String("&&")) || rhs.startsWith(QLatin1Char('&')) || rhs.endsWith(QLatin1Char('&')))
            return QStringLiteral("Invalid use of the & operator") + m.frame;
        for (const char *twice : {"++", "//", "--", "**"})
            if (rhs.contains(QLatin1String(twice)))
                return QStringLiteral("Duplicate operators") + m.frame;
        const QChar first = CharAt(rhs, 1);
        const QChar last = CharAt(rhs, Len(rhs));
        if (IsOperator(first) && first != QLatin1Char('-'))
            return QStringLiteral("Invalid use of the ") + first + QStringLiteral(" operator") + m.frame;
        if (IsOperator(last))
            return QStringLiteral("Invalid use of the ") + last + QStringLiteral(" operator") + m.frame;
    }
    if (!joined) {
        bool anyOperator = false;
        for (int i = 1; i <= Len(rhs); ++i) {
            if (!IsOperator(CharAt(rhs, i)))
                continue;
            anyOperator = true;
            const QChar next = CharAt(rhs, i + 1);
            if (!IsOperator(next))
                continue;
            if (next != QLatin1Char('-'))
                return QStringLiteral("Illegal operator") + m.frame;
            if (!IsNegNumber(Mid(rhs, i + 1)))
                return QStringLiteral("Illegal negative number") + m.frame;
        }
        if (anyOperator) {
            message = CheckRHS(rhs);
            return message.isEmpty() ? QString() : message + QStringLiteral(" in variable") + m.frame;
        }
        if (IsNumber(rhs) || isPlaceholder(rhs))
            return {};
        message = AllLetters(rhs, QStringLiteral("RHS "));
        return message.isEmpty() ? QString() : message + m.frame;
    }
    if (m.forVar) {
        for (const QString &word : rhs.split(QLatin1Char('&'))) {
            if (isPlaceholder(word))
                continue;
            message = AllLetters(word, QStringLiteral("right hand side "));
            if (!message.isEmpty())
                return message + m.frame;
        }
    }
    return {};
}

// The CheckRemove functions in their order, each when the text holds its call. The
// replacements hold no call, so one upper-cased copy answers for all five.
QString removeCalls(QString &text)
{
    struct Remover {
        const char *token;
        QString (*remove)(QString &);
    };
    static const Remover kRemovers[] = {{"STR(", CheckRemoveSTR}, {"UCASE(", CheckRemoveUCASE},
                                        {"LEN(", CheckRemoveLEN}, {"VAL(", CheckRemoveVAL},
                                        {"MID(", CheckRemoveMID}};
    if (!text.contains(QLatin1Char('(')))
        return {};
    const QString up = UpperSameLength(text);
    for (const Remover &r : kRemovers) {
        if (!up.contains(QLatin1String(r.token)))
            continue;
        const QString message = r.remove(text);
        if (!message.isEmpty())
            return message;
    }
    return {};
}

// The condition rules shared by [IF], [CANCEL IF] and [LOOP]; row is the statement's
// table row ("[IF ") and loop selects the sequence rules.
QString goodCondition(const QString &line, const QString &row, bool loop)
{
    const QString frame = QStringLiteral(" for ") + row + QStringLiteral("Cond] statement");
    if (!line.endsWith(QLatin1Char(']')))
        return QStringLiteral("Missing right bracket") + frame;
    QString condition = Mid(line, Len(row) + 1, Len(line) - Len(row) - 1);
    if (condition.trimmed().isEmpty())
        return frame;
    QString message = RemoveSpecial(condition);
    if (!message.isEmpty())
        return message + frame;
    message = GoodParentheses(condition);
    if (!message.isEmpty())
        return message + frame;
    if (condition.contains(QLatin1Char('('))) {
        condition = RemoveParentheses(condition);
        if (condition.isEmpty())
            return QStringLiteral("Unmatched ( ) in condition(s)") + frame;
    }
    QList<int> connectors;
    QStringList lefts, operators, rights;
    int count = 0;
    message = ParseParam(condition, connectors, lefts, operators, rights, count, 0);
    if (!message.isEmpty())
        return message + frame;
    for (int i = 0; i < count && i < lefts.size(); ++i) {
        const QString left = lefts.at(i);
        const QString op = operators.value(i);
        const QString right = rights.value(i);
        if (left.isEmpty())
            return QStringLiteral("Missing left variable") + frame;
        message = GoodCondEqu(left);
        if (!message.isEmpty())
            return message + frame;
        if (op.isEmpty())
            return QStringLiteral("Missing operator") + frame;
        if (right.count(kQuote) % 2 != 0)
            return QStringLiteral("Quote mismatch") + frame;
        if (right.isEmpty())
            return QStringLiteral("Missing right variable") + frame;
        if (loop && IsSequence(left + op + right)) {
            if (count != 1)
                return QStringLiteral("Invalid format in sequence") + frame;
            if (op != QLatin1String("="))
                return QStringLiteral("Sequence operator must be =") + frame;
            message = Token2(right);
            if (!message.isEmpty())
                return message + frame;
            continue;
        }
        message = GoodCondEqu(right);
        if (!message.isEmpty())
            return message + frame;
    }
    return {};
}

} // namespace

QString GoodIFCond(const QString &line)
{
    const QString up = UpperSameLength(line);
    return goodCondition(line, up.startsWith(kCancelIfRow) ? kCancelIfRow : kIfRow, false);
}

QString GoodLOOPCond(const QString &line) { return goodCondition(line, kLoopRow, true); }

QString GoodVAR(const QString &line)
{
    const QString invalid = QStringLiteral("Invalid format") + kVarStatement;
    const int equals = InStr(line, QStringLiteral("="));
    if (equals < 2)
        return invalid;
    QString left = Mid(line, 2, equals - 2).trimmed();
    QString rhs = Mid(line, equals + 1);
    if (rhs.endsWith(QLatin1Char(']')))
        rhs.chop(1);

    // Blanks: only those that are wrong remain. MID()'s separating blanks are kept apart.
    const bool hasMid = UpperSameLength(rhs).contains(QLatin1String("MID("));
    if (hasMid)
        MIDCommas4Spaces(rhs);
    if (!rhs.contains(kLiteralPlaceholder) && !rhs.contains(kEmptyPlaceholder)) {
        rhs.remove(kBlank);
    } else {
        while (rhs.startsWith(kBlank))
            rhs.remove(0, 1);
        const qsizetype blank = rhs.indexOf(kBlank);
        if (blank >= 0 && blank < firstPlaceholderIndex(rhs))
            return invalid;
    }
    if (hasMid)
        MIDSpaces4Commas(rhs);

    if (!isPlaceholder(left)) {
        const QString message = AllLetters(left, QStringLiteral("LHS "));
        if (!message.isEmpty())
            return message + kVarStatement;
    }
    if (LeftSpecial(left))
        return QStringLiteral("This special variable is not allowed in LHS") + kVarStatement;
    QString message = GoodSpecial(rhs);
    if (!message.isEmpty())
        return message;

    const int literals = literalCount(rhs);
    message = removeCalls(rhs);
    if (!message.isEmpty())
        return message + kVarStatement;
    return checkSide(rhs, literals, SideMessages{true, kVarStatement});
}

QString GoodCondEqu(const QString &word)
{
    return checkSide(word.trimmed(), literalCount(word), SideMessages{false, QString()});
}

QString GoodSpecial(const QString &text)
{
    const QString up = UpperSameLength(text);
    static const NameRule kNames[] = {
        {"SONAMARKTEXT", kStringBefore, kStringAfter, "Illegal format for SONAMARKTEXT variable",
         "Missing operator (&) for SONAMARKTEXT variable", nullptr},
        {"PATH", kStringBefore, kStringAfter, "Illegal format for PATH variable", "Missing operator (&) for PATH variable",
         nullptr},
        {"TIMER", kNumberNeighbours, kNumberAfter, "Missing operator for TIMER variable",
         "Missing operator for TIMER variable", "Cannot mix the TIMER variable with strings"},
        {"TIMEOUT", kNumberNeighbours, kNumberAfter, "Missing operator for TIMEOUT variable",
         "Missing operator for TIMEOUT variable", "Cannot mix the TIMEOUT variable with strings"},
        {"TIME", kStringBefore, kStringAfter, "Illegal format for TIME variable", "Missing operator (&) for TIME variable",
         nullptr},
        {"DATE", kStringBefore, kStringAfter, "Illegal format in DATE variable", "Missing operator (&) for DATE variable",
         nullptr},
    };
    // Every check below needs its name or a call's "(" in the text: "TIME" is part of
    // TIMER and TIMEOUT.
    if (!up.contains(QLatin1Char('(')) && !up.contains(QLatin1String("TIME")) && !up.contains(QLatin1String("DATE"))
        && !up.contains(QLatin1String("PATH")) && !up.contains(QLatin1String("SONAMARKTEXT")))
        return {};
    QString message = checkSTR(up);
    for (const NameRule &rule : kNames) {
        if (!message.isEmpty())
            return message;
        message = checkName(up, rule);
    }
    if (message.isEmpty())
        message = checkNumberCall(up, QStringLiteral("LEN("), "Cannont mix LEN() with strings", "Illegal format for LEN()",
                                  "Missing closing parenthesis for LEN()");
    if (message.isEmpty())
        message = checkNumberCall(up, QStringLiteral("VAL("), "Cannot mix VAL() with strings", "Illegal format for VAL()",
                                  "Missing closing parenthesis for VAL()");
    if (message.isEmpty())
        message = checkUCASE(up);
    if (message.isEmpty())
        message = checkMID(up);
    return message;
}

QString RemoveSpecial(QString &text)
{
    QString message = GoodSpecial(text);
    if (!message.isEmpty())
        return fail(text, message);
    return fail(text, removeCalls(text));
}

QString CheckRemoveSTR(QString &text)
{
    return checkAndReplace(text, QStringLiteral("STR("), "Missing closing parenthesis in STR()",
                           [](const QString &arg) {
                               return isName(arg) || IsNumber(arg) ? QString() : QStringLiteral("Illegal variable in STR()");
                           },
                           QStringLiteral("C"));
}

QString CheckRemoveUCASE(QString &text)
{
    if (holdsArithmetic(text))
        return QStringLiteral("Cannot mix numbers and strings in UCASE()");
    return checkAndReplace(text, QStringLiteral("UCASE("), "Missing closing parenthesis in UCASE()",
                           [](const QString &arg) {
                               if (arg.isEmpty() || arg.contains(kQuote))
                                   return QStringLiteral("Illegal string format in UCASE()");
                               return isName(arg) || isPlaceholder(arg) ? QString()
                                                                        : QStringLiteral("Illegal variable in UCASE()");
                           },
                           QStringLiteral("C"));
}

QString CheckRemoveLEN(QString &text)
{
    if (holdsStringPart(text))
        return QStringLiteral("Cannot mix strings and LEN()");
    return checkAndReplace(text, QStringLiteral("LEN("), "Missing closing parenthesis in LEN()",
                           [](const QString &arg) {
                               return isName(arg) ? QString() : QStringLiteral("Illegal variable in LEN()");
                           },
                           QStringLiteral("C"));
}

QString CheckRemoveVAL(QString &text)
{
    if (holdsStringPart(text))
        return QStringLiteral("Cannot mix strings and VAL()");
    return checkAndReplace(text, QStringLiteral("VAL("), "Missing closing parenthesis in VAL()",
                           [](const QString &arg) {
                               return isName(arg) ? QString() : QStringLiteral("Illegal variable in VAL()");
                           },
                           QStringLiteral("1"));
}

QString CheckRemoveMID(QString &text)
{
    if (holdsArithmetic(text))
        return QStringLiteral("Cannot mix numbers and strings in MID()");
    return checkAndReplace(text, QStringLiteral("MID("), "Missing right parenthesis in MID()",
                           [](const QString &arg) {
                               if (arg.isEmpty())
                                   return QStringLiteral("Illegal string format in MID()");
                               return checkMidArguments(arg, "No quotes allowed in MID()",
                                                        "Illegal 1st variable format in MID()",
                                                        "Illegal char limits in MID()");
                           },
                           QStringLiteral("C"));
}

QString GoodParentheses(const QString &text)
{
    if (!text.contains(QLatin1Char('(')) && !text.contains(QLatin1Char(')')))
        return {};
    const QString bad = QStringLiteral("Invalid format in ( )");
    for (int i = 1; i <= Len(text); ++i) {
        const QChar c = CharAt(text, i);
        const QChar previous = CharAt(text, i - 1);
        const QChar next = CharAt(text, i + 1);
        if (c == QLatin1Char('(')) {
            if (isOneOf(next, "*/+)"))
                return bad;
            if (!previous.isNull() && !isOneOf(previous, " (-*/+"))
                return bad;
        } else if (c == QLatin1Char(')')) {
            if (isOneOf(previous, "(*/+-"))
                return bad;
            if (!next.isNull() && !isOneOf(next, " )-*/+"))
                return bad;
        }
    }
    if (text.count(QLatin1Char('(')) != text.count(QLatin1Char(')')))
        return QStringLiteral("Mismatched ( )");
    return {};
}

QString RemoveParentheses(const QString &text)
{
    if (text.count(QLatin1Char('(')) != text.count(QLatin1Char(')')))
        return {};
    QString out = text;
    out.remove(QLatin1Char('('));
    out.remove(QLatin1Char(')'));
    return out;
}

QString CheckRHS(const QString &text)
{
    const QString t = QStringLiteral("+") + text + QStringLiteral("+");
    int start = 2;  // first character of the current word
    for (int i = 2; i <= Len(t); ++i) {
        const QChar c = CharAt(t, i);
        if (!IsOperator(c))
            continue;
        if (c == QLatin1Char('-') && i == start)  // a sign right after an operator
            continue;
        QString word = Mid(t, start, i - start);
        start = i + 1;
        if (word.startsWith(QLatin1Char('-')))
            word.remove(0, 1);
        if (IsNumber(word))
            continue;
        if (isPlaceholder(word))
            return QStringLiteral("Invalid format");
        const QString message = AllLetters(word, QStringLiteral("right hand side "));
        if (!message.isEmpty())
            return message;
    }
    return {};
}

bool IsNegNumber(const QString &text)
{
    if (Len(text) < 2 || CharAt(text, 1) != QLatin1Char('-'))
        return false;
    int end = Len(text) + 1;
    for (int i = 2; i <= Len(text); ++i) {
        const QChar c = CharAt(text, i);
        if (isOneOf(c, "+-*/()")) {
            end = i;
            break;
        }
        const bool letter = c >= QLatin1Char('A') && c <= QLatin1Char('z');
        if (!letter && !c.isDigit() && c != QLatin1Char('.'))
            return false;
    }
    return Val1(Left(text, end - 1)) != 0;
}

} // namespace macro
