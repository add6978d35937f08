// Sorting the table by name, and the file history.
#include "hotkeys/file_history.h"
#include "hotkeys/hotkey_sort.h"
#include "hotkeys/hotkeys_table.h"
#include "shell/app_state.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace hotkeys;

TEST(SortHotkeys, SortsByNameIgnoringCaseAndKeepsTheCurrentMacro)
{
    table().reset();
    const QStringList names = {QStringLiteral("delta"), QStringLiteral("Alpha"), QStringLiteral("charlie"),
                               QStringLiteral("Echo"), QStringLiteral("bravo")};
    for (const QString &n : names)
        table().Hotkeys[table().HotkeyCount++] = Hotkey{true, QStringLiteral("^") + n, n, n + QStringLiteral(" code")};
    SortHotkeys(QStringLiteral("charlie"));
    QStringList sorted;
    for (int n = 1; n <= table().HotkeyCount; ++n) {
        sorted << table().at(n).Description;
        EXPECT_EQ(table().at(n).Code, table().at(n).Description + QStringLiteral(" code"));  // records move whole
    }
    EXPECT_EQ(sorted, (QStringList{QStringLiteral("Alpha"), QStringLiteral("bravo"), QStringLiteral("charlie"),
                                   QStringLiteral("delta"), QStringLiteral("Echo")}));
    EXPECT_EQ(table().CurrentHotkeyIndex, 2);
}

TEST(SortT, SortsEverySize)
{
    for (int count = 0; count <= 40; ++count) {
        QList<SortKey> keys;
        for (int i = 0; i < count; ++i)
            keys << SortKey{QString::number((i * 7919) % 101).rightJustified(3, QLatin1Char('0')), i + 1};
        SortT(keys);
        for (int i = 1; i < keys.size(); ++i)
            EXPECT_LE(keys[i - 1].Key, keys[i].Key) << "count " << count;
        for (const SortKey &k : keys)
            EXPECT_EQ(k.Key, QString::number(((k.Position - 1) * 7919) % 101).rightJustified(3, QLatin1Char('0')));
    }
}

TEST(FileHistory, ReadsFiveDropsGoneFilesAndRewrites)
{
    QTemporaryDir dir;
    shell::app().AppFolder = dir.path() + QLatin1Char('/');
    QStringList lines;
    for (int i = 1; i <= 7; ++i) {
        const QString file = dir.filePath(QStringLiteral("h%1.txt").arg(i));
        if (i != 2) {
            QFile f(file);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        }
        lines << file;
    }
    lines.insert(3, lines.at(0).toUpper());  // a repeat that differs in case
    QFile his(dir.filePath(kHistoryFileName));
    ASSERT_TRUE(his.open(QIODevice::WriteOnly));
    his.write((lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8());
    his.close();

    const QStringList read = ReadFileHistory();
    EXPECT_EQ(read, (QStringList{lines[0], lines[2], lines[4], lines[5], lines[6]}));
    ASSERT_TRUE(his.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(his.readAll()), read.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    his.close();

    EXPECT_EQ(UpdateFileHistory(read, read[2]), (QStringList{read[2], read[0], read[1], read[3], read[4]}));
    shell::app().reset();
}
