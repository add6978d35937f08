#include "fakes/fake_input_hooks.h"

#include "hotkeys/input_hooks.h"

namespace fakes {

bool FakeInputHooks::hookKeyboard()
{
    calls << QStringLiteral("hookKeyboard");
    keyboardHooked = keyboardAvailable;
    return keyboardHooked;
}

void FakeInputHooks::unhookKeyboard()
{
    calls << QStringLiteral("unhookKeyboard");
    keyboardHooked = false;
}

bool FakeInputHooks::hookMouse()
{
    calls << QStringLiteral("hookMouse");
    mouseHooked = mouseAvailable;
    return mouseHooked;
}

void FakeInputHooks::unhookMouse()
{
    calls << QStringLiteral("unhookMouse");
    mouseHooked = false;
}

QString FakeInputHooks::keyText(int virtualKey, bool shift)
{
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return QString(QLatin1Char(char(shift ? virtualKey : virtualKey + 32)));
    if (virtualKey == '1' && shift)
        return QStringLiteral("!");
    if (virtualKey >= '0' && virtualKey <= '9')
        return QString(QLatin1Char(char(virtualKey)));
    return {};
}

void FakeInputHooks::whenInputSettled(std::function<void()> done)
{
    ++settleRequests;
    pendingSettle = std::move(done);
    if (settleAtOnce)
        settle();
}

void FakeInputHooks::settle()
{
    if (auto done = std::move(pendingSettle)) {
        pendingSettle = nullptr;
        done();
    }
}

void FakeInputHooks::press(int virtualKey, bool leftCtrl, bool leftAlt, bool leftShift, bool rightCtrl)
{
    platform::KeyEvent event;
    event.virtualKey = virtualKey;
    event.down = true;
    event.leftControl = leftCtrl;
    event.leftAlt = leftAlt;
    event.leftShift = leftShift;
    event.control = leftCtrl || rightCtrl;
    lastSwallowed = hotkeys::KeyboardCallback(event);
}

void FakeInputHooks::release(int virtualKey)
{
    platform::KeyEvent event;
    event.virtualKey = virtualKey;
    event.down = false;
    lastSwallowed = hotkeys::KeyboardCallback(event);
}

void FakeInputHooks::click(int message, int x, int y, bool synthetic)
{
    if (!mouseHooked)
        return;  // nothing observes the mouse
    hotkeys::MouseCallback(platform::MouseEvent{message, x, y, synthetic});
}

} // namespace fakes
