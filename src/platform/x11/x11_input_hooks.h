#pragma once
// The global hooks on X11, on a connection and a thread of their own. Hotkeys and Esc
// are passive key grabs in synchronous mode: the keyboard is frozen on the press until
// this thread, asking the server which left modifiers are down, swallows the key or
// replays it to its window, without waiting for anything else. Everything else is
// observed through XInput2 raw events and handed to the GUI thread.
#include "platform/input_hooks.h"

#include <QObject>
#include <memory>

namespace platform::x11 {

// Slave devices whose name begins with this are our own generated input: the key
// sender types through a master device of this name, and the hooks mark its events.
inline constexpr const char *kSyntheticDeviceName = "Sonamark synthetic";

class X11InputHooks : public QObject, public InputHooks {
public:
    X11InputHooks();
    ~X11InputHooks() override;

    // False when there is no X display, or it lacks XTest or XInput 2.2.
    bool hookKeyboard() override;
    void unhookKeyboard() override;
    bool hookMouse() override;
    void unhookMouse() override;
    void setKeyPlan(const KeyPlan &plan) override;
    void setClickPlan(const ClickPlan &plan) override;
    QString keyText(int virtualKey, bool shift) override;
    void whenInputSettled(std::function<void()> done) override;

    class Worker;

private:
    std::unique_ptr<Worker> m_worker;
};

} // namespace platform::x11
