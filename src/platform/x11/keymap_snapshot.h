#pragma once
// What the keyboard map in use offers the typist: the keysym of every key at each level
// reachable with Shift and AltGr, the keys that carry the modifiers, and the spare
// keycodes that carry nothing.
#include "platform/x11/key_lookup.h"

#include <vector>

typedef struct _XDisplay Display;

namespace platform::x11 {

struct KeymapSnapshot {
    std::vector<KeyProduct> products;   // in keycode order
    std::vector<int> spareKeycodes;     // no keysym in any group or level
    int shiftKeycode = 0;
    int controlKeycode = 0;
    int altKeycode = 0;
    int level3Keycode = 0;              // 0 when the map has no AltGr
    std::vector<int> heldModifierKeys;  // keys that hold a modifier while down (no locks)
};

// Reads the map for the current group. Levels are worked out as if Caps Lock were off,
// since the typist turns it off while it types; Num Lock is taken as it stands.
KeymapSnapshot ReadKeymap(Display *display);

} // namespace platform::x11
