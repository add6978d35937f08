#pragma once
// Virtual key codes of the keystroke notation for X keysyms, and back.
#include <QList>

namespace platform::x11 {

// The virtual key of a keysym; 0 for a keysym without one.
int VirtualKeyOfKeysym(unsigned long keysym);
// The keysyms that give a virtual key (letters by their lower-case keysym).
QList<unsigned long> KeysymsOfVirtualKey(int virtualKey);
// The character a keysym types, or 0 for a keysym that types none.
char32_t KeysymCharacter(unsigned long keysym);

} // namespace platform::x11
