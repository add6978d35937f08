#include "macro/number_format.h"

#include <QLatin1StringView>
#include <algorithm>
#include <charconv>
#include <cstdint>
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

// Writes value by pattern p into out (kFixedBuffer characters) and returns the end.
char *formatChars(double value, const Pattern &p, char *out)
{
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

    char *o = out;
    if (value < 0 && anyDigit)
        *o++ = '-';
    for (int pad = static_cast<int>(intEnd - intStart); pad < p.minInt; ++pad)
        *o++ = '0';
    o = std::copy(intStart, intEnd, o);
    if (p.point) {
        *o++ = '.';
        o = std::copy(fracStart, fracEnd, o);
    }
    return o;
}

// Decimal digits of n, most significant first; nothing for 0.
char *unsignedDigits(uint64_t n, char *out)
{
    char digits[20];
    int count = 0;
    for (; n != 0; n /= 10)
        digits[count++] = static_cast<char>('0' + n % 10);
    while (count > 0)
        *out++ = digits[--count];
    return out;
}

// True when magnitude's fraction is a multiple of 2^-15 below 2^53: it has at most
// fifteen decimals, all exact, and its whole part is an exact integer.
bool hasShortBinaryFraction(double magnitude)
{
    constexpr double kExactIntegers = 9007199254740992.0;  // 2^53
    if (magnitude >= kExactIntegers)
        return false;
    const double scaled = (magnitude - std::trunc(magnitude)) * 32768.0;  // exact: a power of two
    return scaled == std::trunc(scaled);
}

// The result text of a finite, nonzero value (kResultPattern) into out (kFixedBuffer
// characters); returns the end. exact is set when the text reads back as value itself.
char *resultChars(double value, char *out, bool &exact)
{
    const double magnitude = std::fabs(value);
    exact = true;
    char *o = out;
    // Such a value's whole part and decimals come straight from integer arithmetic.
    if (hasShortBinaryFraction(magnitude)) {
        const double whole = std::trunc(magnitude);
        const double scaled = (magnitude - whole) * 32768.0;
        if (value < 0)
            *o++ = '-';
        o = unsignedDigits(static_cast<uint64_t>(whole), o);
        *o++ = '.';
        // Each step moves one decimal of the fraction (a count of 2^-15) into the
        // whole part; at most fifteen steps empty it.
        for (uint64_t fraction = static_cast<uint64_t>(scaled); fraction != 0; fraction &= 0x7FFF) {
            fraction *= 10;
            *o++ = static_cast<char>('0' + (fraction >> 15));
        }
        return o;
    }
    // Below 8 a double's spacing is under 10^-15, so a shortest text of at most fifteen
    // decimals is also the value rounded to fifteen decimals.
    if (magnitude < 8) {
        char shortest[64];
        const auto res = std::to_chars(shortest, shortest + sizeof shortest, magnitude);
        const char *end = res.ptr;
        const char *dot = static_cast<const char *>(std::memchr(shortest, '.', static_cast<size_t>(end - shortest)));
        if (dot && !std::memchr(shortest, 'e', static_cast<size_t>(end - shortest))
            && end - dot - 1 <= static_cast<std::ptrdiff_t>(kDecimalDigits)) {
            if (value < 0)
                *o++ = '-';
            const char *intStart = shortest;
            while (intStart < dot && *intStart == '0')
                ++intStart;
            o = std::copy(intStart, dot, o);
            while (end > dot + 1 && end[-1] == '0')
                --end;
            return std::copy(dot, end, o);
        }
    }
    exact = false;
    static const Pattern resultPattern = parsePattern(kResultPattern);
    return formatChars(value, resultPattern, out);
}

} // namespace

QString FormatNumber(double value, const char *pattern)
{
    char out[kFixedBuffer + kMaxDecimals + 2];
    const char *end = formatChars(value, parsePattern(pattern), out);
    return QString::fromLatin1(out, end - out);
}

qsizetype WriteResultText(double value, char16_t *out)
{
    static_assert(kResultTextRoom >= kFixedBuffer + kMaxDecimals + 2);
    if (!std::isfinite(value))
        throw std::overflow_error("Overflow");
    if (value == 0) {
        out[0] = u'0';
        return 1;
    }
    char chars[kResultTextRoom];
    bool exact = false;
    const char *end = resultChars(value, chars, exact);
    const qsizetype length = end - chars;
    for (qsizetype i = 0; i < length; ++i)
        out[i] = static_cast<unsigned char>(chars[i]);
    return length;
}

QString ResultText(double value)
{
    char16_t out[kResultTextRoom];
    const QStringView text(out, WriteResultText(value, out));
    return text.toString();
}

double ResultValue(double value)
{
    if (!std::isfinite(value))
        throw std::overflow_error("Overflow");
    if (value == 0)
        return 0;
    if (hasShortBinaryFraction(std::fabs(value)))
        return value;  // its result text reads back as the value itself
    char out[kFixedBuffer + kMaxDecimals + 2];
    bool exact = false;
    const char *end = resultChars(value, out, exact);
    if (exact)
        return value;
    return Val1(QString::fromLatin1(out, end - out));
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
