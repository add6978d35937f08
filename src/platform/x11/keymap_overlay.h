#pragma once
// Keysyms lent to spare keycodes (keys the map leaves empty) so that characters the
// keyboard cannot type can be typed. Every keycode lent gets its own keysyms back when
// the overlay is restored or destroyed, whichever way the typing ends. While keys are
// lent, their keycodes are noted on the root window, so that a program killed in the
// middle can be cleaned up after by the next one (RecoverLeftOverlay).
#include <vector>

typedef struct _XDisplay Display;

namespace platform::x11 {

class KeymapOverlay {
public:
    KeymapOverlay(Display *display, std::vector<int> spareKeycodes);
    ~KeymapOverlay();
    KeymapOverlay(const KeymapOverlay &) = delete;
    KeymapOverlay &operator=(const KeymapOverlay &) = delete;

    int capacity() const { return int(m_spares.size()); }
    // The keycode that carries keysym now, 0 for none.
    int keycodeOf(unsigned long keysym) const;
    // True when putting these keysyms in place would take a keycode from a keysym it
    // carries now.
    bool wouldReplace(const std::vector<unsigned long> &keysyms) const;
    // Puts the keysyms (at most capacity(), distinct) on spare keycodes. Those already
    // lent stay where they are; the others take free keycodes or replace keysyms not in
    // the list. Returns how many keycodes changed; nothing changes when they do not fit.
    int place(const std::vector<unsigned long> &keysyms);
    bool lent() const;
    // Gives every lent keycode its own keysyms back; returns how many changed.
    int restore();

private:
    void setKeycode(int index, unsigned long keysym);
    void noteLent();

    Display *m_display;
    std::vector<int> m_spares;
    std::vector<unsigned long> m_lent;  // per spare: the keysym it carries, 0 for none
};

// Gives back the keycodes that a killed program left lent (see above).
void RecoverLeftOverlay(Display *display);

} // namespace platform::x11
