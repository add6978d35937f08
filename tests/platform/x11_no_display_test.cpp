// The X11 senders without a display: they are made, say so, and do nothing.
#include "platform/x11/x11_key_sender.h"
#include "platform/x11/x11_mouse_sender.h"
#include "platform/x11/x11_window_finder.h"

#include <gtest/gtest.h>

using namespace platform::x11;

TEST(X11Senders, WithoutADisplayNothingFailsAndNothingIsSent)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");
    {
        platform::x11::X11KeySender keys;
        EXPECT_FALSE(keys.available());
        keys.sendKeys(QStringLiteral("hello{ENTER}\u00e9"));
        keys.pressKey(44);
        platform::x11::X11MouseSender mouse;
        EXPECT_FALSE(mouse.available());
        EXPECT_EQ(mouse.screenSize(), QSize());
        mouse.mouseEvent(platform::mouse_event::LeftDown, 100, 100);
        X11WindowFinder finder;
        EXPECT_FALSE(finder.activateWindowOfClass(QStringLiteral("anything")));
    }
    qputenv("DISPLAY", display);
}
