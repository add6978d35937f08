#include "platform/x11/x11_mouse_sender.h"

#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <cmath>

Q_LOGGING_CATEGORY(lcX11Mouse, "sonamark.x11.mouse", QtWarningMsg)

namespace platform::x11 {

namespace {

constexpr int kMoveBit = 0x0001;
constexpr int kLeftDownBit = 0x0002;
constexpr int kLeftUpBit = 0x0004;
constexpr int kRightDownBit = 0x0008;
constexpr int kRightUpBit = 0x0010;
constexpr unsigned kLeftButton = 1;
constexpr unsigned kRightButton = 3;

} // namespace

int PixelOfAbsolute(int absolute, int pixels)
{
    if (pixels <= 0)
        return 0;
    const double pixel = std::round(double(absolute) * pixels / mouse_event::kAbsoluteRange);
    return std::clamp(int(pixel), 0, pixels - 1);
}

struct X11MouseSender::Private {
    DisplayConnection connection;
    bool xtest = false;
};

X11MouseSender::X11MouseSender() : d(std::make_unique<Private>())
{
    if (Display *display = d->connection.get()) {
        int event = 0, error = 0, major = 0, minor = 0;
        d->xtest = XTestQueryExtension(display, &event, &error, &major, &minor);
        if (!d->xtest)
            qCWarning(lcX11Mouse) << "the X server has no XTest extension: mouse events cannot be sent";
    }
}

X11MouseSender::~X11MouseSender() = default;

bool X11MouseSender::available() const { return d->connection && d->xtest; }

QSize X11MouseSender::screenSize() const
{
    Display *display = d->connection.get();
    if (!display)
        return {};
    const int screen = DefaultScreen(display);
    return {DisplayWidth(display, screen), DisplayHeight(display, screen)};
}

void X11MouseSender::mouseEvent(int flags, int absX, int absY)
{
    if (!available()) {
        qCWarning(lcX11Mouse) << "no X display with XTest: mouse event" << Qt::hex << flags << "not sent";
        return;
    }
    Display *display = d->connection.get();
    ScopedErrorTrap trap(display);
    if (flags & kMoveBit) {
        const QSize size = screenSize();
        const int x = PixelOfAbsolute(absX, size.width()), y = PixelOfAbsolute(absY, size.height());
        XTestFakeMotionEvent(display, DefaultScreen(display), x, y, CurrentTime);
        qCDebug(lcX11Mouse) << "move to" << x << y;
    }
    const std::pair<int, std::pair<unsigned, bool>> buttons[] = {
        {kLeftDownBit, {kLeftButton, true}},
        {kLeftUpBit, {kLeftButton, false}},
        {kRightDownBit, {kRightButton, true}},
        {kRightUpBit, {kRightButton, false}},
    };
    for (const auto &[bit, action] : buttons)
        if (flags & bit) {
            XTestFakeButtonEvent(display, action.first, action.second ? True : False, CurrentTime);
            qCDebug(lcX11Mouse) << "button" << action.first << (action.second ? "down" : "up");
        }
    if (trap.sync() > 0)
        qCWarning(lcX11Mouse) << "X error" << trap.lastError() << "on a mouse event";
}

} // namespace platform::x11
