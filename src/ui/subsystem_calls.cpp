#include "ui/subsystem_calls.h"

#include "engine/clipboard_command.h"
#include "engine/reader_statements.h"
#include "engine/run_hooks.h"
#include "engine/run_state.h"
#include "engine/run_timer.h"
#include "engine/runner_links.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/commands.h"
#include "macro/nonprint.h"
#include "platform/services.h"
#include "reader/clipboard_monitor.h"
#include "reader/documents.h"
#include "reader/speech.h"
#include "shell/failure_report.h"
#include "shell/settings.h"
#include "ui/frm_hotkey_list.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_sonamark.h"
#include "ui/hotkey_menus.h"
#include "ui/speech_panel.h"

namespace ui {

bool MonitoringClipboard() { return reader::monitor().Monitoring; }

void CreateSpeechObject(frmSonamark *window)
{
    if (!platform::services().speech)
        return;  // no speech engine: Talk stays disabled
    window->speechPanel->connectTrayEntries(window->mnuTalk, window->mnuPause, window->mnuStop);
    shell::Guarded("(Form) frmSonamark::Sub Form_Load", [window] { reader::CreateSpeechObject(window->speechPanel); });
}

void ReleaseSpeechObject()
{
    if (platform::services().speech)
        reader::ReleaseSpeechObject();
}

bool HookKeyboard() { return hotkeys::HookKeyboard(); }

void UnhookKeyboard() { hotkeys::UnhookKeyboard(); }

void LoadHotkeysTable()
{
    hotkeys::HotkeyTable &table = hotkeys::table();
    table.HotkeysFileName = hotkeys::HotkeysFileFromSetting(shell::settings().HotkeysFileOpt);
    if (table.HotkeysFileName.isEmpty())
        return;
    if (hotkeys::GetHotKeys() == QLatin1String("This is not a Hotkeys file")) {
        table.HotkeysFileName.clear();
        table.HotkeyCount = 0;
    }
    hotkeys::UpdateHookPlan();
}

void SetLanguageTables()
{
    macro::SetCommands();
    macro::SetNonPrint();
}

void ConnectMacroRunner(frmSonamark *window)
{
    engine::ConnectRunner();
    engine::SetStatusTextSink([window](const QString &text) { window->setStatusText(text); });
    engine::CommandLineUi commandUi;
    commandUi.hideMainWindow = [window] { window->hide(); };
    commandUi.editMacro = [window](int macroIndex) {
        window->hide();
        EditMacro(macroIndex);
    };
    engine::SetCommandLineUi(commandUi);
    SetHotkeyEditorOpener([] { EditMacro(hotkeys::table().CurrentHotkeyIndex); });
    ConnectHotkeyMenus(window);
    engine::ReaderWindows readerWindows;
    readerWindows.readToFile = [window](const QString &target) { window->ShowReadToFile(target); };
    readerWindows.hotkeyList = [window] { ShowHotkeyList(window); };
    engine::SetReaderWindows(readerWindows);
}

bool TrayClickTakenByMacro()
{
    if (engine::runState().MacroRunning) {
        engine::RequestAbort();
        return true;
    }
    if (hotkeys::hookState().MacroRecording) {
        hotkeys::EndRecording();
        return true;
    }
    return false;
}

void TrayLeftClick(frmSonamark *)
{
    // Flips clipboard monitoring, or offers Pause, Stop and Cancel while speaking.
    shell::Guarded("(Form) frmSonamark::Function MyWindowProc", [] { reader::TrayLeftClick(); });
}

void CollectClipboard(frmSonamark *)
{
    // Polling: a failing tick is ignored, the next one is the retry.
    try {
        reader::Timer3_Timer();
    } catch (...) {
    }
}

void RunPendingHotkey(frmSonamark *)
{
    shell::Guarded("(Form) frmSonamark::Sub RunTimer_Timer", [] { engine::RunTimer_Timer(); });
}

std::function<void()> SaveCurrentText(frmSonamark *) { return reader::mnuFileSave_Click; }

void StopClipboardMonitor(frmSonamark *)
{
    if (MonitoringClipboard())
        reader::cmdClipToggle_Click();  // from monitoring back to collecting
}

} // namespace ui
