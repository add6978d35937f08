#include "platform/x11/focus_ping.h"

#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <poll.h>

Q_LOGGING_CATEGORY(lcFocusPing, "sonamark.x11.keys.ping", QtWarningMsg)

namespace platform::x11 {

namespace {

constexpr int kMaxTreeDepth = 64;  // guards the walk up from the focus to its top level

bool TakesPings(Display *display, Window window, Atom ping)
{
    Atom *protocols = nullptr;
    int count = 0;
    if (!XGetWMProtocols(display, window, &protocols, &count))
        return false;
    XMemory<Atom> owner(protocols);
    for (int i = 0; i < count; ++i)
        if (protocols[i] == ping)
            return true;
    return false;
}

long NextToken()
{
    static long token = 0x534d0000;  // any value the answer can be told by
    return ++token;
}

} // namespace

FocusPing::FocusPing(Display *display) : m_display(display)
{
    ScopedErrorTrap trap(display);  // the focus may go away while we look
    Window window = 0;
    int revert = 0;
    XGetInputFocus(display, &window, &revert);
    const Window root = DefaultRootWindow(display);
    const Atom ping = XInternAtom(display, "_NET_WM_PING", False);
    for (int depth = 0; depth < kMaxTreeDepth && window > PointerRoot && window != root; ++depth) {
        if (TakesPings(display, window, ping)) {
            m_client = window;
            break;
        }
        Window rootReturn = 0, parent = 0, *children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(display, window, &rootReturn, &parent, &children, &count))
            break;
        XMemory<Window> owner(children);
        window = parent;
    }
    if (trap.sync() > 0)
        m_client = 0;
}

bool FocusPing::roundTrip(std::chrono::milliseconds limit)
{
    if (!m_client)
        return false;
    const Window root = DefaultRootWindow(m_display);
    const Atom protocols = XInternAtom(m_display, "WM_PROTOCOLS", False);
    const Atom ping = XInternAtom(m_display, "_NET_WM_PING", False);
    m_token = NextToken();
    ScopedErrorTrap trap(m_display);
    // The answer goes to the root window, for the window manager and whoever listens
    // there; GTK sends it to substructure listeners, Qt to structure listeners.
    XSelectInput(m_display, root, StructureNotifyMask | SubstructureNotifyMask);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = m_client;
    event.xclient.message_type = protocols;
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(ping);
    event.xclient.data.l[1] = m_token;
    event.xclient.data.l[2] = long(m_client);
    XSendEvent(m_display, m_client, False, NoEventMask, &event);
    XFlush(m_display);

    bool answered = false;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!answered) {
        while (!answered && XPending(m_display) > 0) {
            XEvent next;
            XNextEvent(m_display, &next);
            if (next.type == MappingNotify)
                XRefreshKeyboardMapping(&next.xmapping);
            answered = next.type == ClientMessage && next.xclient.message_type == protocols
                       && next.xclient.data.l[0] == long(ping) && next.xclient.data.l[1] == m_token;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (answered || left.count() <= 0)
            break;
        pollfd fd{ConnectionNumber(m_display), POLLIN, 0};
        poll(&fd, 1, int(left.count()) + 1);
    }
    XSelectInput(m_display, root, NoEventMask);
    DrainEvents(m_display);
    if (!answered)
        qCDebug(lcFocusPing) << "no answer to a ping from window" << Qt::hex << m_client << Qt::dec << "within" << limit.count() << "ms";
    return answered;
}

void DrainEvents(Display *display)
{
    XSync(display, False);
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == MappingNotify)
            XRefreshKeyboardMapping(&event.xmapping);
    }
}

} // namespace platform::x11
