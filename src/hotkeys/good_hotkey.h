#pragma once
// The check of a hotkey's key combination as the user types it in the editor.
#include <QString>

namespace hotkeys {

// True when text is a usable hotkey; then text has its prefixes put in the order Ctrl,
// Alt, Shift ("+^A" becomes "^+A"). Otherwise the reason has been shown under
// "Hotkeys" (or the user declined a single-key hotkey) and text is unchanged.
bool GoodHotkey(QString &text);

} // namespace hotkeys
