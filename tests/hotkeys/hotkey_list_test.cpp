// The Hotkey List's decisions on a view of plain fields and a scripted runner: the row
// texts, the flags for all rows, Apply and its file, Run with its questions, wait and stop.
#include "fakes/fake_services.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkey_list.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <stdexcept>

using hotkeys::Hotkey;
using hotkeys::HotkeyListRow;

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList &list, std::ostream *os) { *os << list.join(QLatin1Char('|')).toStdString(); }

namespace {

class FieldListView : public hotkeys::HotkeyListView {
public:
    QStringList rows;
    QList<bool> checks;
    int selected = -1;
    QString caption;
    bool enabledBox = false;
    bool runEnabled = true;
    QString runText = QStringLiteral("&Run");
    QString runTip;
    bool answerContinue = true;
    double answerWait = 0;
    bool answerMinimise = false;
    int popups = 0;
    QStringList events;  // "prepare 1", "finish", "close"

    void clearRows() override { rows.clear(), checks.clear(); }
    void addRow(const QString &text, bool checked) override { rows << text, checks << checked; }
    int rowCount() const override { return int(rows.size()); }
    bool isChecked(int row) const override { return checks.at(row); }
    void setChecked(int row, bool checked) override { checks[row] = checked; }
    int selectedRow() const override { return selected; }
    void setCaption(const QString &c) override { caption = c; }
    void setHotkeysEnabledBox(bool on) override { enabledBox = on; }
    void setRunEnabled(bool enabled) override { runEnabled = enabled; }
    QString runCaption() const override { return runText; }
    void setRunCaption(const QString &c, const QString &tip) override { runText = c, runTip = tip; }
    bool askRunOptions(double &wait, bool &minimise) override
    {
        ++popups;
        wait = answerWait;
        minimise = answerMinimise;
        return answerContinue;
    }
    void prepareRun(bool minimise) override { events << QStringLiteral("prepare %1").arg(minimise); }
    void finishRun() override { events << QStringLiteral("finish"); }
    void closeForEditor() override { events << QStringLiteral("close"); }
};

class HotkeyListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        hotkeys::table().reset();
        shell::app().reset();
        shell::settings().reset();
        hotkeys::hookState().reset();
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        ASSERT_TRUE(hotkeys::HookKeyboard());
        hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
        shell::SetDelaySleeper([this](int ms) { slept += ms; });
        links.running = [this] { return running; };
        links.stop = [this] { ++stops; };
        links.run = [this](int index) {
            ran << index;
            captionWhileRunning = view.runText;
            if (whileRunning)
                whileRunning();
            return runResult;
        };
        links.hotkeysEnabledShown = [this] { ++menuUpdates; };
        links.editorAvailable = true;
    }
    void TearDown() override
    {
        shell::SetDelaySleeper(nullptr);
        hotkeys::hookState().reset();
    }
    void add(bool active, const QString &keys, const QString &name, const QString &code)
    {
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[size_t(t.HotkeyCount++)] = Hotkey{active, keys, name, code};
    }
    // The list loaded over the table as it stands.
    hotkeys::HotkeyList &load()
    {
        list = std::make_unique<hotkeys::HotkeyList>(view, links);
        list->Form_Load();
        return *list;
    }
    QByteArray fileBytes() const
    {
        QFile f(hotkeys::table().HotkeysFileName);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QStringList messages() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text;
        return out;
    }

    fakes::FakeServices fx;
    QTemporaryDir dir;
    FieldListView view;
    hotkeys::HotkeyListLinks links;
    std::unique_ptr<hotkeys::HotkeyList> list;
    bool running = false;
    int stops = 0;
    int menuUpdates = 0;
    int slept = 0;
    QList<int> ran;
    QString runResult;
    QString captionWhileRunning;
    std::function<void()> whileRunning;
};

const QString kCodeOk = QStringLiteral("Hello{ENTER}");

// A message as the message window shows it: title, text and the line end it gets.
QString msg(const char *titleAndText, const QString &more = QString())
{
    return QString::fromUtf8(titleAndText) + more + QStringLiteral("\r\n");
}

} // namespace

TEST(HotkeyListRows, NumbersKeysAndDescriptionsStandInColumns)
{
    const Hotkey macro{true, QStringLiteral("^%K"), QStringLiteral("Say it"), QString()};
    EXPECT_EQ(HotkeyListRow(1, macro, 6), QStringLiteral("1)  ^%K   Say it"));
    EXPECT_EQ(HotkeyListRow(42, macro, 6), QStringLiteral("42) ^%K   Say it"));
    EXPECT_EQ(HotkeyListRow(500, macro, 6), QStringLiteral("500)^%K   Say it"));
    // Every row puts its description at the same place.
    const int at = int(HotkeyListRow(7, macro, 12).indexOf(QStringLiteral("Say")));
    EXPECT_EQ(HotkeyListRow(123, Hotkey{true, QStringLiteral("+{F12}"), QStringLiteral("Say"), {}}, 12)
                  .indexOf(QStringLiteral("Say")),
              at);
}

TEST(HotkeyListRows, ALongDescriptionIsCutAndEndsInTwoDots)
{
    const Hotkey fits{true, QStringLiteral("a"), QStringLiteral("0123456789"), {}};
    EXPECT_TRUE(HotkeyListRow(1, fits, 3, 10).endsWith(QStringLiteral("0123456789")));
    const Hotkey longer{true, QStringLiteral("a"), QStringLiteral("0123456789X"), {}};
    EXPECT_EQ(HotkeyListRow(1, longer, 3, 10), QStringLiteral("1)  a  01234567.."));
    const QString row = HotkeyListRow(1, Hotkey{true, QStringLiteral("a"), QString(200, QLatin1Char('d')), {}}, 3);
    EXPECT_EQ(row.size(), hotkeys::kListNumberWidth + 3 + hotkeys::kListDescriptionWidth);
    EXPECT_TRUE(row.endsWith(QStringLiteral("d..")));
}

TEST(HotkeyListRows, TheKeyColumnFollowsTheLongestKeyAndKeepsTheHeadingOverTheDescriptions)
{
    hotkeys::HotkeyTable t;
    t.Hotkeys[0].Keys = QStringLiteral("^K");
    t.HotkeyCount = 1;
    EXPECT_EQ(hotkeys::KeyColumnWidth(t), hotkeys::kListMinKeyWidth);
    EXPECT_EQ(HotkeyListRow(1, t.Hotkeys[0], hotkeys::KeyColumnWidth(t)).size(),
              hotkeys::kListHeader.indexOf(QStringLiteral("Description")));
    t.Hotkeys[1].Keys = QString(50, QLatin1Char('k'));
    EXPECT_EQ(hotkeys::KeyColumnWidth(t), hotkeys::kListMinKeyWidth);  // macro 2 isn't counted yet
    t.HotkeyCount = 2;
    EXPECT_EQ(hotkeys::KeyColumnWidth(t), 50 + hotkeys::kListKeyGap);
}

TEST(HotkeyListRows, TheCaptionNamesTheFileWithoutItsFolder)
{
    EXPECT_EQ(hotkeys::HotkeyListCaption(QStringLiteral("/home/u/.local/share/sonamark/Work.txt")),
              QStringLiteral("Hotkeys : Work.txt"));
    EXPECT_EQ(hotkeys::HotkeyListCaption(QStringLiteral("Work.txt")), QStringLiteral("Hotkeys : Work.txt"));
    EXPECT_EQ(hotkeys::HotkeyListCaption(QString()), QStringLiteral("Hotkeys : "));
}

TEST_F(HotkeyListTest, LoadShowsEveryMacroWithItsFlagAndTheOption)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    shell::settings().HotkeysEnabledOpt = QStringLiteral("0");
    load();
    ASSERT_EQ(view.rows.size(), 2);
    EXPECT_TRUE(view.rows[0].startsWith(QStringLiteral("1)  ^A")));
    EXPECT_TRUE(view.rows[1].endsWith(QStringLiteral("Two")));
    EXPECT_EQ(view.checks, (QList<bool>{true, false}));
    EXPECT_FALSE(view.enabledBox);
    EXPECT_TRUE(view.runEnabled);
    EXPECT_EQ(view.caption, QStringLiteral("Hotkeys : Hotkeys.txt"));
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    list->Form_Unload();
    list->Form_Unload();
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}

TEST_F(HotkeyListTest, RunIsOffWhenTheListOpensDuringAMacro)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    running = true;
    load();
    EXPECT_FALSE(view.runEnabled);
}

TEST_F(HotkeyListTest, TheAllButtonsMoveOnlyTheCheckMarks)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    add(false, QStringLiteral("^C"), QStringLiteral("Three"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    l.cmdReverse_Click();
    EXPECT_EQ(view.checks, (QList<bool>{false, true, true}));
    l.cmdAll_Click();
    EXPECT_EQ(view.checks, (QList<bool>{true, true, true}));
    l.cmdClear_Click();
    EXPECT_EQ(view.checks, (QList<bool>{false, false, false}));
    EXPECT_TRUE(hotkeys::table().at(1).Active);
    EXPECT_FALSE(hotkeys::table().at(2).Active);
    EXPECT_FALSE(hotkeys::table().HotkeysDirty);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeyListTest, ApplyWithoutAChangeLeavesTheFileAlone)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    QFile file(hotkeys::table().HotkeysFileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("as the user left it");
    file.close();
    hotkeys::HotkeyList &l = load();
    l.cmdReverse_Click();
    l.cmdReverse_Click();
    l.cmdSave_Click();
    EXPECT_EQ(messages(), QStringList{msg("Save Hotkeys: No changes to apply")});
    EXPECT_EQ(fileBytes(), QByteArray("as the user left it"));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("Hotkeys.txt")});
}

TEST_F(HotkeyListTest, ApplyCopiesTheChecksWritesTheFileAndChangesTheGrabs)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    hotkeys::UpdateHookPlan();
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    hotkeys::HotkeyList &l = load();
    l.cmdReverse_Click();
    l.cmdSave_Click();
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_TRUE(hotkeys::table().at(2).Active);
    EXPECT_FALSE(hotkeys::table().HotkeysDirty);
    const QByteArray bytes = fileBytes();
    EXPECT_TRUE(bytes.contains("#FALSE#,\"^A\",\"One\"")) << bytes.toStdString();
    EXPECT_TRUE(bytes.contains("#TRUE#,\"^B\",\"Two\"")) << bytes.toStdString();
    ASSERT_LT(hotkeys::table().HotkeysFileName.size(), 60);
    EXPECT_EQ(messages(),
              QStringList{msg("Save Hotkeys: Changes saved to file ", hotkeys::table().HotkeysFileName)});
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys[0].virtualKey, int('B'));
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys[0].control);
}

TEST_F(HotkeyListTest, ApplyKeepsChangesMadeElsewhereMarkedUnsaved)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::table().HotkeysDirty = true;  // the editor holds changes not saved yet
    hotkeys::HotkeyList &l = load();
    l.cmdClear_Click();
    l.cmdSave_Click();
    EXPECT_TRUE(fileBytes().contains("#FALSE#,\"^A\",\"One\""));
    EXPECT_TRUE(hotkeys::table().HotkeysDirty);
}

TEST_F(HotkeyListTest, ApplyNamesALongPathShortAndSaysWhenItCannotWrite)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    const QString folder = dir.filePath(QString(70, QLatin1Char('f')));
    hotkeys::table().HotkeysFileName = folder + QStringLiteral("/Hotkeys.txt");  // the folder doesn't exist
    hotkeys::HotkeyList &l = load();
    l.cmdClear_Click();
    l.cmdSave_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    const QString text = fx.messages.shown[0].text;
    EXPECT_TRUE(text.startsWith(QStringLiteral("Error saving changes to file "))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("../Hotkeys.txt\r\n"))) << text.toStdString();
    EXPECT_LE(text.size(), QStringLiteral("Error saving changes to file \r\n").size() + 60);
    // The flag changed in memory; the table now differs from its file.
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_TRUE(hotkeys::table().HotkeysDirty);
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST_F(HotkeyListTest, EnableAllAndClosingChangesNothing)
{
    add(false, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    l.cmdAll_Click();
    l.Form_Unload();
    list.reset();
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_FALSE(QFileInfo::exists(hotkeys::table().HotkeysFileName));
    // Opened again, the row shows the flag as it was.
    load();
    EXPECT_EQ(view.checks, QList<bool>{false});
}

TEST_F(HotkeyListTest, TheEnableBoxFlipsTheOptionTheGrabsAndTheMenus)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    hotkeys::UpdateHookPlan();
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    l.chkHotkeyEnable_MouseDown();
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
    EXPECT_FALSE(view.enabledBox);
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    EXPECT_EQ(menuUpdates, 1);
    l.chkHotkeyEnable_MouseDown();
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("1"));
    EXPECT_TRUE(view.enabledBox);
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
}

TEST_F(HotkeyListTest, RunNeedsASelectedMacroWithActions)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Empty"), QString());
    add(true, QStringLiteral("^B"), QStringLiteral("Blank line"), QStringLiteral("\r\n"));
    hotkeys::HotkeyList &l = load();
    l.cmdRun_Click();
    view.selected = 5;
    l.cmdRun_Click();
    view.selected = 0;
    l.cmdRun_Click();
    view.selected = 1;
    l.cmdRun_Click();
    EXPECT_EQ(messages(), (QStringList{msg("Run Macro: Select a macro to run"),
                                       msg("Run Macro: Select a macro to run"),
                                       msg("Run Macro: No actions in this macro to run"),
                                       msg("Run Macro: No actions in this macro to run")}));
    EXPECT_EQ(view.popups, 0);
    EXPECT_TRUE(ran.isEmpty());
}

TEST_F(HotkeyListTest, RunWaitsThenRunsUnderAStopCaption)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(true, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 1;
    view.answerWait = 2.5;
    view.answerMinimise = true;
    l.cmdRun_Click();
    EXPECT_EQ(ran, QList<int>{2});
    EXPECT_EQ(slept, 2500);
    EXPECT_EQ(captionWhileRunning, QStringLiteral("&Stop"));
    EXPECT_EQ(view.runText, QStringLiteral("&Run"));
    EXPECT_EQ(view.runTip, QStringLiteral("Run a selected macro"));
    EXPECT_EQ(view.events, (QStringList{QStringLiteral("prepare 1"), QStringLiteral("finish")}));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeyListTest, TheStopCaptionStopsTheRunningMacro)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    // A click on the button while the macro runs (events are served inside the run).
    whileRunning = [&] {
        running = true;
        l.cmdRun_Click();
        EXPECT_EQ(stops, 1);
        EXPECT_EQ(view.runText, QStringLiteral("&Run"));
        EXPECT_EQ(view.runTip, QStringLiteral("Run a selected macro"));
        running = false;
    };
    runResult = QStringLiteral("User abort");
    l.cmdRun_Click();
    EXPECT_EQ(ran, QList<int>{1});  // the stop click started nothing
    EXPECT_EQ(view.popups, 1);
    EXPECT_EQ(messages(), QStringList{msg("Error Status: User abort")});
}

TEST_F(HotkeyListTest, AFailingRunStillGivesTheButtonAndTheWindowBack)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    links.run = [](int) -> QString { throw std::runtime_error("fault in a statement"); };
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    EXPECT_THROW(l.cmdRun_Click(), std::runtime_error);  // on to the failure report
    EXPECT_EQ(view.runText, QStringLiteral("&Run"));
    EXPECT_EQ(view.events, (QStringList{QStringLiteral("prepare 0"), QStringLiteral("finish")}));
}

TEST_F(HotkeyListTest, QuitInThePopupOrTooLongAWaitRunsNothing)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    view.answerContinue = false;
    l.cmdRun_Click();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    view.answerContinue = true;
    view.answerWait = 3600.5;
    l.cmdRun_Click();
    EXPECT_EQ(messages(), QStringList{msg("Run Macro: You can only wait 3600 secs before running a macro. "
                                          "Use the [WAIT Secs] command for wait times longer")});
    EXPECT_TRUE(ran.isEmpty());
    EXPECT_EQ(slept, 0);
    view.answerWait = 3600;
    l.cmdRun_Click();
    EXPECT_EQ(ran, QList<int>{1});
    EXPECT_EQ(slept, 3600 * 1000);
}

TEST_F(HotkeyListTest, ANegativeWaitRunsAtOnce)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    view.answerWait = -5;
    l.cmdRun_Click();
    EXPECT_EQ(ran, QList<int>{1});
    EXPECT_EQ(slept, 0);
}

TEST_F(HotkeyListTest, AMacroStartedMeanwhileRefusesTheRun)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    running = true;  // a hotkey started a macro while the popup was open
    l.cmdRun_Click();
    EXPECT_EQ(messages(), QStringList{msg("Run Macro: A macro is already running")});
    EXPECT_TRUE(ran.isEmpty());
    EXPECT_EQ(stops, 0);
}

TEST_F(HotkeyListTest, ADisabledMacroIsEnabledOnlyOnYes)
{
    add(false, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    fx.messages.answers = {shell::MsgCancel};
    l.cmdRun_Click();
    EXPECT_EQ(messages(), QStringList{msg("Run Macro: This macro is disabled. Enable it?")});
    EXPECT_EQ(fx.messages.shown[0].type, 2);
    EXPECT_TRUE(ran.isEmpty());
    EXPECT_EQ(view.popups, 0);

    fx.messages.answers = {shell::MsgNo};
    l.cmdRun_Click();
    EXPECT_EQ(ran, QList<int>{1});  // RunMacro itself leaves a disabled macro alone
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_EQ(view.checks, QList<bool>{false});

    fx.messages.answers = {shell::MsgYes};
    l.cmdRun_Click();
    EXPECT_EQ(ran, (QList<int>{1, 1}));
    EXPECT_TRUE(hotkeys::table().at(1).Active);
    EXPECT_EQ(view.checks, QList<bool>{true});
    EXPECT_TRUE(hotkeys::table().HotkeysDirty);
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    // Apply now finds nothing to copy: the row and the flag agree.
    fx.messages.shown.clear();
    l.cmdSave_Click();
    EXPECT_EQ(messages(), QStringList{msg("Save Hotkeys: No changes to apply")});
}

TEST_F(HotkeyListTest, AMacroWithErrorsOffersTheEditorOrShowsTheCheck)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(true, QStringLiteral("^%E"), QStringLiteral("Broken"), QStringLiteral("[WAIT 0.01]\r\nok"));
    hotkeys::HotkeyList &l = load();
    view.selected = 1;

    fx.messages.answers = {shell::MsgCancel};
    l.cmdRun_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, QStringLiteral("Run Hotkey ^%E Broken"));
    EXPECT_EQ(fx.messages.shown[0].text,
              QStringLiteral("There were errors found in the code. Edit this macro instead?\r\n"));
    EXPECT_EQ(fx.textWindow.shows, 0);

    fx.messages.answers = {shell::MsgNo};
    l.cmdRun_Click();
    EXPECT_EQ(fx.textWindow.modalShows, 1);
    EXPECT_TRUE(fx.textWindow.text.startsWith(QStringLiteral("==============================\r\n"
                                                             "Error Check for \"Broken\"\r\n"
                                                             "==============================\r\n"
                                                             "1) ERROR line 1 Invalid time")))
        << fx.textWindow.text.toStdString();
    EXPECT_TRUE(fx.textWindow.text.contains(QStringLiteral("1:[WAIT 0.01]\r\n2:ok\r\n")));
    EXPECT_FALSE(l.editRequested());

    fx.messages.answers = {shell::MsgYes};
    l.cmdRun_Click();
    EXPECT_TRUE(l.editRequested());
    EXPECT_EQ(hotkeys::table().CurrentHotkeyIndex, 1);
    EXPECT_EQ(view.events, QStringList{QStringLiteral("close")});
    EXPECT_EQ(view.popups, 0);
    EXPECT_TRUE(ran.isEmpty());
}

TEST_F(HotkeyListTest, WithoutAnEditorYesShowsTheCheckInstead)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Broken"), QStringLiteral("[ELSE]"));
    links.editorAvailable = false;
    hotkeys::HotkeyList &l = load();
    view.selected = 0;
    fx.messages.answers = {shell::MsgYes};
    l.cmdRun_Click();
    EXPECT_EQ(fx.textWindow.modalShows, 1);
    EXPECT_TRUE(fx.textWindow.text.contains(QStringLiteral("Missing matching [IF Cond] statement")));
    EXPECT_FALSE(l.editRequested());
    l.cmdEdit_Click();
    EXPECT_FALSE(l.editRequested());
    EXPECT_TRUE(view.events.isEmpty());
}

TEST_F(HotkeyListTest, EditRemembersTheSelectedMacro)
{
    load().cmdEdit_Click();
    EXPECT_EQ(hotkeys::table().CurrentHotkeyIndex, -1);  // no macros
    EXPECT_TRUE(list->editRequested());

    add(true, QStringLiteral("^A"), QStringLiteral("One"), kCodeOk);
    add(true, QStringLiteral("^B"), QStringLiteral("Two"), kCodeOk);
    view.events.clear();
    hotkeys::HotkeyList &l = load();
    view.selected = 1;
    l.cmdEdit_Click();
    EXPECT_EQ(hotkeys::table().CurrentHotkeyIndex, 1);
    EXPECT_EQ(view.events, QStringList{QStringLiteral("close")});
}
