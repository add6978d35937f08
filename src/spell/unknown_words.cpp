#include "spell/unknown_words.h"

#include "spell/word_lookup.h"

#include <QHash>
#include <optional>

namespace spell {

qsizetype FindUnknownWords(const QString &text, platform::SpellChecker &checker,
                           const std::function<void(const UnknownWord &)> &report, qsizetype suggestLimit)
{
    qsizetype suggested = 0;
    // What each distinct word came to: nothing when known, else its suggestions.
    QHash<QString, std::optional<QStringList>> seen;
    qsizetype count = 0;
    qsizetype line = 1;
    qsizetype column = 1;   // of the character at scanned
    qsizetype scanned = 0;  // lines and columns are counted up to here
    VisitWords(text, [&](const WordSpan &w) {
        for (; scanned < w.start; ++scanned) {
            const QChar c = text.at(scanned);
            if (c == QLatin1Char('\n')) {
                ++line;
                column = 1;
            } else if (!c.isLowSurrogate()) {
                ++column;
            }
        }
        const QString word = text.mid(w.start, w.length);
        auto it = seen.find(word);
        if (it == seen.end()) {
            std::optional<QStringList> verdict;
            if (!checker.isCorrect(word)) {
                const bool ask = suggestLimit < 0 || suggested < suggestLimit;
                verdict = ask ? checker.suggestions(word) : QStringList();
                suggested += ask ? 1 : 0;
            }
            it = seen.insert(word, verdict);
        }
        if (!it.value())
            return;
        UnknownWord unknown;
        unknown.line = line;
        unknown.column = column;
        unknown.word = word;
        unknown.suggestions = *it.value();
        ++count;
        if (report)
            report(unknown);
    });
    return count;
}

QString UnknownWordLine(const UnknownWord &u)
{
    return QStringLiteral("%1:%2\t%3\t%4").arg(u.line).arg(u.column).arg(u.word, u.suggestions.join(QStringLiteral(", ")));
}

} // namespace spell
