#include "macro/check_helpers.h"

#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/sequences.h"
#include "macro/variables.h"

#include <stdexcept>

namespace macro {

namespace {

const QString kAnd = QStringLiteral(" AND ");
const QString kOr = QStringLiteral(" OR ");

// Position (0-based) and length of the next connector at or after from; -1 if none.
qsizetype nextConnector(const QString &up, qsizetype from, qsizetype &length)
{
    const qsizetype a = up.indexOf(kAnd, from);
    const qsizetype o = up.indexOf(kOr, from);
    if (a < 0 && o < 0)
        return -1;
    if (o < 0 || (a >= 0 && a < o)) {
        length = kAnd.size();
        return a;
    }
    length = kOr.size();
    return o;
}

// The condition with blanks removed, as the terms are cut from it.
QString normalised(const QString &condition)
{
    QString text = condition;
    RemoveSpaces(text);
    return text;
}

// Term i of a text already passed through RemoveSpaces, cut at its connectors.
QString termOf(const QString &text, int i)
{
    qsizetype from = 0;
    qsizetype length = 0;
    for (int n = 1; n < i; ++n) {
        const qsizetype at = nextConnector(text, from, length);
        if (at < 0)
            return {};
        from = at + length;
    }
    const qsizetype end = nextConnector(text, from, length);
    return end < 0 ? text.mid(from) : text.mid(from, end - from);
}

bool isCompareChar(QChar c)
{
    return c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('=');
}

} // namespace

int GetNumANDORs(const QString &condition, QList<int> &connectors)
{
    connectors.clear();
    const QString up = UpperSameLength(condition);
    qsizetype length = 0;
    for (qsizetype at = nextConnector(up, 0, length); at >= 0; at = nextConnector(up, at + length, length)) {
        if (connectors.size() == kMaxConnectors)
            return -1;
        connectors.append(length == kAnd.size() ? 1 : 0);
    }
    return static_cast<int>(connectors.size());
}

namespace {

// The parts of one term: the text before its first compare character, its operator and
// the text after its last compare character.
QString leadOf(const QString &t)
{
    for (const QChar op : {QLatin1Char('<'), QLatin1Char('>'), QLatin1Char('=')}) {
        const qsizetype at = t.indexOf(op);
        if (at >= 0)
            return t.left(at);
    }
    return t;
}

QString operatorOf(const QString &t)
{
    for (const char *op : {"<=", "<>", "<", ">=", ">", "="})
        if (t.contains(QLatin1String(op)))
            return QString::fromLatin1(op);
    return {};
}

QString trailOf(const QString &t)
{
    for (qsizetype at = t.size() - 1; at >= 0; --at)
        if (isCompareChar(t.at(at)))
            return t.mid(at + 1);
    return {};
}

} // namespace

QString GetLeadVar(const QString &condition, int i) { return leadOf(termOf(normalised(condition), i)); }

QString GetOperator(const QString &condition, int i) { return operatorOf(termOf(normalised(condition), i)); }

QString GetTrailVar(const QString &condition, int i) { return trailOf(termOf(normalised(condition), i)); }

QString ParseParam(const QString &condition, QList<int> &connectors, QStringList &leftSides,
                   QStringList &operators, QStringList &rightSides, int &count, int flag)
{
    leftSides.clear();
    operators.clear();
    rightSides.clear();
    count = GetNumANDORs(condition, connectors) + 1;
    if (count == 0)
        return QStringLiteral("No condition parameters");
    if (count > kMaxTerms)
        throw std::length_error("more condition terms than the check can hold");
    const bool sequence = IsSequence(condition);
    // Terms are cut in order from one blank-free copy: each starts after the connector
    // that ends the one before; once the connectors run out, the later terms are empty.
    const QString text = normalised(condition);
    qsizetype from = 0;
    bool exhausted = false;
    for (int i = 1; i <= count; ++i) {
        QString t;
        if (!exhausted) {
            qsizetype length = 0;
            const qsizetype end = nextConnector(text, from, length);
            if (end < 0) {
                t = text.mid(from);
                exhausted = true;
            } else {
                t = text.mid(from, end - from);
                from = end + length;
            }
        }
        const QString lead = leadOf(t);
        leftSides << lead;
        if (Val1(lead) == 0 && lead != kLiteralPlaceholder) {
            const QString msg = AllLetters(lead, QString());
            if (!msg.isEmpty())
                return msg;
        }
        const QString op = operatorOf(t);
        operators << op;
        if (op.trimmed().isEmpty())
            return QStringLiteral("Missing operator");
        const QString trail = trailOf(t);
        rightSides << trail;
        if (Val1(trail) == 0 && flag == 1 && !sequence && trail != kLiteralPlaceholder
            && trail != kEmptyPlaceholder) {
            const QString msg = AllLetters(trail, QString());
            if (!msg.isEmpty())
                return msg;
        }
    }
    return {};
}

} // namespace macro
