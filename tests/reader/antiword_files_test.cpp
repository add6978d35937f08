// .doc text through the real antiword, and the document commands on top of it.
#include "document_fixture.h"

#include "platform/linux/antiword_files.h"
#include "reader/documents.h"

#include <QFileInfo>

namespace {

const QString kReport = QStringLiteral(SONAMARK_READER_TEST_DATA "/quarterly_report.doc");

class AntiwordTest : public DocumentTest {
protected:
    void SetUp() override
    {
        DocumentTest::SetUp();
        if (!antiword.installed())
            GTEST_SKIP() << "antiword is not installed";
        platform::services().wordFiles = &antiword;
    }
    platform::AntiwordFiles antiword;
};

} // namespace

TEST_F(AntiwordTest, ReadsTheTextOfAWordDocument)
{
    QString text, error;
    ASSERT_TRUE(antiword.readText(kReport, &text, &error)) << error.toStdString();
    EXPECT_TRUE(text.startsWith("Quarterly report\n")) << text.left(40).toStdString();
    EXPECT_TRUE(text.contains(QString::fromUtf8("Paragraph 30: sales rose by ten percent in the third quarter, "
                                                "and the café prices stayed the same.")));
}

TEST_F(AntiwordTest, SomethingElseIsRefusedWithTheReason)
{
    writeFile("notes.doc", "just some words, not a word processor file at all\n");
    QString text, error;
    EXPECT_FALSE(antiword.readText(path("notes.doc"), &text, &error));
    EXPECT_TRUE(error.contains("not a Word Document")) << error.toStdString();
}

TEST_F(AntiwordTest, AMissingProgramCountsAsWordNotInstalled)
{
    platform::AntiwordFiles missing(path("no-such-program"));
    EXPECT_FALSE(missing.installed());
    QString text, error;
    EXPECT_FALSE(missing.readText(kReport, &text, &error));
    platform::services().wordFiles = &missing;
    EXPECT_EQ(reader::LoadFile2Reader(kReport), "Cannot load DOC file, MS Word not installed.");
}

TEST_F(AntiwordTest, MacroLoaderPutsTheTextInTheBoxAndSavesBesideIt)
{
    ASSERT_TRUE(QFile::copy(kReport, path("Report.DOC")));
    EXPECT_EQ(reader::LoadFile2Reader(path("Report.DOC")), "");
    EXPECT_TRUE(box.box.startsWith("Quarterly report\n"));
    EXPECT_EQ(shell::app().CurrentFile, path("Report.txt"));
    box.box = QStringLiteral("Edited report");
    reader::txtSpeech_Change();
    reader::mnuFileSave_Click();
    EXPECT_EQ(readFile("Report.txt"), "Edited report\r\n");
    EXPECT_EQ(QFileInfo(path("Report.DOC")).size(), QFileInfo(kReport).size());
}
