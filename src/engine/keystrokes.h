#pragma once
// Keystroke lines: a line without a statement is typed into the focused window.
#include <QString>

namespace engine {

inline constexpr int kPrintScreenKey = 44;  // virtual key code of Print Screen

// Sends the keystroke line at index (1-based in Actions). "" or
// "Invalid command line for sending keystrokes".
QString Keystrokes_Only(int index);

} // namespace engine
