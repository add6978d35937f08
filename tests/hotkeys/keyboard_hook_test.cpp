// The keyboard hook's decisions: hotkeys, Esc, key log, capture, and what the real hook
// is told to swallow.
#include "hooks_fixture.h"

#include "hotkeys/editor_commands.h"
#include "hotkeys/key_names.h"

using namespace hotkeys;
using fakes::FakeInputHooks;

namespace {
constexpr int kA = 'A', kK = 'K', kEsc = 0x1B, kF5 = 116;
}

TEST_F(HooksTest, LeftCtrlFiresAHotkeyAndTheKeyIsSwallowedButRightCtrlDoesNot)
{
    addMacro(QStringLiteral("^A"));
    fakes.inputHooks.press(kA, false, false, false, /*rightCtrl*/ true);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    EXPECT_EQ(runTimerStarts, 0);
    fakes.inputHooks.press(kA, /*leftCtrl*/ true);
    EXPECT_TRUE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(shell::app().PendingHotkey, 1);
    EXPECT_EQ(runTimerStarts, 1);
}

TEST_F(HooksTest, AReleaseIsPassedOnAndAHeldKeyFiresOnEachRepeat)
{
    addMacro(QStringLiteral("^%K"));
    fakes.inputHooks.press(kK, true, true);
    fakes.inputHooks.press(kK, true, true);
    EXPECT_EQ(runTimerStarts, 2);
    fakes.inputHooks.release(kK);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(runTimerStarts, 2);
}

TEST_F(HooksTest, ADisabledMacroIsPassedOverForALaterOneWithTheSameKeys)
{
    addMacro(QStringLiteral("^%K"), /*active*/ false);
    addMacro(QStringLiteral("^%k"));
    fakes.inputHooks.press(kK, true, true);
    EXPECT_EQ(shell::app().PendingHotkey, 2);
    EXPECT_EQ(GetHotkeyIndex(true, true, false, kK), 2);
    EXPECT_EQ(GetHotkeyIndex(true, false, false, kK), 0);
}

TEST_F(HooksTest, HotkeysHeldByAnotherProgramAreNamedOnceWithTheirMacros)
{
    addMacro(QStringLiteral("^%k"));
    addMacro(QStringLiteral("^A"));
    addMacro(QStringLiteral("^B"), /*active*/ false);
    ASSERT_TRUE(fakes.inputHooks.onHotkeysTaken);
    const platform::KeyCombination ctrlAltK{kK, true, true, false}, ctrlA{kA, true, false, false},
        ctrlB{'B', true, false, false};
    fakes.inputHooks.onHotkeysTaken({ctrlAltK});
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("HotKeys"));
    EXPECT_TRUE(fakes.messages.shown[0].text.startsWith(
        QStringLiteral("Another program holds these hotkeys for itself:\r\n\r\n^%k   M1\r\n\r\n")))
        << fakes.messages.shown[0].text.toStdString();
    EXPECT_TRUE(fakes.messages.shown[0].text.contains(QStringLiteral("the keys reach that program too")));
    // Told already, or a disabled macro's: nothing more to say.
    fakes.inputHooks.onHotkeysTaken({ctrlAltK, ctrlB});
    EXPECT_EQ(fakes.messages.shown.size(), 1);
    fakes.inputHooks.onHotkeysTaken({ctrlAltK, ctrlA});
    ASSERT_EQ(fakes.messages.shown.size(), 2);
    EXPECT_TRUE(fakes.messages.shown[1].text.contains(QStringLiteral(":\r\n\r\n^A   M2\r\n\r\n")))
        << fakes.messages.shown[1].text.toStdString();
    EXPECT_FALSE(fakes.messages.shown[1].text.contains(QStringLiteral("^%k")));
}

TEST_F(HooksTest, EscAbortsARunningMacroOnlyWithoutAltOrCtrl)
{
    engine::runState().MacroRunning = true;
    fakes.inputHooks.press(kEsc, false, /*leftAlt*/ true);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_FALSE(engine::runState().AbortRequested);
    fakes.inputHooks.press(kEsc, /*leftCtrl*/ true);
    EXPECT_FALSE(engine::runState().AbortRequested);
    fakes.inputHooks.press(kEsc, false, false, /*leftShift*/ true);
    EXPECT_TRUE(fakes.inputHooks.lastSwallowed);
    EXPECT_TRUE(engine::runState().AbortRequested);
    EXPECT_EQ(runTimerStarts, 0);  // nothing pending
}

TEST_F(HooksTest, WithHotkeysOffAMacroStillSeesEscButNoHotkey)
{
    addMacro(QStringLiteral("^a"));
    shell::settings().HotkeysEnabledOpt = QStringLiteral("0");
    fakes.inputHooks.press(kA, true);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    fakes.inputHooks.press(kEsc);
    EXPECT_FALSE(engine::runState().AbortRequested);

    engine::runState().MacroRunning = true;
    fakes.inputHooks.press(kEsc);
    EXPECT_TRUE(fakes.inputHooks.lastSwallowed);
    EXPECT_TRUE(engine::runState().AbortRequested);
}

TEST_F(HooksTest, DuringAMacroOtherKeysPassAndAHotkeyIsStillSwallowed)
{
    addMacro(QStringLiteral("^a"));
    hookState().KeyboardHookExists = false;  // nothing is decided before the hook object exists
    fakes.inputHooks.press(kA, true);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    hookState().KeyboardHookExists = true;
    engine::runState().MacroRunning = true;
    fakes.inputHooks.press('B');
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    fakes.inputHooks.press(kA, true);
    EXPECT_TRUE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(shell::app().PendingHotkey, 1);
}

TEST_F(HooksTest, EscCancelsAWebFetch)
{
    int cancels = 0;
    SetWebFetchCanceller([&] { ++cancels; });
    engine::runState().MacroRunning = true;
    hookState().WebFetchActive = true;
    fakes.inputHooks.press(kEsc);
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(hookState().WebFetchActive);
    SetWebFetchCanceller(nullptr);
}

TEST_F(HooksTest, KeyLogTakesTheKeyNumberAsALetter)
{
    engine::runState().MacroRunning = true;
    hookState().KeyLogActive = true;
    fakes.inputHooks.press('H', false, false, true);
    fakes.inputHooks.press('I');
    fakes.inputHooks.press('1');  // 49 + 32: "Q", by design
    EXPECT_EQ(hookState().KeyLogText, QStringLiteral("HiQ"));
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
}

TEST_F(HooksTest, HotkeyCaptureStoresTheNotationAndSwallowsTheKey)
{
    shell::settings().HotkeysEnabledOpt = QStringLiteral("0");
    hookState().HotkeyCapture = true;
    fakes.inputHooks.press(kA, true, true);
    EXPECT_TRUE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(hookState().CapturedKey, QStringLiteral("^%a"));
    fakes.inputHooks.press(kF5, false, false, true);
    EXPECT_EQ(hookState().CapturedKey, QStringLiteral("+{F5}"));
    // The left modifiers alone are no key.
    fakes.inputHooks.press(platform::vk::LeftControl, true);
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(hookState().CapturedKey, QStringLiteral("+{F5}"));
}

TEST_F(HooksTest, AFailedHookLeavesNothingSwallowed)
{
    hookState().reset();
    fakes.inputHooks.keyboardAvailable = false;
    fakes.inputHooks.keyPlan = {};
    addMacro(QStringLiteral("^a"));
    EXPECT_FALSE(HookKeyboard());
    UpdateHookPlan();
    EXPECT_TRUE(fakes.inputHooks.keyPlan.hotkeys.isEmpty());
    EXPECT_FALSE(HookMouse());
}

TEST_F(HooksTest, ThePlanSwallowsExactlyWhatTheHookDecides)
{
    addMacro(QStringLiteral("^a"));
    addMacro(QStringLiteral("%+{F5}"));
    addMacro(QStringLiteral("^%+1"));
    addMacro(QStringLiteral("{ESC}"), false);
    const int keys[] = {kA, 'B', '1', kF5, kEsc, platform::vk::LeftControl, 96 + 1};
    for (bool running : {false, true}) {
        engine::runState().MacroRunning = running;
        UpdateHookPlan();
        const platform::KeyPlan plan = fakes.inputHooks.keyPlan;
        for (int key : keys)
            for (int mods = 0; mods < 8; ++mods) {
                const bool c = mods & 1, a = mods & 2, s = mods & 4;
                engine::runState().AbortRequested = false;
                fakes.inputHooks.press(key, c, a, s);
                EXPECT_EQ(platform::ConsumesKey(plan, key, c, a, s), fakes.inputHooks.lastSwallowed)
                    << "key " << key << " mods " << mods << " running " << running;
            }
    }
}

TEST_F(HooksTest, ThePlanFollowsTheStateItDependsOn)
{
    addMacro(QStringLiteral("^a"));
    UpdateHookPlan();
    EXPECT_EQ(fakes.inputHooks.keyPlan.hotkeys, (QList<platform::KeyCombination>{{kA, true, false, false}}));
    EXPECT_FALSE(fakes.inputHooks.keyPlan.escape);

    shell::settings().HotkeysEnabledOpt = QStringLiteral("0");
    UpdateHookPlan();
    EXPECT_TRUE(fakes.inputHooks.keyPlan.hotkeys.isEmpty());

    hookState().HotkeyCapture = true;
    UpdateHookPlan();
    EXPECT_TRUE(fakes.inputHooks.keyPlan.everyKey);
}

TEST_F(HooksTest, InsertHotkeyTakesOneKeyThenLetsHotkeysFireAgain)
{
    addMacro(QStringLiteral("^%a"));
    hotkeys::UpdateHookPlan();
    hotkeys::BeginHotkeyCapture();
    EXPECT_TRUE(fakes.inputHooks.keyPlan.everyKey);
    EXPECT_EQ(hotkeys::TakeCapturedKey(), QString());  // nothing pressed yet
    fakes.inputHooks.press(kA, true, true);
    EXPECT_EQ(shell::app().PendingHotkey, 0);  // taken as text, not fired
    EXPECT_EQ(hotkeys::TakeCapturedKey(), QStringLiteral("^%a"));
    EXPECT_FALSE(hookState().HotkeyCapture);
    EXPECT_FALSE(fakes.inputHooks.keyPlan.everyKey);
    EXPECT_EQ(hotkeys::TakeCapturedKey(), QString());  // taken once

    // A capture ended without a key leaves nothing for the next one.
    hotkeys::BeginHotkeyCapture();
    hookState().CapturedKey = QStringLiteral("{F1}");
    hotkeys::EndHotkeyCapture();
    hotkeys::BeginHotkeyCapture();
    EXPECT_EQ(hotkeys::TakeCapturedKey(), QString());
    hotkeys::EndHotkeyCapture();
}
