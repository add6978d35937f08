#include "fakes/fake_services.h"
#include "hotkeys/hotkeys_table.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "ui/frm_sonamark.h"
#include "ui/speech_panel.h"

#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QTemporaryDir>
#include <QKeyEvent>
#include <QApplication>
#include <QTextEdit>
#include <gtest/gtest.h>

using shell::app;

namespace {
struct MainWindowTest : ::testing::Test {
    void SetUp() override
    {
        app().reset();
        shell::settings().reset();
        shell::settings().FontSizeOpt = QStringLiteral("200");
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
    }
    fakes::FakeServices fx;
};
} // namespace

TEST_F(MainWindowTest, FormLoadShowsIdleIconAndKeepsWindowHidden)
{
    fx.inputHooks.keyboardAvailable = false;
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ASSERT_TRUE(window.loaded());
    EXPECT_TRUE(fx.tray.shown);
    EXPECT_EQ(fx.tray.tip, "Sonamark - Idle");
    EXPECT_EQ(fx.tray.picture, platform::TrayPicture::Idle);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(app().WindowLoading);
    EXPECT_EQ(window.cmbFontSize->count(), 34);  // 6, 8, .. 72
    EXPECT_EQ(window.cmbFontSize->itemText(33), "72");
    EXPECT_EQ(window.cmbFontSize->currentText(), "200");  // a stored size is never replaced
    EXPECT_EQ(window.txtSpeech->font().pointSize(), 200);
    // Without global hotkeys: said once, the menu disabled, the setting off.
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "Error hooking keyboard. No global hotkey will be available.\r\n\r\n"
                                         "Help > System Check... shows what is missing and how to fix it.\r\n");
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, "0");
    EXPECT_FALSE(app().OptionsDirty);
}

TEST_F(MainWindowTest, TheHotkeysFileIsLoadedOnlyWithTheKeyboardHookInPlace)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString file = dir.filePath(QStringLiteral("Hotkeys.txt"));
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write("\"<Hotkeys Macros v1.2>\"\r\n#TRUE#,\"^%k\",\"Waiter\",\"[WAIT 30]\"\r\n");
    out.close();
    for (const bool hooked : {false, true}) {
        hotkeys::table().reset();
        shell::settings().HotkeysFileOpt = file;
        fx.inputHooks.keyboardAvailable = hooked;
        ui::frmSonamark window(&fx.tray);
        window.Form_Load();
        EXPECT_EQ(hotkeys::table().HotkeyCount, hooked ? 1 : 0) << hooked;
    }
    hotkeys::table().reset();
}

TEST_F(MainWindowTest, NoNotificationAreaGivesUp)
{
    fx.tray.available = false;
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    EXPECT_FALSE(window.loaded());
    EXPECT_FALSE(fx.tray.shown);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "FATAL ERROR there is no taskbar currently available. Aborting.\r\n\r\n"
                                         "The command \"sonamark-cli doctor\" shows what is missing and how to fix it.\r\n");
}

TEST_F(MainWindowTest, HelpMenuEntriesAreInOrderAndEnabled)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    QMenu *help = nullptr;
    for (QAction *entry : window.menuBar()->actions())
        if (entry->text() == QLatin1String("&Help"))
            help = entry->menu();
    ASSERT_NE(help, nullptr);
    QStringList captions;
    QAction *webSite = nullptr;
    for (QAction *entry : help->actions()) {
        captions << entry->text();
        EXPECT_TRUE(entry->isEnabled()) << entry->text().toStdString();
        if (entry->text() == QLatin1String("Sonamark Web Site"))
            webSite = entry;
    }
    EXPECT_EQ(captions, (QStringList{"Instructions", "XML Support", "Email Sonamark Support", "Sonamark Web Site",
                                     "Add Sonamark Icon To DeskTop", "Run Sonamark at Startup", "System Check...", "About"}));
    ASSERT_NE(webSite, nullptr);
    webSite->trigger();
    EXPECT_EQ(fx.desktop.opened, QStringList{QStringLiteral("https://sonamark.org/")});
}

TEST_F(MainWindowTest, StatusTipIsCutAt64)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    window.setStatusText(QString(80, QLatin1Char('s')));
    EXPECT_EQ(fx.tray.tip, QString(64, QLatin1Char('s')));
}

TEST_F(MainWindowTest, QuitRemovesTheIconOnlyWhenConfirmed)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    fx.messages.answers = {-1};  // No
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(fx.tray.shown);
    fx.messages.answers = {1};  // Yes
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(fx.tray.shown);
}

TEST_F(MainWindowTest, KeyboardOnTheSlidersAndListActsAtOnce)
{
    fx.speech.voiceList = {QStringLiteral("Voice A"), QStringLiteral("Voice B")};
    shell::settings().VolumeOpt = QStringLiteral("50");
    shell::settings().RateOpt = QStringLiteral("0");
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::SpeechPanel *panel = window.speechPanel;
    const auto keyClick = [](QWidget *w, int key) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(w, &press);
    };
    keyClick(panel->VolumeSldr, Qt::Key_Down);
    EXPECT_EQ(fx.speech.vol, 49);
    EXPECT_EQ(shell::settings().VolumeOpt, "49");
    keyClick(panel->RateSldr, Qt::Key_Up);
    EXPECT_EQ(fx.speech.rt, 1);
    EXPECT_EQ(shell::settings().RateOpt, "1");
    keyClick(panel->PitchSldr, Qt::Key_PageDown);
    EXPECT_EQ(shell::settings().PitchOpt, QString::number(panel->PitchSldr->value()));
    panel->List1->setCurrentRow(0);
    keyClick(panel->List1, Qt::Key_Down);
    EXPECT_EQ(shell::settings().VoiceOpt, "Voice B");
    EXPECT_TRUE(app().OptionsDirty);
}
