#include "hotkeys/macro_recording.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/recording_text.h"
#include "platform/services.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

namespace hotkeys {

namespace {

const QString kRecordingStatus = QStringLiteral("Sonamark - Creating Macro..");
const QString kIdleStatus = QStringLiteral("Sonamark - Idle");

RecordingWindow *g_window = nullptr;
QString g_savedHotkeysEnabled;
QString g_savedCaption;
bool g_ending = false;

void SetTray(platform::TrayPicture picture)
{
    if (platform::TrayIcon *tray = platform::services().tray)
        tray->changeIcon(picture);
}

} // namespace

void SetRecordingWindow(RecordingWindow *window) { g_window = window; }
RecordingWindow *recordingWindow() { return g_window; }

bool StartRecording()
{
    HookState &h = hookState();
    if (!g_window || h.MacroRecording)
        return false;
    bool includeMouse = true;
    if (!g_window->askToRecord(includeMouse))
        return false;
    h.RecordMouse = includeMouse;
    if (h.RecordMouse && !HookMouse()) {
        shell::MsgBoxOT(QStringLiteral("Can't include mouse events, mouse hook failed."), 0,
                        QStringLiteral("Mouse Hook"));
        h.RecordMouse = false;
    }
    shell::Settings &opts = shell::settings();
    g_savedHotkeysEnabled = opts.HotkeysEnabledOpt;
    opts.HotkeysEnabledOpt = QStringLiteral("0");
    g_window->stopMonitoring();
    g_savedCaption = g_window->caption();
    g_window->setCaption(kRecordingStatus);
    g_window->setStatusText(kRecordingStatus);
    SetTray(platform::TrayPicture::Macro);
    g_window->setText(QString());
    g_ending = false;
    UpdateHookPlan();
    // Input that came before this moment (the key or click that answered the question)
    // is not part of the macro: recording begins once it has all been handed on.
    auto begin = [] {
        HookState &state = hookState();
        state.MacroRecording = true;
        state.RecordClock = RecordingClock();
        UpdateHookPlan();
    };
    if (platform::InputHooks *port = platform::services().inputHooks)
        port->whenInputSettled(begin);
    else
        begin();
    return true;
}

void EndRecording()
{
    HookState &h = hookState();
    if (!h.MacroRecording || g_ending)
        return;
    g_ending = true;
    platform::InputHooks *port = platform::services().inputHooks;
    if (h.RecordMouse && port)
        port->whenInputSettled([] {
            if (g_ending)
                FinishRecording();
        });
    else
        FinishRecording();
}

void FinishRecording()
{
    HookState &h = hookState();
    if (!h.MacroRecording)
        return;
    g_ending = false;
    if (h.RecordMouse)
        UnhookMouse();
    h.MacroRecording = false;
    QString code;
    if (g_window) {
        g_window->setStatusText(kIdleStatus);
        g_window->setCaption(g_savedCaption);
        code = g_window->text();
    }
    SetTray(platform::TrayPicture::Idle);
    if (h.RecordMouse)
        code = CutEndingClick(code);
    shell::settings().HotkeysEnabledOpt = g_savedHotkeysEnabled;
    UpdateHookPlan();
    if (g_window)
        g_window->openEditor(code);
}

} // namespace hotkeys
