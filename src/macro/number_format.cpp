#include "macro/number_format.h"

#include <QLatin1StringView>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <stdexcept>

namespace macro {

namespace {

constexpr int kMaxDecimals = 30;     // more than any pattern of ours asks for
constexpr int kFixedBuffer = 400;    // 1e308 written out in full, plus decimals
constexpr size_t kDecimalDigits = 15;  // digits a double holds as a decimal number

struct Pattern {
    int minInt = 0;       // "0" places before the point
    int decimals = 0;     // places after the point
    int minDecimals = 0;  // "0" places after the point
    bool point = false;
};

Pattern parsePattern(const char *pattern)
{
    Pattern p;
    for (const char *c = pattern; *c; ++c) {
        if (*c == '.') {
            p.point = true;
        } else if (p.point) {
            ++p.decimals;
            if (*c == '0')
                ++p.minDecimals;
        } else if (*c == '0') {
            ++p.minInt;
        }
    }
    if (p.decimals > kMaxDecimals)
        p.decimals = kMaxDecimals;
    return p;
}

// Digits are rounded half away from zero on the number as it reads in decimal: 1.25
// by "0.#" is "1.3", as is 0.15 by "0.#" to "0.2" although its double lies below.
double nudgeDecimalTie(double magnitude, int decimals)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, magnitude);
    const std::string_view shortest(buf, static_cast<size_t>(res.ptr - buf));
    const size_t dot = shortest.find('.');
    if (shortest.find('e') != std::string_view::npos || dot == std::string_view::npos)
        return magnitude;
    // Only a number that reads as a short decimal can be a tie: 2.3333333333333335
    // is a double's full precision, not a half.
    size_t significant = 0;
    bool leading = true;
    for (const char c : shortest) {
        if (c == '.' || (leading && c == '0'))
            continue;
        leading = false;
        ++significant;
    }
    const size_t places = shortest.size() - dot - 1;
    if (significant <= kDecimalDigits && places == static_cast<size_t>(decimals) + 1 && shortest.back() == '5')
        return std::nextafter(magnitude, std::numeric_limits<double>::infinity());
    return magnitude;
}

} // namespace

QString FormatNumber(double value, const char *pattern)
{
    const Pattern p = parsePattern(pattern);
    char buf[kFixedBuffer];
    const double magnitude = nudgeDecimalTie(std::fabs(value), p.decimals);
    const auto res = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::fixed, p.decimals);
    if (res.ec != std::errc())
        throw std::overflow_error("number too large to format");
    const char *end = res.ptr;
    const char *dot = static_cast<const char *>(std::memchr(buf, '.', static_cast<size_t>(end - buf)));
    const char *intEnd = dot ? dot : end;

    // Integer digits without leading zeros, then padded to the "0" places.
    const char *intStart = buf;
    while (intStart < intEnd && *intStart == '0')
        ++intStart;
    // Decimals without trailing zeros beyond the "0" places.
    const char *fracStart = dot ? dot + 1 : end;
    const char *fracEnd = end;
    while (fracEnd - fracStart > p.minDecimals && fracEnd[-1] == '0')
        --fracEnd;

    bool anyDigit = intStart < intEnd;
    for (const char *c = fracStart; c < fracEnd && !anyDigit; ++c)
        anyDigit = *c != '0';

    QString out;
    out.reserve(static_cast<qsizetype>(end - buf) + 2);
    if (value < 0 && anyDigit)
        out += QLatin1Char('-');
    for (int pad = static_cast<int>(intEnd - intStart); pad < p.minInt; ++pad)
        out += QLatin1Char('0');
    out += QLatin1StringView(intStart, intEnd - intStart);
    if (p.point) {
        out += QLatin1Char('.');
        out += QLatin1StringView(fracStart, fracEnd - fracStart);
    }
    return out;
}

QString ResultText(double value)
{
    if (!std::isfinite(value))
        throw std::overflow_error("Overflow");
    if (value == 0)
        return QStringLiteral("0");
    return FormatNumber(value, kResultPattern);
}

QString SecondsText(double value) { return FormatNumber(value, kSecondsPattern); }

namespace {

// Exponents as the platform writes them: "1E+20", "1.5E-07".
QString fromShortest(char *buf, char *end)
{
    for (char *c = buf; c < end; ++c)
        if (*c == 'e')
            *c = 'E';
    return QString::fromLatin1(buf, end - buf);
}

} // namespace

QString GeneralFormat(double value)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, value);
    return fromShortest(buf, res.ptr);
}

QString GeneralFormat(float value)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, value);
    return fromShortest(buf, res.ptr);
}

bool IsNumber(const QString &word)
{
    return Val1(word) != 0 || word == QLatin1String("0");
}

double RoundEven(double value) { return std::nearbyint(value); }

} // namespace macro
