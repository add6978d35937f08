#pragma once
// Which key, with which level modifiers, types a character or a keysym on the keyboard
// map in use. Built from a list of what each key produces; no display needed.
#include <optional>
#include <unordered_map>
#include <vector>

namespace platform::x11 {

// Modifiers that pick a key's level, pressed on top of what the notation holds.
enum LevelModifier : unsigned {
    kLevelShift = 1u << 0,
    kLevelThird = 1u << 1,  // AltGr (ISO_Level3_Shift)
};

// One keysym that a key gives with some level modifiers held.
struct KeyProduct {
    int keycode = 0;
    unsigned modifiers = 0;  // LevelModifier bits
    unsigned long keysym = 0;
};

struct KeyStroke {
    int keycode = 0;
    unsigned modifiers = 0;  // LevelModifier bits
    bool operator==(const KeyStroke &) const = default;
};

class KeyLookup {
public:
    explicit KeyLookup(const std::vector<KeyProduct> &products);

    // The plainest key for a character: the fewest level modifiers, a main key before a
    // keypad one, then the lowest keycode. Dead keys and control keysyms type nothing.
    std::optional<KeyStroke> forCharacter(char32_t c) const;
    std::optional<KeyStroke> forKeysym(unsigned long keysym) const;

private:
    std::unordered_map<unsigned long, KeyProduct> m_keysyms;
    std::unordered_map<char32_t, KeyProduct> m_characters;
};

// The keysym to put on a spare key to type c (a legacy keysym where one exists, else
// the Unicode one); 0 for none.
unsigned long KeysymForCharacter(char32_t c);

} // namespace platform::x11
