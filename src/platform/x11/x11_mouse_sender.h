#pragma once
// The mouse sender on X11: XTest pointer motion and button events on a connection of
// its own, over the whole root window of the default screen.
#include "platform/mouse_sender.h"

#include <memory>

namespace platform::x11 {

class X11MouseSender : public MouseSender {
public:
    // Never fails: without a display or XTest the size is empty and events do nothing.
    X11MouseSender();
    ~X11MouseSender() override;

    bool available() const;
    QSize screenSize() const override;
    // The flag bits act as in mouse_event: 0x0001 moves the pointer to the point first;
    // 0x0002/0x0004 left down/up and 0x0008/0x0010 right down/up act where the pointer
    // is (a press without the move bit does not move it). Absolute units 0..65535 map onto
    // 0..width-1 and 0..height-1 pixels, rounded.
    void mouseEvent(int flags, int absX, int absY) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// The pixel of an absolute coordinate on an axis of `pixels` pixels.
int PixelOfAbsolute(int absolute, int pixels);

} // namespace platform::x11
