#include "spell/word_lookup.h"

namespace spell {

namespace {

// The code point at i and how many UTF-16 units it takes.
char32_t CodePointAt(const QString &text, qsizetype i, int *units)
{
    const QChar c = text.at(i);
    if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
        *units = 2;
        return QChar::surrogateToUcs4(c, text.at(i + 1));
    }
    *units = 1;
    return c.unicode();
}

bool IsWordCharacter(char32_t c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

bool IsJoiner(char32_t c)
{
    return c == U'\'' || c == U'\u2019' || c == U'-';
}

bool AllDigits(const QString &text, const WordSpan &w)
{
    for (qsizetype i = w.start; i < w.start + w.length; ++i)
        if (!text.at(i).isDigit() && !IsJoiner(text.at(i).unicode()))
            return false;
    return true;
}

QString DropLeadingBlank(const QString &text)
{
    return text.startsWith(QLatin1Char(' ')) ? text.mid(1) : text;
}

} // namespace

QList<WordSpan> FindWords(const QString &text)
{
    QList<WordSpan> words;
    VisitWords(text, [&words](const WordSpan &w) { words << w; });
    return words;
}

void VisitWords(const QString &text, const std::function<void(const WordSpan &)> &visit)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n) {
        int units = 1;
        if (!IsWordCharacter(CodePointAt(text, i, &units))) {
            i += units;
            continue;
        }
        const qsizetype start = i;
        qsizetype end = i;  // behind the last word character
        while (i < n) {
            const char32_t c = CodePointAt(text, i, &units);
            if (IsWordCharacter(c)) {
                i += units;
                end = i;
            } else if (IsJoiner(c) && i + units < n) {
                int next = 1;
                if (!IsWordCharacter(CodePointAt(text, i + units, &next)))
                    break;
                i += units;
            } else {
                break;
            }
        }
        const WordSpan w{start, end - start};
        if (!AllDigits(text, w))
            visit(w);
        i = end;
    }
}

StepLookup LookUpStep(platform::SpellChecker &checker, const QString &text)
{
    const QString base = DropLeadingBlank(text);
    struct Unknown {
        WordSpan span;
        QStringList rows;
    };
    QList<Unknown> unknown;
    qsizetype rows = 0;
    StepLookup result;
    VisitWords(base, [&](const WordSpan &w) {
        const QString word = base.mid(w.start, w.length);
        if (checker.isCorrect(word))
            return;
        result.allKnown = false;
        Unknown u{w, checker.suggestions(word)};
        rows = qMax(rows, u.rows.size());
        unknown << u;
    });
    for (qsizetype k = 0; k < rows; ++k) {
        QString row = base;
        // From the back, so that the spans in front stay where they are.
        for (auto u = unknown.crbegin(); u != unknown.crend(); ++u) {
            if (!u->rows.isEmpty())
                row.replace(u->span.start, u->span.length, u->rows.at(qMin(k, u->rows.size() - 1)));
        }
        if (!result.suggestions.contains(row))
            result.suggestions << row;
    }
    return result;
}

} // namespace spell
