#pragma once
// Small owners of X resources for the senders: a connection of their own, a scoped
// error trap, and memory that Xlib hands out.
#include <memory>

typedef struct _XDisplay Display;

namespace platform::x11 {

// An Xlib connection to $DISPLAY, closed with the object. Empty when no display can be
// opened; callers check before use and never abort.
class DisplayConnection {
public:
    DisplayConnection();
    ~DisplayConnection();
    DisplayConnection(const DisplayConnection &) = delete;
    DisplayConnection &operator=(const DisplayConnection &) = delete;

    Display *get() const { return m_display; }
    explicit operator bool() const { return m_display != nullptr; }

private:
    Display *m_display = nullptr;
};

// While in scope, X errors on this display are counted instead of ending the process
// (Xlib's default handler exits). Errors of other connections go to the handler that
// was in force before. Only the thread that made the trap may use the display.
class ScopedErrorTrap {
public:
    explicit ScopedErrorTrap(Display *display);
    ~ScopedErrorTrap();
    ScopedErrorTrap(const ScopedErrorTrap &) = delete;
    ScopedErrorTrap &operator=(const ScopedErrorTrap &) = delete;

    // Waits for the server to answer every request so far and returns the errors seen.
    int sync();
    // The X error code of the last error seen, 0 for none.
    int lastError() const { return m_lastError; }

private:
    friend int TrapXError(Display *, void *);
    Display *m_display;
    ScopedErrorTrap *m_outer;
    void *m_previousHandler;
    int m_errors = 0;
    int m_lastError = 0;
};

// Frees memory that Xlib allocated.
struct XFreeDeleter {
    void operator()(void *data) const;
};
template <typename T>
using XMemory = std::unique_ptr<T, XFreeDeleter>;

} // namespace platform::x11
