// modHotkeys.FindFiles with a stand-in for the window, and the window's decisions.
#include "macro/variables.h"
#include "search/find_files.h"
#include "search_fixture.h"

using search::findFilesState;

namespace {

class FindFilesTest : public SearchTest {
protected:
    void SetUp() override
    {
        SearchTest::SetUp();
        findFilesState().reset();
        macro::ResetVariables();
        savedDir = QDir::currentPath();
    }
    void TearDown() override
    {
        search::SetFindFilesOpener(nullptr);
        QDir::setCurrent(savedDir);
    }
    // An opener that records the state it was shown with and picks files.
    void pick(const QStringList &files)
    {
        search::SetFindFilesOpener([this, files] {
            shownWith = findFilesState();
            shownDir = QDir::currentPath();
            findFilesState().select(files, {});
        });
    }
    QString variable(const QString &name)
    {
        QString n = name;
        int type = 0;
        return macro::GetVarVal(n, type);
    }

    QString savedDir;
    search::FindFilesState shownWith;
    QString shownDir;
};

TEST_F(FindFilesTest, WithoutTheDesktopProgramItSaysSo)
{
    QString start = treePath(), out;
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")),
              QStringLiteral("The file finder needs the desktop program"));
    EXPECT_EQ(QDir::currentPath(), savedDir);
}

TEST_F(FindFilesTest, TheStartFolderGetsASlashAndBecomesTheCurrentDirectory)
{
    pick({});
    QString start = treePath(), out;
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")), QString());
    EXPECT_EQ(start, treePath() + QLatin1Char('/'));
    EXPECT_EQ(shownWith.LastFolder, treePath() + QLatin1Char('/'));
    EXPECT_EQ(shownWith.SelectedCount, 0);  // the "Find Files" face
    EXPECT_EQ(QDir(shownDir).canonicalPath(), QDir(treePath()).canonicalPath());
}

TEST_F(FindFilesTest, AnEmptyStartFolderIsTheCurrentDirectory)
{
    QDir::setCurrent(treePath());
    pick({});
    QString start, out;
    search::FindFiles(start, out, QStringLiteral("v"));
    EXPECT_EQ(shownWith.LastFolder, QDir::currentPath() + QLatin1Char('/'));
    EXPECT_TRUE(start.isEmpty());
}

TEST_F(FindFilesTest, NothingChosenStoresTheEmptyString)
{
    macro::SetVarVal(QStringLiteral("v"), QStringLiteral("old"));
    pick({});
    QString start, out = treePath(QStringLiteral("out.txt"));
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")), QString());
    EXPECT_EQ(variable(QStringLiteral("v")), QString());
    EXPECT_EQ(findFilesState().SelectedCount, 0);
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(FindFilesTest, PicksGoToTheVariableJoinedByCrLf)
{
    pick({QStringLiteral("/a/one.txt"), QStringLiteral("/b/two.txt")});
    QString start, out;
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("Picks")), QString());
    EXPECT_EQ(variable(QStringLiteral("PICKS")), QStringLiteral("/a/one.txt\r\n/b/two.txt"));
}

TEST_F(FindFilesTest, PicksGoToTheOutputFileOneALineAndToTheVariable)
{
    QFile old(treePath(QStringLiteral("out.txt")));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old content that is longer than the new one\r\n");
    old.close();
    pick({QStringLiteral("/a/café.txt"), QStringLiteral("/b/two.txt")});
    QString start, out = treePath(QStringLiteral("out.txt"));
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")), QString());
    QFile written(out);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QByteArray("/a/caf\xc3\xa9.txt\r\n/b/two.txt\r\n"));
    EXPECT_EQ(variable(QStringLiteral("v")), QStringLiteral("/a/café.txt\r\n/b/two.txt"));
}

TEST_F(FindFilesTest, AnOutputFileThatCannotBeWrittenIsReported)
{
    pick({QStringLiteral("/a/one.txt")});
    QString start, out = treePath(QStringLiteral("no/such/folder/out.txt"));
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")),
              QStringLiteral("Error accessing output file for selected files"));
}

TEST_F(FindFilesTest, SonamarkTextSendsThePicksToTheReader)
{
    pick({QStringLiteral("/a/one.txt"), QStringLiteral("/b/two.txt")});
    QString start, out = treePath(QStringLiteral("out.txt"));
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("SonamarkText")), QString());
    EXPECT_EQ(fx.readerText.written, QStringList{QStringLiteral("/a/one.txt\r\n/b/two.txt")});
    EXPECT_FALSE(QFile::exists(out));  // the reader takes them instead of the file
}

TEST_F(FindFilesTest, SelectQuestionAsksForOneSeveralOrAll)
{
    EXPECT_EQ(search::SelectQuestion(1, 9), QStringLiteral("Select this file?"));
    EXPECT_EQ(search::SelectQuestion(3, 9), QStringLiteral("Select these 3 files?"));
    EXPECT_EQ(search::SelectQuestion(0, 9), QStringLiteral("Select these 9 files?"));
}

TEST_F(FindFilesTest, TheCountCaptionCarriesALeadingBlank)
{
    EXPECT_EQ(search::NextCountCaption(QStringLiteral("0")), QStringLiteral(" 1"));
    EXPECT_EQ(search::NextCountCaption(QStringLiteral(" 41")), QStringLiteral(" 42"));
}

TEST_F(FindFilesTest, SelectRowsTakesTheSelectedOnesOrAll)
{
    const QStringList rows{QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")};
    search::SelectRows(rows, {}, {2, 0}, QStringLiteral("/f/"));
    EXPECT_EQ(findFilesState().SelectedFiles, (QStringList{QStringLiteral("/f/c.txt"), QStringLiteral("/f/a.txt")}));
    EXPECT_EQ(findFilesState().SelectedCount, 2);
    search::SelectRows(rows, {}, {}, QStringLiteral("/f/"));
    EXPECT_EQ(findFilesState().SelectedCount, 3);
    EXPECT_EQ(findFilesState().SelectedPaths.at(1), QByteArray("/f/b.txt"));
}

TEST_F(FindFilesTest, SelectRowsKeepsTheRealBytesOfOddNames)
{
    search::SelectRows({QStringLiteral("\uFFFD.txt")}, {QByteArray("\xff.txt")}, {}, QStringLiteral("/f/"));
    EXPECT_EQ(findFilesState().SelectedPaths, QList<QByteArray>{QByteArray("/f/\xff.txt")});
}

TEST_F(FindFilesTest, TheDriveListHoldsRootHomeAndRemovableMedia)
{
    const QStringList mounts{QStringLiteral("/"), QStringLiteral("/proc"), QStringLiteral("/media/usb"),
                             QStringLiteral("/run/media/u/CARD"), QStringLiteral("/boot/efi"),
                             QStringLiteral("/media/usb")};
    EXPECT_EQ(search::DriveList(mounts, QStringLiteral("/home/u")),
              (QStringList{QStringLiteral("/"), QStringLiteral("/home/u"), QStringLiteral("/media/usb"),
                           QStringLiteral("/run/media/u/CARD")}));
    EXPECT_EQ(search::MountedDrives().first(), QStringLiteral("/"));
}

} // namespace
