// The recursive search on real folder trees.
#include "search/file_search.h"
#include "search/file_walk.h"
#include "search/find_files.h"
#include "search_fixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

using search::FilePattern;
using search::WalkFolder;
using search::WalkResult;

namespace {

class FileWalkTest : public SearchTest {
protected:
    // The paths found, relative to the tree, in the walk's order.
    QList<QByteArray> walk(const QString &pattern, WalkResult *result = nullptr, qsizetype maxFiles = -1,
                           const std::atomic_bool *cancel = nullptr)
    {
        QList<QByteArray> found;
        const WalkResult r = WalkFolder(
            root, FilePattern(pattern),
            [&](const QByteArray &path) {
                EXPECT_TRUE(path.startsWith(root + '/')) << path.constData();
                found << path.mid(root.size() + 1);
                return true;
            },
            cancel, maxFiles);
        if (result)
            *result = r;
        return found;
    }
};

TEST_F(FileWalkTest, SubFoldersLastToFirstAndAFoldersFilesAfterThem)
{
    makeFile("top.txt");
    makeFile("a/a1.txt");
    makeFile("a/deep/d.txt");
    makeFile("B/b1.txt");
    makeFile("B/b2.TXT");
    makeFile("c/c.doc");
    makeFile("c/Z.txt");
    const QList<QByteArray> expected{"c/Z.txt", "B/b1.txt", "B/b2.TXT", "a/deep/d.txt", "a/a1.txt", "top.txt"};
    WalkResult result;
    EXPECT_EQ(walk(QStringLiteral("*.txt"), &result), expected);
    EXPECT_EQ(result.files, 6);
    EXPECT_EQ(result.folders, 5);
    EXPECT_FALSE(result.cancelled);
    EXPECT_FALSE(result.limitReached);
}

TEST_F(FileWalkTest, FilesOfAFolderInListOrder)
{
    for (const char *name : {"b.txt", "A.txt", "c.txt", "a.txt", "B2.txt"})
        makeFile(name);
    EXPECT_EQ(walk(QStringLiteral("*.txt")), (QList<QByteArray>{"A.txt", "a.txt", "b.txt", "B2.txt", "c.txt"}));
}

TEST_F(FileWalkTest, HiddenFilesAndFoldersStayOutUnlessThePatternAsksForThem)
{
    makeFile("seen.txt");
    makeFile(".hidden.txt");
    makeFile(".secret/inside.txt");
    makeFile("sub/.also-hidden.txt");
    EXPECT_EQ(walk(QStringLiteral("*.txt")), QList<QByteArray>{"seen.txt"});
    EXPECT_EQ(walk(QStringLiteral(".*")), (QList<QByteArray>{"sub/.also-hidden.txt", ".hidden.txt"}));
}

TEST_F(FileWalkTest, ASymbolicLinkLoopEndsAndLinkedFoldersAreNotListedTwice)
{
    makeFile("real/file.txt");
    makeFile("real/inner/deep.txt");
    ASSERT_EQ(::symlink("..", (root + "/real/inner/up").constData()), 0);
    ASSERT_EQ(::symlink((root + "/real").constData(), (root + "/zlink").constData()), 0);
    ASSERT_EQ(::symlink("missing-target", (root + "/dangling.txt").constData()), 0);
    WalkResult result;
    const QList<QByteArray> found = walk(QStringLiteral("*.txt"), &result);
    // zlink sorts last, so it is entered first; "real" is then the same folder.
    EXPECT_EQ(found, (QList<QByteArray>{"zlink/inner/deep.txt", "zlink/file.txt", "dangling.txt"}));
    EXPECT_EQ(result.folders, 3);
}

TEST_F(FileWalkTest, UnreadableFoldersAreSkipped)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every folder";
    makeFile("open/a.txt");
    makeFile("closed/b.txt");
    ASSERT_EQ(::chmod((root + "/closed").constData(), 0), 0);
    WalkResult result;
    const QList<QByteArray> found = walk(QStringLiteral("*.txt"), &result);
    ::chmod((root + "/closed").constData(), 0755);
    EXPECT_EQ(found, QList<QByteArray>{"open/a.txt"});
    EXPECT_EQ(result.unreadable, 1);
}

TEST_F(FileWalkTest, AMissingRootFindsNothing)
{
    EXPECT_TRUE(WalkFolder(root + "/nowhere", FilePattern(), [](const QByteArray &) { return true; }).files == 0);
    EXPECT_EQ(WalkFolder(root + "/nowhere", FilePattern(), [](const QByteArray &) { return true; }).unreadable, 1);
}

TEST_F(FileWalkTest, NamesThatAreNotUtf8KeepTheirBytes)
{
    const QByteArray odd("caf\xe9 \xff.txt");
    const QByteArray full = makeFile(odd, "real bytes");
    makeFile("plain.txt");
    const QList<QByteArray> found = walk(QStringLiteral("*.txt"));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found.first(), odd);
    const QString shown = search::ShownName(full);
    EXPECT_TRUE(shown.contains(QChar::ReplacementCharacter));
    EXPECT_EQ(search::RealFileName(shown), full);
    QFile file;
    ASSERT_TRUE(search::OpenFoundFile(file, shown, QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("real bytes"));
    // A plain name needs no memory of its bytes.
    EXPECT_EQ(search::RealFileName(search::ShownName(root + "/plain.txt")), root + "/plain.txt");
}

TEST_F(FileWalkTest, TenThousandFilesAreAllFound)
{
    for (int folder = 0; folder < 20; ++folder)
        for (int file = 0; file < 500; ++file)
            makeFile(QStringLiteral("f%1/n%2.%3").arg(folder).arg(file).arg(file % 2 ? "txt" : "dat").toUtf8());
    WalkResult result;
    EXPECT_EQ(walk(QStringLiteral("*.*"), &result).size(), 10000);
    EXPECT_EQ(result.folders, 21);
    EXPECT_EQ(walk(QStringLiteral("*.txt")).size(), 5000);
    EXPECT_EQ(walk(QStringLiteral("n1?.dat")).size(), 20 * 5);  // n10 .. n18, even ones
}

TEST_F(FileWalkTest, TheLimitStopsTheWalkWithWhatFits)
{
    for (int i = 0; i < 30; ++i)
        makeFile(QStringLiteral("d%1/f.txt").arg(i).toUtf8());
    WalkResult result;
    EXPECT_EQ(walk(QStringLiteral("*.txt"), &result, 12).size(), 12);
    EXPECT_TRUE(result.limitReached);
    EXPECT_EQ(walk(QStringLiteral("*.txt"), &result, 30).size(), 30);
    EXPECT_FALSE(result.limitReached);  // exactly what there is: nothing was left out
}

TEST_F(FileWalkTest, CancelEndsTheWalk)
{
    for (int i = 0; i < 50; ++i)
        makeFile(QStringLiteral("d%1/f.txt").arg(i).toUtf8());
    std::atomic_bool cancel{false};
    int seen = 0;
    const WalkResult result = WalkFolder(
        root, FilePattern(),
        [&](const QByteArray &) {
            if (++seen == 5)
                cancel = true;
            return true;
        },
        &cancel);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(seen, 5);
}

TEST_F(FileWalkTest, JoinPathNeverDoublesTheSlash)
{
    EXPECT_EQ(search::JoinPath(QByteArray("/"), QByteArray("etc")), QByteArray("/etc"));
    EXPECT_EQ(search::JoinPath(QByteArray("/home/u"), QByteArray("a")), QByteArray("/home/u/a"));
    EXPECT_EQ(search::JoinPath(QStringLiteral("/"), QStringLiteral("etc")), QStringLiteral("/etc"));
}

TEST_F(FileWalkTest, ASearchInTheRootGivesNamesWithoutADoubledSlash)
{
    QByteArray first;
    WalkFolder("/", FilePattern(QStringLiteral("*")), [&](const QByteArray &path) {
        first = path;
        return false;
    });
    ASSERT_FALSE(first.isEmpty());
    EXPECT_FALSE(first.startsWith("//")) << first.constData();
}

// The worker thread streams its matches to the thread that started it.
TEST_F(FileWalkTest, FileSearchStreamsMatchesAndFinishes)
{
    EnsureCoreApplication();
    for (int i = 0; i < 200; ++i)
        makeFile(QStringLiteral("d%1/f%1.txt").arg(i).toUtf8());
    search::FileSearch searcher;
    QList<search::FoundFile> rows;
    int signalCount = 0;
    QEventLoop loop;
    QObject::connect(&searcher, &search::FileSearch::found, &loop, [&] {
        ++signalCount;
        rows += searcher.takeFound();
    });
    QObject::connect(&searcher, &search::FileSearch::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    searcher.start(treePath(), QStringLiteral("*.txt"));
    loop.exec();
    searcher.wait();
    rows += searcher.takeFound();
    ASSERT_EQ(rows.size(), 200);
    EXPECT_GE(signalCount, 1);
    EXPECT_LE(signalCount, 200);
    EXPECT_EQ(rows.first().shown, treePath(QStringLiteral("d99/f99.txt")));  // last folder in list order
    EXPECT_EQ(rows.first().bytes, QFile::encodeName(rows.first().shown));
    EXPECT_EQ(searcher.result().files, 200);
    EXPECT_FALSE(searcher.running());
}

TEST_F(FileWalkTest, FileSearchCancelKeepsWhatWasFound)
{
    EnsureCoreApplication();
    for (int i = 0; i < 2000; ++i)
        makeFile(QStringLiteral("d%1/f.txt").arg(i).toUtf8());
    search::FileSearch searcher;
    QList<search::FoundFile> rows;
    QEventLoop loop;
    QObject::connect(&searcher, &search::FileSearch::found, &loop, [&] {
        rows += searcher.takeFound();
        searcher.cancel();
    });
    QObject::connect(&searcher, &search::FileSearch::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    searcher.start(treePath(), QStringLiteral("*.txt"));
    loop.exec();
    searcher.wait();
    rows += searcher.takeFound();
    EXPECT_TRUE(searcher.result().cancelled);
    EXPECT_GE(rows.size(), 1);
    EXPECT_LT(rows.size(), 2000);
    EXPECT_EQ(searcher.result().files, rows.size());
}

} // namespace

namespace {

TEST_F(FileWalkTest, ListFolderGivesOneFoldersSubFoldersAndMatchingFiles)
{
    makeFile("b/x.txt");
    makeFile("A/y.txt");
    makeFile(".h/z.txt");
    makeFile("one.txt");
    makeFile("Two.TXT");
    makeFile("three.doc");
    const search::FolderListing listing = search::ListFolder(root + '/', FilePattern(QStringLiteral("*.txt")));
    EXPECT_TRUE(listing.readable);
    EXPECT_EQ(listing.subFolders, (QList<QByteArray>{"A", "b"}));
    EXPECT_EQ(listing.files, (QList<QByteArray>{"one.txt", "Two.TXT"}));
    EXPECT_FALSE(search::ListFolder(root + "/missing", FilePattern()).readable);
}

} // namespace
