#pragma once
// Hotkeys as the hooks see them: a virtual key with modifier prefixes ("^%65") and its
// keystroke notation ("^%a"), and the search of the table for it.
#include <QString>

namespace hotkeys {

// The decimal key number with "+", then "%", then "^" put in front as Shift, Alt and
// Ctrl are down: Ctrl, Alt and key 65 give "^%65".
QString KeyWithPrefixes(int virtualKey, bool ctrl, bool alt, bool shift);

// The notation of a prefixed key number: the prefixes, then the key's name from the
// table of special keys or its printable character with the Shift state given. "" when
// the key has no name and prints nothing.
QString LitString(const QString &keyCode, bool shift);

// The printable character of a key for the keyboard layout in use.
QString Convert2ASCII(int virtualKey, bool shift);

// 1-based number of the first enabled macro whose Keys match the combination (ignoring
// case), or 0.
int GetHotkeyIndex(bool ctrl, bool alt, bool shift, int virtualKey);

} // namespace hotkeys
