#include "shell/file_util.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace

TEST(WriteFileAtomically, ReplacesTheFileKeepingItsPermissionsAndLeavesNothingBeside)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("Hotkeys.txt");
    ASSERT_EQ(shell::WriteFileAtomically(path, "old"), "");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));

    EXPECT_EQ(shell::WriteFileAtomically(path, "new text"), "");
    EXPECT_EQ(readAll(path), "new text");
    EXPECT_EQ(QFile::permissions(path) & 0x7077, QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(entries(dir.path()), QStringList{"Hotkeys.txt"});
}

TEST(WriteFileAtomically, AnInterruptedSaveIsTakenOverByTheNextOne)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("options.def");
    ASSERT_EQ(shell::WriteFileAtomically(path, "whole"), "");
    // What a save killed half-way leaves beside the file: a longer, unfinished text.
    QFile stray(dir.filePath(".options.def.saving"));
    ASSERT_TRUE(stray.open(QIODevice::WriteOnly));
    stray.write(QByteArray(1000, 'x'));
    stray.close();

    EXPECT_EQ(shell::WriteFileAtomically(path, "next"), "");
    EXPECT_EQ(readAll(path), "next");  // nothing of the stray's longer text survives
    EXPECT_EQ(entries(dir.path()), QStringList{"options.def"});
}

TEST(WriteFileAtomically, ALinkIsSavedThroughAndStaysALink)
{
    QTemporaryDir dir;
    const QString real = dir.filePath("real.txt");
    const QString link = dir.filePath("link.txt");
    ASSERT_EQ(shell::WriteFileAtomically(real, "one"), "");
    ASSERT_TRUE(QFile::link(real, link));

    EXPECT_EQ(shell::WriteFileAtomically(link, "two"), "");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(readAll(real), "two");
}

TEST(WriteFileAtomically, AMissingFolderGivesAReasonAndWritesNothing)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("no such folder/file.txt");
    EXPECT_NE(shell::WriteFileAtomically(path, "text"), "");
    EXPECT_FALSE(QFile::exists(path));
}
