#pragma once
// Keyboard state that must not leak into what the typist types, set aside for the
// typing and put back after it.
#include <vector>

typedef struct _XDisplay Display;

namespace platform::x11 {

// Modifier keys already down when typing starts: above all the hotkey's own, so that a
// ^%T hotkey whose macro types "hello" does not send Ctrl+Alt+h.
//
// We do both things that can be done, in this order, because each covers what the other
// cannot: keys held through XTest (another tool, an on-screen keyboard, a test driver) are
// released with XTest at once and pressed again after the typing; XTest cannot lift a key
// that a real keyboard holds (the server drops a release for a key not down on the XTest
// device), so for those we wait, polling XQueryKeymap, until the hand lets go, at most
// kHeldModifierWait. Waiting alone would type with an XTest-held key down after the
// time-out; releasing alone would type Ctrl+Alt+h while the user's fingers are still on
// the hotkey.
class HeldModifiersReleased {
public:
    HeldModifiersReleased(Display *display, const std::vector<int> &modifierKeycodes);
    ~HeldModifiersReleased();
    HeldModifiersReleased(const HeldModifiersReleased &) = delete;
    HeldModifiersReleased &operator=(const HeldModifiersReleased &) = delete;

private:
    Display *m_display;
    std::vector<int> m_pressAgain;
};

// Caps Lock turned off for the typing, so that characters come out as written, and on
// again after. When the typing itself toggled it ({CAPSLOCK}), the toggle is kept.
class CapsLockOff {
public:
    explicit CapsLockOff(Display *display);
    ~CapsLockOff();
    CapsLockOff(const CapsLockOff &) = delete;
    CapsLockOff &operator=(const CapsLockOff &) = delete;

private:
    Display *m_display;
    bool m_wasLocked = false;
};

} // namespace platform::x11
