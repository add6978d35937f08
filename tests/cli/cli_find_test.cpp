// sonamark-cli find: in-process for its output, and as a program for its exit status.
#include "cli/find_command.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class CliFindTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        root = QFile::encodeName(dir.path());
    }
    void make(const QByteArray &relative)
    {
        const QByteArray full = root + '/' + relative;
        const QByteArray folder = full.left(full.lastIndexOf('/'));
        for (qsizetype i = 1; i <= folder.size(); ++i)  // by bytes: names need not be UTF-8
            if (i == folder.size() || folder.at(i) == '/')
                ::mkdir(folder.left(i).constData(), 0755);
        const int fd = ::open(full.constData(), O_WRONLY | O_CREAT, 0644);
        ASSERT_GE(fd, 0);
        ::close(fd);
    }
    int find(const QList<QByteArray> &args)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        err.clear();
        QTextStream e(&err);
        QList<QByteArray> line{"find"};
        line += args;
        const int status = cli::RunFind(line, buffer, e);
        e.flush();
        out = buffer.data();
        return status;
    }
    QTemporaryDir dir;
    QByteArray root;
    QByteArray out;
    QString err;
};

TEST_F(CliFindTest, PrintsOneFullPathALineInTheFindersOrder)
{
    make("b/two.txt");
    make("a/one.TXT");
    make("top.txt");
    make("skip.doc");
    EXPECT_EQ(find({root, "*.txt"}), 0);
    EXPECT_EQ(out, root + "/b/two.txt\n" + root + "/a/one.TXT\n" + root + "/top.txt\n");
}

TEST_F(CliFindTest, NoneFoundIsStatusOne)
{
    make("a/one.txt");
    EXPECT_EQ(find({root, "*.doc"}), 1);
    EXPECT_TRUE(out.isEmpty());
}

TEST_F(CliFindTest, MaxStopsAfterNFiles)
{
    for (int i = 0; i < 10; ++i)
        make(QByteArray("f") + QByteArray::number(i) + ".txt");
    EXPECT_EQ(find({"--max", "3", root, "*.txt"}), 0);
    EXPECT_EQ(out.count('\n'), 3);
    EXPECT_EQ(find({root, "--max", "30", "*.txt"}), 0);
    EXPECT_EQ(out.count('\n'), 10);
}

TEST_F(CliFindTest, BadArgumentsAreStatusTwoWithAReason)
{
    EXPECT_EQ(find({}), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("give one FOLDER and one PATTERN"))) << err.toStdString();
    EXPECT_EQ(find({root}), 2);
    EXPECT_EQ(find({root, "*", "extra"}), 2);
    EXPECT_EQ(find({"--max", root, "*"}), 2);
    EXPECT_EQ(find({"--max", "0", root, "*"}), 2);
    EXPECT_EQ(find({"--max", "x", root, "*"}), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("not 'x'"))) << err.toStdString();
    EXPECT_EQ(find({"--deep", root, "*"}), 2);
    EXPECT_EQ(find({root + "/missing", "*"}), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("is not a folder"))) << err.toStdString();
    EXPECT_TRUE(out.isEmpty());
}

TEST_F(CliFindTest, OddNamesArePrintedByTheirRealBytes)
{
    make("caf\xe9/\xff\xfe.txt");
    EXPECT_EQ(find({root, "*.txt"}), 0);
    EXPECT_EQ(out, root + "/caf\xe9/\xff\xfe.txt\n");
}

TEST_F(CliFindTest, TheProgramGivesTheSameLinesAndStatus)
{
    make("x/a.txt");
    make("b.txt");
    QProcess cli;
    cli.start(QStringLiteral(SONAMARK_CLI_PATH), {QStringLiteral("find"), dir.path(), QStringLiteral("*.txt")});
    ASSERT_TRUE(cli.waitForFinished(30000));
    EXPECT_EQ(cli.exitCode(), 0);
    EXPECT_EQ(cli.readAllStandardOutput(), root + "/x/a.txt\n" + root + "/b.txt\n");
    cli.start(QStringLiteral(SONAMARK_CLI_PATH), {QStringLiteral("find"), dir.path(), QStringLiteral("*.none")});
    ASSERT_TRUE(cli.waitForFinished(30000));
    EXPECT_EQ(cli.exitCode(), 1);
    cli.start(QStringLiteral(SONAMARK_CLI_PATH), {QStringLiteral("find"), dir.path()});
    ASSERT_TRUE(cli.waitForFinished(30000));
    EXPECT_EQ(cli.exitCode(), 2);
    EXPECT_TRUE(cli.readAllStandardError().contains("Usage: sonamark-cli find"));
}

} // namespace
