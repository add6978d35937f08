// The main window's Edit menu on a real txtSpeech: each command's effect on the document,
// its refusals and reports, the formatting carried through our RTF save and load, and a
// link opened through the real xdg-open into a test handler.
#include "fakes/fake_services.h"
#include "platform/qt/qt_desktop.h"
#include "reader/edit_commands.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "ui/edit_menu.h"
#include "ui/frm_sonamark.h"
#include "ui/rich_text_bridge.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QThread>
#include <QCoreApplication>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextList>
#include <gtest/gtest.h>

using shell::app;

namespace {

struct EditMenuTest : ::testing::Test {
    void SetUp() override
    {
        app().reset();
        shell::settings().reset();
        shell::settings().FontSizeOpt = QStringLiteral("12");
        reader::editState().reset();
        window = std::make_unique<ui::frmSonamark>(&fx.tray);
        window->Form_Load();
        box = window->txtSpeech;
        edit = window->editMenu;
    }
    void TearDown() override { window.reset(); }
    void setText(const QString &text) { box->setPlainText(text); }
    QStringList messages() const
    {
        QStringList all;
        for (const platform::MessageSpec &m : fx.messages.shown)
            all << m.title + QLatin1Char('|') + m.text.trimmed();
        return all;
    }
    reader::RichDocument model() const { return ui::RichDocumentOf(box->document()); }

    fakes::FakeServices fx;
    std::unique_ptr<ui::frmSonamark> window;
    QTextEdit *box = nullptr;
    ui::EditMenu *edit = nullptr;
};

} // namespace

TEST_F(EditMenuTest, FormattingCommandsRefuseWithoutASelection)
{
    setText("Nothing selected here.");
    const std::pair<QAction *, const char *> rows[] = {
        {edit->mnuFormatFont, "Font.."},         {edit->mnuFormatLeft, "Align Left"},
        {edit->mnuFormatRight, "Align Right"},   {edit->mnuFormatCenter, "Align Center"},
        {edit->mnuFormatBullets, "Bullets"},     {edit->mnuFormatIndentLeft, "Indent"},
        {edit->mnuFormatIndentRight, "Indent"}};
    for (const auto &[action, title] : rows) {
        fx.messages.shown.clear();
        action->trigger();
        EXPECT_EQ(messages(), QStringList{QString::fromLatin1(title)
                                          + "|You must select (highlight) some text to format."});
    }
    EXPECT_TRUE(fx.prompts.asked.isEmpty());  // the indent commands ask nothing first
}

TEST_F(EditMenuTest, FontAlignmentBulletsAndIndentsSurviveTheRtfRoundTrip)
{
    setText("First paragraph.\nSecond paragraph.\nThird paragraph.");
    app().CurrentFile = QStringLiteral("/tmp/doc.rtf");
    // Font: the dialog's answer goes to the selection only.
    edit->select(0, 5);
    edit->fontDialog = [](const QFont &initial) {
        QFont f = initial;
        f.setFamilies({"DejaVu Serif"});
        f.setPointSize(20);
        f.setBold(true);
        f.setItalic(true);
        f.setUnderline(true);
        f.setStrikeOut(true);
        return std::optional<QFont>(f);
    };
    edit->mnuFormatFont->trigger();
    EXPECT_TRUE(app().TextDirty);
    // Alignment and bullets on the second paragraph, centred third.
    edit->select(20, 3);
    edit->mnuFormatRight->trigger();
    edit->mnuFormatBullets->trigger();
    edit->select(40, 2);
    edit->mnuFormatCenter->trigger();
    // Indents: right first (2 inches), then left (1 inch) is within it.
    edit->select(0, 3);
    fx.prompts.replies = {"2", "1"};
    edit->mnuFormatIndentRight->trigger();
    edit->mnuFormatIndentLeft->trigger();
    EXPECT_EQ(fx.prompts.asked, (QStringList{"input Right Indent|Input Right indent (inches)",
                                             "input Left Indent|Input left indent (inches)"}));
    EXPECT_TRUE(fx.messages.shown.isEmpty());

    const reader::RichDocument before = model();
    ASSERT_EQ(before.paragraphs.size(), 3);
    const reader::TextRun &first = before.paragraphs[0].runs[0];
    EXPECT_EQ(first.text, "First");
    EXPECT_EQ(first.format.family, "DejaVu Serif");
    EXPECT_EQ(first.format.pointSize, 20);
    EXPECT_TRUE(first.format.bold && first.format.italic && first.format.underline && first.format.strike);
    EXPECT_FALSE(before.paragraphs[0].runs[1].format.bold);  // " paragraph." kept its font
    EXPECT_EQ(before.paragraphs[0].format.leftIndent, 1440);
    EXPECT_EQ(before.paragraphs[0].format.rightIndent, 2880);
    EXPECT_EQ(before.paragraphs[1].format.alignment, reader::Alignment::Right);
    EXPECT_TRUE(before.paragraphs[1].format.bullet);
    EXPECT_EQ(before.paragraphs[2].format.alignment, reader::Alignment::Center);
    EXPECT_FALSE(before.paragraphs[2].format.bullet);

    // Save and load through our RTF writer and reader.
    QTextDocument loaded;
    EXPECT_EQ(ui::RtfToDocument(&loaded, ui::DocumentToRtf(box->document())), "");
    const reader::RichDocument after = ui::RichDocumentOf(&loaded);
    ASSERT_EQ(after.paragraphs.size(), 3);
    EXPECT_EQ(after.paragraphs[0].runs[0].format, first.format);
    EXPECT_EQ(after.paragraphs[0].format.leftIndent, 1440);
    EXPECT_EQ(after.paragraphs[0].format.rightIndent, 2880);
    EXPECT_EQ(after.paragraphs[1].format.alignment, reader::Alignment::Right);
    EXPECT_TRUE(after.paragraphs[1].format.bullet);
    EXPECT_EQ(after.paragraphs[2].format.alignment, reader::Alignment::Center);
    EXPECT_EQ(after.plainText(), before.plainText());

    // Bullets flip back off.
    edit->select(20, 3);
    edit->mnuFormatBullets->trigger();
    EXPECT_FALSE(model().paragraphs[1].format.bullet);
}

TEST_F(EditMenuTest, IndentsKeepLeftWithinRight)
{
    setText("One paragraph to indent.");
    edit->select(0, 3);
    fx.prompts.replies = {"1"};
    edit->mnuFormatIndentLeft->trigger();  // the right indent is 0
    EXPECT_EQ(messages(), QStringList{"Indent|The left indent can not be more than the right indent"});
    EXPECT_EQ(model().paragraphs[0].format.leftIndent, 0);
    fx.messages.shown.clear();
    fx.prompts.replies = {"abc"};  // not a number: 0, and applied
    edit->mnuFormatIndentLeft->trigger();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    fx.prompts.replies = {"3", "1.5", "1"};
    edit->mnuFormatIndentRight->trigger();
    edit->mnuFormatIndentLeft->trigger();
    EXPECT_EQ(model().paragraphs[0].format.leftIndent, 2160);
    edit->mnuFormatIndentRight->trigger();
    EXPECT_EQ(messages(), QStringList{"Indent|The right indent can not be less than the left indent"});
    EXPECT_EQ(model().paragraphs[0].format.rightIndent, 4320);
    fx.prompts.replies = {};  // Cancel: nothing
    edit->mnuFormatIndentLeft->trigger();
    EXPECT_EQ(model().paragraphs[0].format.leftIndent, 2160);
}

TEST_F(EditMenuTest, DefaultFontAndFontSize)
{
    setText("Some words in a box.");
    edit->select(0, 4);
    edit->fontDialog = [](const QFont &initial) {
        QFont f = initial;
        f.setBold(true);
        f.setPointSize(30);
        return std::optional<QFont>(f);
    };
    edit->mnuFormatFont->trigger();
    ASSERT_TRUE(model().paragraphs[0].runs[0].format.bold);
    edit->select(2, 0);
    edit->mnuFormatDefFont->trigger();  // nothing selected: the whole text
    const reader::RichDocument plain = model();
    ASSERT_EQ(plain.paragraphs[0].runs.size(), 1);
    EXPECT_FALSE(plain.paragraphs[0].runs[0].format.bold);
    EXPECT_EQ(plain.paragraphs[0].runs[0].format.pointSize, 12);
    EXPECT_EQ(edit->selStart(), 2);

    const int row = window->cmbFontSize->findText("20");
    ASSERT_GE(row, 0);
    emit window->cmbFontSize->textActivated("20");
    EXPECT_EQ(model().paragraphs[0].runs[0].format.pointSize, 20);
    EXPECT_EQ(shell::settings().FontSizeOpt, "20");
    EXPECT_TRUE(app().OptionsDirty);
    EXPECT_EQ(edit->selLength(), 0);
}

TEST_F(EditMenuTest, WordWrapFlips)
{
    EXPECT_TRUE(edit->mnuFormatWrap->isChecked());
    edit->mnuFormatWrap->trigger();
    EXPECT_FALSE(edit->mnuFormatWrap->isChecked());
    EXPECT_EQ(box->lineWrapMode(), QTextEdit::FixedPixelWidth);
    EXPECT_GT(box->lineWrapColumnOrWidth(), 4000);
    edit->mnuFormatWrap->trigger();
    EXPECT_TRUE(edit->mnuFormatWrap->isChecked());
    EXPECT_EQ(box->lineWrapMode(), QTextEdit::WidgetWidth);
}

TEST_F(EditMenuTest, XmlHeaderOnce)
{
    setText("Speak me.");
    app().CurrentFile = QStringLiteral("/tmp/a.txt");
    edit->mnuFormatAddXMLHdr->trigger();
    EXPECT_EQ(box->toPlainText(), "<xml version=\"1.0\">\n<SAPI>\nSpeak me.\n</SAPI>\n</xml>");
    EXPECT_TRUE(app().TextDirty);
    const QString once = box->toPlainText();
    edit->mnuFormatAddXMLHdr->trigger();
    EXPECT_EQ(box->toPlainText(), once);
}

TEST_F(EditMenuTest, CountWordsReports)
{
    edit->mnuFormatCountWords->trigger();
    setText("jack's foo_bar 42");
    edit->mnuFormatCountWords->trigger();
    edit->select(0, 4);
    edit->mnuFormatCountWords->trigger();
    edit->select(14, 3);
    edit->mnuFormatCountWords->trigger();
    setText(QString(1200, QLatin1Char('-')));
    edit->mnuFormatCountWords->trigger();
    EXPECT_EQ(messages(), (QStringList{
                              "Count Words|There are no words to count.",
                              "Count Words|There were 3 words among 17 characters counted.",
                              "Count Words|There was 1 word, among 4 characters counted in the selected text.",
                              "Count Words|There are no words to count among 3 characters in the selected text.",
                              "Count Words|There are no words to count among 1,200 characters.",
                          }));
}

TEST_F(EditMenuTest, DateAndTimeReplaceTheSelection)
{
    setText("Date: XX.");
    edit->select(6, 2);
    edit->mnuFormatDateTime->trigger();
    const QString text = box->toPlainText();
    EXPECT_TRUE(text.startsWith("Date: " + QLocale(QLocale::English).toString(QDate::currentDate(), "MMM d, yyyy") + ":"))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith("."));
    EXPECT_EQ(reader::DateTimeStamp(QDateTime(QDate(2024, 3, 5), QTime(9, 7, 0))).left(12), "Mar 5, 2024:");
}

TEST_F(EditMenuTest, HyperlinksAndMailAddressesOpenThroughTheDesktop)
{
    setText("See http://example.org/a?b=1 for more, or www.example.com/x, "
            "write to <bob@example.org>, or nothing here.");
    const QString all = box->toPlainText();
    auto pick = [&](const QString &from, const QString &to) {
        const int start = int(all.indexOf(from));
        edit->select(start, int(all.indexOf(to, start) + to.size() - start));
    };
    pick("See", "more");
    edit->mnuFormatHyperlink->trigger();
    pick("or www", "x,");
    edit->mnuFormatHyperlink->trigger();
    pick("write", "org>");
    edit->mnuFormatHyperlink->trigger();
    EXPECT_EQ(fx.desktop.opened, (QStringList{"http://example.org/a?b=1", "http://www.example.com/x",
                                              "mailto:bob@example.org?subject= &body=\r\n\r\n"}));
    pick("nothing", "here");
    edit->mnuFormatHyperlink->trigger();
    edit->select(0, 0);
    edit->mnuFormatHyperlink->trigger();
    EXPECT_EQ(messages(), (QStringList{"No Hyperlink|No hyperlink was found in the selected text.",
                                       "Hyperlink|You must select the hyperlink text."}));
    // Up to the first comma behind the "@", though a ">" comes before it.
    fx.desktop.opened.clear();
    pick("write", ">,");
    edit->mnuFormatHyperlink->trigger();
    EXPECT_EQ(fx.desktop.opened, QStringList{"mailto:bob@example.org>?subject= &body=\r\n\r\n"});
    // Both a link and an address: the link.
    fx.desktop.opened.clear();
    setText("mail a@b.org at http://c.org");
    edit->select(0, int(box->toPlainText().size()));
    edit->mnuFormatHyperlink->trigger();
    EXPECT_EQ(fx.desktop.opened, QStringList{"http://c.org"});
    // The browser cannot be started.
    fx.messages.shown.clear();
    fx.desktop.canOpen = false;
    edit->mnuFormatHyperlink->trigger();
    EXPECT_EQ(messages(), QStringList{"Can't Start IE|Could not launch Internet Explorer. Visit the following link "
                                      "in your browser:\r\nhttp://c.org"});
}

TEST(EmailAddress, GetEmailWalksToItsEnds)
{
    EXPECT_EQ(reader::Get_Email("Mail: ann@x.org, now"), "ann@x.org");
    EXPECT_EQ(reader::Get_Email("to:ann@x.org please"), "ann@x.org");
    EXPECT_EQ(reader::Get_Email("<ann@x.org>"), "ann@x.org");
    EXPECT_EQ(reader::Get_Email("ann@x.org"), "ann@x.org");
    // The comma wins over a nearer blank.
    EXPECT_EQ(reader::Get_Email("ann@x.org later, then"), "ann@x.org later");
    EXPECT_EQ(reader::HyperlinkIn("go \"https://a.b/c\" now"), "https://a.b/c");
    EXPECT_EQ(reader::HyperlinkIn("<www.a.b>"), "http://www.a.b");
    EXPECT_EQ(reader::HyperlinkIn("no link"), "");
}

TEST_F(EditMenuTest, CaretLineAndColumnInStatusPanelTwo)
{
    setText("alpha\nbeta gamma");
    edit->select(9, 0);
    edit->SetLineColumnNumbers();
    EXPECT_EQ(window->sbStatusPanel2->text(), "Ln 2, Col 4");
    EXPECT_EQ(reader::GetLnCol(), 2004);
}

TEST(RealXdgOpen, ALinkReachesTheUsersHandler)
{
    // A private XDG setup whose http handler writes the URL it gets into a file.
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString got = dir.filePath("got.txt");
    const QString handler = dir.filePath("handler.sh");
    {
        QFile f(handler);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QStringLiteral("#!/bin/sh\nprintf '%s' \"$1\" > '%1'\n").arg(got).toUtf8());
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QDir().mkpath(dir.filePath("data/applications"));
    QDir().mkpath(dir.filePath("config"));
    {
        QFile f(dir.filePath("data/applications/sonamark-test-browser.desktop"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QStringLiteral("[Desktop Entry]\nType=Application\nName=Test Browser\nExec=%1 %u\n"
                               "MimeType=x-scheme-handler/http;\n")
                    .arg(handler)
                    .toUtf8());
    }
    {
        QFile f(dir.filePath("config/mimeapps.list"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[Default Applications]\nx-scheme-handler/http=sonamark-test-browser.desktop\n");
    }
    qputenv("XDG_DATA_HOME", dir.filePath("data").toUtf8());
    qputenv("XDG_CONFIG_HOME", dir.filePath("config").toUtf8());
    qputenv("XDG_CURRENT_DESKTOP", "");
    qputenv("BROWSER", "");
    // xdg-open asks the desktop's handlers only with a display named (none is opened).
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("DISPLAY", ":99");
    platform::QtDesktop desktop;
    ASSERT_TRUE(desktop.canOpenUrls()) << "xdg-open is needed (xdg-utils)";
    ASSERT_TRUE(desktop.openUrl("http://example.org/page?x=1"));
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(got) && clock.elapsed() < 10000)
        QThread::msleep(50);
    QFile result(got);
    ASSERT_TRUE(result.open(QIODevice::ReadOnly)) << "the handler was not started";
    EXPECT_EQ(result.readAll(), "http://example.org/page?x=1");
}
