#include "platform/x11/keymap_snapshot.h"

#include "platform/x11/x11_display.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <algorithm>

namespace platform::x11 {

namespace {

constexpr unsigned kLevelCombinations[] = {0, kLevelShift, kLevelThird, kLevelShift | kLevelThird};

struct ModifierMapOwner {
    void operator()(XModifierKeymap *map) const { XFreeModifiermap(map); }
};

bool IsLockKeysym(KeySym sym)
{
    return sym == XK_Caps_Lock || sym == XK_Shift_Lock || sym == XK_Num_Lock || sym == XK_Scroll_Lock;
}

// The core map as read now: Xlib's own copy lags behind map changes until their
// notifications are read, so none of its lookups are used here.
struct CoreMap {
    const KeySym *syms;
    int perKeycode, minKeycode, maxKeycode;
    KeySym plain(int code) const { return syms[(code - minKeycode) * perKeycode]; }
};

int FirstKeycode(const CoreMap &core, std::initializer_list<KeySym> wanted)
{
    for (KeySym sym : wanted)
        for (int code = core.minKeycode; code <= core.maxKeycode; ++code)
            if (core.plain(code) == sym)
                return code;
    return 0;
}

// The level a key type gives for a modifier state.
int LevelOf(const XkbKeyTypeRec &type, unsigned mods)
{
    const unsigned masked = mods & type.mods.mask;
    for (int i = 0; i < type.map_count; ++i)
        if (type.map[i].active && type.map[i].mods.mask == masked)
            return type.map[i].level;
    return 0;
}

void ReadXkbProducts(Display *display, int minKeycode, int maxKeycode, unsigned level3Mask, KeymapSnapshot &map)
{
    XkbStateRec state{};
    XkbGetState(display, XkbUseCoreKbd, &state);
    const unsigned locked = state.locked_mods & ~unsigned(LockMask);
    XkbDescPtr xkb = XkbGetMap(display, XkbKeyTypesMask | XkbKeySymsMask, XkbUseCoreKbd);
    if (!xkb)
        return;
    for (int code = minKeycode; code <= maxKeycode; ++code) {
        const int groups = XkbKeyNumGroups(xkb, code);
        if (groups == 0)
            continue;
        const int group = state.group % groups;  // the server's default: wrap into range
        const XkbKeyTypeRec &type = *XkbKeyKeyType(xkb, code, group);
        const int width = XkbKeyGroupWidth(xkb, code, group);
        for (unsigned combination : kLevelCombinations) {
            if ((combination & kLevelThird) && level3Mask == 0)
                continue;
            const unsigned mods = locked | ((combination & kLevelShift) ? ShiftMask : 0)
                                  | ((combination & kLevelThird) ? level3Mask : 0);
            const int level = LevelOf(type, mods);
            if (level < width)
                map.products.push_back({code, combination, XkbKeySymEntry(xkb, code, level, group)});
        }
    }
    XkbFreeKeyboard(xkb, 0, True);
}

// Without XKB: the first two core columns, plain and with Shift.
void ReadCoreProducts(const KeySym *syms, int perKeycode, int minKeycode, int maxKeycode, KeymapSnapshot &map)
{
    for (int code = minKeycode; code <= maxKeycode; ++code) {
        const KeySym *row = syms + (code - minKeycode) * perKeycode;
        map.products.push_back({code, 0, row[0]});
        if (perKeycode > 1)
            map.products.push_back({code, kLevelShift, row[1] != NoSymbol ? row[1] : row[0]});
    }
}

} // namespace

KeymapSnapshot ReadKeymap(Display *display)
{
    KeymapSnapshot map;
    int minKeycode = 0, maxKeycode = 0, perKeycode = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    XMemory<KeySym> syms(XGetKeyboardMapping(display, KeyCode(minKeycode), maxKeycode - minKeycode + 1, &perKeycode));
    if (!syms)
        return map;
    for (int code = minKeycode; code <= maxKeycode; ++code) {
        const KeySym *row = syms.get() + (code - minKeycode) * perKeycode;
        if (std::all_of(row, row + perKeycode, [](KeySym s) { return s == NoSymbol; }))
            map.spareKeycodes.push_back(code);
    }

    const CoreMap core{syms.get(), perKeycode, minKeycode, maxKeycode};
    map.shiftKeycode = FirstKeycode(core, {XK_Shift_L, XK_Shift_R});
    map.controlKeycode = FirstKeycode(core, {XK_Control_L, XK_Control_R});
    map.altKeycode = FirstKeycode(core, {XK_Alt_L, XK_Meta_L, XK_Alt_R});
    map.level3Keycode = FirstKeycode(core, {XK_ISO_Level3_Shift});
    unsigned level3Mask = 0;
    std::unique_ptr<XModifierKeymap, ModifierMapOwner> modifiers(XGetModifierMapping(display));
    if (modifiers) {
        for (int mod = 0; mod < 8; ++mod) {
            for (int i = 0; i < modifiers->max_keypermod; ++i) {
                const int code = modifiers->modifiermap[mod * modifiers->max_keypermod + i];
                if (code == 0)
                    continue;
                if (code == map.level3Keycode)
                    level3Mask = 1u << mod;
                const KeySym sym = code >= minKeycode && code <= maxKeycode ? core.plain(code) : NoSymbol;
                if (mod != LockMapIndex && !IsLockKeysym(sym))
                    map.heldModifierKeys.push_back(code);
            }
        }
    }
    std::sort(map.heldModifierKeys.begin(), map.heldModifierKeys.end());
    map.heldModifierKeys.erase(std::unique(map.heldModifierKeys.begin(), map.heldModifierKeys.end()),
                               map.heldModifierKeys.end());
    if (level3Mask == 0)
        map.level3Keycode = 0;  // a key that sets no modifier picks no level

    int opcode = 0, event = 0, error = 0, major = XkbMajorVersion, minor = XkbMinorVersion;
    if (XkbQueryExtension(display, &opcode, &event, &error, &major, &minor))
        ReadXkbProducts(display, minKeycode, maxKeycode, level3Mask, map);
    else
        ReadCoreProducts(syms.get(), perKeycode, minKeycode, maxKeycode, map);
    return map;
}

} // namespace platform::x11
