#include "platform/x11/key_lookup.h"

#include <xkbcommon/xkbcommon.h>

#include <utility>

namespace platform::x11 {

namespace {

constexpr unsigned long kDeadKeysFirst = 0xfe50;  // XK_dead_grave
constexpr unsigned long kDeadKeysLast = 0xfe93;   // XK_dead_longsolidusoverlay
constexpr unsigned long kKeypadFirst = 0xff80;    // XK_KP_Space
constexpr unsigned long kKeypadLast = 0xffbd;     // XK_KP_Equal

bool IsKeypad(unsigned long keysym) { return keysym >= kKeypadFirst && keysym <= kKeypadLast; }

// Lower is plainer. Shift alone before AltGr alone before both.
int Rank(const KeyProduct &p)
{
    const int modifiers = p.modifiers == 0 ? 0 : p.modifiers == kLevelShift ? 1 : p.modifiers == kLevelThird ? 2 : 3;
    return modifiers * 2 + (IsKeypad(p.keysym) ? 1 : 0);
}

template <typename Key>
void Offer(std::unordered_map<Key, KeyProduct> &table, Key key, const KeyProduct &p)
{
    auto it = table.find(key);
    if (it == table.end() || std::pair(Rank(p), p.keycode) < std::pair(Rank(it->second), it->second.keycode))
        table[key] = p;
}

template <typename Key>
std::optional<KeyStroke> Find(const std::unordered_map<Key, KeyProduct> &table, Key key)
{
    auto it = table.find(key);
    if (it == table.end())
        return std::nullopt;
    return KeyStroke{it->second.keycode, it->second.modifiers};
}

} // namespace

KeyLookup::KeyLookup(const std::vector<KeyProduct> &products)
{
    for (const KeyProduct &p : products) {
        if (p.keysym == 0)
            continue;
        Offer(m_keysyms, p.keysym, p);
        if (p.keysym >= kDeadKeysFirst && p.keysym <= kDeadKeysLast)
            continue;
        const char32_t c = xkb_keysym_to_utf32(xkb_keysym_t(p.keysym));
        if (c >= 0x20 && c != 0x7f)
            Offer(m_characters, c, p);
    }
}

std::optional<KeyStroke> KeyLookup::forCharacter(char32_t c) const { return Find(m_characters, c); }

std::optional<KeyStroke> KeyLookup::forKeysym(unsigned long keysym) const { return Find(m_keysyms, keysym); }

unsigned long KeysymForCharacter(char32_t c)
{
    if (c < 0x20 || c == 0x7f || (c >= 0xd800 && c < 0xe000) || c > 0x10ffff)
        return 0;
    return xkb_utf32_to_keysym(uint32_t(c));
}

} // namespace platform::x11
