// The X11 hooks on a real X server: a hotkey that another client grabbed first is
// reported as taken, and the hotkeys that could be grabbed are not.
#include "platform/x11/x11_input_hooks.h"

#include <QCoreApplication>
#include <QThread>
#include <gtest/gtest.h>
// After gtest: X.h defines None.
#include <X11/Xlib.h>
#include <X11/keysym.h>

namespace {
constexpr int kVkF7 = 118, kVkF8 = 119;
constexpr int kWaitSlices = 500;  // at most about five seconds for the report to come
constexpr int kSliceMs = 10;
} // namespace

TEST(X11TakenHotkeys, AHotkeyAnotherClientGrabbedFirstIsReportedAndNoOther)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        GTEST_SKIP() << "no X display";
    int argc = 1;
    char name[] = "x11_taken_test";
    char *argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);

    Display *other = XOpenDisplay(nullptr);
    ASSERT_NE(other, nullptr);
    const Window root = DefaultRootWindow(other);
    const int f7 = XKeysymToKeycode(other, XK_F7);
    XGrabKey(other, f7, ControlMask | Mod1Mask, root, False, GrabModeAsync, GrabModeAsync);
    XSync(other, False);

    QList<QList<platform::KeyCombination>> reports;
    {
        platform::x11::X11InputHooks hooks;
        hooks.onHotkeysTaken = [&](const QList<platform::KeyCombination> &taken) { reports << taken; };
        ASSERT_TRUE(hooks.hookKeyboard());
        platform::KeyPlan plan;
        plan.hotkeys = {{kVkF7, true, true, false}, {kVkF8, true, true, false}};
        hooks.setKeyPlan(plan);
        for (int i = 0; i < kWaitSlices && reports.isEmpty(); ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, kSliceMs);
            QThread::msleep(kSliceMs);
        }
        hooks.unhookKeyboard();
    }
    XUngrabKey(other, f7, ControlMask | Mod1Mask, root);
    XCloseDisplay(other);

    ASSERT_EQ(reports.size(), 1);
    EXPECT_EQ(reports[0], (QList<platform::KeyCombination>{{kVkF7, true, true, false}}));
}
