#include "platform/x11/keymap_overlay.h"

#include "platform/x11/x11_display.h"

#include <QLoggingCategory>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>

Q_LOGGING_CATEGORY(lcKeymapOverlay, "sonamark.x11.keys.overlay", QtWarningMsg)

namespace platform::x11 {

namespace {

// Root window property: the keycodes lent right now, each followed by its keysym, as
// 32-bit integers.
constexpr const char *kLentProperty = "_SONAMARK_LENT_KEYCODES";
// Per keycode: the keysym for plain and for Shift, so that Shift held by the notation
// does not change what a lent key types.
constexpr int kLentKeysymsPerKeycode = 2;
constexpr int kMaxLentKeycodes = 256;

Atom LentAtom(Display *display) { return XInternAtom(display, kLentProperty, False); }

void ClearKeycode(Display *display, int keycode)
{
    KeySym empty[kLentKeysymsPerKeycode] = {NoSymbol, NoSymbol};
    XChangeKeyboardMapping(display, keycode, kLentKeysymsPerKeycode, empty, 1);
}

} // namespace

KeymapOverlay::KeymapOverlay(Display *display, std::vector<int> spareKeycodes)
    : m_display(display), m_spares(std::move(spareKeycodes)), m_lent(m_spares.size(), 0)
{
}

KeymapOverlay::~KeymapOverlay() { restore(); }

int KeymapOverlay::keycodeOf(unsigned long keysym) const
{
    auto it = std::find(m_lent.begin(), m_lent.end(), keysym);
    return keysym != 0 && it != m_lent.end() ? m_spares[size_t(it - m_lent.begin())] : 0;
}

bool KeymapOverlay::wouldReplace(const std::vector<unsigned long> &keysyms) const
{
    size_t missing = 0, free = 0;
    for (unsigned long sym : keysyms)
        missing += keycodeOf(sym) == 0 ? 1 : 0;
    for (unsigned long sym : m_lent)
        free += sym == 0 ? 1 : 0;
    return missing > free;
}

int KeymapOverlay::place(const std::vector<unsigned long> &keysyms)
{
    if (keysyms.size() > m_spares.size())
        return 0;
    int changed = 0;
    std::vector<bool> keep(m_spares.size(), false);
    std::vector<unsigned long> missing;
    for (unsigned long sym : keysyms) {
        auto it = std::find(m_lent.begin(), m_lent.end(), sym);
        if (it != m_lent.end())
            keep[size_t(it - m_lent.begin())] = true;
        else
            missing.push_back(sym);
    }
    // Free keycodes first, then those whose keysym is no longer wanted.
    for (int pass = 0; pass < 2 && !missing.empty(); ++pass) {
        for (size_t i = 0; i < m_spares.size() && !missing.empty(); ++i) {
            if (keep[i] || (pass == 0 && m_lent[i] != 0))
                continue;
            keep[i] = true;
            setKeycode(int(i), missing.back());
            missing.pop_back();
            ++changed;
        }
    }
    if (changed > 0)
        noteLent();
    return changed;
}

bool KeymapOverlay::lent() const
{
    return std::any_of(m_lent.begin(), m_lent.end(), [](unsigned long sym) { return sym != 0; });
}

int KeymapOverlay::restore()
{
    if (!m_display || !lent())
        return 0;
    int changed = 0;
    for (size_t i = 0; i < m_spares.size(); ++i)
        if (m_lent[i] != 0) {
            setKeycode(int(i), 0);
            ++changed;
        }
    noteLent();
    XSync(m_display, False);
    return changed;
}

void KeymapOverlay::setKeycode(int index, unsigned long keysym)
{
    m_lent[size_t(index)] = keysym;
    if (keysym == 0) {
        ClearKeycode(m_display, m_spares[size_t(index)]);
        return;
    }
    KeySym syms[kLentKeysymsPerKeycode] = {keysym, keysym};
    XChangeKeyboardMapping(m_display, m_spares[size_t(index)], kLentKeysymsPerKeycode, syms, 1);
    qCDebug(lcKeymapOverlay) << "keycode" << m_spares[size_t(index)] << "lent to keysym" << Qt::hex << keysym;
}

void KeymapOverlay::noteLent()
{
    std::vector<long> pairs;
    for (size_t i = 0; i < m_spares.size(); ++i)
        if (m_lent[i] != 0) {
            pairs.push_back(m_spares[i]);
            pairs.push_back(long(m_lent[i]));
        }
    const Window root = DefaultRootWindow(m_display);
    if (pairs.empty())
        XDeleteProperty(m_display, root, LentAtom(m_display));
    else
        XChangeProperty(m_display, root, LentAtom(m_display), XA_INTEGER, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char *>(pairs.data()), int(pairs.size()));
}

void RecoverLeftOverlay(Display *display)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char *data = nullptr;
    const Window root = DefaultRootWindow(display);
    if (XGetWindowProperty(display, root, LentAtom(display), 0, 2 * kMaxLentKeycodes, True, XA_INTEGER, &type,
                           &format, &count, &after, &data)
            != Success
        || !data) {
        return;
    }
    XMemory<unsigned char> owner(data);
    if (format != 32)
        return;
    int minKeycode = 0, maxKeycode = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    const long *pairs = reinterpret_cast<const long *>(data);
    for (unsigned long i = 0; i + 1 < count; i += 2) {
        const long code = pairs[i];
        const KeySym lentSym = KeySym(pairs[i + 1]);
        if (code < minKeycode || code > maxKeycode)
            continue;
        // Only a key that still carries what was lent: the map may have been reloaded since.
        int per = 0;
        XMemory<KeySym> syms(XGetKeyboardMapping(display, KeyCode(code), 1, &per));
        if (!syms || per < 1 || syms.get()[0] != lentSym)
            continue;
        qCInfo(lcKeymapOverlay) << "giving back keycode" << code << "left lent by a program that ended";
        ClearKeycode(display, int(code));
    }
    XSync(display, False);
}

} // namespace platform::x11
