#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xlib.h>

Q_LOGGING_CATEGORY(lcX11Display, "sonamark.x11.display", QtWarningMsg)

namespace platform::x11 {

namespace {

// The innermost trap of this thread; Xlib calls the handler on the thread that reads the
// failing reply, which is the trap's own.
thread_local ScopedErrorTrap *t_trap = nullptr;

} // namespace

int TrapXError(Display *display, void *event);

namespace {
int HandleXError(Display *display, XErrorEvent *event) { return TrapXError(display, event); }
} // namespace

int TrapXError(Display *display, void *data)
{
    auto *event = static_cast<XErrorEvent *>(data);
    for (ScopedErrorTrap *trap = t_trap; trap; trap = trap->m_outer) {
        if (trap->m_display != display)
            continue;
        ++trap->m_errors;
        trap->m_lastError = event->error_code;
        qCDebug(lcX11Display) << "X error" << int(event->error_code) << "on request" << int(event->request_code)
                              << "minor" << int(event->minor_code);
        return 0;
    }
    // Not ours: whoever handled errors before decides.
    ScopedErrorTrap *outermost = t_trap;
    while (outermost && outermost->m_outer)
        outermost = outermost->m_outer;
    auto previous = outermost ? reinterpret_cast<XErrorHandler>(outermost->m_previousHandler) : nullptr;
    return previous && previous != HandleXError ? previous(display, event) : 0;
}

DisplayConnection::DisplayConnection() : m_display(XOpenDisplay(nullptr))
{
    if (!m_display)
        qCWarning(lcX11Display) << "cannot open the X display" << qgetenv("DISPLAY");
}

DisplayConnection::~DisplayConnection()
{
    if (m_display)
        XCloseDisplay(m_display);
}

ScopedErrorTrap::ScopedErrorTrap(Display *display)
    : m_display(display), m_outer(t_trap), m_previousHandler(reinterpret_cast<void *>(XSetErrorHandler(HandleXError)))
{
    t_trap = this;
}

ScopedErrorTrap::~ScopedErrorTrap()
{
    if (m_display)
        XSync(m_display, False);  // errors of our requests arrive while we still listen
    t_trap = m_outer;
    XSetErrorHandler(reinterpret_cast<XErrorHandler>(m_previousHandler));
}

int ScopedErrorTrap::sync()
{
    if (m_display)
        XSync(m_display, False);
    return m_errors;
}

void XFreeDeleter::operator()(void *data) const
{
    if (data)
        XFree(data);
}

} // namespace platform::x11
