#include "shell_fixture.h"

#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using shell::app;
using shell::settings;

namespace {

void writeFile(const QString &path, const QByteArray &data)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray optionsFile(const QStringList &fields)
{
    QByteArray data;
    for (const QString &f : fields)
        data += '"' + f.toUtf8() + "\"\r\n";
    return data;
}

} // namespace

class SettingsTest : public ShellTest {};

TEST_F(SettingsTest, MissingFileWritesDefaults)
{
    shell::GetOptions();
    EXPECT_EQ(settings().VoiceOpt, "Mary");
    EXPECT_EQ(settings().HotkeysFileOpt, path("Hotkeys.txt"));
    EXPECT_EQ(readFile(path("options.def")),
              optionsFile({"12", "Mary", "0", "100", "0", "1", "0", path("Hotkeys.txt")}));
    EXPECT_FALSE(app().OptionsDirty);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(SettingsTest, SetupPlaceholderIsReplacedByDefaults)
{
    // Also behind empty lines, where the field reader finds the first field.
    for (const QByteArray &file : {QByteArray("\"SETUP\"\r\n"), QByteArray("\n\r\n\"SETUP\"\n")}) {
        writeFile(path("options.def"), file);
        shell::GetOptions();
        EXPECT_EQ(settings().RateOpt, "0");
        EXPECT_EQ(settings().FontSizeOpt, "12");
        EXPECT_TRUE(readFile(path("options.def")).startsWith("\"12\"\r\n\"Mary\""));
    }
}

TEST_F(SettingsTest, BadValuesAreReplacedAndMarkDirty)
{
    struct Row { int field; QString stored; QString expected; bool dirty; };
    const Row rows[] = {
        {0, "200", "200", false},  // the font size test lets every number pass
        {2, "11", "0", true},      {2, "-10", "-10", false},
        {3, "0", "100", true},     {3, "1", "1", false},
        {4, "-11", "0", true},
        {5, "-31", "-13", true},   {5, "4", "1", true},
        {5, "-30", "-30", false},  {5, "3", "3", false},
        {6, "yes", "0", true},
        {7, "my.txt", path("my.txt"), true},
        {7, "/home/a/h.txt", "/home/a/h.txt", false},
    };
    for (const Row &row : rows) {
        QStringList fields = {"12", "Paul", "0", "100", "0", "1", "1", "/x/Hotkeys.txt"};
        fields[row.field] = row.stored;
        writeFile(path("options.def"), optionsFile(fields));
        app().OptionsDirty = false;
        shell::GetOptions();
        const QString values[] = {settings().FontSizeOpt, settings().VoiceOpt, settings().RateOpt,
                                  settings().VolumeOpt, settings().PitchOpt, settings().Mp3QualityOpt,
                                  settings().HotkeysEnabledOpt, settings().HotkeysFileOpt};
        EXPECT_EQ(values[row.field], row.expected) << "field " << row.field << " " << row.stored.toStdString();
        EXPECT_EQ(app().OptionsDirty, row.dirty) << "field " << row.field << " " << row.stored.toStdString();
    }
}

TEST_F(SettingsTest, EmptyVoiceBecomesMaryWithoutDirty)
{
    writeFile(path("options.def"), optionsFile({"12", "", "0", "100", "0", "1", "0", "/x/h.txt"}));
    shell::GetOptions();
    EXPECT_EQ(settings().VoiceOpt, "Mary");
    EXPECT_FALSE(app().OptionsDirty);
}

TEST_F(SettingsTest, TruncatedOrGarbageFileReportsAndKeepsWhatWasRead)
{
    writeFile(path("options.def"), "\"14\"\r\n\"Paul\"\r\n");
    shell::GetOptions();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, "File Error");
    EXPECT_EQ(fx.messages.shown[0].text, "Error reading options file, using default values.\r\n");
    EXPECT_EQ(settings().FontSizeOpt, "14");
    EXPECT_EQ(settings().VoiceOpt, "Paul");
    EXPECT_EQ(settings().VolumeOpt, "100");
    EXPECT_EQ(settings().HotkeysFileOpt, path("Hotkeys.txt"));

    fx.messages.shown.clear();
    writeFile(path("options.def"), QByteArray("\x00\xff\xfe garbage \x01", 14));
    shell::GetOptions();  // must not crash; values are replaced where invalid
    EXPECT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(settings().RateOpt, "0");
}

TEST_F(SettingsTest, ShortFileIsNotMarkedForRewriting)
{
    writeFile(path("options.def"), "\"14\"\r\n");
    shell::GetOptions();
    EXPECT_FALSE(app().OptionsDirty);
    EXPECT_EQ(readFile(path("options.def")), "\"14\"\r\n");
}

TEST_F(SettingsTest, UnreadableFileIsLeftAloneAndDefaultsAreUsed)
{
    // A folder in the file's place cannot be read as a file.
    ASSERT_TRUE(QDir(dir.path()).mkdir("options.def"));
    shell::GetOptions();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "Error reading options file, using default values.\r\n");
    EXPECT_EQ(settings().RateOpt, "0");
    EXPECT_EQ(settings().HotkeysFileOpt, path("Hotkeys.txt"));
    EXPECT_FALSE(app().OptionsDirty);
    EXPECT_TRUE(QFileInfo(path("options.def")).isDir());
}

TEST_F(SettingsTest, Windows1252FileIsDecoded)
{
    writeFile(path("options.def"), optionsFile({"12", "x", "0", "100", "0", "1", "0", "/h/k.txt"})
                                       .replace("\"x\"", "\"Andr\xe9 \x80\""));
    shell::GetOptions();
    EXPECT_EQ(settings().VoiceOpt, QString::fromUtf8("André €"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(SettingsTest, WriteFailureKeepsDirtyAndSaysSo)
{
    app().AppFolder = dir.path() + QStringLiteral("/missing/folder/");
    app().OptionsDirty = true;
    shell::WriteFileOpts();
    EXPECT_TRUE(app().OptionsDirty);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "Error writing to options file, settings not saved.\r\n");
}

TEST(ValTest, LongestNumericPrefix)
{
    EXPECT_EQ(shell::Val("12abc"), 12);
    EXPECT_EQ(shell::Val("  -3.5x"), -3.5);
    EXPECT_EQ(shell::Val("abc"), 0);
    EXPECT_EQ(shell::Val("-"), 0);
    EXPECT_EQ(shell::Val(".5"), 0.5);
}
