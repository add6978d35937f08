#pragma once
// The state of the global keyboard and mouse hooks: what they are doing now (hotkeys,
// Esc, [KEYLOG], hotkey capture, point capture, recording).
#include "platform/input_hooks.h"

#include <QRect>
#include <QSet>
#include <QString>

namespace hotkeys {

// ClickX while the editor's point capture has no point yet.
inline constexpr float kNoClick = -1.0f;

struct HookState {
    // Modifier state of the key being handled (left keys only, except while recording).
    bool CtrlDown = false;
    bool AltDown = false;
    bool ShiftDown = false;
    // An open [LEFTDOWN]/[RIGHTDOWN] of a macro: its point and statement code (0 none).
    float PendingDownX = 0, PendingDownY = 0;
    int PendingDownKind = 0;
    platform::KeyEvent KeyEvent;      // the key being handled
    platform::MouseEvent MouseEvent;  // the button being handled

    bool KeyboardHooked = false;  // result of the last HookKeyboard
    bool MouseHooked = false;     // result of the last HookMouse
    bool KeyboardHookExists = false;  // the keyboard hook object of the main window
    bool MacroRecording = false;
    bool RecordMouse = false;     // the recording includes mouse events
    double RecordClock = 0;       // seconds since midnight of the last recorded event
    bool HotkeyCapture = false;   // the editor waits for a key combination
    QString CapturedKey;
    bool HotkeysPaused = false;   // the editor's key field has the focus: hotkeys typed there
                                  // reach the field and fire nothing
    bool MousePointCapture = false;  // the editor waits for a screen point
    QRect PointCaptureExcluded;      // the editor's own window, where clicks are not taken
    bool WebFetchActive = false;     // a [WEBSOURCE] fetch that Esc cancels
    QSet<QString> TakenHotkeysTold;  // upper-case notations said to be held by another program

    // What a running macro has the hooks collect.
    bool KeyLogActive = false;  // [KEYLOG]: keys pressed go into KeyLogText
    QString KeyLogText;
    bool ClickZoneWaiting = false;  // [CLICKZONE] waits for a click in the zone
    bool ClickZoneHit = false;
    bool ClickZoneTrap = false;     // a click in the zone is swallowed
    float ClickX = 0, ClickY = 0;   // the last click taken (point capture or zone)
    float ClickZoneXmin = 0, ClickZoneYmin = 0, ClickZoneXmax = 0, ClickZoneYmax = 0;

    void reset() { *this = HookState(); }
};

HookState &hookState();

} // namespace hotkeys
