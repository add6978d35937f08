#pragma once
// What the X server offers the program, asked on a connection of the probe's own.
#include "platform/system_probes.h"
#include "platform/x11/x11_display.h"

namespace platform::x11 {

class X11SystemProbe {
public:
    // False when $DISPLAY cannot be opened; every other answer is then "no".
    bool reachable() const { return bool(m_display); }
    bool hasXTest();
    // The XInput version the server grants when 2.2 is asked for; 0.0 without XInput 2.
    XInputVersion xinputVersion();
    // True when a client owns _NET_SYSTEM_TRAY_Sn of the default screen n.
    bool trayHostPresent();

private:
    DisplayConnection m_display;
};

} // namespace platform::x11
