#include "ui/hotkey_menus.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"
#include "shell/settings.h"
#include "ui/frm_sonamark.h"
#include "ui/recording_window.h"

#include <QAction>
#include <QMenu>
#include <QTimer>
#include <memory>

namespace ui {

namespace {

const QString kMakeMacro = QStringLiteral("Make Hotkeys Macro");

std::unique_ptr<MainRecordingWindow> g_recordingWindow;

void mnuHotkeysMakeMacro_Click()
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysMakeMacro_Click", [] { hotkeys::StartRecording(); });
}

void mnuHotkeysEnable_Click(frmSonamark *window)
{
    shell::Guarded("(Form) frmSonamark::Sub mnuHotkeysEnable_Click", [window] {
        shell::Settings &opts = shell::settings();
        opts.HotkeysEnabledOpt = opts.HotkeysEnabledOpt == QLatin1String("1") ? QStringLiteral("0")
                                                                               : QStringLiteral("1");
        if (!shell::app().WindowLoading)
            shell::app().OptionsDirty = true;
        const bool on = opts.HotkeysEnabledOpt == QLatin1String("1");
        window->mnuHotkeysEnable->setChecked(on);
        window->mnuOptionsHotkeysEnable->setChecked(on);
        hotkeys::UpdateHookPlan();
    });
}

// The "Make Hotkeys Macro" entry of a menu.
QAction *MakeMacroEntry(QMenu *menu)
{
    if (!menu)
        return nullptr;
    for (QAction *action : menu->actions())
        if (action->text() == kMakeMacro)
            return action;
    return nullptr;
}

} // namespace

void ConnectHotkeyMenus(frmSonamark *window)
{
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
    for (QAction *entry : {MakeMacroEntry(window->mnuHotkeys), MakeMacroEntry(trayHotkeys)}) {
        if (!entry)
            continue;
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [] { mnuHotkeysMakeMacro_Click(); });
    }
    for (QAction *entry : {window->mnuHotkeysEnable, window->mnuOptionsHotkeysEnable}) {
        entry->setEnabled(true);
        QObject::connect(entry, &QAction::triggered, window, [window] { mnuHotkeysEnable_Click(window); });
    }
}

} // namespace ui
