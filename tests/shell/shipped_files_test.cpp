// Where shipped files are found: under the program's prefix, then beside the program.
#include "shell/shipped_files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(SharedDataFolders, ThePrefixShareFolderThenTheProgramFolder)
{
    const QStringList expected{QStringLiteral("/opt/sm/share/sonamark"), QStringLiteral("/opt/sm/bin")};
    EXPECT_EQ(shell::SharedDataFolders(QStringLiteral("/opt/sm/bin/")), expected);
    EXPECT_EQ(shell::SharedDataFolders(QStringLiteral("/opt/sm/bin")), expected);
    EXPECT_EQ(shell::SharedDataFolders(QStringLiteral("/usr/bin/"))[0], "/usr/share/sonamark");
}

TEST(FindShippedFile, TheFirstFolderHoldingTheFileWins)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QDir root(dir.path());
    ASSERT_TRUE(root.mkpath("usr/bin/help"));
    ASSERT_TRUE(root.mkpath("usr/share/sonamark/help"));
    auto write = [&](const QString &relative) {
        QFile f(root.filePath(relative));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("x");
    };
    const QStringList folders = shell::SharedDataFolders(root.filePath("usr/bin"));
    write("usr/bin/help/01.html");
    EXPECT_EQ(shell::FindShippedFile("help/01.html", folders), root.filePath("usr/bin/help/01.html"));
    write("usr/share/sonamark/help/01.html");
    EXPECT_EQ(shell::FindShippedFile("help/01.html", folders), root.filePath("usr/share/sonamark/help/01.html"));
    EXPECT_EQ(shell::FindShippedFile("help/02.html", folders), QString());
    // A folder of that name is not a file.
    EXPECT_EQ(shell::FindShippedFile("help", folders), QString());
}
