#include "macro/numbers.h"

namespace macro {

namespace {

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The platform's Val: the longest leading number, with an optional exponent.
double leadingNumber(const QString &t)
{
    qsizetype i = 0;
    if (i < t.size() && (t[i] == QLatin1Char('-') || t[i] == QLatin1Char('+')))
        ++i;
    bool digits = false;
    while (i < t.size() && isDigit(t[i])) { ++i; digits = true; }
    if (i < t.size() && t[i] == QLatin1Char('.')) {
        ++i;
        while (i < t.size() && isDigit(t[i])) { ++i; digits = true; }
    }
    if (!digits)
        return 0;
    qsizetype end = i;
    if (i < t.size() && (t[i] == QLatin1Char('E') || t[i] == QLatin1Char('e'))) {
        qsizetype j = i + 1;
        if (j < t.size() && (t[j] == QLatin1Char('-') || t[j] == QLatin1Char('+')))
            ++j;
        const qsizetype expStart = j;
        while (j < t.size() && isDigit(t[j]))
            ++j;
        if (j > expStart)
            end = j;
    }
    return t.left(end).toDouble();
}

} // namespace

double Val1(const QString &text)
{
    const QString t = text.trimmed();
    if (t.isEmpty())
        return 0;
    for (const QChar c : t) {
        const QChar u = c.toUpper();
        if (!isDigit(u) && u != QLatin1Char('.') && u != QLatin1Char('E') && u != QLatin1Char('-')
            && u != QLatin1Char('+'))
            return 0;
    }
    return leadingNumber(t);
}

} // namespace macro
