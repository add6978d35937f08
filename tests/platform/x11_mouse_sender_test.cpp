// X11MouseSender on the test desktop: absolute units land on the right pixel, and a
// click reaches the key_recorder window at the pixel it was sent to.
#include "platform/x11/x11_mouse_sender.h"
#include "x11_desktop.h"

#include <gtest/gtest.h>

#include <QPoint>

// After gtest: X.h defines None.
#include <X11/Xlib.h>

using namespace x11test;
using platform::x11::PixelOfAbsolute;
using platform::x11::X11MouseSender;
namespace me = platform::mouse_event;

namespace {

QPoint Pointer()
{
    Window root = 0, child = 0;
    int x = 0, y = 0, winX = 0, winY = 0;
    unsigned mask = 0;
    XQueryPointer(TestDisplay(), DefaultRootWindow(TestDisplay()), &root, &child, &x, &y, &winX, &winY, &mask);
    return {x, y};
}

// Pixels to absolute units, as the mouse statements scale them.
int Absolute(int pixel, int pixels) { return int(pixel * me::kAbsoluteRange / pixels + 0.5); }

} // namespace

TEST(X11MouseSender, AbsoluteUnitsMapOntoTheWholeScreen)
{
    ASSERT_NE(TestDisplay(), nullptr) << "needs an X display: run under scripts/with-desktop.sh";
    X11MouseSender mouse;
    ASSERT_TRUE(mouse.available());
    Window root = 0;
    int x = 0, y = 0;
    unsigned width = 0, height = 0, border = 0, depth = 0;
    XGetGeometry(TestDisplay(), DefaultRootWindow(TestDisplay()), &root, &x, &y, &width, &height, &border, &depth);
    ASSERT_EQ(mouse.screenSize(), QSize(int(width), int(height)));
    struct Row {
        int absX, absY;
        QPoint pixel;
    };
    const int w = int(width), h = int(height);
    const Row rows[] = {
        {0, 0, {0, 0}},
        {65535, 65535, {w - 1, h - 1}},
        {32768, 16384, {PixelOfAbsolute(32768, w), PixelOfAbsolute(16384, h)}},
        {Absolute(123, w), Absolute(456, h), {123, 456}},
        {Absolute(w - 2, w), Absolute(1, h), {w - 2, 1}},
    };
    for (const Row &row : rows) {
        mouse.mouseEvent(me::Move, row.absX, row.absY);
        EXPECT_EQ(Pointer(), row.pixel) << row.absX << "," << row.absY;
    }
    // Only the move bit moves the pointer.
    mouse.mouseEvent(me::Move, Absolute(200, w), Absolute(200, h));
    mouse.mouseEvent(me::RightDown, Absolute(300, w), Absolute(300, h));
    mouse.mouseEvent(me::RightUp, Absolute(300, w), Absolute(300, h));
    EXPECT_EQ(Pointer(), QPoint(200, 200));
}

TEST(X11MouseSender, PixelsOfAbsoluteUnits)
{
    struct Row {
        int absolute, pixels, pixel;
    };
    const Row rows[] = {
        {0, 1280, 0}, {65535, 1280, 1279}, {32768, 1280, 640}, {70000, 1280, 1279},
        {-5, 1280, 0}, {51, 1280, 1}, {25, 1280, 0}, {100, 0, 0},
    };
    for (const Row &row : rows)
        EXPECT_EQ(PixelOfAbsolute(row.absolute, row.pixels), row.pixel) << row.absolute << " of " << row.pixels;
}

TEST(X11MouseSender, AClickArrivesAtThePixelItWasSentTo)
{
    ASSERT_NE(TestDisplay(), nullptr) << "needs an X display: run under scripts/with-desktop.sh";
    Recorder recorder(QStringLiteral("Sonamark mouse recorder test"));
    ASSERT_TRUE(recorder.ready());
    ASSERT_TRUE(recorder.activate());
    ASSERT_TRUE(recorder.clear());
    Window child = 0;
    int originX = 0, originY = 0;
    XTranslateCoordinates(TestDisplay(), recorder.window(), DefaultRootWindow(TestDisplay()), 0, 0, &originX, &originY,
                          &child);
    X11MouseSender mouse;
    const QSize screen = mouse.screenSize();
    struct Row {
        int x, y;
        bool right;
    };
    const Row rows[] = {{40, 30, false}, {311, 207, false}, {97, 350, true}, {600, 12, false}};
    // One click at a time: Qt folds pointer motion queued behind a press into that press,
    // so clicks sent faster than the recorder reads them would arrive at later points.
    for (const Row &row : rows) {
        const int absX = Absolute(originX + row.x, screen.width()), absY = Absolute(originY + row.y, screen.height());
        mouse.mouseEvent(me::Move, absX, absY);
        mouse.mouseEvent(row.right ? me::RightDown : me::LeftDown, absX, absY);
        mouse.mouseEvent(row.right ? me::RightUp : me::LeftUp, absX, absY);
        const auto got = recorder.sync();
        ASSERT_TRUE(got.has_value());
        ASSERT_FALSE(got->events.isEmpty());
        EXPECT_EQ(got->events.last().toStdString(),
                  QStringLiteral("press %1 %2 %3").arg(row.right ? "right" : "left").arg(row.x).arg(row.y).toStdString());
    }
}
