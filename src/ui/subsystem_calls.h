#pragma once
// The main window's calls into subsystems, in one place. Each call whose subsystem is
// not part of this build yet says so here and does nothing; the menu entries that would
// need it are disabled.
#include <functional>

namespace ui {

class frmSonamark;

// Clipboard monitoring (Timer1) is on.
bool MonitoringClipboard();
// Creates the speech object and fills the voice list (nothing without an engine).
void CreateSpeechObject(frmSonamark *window);
void ReleaseSpeechObject();
// Global keyboard hook; false when none can be had (Form_Load then says so).
bool HookKeyboard();
void UnhookKeyboard();
// Reads the Hotkeys file named in the settings into the hotkeys table.
void LoadHotkeysTable();
// SetCommands and SetNonPrint: the tables of the macro language.
void SetLanguageTables();
// Connects the macro runner to the hooks and the clipboard monitor, and gives it the
// window's status panel and hide/edit operations.
void ConnectMacroRunner(frmSonamark *window);
// A click on the tray icon while a macro runs asks it to stop, and while a macro is
// recorded ends the recording (true: nothing else to do).
bool TrayClickTakenByMacro();
// A left click on the tray icon otherwise: flip monitoring (or, during speech, the
// menu of Pause, Stop and Cancel).
void TrayLeftClick(frmSonamark *window);
// Timer3: collects text clips and the clipboard command once a second.
void CollectClipboard(frmSonamark *window);
// RunTimer: runs the macro waiting in PendingHotkey.
void RunPendingHotkey(frmSonamark *window);
// What "save the current text" does at quit: File Save.
std::function<void()> SaveCurrentText(frmSonamark *window);
// Turns clipboard monitoring off when it is on (a macro recording is starting).
void StopClipboardMonitor(frmSonamark *window);

} // namespace ui
