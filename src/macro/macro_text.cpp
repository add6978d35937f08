#include "macro/macro_text.h"

#include "macro/variables.h"

#include <algorithm>

namespace macro {

namespace {

constexpr QChar kBlank = QLatin1Char(' ');
constexpr QChar kAmpersand = QLatin1Char('&');

bool startsWithMidCall(const QString &text, qsizetype i)
{
    return i + 4 <= text.size() && text.mid(i, 4).compare(QLatin1String("MID("), Qt::CaseInsensitive) == 0;
}

bool allAscii(const QString &text)
{
    for (const QChar c : text)
        if (c.unicode() >= 0x80)
            return false;
    return true;
}

// QString::toUpper for a text of ASCII characters and space markers: only a-z change.
QString asciiUpper(const QString &text)
{
    QString up = text;
    for (qsizetype i = 0; i < up.size(); ++i) {
        const char16_t u = up.at(i).unicode();
        if (u >= u'a' && u <= u'z')
            up[i] = QChar(char16_t(u - 0x20));
    }
    return up;
}

// Steps shared by RemoveSpaces and RemoveSpaces2.
void removeSpaces(QString &text, bool upper)
{
    // An ASCII text keeps one upper-case copy in step with the text instead of
    // upper-casing it again for every look; other texts take QString::toUpper each time.
    const bool ascii = allAscii(text);
    // Character by character, so that positions in the copy are positions in the text
    // (the full upper case of "ß" is two letters).
    QString up = ascii ? asciiUpper(text) : UpperSameLength(text);
    const bool hasMid = up.contains(QLatin1String("MID("));
    if (hasMid) {
        MIDCommas4Spaces(text);
        up = ascii ? asciiUpper(text) : QString();
    }

    // Protect the blanks around AND and OR with markers; quotes are not looked at here.
    for (;;) {
        if (!ascii)
            up = UpperSameLength(text);
        qsizetype at = up.indexOf(QLatin1String(" AND "));
        qsizetype width = 5;
        if (at < 0) {
            at = up.indexOf(QLatin1String(" OR "));
            width = 4;
        }
        if (at < 0)
            break;
        const QString upWord = up.mid(at + 1, width - 2);
        const QString word = upper ? upWord : text.mid(at + 1, width - 2);
        text.replace(at, width, kSpaceMarker + word + kSpaceMarker);
        if (ascii)
            up.replace(at, width, kSpaceMarker + upWord + kSpaceMarker);
    }

    // Every marker in the result, including one that upper-casing made, becomes a blank.
    QString out(text.size(), Qt::Uninitialized);
    QChar *o = out.data();
    qsizetype n = 0;
    bool inQuotes = false;  // BetweenQuotes of the current position
    for (const QChar c : std::as_const(text)) {
        if (inQuotes || c != kBlank) {
            QChar e = c;
            if (!inQuotes && upper) {
                const char16_t u = c.unicode();
                e = !ascii ? c.toUpper() : u >= u'a' && u <= u'z' ? QChar(char16_t(u - 0x20)) : c;
            }
            o[n++] = e == kSpaceMarker ? kBlank : e;
        }
        if (c == kQuote)
            inQuotes = !inQuotes;
    }
    out.truncate(n);
    text = out;

    if (hasMid)
        MIDSpaces4Commas(text);
}

} // namespace

QString Mid(const QString &text, int start, int len)
{
    if (start < 1)
        start = 1;
    return text.mid(start - 1, len);
}

QString Left(const QString &text, int len) { return len <= 0 ? QString() : text.left(len); }

QString Right(const QString &text, int len) { return len <= 0 ? QString() : text.right(len); }

int InStr(int start, const QString &text, const QString &search)
{
    if (start < 1 || text.isEmpty() || search.isEmpty() || start > text.size())
        return 0;
    return static_cast<int>(text.indexOf(search, start - 1)) + 1;
}

int InStr(const QString &text, const QString &search) { return InStr(1, text, search); }

int InStrRev(const QString &text, const QString &search, int start)
{
    if (text.isEmpty() || search.isEmpty())
        return 0;
    if (start < 1 || start > text.size())
        start = Len(text);
    const qsizetype from = start - search.size();
    if (from < 0)
        return 0;
    return static_cast<int>(text.lastIndexOf(search, from)) + 1;
}

bool BetweenQuotes(const QString &text, int position)
{
    int count = 0;
    const int end = std::min(position - 1, Len(text));
    for (int i = 0; i < end; ++i)
        if (text.at(i) == kQuote)
            ++count;
    return count % 2 == 1;
}

bool EvenQuotes(const QString &text) { return text.count(kQuote) % 2 == 0; }

void ReplaceQuotes(QString &text) { text.replace(kQuote, kQuoteMarker); }

void RestoreQuotes(QString &text)
{
    text.replace(kQuoteMarker, kQuote);
    text.replace(kQuoteMarker2, kQuote);
}

QString ReplaceLiterals(QString &text)
{
    // Rebuilt a run of plain characters at a time.
    QString out;
    out.reserve(text.size());
    const QChar *in = text.constData();
    const qsizetype n = text.size();
    qsizetype i = 0;
    QString message;
    while (i < n) {
        const qsizetype quote = std::find(in + i, in + n, kQuote) - in;
        out.append(in + i, quote - i);
        if (quote == n)
            break;
        const qsizetype close = text.indexOf(kQuote, quote + 1);
        if (close < 0) {
            message = QStringLiteral("Missing quote");
            break;
        }
        out += close == quote + 1 ? kEmptyPlaceholder : kLiteralPlaceholder;
        i = close + 1;
    }
    text = out;
    return message;
}

QString RemoveAllLiterals(QString &text)
{
    QString out;
    bool inLiteral = false;
    const qsizetype last = text.size() - 1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == kQuote) {
            if (!inLiteral && i > 0 && text.at(i - 1) != kAmpersand) {
                text.clear();
                return {};
            }
            if (inLiteral && i < last && text.at(i + 1) != kAmpersand) {
                text.clear();
                return {};
            }
            inLiteral = !inLiteral;
            continue;
        }
        if (inLiteral)
            continue;
        // The "&" that joins a literal goes with it.
        const bool joinsLiteral = c == kAmpersand
                                  && ((i > 0 && text.at(i - 1) == kQuote)
                                      || (i < last && text.at(i + 1) == kQuote));
        if (!joinsLiteral)
            out += c;
    }
    return out;
}

QString ReplaceAmpersandInQuotes(const QString &text)
{
    // The text is shared unchanged until its first "&" between quotes.
    QString out = text;
    bool inQuotes = false;
    for (qsizetype i = 0; i < out.size(); ++i) {
        const QChar c = out.at(i);
        if (c == kQuote)
            inQuotes = !inQuotes;
        else if (inQuotes && c == kAmpersand)
            out[i] = kAmpersandMarker;
    }
    return out;
}

QString RestoreAmpersand(const QString &text)
{
    QString out = text;
    out.replace(kAmpersandMarker, kAmpersand);
    return out;
}

void UCaseOutsideQuotes(QString &text)
{
    bool inQuotes = false;
    for (QChar &c : text) {
        if (!inQuotes)
            c = c.toUpper();
        if (c == kQuote)
            inQuotes = !inQuotes;
    }
}

void RemoveSpaces(QString &text) { removeSpaces(text, true); }

void RemoveSpaces2(QString &text) { removeSpaces(text, false); }

void MIDCommas4Spaces(QString &text)
{
    const qsizetype mid = text.toUpper().indexOf(QLatin1String("MID("));
    if (mid < 0)
        return;
    qsizetype from = mid + 4;  // first character of the first argument
    if (from < text.size() && text.at(from) == kQuote) {
        const qsizetype close = text.indexOf(kQuote, from + 1);
        if (close < 0 || close + 1 >= text.size() || text.at(close + 1) != kBlank)
            return;
        from = close + 1;
    }
    QString out = text.left(from);
    bool inside = true;
    for (qsizetype i = from; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char(')'))
            inside = false;
        else if (startsWithMidCall(text, i))
            inside = true;
        // A run of blanks and commas is one separator: "S, 1" and "S , 1" separate as
        // "S,1" and "S 1" do.
        if (inside && (c == kBlank || c == QLatin1Char(','))) {
            if (!out.endsWith(QLatin1Char(',')))
                out += QLatin1Char(',');
            continue;
        }
        out += c;
    }
    text = out;
}

void MIDSpaces4Commas(QString &text)
{
    QString out = text;
    bool inside = false;
    bool inQuotes = false;
    int turned = 0;
    for (qsizetype i = 0; i < out.size(); ++i) {
        const QChar c = out.at(i);
        if (startsWithMidCall(out, i))
            inside = true;
        else if (c == QLatin1Char(')'))
            inside = false;
        else if (c == QLatin1Char(',') && inside && !inQuotes) {
            out[i] = kBlank;
            ++turned;
        }
        if (c == kQuote)
            inQuotes = !inQuotes;
    }
    if (turned % 2 == 0)
        text = out;
}

QString ReplaceString(const QString &text, int first, int last, const QString &replacement)
{
    const QStringView view(text);
    const qsizetype leftLen = first - 1 <= 0 ? 0 : std::min<qsizetype>(first - 1, view.size());
    const qsizetype rightFrom = last < 0 ? 0 : last;  // position last + 1, 0-based
    const QStringView right = rightFrom >= view.size() ? QStringView() : view.mid(rightFrom);
    const qsizetype total = leftLen + replacement.size() + right.size();
    if (total == 0)
        return Left(text, first - 1) + replacement + Mid(text, last + 1);
    QString out;
    out.reserve(total);
    out.append(view.left(leftLen));
    out.append(replacement);
    out.append(right);
    return out;
}

bool InstrOperator(const QString &text)
{
    for (const QChar c : text)
        if (IsOperator(c))
            return true;
    return false;
}

bool IsCondOperator(QChar c)
{
    return c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('=') || c == kBlank;
}

bool IsSeqDelimiter(QChar c) { return c == QLatin1Char(',') || c == QLatin1Char('-'); }

int InStr1(int start, const QString &text, const QString &search)
{
    if (text.trimmed().isEmpty() || search.trimmed().isEmpty())
        return 0;
    const int at = InStr(start, text, search);
    if (at == 0)
        return 0;
    return BetweenQuotes(text, at) ? -at : at;
}

int InStrRev1(const QString &text, const QString &search, int start)
{
    if (text.trimmed().isEmpty() || search.trimmed().isEmpty())
        return 0;
    const int at = InStrRev(text, search, start);
    if (at == 0)
        return 0;
    return BetweenQuotes(text, at) ? -at : at;
}

bool IsSubstring(const QString &text, int first, int last)
{
    const QChar before = CharAt(text, first - 1);
    const QChar after = CharAt(text, last + 1);
    return (!before.isNull() && IsVarName(QStringView(&before, 1)))
           || (!after.isNull() && IsVarName(QStringView(&after, 1)));
}

QString ReplaceCondOperators(const QString &term)
{
    const int n = Len(term);
    if (n < 3)
        return term;
    QString out;
    out += term.at(0);
    for (int i = 2; i <= n - 1; ++i) {
        const QChar c = CharAt(term, i);
        const QChar p = CharAt(term, i - 1);
        const QChar next = CharAt(term, i + 1);
        if (c == QLatin1Char('=')) {
            if (BetweenQuotes(term, i - 1))
                out += p;  // the previous character doubles: kept as it stands
            else if (IsCondOperator(p)) {
                if (p == QLatin1Char('<'))
                    out += kLessEqualMarker;
                else if (p == QLatin1Char('>'))
                    out += kGreaterEqualMarker;
            } else if (!IsCondOperator(next))
                out += c;
        } else if (c == QLatin1Char('>')) {
            if (IsCondOperator(p)) {
                if (p == QLatin1Char('<'))
                    out += kNotEqualMarker;
                else if (p == QLatin1Char('='))
                    out += kGreaterEqualMarker;
            } else if (!IsCondOperator(next))
                out += c;
        } else if (c == QLatin1Char('<')) {
            if (IsCondOperator(p)) {
                if (p == QLatin1Char('='))
                    out += kLessEqualMarker;
            } else if (!IsCondOperator(next))
                out += c;
        } else {
            out += c;
        }
    }
    out += term.at(n - 1);
    return out;
}

void ReplacevbCrLf(QString &text) { text.replace(kCrLf, QStringLiteral("~")); }

} // namespace macro
