#pragma once
// Port: global keyboard and mouse hooks. Every key and button of the session is observed
// and handed to the GUI thread; the few that must not reach other programs (hotkeys, Esc
// during a macro, trapped clicks) are swallowed by the implementation on its own, from a
// plan the logic gives it beforehand, because the keyboard may be frozen until that
// decision and the decision must never wait for the GUI thread.
#include <QList>
#include <QRect>
#include <QString>
#include <functional>

namespace platform {

// Virtual key codes of the keystroke notation that the hooks name.
namespace vk {
inline constexpr int Escape = 0x1B;
inline constexpr int Shift = 0x10;
inline constexpr int Control = 0x11;
inline constexpr int Alt = 0x12;
inline constexpr int LeftShift = 0xA0;
inline constexpr int RightShift = 0xA1;
inline constexpr int LeftControl = 0xA2;
inline constexpr int RightControl = 0xA3;
inline constexpr int LeftAlt = 0xA4;
inline constexpr int RightAlt = 0xA5;
} // namespace vk

// One key going down (again, on auto-repeat) or up, with the keys that were down at
// that moment.
struct KeyEvent {
    int virtualKey = 0;
    bool down = false;
    bool leftControl = false, leftAlt = false, leftShift = false;
    bool control = false;    // either Ctrl key
    bool synthetic = false;  // our own generated input
    // True when the key named was down when this event happened (the key itself
    // included), as far as the hook can tell.
    bool isDown(int virtualKey) const;
};

// Button messages of the mouse hook.
namespace mouse {
inline constexpr int LeftDown = 0x201;
inline constexpr int LeftUp = 0x202;
inline constexpr int RightDown = 0x204;
inline constexpr int RightUp = 0x205;
} // namespace mouse

struct MouseEvent {
    int message = 0;  // one of mouse::...
    int x = 0, y = 0; // screen pixels
    bool synthetic = false;
};

// A key with the left modifiers that must be down, exactly, for it to be swallowed.
struct KeyCombination {
    int virtualKey = 0;
    bool control = false, alt = false, shift = false;
    bool operator==(const KeyCombination &) const = default;
};

// The keys to swallow. Empty by default: nothing is swallowed.
struct KeyPlan {
    QList<KeyCombination> hotkeys;
    bool escape = false;    // Esc unless left Ctrl or left Alt is down
    bool everyKey = false;  // every key but the left modifiers (hotkey capture)
    bool operator==(const KeyPlan &) const = default;
};

// The clicks to swallow. Empty by default.
struct ClickPlan {
    bool pointCapture = false;  // the first left or right press outside `excluded`
    QRect excluded;
    bool trapZone = false;      // presses inside `zone`, bounds included
    QRect zone;
    bool operator==(const ClickPlan &) const = default;
};

// The decisions the implementation takes with a plan; pure, callable from any thread.
bool ConsumesKey(const KeyPlan &plan, int virtualKey, bool leftControl, bool leftAlt, bool leftShift);
bool ConsumesClick(const ClickPlan &plan, int message, int x, int y);

class InputHooks {
public:
    virtual ~InputHooks() = default;
    // Starts observing the keyboard; false when no global keyboard hook can be had.
    virtual bool hookKeyboard() = 0;
    virtual void unhookKeyboard() = 0;
    // Starts observing mouse buttons; false when it cannot.
    virtual bool hookMouse() = 0;
    virtual void unhookMouse() = 0;
    // Replace what is swallowed from now on.
    virtual void setKeyPlan(const KeyPlan &plan) = 0;
    virtual void setClickPlan(const ClickPlan &plan) = 0;
    // The printable character of a key with or without Shift in the keyboard layout in
    // use; "" for a key that prints nothing.
    virtual QString keyText(int virtualKey, bool shift) = 0;
    // Calls done on the GUI thread once no mouse button is held down and every event
    // before that has been handed to onKey/onMouse.
    virtual void whenInputSettled(std::function<void()> done) = 0;

    // Set by the logic; called on the GUI thread for every observed event.
    std::function<void(const KeyEvent &)> onKey;
    std::function<void(const MouseEvent &)> onMouse;
    // Set by the logic; called on the GUI thread with the hotkeys of a plan that another
    // program holds for itself. Their presses are still observed, but they reach that
    // program too.
    std::function<void(const QList<KeyCombination> &)> onHotkeysTaken;
};

} // namespace platform
