#include "ui/subsystem_calls.h"

#include "ui/frm_sonamark.h"

namespace ui {

bool MonitoringClipboard() { return false; }

void CreateSpeechObject(frmSonamark *) {}

bool HookKeyboard() { return false; }

void UnhookKeyboard() {}

void LoadHotkeysTable() {}

void TrayLeftClick(frmSonamark *) {}

void CollectClipboard(frmSonamark *) {}

void RunPendingHotkey(frmSonamark *) {}

std::function<void()> SaveCurrentText(frmSonamark *) { return {}; }

} // namespace ui
