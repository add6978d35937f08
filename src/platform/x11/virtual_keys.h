#pragma once

// Virtual key codes of the keystroke notation for X keysyms, and the characters they type.
namespace platform::x11 {

// The virtual key of a keysym; 0 for a keysym without one.
int VirtualKeyOfKeysym(unsigned long keysym);
// The character a keysym types, or 0 for a keysym that types none.
char32_t KeysymCharacter(unsigned long keysym);

} // namespace platform::x11
