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

// Term i of the condition, blanks removed, cut at its connectors.
QString term(const QString &condition, int i)
{
    QString text = condition;
    RemoveSpaces(text);
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

QString GetLeadVar(const QString &condition, int i)
{
    const QString t = term(condition, i);
    for (const QChar op : {QLatin1Char('<'), QLatin1Char('>'), QLatin1Char('=')}) {
        const qsizetype at = t.indexOf(op);
        if (at >= 0)
            return t.left(at);
    }
    return t;
}

QString GetOperator(const QString &condition, int i)
{
    const QString t = term(condition, i);
    for (const char *op : {"<=", "<>", "<", ">=", ">", "="})
        if (t.contains(QLatin1String(op)))
            return QString::fromLatin1(op);
    return {};
}

QString GetTrailVar(const QString &condition, int i)
{
    const QString t = term(condition, i);
    for (qsizetype at = t.size() - 1; at >= 0; --at)
        if (isCompareChar(t.at(at)))
            return t.mid(at + 1);
    return {};
}

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
    for (int i = 1; i <= count; ++i) {
        const QString lead = GetLeadVar(condition, i);
        leftSides << lead;
        if (Val1(lead) == 0 && lead != kLiteralPlaceholder) {
            const QString msg = AllLetters(lead, QString());
            if (!msg.isEmpty())
                return msg;
        }
        const QString op = GetOperator(condition, i);
        operators << op;
        if (op.trimmed().isEmpty())
            return QStringLiteral("Missing operator");
        const QString trail = GetTrailVar(condition, i);
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
