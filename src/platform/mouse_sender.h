#pragma once
// Port: synthetic mouse input (the mouse_event of the macro statements).
#include <QSize>

namespace platform {

// Flags of one mouse event; every event carries an absolute position.
namespace mouse_event {
inline constexpr int Move = 0x8001;
inline constexpr int LeftDown = 0x8002;
inline constexpr int LeftUp = 0x8004;
inline constexpr int RightDown = 0x8008;
inline constexpr int RightUp = 0x8010;
inline constexpr double kAbsoluteRange = 65535.0;  // the far edge in absolute units
} // namespace mouse_event

class MouseSender {
public:
    virtual ~MouseSender() = default;
    // The screen's size in pixels.
    virtual QSize screenSize() const = 0;
    // Sends one event with its flags at (absX, absY) in absolute units: 0 to 65535 across
    // the screen's width and height. The implementation maps them back to pixels.
    virtual void mouseEvent(int flags, int absX, int absY) = 0;
};

} // namespace platform
