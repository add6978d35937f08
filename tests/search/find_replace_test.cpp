// The search rules of frmFind on a plain text standing in for the box.
#include "search/find_replace.h"

#include <gtest/gtest.h>

using search::BoxFind;
using search::FindDirection;

namespace {

// A text box reduced to its text and selection.
class TextStandIn : public search::FindTarget {
public:
    explicit TextStandIn(QString text, int caret = 0) : m_text(std::move(text)), m_start(caret) {}
    QString text() const override { return m_text; }
    int selStart() const override { return m_start; }
    int selLength() const override { return m_length; }
    QString selText() const override { return m_text.mid(m_start, m_length); }
    void select(int start, int length) override
    {
        m_start = qBound(0, start, int(m_text.size()));
        m_length = qBound(0, length, int(m_text.size()) - m_start);
    }
    void setSelText(const QString &t) override
    {
        m_text.replace(m_start, m_length, t);
        m_start += int(t.size());
        m_length = 0;
        ++writes;
    }
    int writes = 0;

private:
    QString m_text;
    int m_start = 0;
    int m_length = 0;
};

TEST(BoxFindTest, ForwardFromStartToTheEnd)
{
    const QString text = QStringLiteral("one two one two");
    EXPECT_EQ(BoxFind(text, QStringLiteral("two"), 0, std::nullopt, 0), 4);
    EXPECT_EQ(BoxFind(text, QStringLiteral("two"), 5, std::nullopt, 0), 12);
    EXPECT_EQ(BoxFind(text, QStringLiteral("two"), 13, std::nullopt, 0), -1);
    EXPECT_EQ(BoxFind(text, QStringLiteral("TWO"), 0, std::nullopt, 0), 4);
    EXPECT_EQ(BoxFind(text, QStringLiteral("TWO"), 0, std::nullopt, search::kFindMatchCase), -1);
    EXPECT_EQ(BoxFind(text, QString(), 0, std::nullopt, 0), -1);
    EXPECT_EQ(BoxFind(text, QStringLiteral("one"), 99, std::nullopt, 0), -1);
}

TEST(BoxFindTest, BackwardsWhenTheStartIsBehindTheEnd)
{
    const QString text = QStringLiteral("ab ab ab");
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 8, 0, 0), 6);
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 7, 0, 0), 3);  // the hit must end by the start
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 1, 0, 0), -1);
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 8, 4, 0), 6);
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 5, 4, 0), -1);
}

TEST(BoxFindTest, ForwardWithinARange)
{
    const QString text = QStringLiteral("xx ab ab");
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 0, 5, 0), 3);
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 0, 4, 0), -1);
    EXPECT_EQ(BoxFind(text, QStringLiteral("ab"), 0, 0, 0), -1);
}

TEST(BoxFindTest, WholeWordSkipsHitsInsideWords)
{
    const QString text = QStringLiteral("cat concat cat_x cats (cat)");
    EXPECT_EQ(BoxFind(text, QStringLiteral("cat"), 1, std::nullopt, search::kFindWholeWord), 23);
    EXPECT_EQ(BoxFind(text, QStringLiteral("cat"), 0, std::nullopt, search::kFindWholeWord), 0);
    EXPECT_EQ(BoxFind(text, QStringLiteral("cat"), 1, std::nullopt, 0), 7);
    EXPECT_EQ(BoxFind(text, QStringLiteral("CAT"), int(text.size()), 0, search::kFindWholeWord), 23);
    EXPECT_EQ(BoxFind(text, QStringLiteral("CAT"), int(text.size()), 0, 6), -1);
}

TEST(FindTextTest, DirectionsAndOptionsFromTheControls)
{
    EXPECT_EQ(search::DirectionOf(QStringLiteral("All")), FindDirection::All);
    EXPECT_EQ(search::DirectionOf(QStringLiteral("Down")), FindDirection::Down);
    EXPECT_EQ(search::DirectionOf(QStringLiteral("Up")), FindDirection::Up);
    EXPECT_EQ(search::DirectionOf(QStringLiteral("all")), FindDirection::Up);
    EXPECT_EQ(search::FindOptions(false, false), 0);
    EXPECT_EQ(search::FindOptions(true, false), 2);
    EXPECT_EQ(search::FindOptions(false, true), 4);
    EXPECT_EQ(search::FindOptions(true, true), 6);
}

TEST(FindTextTest, AForwardSearchSkipsTheCaretsOwnFirstCharacter)
{
    TextStandIn box(QStringLiteral("word word"), 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("word"), FindDirection::Down, 0), 5);
    box.select(5, 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("word"), FindDirection::Down, 0), -1);  // no wrap
    // Only the wrap finds the hit at the caret itself.
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("word"), FindDirection::All, 0), 5);
    box.select(3, 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("wor"), FindDirection::All, 0), 5);
    box.select(6, 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("word"), FindDirection::All, 0), 5);
    // With "All", a match at character 0 alone is never found by wrapping.
    TextStandIn first(QStringLiteral("word and more"), 4);
    EXPECT_EQ(search::FindTextFrom(first, QStringLiteral("word"), FindDirection::All, 0), -1);
}

TEST(FindTextTest, AllWrapsToCharacterOne)
{
    TextStandIn box(QStringLiteral("xab ab"), 4);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("ab"), FindDirection::All, 0), 1);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("ab"), FindDirection::Down, 0), -1);
}

TEST(FindTextTest, UpFindsTheNearestHitBeforeTheCaretAndDoesNotWrap)
{
    TextStandIn box(QStringLiteral("ab ab ab"), 8);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("ab"), FindDirection::Up, 0), 6);
    box.select(6, 2);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("ab"), FindDirection::Up, 0), 3);
    box.select(0, 2);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("ab"), FindDirection::Up, 0), -1);
}

TEST(FindTextTest, MatchCaseAndWholeWordNarrowTheSearch)
{
    TextStandIn box(QStringLiteral("- Cat cat category"), 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("cat"), FindDirection::Down, 0), 2);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("cat"), FindDirection::Down, search::kFindMatchCase), 6);
    box.select(7, 0);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("cat"), FindDirection::Down, 0), 10);
    EXPECT_EQ(search::FindTextFrom(box, QStringLiteral("cat"), FindDirection::All, search::kFindWholeWord), 2);
}

TEST(ReplaceTest, ReplaceSelectedComparesInEitherCaseAndSelectsTheNewText)
{
    TextStandIn box(QStringLiteral("say Hello now"));
    box.select(4, 5);
    EXPECT_TRUE(search::ReplaceSelected(box, QStringLiteral("hello"), QStringLiteral("goodbye")));
    EXPECT_EQ(box.text(), QStringLiteral("say goodbye now"));
    EXPECT_EQ(box.selStart(), 4);
    EXPECT_EQ(box.selLength(), 7);
    EXPECT_FALSE(search::ReplaceSelected(box, QStringLiteral("hello"), QStringLiteral("x")));
    box.select(0, 0);
    EXPECT_FALSE(search::ReplaceSelected(box, QStringLiteral("hello"), QStringLiteral("x")));
    EXPECT_FALSE(search::ReplaceSelected(box, QString(), QStringLiteral("x")));  // nothing selected, nothing searched
    EXPECT_EQ(box.text(), QStringLiteral("say goodbye now"));
}

// Replace All from the caret in each direction. After a wrap it stops with the first hit
// in front of where it began: from 4 in "ab ab ab ab" the hits at 6 and 9, then the wrap
// (from 2) takes 3, and that hit is the last.
TEST(ReplaceTest, ReplaceAllInEveryDirectionAndAcrossTheWrap)
{
    const struct {
        const char *text;
        int caret;
        const char *find;
        FindDirection direction;
        int count;
        const char *after;
    } cases[] = {
        {"a-b-a-b-a", 0, "a", FindDirection::All, 3, "x-b-x-b-x"},
        {"ab ab ab ab", 4, "ab", FindDirection::All, 3, "ab x x x"},
        {"ab ab ab", 4, "ab", FindDirection::Down, 2, "ab x x"},
        {"ab ab ab", 5, "ab", FindDirection::Up, 1, "ab x ab"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        TextStandIn box(QString::fromLatin1(c.text), c.caret);
        EXPECT_EQ(search::ReplaceAll(box, QString::fromLatin1(c.find), QStringLiteral("x"), c.direction, 0), c.count);
        EXPECT_EQ(box.text(), QString::fromLatin1(c.after));
    }
}

TEST(ReplaceTest, AReplacementHoldingTheSearchTextStopsAtTheLimit)
{
    TextStandIn box(QStringLiteral("a a a a a"), 0);
    const int count = search::ReplaceAll(box, QStringLiteral("a"), QStringLiteral("aa"), FindDirection::All, 0);
    EXPECT_EQ(count, 1001);
    EXPECT_EQ(box.writes, 1001);
    EXPECT_EQ(box.text().count(QLatin1Char('a')), 5 + 1001);
}

TEST(ReplaceTest, ReplaceAllRespectsMatchCaseAndWholeWord)
{
    TextStandIn box(QStringLiteral("Cat cat cats"), 0);
    EXPECT_EQ(search::ReplaceAll(box, QStringLiteral("cat"), QStringLiteral("dog"), FindDirection::All,
                                 search::kFindMatchCase | search::kFindWholeWord),
              1);
    EXPECT_EQ(box.text(), QStringLiteral("Cat dog cats"));
}

TEST(ReplaceTest, TheReportNamesTheCount)
{
    EXPECT_EQ(search::ReplaceAllReport(0), QStringLiteral("There were no replacements made."));
    EXPECT_EQ(search::ReplaceAllReport(1), QStringLiteral("There was 1 replacement made."));
    EXPECT_EQ(search::ReplaceAllReport(1001), QStringLiteral("There were 1001 replacements made."));
}

} // namespace
