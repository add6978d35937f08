#pragma once
// Port: finding a top-level window by its class and bringing it to the front.
#include <QString>

namespace platform {

class WindowFinder {
public:
    virtual ~WindowFinder() = default;
    // FindWindow + SetForegroundWindow: true when a window of that class exists and was
    // made the active one.
    virtual bool activateWindowOfClass(const QString &className) = 0;
    // The class name of the top-level window at the screen point (the one a click there
    // would reach); "" when there is none or it cannot be told.
    virtual QString classAt(int x, int y)
    {
        Q_UNUSED(x);
        Q_UNUSED(y);
        return {};
    }
};

} // namespace platform
