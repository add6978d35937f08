#include "platform/x11/x11_system_probe.h"

#include <QByteArray>

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

namespace platform::x11 {

bool X11SystemProbe::hasXTest()
{
    if (!m_display)
        return false;
    int event = 0, error = 0, major = 0, minor = 0;
    return XTestQueryExtension(m_display.get(), &event, &error, &major, &minor);
}

XInputVersion X11SystemProbe::xinputVersion()
{
    if (!m_display)
        return {};
    int opcode = 0, event = 0, error = 0;
    if (!XQueryExtension(m_display.get(), "XInputExtension", &opcode, &event, &error))
        return {};
    int major = 2, minor = 2;
    ScopedErrorTrap trap(m_display.get());
    const Status status = XIQueryVersion(m_display.get(), &major, &minor);
    if (trap.sync() > 0 || status != Success)
        return {};  // a server before XInput 2 refuses the request
    return {major, minor};
}

bool X11SystemProbe::trayHostPresent()
{
    if (!m_display)
        return false;
    const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(DefaultScreen(m_display.get()));
    const Atom selection = XInternAtom(m_display.get(), name.constData(), False);
    return selection != None && XGetSelectionOwner(m_display.get(), selection) != None;
}

} // namespace platform::x11
