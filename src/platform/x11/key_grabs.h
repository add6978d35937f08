#pragma once
// Which passive key grabs a key plan needs, worked out from the keyboard map alone.
#include "platform/input_hooks.h"

#include <array>
#include <set>
#include <utility>

namespace platform::x11 {

// Modifier masks of the keyboard in use.
struct ModifierMasks {
    unsigned shift = 0, control = 0, alt = 0;
    unsigned capsLock = 0, numLock = 0, scrollLock = 0;
};

// keycode -> virtual key (0 for none), for keycodes 0..255.
using KeycodeTable = std::array<int, 256>;

// (keycode, modifier mask) pairs to grab.
using GrabSet = std::set<std::pair<int, unsigned>>;

// Every keycode of each key in the plan, with every modifier state in which the left
// modifiers could match: the required Ctrl/Alt/Shift and any more of them (held on the
// right-hand side), each with every combination of the lock masks. The decision on the
// press is left to ConsumesKey with the left keys' real state.
GrabSet GrabsForPlan(const KeyPlan &plan, const KeycodeTable &keys, const ModifierMasks &masks);

// The hotkeys of the plan that another program holds: those with a refused grab of
// exactly their own modifiers (in any lock state). A refused grab with more modifiers
// held than the hotkey needs only costs that variant.
QList<KeyCombination> TakenHotkeys(const GrabSet &refused, const KeyPlan &plan, const KeycodeTable &keys,
                                   const ModifierMasks &masks);

} // namespace platform::x11
