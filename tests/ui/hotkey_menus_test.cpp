// The main window's hotkey entries on the fake hooks: enabled when the keyboard is
// hooked, "Enable Hotkeys" switches what the hooks swallow, and a tray click ends a
// recording whose text grew in txtSpeech.
#include "fakes/fake_services.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "engine/clipboard_command.h"
#include "ui/code_box.h"
#include "ui/frm_hotkey_list.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_macro_popup.h"
#include "ui/frm_sonamark.h"
#include "ui/subsystem_calls.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QMenu>
#include <QTemporaryDir>
#include <QTextEdit>
#include <gtest/gtest.h>

namespace {

struct HotkeyMenusTest : ::testing::Test {
    void SetUp() override
    {
        shell::app().reset();
        shell::app().AppFolder = home.path() + QLatin1Char('/');  // the editor keeps Hotkeys.his there
        shell::settings().reset();
        shell::settings().FontSizeOpt = QStringLiteral("12");
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        hotkeys::hookState().reset();
    }
    void TearDown() override
    {
        delete ui::hotkeyEditor();
        ui::SetHotkeyEditorOpener(nullptr);
        engine::SetCommandLineUi({});
    }
    // Form_Load and the connections of main(); then a table of one macro.
    void load(ui::frmSonamark &window)
    {
        window.Form_Load();
        ui::ConnectMacroRunner(&window);
        hotkeys::table().reset();
        hotkeys::table().Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^%k"), QStringLiteral("K"),
                                                     QStringLiteral("a")};
        hotkeys::table().HotkeyCount = 1;
        hotkeys::UpdateHookPlan();
    }
    QAction *entry(QMenu *menu, const char *caption)
    {
        for (QAction *action : menu->actions())
            if (action->text() == QLatin1String(caption))
                return action;
        return nullptr;
    }
    QTemporaryDir home;
    fakes::FakeServices fx;
};

} // namespace

TEST_F(HotkeyMenusTest, EntriesWorkWhenTheKeyboardIsHooked)
{
    ui::frmSonamark window(&fx.tray);
    load(window);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    QAction *make = entry(window.mnuHotkeys, "Make Hotkeys Macro");
    ASSERT_NE(make, nullptr);
    EXPECT_TRUE(make->isEnabled());
    EXPECT_TRUE(window.mnuHotkeysEnable->isChecked());
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);

    window.mnuOptionsHotkeysEnable->trigger();
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
    EXPECT_FALSE(window.mnuHotkeysEnable->isChecked());
    EXPECT_FALSE(window.mnuOptionsHotkeysEnable->isChecked());
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    window.mnuHotkeysEnable->trigger();
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("1"));
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 1);
}

TEST_F(HotkeyMenusTest, ATrayClickEndsARecordingKeptInTheTextBox)
{
    ui::frmSonamark window(&fx.tray);
    load(window);
    window.txtSpeech->setPlainText(QStringLiteral("text before"));
    // frmMacroPopup: mouse events off, then Yes.
    QTimer::singleShot(0, [] {
        auto *popup = qobject_cast<ui::frmMacroPopup *>(QApplication::activeModalWidget());
        ASSERT_NE(popup, nullptr);
        EXPECT_EQ(popup->lblPopup->text(), QStringLiteral("Continue?"));
        EXPECT_TRUE(popup->chkMouseEvents->isChecked());
        popup->chkMouseEvents->setChecked(false);
        popup->cmdYes->click();
    });
    entry(window.mnuHotkeys, "Make Hotkeys Macro")->trigger();
    ASSERT_TRUE(hotkeys::hookState().MacroRecording);
    EXPECT_FALSE(hotkeys::hookState().RecordMouse);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Sonamark - Creating Macro.."));
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
    EXPECT_EQ(window.txtSpeech->toPlainText(), QString());
    fx.inputHooks.press('H', false, false, true);
    fx.inputHooks.press('I');
    EXPECT_EQ(window.txtSpeech->toPlainText(), QStringLiteral("+Hi"));
    EXPECT_TRUE(ui::TrayClickTakenByMacro());
    EXPECT_FALSE(hotkeys::hookState().MacroRecording);
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("1"));
    EXPECT_EQ(fx.tray.tip, QStringLiteral("Sonamark - Idle"));
    // The editor opens on a new macro with the recording, to be named and saved there.
    ui::frmHotkeys *editor = ui::hotkeyEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->txtAction->code(), QStringLiteral("+Hi"));
    EXPECT_FALSE(editor->tNewItem->isHidden());
    EXPECT_EQ(hotkeys::table().HotkeyCount, 1);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_FALSE(ui::TrayClickTakenByMacro());
}

TEST_F(HotkeyMenusTest, NoHookNoEntries)
{
    fx.inputHooks.keyboardAvailable = false;
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::ConnectMacroRunner(&window);
    EXPECT_FALSE(window.mnuHotkeys->isEnabled());
    EXPECT_FALSE(entry(window.mnuHotkeys, "Make Hotkeys Macro")->isEnabled());
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
}
