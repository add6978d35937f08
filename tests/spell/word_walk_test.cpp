// The word walk of the spell window on the real en_US and de_DE dictionaries: where it
// stops, what it offers, what it looks up, and what the user's text becomes.
#include "spell_fixture.h"

#include "shell/on_top_message.h"

namespace {

const QString kCommitQuestion = QStringLiteral("Spell check completed. Commit the changes?\r\n");
const QString kCopied = QStringLiteral("Spell check completed. Changes have been copied to the clipboard.\r\n");

struct StopCase {
    const char *name;
    const char *text;
    QStringList stops;  // the selected text at each stop, Ignore pressed at each
};

class WalkStops : public SpellTest, public ::testing::WithParamInterface<StopCase> {};

TEST_P(WalkStops, StopsAtEachUnknownWordWithItsSelection)
{
    const StopCase &c = GetParam();
    open(QString::fromUtf8(c.text));
    EXPECT_EQ(ignoreAll(), c.stops);
    EXPECT_TRUE(spell::spellState().SpellDone);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WalkStops,
    ::testing::Values(
        StopCase{"FirstWordMisspelled", "Teh cat sat", {"Teh"}},
        StopCase{"PunctuationStaysOutside", "He said (helo), and \"wrld\".", {"(helo", "\"wrld"}},
        StopCase{"FullyPunctuationIsSkipped", "one -- two ?! three", {}},
        StopCase{"LineEndInsideAStep", "Good mornin\r\nwrld today", {"mornin\r\nwrld"}},
        StopCase{"LineEndBetweenKnownWords", "Good morning\r\nworld today", {}},
        StopCase{"HotKeyWord", "Open the &Fiel menu", {"&Fiel"}},
        StopCase{"HotKeyFirstWord", "&Fiel menu", {"&Fiel"}},
        StopCase{"RepeatedMisspellingStopsOnce", "see wrld and wrld and wrld here", {"wrld"}},
        StopCase{"CapitalsMakeANewWord", "see wrld and Wrld", {"wrld", "Wrld"}},
        StopCase{"TextBeginningWithABlank", " helo world", {"helo"}},
        StopCase{"LastWordWithoutBlank", "all is wrld", {"wrld"}},
        StopCase{"TrailingBlank", "all is wrld ", {"wrld"}},
        StopCase{"NonAsciiLettersAreLetters", "the naïve café wrld", {"naïve", "café", "wrld"}}),
    [](const ::testing::TestParamInfo<StopCase> &info) { return std::string(info.param.name); });

TEST_F(SpellTest, OneWordWithoutBlankEndsAtOnceWithoutLookUp)
{
    fakes.messages.answers = {shell::MsgNo};
    open(QStringLiteral("wrld"));
    EXPECT_EQ(checker.lookups(), 0);
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, kCommitQuestion);
    EXPECT_TRUE(spell::spellState().SpellCancelled);
}

TEST_F(SpellTest, CommonWordsAreSkippedOnlyAsTheFirstWord)
{
    open(QStringLiteral("the end of the day"));
    EXPECT_TRUE(logic.closing());
    // "the" opens the text and is one of the common words; " the" later carries its blank.
    EXPECT_EQ(checker.checks.value(QStringLiteral("the")), 1);
    EXPECT_EQ(checker.checks.value(QStringLiteral("of")), 1);
    EXPECT_EQ(checker.checks.value(QStringLiteral("end")), 1);
    EXPECT_EQ(checker.checks.value(QStringLiteral("day")), 1);
}

TEST_F(SpellTest, TextOfOnlyCommonWordsAsksForNoSuggestionsAndOffersTheCommit)
{
    fakes.messages.answers = {shell::MsgYes};
    open(QStringLiteral("a in the it with for is i of to get be not"));
    EXPECT_EQ(checker.checks.value(QStringLiteral("a")), 0);
    EXPECT_TRUE(checker.suggests.isEmpty());
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, kCommitQuestion);
    EXPECT_EQ(box.text(), QStringLiteral("a in the it with for is i of to get be not"));
}

TEST_F(SpellTest, RepeatedMisspellingIsLookedUpOnce)
{
    open(QStringLiteral("see wrld and wrld and wrld here"));
    ignoreAll();
    EXPECT_EQ(checker.suggests.value(QStringLiteral("wrld")), 1);
    EXPECT_EQ(checker.checks.value(QStringLiteral("and")), 1);
}

TEST_F(SpellTest, StopShowsTheWordItsSuggestionsAndTheFirstInChangeTo)
{
    open(QStringLiteral("Teh cat sat"));
    EXPECT_EQ(view.found, QStringLiteral("Teh"));
    EXPECT_TRUE(view.rows.contains(QStringLiteral("The")));
    EXPECT_EQ(view.selectedRow, 0);
    EXPECT_EQ(view.changeTo, view.rows.first());
    EXPECT_TRUE(view.rowsEnabled);
    EXPECT_TRUE(view.changeEnabled);
    EXPECT_TRUE(view.ignoreEnabled);
    EXPECT_EQ(view.dictionary, QStringLiteral("English (United States) - en_US"));
}

TEST_F(SpellTest, SuggestionsKeepThePunctuationInFrontAndTheLineEnd)
{
    open(QStringLiteral("He said (helo), and"));
    EXPECT_TRUE(view.rows.contains(QStringLiteral("(hello"))) << view.rows.join(QLatin1Char('|')).toStdString();
    logic.cmdIgnore_Click();
    EXPECT_TRUE(logic.closing());
}

TEST_F(SpellTest, ChangeAcrossALineEndKeepsIt)
{
    fakes.messages.answers = {shell::MsgYes};
    open(QStringLiteral("Good mornin\r\nworld today"));
    EXPECT_EQ(view.selected(), QStringLiteral("mornin\r\nworld"));
    ASSERT_FALSE(view.rows.isEmpty());
    EXPECT_EQ(view.rows.first(), QStringLiteral("morning\r\nworld"));
    logic.cmdChange_Click();
    EXPECT_EQ(box.text(), QStringLiteral("Good morning\r\nworld today"));
}

TEST_F(SpellTest, WordWithNoSuggestionOffersItselfToBeTypedOver)
{
    open(QStringLiteral("see qxzqxzq here"));
    EXPECT_EQ(view.rows, QStringList{spell::kNoSuggestion});
    EXPECT_FALSE(view.rowsEnabled);
    EXPECT_EQ(view.changeTo, QStringLiteral("qxzqxzq"));
    logic.lstCorrect_Click(0);  // the "(No Suggestion)" row changes nothing
    EXPECT_EQ(view.changeTo, QStringLiteral("qxzqxzq"));
}

TEST_F(SpellTest, HotKeyCharacterIsTakenOutForTheLookUpAndPutBackInTheRows)
{
    fakes.messages.answers = {shell::MsgYes};
    open(QStringLiteral("Open the &Fiel menu"));
    EXPECT_EQ(logic.hotKeyCharacter(), QStringLiteral("F"));
    EXPECT_EQ(checker.suggests.value(QStringLiteral("Fiel")), 1);
    EXPECT_EQ(view.found, QStringLiteral(" Fiel"));
    ASSERT_TRUE(view.rows.contains(QStringLiteral("&File")));
    logic.lstCorrect_Click(int(view.rows.indexOf(QStringLiteral("&File"))));
    logic.cmdChange_Click();
    EXPECT_EQ(box.text(), QStringLiteral("Open the &File menu"));
}

TEST_F(SpellTest, AddHotKeyAndRemoveHotKey)
{
    open(QStringLiteral("Open the &Fiel menu"));
    EXPECT_EQ(logic.AddHotKey(QStringLiteral("Fine")), QStringLiteral("&Fine"));
    EXPECT_EQ(logic.AddHotKey(QStringLiteral("elf")), QStringLiteral("elf"));  // no "F" in it
    QString word = QStringLiteral("a&b&c");
    logic.RemoveHotKey(word);
    EXPECT_EQ(word, QStringLiteral("ab&c"));
}

TEST_F(SpellTest, FixWordCutsTrailingPunctuationAndRemembersTheWord)
{
    open(QString());
    qsizetype start = 5;
    QString word = QStringLiteral(" (word),");
    logic.FixWord(start, word);
    EXPECT_EQ(word, QStringLiteral(" (word"));
    EXPECT_EQ(start, 5);
    EXPECT_EQ(logic.wordList().size(), spell::kCommonWords.size() + 2);
    EXPECT_EQ(logic.wordList().last(), QString());  // the last entry stays free
    word = QStringLiteral(" (word)!");
    logic.FixWord(start, word);
    EXPECT_TRUE(word.isEmpty());  // seen
    word = QStringLiteral("--");
    logic.FixWord(start, word);
    EXPECT_TRUE(word.isEmpty());
}

TEST_F(SpellTest, ThreeMisspellingsChangedIgnoredAndTypedOverCommitIntoTheBox)
{
    shell::app().CurrentFile = QStringLiteral("/tmp/notes.txt");
    fakes.messages.answers = {shell::MsgYes};
    open(QStringLiteral("I recieve the speling of becuase today."));
    EXPECT_EQ(view.selected(), QStringLiteral("recieve"));
    logic.cmdChange_Click();  // its first suggestion, "receive"
    EXPECT_EQ(view.selected(), QStringLiteral("speling"));
    logic.cmdIgnore_Click();
    EXPECT_EQ(view.selected(), QStringLiteral("becuase"));
    changeTo(QStringLiteral("because"));
    EXPECT_EQ(box.text(), QStringLiteral("I receive the speling of because today."));
    EXPECT_TRUE(shell::app().TextDirty);
    EXPECT_TRUE(spell::spellState().SpellChanged);
    EXPECT_EQ(spell::spellState().SpellText, QStringLiteral("I recieve the speling of becuase today."));
}

TEST_F(SpellTest, ShorterChangeDoesNotCarryTheWalkPastTheNextWord)
{
    open(QStringLiteral("Helllllo wrld again"));
    EXPECT_EQ(view.selected(), QStringLiteral("Helllllo"));
    changeTo(QStringLiteral("Hi"));
    EXPECT_EQ(view.selected(), QStringLiteral("wrld"));
    EXPECT_EQ(logic.text(), QStringLiteral("Hi wrld again"));
    EXPECT_EQ(view.shown, logic.text());
}

TEST_F(SpellTest, CommitReplacesTheSelectionAndLeavesTheNewTextSelected)
{
    box.loadPlainText(QStringLiteral("Start. Teh cat. End."));
    box.select(7, 8);
    fakes.messages.answers = {shell::MsgYes};
    open(box.selectedText());
    changeTo(QStringLiteral("The"));
    EXPECT_EQ(box.text(), QStringLiteral("Start. The cat. End."));
    EXPECT_EQ(box.selStart(), 7);
    EXPECT_EQ(box.selLength(), 8);
    EXPECT_FALSE(shell::app().TextDirty);  // no file: nothing to mark
}

TEST_F(SpellTest, NoToTheCommitLeavesTheBoxAsItWas)
{
    box.loadPlainText(QStringLiteral("Teh cat"));
    fakes.messages.answers = {shell::MsgNo};
    open(box.text());
    changeTo(QStringLiteral("The"));
    EXPECT_EQ(box.text(), QStringLiteral("Teh cat"));
    EXPECT_TRUE(spell::spellState().SpellCancelled);
    EXPECT_EQ(view.unloads, 1);
}

TEST_F(SpellTest, CancelLeavesTheBoxAsItWas)
{
    box.loadPlainText(QStringLiteral("Teh cat"));
    open(box.text());
    logic.cmdCancel_Click();
    EXPECT_EQ(box.text(), QStringLiteral("Teh cat"));
    EXPECT_TRUE(spell::spellState().SpellCancelled);
    EXPECT_TRUE(spell::spellState().SpellDone);
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
    logic.cmdIgnore_Click();  // a late click does nothing
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
}

TEST_F(SpellTest, ClipboardResultGoesOnTheClipboardAndIntoTheClipStore)
{
    fakes.clipboard.content = QStringLiteral("see wrld");
    open(QStringLiteral("see wrld"), false);
    changeTo(QStringLiteral("world"));
    EXPECT_EQ(fakes.clipboard.content, QStringLiteral("see world"));
    EXPECT_EQ(reader::clipStore().ClipStore[0], QStringLiteral("see world"));
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, kCopied);
    EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("Spell Check"));
    EXPECT_TRUE(box.text().isEmpty());
}

TEST_F(SpellTest, StartWalksTheSameTextAgainWithTheWordListKept)
{
    open(QStringLiteral("see wrld and helo"));
    EXPECT_EQ(view.selected(), QStringLiteral("wrld"));
    changeTo(QStringLiteral("world"));
    EXPECT_EQ(view.selected(), QStringLiteral("helo"));
    logic.cmdStart_Click();
    EXPECT_FALSE(view.startEnabled);
    EXPECT_EQ(logic.text(), QStringLiteral("see wrld and helo"));
    // Every word was seen by the first walk, so the second finds nothing to stop at.
    EXPECT_TRUE(logic.closing());
    EXPECT_EQ(checker.suggests.value(QStringLiteral("helo")), 1);
}

TEST_F(SpellTest, ChildFormDepthCountsTheOpenWindow)
{
    open(QStringLiteral("see wrld"));
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    logic.cmdCancel_Click();
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}

TEST_F(SpellTest, NoDictionaryClosesTheWindowWithAMessage)
{
    platform::HunspellChecker none(QStringList{QStringLiteral("/nonexistent")});
    platform::services().spell = &none;
    open(QStringLiteral("see wrld"));
    EXPECT_EQ(view.unloads, 1);
    EXPECT_TRUE(spell::spellState().SpellCancelled);
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_TRUE(fakes.messages.shown[0].text.startsWith(QStringLiteral("WARNING no spelling dictionary")));
    EXPECT_EQ(view.timerStarts, 0);
}

TEST_F(SpellTest, LongWalkLetsEventsRunAndCancelStopsIt)
{
    QString text;
    for (int i = 0; i < 200000; ++i)
        text += QStringLiteral("word ");
    text += QStringLiteral("wrld");
    spell::spellState().SpellText = text;
    logic.setYieldIntervalMs(0);
    logic.Form_Load();
    int pumps = 0;
    view.onProcessEvents = [&] {
        if (++pumps == 3)
            logic.cmdCancel_Click();
    };
    logic.Timer1_Timer();
    EXPECT_EQ(pumps, 3);  // nothing more once cancelled
    EXPECT_TRUE(logic.closing());
    EXPECT_FALSE(view.busy);
    EXPECT_TRUE(spell::spellState().SpellCancelled);
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
    EXPECT_EQ(checker.suggests.value(QStringLiteral("wrld")), 0);
}

TEST_F(SpellTest, ClicksDuringTheWalkAreIgnored)
{
    const QString text = QStringLiteral("word one two three wrld end");
    spell::spellState().SpellText = text;
    logic.setYieldIntervalMs(0);
    logic.Form_Load();
    int pumps = 0;
    view.onProcessEvents = [&] {
        ++pumps;
        EXPECT_TRUE(logic.walking());
        EXPECT_TRUE(view.busy);
        logic.cmdIgnore_Click();
        logic.cmdStart_Click();
        logic.cmdChange_Click();
    };
    logic.Timer1_Timer();
    EXPECT_GE(pumps, 3);
    EXPECT_FALSE(view.busy);
    EXPECT_EQ(view.selected(), QStringLiteral("wrld"));
    EXPECT_EQ(logic.text(), text);
}

TEST_F(SpellTest, GermanDictionaryFollowsTheVoice)
{
    if (!hunspell.dictionaries().contains(QStringLiteral("de_DE")))
        GTEST_SKIP() << "hunspell-de-de is not installed";
    shell::settings().VoiceOpt = QStringLiteral("German");
    fakes.messages.answers = {shell::MsgYes};
    open(QStringLiteral("Das ist ein Tset mit der Straße, übrigens."));
    EXPECT_EQ(hunspell.dictionary(), QStringLiteral("de_DE"));
    EXPECT_EQ(view.dictionary, QStringLiteral("German (Germany) - de_DE"));
    EXPECT_EQ(view.selected(), QStringLiteral("Tset"));
    EXPECT_TRUE(view.rows.contains(QStringLiteral("Test")));
    changeTo(QStringLiteral("Test"));
    EXPECT_EQ(box.text(), QStringLiteral("Das ist ein Test mit der Straße, übrigens."));
    EXPECT_EQ(checker.checks.value(QStringLiteral("Straße")), 1);
}

} // namespace
