// Documents in the text box: open, save, save as, the prompts, captions, printing
// decisions and the macro statements' loader, on files in a temporary folder.
#include "document_fixture.h"

#include "reader/documents.h"
#include "reader/rtf_reader.h"
#include "shell/condensed_path.h"

#include <QFileDevice>

using namespace reader;
using shell::app;

namespace {
const char *const kOpenDialog =
    "open Open a Text File|Text & XML Files (*.txt;*.rtf;*.xml;*.doc)|*.txt;*.rtf;*.xml;*.doc";
} // namespace

TEST(DocumentNames, RichWordAndSiblingNames)
{
    EXPECT_TRUE(IsRichTextFile("/a/b.RTF"));
    EXPECT_TRUE(IsRichTextFile("/a/b.rtf"));
    EXPECT_TRUE(IsRichTextFile("/a/bRtf"));  // only the last three characters count
    EXPECT_FALSE(IsRichTextFile("/a/b.txt"));
    EXPECT_TRUE(IsWordFile("/a/B.DOC"));
    EXPECT_FALSE(IsWordFile("/a/b.docx"));
    EXPECT_EQ(WordTextSibling("/a/B.DOC"), "/a/B.txt");
    EXPECT_EQ(QtFileFilter("Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml"),
              "Text & XML Files (*.txt *.rtf *.xml)");
    EXPECT_EQ(QtFileFilter("Text|*.txt|All|*.*"), "Text (*.txt);;All (*.*)");
}

TEST(DocumentNames, CaptionCondensesLongPaths)
{
    EXPECT_EQ(DocumentCaption(""), "Sonamark - Text-To-Speech Reader");
    EXPECT_EQ(DocumentCaption("/home/u/a.txt"), "Sonamark - /home/u/a.txt");
    const QString longPath = QStringLiteral("/home/user/documents/projects/2026/reports/quarterly/summary-final.txt");
    EXPECT_EQ(DocumentCaption(longPath), "Sonamark - /home/user/documents/projects/2026/reports/../summary-final.txt");
    // No separator at all: the head is half the width and the rest follows "..".
    EXPECT_EQ(shell::CondensedPath(QString(12, 'x'), 10), "xxxxx..xxxxxxx");
}

TEST(DocumentNames, PlainFilesAreReadWithAnyLineBreakAndWrittenWithCrLf)
{
    EXPECT_EQ(PlainTextOfFile("one\r\ntwo\r\n"), "one\ntwo");
    EXPECT_EQ(PlainTextOfFile("one\ntwo\n"), "one\ntwo");
    EXPECT_EQ(PlainTextOfFile("one\rtwo"), "one\ntwo");
    EXPECT_EQ(PlainFileBytes("one\ntwo"), "one\r\ntwo\r\n");
    // Bytes from the original platform: not UTF-8, read as Windows-1252.
    EXPECT_EQ(PlainTextOfFile("caf\xe9 \x93q\x94"), QString::fromUtf8("café “q”"));
    EXPECT_TRUE(LooksBinary(QByteArray("PK\x03\x04\0\0", 6)));
}

TEST_F(DocumentTest, OpenLoadsPlainTextAndSetsTheFile)
{
    writeFile("a.txt", "Hello\r\nworld\r\n");
    box.openAnswers = {path("a.txt")};
    mnuFileLoad_Click();
    EXPECT_EQ(box.dialogs, QStringList{kOpenDialog});
    EXPECT_EQ(box.box, "Hello\nworld");
    EXPECT_EQ(app().CurrentFile, path("a.txt"));
    EXPECT_FALSE(app().TextDirty);
    EXPECT_EQ(box.caption, DocumentCaption(path("a.txt")));
    // Saving unchanged text does nothing at all, not even rewrite the file.
    writeFile("a.txt", "changed elsewhere");
    mnuFileSave_Click();
    EXPECT_EQ(readFile("a.txt"), "changed elsewhere");
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    // A change is written back with the file's own line breaks.
    box.box = QStringLiteral("Hello\nthere");
    txtSpeech_Change();
    ASSERT_TRUE(app().TextDirty);
    mnuFileSave_Click();
    EXPECT_EQ(readFile("a.txt"), "Hello\r\nthere\r\n");
    EXPECT_FALSE(app().TextDirty);
}

TEST_F(DocumentTest, TextThatNeverCameFromAFileIsNeverDirty)
{
    box.box = QStringLiteral("typed");
    txtSpeech_Change();
    EXPECT_FALSE(app().TextDirty);
    cmdClear_Click();
    EXPECT_FALSE(app().TextDirty);
    EXPECT_EQ(box.box, "");
}

TEST_F(DocumentTest, OpenAsksToSaveADirtyFileFirst)
{
    writeFile("a.txt", "old\r\n");
    writeFile("b.txt", "other\r\n");
    app().CurrentFile = path("a.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("new");
    fx.messages.answers = {1};
    box.openAnswers = {path("b.txt")};
    mnuFileLoad_Click();
    EXPECT_EQ(messages().first(), "Save: Save changes to current file?");
    EXPECT_EQ(readFile("a.txt"), "new\r\n");
    EXPECT_EQ(box.box, "other");
    EXPECT_EQ(app().CurrentFile, path("b.txt"));
    // No to the question, then a cancelled dialog: the Boolean text becomes the file.
    app().CurrentFile = path("c.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("kept");
    fx.messages.answers = {-1};
    mnuFileLoad_Click();
    EXPECT_EQ(app().CurrentFile, "True");
    EXPECT_EQ(box.box, "kept");
    EXPECT_EQ(readFile("c.txt"), "<missing>");
}

TEST_F(DocumentTest, RichTextFileLoadsRichAndSavesAsRtfThatReadsBack)
{
    writeFile("r.RTF", "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0 Hello {\\b world}\\par}");
    box.openAnswers = {path("r.RTF")};
    mnuFileLoad_Click();
    ASSERT_TRUE(box.richLoaded);
    EXPECT_EQ(box.box, "Hello world");
    EXPECT_EQ(app().CurrentFile, path("r.RTF"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    box.saveAnswers = {path("out.rtf")};  // what was read is written back, bold and all
    mnuFileSaveAs_Click();
    const QByteArray bytes = readFile("out.rtf");
    ASSERT_TRUE(bytes.startsWith("{\\rtf1"));
    EXPECT_TRUE(bytes.endsWith("}\r\n"));
    QString error;
    const RichDocument back = ReadRtf(bytes, &error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(back.plainText(), "Hello world");
    ASSERT_EQ(back.paragraphs.size(), 1);
    EXPECT_TRUE(back.paragraphs[0].runs.last().format.bold);
}

TEST_F(DocumentTest, WordFileGoesThroughTheReaderAndSavesBesideIt)
{
    writeFile("Report.DOC", "binary word file");
    word.text = QStringLiteral("Quarterly report\r\n\r\n");
    box.openAnswers = {path("Report.DOC")};
    mnuFileLoad_Click();
    EXPECT_EQ(word.read, QStringList{path("Report.DOC")});
    EXPECT_EQ(box.box, "Quarterly report");
    EXPECT_EQ(app().CurrentFile, path("Report.txt"));
    EXPECT_EQ(box.caption, DocumentCaption(path("Report.txt")));
    box.box += QStringLiteral(" 2026");
    txtSpeech_Change();
    mnuFileSave_Click();
    EXPECT_EQ(readFile("Report.txt"), "Quarterly report 2026\r\n");
    EXPECT_EQ(readFile("Report.DOC"), "binary word file");
}

TEST_F(DocumentTest, FilesThatCannotBeOpenedLeaveTheBoxAlone)
{
    const auto openOver = [&](const QString &name) {
        SCOPED_TRACE(name.toStdString());
        fx.errors.reports.clear();
        fx.messages.shown.clear();
        box.box = QStringLiteral("previous");
        box.openAnswers = {path(name)};
        mnuFileLoad_Click();
        EXPECT_EQ(box.box, "previous");
    };
    writeFile("fake.rtf", "just words");  // not RTF at all
    app().CurrentFile = path("x.txt");
    openOver("fake.rtf");
    EXPECT_EQ(app().CurrentFile, "");
    EXPECT_EQ(box.caption, "Sonamark - Text-To-Speech Reader");
    // A file that cannot be read goes to the failure report under the routine's name.
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("mnuFileLoad_Click"));
    EXPECT_TRUE(fx.errors.reports[0].contains(QLatin1String(kRtfNotRtfMessage)));

    writeFile("bin.txt", QByteArray("\x7f" "ELF\x02\x01\x01\0\0\0", 10));
    openOver("bin.txt");
    EXPECT_EQ(app().CurrentFile, "");
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("The file " + path("bin.txt")
                                              + " could not be opened: The file does not hold text."));

    openOver("gone.txt");  // a missing file ends quietly
    EXPECT_TRUE(fx.errors.reports.isEmpty());

    writeFile("a.doc", "x");
    word.error = QStringLiteral("a.doc is not a Word Document.");
    openOver("a.doc");
    EXPECT_EQ(app().CurrentFile, "");
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("a.doc is not a Word Document."));

    word.present = false;  // no reader at all
    word.read.clear();
    app().CurrentFile = path("keep.txt");
    openOver("a.doc");
    EXPECT_EQ(messages(), QStringList{"MS Word Missing: Cannot load DOC file, MS Word not installed."});
    EXPECT_EQ(app().CurrentFile, path("keep.txt"));
    EXPECT_TRUE(word.read.isEmpty());
}

TEST_F(DocumentTest, SaveWithoutFileGoesToSaveAsAndConfirmsOverwrite)
{
    writeFile("exists.txt", "old\r\n");
    box.box = QStringLiteral("pasted");
    box.saveAnswers = {path("exists.txt"), path("exists.txt")};
    fx.messages.answers = {-1};
    mnuFileSave_Click();
    EXPECT_EQ(messages(), QStringList{"Save File: This file already exists. Overwrite this file?"});
    EXPECT_EQ(readFile("exists.txt"), "old\r\n");
    EXPECT_EQ(app().CurrentFile, "");
    fx.messages.answers = {1};
    mnuFileSave_Click();
    EXPECT_EQ(readFile("exists.txt"), "pasted\r\n");
    EXPECT_EQ(messages().last(), "File Saved: File has been saved to " + path("exists.txt"));
    EXPECT_EQ(app().CurrentFile, path("exists.txt"));
    EXPECT_EQ(box.caption, DocumentCaption(path("exists.txt")));
    EXPECT_EQ(box.dialogs.first(), "save Save File|Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml");
}

TEST_F(DocumentTest, SaveOfBlankTextSaysThereIsNone)
{
    box.box = QStringLiteral(" \n ");
    mnuFileSave_Click();
    mnuFileSaveAs_Click();
    EXPECT_EQ(messages(), (QStringList{"No Text: No text to save.", "No Text: No text to save."}));
    EXPECT_TRUE(box.dialogs.isEmpty());
}

TEST_F(DocumentTest, SaveIntoAReadOnlyFolderKeepsTheFileAndTheChanges)
{
    writeFile("a.txt", "old\r\n");
    app().CurrentFile = path("a.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("new");
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    mnuFileSave_Click();
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (readFile("a.txt") == "new\r\n")
        GTEST_SKIP() << "running with rights that write any folder";
    EXPECT_EQ(readFile("a.txt"), "old\r\n");
    EXPECT_TRUE(app().TextDirty);
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("mnuFileSave_Click"));
    EXPECT_TRUE(fx.errors.reports[0].contains("The file could not be saved to " + path("a.txt")));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"a.txt"});  // nothing left beside it
}

TEST_F(DocumentTest, SaveWhereNothingCanBeCreatedKeepsTheChanges)
{
    // No file can be created under /proc, not even by root.
    app().CurrentFile = QStringLiteral("/proc/sonamark-document.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("new");
    mnuFileSave_Click();
    EXPECT_TRUE(app().TextDirty);
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("The file could not be saved to /proc/sonamark-document.txt"));
    // Save As to such a place says so too and keeps the current file.
    app().CurrentFile = path("a.txt");
    box.saveAnswers = {QStringLiteral("/proc/other.rtf")};
    mnuFileSaveAs_Click();
    ASSERT_EQ(fx.errors.reports.size(), 2);
    EXPECT_TRUE(fx.errors.reports[1].contains("mnuFileSaveAs_Click"));
    EXPECT_EQ(app().CurrentFile, path("a.txt"));
}

TEST_F(DocumentTest, PasteAsksToSaveAndForgetsTheFile)
{
    writeFile("a.txt", "old\r\n");
    app().CurrentFile = path("a.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("edited");
    fx.clipboard.content = QStringLiteral("from the clipboard");
    fx.messages.answers = {1};
    cmdPaste_Click();
    EXPECT_EQ(messages(), QStringList{"Save: Save changes to current file?"});
    EXPECT_EQ(readFile("a.txt"), "edited\r\n");
    EXPECT_EQ(box.box, "from the clipboard");
    EXPECT_EQ(app().CurrentFile, "");
    EXPECT_FALSE(app().TextDirty);
    EXPECT_EQ(speechView.caption, "Sonamark - Text-To-Speech Reader");
}

TEST_F(DocumentTest, PrintAsksAboutTheSelection)
{
    box.box = QStringLiteral("one two three");
    // Nothing selected: "Print all the text?"; No prints nothing.
    fx.messages.answers = {-1};
    mnuFilePrint_Click();
    EXPECT_EQ(messages(), QStringList{"Print Text: Print all the text?"});
    EXPECT_TRUE(box.dialogs.isEmpty());
    // A selection: Yes prints it, No falls back to the whole text, Cancel stops.
    box.select(4, 3);
    fx.messages.answers = {1};
    mnuFilePrint_Click();
    fx.messages.answers = {-1, 1};
    mnuFilePrint_Click();
    fx.messages.answers = {-2};
    mnuFilePrint_Click();
    EXPECT_EQ(box.dialogs, (QStringList{"print selection", "print all"}));
    EXPECT_EQ(messages().mid(1), (QStringList{"Print Text: Print selected text?", "Print Text: Print selected text?",
                                              "Print Text: Print all the text?", "Print Text: Print selected text?"}));
}

TEST_F(DocumentTest, PrintMessagesForEmptyTextAndFailure)
{
    mnuFilePrint_Click();
    PrintFile();
    EXPECT_EQ(messages(), (QStringList{"Print: No text to print.", "Print: No text in file to print."}));
    box.box = QStringLiteral("jack's dog");
    box.printResult = {PrintOutcome::Failed, QStringLiteral("printer is out of paper")};
    fx.messages.answers = {1};
    PrintFile();
    EXPECT_EQ(messages().mid(2), QStringList{"Print Text: Print all 3 words of text?"});
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("The text could not be printed: printer is out of paper"));
}

TEST_F(DocumentTest, MacroLoaderSavesFirstThenLoads)
{
    writeFile("a.txt", "old\r\n");
    writeFile("b.xml", "<x>b</x>\n");
    app().CurrentFile = path("a.txt");
    app().TextDirty = true;
    box.box = QStringLiteral("changed");
    EXPECT_EQ(LoadFile2Reader(path("b.xml")), "");
    EXPECT_EQ(readFile("a.txt"), "changed\r\n");
    EXPECT_EQ(box.box, "<x>b</x>");
    EXPECT_EQ(app().CurrentFile, path("b.xml"));
    EXPECT_FALSE(app().TextDirty);
    EXPECT_EQ(box.caption, DocumentCaption(path("b.xml")));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(DocumentTest, MacroLoaderReportsFaultsAsText)
{
    EXPECT_EQ(LoadFile2Reader(path("gone.txt")), "Error loading file " + path("gone.txt"));
    writeFile("bin.txt", QByteArray("\0\1\2", 3));
    EXPECT_EQ(LoadFile2Reader(path("bin.txt")), "Error loading file " + path("bin.txt"));
    writeFile("a.doc", "x");
    word.present = false;
    EXPECT_EQ(LoadFile2Reader(path("a.doc")), "Cannot load DOC file, MS Word not installed.");
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}
