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
};

} // namespace platform
