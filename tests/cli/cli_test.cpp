// sonamark-cli run: reports on standard output, keystrokes on standard error, exit codes.
#include "cli_fixture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class CliTest : public CliFixture {
protected:
    void SetUp() override
    {
        writeHotkeys("\"<Hotkeys Macros v1.2>\"\r\n"
                     "#TRUE#,\"^%K\",\"My Macro\",\"Hello\r\n{PRTSC\"\r\n"
                     "#TRUE#,\"^%L\",\"Notes\",\"# only a note\"\r\n"
                     "#TRUE#,\"^%M\",\"Asks\",\"a\r\nb\"\r\n");
    }
};

} // namespace

TEST_F(CliTest, CleanRunPrintsKeystrokesOnly)
{
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), file, QStringLiteral("--macro"),
                   QStringLiteral("my macro")}),
              0);
    EXPECT_EQ(out, QString());
    EXPECT_EQ(err, QStringLiteral("SENDKEYS Hello\nSENDKEYS {PRTSC\n"));
}

TEST_F(CliTest, ResultIsPrintedAsTheReportShowsIt)
{
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), file, QStringLiteral("--number"), QStringLiteral("2")}), 1);
    const QString rule(30, QLatin1Char('='));
    EXPECT_EQ(out, rule + "\r\nError Check for 2 \"Notes\"\r\n" + rule + "\r\n1:# only a note\r\n" + rule
                       + "\r\nNo actions to execute\r\n");
}

TEST_F(CliTest, BadArgumentsAndFilesExitWith2)
{
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), file}), 2);
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), file, QStringLiteral("--number"), QStringLiteral("9")}), 2);
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), file, QStringLiteral("--macro"), QStringLiteral("x"),
                   QStringLiteral("--answer"), QStringLiteral("maybe")}),
              2);
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), dir.filePath(QStringLiteral("none.txt")),
                   QStringLiteral("--number"), QStringLiteral("1")}),
              2);
    EXPECT_TRUE(err.contains(QStringLiteral("This Hotkeys file does not exist")));
    // An endless device is read only up to the size limit.
    EXPECT_EQ(run({QStringLiteral("run"), QStringLiteral("--hotkeys"), QStringLiteral("/dev/zero"),
                   QStringLiteral("--number"), QStringLiteral("1")}),
              2);
    EXPECT_TRUE(err.contains(QStringLiteral("Error reading Hotkeys file")));
}

TEST_F(CliTest, ExecutableEndToEnd)
{
    QProcess cli;
    cli.start(QStringLiteral(SONAMARK_CLI_PATH),
              {QStringLiteral("run"), QStringLiteral("--hotkeys"), file, QStringLiteral("--number"), QStringLiteral("3")});
    ASSERT_TRUE(cli.waitForFinished(30000));
    EXPECT_EQ(cli.exitCode(), 0);
    EXPECT_EQ(cli.readAllStandardOutput(), QByteArray());
    EXPECT_EQ(cli.readAllStandardError(), QByteArray("SENDKEYS a\nSENDKEYS b\n"));
}
