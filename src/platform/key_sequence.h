#pragma once
// The keystroke notation ("+", "^", "%", "~", "(...)", {KEY n}) turned into an ordered list
// of key steps that any key injector can deliver. No display needed.
#include <QString>
#include <vector>

namespace platform {

enum class Modifier { Shift, Control, Alt };

// Keys that a brace token can name. ORDER: kKeyNames in key_sequence.cpp names them.
enum class NamedKey {
    Enter, Tab, Backspace, Delete, Insert, Up, Down, Left, Right, Home, End, PageUp, PageDown,
    Escape, CapsLock, NumLock, ScrollLock, Break, Help, PrintScreen,
    F1, F2, F3, F4, F5, F6, F7, F8, F9, F10, F11, F12, F13, F14, F15, F16,
};

struct KeyStep {
    enum class Kind {
        Press,    // hold a modifier down
        Release,  // let it go
        Tap,      // press and release a named key, count times
        Type,     // type one character with whatever keys produce it
    };
    Kind kind = Kind::Type;
    Modifier modifier = Modifier::Shift;  // Press, Release
    NamedKey key = NamedKey::Enter;       // Tap
    int count = 1;                        // Tap
    char32_t character = 0;               // Type

    bool operator==(const KeyStep &) const = default;
};

using KeySequence = std::vector<KeyStep>;

// Counts beyond this in "{KEY n}" are cut to it, so that a typing slip cannot block the
// program for hours.
inline constexpr int kMaxKeyRepeat = 10000;

// Parses the notation. Never fails: what is not valid notation is typed as it stands.
KeySequence ParseKeyNotation(const QString &notation);

// The steps as one line, e.g. "+Shift a -Shift {Left*3} U+00E9", for logs and tests.
QString DescribeKeySequence(const KeySequence &steps);
QString KeyNameText(NamedKey key);
QString ModifierText(Modifier modifier);

} // namespace platform
