#pragma once
// Port: synthetic keyboard input into whatever window has the focus.
#include <QString>
#include <functional>

namespace platform {

class KeySender {
public:
    virtual ~KeySender() = default;
    // Sends a string in the keystroke notation ("+", "^", "%", "~", {KEY n}) without waiting.
    virtual void sendKeys(const QString &notation) = 0;
    // Presses one key by its virtual key code (key-down only, e.g. 44 Print Screen).
    virtual void pressKey(int virtualKey) = 0;

    // Set by the logic; a long delivery calls it now and then (it may let pending events
    // run, so that Esc is heard) and stops typing when it answers false.
    std::function<bool()> keepGoing;
};

} // namespace platform
