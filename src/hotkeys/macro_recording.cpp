#include "hotkeys/macro_recording.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/recording_text.h"
#include "platform/services.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

namespace hotkeys {

namespace {

const QString kRecordingStatus = QStringLiteral("Sonamark - Creating Macro..");
const QString kIdleStatus = QStringLiteral("Sonamark - Idle");
// A key that no key press produces (virtual key 0): the macro never fires until the
// user gives it a real one.
const QString kNoKeys = QStringLiteral("{?}");

RecordingWindow *g_window = nullptr;
QString g_savedHotkeysEnabled;
QString g_savedCaption;
bool g_ending = false;

void SetTray(platform::TrayPicture picture)
{
    if (platform::TrayIcon *tray = platform::services().tray)
        tray->changeIcon(picture);
}

QString UnusedRecordingName()
{
    const HotkeyTable &t = table();
    for (int n = t.HotkeyCount + 1;; ++n) {
        const QString name = QStringLiteral("Recorded Macro %1").arg(n);
        bool used = false;
        for (int i = 1; i <= t.HotkeyCount && !used; ++i)
            used = t.at(i).Description == name;
        if (!used)
            return name;
    }
}

} // namespace

void SetRecordingWindow(RecordingWindow *window) { g_window = window; }
RecordingWindow *recordingWindow() { return g_window; }

void StartRecording()
{
    HookState &h = hookState();
    if (!g_window || h.MacroRecording)
        return;
    bool includeMouse = true;
    if (!g_window->askToRecord(includeMouse))
        return;
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

QString AddRecordedMacro(const QString &code)
{
    HotkeyTable &t = table();
    if (t.HotkeyCount >= kMaxHotkeys)
        return QStringLiteral("The hotkeys table is full (%1 macros): the recorded macro stays in the text box only.")
            .arg(kMaxHotkeys);
    const int number = t.HotkeyCount + 1;
    Hotkey &macro = t.at(number);
    macro.Active = false;
    macro.Keys = kNoKeys;
    macro.Description = UnusedRecordingName();
    macro.Code = code;
    t.HotkeyCount = number;
    t.CurrentHotkeyIndex = number - 1;
    const QString added = QStringLiteral("The recorded macro was added as hotkey %1 \"%2\", disabled and with the key %3. "
                                         "The Hotkeys editor is not part of this version: give it a key and enable it "
                                         "in the Hotkeys file.")
                              .arg(number)
                              .arg(macro.Description, kNoKeys);
    if (t.HotkeysFileName.isEmpty()) {
        t.HotkeysDirty = true;
        return added + QStringLiteral(" No Hotkeys file is defined, so it lasts until Sonamark ends.");
    }
    if (!UpdateHotkeyWordsFile()) {
        t.HotkeysDirty = true;
        return added + QStringLiteral(" Unable to save hotkey file.");
    }
    return added + QStringLiteral(" Saved in ") + t.HotkeysFileName + QLatin1Char('.');
}

} // namespace hotkeys
