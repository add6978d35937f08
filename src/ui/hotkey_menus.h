#pragma once
// The main window's Hotkeys entries that work through the global hooks: "Edit Hotkeys",
// "Make Hotkeys Macro", "List Hotkeys" and "Enable Hotkeys", on the menu bar and in the
// tray menu's Options.
namespace ui {

class frmSonamark;

// Enables and connects the entries when the keyboard is hooked, gives the recorder the
// window, and lets a hotkey start RunTimer.
void ConnectHotkeyMenus(frmSonamark *window);

// Checks "Enable Hotkeys" on the bar and in the tray menu as the option now stands.
void ShowHotkeysEnabled();

} // namespace ui
