// sonamark-cli check and format: reports, formatted text, exit codes, and --write.
#include "cli_fixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class CliCheckTest : public CliFixture {
protected:
    void SetUp() override
    {
        writeHotkeys("\"<Hotkeys Macros v1.2>\"\r\n"
                     "#TRUE#,\"^%K\",\"Clean\",\"[IF A=1]\r\n[X=1]\r\n[ENDIF]\"\r\n"
                     "#TRUE#,\"^%L\",\"Broken\",\"[WAIT 0.01]\r\n[ELSE]\"\r\n"
                     "#TRUE#,\"^%M\",\"Messy\",\"[IF   A = 1 ]\r\n[LOOP I<2]\r\n[X = I]\r\n[ENDLOOP]\r\n[ENDIF]\"\r\n");
    }
    QByteArray fileBytes() const
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(CliCheckTest, CheckPrintsTheReportOfOneMacroOrTheCheckCodeReportOfEach)
{
    EXPECT_EQ(run({"check", "--hotkeys", file, "--macro", "clean"}), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(run({"check", "--hotkeys", file, "--number", "2"}), 1);
    EXPECT_EQ(out, QStringLiteral("1) ERROR line 1 Invalid time (0.1-3600 secs) for [WAIT Sec] statement\r\n"
                                  "2) ERROR line 2 Missing matching [IF Cond] statement\r\n\r\n"
                                  "There were 2 errors found.\r\n"));

    EXPECT_EQ(run({"check", "--hotkeys", file, "--all"}), 1);
    const QString rule = QString(30, QLatin1Char('='));
    EXPECT_TRUE(out.startsWith(rule + "\r\nError Check for \"Broken\"\r\n" + rule + "\r\n1) ERROR line 1")) << out.toStdString();
    EXPECT_TRUE(out.contains(rule + "\r\n1:[WAIT 0.01]\r\n2:[ELSE]\r\n")) << out.toStdString();
    EXPECT_FALSE(out.contains("Clean"));
}

TEST_F(CliCheckTest, FormatPrintsTheIndentedMacroAndWritesItBackOnlyWhenAsked)
{
    const QByteArray before = fileBytes();
    EXPECT_EQ(run({"format", "--hotkeys", file, "--macro", "Messy"}), 1);
    EXPECT_EQ(out, QStringLiteral("[IF A=1]\r\n    [LOOP I<2]\r\n        [X=I]\r\n    [ENDLOOP]\r\n[ENDIF]\r\n"));
    EXPECT_EQ(fileBytes(), before);

    EXPECT_EQ(run({"format", "--hotkeys", file, "--macro", "Messy", "--write"}), 1);
    EXPECT_NE(fileBytes(), before);
    EXPECT_EQ(run({"format", "--hotkeys", file, "--macro", "Messy"}), 0);  // formatted already
    EXPECT_EQ(run({"check", "--hotkeys", file, "--macro", "Messy"}), 0);
}

TEST_F(CliCheckTest, BadArgumentsAndFilesExitTwo)
{
    EXPECT_EQ(run({"check", "--hotkeys", file}), 2);
    EXPECT_EQ(run({"check", "--hotkeys", file, "--all", "--number", "1"}), 2);
    EXPECT_EQ(run({"check", "--hotkeys", file, "--number", "9"}), 2);
    EXPECT_EQ(run({"format", "--hotkeys", file, "--all"}), 2);
    EXPECT_EQ(run({"check", "--hotkeys", dir.filePath("none.txt"), "--all"}), 2);
    EXPECT_EQ(run({"check", "--help"}), 0);
    EXPECT_TRUE(out.contains("Usage: sonamark-cli check"));
    EXPECT_EQ(run({"--help"}), 0);
    for (const char *command : {"run", "check", "format", "voices", "speak", "to-file"})
        EXPECT_TRUE(out.contains(QLatin1String("  ") + QLatin1String(command))) << command;
}
