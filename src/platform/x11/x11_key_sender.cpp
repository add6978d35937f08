#include "platform/x11/x11_key_sender.h"

#include "platform/key_sequence.h"
#include "platform/x11/focus_ping.h"
#include "platform/x11/key_typist.h"
#include "platform/x11/keymap_overlay.h"
#include "platform/x11/keymap_snapshot.h"
#include "platform/x11/modifier_guards.h"
#include "platform/x11/virtual_keys.h"
#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

Q_LOGGING_CATEGORY(lcX11KeySender, "sonamark.x11.keys.sender", QtWarningMsg)

namespace platform::x11 {

namespace {

constexpr int kPrintScreenKey = 44;

// The keysym of a virtual key on the map in use: the plain level of a key whose keysym
// has that virtual key. Print Screen also when the map has no Print key.
unsigned long KeysymOfVirtualKey(const KeymapSnapshot &map, int virtualKey)
{
    for (const KeyProduct &p : map.products)
        if (p.modifiers == 0 && p.keysym != 0 && VirtualKeyOfKeysym(p.keysym) == virtualKey)
            return p.keysym;
    return virtualKey == kPrintScreenKey ? XK_Print : 0;
}

} // namespace

struct X11KeySender::Private {
    DisplayConnection connection;
    bool xtest = false;

    // One typing session: modifiers held before and Caps Lock set aside, the map read,
    // and all of it put back, in reverse order, when the session ends.
    template <typename F>
    void session(const std::function<bool()> &keepGoing, F typeWith)
    {
        Display *display = connection.get();
        ScopedErrorTrap trap(display);
        const KeymapSnapshot map = ReadKeymap(display);
        HeldModifiersReleased held(display, map.heldModifierKeys);
        CapsLockOff caps(display);
        KeyTypist typist(display, map);
        typist.setKeepGoing(keepGoing);
        typeWith(typist, map);
        typist.finish();
        DrainEvents(display);  // our own map changes come back as notifications
        if (trap.sync() > 0)
            qCWarning(lcX11KeySender) << "X errors while typing; the last one:" << trap.lastError();
    }
};

X11KeySender::X11KeySender() : d(std::make_unique<Private>())
{
    Display *display = d->connection.get();
    if (!display)
        return;
    int event = 0, error = 0, major = 0, minor = 0;
    d->xtest = XTestQueryExtension(display, &event, &error, &major, &minor);
    if (!d->xtest) {
        qCWarning(lcX11KeySender) << "the X server has no XTest extension: keys cannot be sent";
        return;
    }
    // A program killed while it typed may have left keycodes lent.
    ScopedErrorTrap trap(display);
    RecoverLeftOverlay(display);
}

X11KeySender::~X11KeySender() = default;

bool X11KeySender::available() const { return d->connection && d->xtest; }

void X11KeySender::sendKeys(const QString &notation)
{
    if (!available()) {
        qCWarning(lcX11KeySender) << "no X display with XTest: keys not sent";
        return;
    }
    const KeySequence steps = ParseKeyNotation(notation);
    if (steps.empty())
        return;
    qCDebug(lcX11KeySender) << "sending" << DescribeKeySequence(steps);
    d->session(keepGoing, [&steps](KeyTypist &typist, const KeymapSnapshot &) { typist.type(steps); });
}

void X11KeySender::pressKey(int virtualKey)
{
    if (!available()) {
        qCWarning(lcX11KeySender) << "no X display with XTest: key" << virtualKey << "not pressed";
        return;
    }
    d->session(keepGoing, [virtualKey](KeyTypist &typist, const KeymapSnapshot &map) {
        if (const unsigned long keysym = KeysymOfVirtualKey(map, virtualKey))
            typist.tapKeysym(keysym);
        else
            qCWarning(lcX11KeySender) << "no key for virtual key" << virtualKey;
    });
}

} // namespace platform::x11
