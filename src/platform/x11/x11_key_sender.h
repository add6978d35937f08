#pragma once
// The key sender on X11: the keystroke notation parsed by ParseKeyNotation and typed with
// XTest into whatever window has the focus, on a connection of its own.
#include "platform/key_sender.h"

#include <memory>

namespace platform::x11 {

class X11KeySender : public KeySender {
public:
    // Never fails: without a display or XTest, sending does nothing (and logs).
    X11KeySender();
    ~X11KeySender() override;

    bool available() const;
    // Types the notation and returns once the X server has every key event. The keyboard
    // map, Caps Lock and any modifier keys held before are as they were on return, also
    // when keepGoing stopped the typing part way.
    void sendKeys(const QString &notation) override;
    // A press and a release of the key: a key left down on the XTest device would stay
    // down for the whole server (and auto-repeat) until something released it, and the
    // macro statements never do. Programs that act on the press see it all the same.
    void pressKey(int virtualKey) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace platform::x11
