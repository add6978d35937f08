#include "macro/numbers.h"

#include <charconv>

namespace macro {

namespace {

constexpr qsizetype kMaxNumberChars = 64;  // longer numbers take the slow path

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The platform's Val: the longest leading number, with an optional exponent.
double leadingNumber(QStringView t)
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
    // The characters are all ASCII by now (Val1 has checked them).
    char buf[kMaxNumberChars];
    if (end >= static_cast<qsizetype>(sizeof buf))
        return t.left(end).toDouble();
    for (qsizetype k = 0; k < end; ++k)
        buf[k] = static_cast<char>(t[k].unicode());
    const char *first = buf[0] == '+' ? buf + 1 : buf;
    double value = 0;
    if (std::from_chars(first, buf + end, value).ec != std::errc())
        return t.left(end).toDouble();  // out of range: as the platform reads it
    return value;
}

} // namespace

double Val1(QStringView text)
{
    const QStringView t = text.trimmed();
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
