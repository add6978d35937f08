#pragma once
// Recording a new macro from live keys and clicks ("Make Hotkeys Macro"). The recorded
// text grows in the reader's text box; a left click on the tray icon ends it.
#include <QString>

namespace hotkeys {

// What a recording needs of the main window.
class RecordingWindow {
public:
    virtual ~RecordingWindow() = default;
    // txtSpeech, where the recording grows.
    virtual QString text() const = 0;
    virtual void setText(const QString &text) = 0;
    virtual QString caption() const = 0;
    virtual void setCaption(const QString &caption) = 0;
    // Status panel 1 together with the tray tip.
    virtual void setStatusText(const QString &text) = 0;
    // frmMacroPopup: false when the user does not go on; includeMouse comes back with
    // the check box.
    virtual bool askToRecord(bool &includeMouse) = 0;
    // Turns the clipboard monitor off when it is on.
    virtual void stopMonitoring() = 0;
    // Gives the finished recording to the hotkey editor as a new macro.
    virtual void openEditor(const QString &code) = 0;
};

void SetRecordingWindow(RecordingWindow *window);
RecordingWindow *recordingWindow();

// mnuHotkeysMakeMacro_Click: asks, then records until EndRecording. False when no
// recording starts (the user declined, or one is under way).
bool StartRecording();
// The tray click that ends a recording: finishes once the click itself has been
// recorded (its press and release are then cut off again).
void EndRecording();
// Ends at once: restores the hotkeys and the tray, hands the text to the editor.
void FinishRecording();

} // namespace hotkeys
