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

TEST_F(ExceptionsTest, DoctorRewriteFollowsWordBoundaries)
{
    setPairs({{"Dr", "Doctor"}});
    EXPECT_EQ(made("Dr. Drive dr"), "Doctor. Drive Doctor");
    EXPECT_TRUE(exceptionsState().ExceptionsMade);
    EXPECT_EQ(made("Call Dr"), "Call Doctor");        // rest is empty: replaced
    EXPECT_EQ(made("addr book"), "addr book");        // letter before
    EXPECT_EQ(made("Dr2 is here"), "Doctor2 is here");  // digits are no letters
    EXPECT_EQ(made("Dré"), "Doctoré");                 // nor are accents
}

TEST_F(ExceptionsTest, NothingHappensWhenTheToggleIsOffOrTheListEmpty)
{
    EXPECT_EQ(made("Dr. Who"), "Dr. Who");
    setPairs({{"Dr", "Doctor"}});
    exceptionsState().ExceptionsOn = false;
    EXPECT_EQ(made("Dr. Who"), "Dr. Who");
    EXPECT_FALSE(exceptionsState().ExceptionsMade);
}

TEST_F(ExceptionsTest, PairsRunInOrderSoTheSecondCanUndoTheFirst)
{
    setPairs({{"a", "b"}, {"b", "a"}});
    EXPECT_EQ(made("x a y"), "x a y");
}

TEST_F(ExceptionsTest, ScanStepsByTheWordLengthNotTheChangeLength)
{
    // After "abc" became "x" the next search starts 3 behind the hit, past the second word.
    setPairs({{"abc", "x"}});
    EXPECT_EQ(made("abc abc"), "x abc");
}

TEST_F(ExceptionsTest, ChangeHoldingItsOwnWordEnds)
{
    // Each replacement puts a new "ab" where the scan looks next; the scan still ends.
    setPairs({{"ab", "ab ab"}});
    const QString text = made("ab");
    EXPECT_TRUE(text.startsWith("ab ab"));
    EXPECT_LT(text.size(), 100);
}

TEST_F(ExceptionsTest, OneCharacterWordAtTheVeryEndIsNotReached)
{
    setPairs({{"a", "the"}});
    EXPECT_EQ(made("a a"), "the the");
    // The search start moves up to the last character, and the loop ends.
    setPairs({{"&", "+"}});
    EXPECT_EQ(made("&&"), "+&");
    setPairs({{"bb", "x"}});
    EXPECT_EQ(made("bb b"), "x b");
}

TEST_F(ExceptionsTest, PhrasesMatchLikeWords)
{
    setPairs({{"New York", "Noo Yawk"}});
    EXPECT_EQ(made("I love new york."), "I love Noo Yawk.");
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

TEST_F(ExceptionsTest, MissingFileGivesAnEmptyListWithoutMessage)
{
    GetExceptions();
    EXPECT_EQ(exceptionsState().ExceptionCount(), 0);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(ExceptionsTest, BadLineKeepsWhatWasReadAndSaysSo)
{
    writeFile("exceptions.txt", "\"Dr\",\"Doctor\"\r\n\"broken\r\n\"St\",\"Saint\"\r\n");
    GetExceptions();
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"Dr", "Doctor"}}));
    EXPECT_EQ(messages(), QStringList{"Read File: Error reading from Exceptions.txt file. Values not loaded."});
}

TEST_F(ExceptionsTest, UnreadableFileSaysSo)
{
    // A folder in the file's place cannot be read as a file, whatever the user's rights.
    ASSERT_TRUE(QDir(dir.path()).mkdir("exceptions.txt"));
    GetExceptions();
    EXPECT_EQ(exceptionsState().ExceptionCount(), 0);
    EXPECT_EQ(messages(), QStringList{"Read File: Error reading from Exceptions.txt file. Values not loaded."});
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
    box.box = QStringLiteral("Dr A and Dr B");
    box.select(9, 4);  // "Dr B"
    mnuExceptionsApply_Click();
    EXPECT_EQ(box.box, "Dr A and Doctor B");
    EXPECT_EQ(box.selectionStart, 9);
    EXPECT_EQ(box.selectionLength, 8);
    EXPECT_FALSE(shell::app().TextDirty);  // no file: never dirty
}

TEST_F(ExceptionsTest, ApplyOnBlankTextDoesNothing)
{
    setPairs({{"Dr", "Doctor"}});
    box.box = QStringLiteral("   ");
    mnuExceptionsApply_Click();
    EXPECT_EQ(box.rewrites, 0);
    EXPECT_EQ(box.events, 0);
}

TEST_F(ExceptionsTest, ApplyingANewWordStoresTheListSortedAndSavesIt)
{
    setPairs({{"zed", "zee"}, {"Dr", "Doctor"}});
    EXPECT_EQ(ApplyException("St", "Saint"), 1);
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"Dr", "Doctor"}, {"St", "Saint"}, {"zed", "zee"}}));
    EXPECT_EQ(readFile("exceptions.txt"), "\"Dr\",\"Doctor\"\r\n\"St\",\"Saint\"\r\n\"zed\",\"zee\"\r\n");
    // The saved file loads back to the same list.
    exceptionsState().reset();
    GetExceptions();
    EXPECT_EQ(exceptionsState().ExceptionCount(), 3);
}

TEST_F(ExceptionsTest, ApplyingAKnownWordReplacesItsChangeInPlace)
{
    setPairs({{"zed", "zee"}, {"Dr", "Doctor"}});
    EXPECT_EQ(ApplyException("DR", "Dokter"), 0);  // row of "Dr" in the sorted list
    EXPECT_EQ(exceptionsState().Exceptions, (Pairs{{"zed", "zee"}, {"Dr", "Dokter"}}));
    EXPECT_EQ(readFile("exceptions.txt"), "\"zed\",\"zee\"\r\n\"Dr\",\"Dokter\"\r\n");
}

TEST_F(ExceptionsTest, ApplyWithAnEmptyFieldStoresNothing)
{
    EXPECT_EQ(ApplyException("Dr", "  "), -1);
    EXPECT_EQ(exceptionsState().ExceptionCount(), 0);
    EXPECT_EQ(readFile("exceptions.txt"), "<missing>");
    EXPECT_EQ(fx.messages.shown.size(), 1);
}

TEST_F(ExceptionsTest, SaveIntoAFolderWhereNothingCanBeCreatedSaysSo)
{
    // No file can be created under /proc, not even by root.
    shell::app().AppFolder = QStringLiteral("/proc/");
    exceptionsState().Exceptions = {{"Dr", "Doctor"}};
    EXPECT_FALSE(Save2ExceptionFile());
    EXPECT_EQ(messages(), QStringList{"Save File: Error writing to Exceptions.txt file. Values not saved."});
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
