// The reader statements against the recording fakes: the clipboard, the clip store, the
// reader's text box (a memory box), printing and the windows they open.
#include "engine_fixture.h"

#include "engine/reader_statements.h"
#include "reader/box_reader_text.h"
#include "reader/clip_fixture.h"
#include "reader/memory_text_box.h"
#include "spell/spell_check.h"
#include "spell/spell_state.h"

#include <QFile>
#include <QTemporaryDir>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList &list, std::ostream *os) { *os << list.join(QLatin1Char('|')).toStdString(); }
QT_END_NAMESPACE

namespace {

// A box whose prints are recorded with the text they printed.
class PrintingBox : public reader::MemoryTextBox {
public:
    QStringList printed;
    reader::PrintOutcome printText(bool) override
    {
        printed << text();
        return {reader::PrintOutcome::Printed, {}};
    }
    bool canPrint() const override { return true; }
};

class ReaderStatementTest : public MacroRunTest {
protected:
    void SetUp() override
    {
        MacroRunTest::SetUp();
        ASSERT_TRUE(dir.isValid());
        reader::clipStore().reset();
        reader::monitor().reset();
        view.clipboard = &fakes.clipboard;
        reader::SetClipView(&view);
        reader::SetTextBox(&box);
        platform::services().readerText = &readerText;
        shell::SetDelaySleeper([this](int ms) { slept += ms; });
    }
    void TearDown() override
    {
        engine::SetReaderWindows({});
        reader::SetTextBox(nullptr);
        reader::SetClipView(nullptr);
        MacroRunTest::TearDown();
    }
    QString lit(const QString &name) const { return QLatin1Char('"') + dir.filePath(name) + QLatin1Char('"'); }
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile f(dir.filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QStringList shownTexts() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fakes.messages.shown)
            out << m.title + ": " + m.text.trimmed();
        return out;
    }

    QTemporaryDir dir;
    FakeClipView view;
    PrintingBox box;
    reader::BoxReaderText readerText;
    int slept = 0;
};

TEST_F(ReaderStatementTest, SetClipPutsTextWithQuotesAndAnEmptyStringEmptiesTheClipboard)
{
    run({"[SETCLIP \"say \u00e0hi\u00e0\"]", "[GETCLIP A]", "[SETCLIP \"\"]", "[GETCLIP B]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(fakes.clipboard.written, QStringList{"say \"hi\""});
    EXPECT_EQ(var("B"), "");
    EXPECT_EQ(fakes.clipboard.content, "");
    EXPECT_GE(fakes.clipboard.clears, 2);
}

TEST_F(ReaderStatementTest, GetClipStoresTheClipboardsText)
{
    fakes.clipboard.content = "copied elsewhere";
    run({"[GETCLIP Got]", "[GETCLIP 9X]"});
    EXPECT_EQ(var("GOT"), "copied elsewhere");
    EXPECT_EQ(messages(), QStringList{"1) Line 2 Invalid variable name for [GETCLIP Var] statement"});
}

TEST_F(ReaderStatementTest, MultiClipsAreReadAndWrittenBySlotAndTheMenusFollow)
{
    reader::Add2Clips("older");
    reader::Add2Clips("newest");
    run({"[GETMULTICLIP 1 A]", "[GETMULTICLIP 2 B]", "[GETMULTICLIP 6 C]", "[T=\"exactly twenty chars\"]",
         "[SETMULTICLIP 2 T]", "[SETMULTICLIP 3 \"twenty-one characters\"]", "[GETMULTICLIP 3 D]", "[AFTER=1]"});
    EXPECT_EQ(messages(),
              QStringList{"1) Line 3 Invalid clip number (1-5) for [GETMULTICLIP n Var] statement"});
    EXPECT_EQ(var("A"), "newest");
    EXPECT_EQ(var("B"), "older");
    EXPECT_EQ(var("D"), "twenty-one characters");
    EXPECT_EQ(var("AFTER"), "1");
    EXPECT_EQ(view.visibleClipCaptions(),
              (QStringList{"1. newest", "2. exactly twenty chars", "3. twenty-one character..."}));
    EXPECT_EQ(view.clipCount.caption, "3 Clips Stored");
}

TEST_F(ReaderStatementTest, LoadClipReadsADocumentOntoTheClipboardAndGivesTheReaderBack)
{
    write("note.txt", "from a file\r\n");
    box.loadPlainText("the user's own text");
    box.select(4, 4);
    shell::app().CurrentFile = "/home/u/own.txt";
    shell::app().TextDirty = true;
    run({"[LOADCLIP " + lit("note.txt") + "]", "[LOADCLIP " + lit("none.txt") + "]", "[LOADCLIP " + lit("pic.gif") + "]"});
    EXPECT_EQ(fakes.clipboard.content, "from a file");
    EXPECT_EQ(box.text(), "the user's own text");
    EXPECT_EQ(box.selectedText(), "user");
    EXPECT_EQ(shell::app().CurrentFile, "/home/u/own.txt");
    EXPECT_TRUE(shell::app().TextDirty);
    EXPECT_EQ(messages(), (QStringList{"1) Line 2 File not found for [LOADCLIP File] statement",
                                       "2) Line 3 File not found for [LOADCLIP File] statement"}));
}

TEST_F(ReaderStatementTest, SaveClipWritesTheTextAndRefusesWhatItCannotSave)
{
    fakes.clipboard.content = "line one\nline two";
    run({"[SAVECLIP " + lit("clip.txt") + "]", "[SAVECLIP " + lit("no folder/clip.txt") + "]",
         "[SAVECLIP " + lit("clip.bmp") + "]"});
    QFile saved(dir.filePath("clip.txt"));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_EQ(saved.readAll(), "line one\r\nline two\r\n");
    EXPECT_EQ(messages(), (QStringList{"1) Line 2 Folder not found for [SAVECLIP File] statement",
                                       "2) Line 3 Error saving clipboard image to file for [SAVECLIP File] statement"}));
    fakes.clipboard.content.clear();
    run({"[SAVECLIP " + lit("empty.txt") + "]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 No text in the clipboard for [SAVECLIP File] statement"});
    EXPECT_FALSE(QFile::exists(dir.filePath("empty.txt")));
}

TEST_F(ReaderStatementTest, PrintLoadsTheFilePrintsItAndPutsTheUsersDocumentBack)
{
    write("report.txt", "printed words here\r\n");
    write("picture.png", "x");
    box.loadPlainText("mine");
    fakes.messages.answers = {1};  // Yes to "Print all 3 words of text?"
    run({"[PRINT " + lit("report.txt") + "]", "[PRINT " + lit("picture.png") + "]", "[PRINT " + lit("none.txt") + "]"});
    EXPECT_EQ(box.printed, QStringList{"printed words here"});
    EXPECT_EQ(box.text(), "mine");
    EXPECT_EQ(shownTexts(), QStringList{"Print Text: Print all 3 words of text?"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 2 Invalid file type for [PRINT File] statement",
                                       "2) Line 3 File not found for [PRINT File] statement"}));
}

TEST_F(ReaderStatementTest, PrintSelectedCopiesTheForegroundSelectionAndRestoresTheClipboard)
{
    fakes.clipboard.content = "kept clip";
    fakes.keys.onDeliver = [this](const QString &) { fakes.clipboard.content = "selected elsewhere"; };
    fakes.messages.answers = {1};
    box.loadPlainText("mine");
    run({"[PRINTSELECTED]"});
    EXPECT_EQ(fakes.keys.sent, QStringList{"SENDKEYS ^c"});
    EXPECT_EQ(slept, 1500);
    EXPECT_EQ(box.printed, QStringList{"selected elsewhere"});
    EXPECT_EQ(box.text(), "mine");
    EXPECT_EQ(fakes.clipboard.content, "kept clip");
}

TEST_F(ReaderStatementTest, PrintSelectedWithNothingSelectedSaysSoAndKeepsTheClipboard)
{
    fakes.clipboard.content = "kept clip";
    run({"[PRINTSELECTED]"});
    EXPECT_EQ(shownTexts(), QStringList{"Print Selected: No selected text to print"});
    EXPECT_TRUE(box.printed.isEmpty());
    EXPECT_EQ(fakes.clipboard.content, "kept clip");
}

TEST_F(ReaderStatementTest, MakeMp3OpensReadToFileOnTheTextWithTheNameSet)
{
    QStringList targets;
    engine::ReaderWindows windows;
    windows.readToFile = [&](const QString &target) { targets << target; };
    engine::SetReaderWindows(windows);
    run({"[MAKEMP3 " + lit("out.mp3") + "]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 No text in the TTS reader for [MAKEMP3 File] statement"});
    box.loadPlainText("Something to say.");
    run({"[MAKEMP3 " + lit("out.mp3") + "]", "[MAKEMP3 \"abort\"]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(targets, QStringList{dir.filePath("out.mp3")});
    fakes.speech.voiceList.clear();
    run({"[MAKEMP3 " + lit("out.mp3") + "]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 There are no voices installed for [MAKEMP3 File] statement"});
}

TEST_F(ReaderStatementTest, ClipOnStartsMonitoringOnceAndOffStopsIt)
{
    run({"[CLIP ON]", "[CLIP on]"});
    EXPECT_TRUE(reader::monitor().Monitoring);
    EXPECT_EQ(view.toggle, reader::kClipOn);
    run({"[CLIP OFF]"});
    EXPECT_FALSE(reader::monitor().Monitoring);
    EXPECT_EQ(view.toggle, reader::kClipOff);
    EXPECT_EQ(fakes.tray.tip, "Sonamark - Idle");
}

TEST_F(ReaderStatementTest, WindowStatementsTellWhenThereIsNoDesktop)
{
    reader::SetClipView(nullptr);
    box.loadPlainText("text");
    run({"[LISTHOTKEYS]", "[MAKEMP3 " + lit("x.mp3") + "]", "[CLIP ON]"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 1 The desktop program is needed for [LISTHOTKEYS] statement",
                                       "2) Line 2 The desktop program is needed for [MAKEMP3 File] statement",
                                       "3) Line 3 The desktop program is needed for [CLIP On/Off] statement"}));
}

} // namespace

namespace {

// A dictionary that knows every word: enough for the spell check to be available.
class AnyWordChecker : public platform::SpellChecker {
public:
    QStringList dictionaries() const override { return {QStringLiteral("en_US")}; }
    bool useDictionary(const QString &, QString *) override { return true; }
    QString dictionary() const override { return QStringLiteral("en_US"); }
    bool isCorrect(const QString &) override { return true; }
    QStringList suggestions(const QString &) override { return {}; }
};

TEST_F(ReaderStatementTest, SpellCheckModeSetsTheTrayEntryThroughItsHandler)
{
    run({"[SPELLCHECKMODE ON]", "[SPELLCHECKMODE on]"});
    EXPECT_TRUE(view.spellMode);
    run({"[SPELLCHECKMODE OFF]"});
    EXPECT_FALSE(view.spellMode);
    EXPECT_EQ(messages(), QStringList());
}

TEST_F(ReaderStatementTest, SpellCheckWithoutADictionarySaysSoAndTouchesNothing)
{
    platform::services().spell = nullptr;
    fakes.clipboard.content = "kept";
    run({"[SPELLCHECK]", "[AFTER=1]"});
    EXPECT_EQ(shownTexts(), QStringList{"Dictionary Missing: " + spell::kNoDictionaryText});
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
    EXPECT_EQ(fakes.clipboard.content, "kept");
    EXPECT_EQ(var("AFTER"), "1");
}

TEST_F(ReaderStatementTest, SpellCheckTakesTheForegroundSelectionAndLendsTheReader)
{
    AnyWordChecker checker;
    platform::services().spell = &checker;
    QStringList checked;
    spell::SetSpellWindowOpener([&] { checked << spell::spellState().SpellText + "|" + box.text(); });
    box.loadPlainText("mine");
    fakes.keys.onDeliver = [this](const QString &) { fakes.clipboard.content = "teh selection"; };
    run({"[SPELLCHECK]"});
    spell::SetSpellWindowOpener(nullptr);
    EXPECT_EQ(checked, QStringList{"teh selection|teh selection"});
    EXPECT_FALSE(spell::spellState().SpellCommit);
    EXPECT_EQ(box.text(), "mine");
    EXPECT_EQ(messages(), QStringList());

    fakes.keys.onDeliver = nullptr;
    fakes.clipboard.content = "kept";
    fakes.messages.shown.clear();
    run({"[SPELLCHECK]"});
    EXPECT_EQ(shownTexts(), QStringList{"Spell check: No selected text to spell check"});
    EXPECT_EQ(fakes.clipboard.content, "kept");
}

} // namespace
