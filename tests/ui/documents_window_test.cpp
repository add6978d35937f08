// The text box's document side on real widgets: printing into a PDF read back with
// pdftotext, edits that keep the formatting, the exceptions dialog and the main window's
// File and Exceptions entries.
#include "fakes/fake_services.h"
#include "reader/box_reader_text.h"
#include "reader/documents.h"
#include "reader/rtf_reader.h"
#include "reader/speech.h"
#include "reader/exceptions.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "ui/document_box.h"
#include "ui/frm_exceptions.h"
#include "ui/frm_sonamark.h"
#include "ui/speech_panel.h"
#include "ui/text_printer.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QMenuBar>
#include <QProcess>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <gtest/gtest.h>

using shell::app;

namespace {

// The text of a PDF as pdftotext reads it, or "<no pdftotext>".
QString pdfText(const QString &pdf)
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        return QStringLiteral("<no pdftotext>");
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput()).simplified();
}

struct DocumentsWindowTest : ::testing::Test {
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        app().reset();
        app().AppFolder = dir.path() + QLatin1Char('/');
        shell::settings().reset();
        reader::exceptionsState().reset();
    }
    QString path(const QString &name) const { return dir.path() + QLatin1Char('/') + name; }

    fakes::FakeServices fx;
    QTemporaryDir dir;
};

// The window's text box with the file dialogs answered from a script.
class ScriptedBox : public ui::DocumentBox {
public:
    using ui::DocumentBox::DocumentBox;
    QStringList answers;
    std::optional<QString> showOpen(const QString &, const QString &) override { return next(); }
    std::optional<QString> showSave(const QString &, const QString &) override { return next(); }

private:
    std::optional<QString> next()
    {
        if (answers.isEmpty())
            return std::nullopt;
        return answers.takeFirst();
    }
};

QByteArray readAll(const QString &name)
{
    QFile f(name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

void writeAll(const QString &name, const QByteArray &bytes)
{
    QFile f(name);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QAction *findEntry(QMenuBar *bar, const QString &menu, const QString &caption)
{
    for (QAction *top : bar->actions()) {
        if (top->text() != menu || !top->menu())
            continue;
        for (QAction *a : top->menu()->actions())
            if (a->text() == caption)
                return a;
    }
    return nullptr;
}

} // namespace

TEST_F(DocumentsWindowTest, PrintsTheWholeTextOrOnlyTheSelectionIntoAPdf)
{
    QTextEdit box;
    box.setPlainText(QStringLiteral("The quick brown fox\nsecond paragraph here"));
    const auto print = [&](bool selectionOnly, const QString &file) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        return ui::PrintTextBox(&box, selectionOnly, printer);
    };
    // A place that cannot be written fails, and says where.
    const reader::PrintOutcome failed = print(false, QStringLiteral("/proc/sonamark-print.pdf"));
    EXPECT_EQ(failed.kind, reader::PrintOutcome::Failed);
    EXPECT_TRUE(failed.error.contains("/proc/sonamark-print.pdf")) << failed.error.toStdString();
    if (pdfText({}) == "<no pdftotext>")
        GTEST_SKIP() << "pdftotext is not installed";
    ASSERT_EQ(print(false, path("all.pdf")).kind, reader::PrintOutcome::Printed);
    QString text = pdfText(path("all.pdf"));
    EXPECT_TRUE(text.contains("The quick brown fox")) << text.toStdString();
    EXPECT_TRUE(text.contains("second paragraph here")) << text.toStdString();
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(10);
    cursor.setPosition(19, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    ASSERT_EQ(print(true, path("sel.pdf")).kind, reader::PrintOutcome::Printed);
    text = pdfText(path("sel.pdf"));
    EXPECT_TRUE(text.startsWith("brown fox")) << text.toStdString();
    EXPECT_FALSE(text.contains("quick")) << text.toStdString();
    EXPECT_FALSE(text.contains("second")) << text.toStdString();
    // The box itself is untouched by printing.
    EXPECT_EQ(box.toPlainText(), "The quick brown fox\nsecond paragraph here");
    EXPECT_EQ(box.textCursor().selectedText(), "brown fox");
}

TEST_F(DocumentsWindowTest, ExceptionsRewriteKeepsTheFormatOfTheRestAndTheSelection)
{
    QWidget window;
    QTextEdit edit(&window);
    ui::DocumentBox box(&window, &edit);
    edit.setHtml(QStringLiteral("<p>See <i>Dr</i> Smith at <b>noon</b></p>"));
    reader::exceptionsState().Exceptions = {{"Dr", "Doctor"}};
    reader::mnuExceptionsApply_Click();
    EXPECT_EQ(edit.toPlainText(), "See Doctor Smith at noon");
    QTextCursor probe(edit.document());
    probe.setPosition(22);  // inside "noon"
    EXPECT_EQ(probe.charFormat().fontWeight(), QFont::Bold);
    reader::mnuExceptionsUndo_Click();
    EXPECT_EQ(edit.toPlainText(), "See Dr Smith at noon");
    probe.setPosition(18);
    EXPECT_EQ(probe.charFormat().fontWeight(), QFont::Bold);
    // A replaced selection leaves the new text selected.
    edit.setPlainText(QStringLiteral("Dr A\nand Dr B"));
    box.select(5, 8);  // "and Dr B" on the second line
    reader::mnuExceptionsApply_Click();
    EXPECT_EQ(edit.toPlainText(), "Dr A\nand Doctor B");
    EXPECT_EQ(box.selectedText(), "and Doctor B");
}

TEST_F(DocumentsWindowTest, ExceptionsDialogAddsSortedAndSaves)
{
    reader::exceptionsState().Exceptions = {{"zed", "zee"}, {"Dr", "Doctor"}};
    {
        ui::frmExceptions dialog(nullptr, -1);
        EXPECT_EQ(app().ChildFormDepth, 1);
        EXPECT_EQ(dialog.windowTitle(), "Sonamark - Word Exceptions");
        ASSERT_EQ(dialog.cmbWords->count(), 2);
        EXPECT_EQ(dialog.cmbWords->itemText(0), "Dr");
        EXPECT_EQ(dialog.cmbChanges->itemText(0), "Doctor");
        dialog.cmbWords->setEditText(QStringLiteral("St"));
        dialog.cmbChanges->setEditText(QStringLiteral("Saint"));
        dialog.cmdApply->click();
        ASSERT_EQ(dialog.cmbWords->count(), 3);
        EXPECT_EQ(dialog.cmbWords->itemText(1), "St");
        EXPECT_EQ(dialog.cmbChanges->itemText(1), "Saint");
        EXPECT_EQ(dialog.cmbWords->currentIndex(), 1);
        // Delete asks, and on Yes the row goes from both lists and the file.
        fx.messages.answers = {1};
        dialog.cmdDelete->click();
        EXPECT_EQ(dialog.cmbWords->count(), 2);
        EXPECT_EQ(dialog.cmbChanges->count(), 2);
        dialog.cmbWords->setEditText(QStringLiteral("Dr"));
        dialog.cmdSpeakWord->click();
        EXPECT_EQ(fx.speech.calls.last(), "speak 9 Dr");
    }
    EXPECT_EQ(app().ChildFormDepth, 0);
    EXPECT_EQ(readAll(path("exceptions.txt")), "\"Dr\",\"Doctor\"\r\n\"zed\",\"zee\"\r\n");
}

TEST_F(DocumentsWindowTest, MainWindowOffersTheDocumentAndExceptionsEntries)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    QMenuBar *bar = window.menuBar();
    const std::pair<const char *, const char *> entries[] = {
        {"&File", "Open"}, {"&File", "Save"}, {"&File", "Save As.."}, {"&File", "Page Setup"}, {"&File", "Print"},
        {"E&xceptions", "Apply To Current Text"}, {"E&xceptions", "Undo Exceptions"},
        {"E&xceptions", "Add New Exception"}, {"E&xceptions", "Make Exceptions"}};
    for (const auto &[menu, caption] : entries) {
        QAction *a = findEntry(bar, QLatin1String(menu), QLatin1String(caption));
        ASSERT_NE(a, nullptr) << caption;
        EXPECT_TRUE(a->isEnabled()) << caption;
    }
    QAction *toggle = findEntry(bar, "E&xceptions", "Make Exceptions");
    EXPECT_TRUE(toggle->isChecked());
    toggle->trigger();
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_FALSE(reader::exceptionsState().ExceptionsOn);
    toggle->trigger();
    EXPECT_TRUE(reader::exceptionsState().ExceptionsOn);
    reader::ReleaseSpeechObject();
}

TEST_F(DocumentsWindowTest, TalkSpeaksTheRewrittenTextAndEditsMarkTheFileDirty)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    reader::exceptionsState().Exceptions = {{"Dr", "Doctor"}};
    window.txtSpeech->setPlainText(QStringLiteral("Dr Who"));
    window.speechPanel->cmdTalk->click();
    EXPECT_EQ(window.txtSpeech->toPlainText(), "Doctor Who");
    EXPECT_TRUE(fx.speech.lastSpoken.contains(">Doctor Who<")) << fx.speech.lastSpoken.toStdString();
    // A typed change marks a file's text dirty, and quitting offers to save it.
    app().CurrentFile = path("a.txt");
    window.txtSpeech->moveCursor(QTextCursor::End);
    window.txtSpeech->insertPlainText(QStringLiteral("!"));
    EXPECT_TRUE(app().TextDirty);
    fx.messages.answers = {1};  // Yes: save, then quit
    EXPECT_TRUE(window.close());
    EXPECT_EQ(readAll(path("a.txt")), "Doctor Who!\r\n");
}

TEST_F(DocumentsWindowTest, RichTextFileOpensFormattedAndSavesBackAsRtfButATruncatedOneIsKept)
{
    QWidget window;
    QTextEdit edit(&window);
    ScriptedBox box(&window, &edit);
    QObject::connect(&edit, &QTextEdit::textChanged, [] { reader::txtSpeech_Change(); });
    writeAll(path("in.rtf"), "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}"
                             "\\pard\\qc\\f0\\fs24 Title\\par"
                             "\\pard Normal {\\b bold} {\\i italic} caf\\'e9\\par}");
    box.answers = {path("in.rtf")};
    reader::mnuFileLoad_Click();
    EXPECT_EQ(edit.toPlainText(), QString::fromUtf8("Title\nNormal bold italic café"));
    EXPECT_EQ(app().CurrentFile, path("in.rtf"));
    EXPECT_FALSE(app().TextDirty);
    EXPECT_EQ(int(edit.document()->firstBlock().blockFormat().alignment() & Qt::AlignHorizontal_Mask), int(Qt::AlignHCenter));
    // An edit, then Save writes RTF that keeps the formatting.
    QTextCursor cursor(edit.document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("!"));
    ASSERT_TRUE(app().TextDirty);
    reader::mnuFileSave_Click();
    EXPECT_FALSE(app().TextDirty);
    QString error;
    const reader::RichDocument saved = reader::ReadRtf(readAll(path("in.rtf")), &error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(saved.plainText(), QString::fromUtf8("Title\nNormal bold italic café!"));
    ASSERT_EQ(saved.paragraphs.size(), 2);
    EXPECT_EQ(saved.paragraphs[0].format.alignment, reader::Alignment::Center);
    bool sawBold = false, sawItalic = false;
    for (const reader::TextRun &run : saved.paragraphs[1].runs) {
        sawBold |= run.text == "bold" && run.format.bold;
        sawItalic |= run.text == "italic" && run.format.italic;
    }
    EXPECT_TRUE(sawBold);
    EXPECT_TRUE(sawItalic);
    // A truncated file shows what it can; Save then asks for a new name and keeps the original.
    const QByteArray cut = "{\\rtf1\\ansi Some {\\b text that stops her";
    writeAll(path("cut.rtf"), cut);
    box.answers = {path("cut.rtf")};
    reader::mnuFileLoad_Click();
    EXPECT_EQ(edit.toPlainText(), "Some text that stops her");
    EXPECT_EQ(app().CurrentFile, "");
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, "Open File");
    EXPECT_TRUE(fx.messages.shown[0].text.contains(QLatin1String(reader::kRtfTruncatedMessage)));
    box.answers = {path("recovered.rtf")};
    reader::mnuFileSave_Click();
    EXPECT_EQ(readAll(path("cut.rtf")), cut);
    EXPECT_TRUE(readAll(path("recovered.rtf")).startsWith("{\\rtf1"));
}

TEST_F(DocumentsWindowTest, MacroTextSavesTheChangedFileBeforeTakingNewText)
{
    QWidget window;
    QTextEdit edit(&window);
    ScriptedBox box(&window, &edit);
    ui::frmSonamark speechWindow(&fx.tray);  // Reset_txtSpeech refreshes the speech side
    speechWindow.Form_Load();
    reader::SetTextBox(&box);
    edit.setPlainText(QStringLiteral("draft"));
    app().CurrentFile = path("draft.txt");
    app().TextDirty = true;
    reader::BoxReaderText port;
    port.setText(QStringLiteral("from a macro"));
    EXPECT_EQ(readAll(path("draft.txt")), "draft\r\n");
    EXPECT_EQ(port.text(), "from a macro");
    EXPECT_EQ(app().CurrentFile, "");
    EXPECT_FALSE(app().TextDirty);
    reader::ReleaseSpeechObject();
}

TEST_F(DocumentsWindowTest, NewTextTakesTheStoredFontSize)
{
    shell::settings().FontSizeOpt = QStringLiteral("20");
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    window.txtSpeech->setPlainText(QStringLiteral("opened text"));
    app().CurrentFile = path("opened.txt");
    reader::Reset_txtSpeech();
    QTextCursor cursor(window.txtSpeech->document());
    cursor.movePosition(QTextCursor::NextCharacter);
    EXPECT_EQ(cursor.charFormat().font().pointSizeF(), 20.0);
    reader::ReleaseSpeechObject();
}
