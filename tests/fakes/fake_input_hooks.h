#pragma once
// A fake of the global hooks: records installs and plans; a test delivers key and mouse
// events through it as the real hooks would.
#include "platform/input_hooks.h"

#include <QStringList>

namespace fakes {

class FakeInputHooks : public platform::InputHooks {
public:
    bool keyboardAvailable = true;
    bool mouseAvailable = true;
    bool keyboardHooked = false;
    bool mouseHooked = false;
    QStringList calls;  // "hookKeyboard", "unhookMouse", ... in order
    platform::KeyPlan keyPlan;
    platform::ClickPlan clickPlan;
    int settleRequests = 0;
    bool settleAtOnce = true;  // false: the test calls settle() itself
    std::function<void()> pendingSettle;

    bool hookKeyboard() override;
    void unhookKeyboard() override;
    bool hookMouse() override;
    void unhookMouse() override;
    void setKeyPlan(const platform::KeyPlan &plan) override { keyPlan = plan; }
    void setClickPlan(const platform::ClickPlan &plan) override { clickPlan = plan; }
    // Letters by their case, digits unshifted, "!" for Shift+1: a US layout in small.
    QString keyText(int virtualKey, bool shift) override;
    void whenInputSettled(std::function<void()> done) override;
    void settle();

    // Delivers a press (or release) of key with the left modifiers given; the right
    // Ctrl counts only for `control`.
    void press(int virtualKey, bool leftCtrl = false, bool leftAlt = false, bool leftShift = false,
               bool rightCtrl = false);
    void release(int virtualKey);
    // Delivers a button event, when the mouse hook is installed.
    void click(int message, int x, int y, bool synthetic = false);
    bool lastSwallowed = false;  // what the logic answered for the last delivered key
};

} // namespace fakes
