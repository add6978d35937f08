// Pronunciation exceptions: the file, the rewrite and its undo, the menu entries and the
// editor dialog's list logic.
#include "document_fixture.h"

#include "reader/exceptions_editor.h"


using namespace reader;

namespace {

using Pairs = QList<ExceptionRec>;

void setPairs(const Pairs &pairs) { exceptionsState().Exceptions = pairs; }

QString made(QString text)
{
    MakeExceptions(text);
    return text;
}

class ExceptionsTest : public DocumentTest {};

} // namespace

TEST_F(ExceptionsTest, RewriteFollowsWordBoundariesAndOrder)
{
    // Nothing happens while the list is empty or the toggle is off.
    EXPECT_EQ(made("Dr. Who"), "Dr. Who");
    setPairs({{"Dr", "Doctor"}});
    exceptionsState().ExceptionsOn = false;
    EXPECT_EQ(made("Dr. Who"), "Dr. Who");
    EXPECT_FALSE(exceptionsState().ExceptionsMade);
    exceptionsState().ExceptionsOn = true;
    struct Row { Pairs pairs; const char *in; const char *out; };
    const Row rows[] = {
        {{{"Dr", "Doctor"}}, "Dr. Drive dr", "Doctor. Drive Doctor"},
        {{{"Dr", "Doctor"}}, "Call Dr", "Call Doctor"},         // rest is empty: replaced
        {{{"Dr", "Doctor"}}, "addr book", "addr book"},         // letter before
        {{{"Dr", "Doctor"}}, "Dr2 is here", "Doctor2 is here"},  // digits are no letters
        {{{"Dr", "Doctor"}}, "Dré", "Doctoré"},                  // nor are accents
        {{{"a", "b"}, {"b", "a"}}, "x a y", "x a y"},           // in order: the second undoes the first
        {{{"abc", "x"}}, "abc abc", "x abc"},  // the scan steps by the word's length, past the second word
        {{{"a", "the"}}, "a a", "the the"},
        {{{"&", "+"}}, "&&", "+&"},  // the search start reaches the last character and the loop ends
        {{{"bb", "x"}}, "bb b", "x b"},
        {{{"New York", "Noo Yawk"}}, "I love new york.", "I love Noo Yawk."},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.in);
        setPairs(row.pairs);
        EXPECT_EQ(made(QString::fromUtf8(row.in)), QString::fromUtf8(row.out));
    }
    EXPECT_TRUE(exceptionsState().ExceptionsMade);
}

TEST_F(ExceptionsTest, ChangeHoldingItsOwnWordEnds)
{
    setPairs({{"ab", "ab ab"}});  // each change puts a new "ab" where the scan looks next
    const QString text = made("ab");
    EXPECT_TRUE(text.startsWith("ab ab"));
    EXPECT_LT(text.size(), 100);
}

TEST_F(ExceptionsTest, ChainedPairsRewriteEachOthersChangesInFull)
{
    setPairs({{"Dr", "Doc"}, {"Doc", "Doctor"}});
    EXPECT_EQ(made("Dr Who and doc Brown"), "Doctor Who and Doctor Brown");
    // Each pair fans a word out into four: two words become eight, then thirty-two.
    setPairs({{"a", "b b b b"}, {"b", "c c c c"}});
    EXPECT_EQ(made("a a"), QStringList(32, "c").join(' '));
    // A change with its own word inside is put in once where the word was found, and
    // the word is still rewritten further on.
    setPairs({{"US", "the US"}});
    EXPECT_EQ(made("US and US"), "the US and the US");
}

TEST_F(ExceptionsTest, PairsFeedingEachOtherStayBounded)
{
    // Each pair multiplies the words by eight: a thousand words would become hundreds
    // of millions after six pairs.
    Pairs pairs;
    for (int i = 0; i < 3; ++i)
        pairs << ExceptionRec{"a", "b b b b b b b b"} << ExceptionRec{"b", "a a a a a a a a"};
    setPairs(pairs);
    const QString in = QStringList(1000, "a").join(' ');
    const QString out = made(in);
    EXPECT_GT(out.size(), 8 * in.size());
    EXPECT_LT(out.size(), 200000);
    EXPECT_TRUE(out.startsWith("a a a a a a a a a a a"));  // the second pair has run
}

TEST_F(ExceptionsTest, ShortTextsMayGrowIntoLongChangesAndLaterPairsReadThem)
{
    // A word may stand for a phrase far longer than sixteen times the text.
    const QString phrase = QStringList(100, "International Business").join(' ');
    setPairs({{"IBM", phrase}});
    EXPECT_EQ(made("IBM"), phrase);
    // A later pair matches an earlier change in any case, in and beyond Latin-1.
    setPairs({{"Ärger", "ΣΟΦΙΑ"}, {"σοφια", "Wisdom"}, {"WISDOM", "sagesse"}});
    EXPECT_EQ(made("Ärger! ärger"), "sagesse! sagesse");
}

TEST_F(ExceptionsTest, FuzzedListOfSelfRepeatingChangesStaysBounded)
{
    // An 88-byte "exceptions.txt" of the kind fuzzing found (it took the rewrite minutes),
    // each change holding its word five times, run as the fuzz target runs it: read, made
    // and unmade on the target's sentence.
    QFile file(QStringLiteral(SONAMARK_READER_TEST_DATA "/exceptions_blowup.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    ASSERT_EQ(content.size(), 88);
    bool ok = false;
    setPairs(ParseExceptions(QString::fromLatin1(content), &ok));
    ASSERT_TRUE(ok);
    ASSERT_EQ(exceptionsState().ExceptionCount(), 3);
    const QString in = "The quick brown fox, Sonamark's reader; jumps over 12 lazy dogs.\r\nNew line: fox!";
    QString text = in;
    MakeExceptions(text);
    // Each pair turns every "fox" that stood in the text before it into five: the two
    // of the sentence become 250, and the rest of the sentence stays.
    EXPECT_EQ(text.count("fox"), 250);
    EXPECT_LT(text.size(), 1200);
    EXPECT_TRUE(text.startsWith("The quick brown fox fox fox fox fox!"));
    EXPECT_TRUE(text.contains(", Sonamark's reader; jumps over 12 lazy dogs.\r\nNew line: fox"));
    const qsizetype madeSize = text.size();
    UnmakeText(text);
    EXPECT_LT(text.size(), madeSize);
    EXPECT_TRUE(text.contains(", Sonamark's reader; jumps over 12 lazy dogs.\r\nNew line: fox"));
}

TEST_F(ExceptionsTest, FileFormatReadsQuotedPairsAndSkipsEmptyFields)
{
    bool ok = false;
    const Pairs pairs = ParseExceptions(QStringLiteral("\"Dr\",\"Doctor\"\r\n\"\",\"x\"\r\n\r\n"
                                                       "\"say \"hi\"\",\"shy\"\r\nSt, Saint\r\n"),
                                        &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(pairs, (Pairs{{"Dr", "Doctor"}, {"say \"hi\"", "shy"}, {"St", "Saint"}}));
    EXPECT_EQ(FormatExceptions({{"Dr", "Doctor"}, {"say \"hi\"", "shy"}}),
              "\"Dr\",\"Doctor\"\r\n\"say \"hi\"\",\"shy\"\r\n");
}

TEST_F(ExceptionsTest, FileFaultsSaySo)
{
    GetExceptions();  // missing: an empty list, no message
    EXPECT_EQ(exceptionsState().ExceptionCount(), 0);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    const QString error = "File Error: Error reading from Exceptions.txt file. Values not loaded.";
    // A bad line keeps what was read before it.
    writeFile("exceptions.txt", "\"Dr\",\"Doctor\"\r\n\"broken\r\n\"St\",\"Saint\"\r\n");
    GetExceptions();
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"Dr", "Doctor"}}));
    EXPECT_EQ(messages(), QStringList{error});
    // A folder in the file's place cannot be read as a file, whatever the user's rights.
    exceptionsState().reset();
    ASSERT_TRUE(QFile::remove(path("exceptions.txt")));
    ASSERT_TRUE(QDir(dir.path()).mkdir("exceptions.txt"));
    GetExceptions();
    EXPECT_EQ(exceptionsState().ExceptionCount(), 0);
    EXPECT_EQ(messages(), (QStringList{error, error}));
    // No file can be created under /proc, not even by root.
    shell::app().AppFolder = QStringLiteral("/proc/");
    setPairs({{"Dr", "Doctor"}});
    EXPECT_FALSE(Save2ExceptionFile());
    EXPECT_EQ(messages().last(), "Save File: Error writing to Exceptions.txt file. Values not saved.");
}

TEST_F(ExceptionsTest, ApplyRewritesTheWholeBoxAndMarksTheFileDirty)
{
    setPairs({{"Dr", "Doctor"}});
    box.box = QStringLiteral("DR Smith");
    shell::app().CurrentFile = path("a.txt");
    mnuExceptionsApply_Click();
    EXPECT_EQ(box.box, "Doctor Smith");
    EXPECT_TRUE(shell::app().TextDirty);
    EXPECT_EQ(box.events, 1);
    // Undo puts back the stored spelling: the capitals are gone.
    shell::app().TextDirty = false;
    mnuExceptionsUndo_Click();
    EXPECT_EQ(box.box, "Dr Smith");
    EXPECT_TRUE(shell::app().TextDirty);
    EXPECT_FALSE(exceptionsState().ExceptionsMade);
    // A second undo has nothing to undo.
    box.box = QStringLiteral("Doctor Who");
    mnuExceptionsUndo_Click();
    EXPECT_EQ(box.box, "Doctor Who");
}

TEST_F(ExceptionsTest, ApplyOnASelectionRewritesItAndSelectsTheResult)
{
    setPairs({{"Dr", "Doctor"}});
    box.box = QStringLiteral("   ");  // blank text: nothing at all
    mnuExceptionsApply_Click();
    EXPECT_EQ(box.rewrites, 0);
    EXPECT_EQ(box.events, 0);
    box.box = QStringLiteral("Dr A and Dr B");
    box.select(9, 4);  // "Dr B"
    mnuExceptionsApply_Click();
    EXPECT_EQ(box.box, "Dr A and Doctor B");
    EXPECT_EQ(box.selectionStart, 9);
    EXPECT_EQ(box.selectionLength, 8);
    EXPECT_FALSE(shell::app().TextDirty);  // no file: never dirty
}

TEST_F(ExceptionsTest, ApplyingAWordStoresItAndSavesTheList)
{
    EXPECT_EQ(ApplyException("Dr", "  "), -1);  // an empty field stores nothing
    EXPECT_EQ(readFile("exceptions.txt"), "<missing>");
    EXPECT_EQ(fx.messages.shown.size(), 1);
    setPairs({{"zed", "zee"}, {"Dr", "Doctor"}});
    // A known word has its change replaced in place; the row is that of the sorted list.
    EXPECT_EQ(ApplyException("DR", "Dokter"), 0);
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"zed", "zee"}, {"Dr", "Dokter"}}));
    EXPECT_EQ(readFile("exceptions.txt"), "\"zed\",\"zee\"\r\n\"Dr\",\"Dokter\"\r\n");
    // A new word stores the list sorted.
    EXPECT_EQ(ApplyException("St", "Saint"), 1);
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"Dr", "Dokter"}, {"St", "Saint"}, {"zed", "zee"}}));
    EXPECT_EQ(readFile("exceptions.txt"), "\"Dr\",\"Dokter\"\r\n\"St\",\"Saint\"\r\n\"zed\",\"zee\"\r\n");
    exceptionsState().reset();  // the saved file loads back to the same list
    GetExceptions();
    EXPECT_EQ(exceptionsState().ExceptionCount(), 3);
}

TEST_F(ExceptionsTest, DeleteAsksAndRemovesTheSelectedRow)
{
    EXPECT_FALSE(DeleteException(0));  // an empty list: nothing, not even a message
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    setPairs({{"zed", "zee"}, {"Dr", "Doctor"}, {"apt", "apartment"}});
    EXPECT_FALSE(DeleteException(-1));
    EXPECT_EQ(messages().last(), "Remove Exception: Select a word to remove from the 'Word To Change' list.");
    fx.messages.answers = {-1};
    EXPECT_FALSE(DeleteException(1));
    EXPECT_EQ(exceptionsState().ExceptionCount(), 3);
    fx.messages.answers = {1};
    EXPECT_TRUE(DeleteException(1));  // "Dr" in the sorted list
    EXPECT_EQ(messages().last(), "Remove Exception: Are you sure you want to remove this word?");
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"apt", "apartment"}, {"zed", "zee"}}));
    EXPECT_EQ(readFile("exceptions.txt"), "\"apt\",\"apartment\"\r\n\"zed\",\"zee\"\r\n");
}

TEST_F(ExceptionsTest, NewExceptionForAKnownWordAsksFirst)
{
    setPairs({{" Dr ", "Doctor"}});
    EXPECT_TRUE(ConfirmNewException("Smith"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    fx.messages.answers = {-1};
    EXPECT_FALSE(ConfirmNewException("dr"));
    EXPECT_EQ(messages(),
              QStringList{"Already Exists: Word \"dr\" is already in the exceptions list. Edit this word anyway?"});
    fx.messages.answers = {1};
    EXPECT_TRUE(ConfirmNewException("dr"));
}

TEST_F(ExceptionsTest, TrialSpeechUsesTheChosenVoiceWithoutHighlight)
{
    fx.speech.calls.clear();
    speechVars().VoiceCount = 2;
    speechVars().VoiceIndex[1] = 5;
    speechVars().HighlightOn = true;
    SpeakTrial("Doctor", 1);
    EXPECT_EQ(fx.speech.calls, (QStringList{"voice 5", "speak 2 ", "speak 9 Doctor"}));
    EXPECT_FALSE(speechVars().HighlightOn);
    fx.speech.calls.clear();
    SpeakTrial("", 1);
    EXPECT_TRUE(fx.speech.calls.isEmpty());
}
