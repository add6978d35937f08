// frmHotkeyList on the real interpreter and the fake hooks: the controls, the check marks
// round-tripping to the file and the grabs, and macros run (and stopped) from the list.
#include "engine/clipboard_command.h"
#include "engine/reader_statements.h"
#include "engine/run_hooks.h"
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "reader/clip_store.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "ui/frm_hotkey_list.h"
#include "ui/frm_run_macro_popup.h"
#include "ui/frm_sonamark.h"
#include "ui/subsystem_calls.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

namespace {

struct HotkeyListWindowTest : ::testing::Test {
    void SetUp() override
    {
        shell::app().reset();
        shell::settings().reset();
        shell::settings().FontSizeOpt = QStringLiteral("12");
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        hotkeys::hookState().reset();
        hotkeys::table().reset();
        engine::runState().reset();
        engine::ConnectRunner();
        ASSERT_TRUE(hotkeys::HookKeyboard());
        hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
        shell::SetDelaySleeper([this](int ms) { slept += ms; });
    }
    void TearDown() override
    {
        // A main window made by a test is gone: its status panel no longer takes texts.
        engine::SetStatusTextSink(nullptr);
        engine::SetReaderWindows({});
        engine::SetCommandLineUi({});
        reader::SetClipView(nullptr);
        shell::SetDelaySleeper(nullptr);
        ui::SetHotkeyEditorOpener(nullptr);
        hotkeys::hookState().reset();
    }
    void add(bool active, const QString &keys, const QString &name, const QString &code)
    {
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[size_t(t.HotkeyCount++)] = hotkeys::Hotkey{active, keys, name, code};
    }
    // The table written to its file, as the program would have read it.
    QByteArray saveTable()
    {
        EXPECT_TRUE(hotkeys::UpdateHotkeyWordsFile());
        return fileBytes();
    }
    QByteArray fileBytes() const
    {
        QFile f(hotkeys::table().HotkeysFileName);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // Answers the next frmRunMacroPopup with a wait and the minimise choice.
    void answerPopup(const QString &wait, bool minimise, bool go = true)
    {
        QTimer::singleShot(0, [=, this] {
            auto *popup = qobject_cast<ui::frmRunMacroPopup *>(QApplication::activeModalWidget());
            ASSERT_NE(popup, nullptr);
            ++popups;
            EXPECT_EQ(popup->cmdYes->text(), QStringLiteral("Continue"));
            EXPECT_EQ(popup->cmdNo->text(), QStringLiteral("Quit"));
            EXPECT_FALSE(popup->chkMinimize->isChecked());
            popup->txtWait->setText(wait);
            popup->chkMinimize->setChecked(minimise);
            (go ? popup->cmdYes : popup->cmdNo)->click();
        });
    }
    QStringList messageTexts() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text.trimmed();
        return out;
    }

    fakes::FakeServices fx;
    QTemporaryDir dir;
    int slept = 0;
    int popups = 0;
};

} // namespace

TEST_F(HotkeyListWindowTest, EveryControlHasItsCaptionAndTip)
{
    ui::SetHotkeyEditorOpener(nullptr);
    add(true, QStringLiteral("^%K"), QStringLiteral("Say"), QStringLiteral("abc"));
    ui::frmHotkeyList list;
    EXPECT_TRUE(list.isModal());
    EXPECT_EQ(list.windowTitle(), QStringLiteral("Hotkeys : Hotkeys.txt"));
    EXPECT_EQ(list.lblHeader->text(), QStringLiteral("               Hotkey                       Description"));
    EXPECT_EQ(list.chkHotkeyEnable->text(), QStringLiteral("Enable HotKeys"));
    EXPECT_TRUE(list.chkHotkeyEnable->isChecked());
    const QList<std::tuple<QPushButton *, const char *, const char *>> buttons{
        {list.cmdAll, "E&nable All", "Enable all the Hotkeys"},
        {list.cmdClear, "&Disable All", "Disable all the Hotkeys"},
        {list.cmdReverse, "Re&verse All", "Reverse Enabled/Disabled Hotkeys"},
        {list.cmdSave, "&Apply", "Apply changes to Enabled status"},
        {list.cmdRun, "&Run", "Run a selected macro"},
        {list.cmdQuit, "&Quit", "Close this form"}};
    for (const auto &[button, caption, tip] : buttons) {
        EXPECT_EQ(button->text(), QLatin1String(caption));
        EXPECT_EQ(button->toolTip(), QLatin1String(tip));
        EXPECT_TRUE(button->isEnabled()) << caption;
    }
    // No editor installed: Edit stays, disabled, and says why.
    EXPECT_EQ(list.cmdEdit->text(), QStringLiteral("&Edit"));
    EXPECT_FALSE(list.cmdEdit->isEnabled());
    EXPECT_TRUE(list.cmdEdit->toolTip().contains(QStringLiteral("not available")));
    ASSERT_EQ(list.List1->count(), 1);
    EXPECT_TRUE(list.List1->item(0)->text().startsWith(QStringLiteral("1)  ^%K ")));
    EXPECT_EQ(list.List1->item(0)->checkState(), Qt::Checked);
    EXPECT_EQ(shell::app().ChildFormDepth, 1);

    ui::SetHotkeyEditorOpener([] {});
    ui::frmHotkeyList withEditor;
    EXPECT_TRUE(withEditor.cmdEdit->isEnabled());
    EXPECT_EQ(withEditor.cmdEdit->toolTip(), QStringLiteral("Close this form and open the Hotkeys Editor"));
}

TEST_F(HotkeyListWindowTest, TheWindowClosesItsPlaceAmongTheChildWindows)
{
    {
        ui::frmHotkeyList list;
        EXPECT_EQ(shell::app().ChildFormDepth, 1);
    }
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}

TEST_F(HotkeyListWindowTest, ALongDescriptionEndsInTwoDots)
{
    add(true, QStringLiteral("^A"), QString(80, QLatin1Char('x')), QStringLiteral("abc"));
    add(true, QStringLiteral("^B"), QStringLiteral("Short"), QStringLiteral("abc"));
    ui::frmHotkeyList list;
    EXPECT_TRUE(list.List1->item(0)->text().endsWith(QStringLiteral("xx..")));
    EXPECT_TRUE(list.List1->item(1)->text().endsWith(QStringLiteral("Short")));
    // Both descriptions start in the same column.
    EXPECT_EQ(list.List1->item(0)->text().indexOf(QLatin1Char('x')),
              list.List1->item(1)->text().indexOf(QStringLiteral("Short")));
}

TEST_F(HotkeyListWindowTest, ApplyWithNoChangeDoesNotTouchTheFile)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), QStringLiteral("abc"));
    const QByteArray before = saveTable();
    // An old time stamp: a rewrite of the same bytes would still show.
    const QDateTime written(QDate(2001, 2, 3), QTime(4, 5, 6));
    {
        QFile file(hotkeys::table().HotkeysFileName);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(written, QFileDevice::FileModificationTime));
    }
    ui::frmHotkeyList list;
    list.show();
    list.cmdSave->click();
    EXPECT_EQ(messageTexts(), QStringList{QStringLiteral("Save Hotkeys: No changes to apply")});
    EXPECT_EQ(fileBytes(), before);
    EXPECT_EQ(QFileInfo(hotkeys::table().HotkeysFileName).lastModified(), written);
}

TEST_F(HotkeyListWindowTest, EnableAllThenQuitChangesNothing)
{
    add(false, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), QStringLiteral("abc"));
    const QByteArray before = saveTable();
    hotkeys::UpdateHookPlan();
    {
        ui::frmHotkeyList list;
        list.show();
        list.cmdAll->click();
        EXPECT_EQ(list.List1->item(0)->checkState(), Qt::Checked);
        EXPECT_EQ(list.List1->item(1)->checkState(), Qt::Checked);
        list.cmdQuit->click();
        EXPECT_FALSE(list.isVisible());
    }
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_FALSE(hotkeys::table().at(2).Active);
    EXPECT_EQ(fileBytes(), before);
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeyListWindowTest, CheckMarksReachTheFileAndTheGrabsAtApply)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    add(false, QStringLiteral("^B"), QStringLiteral("Two"), QStringLiteral("abc"));
    saveTable();
    hotkeys::UpdateHookPlan();
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys[0].virtualKey, int('A'));
    ui::frmHotkeyList list;
    list.show();
    list.List1->item(0)->setCheckState(Qt::Unchecked);
    list.List1->item(1)->setCheckState(Qt::Checked);
    EXPECT_TRUE(hotkeys::table().at(1).Active);  // nothing moves before Apply
    list.cmdSave->click();
    EXPECT_EQ(messageTexts(), QStringList{QStringLiteral("Save Hotkeys: Changes saved to file ")
                                          + hotkeys::table().HotkeysFileName});
    ASSERT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys[0].virtualKey, int('B'));
    // The file read back gives the same flags.
    hotkeys::table().reset();
    hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
    ASSERT_EQ(hotkeys::GetHotKeys(), QString());
    EXPECT_FALSE(hotkeys::table().at(1).Active);
    EXPECT_TRUE(hotkeys::table().at(2).Active);
}

TEST_F(HotkeyListWindowTest, TheEnableBoxSwitchesTheHotkeysAndTheMainWindowsEntries)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::ConnectMacroRunner(&window);
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    hotkeys::UpdateHookPlan();
    ASSERT_TRUE(window.mnuHotkeysEnable->isChecked());
    ui::frmHotkeyList list(&window);
    list.show();
    list.chkHotkeyEnable->click();
    EXPECT_FALSE(list.chkHotkeyEnable->isChecked());
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_FALSE(window.mnuHotkeysEnable->isChecked());
    EXPECT_FALSE(window.mnuOptionsHotkeysEnable->isChecked());
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    list.chkHotkeyEnable->click();
    EXPECT_TRUE(list.chkHotkeyEnable->isChecked());
    EXPECT_TRUE(window.mnuOptionsHotkeysEnable->isChecked());
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
}

TEST_F(HotkeyListWindowTest, AnEmptyMacroCannotBeRun)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Nothing"), QString());
    ui::frmHotkeyList list;
    list.show();
    // Enter on Run works as a click: with nothing selected it asks for a selection.
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(list.cmdRun, &enter);
    list.List1->setCurrentRow(0);
    list.cmdRun->click();
    EXPECT_EQ(messageTexts(), (QStringList{QStringLiteral("Run Macro: Select a macro to run"),
                                           QStringLiteral("Run Macro: No actions in this macro to run")}));
    EXPECT_EQ(popups, 0);
    EXPECT_TRUE(fx.keys.sent.isEmpty());
}

TEST_F(HotkeyListWindowTest, AMacroRunsFromTheListAfterItsWait)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Other"), QStringLiteral("zzz"));
    add(true, QStringLiteral("^B"), QStringLiteral("Greet"), QStringLiteral("Hello{ENTER}\r\n[SETCLIP \"done\"]"));
    ui::frmHotkeyList list;
    list.show();
    QString captionDuringRun;
    bool minimisedDuringRun = false;
    fx.keys.onDeliver = [&](const QString &) {
        captionDuringRun = list.cmdRun->text();
        minimisedDuringRun = list.isMinimized();
    };
    list.List1->setCurrentRow(1);
    answerPopup(QStringLiteral("1.5"), true);
    list.cmdRun->click();
    EXPECT_EQ(popups, 1);
    EXPECT_EQ(slept, 1500);
    EXPECT_EQ(fx.keys.sent, QStringList{QStringLiteral("SENDKEYS Hello{ENTER}")});
    EXPECT_EQ(fx.clipboard.content, QStringLiteral("done"));
    EXPECT_EQ(captionDuringRun, QStringLiteral("&Stop"));
    EXPECT_TRUE(minimisedDuringRun);
    EXPECT_FALSE(list.isMinimized());
    EXPECT_EQ(list.cmdRun->text(), QStringLiteral("&Run"));
    EXPECT_EQ(list.cmdRun->toolTip(), QStringLiteral("Run a selected macro"));
    EXPECT_FALSE(engine::runState().MacroRunning);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeyListWindowTest, QuitInThePopupOrAWaitOverAnHourRunsNothing)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Greet"), QStringLiteral("Hello"));
    ui::frmHotkeyList list;
    list.show();
    list.List1->setCurrentRow(0);
    answerPopup(QStringLiteral("5"), false, false);
    list.cmdRun->click();
    answerPopup(QStringLiteral("3601"), false);
    list.cmdRun->click();
    EXPECT_EQ(popups, 2);
    EXPECT_EQ(messageTexts(), QStringList{QStringLiteral("Run Macro: You can only wait 3600 secs before running a "
                                                         "macro. Use the [WAIT Secs] command for wait times longer")});
    EXPECT_TRUE(fx.keys.sent.isEmpty());
    EXPECT_EQ(slept, 0);
}

TEST_F(HotkeyListWindowTest, TheStopButtonAbortsTheRunningMacro)
{
    add(true, QStringLiteral("^A"), QStringLiteral("Long"), QStringLiteral("a\r\nb\r\nc"));
    ui::frmHotkeyList list;
    list.show();
    list.List1->setCurrentRow(0);
    fx.messages.answers = {shell::MsgYes};  // "Abort macro ...?"
    fx.keys.onDeliver = [&](const QString &line) {
        if (line == QStringLiteral("SENDKEYS a"))
            list.cmdRun->click();  // the button reads "&Stop" now
    };
    answerPopup(QStringLiteral("0"), false);
    list.cmdRun->click();
    EXPECT_EQ(fx.keys.sent, QStringList{QStringLiteral("SENDKEYS a")});
    EXPECT_EQ(messageTexts(), (QStringList{QStringLiteral("ABORT: Abort macro \"Long\"?"),
                                           QStringLiteral("Error Status: User abort")}));
    EXPECT_EQ(list.cmdRun->text(), QStringLiteral("&Run"));
    EXPECT_FALSE(engine::runState().MacroRunning);
}

TEST_F(HotkeyListWindowTest, TheListOpenedDuringAMacroCannotRunAnother)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    engine::runState().MacroRunning = true;
    ui::frmHotkeyList list;
    EXPECT_FALSE(list.cmdRun->isEnabled());
    engine::runState().MacroRunning = false;
}

TEST_F(HotkeyListWindowTest, TheFocusGoesToQuitOnceTheWindowIsUp)
{
    ui::frmHotkeyList list;
    list.show();
    EXPECT_TRUE(list.Timer1->isActive());
    QElapsedTimer waited;
    waited.start();
    while (list.Timer1->isActive() && waited.elapsed() < 5000)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_FALSE(list.Timer1->isActive());
    EXPECT_EQ(list.focusWidget(), list.cmdQuit);
}

TEST_F(HotkeyListWindowTest, TheMainWindowsEntryOpensTheListModally)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::ConnectMacroRunner(&window);
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    QMenu *trayHotkeys = qobject_cast<QMenu *>(window.mnuOptionsHotkeysEnable->parent());
    ASSERT_NE(trayHotkeys, nullptr);
    for (QMenu *menu : {window.mnuHotkeys, trayHotkeys}) {
        QAction *entry = nullptr;
        for (QAction *action : menu->actions())
            if (action->text() == QStringLiteral("List Hotkeys"))
                entry = action;
        ASSERT_NE(entry, nullptr);
        EXPECT_TRUE(entry->isEnabled());
        bool seen = false;
        QTimer::singleShot(0, [&] {
            auto *list = qobject_cast<ui::frmHotkeyList *>(QApplication::activeModalWidget());
            ASSERT_NE(list, nullptr);
            seen = true;
            EXPECT_EQ(list->List1->count(), 1);
            EXPECT_EQ(shell::app().ChildFormDepth, 1);
            list->cmdQuit->click();
        });
        entry->trigger();
        EXPECT_TRUE(seen);
        EXPECT_EQ(shell::app().ChildFormDepth, 0);
    }
}

TEST_F(HotkeyListWindowTest, EditClosesTheListAndOpensTheInstalledEditorOnTheSelectedMacro)
{
    add(true, QStringLiteral("^A"), QStringLiteral("One"), QStringLiteral("abc"));
    add(true, QStringLiteral("^B"), QStringLiteral("Two"), QStringLiteral("abc"));
    int listOpenAtEdit = -1;
    int editorOpened = 0;
    ui::SetHotkeyEditorOpener([&] {
        ++editorOpened;
        listOpenAtEdit = shell::app().ChildFormDepth;
    });
    QTimer::singleShot(0, [] {
        auto *list = qobject_cast<ui::frmHotkeyList *>(QApplication::activeModalWidget());
        ASSERT_NE(list, nullptr);
        list->List1->setCurrentRow(1);
        list->cmdEdit->click();
    });
    ui::ShowHotkeyList(nullptr);
    EXPECT_EQ(editorOpened, 1);
    EXPECT_EQ(listOpenAtEdit, 0);  // the list had gone
    EXPECT_EQ(hotkeys::table().CurrentHotkeyIndex, 1);
}
