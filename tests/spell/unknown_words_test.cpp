// The unknown-word scan of sonamark-cli spell, on a dictionary of listed words.
#include "spell/unknown_words.h"
#include "spell/word_lookup.h"

#include <QHash>
#include <QSet>
#include <gtest/gtest.h>

namespace {

class ListChecker : public platform::SpellChecker {
public:
    QSet<QString> known;
    QHash<QString, int> checks, suggests;
    QStringList dictionaries() const override { return {QStringLiteral("xx")}; }
    bool useDictionary(const QString &, QString *) override { return true; }
    QString dictionary() const override { return QStringLiteral("xx"); }
    bool isCorrect(const QString &w) override
    {
        ++checks[w];
        return known.contains(w);
    }
    QStringList suggestions(const QString &w) override
    {
        ++suggests[w];
        return {w + QStringLiteral("1"), w + QStringLiteral("2")};
    }
};

QStringList Words(const QString &text)
{
    QStringList out;
    for (const spell::WordSpan &w : spell::FindWords(text))
        out << text.mid(w.start, w.length);
    return out;
}

TEST(FindWords, LettersDigitsApostrophesAndHyphensInside)
{
    EXPECT_EQ(Words(QStringLiteral("don't stop-gap 'quoted' -x- 1999 x2 a\r\nb")),
              (QStringList{"don't", "stop-gap", "quoted", "x", "x2", "a", "b"}));
    EXPECT_EQ(Words(QStringLiteral("Straße, naïve’s")), (QStringList{"Straße", "naïve’s"}));
    EXPECT_EQ(Words(QString::fromUtf8("\xf0\x9d\x90\x80" "bc d")), (QStringList{QString::fromUtf8("\xf0\x9d\x90\x80" "bc"), "d"}));
    EXPECT_TRUE(Words(QStringLiteral("-- ?! 42")).isEmpty());
}

TEST(UnknownWords, PlacesInTextOrderEachDistinctWordLookedUpOnce)
{
    ListChecker checker;
    checker.known = {QStringLiteral("good"), QStringLiteral("day")};
    const QString text = QStringLiteral("good dya\r\n  dya, good\n\xd835\xdc00x dya");
    QStringList lines;
    const qsizetype n = spell::FindUnknownWords(text, checker, [&](const spell::UnknownWord &u) {
        lines << spell::UnknownWordLine(u);
    });
    EXPECT_EQ(n, 4);
    EXPECT_EQ(lines, (QStringList{"1:6\tdya\tdya1, dya2", "2:3\tdya\tdya1, dya2",
                                  QStringLiteral("3:1\t\xd835\xdc00x\t\xd835\xdc00x1, \xd835\xdc00x2"),
                                  "3:4\tdya\tdya1, dya2"}));
    EXPECT_EQ(checker.checks.value(QStringLiteral("dya")), 1);
    EXPECT_EQ(checker.suggests.value(QStringLiteral("dya")), 1);
    EXPECT_EQ(checker.checks.value(QStringLiteral("good")), 1);
}

TEST(UnknownWords, SuggestionsStopAtTheLimit)
{
    ListChecker checker;
    QStringList lines;
    spell::FindUnknownWords(
        QStringLiteral("aa bb cc aa"), checker, [&](const spell::UnknownWord &u) { lines << spell::UnknownWordLine(u); }, 2);
    EXPECT_EQ(lines, (QStringList{"1:1\taa\taa1, aa2", "1:4\tbb\tbb1, bb2", "1:7\tcc\t", "1:10\taa\taa1, aa2"}));
    EXPECT_EQ(checker.suggests.size(), 2);
}

TEST(UnknownWords, EmptyAndWordlessTextsHaveNone)
{
    ListChecker checker;
    EXPECT_EQ(spell::FindUnknownWords(QString(), checker, nullptr), 0);
    EXPECT_EQ(spell::FindUnknownWords(QStringLiteral(" \r\n -- 12 "), checker, nullptr), 0);
    EXPECT_TRUE(checker.checks.isEmpty());
}

} // namespace
