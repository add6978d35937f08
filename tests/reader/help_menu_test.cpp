// The Help menu's shipped texts and the web site.
#include "fakes/fake_services.h"
#include "reader/help_menu.h"
#include "shell/app_state.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class HelpMenuTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        shell::app().reset();
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("first")));
        ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("second")));
    }
    QStringList folders() const { return {dir.filePath(QStringLiteral("first")), dir.filePath(QStringLiteral("second"))}; }
    void write(const QString &relative, const QByteArray &bytes)
    {
        QFile file(dir.filePath(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    fakes::FakeServices fx;
    QTemporaryDir dir;
};

const QString kNotAccessed = QStringLiteral("File XML_Tutorial.rtf could not be accessed.\r\n");

} // namespace

TEST(HelpFolders, UnderThePrefixThenBesideTheProgram)
{
    EXPECT_EQ(reader::HelpFolders(QStringLiteral("/opt/sonamark/bin/")),
              (QStringList{QStringLiteral("/opt/sonamark/share/sonamark/help"), QStringLiteral("/opt/sonamark/bin/help")}));
}

TEST_F(HelpMenuTest, TheFirstFolderHoldingTheFileIsShownAsPlainText)
{
    write(QStringLiteral("second/XML_Tutorial.rtf"), "{\\rtf1\\ansi {\\b Tags}\\par <emph>x</emph>\\par}");
    reader::ShowHelpFile(reader::kXmlTutorialFile, reader::kXmlSupportCaption, folders());
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_EQ(fx.textWindow.caption, QStringLiteral("XML Support"));
    EXPECT_EQ(fx.textWindow.text, QStringLiteral("Tags\r\n<emph>x</emph>"));
}

TEST_F(HelpMenuTest, AMissingOrUnreadableFileIsAFileError)
{
    const struct {
        const char *what;
        const char *file;
        QByteArray bytes;
    } rows[] = {
        {"in no folder", nullptr, {}},
        {"not rich text", "first/XML_Tutorial.rtf", "plain words"},
        {"cut off", "first/XML_Tutorial.rtf", "{\\rtf1\\ansi {\\b Tags"},
    };
    for (const auto &row : rows) {
        if (row.file)
            write(QLatin1String(row.file), row.bytes);
        fx.messages.shown.clear();
        reader::ShowHelpFile(reader::kXmlTutorialFile, reader::kXmlSupportCaption, folders());
        EXPECT_EQ(fx.textWindow.shows, 0) << row.what;
        ASSERT_EQ(fx.messages.shown.size(), 1) << row.what;
        EXPECT_EQ(fx.messages.shown[0].title, QStringLiteral("File Error")) << row.what;
        EXPECT_EQ(fx.messages.shown[0].text, kNotAccessed) << row.what;
    }
}

TEST_F(HelpMenuTest, TheShippedTutorialReadsAndNamesEveryTagTheReaderObeys)
{
    reader::ShowHelpFile(reader::kXmlTutorialFile, reader::kXmlSupportCaption,
                         {QStringLiteral(SONAMARK_SHIPPED_HELP)});
    ASSERT_TRUE(fx.messages.shown.isEmpty()) << fx.messages.shown[0].text.toStdString();
    for (const char *tag : {"<pitch middle=", "<pitch absmiddle=", "<rate speed=", "<rate absspeed=",
                            "<volume level=", "<emph>", "<silence msec=", "<spell>", "<voice required="})
        EXPECT_TRUE(fx.textWindow.text.contains(QLatin1String(tag))) << tag;
}

TEST_F(HelpMenuTest, TheWebSiteOpensInTheBrowserOrIsNamedForTheUser)
{
    reader::LaunchSonamarkWebSite(reader::kWebSiteUrl);
    EXPECT_EQ(fx.desktop.opened, QStringList{reader::kWebSiteUrl});
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    fx.desktop.canOpen = false;
    reader::LaunchSonamarkWebSite(reader::kWebSiteUrl);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, QStringLiteral("Can't Start IE"));
    EXPECT_EQ(fx.messages.shown[0].text,
              "Could not launch Internet Explorer. Visit the following link in your browser:\r\n" + reader::kWebSiteUrl
                  + "\r\n");
}
