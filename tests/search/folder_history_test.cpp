// FolderHistory.txt and the history lists: add, delete, clear, save and reload.
#include "search/folder_history.h"
#include "search_fixture.h"
#include "shell/condensed_path.h"

using search::FolderHistory;

namespace {

class FolderHistoryTest : public SearchTest {
protected:
    QByteArray fileBytes() const
    {
        QFile file(FolderHistory::FilePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    void writeFile(const QByteArray &bytes)
    {
        QFile file(FolderHistory::FilePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

TEST_F(FolderHistoryTest, AFirstStartCreatesTheFileWithTheCurrentFolder)
{
    FolderHistory history;
    history.PopulateHistory(treePath() + QLatin1Char('/'));
    EXPECT_EQ(history.rows(), QStringList{treePath()});
    EXPECT_EQ(history.current(), 0);
    EXPECT_EQ(history.toolTip(), treePath());
    EXPECT_FALSE(history.HistoryDirty);
    EXPECT_EQ(fileBytes(), QFile::encodeName(treePath()) + "\r\n");
}

TEST_F(FolderHistoryTest, ReadingDropsSlashesBlankLinesAndRepeats)
{
    writeFile("/home/one/\r\n\r\n   \r\n/HOME/ONE\r\n/srv/two\n/srv/two/\r\n/\r\n");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_EQ(history.rows(), (QStringList{QStringLiteral("/home/one"), QStringLiteral("/srv/two"), QStringLiteral("/")}));
}

// Found by fuzzing: a line of spaces and slashes was kept as a blank row (which the next
// save wrote and the next read dropped), and of two byte order marks the second stayed
// at the start of the first row. Each file reads to its rows, and a save and a read keep
// them.
TEST_F(FolderHistoryTest, BlankRowsAndByteOrderMarksAreDroppedAndTheRowsSurviveASave)
{
    const struct {
        QByteArray file;
        QStringList rows;
    } cases[] = {
        {"/home/one/\r\n   /\r\n \t//\n/srv/two\r\n", {QStringLiteral("/home/one"), QStringLiteral("/srv/two")}},
        {"\xef\xbb\xbf\xef\xbb\xbf/w/x/\r\n\xef\xbb\xbf\r\n\xef\xbb\xbf/srv/two\r\n",
         {QStringLiteral("/w/x"), QStringLiteral("/srv/two")}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.file.toStdString());
        writeFile(c.file);
        FolderHistory history;
        history.PopulateHistory(treePath());
        EXPECT_EQ(history.rows(), c.rows);
        history.HistoryDirty = true;
        ASSERT_TRUE(history.SaveHistory2File());
        FolderHistory again;
        again.PopulateHistory(treePath());
        EXPECT_EQ(again.rows(), c.rows);
    }
}

TEST_F(FolderHistoryTest, AFileFromTheOriginalPlatformIsReadAsWindows1252)
{
    writeFile("/data/caf\xe9\r\n");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_EQ(history.rows(), QStringList{QStringLiteral("/data/café")});
}

TEST_F(FolderHistoryTest, AnEmptyFileIsStartedAgainWithTheCurrentFolder)
{
    writeFile("\r\n");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_EQ(history.rows(), QStringList{treePath()});
    EXPECT_EQ(fileBytes(), QFile::encodeName(treePath()) + "\r\n");
}

TEST_F(FolderHistoryTest, AddPutsANewFolderFirstOnlyOnceAndOnlyWhenItExists)
{
    makeFile("Alpha/x");
    makeFile("beta/x");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_TRUE(history.AddHistory(treePath(QStringLiteral("Alpha/"))));
    EXPECT_TRUE(history.HistoryDirty);
    EXPECT_TRUE(history.AddHistory(treePath(QStringLiteral("beta"))));
    EXPECT_EQ(history.rows(),
              (QStringList{treePath(QStringLiteral("beta")), treePath(QStringLiteral("Alpha")), treePath()}));
    // In other capitals, or with a slash: no change.
    EXPECT_FALSE(history.AddHistory(treePath(QStringLiteral("ALPHA"))));
    EXPECT_FALSE(history.AddHistory(treePath(QStringLiteral("Alpha/"))));
    EXPECT_FALSE(history.AddHistory(treePath(QStringLiteral("missing"))));
    EXPECT_FALSE(history.AddHistory(QStringLiteral("relative/folder")));
    EXPECT_EQ(history.rows().size(), 3);
    EXPECT_FALSE(history.IsNewHistory(treePath(QStringLiteral("BETA/"))));
    EXPECT_TRUE(FolderHistory::ValidHistory(treePath(QStringLiteral("beta"))));
    EXPECT_FALSE(FolderHistory::ValidHistory(QStringLiteral("beta")));
}

TEST_F(FolderHistoryTest, SaveWritesOnlyWhenChangedAndReloadGivesTheSameRows)
{
    makeFile("one/x");
    makeFile("two/x");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_FALSE(history.SaveHistory2File());  // nothing changed
    history.AddHistory(treePath(QStringLiteral("one")));
    history.AddHistory(treePath(QStringLiteral("two")));
    EXPECT_TRUE(history.SaveHistory2File());
    EXPECT_FALSE(history.HistoryDirty);
    EXPECT_EQ(fileBytes(), QFile::encodeName(treePath(QStringLiteral("two")) + QStringLiteral("\r\n")
                                             + treePath(QStringLiteral("one")) + QStringLiteral("\r\n") + treePath()
                                             + QStringLiteral("\r\n")));
    FolderHistory again;
    again.PopulateHistory(QStringLiteral("/elsewhere"));
    EXPECT_EQ(again.rows(), history.rows());
}

TEST_F(FolderHistoryTest, DeleteFindsTheRowByItsShownOrFullText)
{
    makeFile("one/x");
    FolderHistory history;
    history.PopulateHistory(treePath());
    history.AddHistory(treePath(QStringLiteral("one")));
    history.HistoryAutoSave = true;
    history.HistoryDirty = false;
    EXPECT_EQ(history.FindRow(treePath().toUpper()), 1);
    EXPECT_EQ(history.FindRow(QStringLiteral("/not/there")), -1);
    history.RemoveRow(history.FindRow(treePath(QStringLiteral("one"))));
    EXPECT_EQ(history.rows(), QStringList{treePath()});
    EXPECT_EQ(history.current(), 0);
    EXPECT_TRUE(history.HistoryDirty);
    EXPECT_FALSE(history.HistoryAutoSave);
    history.RemoveRow(0);
    EXPECT_EQ(history.current(), -1);
    EXPECT_EQ(history.toolTip(), QString());
}

TEST_F(FolderHistoryTest, ShownRowsAreCondensed)
{
    const QString longFolder = QStringLiteral("/a/very/long/folder/name/that/goes/on/and/on/for/ever/and/ever/end");
    writeFile(longFolder.toUtf8() + "\r\n");
    FolderHistory history;
    history.PopulateHistory(treePath());
    EXPECT_EQ(history.shownRows(), QStringList{shell::CondensedPath(longFolder, 50)});
    EXPECT_LT(history.shownRows().first().size(), longFolder.size());
    EXPECT_EQ(history.FindRow(history.shownRows().first()), 0);
}

TEST_F(FolderHistoryTest, ClearEmptiesTheListsAndClearFileLeavesOneEmptyLine)
{
    FolderHistory history;
    history.PopulateHistory(treePath());
    history.HistoryAutoSave = true;
    history.Clear();
    EXPECT_TRUE(history.rows().isEmpty());
    EXPECT_TRUE(history.HistoryDirty);
    EXPECT_FALSE(history.HistoryAutoSave);
    EXPECT_TRUE(history.ClearFile());
    EXPECT_EQ(fileBytes(), QByteArray("\r\n"));
    FolderHistory again;
    again.PopulateHistory(treePath());
    EXPECT_EQ(again.rows(), QStringList{treePath()});
}

TEST_F(FolderHistoryTest, AFailedSaveAnswersFalseAndStaysDirty)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into read-only folders";
    makeFile("one/x");
    FolderHistory history;
    history.PopulateHistory(treePath());
    history.AddHistory(treePath(QStringLiteral("one")));
    const QByteArray before = fileBytes();
    ASSERT_EQ(::chmod(data.path().toUtf8().constData(), 0500), 0);
    const bool saved = history.SaveHistory2File();
    ::chmod(data.path().toUtf8().constData(), 0700);
    EXPECT_FALSE(saved);
    EXPECT_TRUE(history.HistoryDirty);
    EXPECT_EQ(fileBytes(), before);  // the old file is whole
}

} // namespace
