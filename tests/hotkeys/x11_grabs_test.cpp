// Which passive grabs the X11 hooks take for a plan, and the key translation tables.
#include "platform/x11/key_grabs.h"
#include "platform/x11/virtual_keys.h"

#include <gtest/gtest.h>
// After gtest: X.h defines None.
#include <X11/X.h>
#include <X11/keysym.h>

using namespace platform;
using namespace platform::x11;

namespace {
constexpr int kCodeA = 38, kCodeEsc = 9, kCodeA2 = 200;
constexpr unsigned kNumLock = Mod2Mask;
const ModifierMasks kMasks{ShiftMask, ControlMask, Mod1Mask, LockMask, kNumLock, 0};

KeycodeTable Keys()
{
    KeycodeTable keys{};
    keys[kCodeA] = 'A';
    keys[kCodeA2] = 'A';  // a second key with the same letter
    keys[kCodeEsc] = vk::Escape;
    return keys;
}
} // namespace

TEST(X11Grabs, AHotkeyIsGrabbedWithItsModifiersAndAnyMoreAndEveryLock)
{
    KeyPlan plan;
    plan.hotkeys = {{'A', true, false, false}};
    const GrabSet grabs = GrabsForPlan(plan, Keys(), kMasks);
    // Ctrl, Ctrl+Shift, Ctrl+Alt, Ctrl+Alt+Shift, each with none, Caps, Num, Caps+Num; two keycodes.
    EXPECT_EQ(grabs.size(), 2u * 4u * 4u);
    EXPECT_TRUE(grabs.count({kCodeA, ControlMask}));
    EXPECT_TRUE(grabs.count({kCodeA, ControlMask | ShiftMask | kNumLock | LockMask}));
    EXPECT_TRUE(grabs.count({kCodeA2, ControlMask | Mod1Mask}));
    EXPECT_FALSE(grabs.count({kCodeA, 0}));
    EXPECT_FALSE(grabs.count({kCodeA, ShiftMask}));
    EXPECT_FALSE(grabs.count({kCodeEsc, ControlMask}));
}

TEST(X11Grabs, EscIsGrabbedInEveryStateAndCaptureGrabsNoSingleKey)
{
    KeyPlan plan;
    plan.escape = true;
    const GrabSet grabs = GrabsForPlan(plan, Keys(), kMasks);
    EXPECT_EQ(grabs.size(), 8u * 4u);
    EXPECT_TRUE(grabs.count({kCodeEsc, 0}));
    EXPECT_TRUE(grabs.count({kCodeEsc, Mod1Mask | ControlMask}));
    plan.everyKey = true;
    EXPECT_TRUE(GrabsForPlan(plan, Keys(), kMasks).empty());
    EXPECT_TRUE(GrabsForPlan(KeyPlan{}, Keys(), kMasks).empty());
}

TEST(X11Grabs, TheDecisionOnThePressUsesTheLeftModifiersOnly)
{
    KeyPlan plan;
    plan.hotkeys = {{'A', true, false, false}};
    plan.escape = true;
    EXPECT_TRUE(ConsumesKey(plan, 'A', true, false, false));
    EXPECT_FALSE(ConsumesKey(plan, 'A', false, false, false));  // right Ctrl only
    EXPECT_FALSE(ConsumesKey(plan, 'A', true, false, true));
    EXPECT_TRUE(ConsumesKey(plan, vk::Escape, false, false, true));
    EXPECT_FALSE(ConsumesKey(plan, vk::Escape, false, true, false));
    plan.everyKey = true;
    EXPECT_TRUE(ConsumesKey(plan, 'Q', false, false, false));
    EXPECT_FALSE(ConsumesKey(plan, vk::LeftControl, true, false, false));
}

TEST(X11Grabs, AHotkeyIsTakenOnlyWhenAGrabOfItsOwnModifiersIsRefused)
{
    KeyPlan plan;
    const KeyCombination ctrlA{'A', true, false, false}, esc{vk::Escape, false, false, false};
    plan.hotkeys = {ctrlA};
    plan.escape = true;
    const struct {
        const char *what;
        GrabSet refused;
        QList<KeyCombination> taken;
    } rows[] = {
        {"nothing refused", {}, {}},
        {"Ctrl+A", {{kCodeA, ControlMask}}, {ctrlA}},
        {"Ctrl+A with NumLock on, on the second keycode", {{kCodeA2, ControlMask | kNumLock}}, {ctrlA}},
        {"only Ctrl+Alt+A", {{kCodeA, ControlMask | Mod1Mask}}, {}},
        {"plain A", {{kCodeA, 0}}, {}},
        {"Esc", {{kCodeEsc, 0}}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(TakenHotkeys(row.refused, plan, Keys(), kMasks), row.taken) << row.what;
}

TEST(X11Keys, KeysymsAndVirtualKeysMatch)
{
    EXPECT_EQ(VirtualKeyOfKeysym(XK_a), 'A');
    EXPECT_EQ(VirtualKeyOfKeysym(XK_Q), 'Q');
    EXPECT_EQ(VirtualKeyOfKeysym(XK_7), '7');
    EXPECT_EQ(VirtualKeyOfKeysym(XK_F12), 123);
    EXPECT_EQ(VirtualKeyOfKeysym(XK_Control_L), vk::LeftControl);
    EXPECT_EQ(VirtualKeyOfKeysym(XK_Control_R), vk::RightControl);
    EXPECT_EQ(VirtualKeyOfKeysym(XK_KP_Insert), 96);
    EXPECT_EQ(VirtualKeyOfKeysym(XK_Escape), vk::Escape);
    EXPECT_EQ(VirtualKeyOfKeysym(XK_Greek_alpha), 0);
    EXPECT_EQ(KeysymCharacter(XK_a), U'a');
    EXPECT_EQ(KeysymCharacter(XK_exclam), U'!');
    EXPECT_EQ(KeysymCharacter(XK_KP_5), U'5');
    EXPECT_EQ(KeysymCharacter(0x100263a), U'\u263a');
    EXPECT_EQ(KeysymCharacter(XK_F1), 0u);
}
