#include "platform/x11/modifier_guards.h"

#include <QLoggingCategory>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <chrono>
#include <thread>

Q_LOGGING_CATEGORY(lcModifierGuards, "sonamark.x11.keys.modifiers", QtWarningMsg)

namespace platform::x11 {

namespace {

using namespace std::chrono_literals;
constexpr auto kHeldModifierWait = 1000ms;  // longest wait for the user's hand
constexpr auto kHeldModifierPoll = 10ms;

std::vector<int> KeysDown(Display *display, const std::vector<int> &keycodes)
{
    char keys[32] = {};
    XQueryKeymap(display, keys);
    std::vector<int> down;
    for (int code : keycodes)
        if (code > 0 && code < 256 && (keys[code / 8] & (1 << (code % 8))))
            down.push_back(code);
    return down;
}

bool Contains(const std::vector<int> &list, int value)
{
    for (int v : list)
        if (v == value)
            return true;
    return false;
}

bool CapsLocked(Display *display)
{
    XkbStateRec state{};
    XkbGetState(display, XkbUseCoreKbd, &state);
    return state.locked_mods & LockMask;
}

} // namespace

HeldModifiersReleased::HeldModifiersReleased(Display *display, const std::vector<int> &modifierKeycodes)
    : m_display(display)
{
    const std::vector<int> down = KeysDown(display, modifierKeycodes);
    if (down.empty())
        return;
    for (int code : down)
        XTestFakeKeyEvent(display, unsigned(code), False, CurrentTime);
    XSync(display, False);
    std::vector<int> still = KeysDown(display, down);
    for (int code : down)
        if (!Contains(still, code))
            m_pressAgain.push_back(code);
    const auto deadline = std::chrono::steady_clock::now() + kHeldModifierWait;
    while (!still.empty() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(kHeldModifierPoll);
        still = KeysDown(display, still);
    }
    if (!still.empty())
        qCWarning(lcModifierGuards) << "typing while modifier keys are held down:" << still;
    qCDebug(lcModifierGuards) << "released for the typing:" << m_pressAgain;
}

HeldModifiersReleased::~HeldModifiersReleased()
{
    for (int code : m_pressAgain)
        XTestFakeKeyEvent(m_display, unsigned(code), True, CurrentTime);
    if (!m_pressAgain.empty())
        XSync(m_display, False);
}

CapsLockOff::CapsLockOff(Display *display) : m_display(display), m_wasLocked(CapsLocked(display))
{
    if (m_wasLocked) {
        XkbLockModifiers(display, XkbUseCoreKbd, LockMask, 0);
        XSync(display, False);
    }
}

CapsLockOff::~CapsLockOff()
{
    if (!m_wasLocked)
        return;
    // Locked now means the typing toggled it once more: on top of the original, off.
    const bool lockAgain = !CapsLocked(m_display);
    XkbLockModifiers(m_display, XkbUseCoreKbd, LockMask, lockAgain ? LockMask : 0);
    XSync(m_display, False);
}

} // namespace platform::x11
