#include "search/file_pattern.h"

namespace search {

namespace {

// Iterative wildcard match with one backtrack point for the last "*": linear for the
// usual patterns, never recursive. T is a sequence of comparable characters.
template <typename T, typename Eq>
bool wildMatch(const T *pattern, qsizetype plen, const T *name, qsizetype nlen, T star, T one, Eq eq)
{
    qsizetype p = 0, n = 0, starAt = -1, resume = 0;
    while (n < nlen) {
        if (p < plen && pattern[p] == star) {
            starAt = p++;
            resume = n;
        } else if (p < plen && (pattern[p] == one || eq(pattern[p], name[n]))) {
            ++p;
            ++n;
        } else if (starAt >= 0) {
            p = starAt + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < plen && pattern[p] == star)
        ++p;
    return p == plen;
}

inline char asciiLower(char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; }

bool isAscii(const QByteArray &bytes)
{
    for (const char c : bytes)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

} // namespace

FilePattern::FilePattern(const QString &pattern)
{
    for (const QString &piece : pattern.split(QLatin1Char(';'))) {
        const QString wildcard = piece.trimmed();
        if (!wildcard.isEmpty())
            m_wildcards << wildcard;
    }
    if (m_wildcards.isEmpty())
        m_wildcards << QStringLiteral("*.*");
    for (const QString &wildcard : m_wildcards) {
        Wildcard part;
        part.text = wildcard.toCaseFolded();
        part.takesHidden = wildcard.startsWith(QLatin1Char('.'));
        part.takesAll = wildcard == QLatin1String("*") || wildcard == QLatin1String("*.*");
        const QByteArray utf8 = wildcard.toUtf8();
        if (isAscii(utf8)) {
            part.ascii.reserve(utf8.size());
            for (const char c : utf8)
                part.ascii += asciiLower(c);
        } else {
            m_allAscii = false;
        }
        m_parts << part;
    }
}

bool FilePattern::matches(const QString &name) const
{
    if (name.isEmpty())
        return false;
    const bool hidden = name.startsWith(QLatin1Char('.'));
    const QList<uint> folded = name.toCaseFolded().toUcs4();
    for (const Wildcard &part : m_parts) {
        if (hidden && !part.takesHidden)
            continue;
        if (part.takesAll)
            return true;
        const QList<uint> pattern = part.text.toUcs4();
        if (wildMatch<uint>(pattern.constData(), pattern.size(), folded.constData(), folded.size(), uint('*'),
                            uint('?'), [](uint a, uint b) { return a == b; }))
            return true;
    }
    return false;
}

bool FilePattern::matches(const QByteArray &name) const
{
    if (name.isEmpty())
        return false;
    if (!m_allAscii || !isAscii(name))
        return matches(QString::fromLocal8Bit(name));
    const bool hidden = name.startsWith('.');
    for (const Wildcard &part : m_parts) {
        if (hidden && !part.takesHidden)
            continue;
        if (part.takesAll)
            return true;
        if (wildMatch<char>(part.ascii.constData(), part.ascii.size(), name.constData(), name.size(), '*', '?',
                            [](char a, char b) { return a == asciiLower(b); }))
            return true;
    }
    return false;
}

} // namespace search
