// frmFindFiles on real folder trees: both faces, the search with its buttons, count,
// cancel and limit, selection, odd file names, and the history menu.
#include "fakes/fake_services.h"
#include "search/find_files.h"
#include "search/folder_history.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/frm_find_files.h"

#include <QAction>
#include <QApplication>
#include <QUrl>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using search::findFilesState;

namespace {

class FindFilesWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(tree.isValid());
        ASSERT_TRUE(data.isValid());
        shell::app().reset();
        shell::app().AppFolder = data.path() + QLatin1Char('/');
        findFilesState().reset();
        savedDir = QDir::currentPath();
        root = QFile::encodeName(tree.path());
    }
    void TearDown() override { QDir::setCurrent(savedDir); }

    void make(const QByteArray &relative, const QByteArray &content = "x")
    {
        const QByteArray full = root + '/' + relative;
        const QByteArray folder = full.left(full.lastIndexOf('/'));
        for (qsizetype i = 1; i <= folder.size(); ++i)  // by bytes: names need not be UTF-8
            if (i == folder.size() || folder.at(i) == '/')
                ::mkdir(folder.left(i).constData(), 0755);
        const int fd = ::open(full.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        ASSERT_GE(fd, 0);
        ASSERT_EQ(::write(fd, content.constData(), size_t(content.size())), content.size());
        ::close(fd);
    }
    // A window in the "Find Files" face, started in the tree.
    std::unique_ptr<ui::frmFindFiles> open(int selectedCount = 0)
    {
        findFilesState().SelectedCount = selectedCount;
        findFilesState().LastFolder = tree.path();
        return std::make_unique<ui::frmFindFiles>();
    }
    // Clicks Search and waits for the Results state.
    static void search(ui::frmFindFiles &window)
    {
        QEventLoop loop;
        QObject::connect(&window, &ui::frmFindFiles::searchEnded, &loop, &QEventLoop::quit);
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        window.cmdSearch->click();
        if (window.searching())
            loop.exec();
    }
    static QStringList rows(const QListWidget *list)
    {
        QStringList out;
        for (int i = 0; i < list->count(); ++i)
            out << list->item(i)->text();
        return out;
    }
    QString lastMessage() const { return fx.messages.shown.isEmpty() ? QString() : fx.messages.shown.last().text.trimmed(); }
    QString historyFile() const
    {
        QFile file(search::FolderHistory::FilePath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("<missing>");
    }

    fakes::FakeServices fx;
    QTemporaryDir tree;
    QTemporaryDir data;
    QString savedDir;
    QByteArray root;
};

TEST_F(FindFilesWindowTest, TheFindFilesFaceWithEveryCaption)
{
    make("a.txt");
    auto window = open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Find Files"));
    EXPECT_EQ(window->txtSearchSpec->text(), QStringLiteral("*.*"));
    EXPECT_EQ(window->cmdSearch->text(), QStringLiteral("&Search"));
    EXPECT_EQ(window->cmdFile->text(), QStringLiteral("&Clear"));
    EXPECT_EQ(window->cmdExit->text(), QStringLiteral("E&xit"));
    EXPECT_EQ(window->cmdHistory->text(), QStringLiteral("History"));
    EXPECT_EQ(window->cmdHistory->toolTip(), QStringLiteral("Click for history options"));
    EXPECT_EQ(window->lblfound->text(), QStringLiteral("&Files Found:"));
    EXPECT_EQ(window->lblCount->text(), QStringLiteral("0"));
    QStringList entries;
    for (QAction *entry : window->mnuPopUp->actions())
        entries << entry->text();
    EXPECT_EQ(entries, (QStringList{QStringLiteral("Add History"), QStringLiteral("Delete History"),
                                    QStringLiteral("Set To Current"), QStringLiteral("Save History"),
                                    QStringLiteral("Clear History"), QStringLiteral("Select Folder"),
                                    QStringLiteral("Open In Explorer")}));
    EXPECT_FALSE(window->cmbHistoryFull->isVisible());
    EXPECT_EQ(window->dirPath(), QDir(tree.path()).absolutePath());
    EXPECT_EQ(rows(window->filList), QStringList{QStringLiteral("a.txt")});
    EXPECT_EQ(window->drvList->itemText(0), QStringLiteral("/"));
    // The history holds the start folder first, and the file the folder it began with.
    EXPECT_EQ(window->cmbHistoryFull->itemText(0), tree.path());
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    window.reset();
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}

TEST_F(FindFilesWindowTest, TheSelectTextFilesFaceSkipsTheHistoryFile)
{
    auto window = open(-1);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Select Text Files"));
    EXPECT_EQ(window->txtSearchSpec->text(), QStringLiteral("*.txt;*.rtf;*.xml;*.doc"));
    EXPECT_EQ(findFilesState().SelectedCount, 0);
    // Only the start folder, which AddHistory put there.
    EXPECT_EQ(window->cmbHistoryFull->count(), 1);
    EXPECT_FALSE(QFile::exists(search::FolderHistory::FilePath()));
}

TEST_F(FindFilesWindowTest, SearchListsTheMatchesAndGoesToTheResultsState)
{
    make("one/a.txt");
    make("two/deeper/b.TXT");
    make("c.txt");
    make("d.doc");
    auto window = open();
    window->txtSearchSpec->setText(QStringLiteral("*.txt"));
    search(*window);
    EXPECT_EQ(rows(window->lstFoundFiles),
              (QStringList{tree.path() + QStringLiteral("/two/deeper/b.TXT"), tree.path() + QStringLiteral("/one/a.txt"),
                           tree.path() + QStringLiteral("/c.txt")}));
    EXPECT_EQ(window->lblCount->text(), QStringLiteral(" 3"));
    EXPECT_EQ(window->cmdSearch->text(), QStringLiteral("&Reset"));
    EXPECT_EQ(window->cmdExit->text(), QStringLiteral("E&xit"));
    EXPECT_TRUE(window->Picture1->isHidden());
    EXPECT_FALSE(window->Picture2->isHidden());
    // Reset goes back to browsing.
    window->cmdSearch->click();
    EXPECT_EQ(window->lstFoundFiles->count(), 0);
    EXPECT_EQ(window->lblCount->text(), QStringLiteral("0"));
    EXPECT_EQ(window->cmdSearch->text(), QStringLiteral("&Search"));
    EXPECT_TRUE(window->Picture2->isHidden());
}

TEST_F(FindFilesWindowTest, AMarkedFolderIsOpenedBeforeSearching)
{
    make("sub/x.txt");
    auto window = open();
    const QList<QListWidgetItem *> subs = window->dirList->findItems(QStringLiteral("sub"), Qt::MatchEndsWith);
    ASSERT_EQ(subs.size(), 1);
    window->dirList->setCurrentItem(subs.first());
    window->cmdSearch->click();
    EXPECT_EQ(window->dirPath(), tree.path() + QStringLiteral("/sub"));
    EXPECT_EQ(window->cmdSearch->text(), QStringLiteral("&Search"));  // look first
    EXPECT_EQ(rows(window->filList), QStringList{QStringLiteral("x.txt")});
}

TEST_F(FindFilesWindowTest, SelectWithNothingSelectedTakesAllAfterAsking)
{
    make("a/1.txt");
    make("b/2.txt");
    auto window = open();
    search(*window);
    fx.messages.answers = {shell::MsgNo};
    window->cmdSelect->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Select these 2 files?"));
    EXPECT_EQ(fx.messages.shown.last().title, QStringLiteral("Select Files"));
    EXPECT_EQ(findFilesState().SelectedCount, 0);
    fx.messages.answers = {shell::MsgYes};
    window->cmdSelect->click();
    EXPECT_EQ(findFilesState().SelectedCount, 2);
    EXPECT_EQ(findFilesState().SelectedFiles,
              (QStringList{tree.path() + QStringLiteral("/b/2.txt"), tree.path() + QStringLiteral("/a/1.txt")}));
    EXPECT_EQ(findFilesState().LastFolder, tree.path() + QLatin1Char('/'));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FindFilesWindowTest, SelectTakesTheSelectedRowsOfTheFileList)
{
    make("a.txt");
    make("b.txt");
    make("c.txt");
    auto window = open();
    window->filList->item(0)->setSelected(true);
    window->filList->item(2)->setSelected(true);
    fx.messages.answers = {shell::MsgYes};
    window->cmdSelect->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Select these 2 files?"));
    EXPECT_EQ(findFilesState().SelectedFiles,
              (QStringList{tree.path() + QStringLiteral("/a.txt"), tree.path() + QStringLiteral("/c.txt")}));
}

TEST_F(FindFilesWindowTest, ExitWithNothingChosenLeavesTheCountAtZero)
{
    auto window = open();
    window->show();
    window->cmdExit->click();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(findFilesState().SelectedCount, 0);
}

TEST_F(FindFilesWindowTest, DoubleClickOnAFoundOddNameKeepsItsBytes)
{
    make("caf\xe9/\xff.txt", "odd content");
    auto window = open();
    search(*window);
    ASSERT_EQ(window->lstFoundFiles->count(), 1);
    EXPECT_TRUE(window->lstFoundFiles->item(0)->text().contains(QChar::ReplacementCharacter));
    window->lstFoundFiles_DblClick(window->lstFoundFiles->item(0));
    ASSERT_EQ(findFilesState().SelectedCount, 1);
    EXPECT_EQ(findFilesState().SelectedPaths.first(), root + "/caf\xe9/\xff.txt");
    EXPECT_TRUE(findFilesState().LastFolder.isEmpty());
    QFile file;
    ASSERT_TRUE(search::OpenFoundFile(file, findFilesState().SelectedFiles.first(), QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("odd content"));
}

TEST_F(FindFilesWindowTest, DoubleClickInTheFileListAsksAndSelectsOne)
{
    make("pick.txt");
    auto window = open();
    fx.messages.answers = {shell::MsgYes};
    window->filList_DblClick(window->filList->item(0));
    EXPECT_EQ(lastMessage(), QStringLiteral("Select this file?"));
    EXPECT_EQ(fx.messages.shown.last().title, QStringLiteral("Select File"));
    EXPECT_EQ(findFilesState().SelectedFiles, QStringList{tree.path() + QStringLiteral("/pick.txt")});
    EXPECT_EQ(findFilesState().LastFolder, tree.path() + QLatin1Char('/'));
}

TEST_F(FindFilesWindowTest, TheLimitStopsTheSearchWithItsMessage)
{
    for (int i = 0; i < 20; ++i)
        make(QByteArray("f") + QByteArray::number(i) + ".txt");
    auto window = open();
    window->setFoundLimit(7);
    search(*window);
    EXPECT_EQ(window->lstFoundFiles->count(), 7);
    EXPECT_EQ(window->lblCount->text(), QStringLiteral(" 7"));
    EXPECT_EQ(lastMessage(), QStringLiteral("You've filled the list box. Abandoning search..."));
    EXPECT_EQ(fx.messages.shown.last().title, QStringLiteral("Out of Memory"));
}

TEST_F(FindFilesWindowTest, CancelKeepsWhatWasFoundAndEndsInTheResultsState)
{
    for (int i = 0; i < 3000; ++i)
        make(QByteArray("d") + QByteArray::number(i) + "/f.txt");
    auto window = open();
    QEventLoop loop;
    QObject::connect(window.get(), &ui::frmFindFiles::searchEnded, &loop, &QEventLoop::quit);
    window->cmdSearch->click();
    EXPECT_EQ(window->cmdExit->text(), QStringLiteral("Cancel"));
    window->cmdExit->click();
    if (window->searching() || window->cmdSearch->text() != QLatin1String("&Reset"))
        loop.exec();
    EXPECT_LT(window->lstFoundFiles->count(), 3000);
    EXPECT_EQ(window->lblCount->text().trimmed().toInt(), window->lstFoundFiles->count());
    EXPECT_EQ(window->cmdSearch->text(), QStringLiteral("&Reset"));
    EXPECT_EQ(window->cmdExit->text(), QStringLiteral("E&xit"));
}

TEST_F(FindFilesWindowTest, TheFirstHitReachesTheListWhileTheSearchRuns)
{
    for (int i = 0; i < 2000; ++i)
        make(QByteArray("d") + QByteArray::number(i) + "/f.txt");
    auto window = open();
    QEventLoop loop;
    QObject::connect(window->lstFoundFiles->model(), &QAbstractItemModel::rowsInserted, &loop, &QEventLoop::quit);
    QTimer::singleShot(30000, &loop, &QEventLoop::quit);
    window->cmdSearch->click();
    loop.exec();
    EXPECT_GE(window->lstFoundFiles->count(), 1);
    window->cmdExit_Click();  // cancel; the window's end waits for the thread
}

TEST_F(FindFilesWindowTest, HistoryAddThenUnloadAsksAndSaves)
{
    make("kept/x");
    auto window = open();
    window->setDirPath(tree.path() + QStringLiteral("/kept"));
    window->mnuPUAdd_Click();
    EXPECT_EQ(window->cmbHistoryFull->itemText(0), tree.path() + QStringLiteral("/kept"));
    window->mnuPUAdd_Click();  // already there
    EXPECT_EQ(window->cmbHistoryFull->count(), window->history().rows().size());
    window->show();
    fx.messages.answers = {shell::MsgCancel};
    window->close();
    EXPECT_EQ(lastMessage(), QStringLiteral("The folder history has changed, would you like to save the changes?"));
    EXPECT_TRUE(window->isVisible());  // Cancel refuses the unload
    fx.messages.answers = {shell::MsgYes};
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("History saved to folder "))) << lastMessage().toStdString();
    EXPECT_TRUE(historyFile().startsWith(tree.path() + QStringLiteral("/kept\r\n")));
}

TEST_F(FindFilesWindowTest, AnAutomaticHistoryChangeIsSavedSilently)
{
    auto window = open();
    window->show();
    window->close();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_TRUE(historyFile().startsWith(tree.path() + QStringLiteral("\r\n")));
}

TEST_F(FindFilesWindowTest, HistoryDeleteClearAndOpen)
{
    auto window = open();
    fx.messages.answers = {shell::MsgYes};
    window->mnuPUOpen_Click();
    EXPECT_EQ(fx.desktop.opened, QStringList{QUrl::fromLocalFile(tree.path()).toString()});
    window->cmbHistory->setCurrentIndex(0);
    window->mnuPUDelete_Click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Remove this folder from the history list?"));
    EXPECT_EQ(window->cmbHistoryFull->findText(tree.path()), -1);
    fx.messages.answers = {shell::MsgYes};
    window->mnuPUClear_Click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Would you like to clear the history file too?"));
    EXPECT_EQ(window->cmbHistory->count(), 0);
    EXPECT_EQ(historyFile(), QStringLiteral("\r\n"));
    window->mnuPUDelete_Click();
    EXPECT_EQ(lastMessage(), QStringLiteral("No folders to delete from the history list."));
    window->mnuPUOpen_Click();
    EXPECT_EQ(lastMessage(), QStringLiteral("No folders in history."));
}

TEST_F(FindFilesWindowTest, SelectFolderHandsBackTheHistoryFolder)
{
    auto window = open();
    fx.messages.answers = {shell::MsgYes};
    window->mnuPUSelect_Click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Select this history folder and quit?"));
    EXPECT_EQ(findFilesState().SelectedFiles, QStringList{tree.path()});
    EXPECT_EQ(findFilesState().SelectedCount, 1);
}

// The macro routine through the real window: the opener shows it, a timer picks a file.
TEST_F(FindFilesWindowTest, FindFilesThroughTheWindow)
{
    make("only.txt");
    search::SetFindFilesOpener([] { ui::ShowFindFiles(nullptr); });
    QTimer::singleShot(0, [this] {
        auto *window = qobject_cast<ui::frmFindFiles *>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->windowTitle(), QStringLiteral("Find Files"));
        fx.messages.answers = {shell::MsgYes};
        window->filList_DblClick(window->filList->item(0));
    });
    QString start = tree.path(), out = tree.path() + QStringLiteral("/picked.txt");
    EXPECT_EQ(search::FindFiles(start, out, QStringLiteral("v")), QString());
    search::SetFindFilesOpener(nullptr);
    QFile written(out);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QFile::encodeName(tree.path()) + "/only.txt\r\n");
}

} // namespace
