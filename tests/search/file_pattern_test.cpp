// The file list's wildcards, one row a case.
#include "search/file_pattern.h"

#include <gtest/gtest.h>

using search::FilePattern;

namespace {

struct PatternRow {
    const char *pattern;
    const char *name;  // UTF-8
    bool matches;
};

const PatternRow kRows[] = {
    {"*.txt", "notes.txt", true},
    {"*.txt", "NOTES.TXT", true},
    {"*.TXT", "notes.txt", true},
    {"*.txt", "notes.txt.bak", false},
    {"*.txt", "txt", false},
    {"*.txt", ".txt", false},            // hidden
    {".*", ".profile", true},            // a wildcard that begins with "." takes hidden names
    {"*.*", "Makefile", true},           // every name, dot or not
    {"*.*", ".hidden", false},
    {"*", "anything.at.all", true},
    {"", "empty-pattern-is-all", true},
    {"?.txt", "a.txt", true},
    {"?.txt", "ab.txt", false},
    {"?.txt", ".txt", false},
    {"a?c", "abc", true},
    {"a?c", "ac", false},
    {"a*c", "ac", true},
    {"a*c", "abbbbc", true},
    {"a*c", "abbbbcd", false},
    {"*a*b*c*", "xxaxxbxxcxx", true},
    {"*a*b*c*", "xxaxxcxxbxx", false},
    {"*.txt;*.rtf", "story.rtf", true},
    {"*.txt; *.rtf ;", "story.RTF", true},
    {"*.txt;*.rtf", "story.doc", false},
    {"*.txt;*.rtf;*.xml;*.doc", "letter.doc", true},
    {"résumé*", "RÉSUMÉ.txt", true},     // letters beyond ASCII in either case too
    {"?.txt", "é.txt", true},            // "?" is one character, not one byte
    {"straße.txt", "STRASSE.TXT", false}, // folding keeps one letter for one
    {"[ab].txt", "a.txt", false},         // brackets are plain characters
    {"[ab].txt", "[ab].txt", true},
};

TEST(FilePatternTest, MatchesEveryRow)
{
    for (const PatternRow &row : kRows) {
        const FilePattern pattern(QString::fromUtf8(row.pattern));
        EXPECT_EQ(pattern.matches(QString::fromUtf8(row.name)), row.matches)
            << row.pattern << " on " << row.name << " (text)";
        EXPECT_EQ(pattern.matches(QByteArray(row.name)), row.matches)
            << row.pattern << " on " << row.name << " (bytes)";
    }
}

TEST(FilePatternTest, NamesThatAreNotUtf8AreMatchedAsShown)
{
    const QByteArray latin1Name("caf\xe9.txt");
    EXPECT_TRUE(FilePattern(QStringLiteral("*.txt")).matches(latin1Name));
    EXPECT_TRUE(FilePattern(QStringLiteral("caf?.txt")).matches(latin1Name));
    EXPECT_FALSE(FilePattern(QStringLiteral("*.doc")).matches(latin1Name));
}

TEST(FilePatternTest, ManyStarsOnALongNameStayFast)
{
    // A pattern that would take exponential time in a naive backtracking matcher.
    const FilePattern pattern(QStringLiteral("*a*a*a*a*a*a*a*a*a*b"));
    const QByteArray name(5000, 'a');
    EXPECT_FALSE(pattern.matches(name));
    EXPECT_FALSE(pattern.matches(QString::fromLatin1(name)));
}

TEST(FilePatternTest, KeepsTheWildcardsItWasGiven)
{
    EXPECT_EQ(FilePattern(QStringLiteral(" *.txt ;;*.rtf")).wildcards(),
              QStringList({QStringLiteral("*.txt"), QStringLiteral("*.rtf")}));
    EXPECT_EQ(FilePattern(QString()).wildcards(), QStringList{QStringLiteral("*.*")});
}

} // namespace
