#pragma once
// The hotkeys table: every macro of the program, in memory.
#include <QString>
#include <array>

namespace hotkeys {

inline constexpr int kMaxHotkeys = 500;
inline const QString kDefaultHotkeysFile = QStringLiteral("Hotkeys.txt");

struct Hotkey {
    bool Active = false;   // enabled; a disabled hotkey never fires
    QString Keys;          // key combination, e.g. "^%K"
    QString Description;   // the macro's name
    QString Code;          // macro text, CR LF lines, with real double quotes
};

struct HotkeyTable {
    std::array<Hotkey, kMaxHotkeys> Hotkeys;  // number n is element n-1
    int HotkeyCount = 0;
    int CurrentHotkeyIndex = -1;  // 0-based macro in the editor, -1 for none
    QString HotkeysFileName;      // full path, "" when no file is defined
    bool HotkeysDirty = false;

    // Macro by 1-based number; a number outside 1..500 is a program fault and throws
    // std::out_of_range.
    Hotkey &at(int number);
    const Hotkey &at(int number) const;
    void reset() { *this = HotkeyTable(); }
};

HotkeyTable &table();

// The Hotkeys file named by the setting: the default file in AppFolder when it is
// blank, AppFolder put in front of a name that is not an absolute path.
QString HotkeysFileFromSetting(const QString &setting);

} // namespace hotkeys
