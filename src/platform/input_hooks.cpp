#include "platform/input_hooks.h"

namespace platform {

bool KeyEvent::isDown(int key) const
{
    switch (key) {
    case vk::LeftControl:
        return leftControl;
    case vk::LeftAlt:
        return leftAlt;
    case vk::LeftShift:
        return leftShift;
    case vk::Control:
        return control;
    default:
        return key == virtualKey && down;
    }
}

bool ConsumesKey(const KeyPlan &plan, int virtualKey, bool leftControl, bool leftAlt, bool leftShift)
{
    if (virtualKey == vk::LeftControl || virtualKey == vk::LeftAlt || virtualKey == vk::LeftShift)
        return false;
    if (plan.everyKey)
        return true;
    if (plan.escape && virtualKey == vk::Escape && !leftControl && !leftAlt)
        return true;
    const KeyCombination pressed{virtualKey, leftControl, leftAlt, leftShift};
    return plan.hotkeys.contains(pressed);
}

bool ConsumesClick(const ClickPlan &plan, int message, int x, int y)
{
    if (message != mouse::LeftDown && message != mouse::RightDown)
        return false;
    if (plan.pointCapture && !plan.excluded.contains(x, y))
        return true;
    // QRect::contains includes the right and bottom edges given as right()/bottom().
    return plan.trapZone && x >= plan.zone.left() && x <= plan.zone.right() && y >= plan.zone.top()
           && y <= plan.zone.bottom();
}

} // namespace platform
