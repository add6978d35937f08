#pragma once
// The window finder on X11: a client window picked by its WM_CLASS from the window
// manager's client list, made the active one through _NET_ACTIVE_WINDOW.
#include "platform/window_finder.h"

#include <memory>

namespace platform::x11 {

class X11WindowFinder : public WindowFinder {
public:
    // Never fails: without a display no window is ever found.
    X11WindowFinder();
    ~X11WindowFinder() override;

    // The topmost client whose WM_CLASS instance or class name is className, compared
    // without regard to case as window class names are on the original platform. With
    // an EWMH window manager it is asked to activate the window (as a pager would, source
    // indication 2) and the answer is true once _NET_ACTIVE_WINDOW names it, within
    // kActivationWait. Without one, the window is raised and given the input focus.
    bool activateWindowOfClass(const QString &className) override;
    // The WM_CLASS class of the client window in the frame under the point.
    QString classAt(int x, int y) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// True when className names the window by its WM_CLASS instance or class.
bool ClassNameMatches(const QString &className, const QString &instance, const QString &windowClass);

} // namespace platform::x11
