#pragma once
// A main window stand-in for the clipboard monitor and the clip store: plain fields for
// the menus, the toggle, the timers and the text box.
#include "fakes/fake_services.h"
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"
#include "reader/tray_menu_forms.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/settings.h"

#include <QMap>
#include <QStringList>
#include <array>
#include <gtest/gtest.h>
#include <memory>

struct MenuRow {
    QString caption;
    bool visible = false;
};

class FakeClipView : public reader::ClipView {
public:
    std::array<MenuRow, 5> clipRows, picRows;
    MenuRow clipCount{QStringLiteral("0 Clip Stored"), false};
    MenuRow picCount{QStringLiteral("0 Pic Stored"), false};
    bool pics = false;
    QMap<reader::TrayEntry, bool> hidden;    // entries hidden now
    QMap<reader::TrayEntry, bool> disabled;  // entries disabled now
    QMap<reader::TrayEntry, QString> captions;
    int trayPops = 0;
    QString toggle = reader::kClipOff;
    QString toggleTip;
    bool timer1 = false, timer3 = true, timer5 = false, pasteClear = true;
    bool spellMode = false;
    QStringList statusTexts, panel1;
    QString speechText;
    int fontResets = 0;
    QStringList talks;           // the clipboard's text at each Talk
    QStringList spellChecks;
    fakes::FakeClipboard *clipboard = nullptr;

    void setClipRow(int r, const QString &c, bool v) override { clipRows.at(size_t(r)) = {c, v}; }
    void setClipCountRow(const QString &c, bool v) override { clipCount = {c, v}; }
    void setPicRow(int r, const QString &c, bool v) override { picRows.at(size_t(r)) = {c, v}; }
    void setPicCountRow(const QString &c, bool v) override { picCount = {c, v}; }
    bool picsEnabled() const override { return pics; }
    void setPicsEnabled(bool on) override { pics = on; }
    void setTrayEntryVisible(reader::TrayEntry e, bool v) override { hidden[e] = !v; }
    void setTrayEntryEnabled(reader::TrayEntry e, bool on) override { disabled[e] = !on; }
    void setTrayCaption(reader::TrayEntry e, const QString &c) override { captions[e] = c; }
    void popTrayMenu() override { ++trayPops; }
    QString clipToggleCaption() const override { return toggle; }
    void setClipToggle(const QString &c, const QString &tip) override { toggle = c; toggleTip = tip; }
    void setTimer1Enabled(bool on) override { timer1 = on; }
    void setTimer3Enabled(bool on) override { timer3 = on; }
    void setTimer5Enabled(bool on) override { timer5 = on; }
    void setPasteClearEnabled(bool on) override { pasteClear = on; }
    bool spellClipMode() const override { return spellMode; }
    void setSpellClipMode(bool on) override { spellMode = on; }
    void setStatusText(const QString &t) override { statusTexts << t; }
    void setPanel1(const QString &t) override { panel1 << t; }
    void resetClipFont() override { ++fontResets; }
    void setSpeechText(const QString &t) override { speechText = t; }
    void talk() override { talks << clipboard->content; }
    void spellCheckClip(const QString &t) override { spellChecks << t; }

    QStringList visibleClipCaptions() const
    {
        QStringList out;
        for (const MenuRow &r : clipRows)
            if (r.visible)
                out << r.caption;
        return out;
    }
};

class ClipTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        shell::app().reset();
        shell::settings().reset();
        engine::runState().MacroRunning = false;
        engine::ConnectRunner();
        reader::clipStore().reset();
        reader::monitor().reset();
        view.clipboard = &fx.clipboard;
        reader::SetClipView(&view);
        shell::SetDelaySleeper([this](int ms) { slept += ms; });
    }
    void TearDown() override
    {
        reader::RestoreTrayMenu();
        reader::SetClipView(nullptr);
        shell::SetDelaySleeper(nullptr);
    }
    // A plain picture of one colour, with optional changed pixels.
    static std::shared_ptr<fakes::FakePicture> Picture(int w, int h, quint32 fill = 0xff102030u)
    {
        return std::make_shared<fakes::FakePicture>(w, h, fill);
    }
    void Copy(const QString &text) { fx.clipboard.content = text; fx.clipboard.pictureContent.reset(); }

    fakes::FakeServices fx;
    FakeClipView view;
    int slept = 0;
};
