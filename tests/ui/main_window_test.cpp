#include "fakes/fake_services.h"
#include "platform/qt/qt_tray_icon.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "ui/frm_sonamark.h"

#include <QComboBox>
#include <QMenu>
#include <QTextEdit>
#include <gtest/gtest.h>

using shell::app;

TEST(MainWindow, FormLoadFillsFontSizesAndReportsMissingHook)
{
    fakes::FakeServices fx;
    app().reset();
    shell::settings().FontSizeOpt = QStringLiteral("200");
    shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
    platform::QtTrayIcon tray;
    ui::frmSonamark window(&tray);
    window.Form_Load();
    if (!tray.exists()) {
        // Offscreen has no notification area: Form_Load gives up with the fatal message.
        EXPECT_FALSE(window.loaded());
        ASSERT_EQ(fx.messages.shown.size(), 1);
        EXPECT_EQ(fx.messages.shown[0].text, "FATAL ERROR there is no taskbar currently available. Aborting.\r\n");
        EXPECT_EQ(fx.messages.shown[0].title, "Error");
    } else {
        EXPECT_TRUE(window.loaded());
        EXPECT_EQ(shell::settings().HotkeysEnabledOpt, "0");
    }
    EXPECT_EQ(window.cmbFontSize->count(), 34);  // 6, 8, .. 72
    EXPECT_EQ(window.cmbFontSize->itemText(0), "6");
    EXPECT_EQ(window.cmbFontSize->itemText(33), "72");
    EXPECT_EQ(window.cmbFontSize->currentText(), "200");
    EXPECT_EQ(window.txtSpeech->font().pointSize(), 200);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(app().WindowLoading);
}
