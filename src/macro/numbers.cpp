#include "macro/numbers.h"

#include <charconv>
#include <cstdint>

namespace macro {

namespace {

constexpr qsizetype kMaxNumberChars = 64;  // longer numbers take the slow path

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// A character a number may hold. No character beyond ASCII upper-cases to one of them.
bool isNumberChar(QChar c)
{
    return isDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('E') || c == QLatin1Char('e')
           || c == QLatin1Char('-') || c == QLatin1Char('+');
}

// Digits a double holds exactly as an integer (below 2^53), and the powers of ten it
// holds exactly.
constexpr int kExactDigits = 15;
constexpr double kExactPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// A text that is one plain decimal number of at most kExactDigits digits, without
// exponent, read exactly: the integer of its digits divided by a power of ten is one
// correctly rounded operation, the same double a full conversion gives. False for any
// other text.
bool shortDecimal(QStringView t, double &value)
{
    qsizetype i = 0;
    const bool negative = t[0] == QLatin1Char('-');
    if (negative || t[0] == QLatin1Char('+'))
        ++i;
    uint64_t digits = 0;
    int count = 0;
    int decimals = 0;
    bool point = false;
    for (; i < t.size(); ++i) {
        const QChar c = t[i];
        if (isDigit(c)) {
            if (++count > kExactDigits)
                return false;
            digits = digits * 10 + (c.unicode() - u'0');
            if (point)
                ++decimals;
        } else if (c == QLatin1Char('.') && !point) {
            point = true;
        } else {
            return false;
        }
    }
    if (count == 0)
        return false;
    const double magnitude = static_cast<double>(digits) / kExactPowersOfTen[decimals];
    value = negative ? -magnitude : magnitude;
    return true;
}

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
    double value = 0;
    if (shortDecimal(t.left(end), value))
        return value;
    // The characters are all ASCII by now (Val1 has checked them).
    char buf[kMaxNumberChars];
    if (end >= static_cast<qsizetype>(sizeof buf))
        return t.left(end).toDouble();
    for (qsizetype k = 0; k < end; ++k)
        buf[k] = static_cast<char>(t[k].unicode());
    const char *first = buf[0] == '+' ? buf + 1 : buf;
    if (std::from_chars(first, buf + end, value).ec != std::errc())
        return t.left(end).toDouble();  // out of range: as the platform reads it
    return value;
}

} // namespace

double Val1(QStringView text)
{
    QStringView t = text;
    if (!t.isEmpty() && (t.front().isSpace() || t.back().isSpace()))
        t = t.trimmed();
    if (t.isEmpty())
        return 0;
    double value = 0;
    if (shortDecimal(t, value))
        return value;
    for (const QChar c : t)
        if (!isNumberChar(c))
            return 0;
    return leadingNumber(t);
}

} // namespace macro
