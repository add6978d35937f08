// Reading and writing the Hotkeys file.
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace hotkeys;

namespace {

class HotkeysFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        table().reset();
        path = dir.filePath(QStringLiteral("Hotkeys.txt"));
        table().HotkeysFileName = path;
    }
    void writeBytes(const QByteArray &bytes)
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray readBytes()
    {
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll();
    }
    void addMacro(bool active, const QString &keys, const QString &name, const QString &code)
    {
        HotkeyTable &t = table();
        t.Hotkeys[t.HotkeyCount++] = Hotkey{active, keys, name, code};
    }
    QTemporaryDir dir;
    QString path;
};

const QByteArray kHeader = "\"<Hotkeys Macros v1.2>\"\r\n";

} // namespace

TEST_F(HotkeysFileTest, WritesTheExactFormat)
{
    addMacro(true, QStringLiteral("^%K"), QStringLiteral("Say"), QStringLiteral("[SETCLIP \"hi\"]\r\nabc"));
    addMacro(false, QStringLiteral("+F1"), QStringLiteral("Two"), QStringLiteral("x"));
    table().HotkeysDirty = true;
    ASSERT_TRUE(UpdateHotkeyWordsFile());
    EXPECT_FALSE(table().HotkeysDirty);
    EXPECT_EQ(readBytes(), kHeader + "#TRUE#,\"^%K\",\"Say\",\"[SETCLIP \xC3\xA0hi\xC3\xA0]\r\nabc\"\r\n"
                                     "#FALSE#,\"+F1\",\"Two\",\"x\"\r\n");
    EXPECT_EQ(table().at(1).Code, QStringLiteral("[SETCLIP \"hi\"]\r\nabc"));  // the table keeps real quotes
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("Hotkeys.txt")});
}

TEST_F(HotkeysFileTest, RoundTripKeepsQuotesAndLineEnds)
{
    const QString code = QStringLiteral("[IF X=\"a, b\"]\r\n  keys, with comma\r\n[ENDIF]");
    addMacro(true, QStringLiteral("^A"), QStringLiteral("First"), code);
    addMacro(false, QStringLiteral("^B"), QStringLiteral("Second"), QString());
    ASSERT_TRUE(UpdateHotkeyWordsFile());
    table().reset();
    table().HotkeysFileName = path;
    ASSERT_EQ(GetHotKeys(), QString());
    ASSERT_EQ(table().HotkeyCount, 2);
    EXPECT_TRUE(table().at(1).Active);
    EXPECT_EQ(table().at(1).Code, code);
    EXPECT_FALSE(table().at(2).Active);
    EXPECT_EQ(table().at(2).Description, QStringLiteral("Second"));
}

TEST_F(HotkeysFileTest, AGraveInCodeComesBackAsAQuote)
{
    addMacro(true, QStringLiteral("^A"), QStringLiteral("Voil\u00e0"), QStringLiteral("voil\u00e0 \u00c0"));
    ASSERT_TRUE(UpdateHotkeyWordsFile());
    table().reset();
    table().HotkeysFileName = path;
    ASSERT_EQ(GetHotKeys(), QString());
    EXPECT_EQ(table().at(1).Code, QStringLiteral("voil\" \""));
    EXPECT_EQ(table().at(1).Description, QStringLiteral("Voil\u00e0"));  // only Code is transformed
}

TEST_F(HotkeysFileTest, ReadsWindows1252Files)
{
    writeBytes(kHeader + "#TRUE#,\"^A\",\"Caf\xE9 \x80\",\"\xE0quoted\xE0\"\r\n");
    ASSERT_EQ(GetHotKeys(), QString());
    EXPECT_EQ(table().at(1).Description, QStringLiteral("Caf\u00e9 \u20ac"));
    EXPECT_EQ(table().at(1).Code, QStringLiteral("\"quoted\""));
}

TEST_F(HotkeysFileTest, HeaderOnlyAndEmptyKeysEndReading)
{
    writeBytes(kHeader);
    EXPECT_EQ(GetHotKeys(), QString());
    EXPECT_EQ(table().HotkeyCount, 0);
    writeBytes(kHeader + "#TRUE#,\"^A\",\"One\",\"a\"\r\n#TRUE#,\"\",\"Gap\",\"b\"\r\n#TRUE#,\"^C\",\"Lost\",\"c\"\r\n");
    EXPECT_EQ(GetHotKeys(), QString());
    EXPECT_EQ(table().HotkeyCount, 1);
}

TEST_F(HotkeysFileTest, AtMost500RecordsAreRead)
{
    QByteArray bytes = kHeader;
    for (int i = 1; i <= 501; ++i)
        bytes += "#TRUE#,\"^" + QByteArray::number(i) + "\",\"M" + QByteArray::number(i) + "\",\"x\"\r\n";
    writeBytes(bytes);
    EXPECT_EQ(GetHotKeys(), QString());
    EXPECT_EQ(table().HotkeyCount, 500);
    EXPECT_EQ(table().at(500).Description, QStringLiteral("M500"));
}

TEST_F(HotkeysFileTest, FailuresAndTheStateTheyLeave)
{
    addMacro(true, QStringLiteral("^A"), QStringLiteral("Old"), QStringLiteral("x"));
    writeBytes("\"Something else\"\r\n");
    EXPECT_EQ(GetHotKeys(), QStringLiteral("This is not a Hotkeys file"));
    EXPECT_EQ(table().HotkeyCount, 1);
    EXPECT_EQ(table().HotkeysFileName, path);

    writeBytes(kHeader + "#TRUE#,\"^A\"\r\n");  // a record cut short
    EXPECT_EQ(GetHotKeys(), QStringLiteral("Error reading Hotkeys file"));
    EXPECT_EQ(table().HotkeyCount, 0);
    EXPECT_EQ(table().HotkeysFileName, QString());

    table().HotkeysFileName = dir.filePath(QStringLiteral("missing.txt"));
    EXPECT_EQ(GetHotKeys(), QStringLiteral("This Hotkeys file does not exist"));
    EXPECT_EQ(table().HotkeysFileName, QString());
    table().HotkeysFileName = QStringLiteral("  ");
    EXPECT_EQ(GetHotKeys(), QStringLiteral("No Hotkeys file has been defined"));
    table().HotkeysFileName.clear();
    EXPECT_FALSE(UpdateHotkeyWordsFile());
}

TEST_F(HotkeysFileTest, AQuoteInAHandEditedNameCannotBreakTheRecordsBehindIt)
{
    // Found by fuzzing: a name field without quotes around it may hold one.
    writeBytes(kHeader + "#TRUE#,\"^A\",say \"hi\" now,\"first\"\r\n#TRUE#,\"^B\",\"Second\",\"second\"\r\n");
    ASSERT_EQ(GetHotKeys(), QString());
    ASSERT_EQ(table().HotkeyCount, 2);
    ASSERT_TRUE(UpdateHotkeyWordsFile());
    table().reset();
    table().HotkeysFileName = path;
    ASSERT_EQ(GetHotKeys(), QString());
    ASSERT_EQ(table().HotkeyCount, 2);
    EXPECT_EQ(table().at(1).Description, QStringLiteral("say 'hi' now"));
    EXPECT_EQ(table().at(1).Code, QStringLiteral("first"));
    EXPECT_EQ(table().at(2).Description, QStringLiteral("Second"));
    EXPECT_EQ(table().at(2).Code, QStringLiteral("second"));
}
