#include "engine/run_hooks.h"

#include "engine/open_files.h"
#include "hotkeys/hotkey_status.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "macro/sequences.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"

namespace engine {

namespace {
std::function<void(const QString &)> g_statusSink;
}

void ResetVariableTable() { macro::ResetVariables(); }

bool NumberVariableValue(const QString &name, double &value)
{
    int type = macro::kTypeNumber;
    return macro::GetVarNumber(macro::UpperSameLength(name), value, type) && type == macro::kTypeNumber;
}

void ResetLoopSlots() { macro::ResetSequences(); }

void CloseMacroFiles() { CloseAllOpenFiles(); }

void ReleaseMacroMouseHook()
{
    const hotkeys::HookState &hooks = hotkeys::hookState();
    if (hooks.MouseHooked && !hooks.MacroRecording)
        hotkeys::UnhookMouse();
}

void RunningStateChanged() { hotkeys::UpdateHookPlan(); }

QString CheckWholeMacro(const QString &code)
{
    QString text = code;
    return hotkeys::HotkeyStatus(text);
}

ReaderState SaveReaderState()
{
    const reader::ClipView *view = reader::clipView();
    return {reader::monitor().Monitoring, view && view->spellClipMode()};
}

void ShowTray(platform::TrayPicture picture, const QString &tip)
{
    if (platform::TrayIcon *tray = platform::services().tray) {
        tray->changeIcon(picture);
        tray->changeTip(tip.left(platform::TrayIcon::kTipLength));
    }
}

void SetStatusTextSink(std::function<void(const QString &)> sink) { g_statusSink = std::move(sink); }

void ShowStatusText(const QString &text)
{
    if (g_statusSink)
        g_statusSink(text);
}

} // namespace engine
