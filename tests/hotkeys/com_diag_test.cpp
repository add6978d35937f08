// frmComDiag's decisions: the flags each dialog type offers and their captions, the
// rules for adding flags and for the fields, and the dialog string and statement it
// makes, read back by the parser and run by the interpreter.
#include "engine/interpreter.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/com_diag.h"
#include "hotkeys/dialog_string.h"
#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/variables.h"

#include <gtest/gtest.h>

using namespace hotkeys;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

QStringList Names(const QList<ComDiagFlag> &flags)
{
    QStringList names;
    for (const ComDiagFlag &f : flags)
        names << f.name;
    return names;
}

TEST(ComDiag, TheTypesAreThoseTheDialogStringKnows)
{
    EXPECT_EQ(ComDiagTypes(), (QStringList{"Folder", "Open", "Save", "Color", "Font", "Print", "Help"}));
}

TEST(ComDiag, EachTypeOffersItsOwnFlagsAfterAnEmptyEntry)
{
    const struct {
        const char *type;
        int count;
        const char *prefix;
    } rows[] = {{"Open", 17, "cdlOFN"}, {"Save", 17, "cdlOFN"}, {"Color", 4, "cdlCC"}, {"Font", 18, "cdlCF"},
                {"Print", 16, "cdlPD"}, {"Help", 12, "cdlHelp"}, {"Folder", 0, ""}, {"Nonsense", 0, ""}};
    for (const auto &row : rows) {
        const QList<ComDiagFlag> flags = ComDiagFlags(QLatin1String(row.type));
        ASSERT_FALSE(flags.isEmpty()) << row.type;
        EXPECT_TRUE(flags.first().name.isEmpty() && flags.first().caption.isEmpty()) << row.type;
        EXPECT_EQ(flags.size() - 1, row.count) << row.type;
        for (int i = 1; i < flags.size(); ++i) {
            EXPECT_TRUE(flags[i].name.startsWith(QLatin1String(row.prefix))) << flags[i].name.toStdString();
            // Every name offered is one the parser gives a value (All Pages is the value 0).
            if (flags[i].name != QLatin1String("cdlPDAllPages"))
                EXPECT_NE(GetCDL(flags[i].name), 0) << flags[i].name.toStdString();
        }
    }
    EXPECT_EQ(Names(ComDiagFlags("open")), Names(ComDiagFlags("Open")));
    EXPECT_TRUE(Names(ComDiagFlags("Open")).contains("cdlOFNAllowMultiselect"));
    EXPECT_FALSE(Names(ComDiagFlags("Color")).contains("cdlOFNAllowMultiselect"));
}

TEST(ComDiag, FlagCaptionsAreTheNamesAsWords)
{
    const char *const rows[][2] = {
        {"cdlOFNAllowMultiselect", "Allow Multiselect"},
        {"cdlOFNReadOnly", "ReadOnly"},
        {"cdlOFNHideReadOnly", "Hide ReadOnly"},
        {"cdlOFNNoReadOnlyReturn", "No ReadOnly Return"},
        {"cdlOFNNoDereferenceLinks", "No Dereference Links"},
        {"cdlCCRGBInit", "RGB Init"},
        {"cdlCFANSIOnly", "ANSI Only"},
        {"cdlCFTTOnly", "TT Only"},
        {"cdlCFWYSIWYG", "WYSIWYG"},
        {"cdlPDReturnDC", "Return DC"},
        {"cdlPDUseDevModeCopies", "Use Dev Mode Copies"},
        {"cdlHelpHelpOnHelp", "Help On Help"},
        {"cdlHelpKey", "Key"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(FlagCaption(QLatin1String(row[0])), QLatin1String(row[1])) << row[0];
}

TEST(ComDiag, AFlagIsAddedOnceAndNoMoreThanTenAreTaken)
{
    ComDiagFields fields;
    fields.type = "Font";
    EXPECT_EQ(AddComDiagFlag(fields, QString()), "");
    EXPECT_TRUE(fields.flags.isEmpty());
    EXPECT_EQ(AddComDiagFlag(fields, "cdlCFBoth"), "");
    EXPECT_EQ(AddComDiagFlag(fields, "cdlCFBoth"), "The flag Both is already in the list.");
    EXPECT_EQ(fields.flags, QStringList{"cdlCFBoth"});
    QStringList names = Names(ComDiagFlags("Font")).mid(1);  // past the empty entry
    names.removeAll("cdlCFBoth");
    for (int i = 0; fields.flags.size() < kMaxDialogFlags; ++i)
        ASSERT_EQ(AddComDiagFlag(fields, names.at(i)), "");
    EXPECT_EQ(AddComDiagFlag(fields, "cdlCFWYSIWYG"),
              "A dialog takes at most 10 flags: with more, none of them takes effect.");
    EXPECT_EQ(fields.flags.size(), kMaxDialogFlags);
}

TEST(ComDiag, FieldsMayHoldNeitherThePlusSignNorADoubleQuote)
{
    ComDiagFields fields;
    fields.type = "Open";
    fields.title = "Pick a file";
    EXPECT_EQ(CheckComDiag(fields), "");
    fields.title = "C++ sources";
    EXPECT_EQ(CheckComDiag(fields), "The Dialog Title cannot hold a plus sign (+) or a double quote (\").");
    fields.title = "ok";
    fields.path = "/tmp/\"x\"";
    EXPECT_EQ(CheckComDiag(fields), "The Default Path cannot hold a plus sign (+) or a double quote (\").");
    fields.path.clear();
    fields.extension = "a+b";
    EXPECT_EQ(CheckComDiag(fields), "The Def File Ext cannot hold a plus sign (+) or a double quote (\").");
    fields = ComDiagFields();
    EXPECT_EQ(CheckComDiag(fields), "Choose a dialog type.");
}

TEST(ComDiag, TheStringReadsBackFieldByField)
{
    ComDiagFields fields;
    fields.type = "Open";
    fields.title = "Pick a file";
    fields.path = "/tmp";
    fields.extension = "txt";
    fields.flags = {"cdlOFNFileMustExist", "cdlOFNAllowMultiselect"};
    const QString text = BuildDialogString(fields);
    EXPECT_EQ(text, "dialog+Open+Pick a file+/tmp+txt+cdlOFNFileMustExist+cdlOFNAllowMultiselect");
    QString type, title, path, ext;
    QList<qint32> values;
    qint16 count = 0;
    ParseDialog(text, type, title, path, ext, values, count);
    EXPECT_EQ(type, "Open");
    EXPECT_EQ(title, "Pick a file");
    EXPECT_EQ(path, "/tmp");
    EXPECT_EQ(ext, "TXT");
    EXPECT_EQ(values, (QList<qint32>{0x1000, 0x200}));

    // Empty fields keep their separators; short paths change the marker.
    ComDiagFields folder;
    folder.type = "Folder";
    folder.shortPath = true;
    EXPECT_EQ(BuildDialogString(folder), "dialgs+Folder++++");
    EXPECT_TRUE(WantsShortPath(BuildDialogString(folder)));
    ParseDialog(BuildDialogString(folder), type, title, path, ext, values, count);
    EXPECT_EQ(type, "Folder");
    EXPECT_EQ(count, 0);
}

struct ComDiagStatementTest : ::testing::Test {
    void SetUp() override
    {
        hotkeys::table().reset();
        engine::ConnectRunner();
    }
    fakes::FakeServices fakes;
};

TEST_F(ComDiagStatementTest, TheStatementPassesTheCheckAndOpensItsDialogWhenRun)
{
    ComDiagFields fields;
    fields.type = "Save";
    fields.title = "Save the list";
    fields.path = "/tmp";
    fields.extension = "csv";
    fields.flags = {"cdlOFNOverwritePrompt"};
    const QString statement = ComDiagStatement(BuildDialogString(fields), "OUT");
    EXPECT_EQ(statement, "[USERINPUT \"dialog+Save+Save the list+/tmp+csv+cdlOFNOverwritePrompt\" OUT]");
    QString code = statement;
    EXPECT_EQ(HotkeyStatus(code), "");

    fakes.prompts.replies.push_back("/tmp/list.csv");
    HotkeyTable &t = table();
    t.Hotkeys[0] = Hotkey{true, QStringLiteral("^A"), QStringLiteral("D"), statement};
    t.HotkeyCount = 1;
    engine::RunMacro(1);
    EXPECT_EQ(fakes.prompts.asked, QStringList{"dialog 2 Save the list|/tmp|CSV|2"});
    QString name = QStringLiteral("OUT");
    int type = 0;
    EXPECT_EQ(macro::GetVarVal(name, type), "/tmp/list.csv");
}

} // namespace
