#include "ui/hotkey_menus.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"
#include "shell/settings.h"
#include "ui/frm_hotkey_list.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_sonamark.h"
#include "ui/recording_window.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QTimer>
#include <memory>

namespace ui {

namespace {

const QString kMakeMacro = QStringLiteral("Make Hotkeys Macro");
const QString kListHotkeys = QStringLiteral("List Hotkeys");
const QString kEditHotkeys = QStringLiteral("Edit Hotkeys");

std::unique_ptr<MainRecordingWindow> g_recordingWindow;
QPointer<frmSonamark> g_window;

void mnuHotkeysMakeMacro_Click()
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysMakeMacro_Click", [] { hotkeys::StartRecording(); });
}

// "Enable Hotkeys", on the bar and in the tray menu, checked as the option stands.
void CheckEnableEntries(frmSonamark *window)
{
    const bool on = shell::settings().HotkeysEnabledOpt == QLatin1String("1");
    window->mnuHotkeysEnable->setChecked(on);
    window->mnuOptionsHotkeysEnable->setChecked(on);
}

void mnuHotkeysEnable_Click(frmSonamark *window)
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysEnable_Click", [window] {
        shell::Settings &opts = shell::settings();
        opts.HotkeysEnabledOpt = opts.HotkeysEnabledOpt == QLatin1String("1") ? QStringLiteral("0")
                                                                               : QStringLiteral("1");
        if (!shell::app().WindowLoading)
            shell::app().OptionsDirty = true;
        CheckEnableEntries(window);
        hotkeys::UpdateHookPlan();
    });
}

void mnuHotkeysEdit_Click()
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysEdit_Click", [] { ShowHotkeyEditor(); });
}

void mnuHotkeysList_Click(frmSonamark *window)
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysList_Click", [window] { ShowHotkeyList(window); });
}

// The entry of a menu with this caption.
QAction *MenuEntry(QMenu *menu, const QString &caption)
{
    if (!menu)
        return nullptr;
    for (QAction *action : menu->actions())
        if (action->text() == caption)
            return action;
    return nullptr;
}

} // namespace

void ConnectHotkeyMenus(frmSonamark *window)
{
    g_window = window;
    g_recordingWindow = std::make_unique<MainRecordingWindow>(window);
    hotkeys::SetRecordingWindow(g_recordingWindow.get());
    QObject::connect(window, &QObject::destroyed, [] {
        hotkeys::SetRecordingWindow(nullptr);
        hotkeys::SetRunTimerStarter(nullptr);
        g_recordingWindow.reset();
    });
    hotkeys::SetRunTimerStarter([window] { window->RunTimer->start(); });
    if (!hotkeys::hookState().KeyboardHooked)
        return;
    QMenu *trayHotkeys = qobject_cast<QMenu *>(window->mnuOptionsHotkeysEnable->parent());
    for (QAction *entry : {MenuEntry(window->mnuHotkeys, kMakeMacro), MenuEntry(trayHotkeys, kMakeMacro)}) {
        if (!entry)
            continue;
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [] { mnuHotkeysMakeMacro_Click(); });
    }
    for (QAction *entry : {MenuEntry(window->mnuHotkeys, kEditHotkeys), MenuEntry(trayHotkeys, kEditHotkeys)}) {
        if (!entry)
            continue;
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [] { mnuHotkeysEdit_Click(); });
    }
    for (QAction *entry : {MenuEntry(window->mnuHotkeys, kListHotkeys), MenuEntry(trayHotkeys, kListHotkeys)}) {
        if (!entry)
            continue;
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [window] { mnuHotkeysList_Click(window); });
    }
    for (QAction *entry : {window->mnuHotkeysEnable, window->mnuOptionsHotkeysEnable}) {
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [window] { mnuHotkeysEnable_Click(window); });
    }
}

void ShowHotkeysEnabled()
{
    if (g_window)
        CheckEnableEntries(g_window);
}

} // namespace ui
