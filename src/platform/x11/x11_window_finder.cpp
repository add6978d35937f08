#include "platform/x11/x11_window_finder.h"

#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

Q_LOGGING_CATEGORY(lcX11Windows, "sonamark.x11.windows", QtWarningMsg)

namespace platform::x11 {

namespace {

using namespace std::chrono_literals;
constexpr auto kActivationWait = 1000ms;  // for the window manager to act on the request
constexpr auto kActivationPoll = 10ms;
constexpr long kSourcePager = 2;          // _NET_ACTIVE_WINDOW source indication
constexpr long kMaxWindows = 65536;
constexpr int kMaxTreeDepth = 64;          // guards the walk up from a client to its frame

Atom AtomNamed(Display *display, const char *name) { return XInternAtom(display, name, False); }

std::vector<Window> WindowList(Display *display, Window window, Atom property, Atom type = XA_WINDOW)
{
    Atom actualType = 0;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char *data = nullptr;
    if (XGetWindowProperty(display, window, property, 0, kMaxWindows, False, type, &actualType, &format, &count,
                           &after, &data)
            != Success
        || !data) {
        return {};
    }
    XMemory<unsigned char> owner(data);
    if (format != 32)
        return {};
    const auto *items = reinterpret_cast<const unsigned long *>(data);
    return std::vector<Window>(items, items + count);
}

// An EWMH window manager that is running now (its check window names itself) and
// handles _NET_ACTIVE_WINDOW.
bool HasEwmhActivation(Display *display, Window root)
{
    const Atom check = AtomNamed(display, "_NET_SUPPORTING_WM_CHECK");
    const std::vector<Window> wm = WindowList(display, root, check);
    if (wm.empty() || WindowList(display, wm.front(), check) != wm)
        return false;
    const Atom active = AtomNamed(display, "_NET_ACTIVE_WINDOW");
    for (Window atom : WindowList(display, root, AtomNamed(display, "_NET_SUPPORTED"), XA_ATOM))
        if (atom == active)
            return true;
    return false;
}

std::vector<Window> Children(Display *display, Window window, Window *parent = nullptr)
{
    Window rootReturn = 0, parentReturn = 0, *children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, window, &rootReturn, &parentReturn, &children, &count))
        return {};
    XMemory<Window> owner(children);
    if (parent)
        *parent = parentReturn;
    return children ? std::vector<Window>(children, children + count) : std::vector<Window>{};
}

// The child of the root that holds the window: its frame, or itself when not reparented.
Window TopLevelOf(Display *display, Window root, Window window)
{
    for (int depth = 0; depth < kMaxTreeDepth && window; ++depth) {
        Window parent = 0;
        Children(display, window, &parent);
        if (parent == root || parent == 0)
            return window;
        window = parent;
    }
    return 0;
}

// Client windows, topmost first. The order is the server's own stacking of their frames:
// not every window manager keeps _NET_CLIENT_LIST_STACKING up to date (fluxbox does not).
std::vector<Window> ClientsTopFirst(Display *display, Window root)
{
    const std::vector<Window> stack = Children(display, root);  // bottom to top
    std::vector<Window> clients = WindowList(display, root, AtomNamed(display, "_NET_CLIENT_LIST"));
    if (clients.empty()) {
        // No list from a window manager: the root's children, and the children of those
        // (frames of a manager that keeps no list).
        for (Window child : stack) {
            const std::vector<Window> inner = Children(display, child);
            clients.insert(clients.end(), inner.begin(), inner.end());
            clients.push_back(child);
        }
        return {clients.rbegin(), clients.rend()};
    }
    std::vector<std::pair<long, Window>> ranked;
    for (Window client : clients) {
        const auto at = std::find(stack.begin(), stack.end(), TopLevelOf(display, root, client));
        ranked.push_back({at == stack.end() ? -1 : long(at - stack.begin()), client});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto &a, const auto &b) { return a.first > b.first; });
    std::vector<Window> ordered;
    for (const auto &entry : ranked)
        ordered.push_back(entry.second);
    return ordered;
}

bool WindowHasClass(Display *display, Window window, const QString &className)
{
    XClassHint hint{};
    if (!XGetClassHint(display, window, &hint))
        return false;
    XMemory<char> name(hint.res_name), klass(hint.res_class);
    return ClassNameMatches(className, QString::fromUtf8(hint.res_name), QString::fromUtf8(hint.res_class));
}

// The WM_CLASS class of window or of the first window below it that has one, looked
// for breadth first: a frame holds its client some levels down.
QString ClassInside(Display *display, Window window)
{
    std::vector<Window> level{window};
    for (int depth = 0; depth < kMaxTreeDepth && !level.empty(); ++depth) {
        std::vector<Window> next;
        for (Window w : level) {
            XClassHint hint{};
            if (XGetClassHint(display, w, &hint)) {
                XMemory<char> name(hint.res_name), klass(hint.res_class);
                if (hint.res_class && *hint.res_class)
                    return QString::fromUtf8(hint.res_class);
            }
            const std::vector<Window> inner = Children(display, w);
            next.insert(next.end(), inner.begin(), inner.end());
        }
        level = std::move(next);
    }
    return {};
}

Window ActiveWindow(Display *display, Window root)
{
    const std::vector<Window> active = WindowList(display, root, AtomNamed(display, "_NET_ACTIVE_WINDOW"));
    return active.empty() ? 0 : active.front();
}

bool ActivateByEwmh(Display *display, Window root, Window window)
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = AtomNamed(display, "_NET_ACTIVE_WINDOW");
    event.xclient.format = 32;
    event.xclient.data.l[0] = kSourcePager;
    event.xclient.data.l[1] = CurrentTime;
    event.xclient.data.l[2] = long(ActiveWindow(display, root));
    XSendEvent(display, root, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XFlush(display);
    const auto deadline = std::chrono::steady_clock::now() + kActivationWait;
    for (;;) {
        if (ActiveWindow(display, root) == window)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(kActivationPoll);
    }
}

bool ActivateDirectly(Display *display, Window window)
{
    ScopedErrorTrap trap(display);
    XRaiseWindow(display, window);
    XSetInputFocus(display, window, RevertToParent, CurrentTime);
    if (trap.sync() > 0)
        return false;  // BadMatch: the window is not viewable
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    return focus == window;
}

} // namespace

bool ClassNameMatches(const QString &className, const QString &instance, const QString &windowClass)
{
    return !className.isEmpty()
           && (className.compare(instance, Qt::CaseInsensitive) == 0
               || className.compare(windowClass, Qt::CaseInsensitive) == 0);
}

struct X11WindowFinder::Private {
    DisplayConnection connection;
};

X11WindowFinder::X11WindowFinder() : d(std::make_unique<Private>()) {}

X11WindowFinder::~X11WindowFinder() = default;

bool X11WindowFinder::activateWindowOfClass(const QString &className)
{
    Display *display = d->connection.get();
    if (!display || className.isEmpty())
        return false;
    ScopedErrorTrap trap(display);  // a window may vanish between the list and the call
    const Window root = DefaultRootWindow(display);
    Window found = 0;
    for (Window window : ClientsTopFirst(display, root))
        if (WindowHasClass(display, window, className)) {
            found = window;
            break;
        }
    if (!found) {
        qCDebug(lcX11Windows) << "no window of class" << className;
        return false;
    }
    const bool ewmh = HasEwmhActivation(display, root);
    const bool active = ewmh ? ActivateByEwmh(display, root, found) : ActivateDirectly(display, found);
    qCDebug(lcX11Windows) << "window" << Qt::hex << found << "of class" << className
                          << (active ? "activated" : "not activated") << (ewmh ? "by the window manager" : "directly");
    return active;
}

QString X11WindowFinder::classAt(int x, int y)
{
    Display *display = d->connection.get();
    if (!display)
        return {};
    ScopedErrorTrap trap(display);
    const Window root = DefaultRootWindow(display);
    int windowX = 0, windowY = 0;
    Window top = 0;
    if (!XTranslateCoordinates(display, root, root, x, y, &windowX, &windowY, &top) || !top)
        return {};
    const QString found = ClassInside(display, top);
    qCDebug(lcX11Windows) << "window" << Qt::hex << top << "at" << Qt::dec << x << y << "has class" << found;
    return found;
}

} // namespace platform::x11
