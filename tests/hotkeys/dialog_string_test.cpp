// Dialog strings: their fields, the flag names and the eleven-flag rule, and the
// [USERINPUT] statement that opens the dialog through the prompts port.
#include "engine/interpreter.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/dialog_string.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/variables.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace hotkeys;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

TEST(DialogString, FieldsStandBetweenThePlusSignsAndTheMarkerIsAnyCase)
{
    QString type, title, path, ext;
    QList<qint32> flags;
    qint16 count = -1;
    ParseDialog(QStringLiteral("DIALOG+Open+Pick one+/tmp/x.txt+txt+cdlOFNAllowMultiselect+nonsense+cdlOFNReadOnly"),
                type, title, path, ext, flags, count);
    EXPECT_EQ(type, "Open");
    EXPECT_EQ(title, "Pick one");
    EXPECT_EQ(path, "/tmp/x.txt");
    EXPECT_EQ(ext, "TXT");
    EXPECT_EQ(flags, (QList<qint32>{0x200, 0x1}));  // the unknown name is skipped
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(IsDialogString(QStringLiteral("DIALOG+Open")));
    EXPECT_TRUE(WantsShortPath(QStringLiteral("Dialgs+Folder")));
    EXPECT_FALSE(IsDialogString(QStringLiteral("dialog Open")));

    // Empty fields keep their places.
    ParseDialog(QStringLiteral("dialog+Save++/home++"), type, title, path, ext, flags, count);
    EXPECT_EQ(type, "Save");
    EXPECT_EQ(title, "");
    EXPECT_EQ(path, "/home");
    EXPECT_EQ(count, 0);
}

TEST(DialogString, FlagNamesHaveTheirCommonDialogValues)
{
    EXPECT_EQ(GetCDL(QStringLiteral("cdlOFNOverwritePrompt")), 0x2);
    EXPECT_EQ(GetCDL(QStringLiteral("cdlOFNFileMustExist")), 0x1000);
    EXPECT_EQ(GetCDL(QStringLiteral("cdlCFBoth")), 0x3);
    EXPECT_EQ(GetCDL(QStringLiteral("cdlPDPrintToFile")), 0x20);
    EXPECT_EQ(GetCDL(QStringLiteral("cdlHelpPartialKey")), 0x105);
    EXPECT_EQ(GetCDL(QStringLiteral("cdlNoSuchFlag")), 0);
}

class DialogStatementTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        hotkeys::table().reset();
        engine::ConnectRunner();
    }
    // Runs one [USERINPUT] line and answers the dialog with reply ("" cancels).
    QString run(const QString &title, const QString &reply)
    {
        fakes.prompts.asked.clear();
        if (!reply.isEmpty())
            fakes.prompts.replies.push_back(reply);
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^A"), QStringLiteral("D"),
                                       QStringLiteral("[USERINPUT \"") + title + QStringLiteral("\" V]")};
        t.HotkeyCount = 1;
        engine::RunMacro(1);
        QString name = QStringLiteral("V");
        int type = 0;
        const QString value = macro::GetVarVal(name, type);
        return name.isEmpty() ? QStringLiteral("<unset>") : value;
    }
    QTemporaryDir dir;
    fakes::FakeServices fakes;
};

TEST_F(DialogStatementTest, AnOpenDialogGivesThePathAndCancelGivesNothing)
{
    EXPECT_EQ(run(QStringLiteral("dialog+Open+Pick a file+/tmp+txt+cdlOFNFileMustExist"), "/tmp/a.txt"),
              "/tmp/a.txt");
    EXPECT_EQ(fakes.prompts.asked, QStringList{"dialog 1 Pick a file|/tmp|TXT|1000"});
    EXPECT_EQ(run(QStringLiteral("dialog+Open+Pick a file+/tmp+txt"), QString()), "");
    EXPECT_TRUE(fakes.textWindow.text.isEmpty());  // a cancel is no error
}

TEST_F(DialogStatementTest, AFolderDialogStartsInTheCurrentFolderWhenThePathIsNone)
{
    run(QStringLiteral("dialog+Folder+Where?+/no/such/folder++"), QString());
    EXPECT_EQ(fakes.prompts.asked, QStringList{"dialog 0 Where?|" + QDir::currentPath() + "||0"});
    run(QStringLiteral("dialog+Folder+Where?+") + dir.path() + QStringLiteral("++"), QString());
    EXPECT_EQ(fakes.prompts.asked, QStringList{"dialog 0 Where?|" + dir.path() + "||0"});
}

TEST_F(DialogStatementTest, ElevenFlagsTakeNoEffect)
{
    QString ten = QStringLiteral("dialog+Save+T+/tmp+");
    for (int i = 0; i < 10; ++i)
        ten += QStringLiteral("+cdlOFNOverwritePrompt");
    run(ten, QString());
    EXPECT_TRUE(fakes.prompts.asked.value(0).endsWith("|2")) << fakes.prompts.asked.value(0).toStdString();
    run(ten + QStringLiteral("+cdlOFNOverwritePrompt"), QString());
    EXPECT_TRUE(fakes.prompts.asked.value(0).endsWith("|0")) << fakes.prompts.asked.value(0).toStdString();
}

TEST_F(DialogStatementTest, ShortPathsAreCanonicalAndABadTypeIsReported)
{
    QDir(dir.path()).mkpath(QStringLiteral("real"));
    QFile::link(dir.filePath(QStringLiteral("real")), dir.filePath(QStringLiteral("link")));
    EXPECT_EQ(run(QStringLiteral("dialgs+Folder+F+++"), dir.filePath(QStringLiteral("link"))),
              QFileInfo(dir.filePath(QStringLiteral("real"))).canonicalFilePath());
    run(QStringLiteral("dialog+Frobnicate+T+++"), QString());
    EXPECT_TRUE(fakes.prompts.asked.isEmpty());
    EXPECT_TRUE(fakes.textWindow.text.contains("Invalid dialog string for [USERINPUT Title Var] statement"));
}

} // namespace
