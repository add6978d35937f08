#include "platform/x11/key_typist.h"

#include <QLoggingCategory>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <thread>

Q_LOGGING_CATEGORY(lcKeyTypist, "sonamark.x11.keys", QtWarningMsg)

namespace platform::x11 {

namespace {

using namespace std::chrono_literals;

// A round trip after this many key events: the server has taken everything before it, so
// a fast stream never piles up in our output buffer or the server's input queue.
constexpr int kEventsPerSync = 64;
// The pace we assume of a slow target: it reads a key event in kTargetEventCost and takes
// in a change of the keyboard map (one per keycode lent or given back) in
// kTargetMapChangeCost; a Qt program fetches and compiles the whole map again on each,
// about 12 ms apiece on a small machine. A target reads a key with the map it fetched
// after the last change it has seen, so changing the map under unread keys changes
// them: a lent keycode is given back or lent again only when the target has had time,
// by these costs plus kMapSettle, to read everything up to the last key typed with a
// lent keycode (keys after that are on keycodes of the map, which no change touches).
//
// Where the target answers pings (FocusPing), its answer settles the question instead,
// within kPingLimit; the estimate is then only what a silent target gets.
constexpr auto kTargetEventCost = 150us;
constexpr auto kTargetMapChangeCost = 25ms;
constexpr auto kMapSettle = 50ms;
constexpr auto kPingLimit = 3000ms;
// How often a long typing asks whether to go on (the question may run pending events).
constexpr auto kKeepGoingInterval = 50ms;

// ORDER NamedKey
constexpr std::array<KeySym, 36> kNamedKeysyms = {
    XK_Return, XK_Tab, XK_BackSpace, XK_Delete, XK_Insert, XK_Up, XK_Down, XK_Left, XK_Right, XK_Home, XK_End,
    XK_Prior, XK_Next, XK_Escape, XK_Caps_Lock, XK_Num_Lock, XK_Scroll_Lock, XK_Break, XK_Help, XK_Print,
    XK_F1, XK_F2, XK_F3, XK_F4, XK_F5, XK_F6, XK_F7, XK_F8, XK_F9, XK_F10, XK_F11, XK_F12,
    XK_F13, XK_F14, XK_F15, XK_F16,
};
static_assert(kNamedKeysyms.size() == size_t(NamedKey::F16) + 1);

} // namespace

KeyTypist::KeyTypist(Display *display, const KeymapSnapshot &map)
    : m_display(display), m_map(map), m_lookup(map.products), m_overlay(display, map.spareKeycodes),
      m_lastAsked(std::chrono::steady_clock::now()), m_targetDone(m_lastAsked),
      m_lentKeysReadBy(m_lastAsked)
{
}

KeyTypist::~KeyTypist() { finish(); }

void KeyTypist::type(const KeySequence &steps)
{
    std::vector<Item> items;
    items.reserve(steps.size());
    for (const KeyStep &step : steps)
        resolve(step, items);
    run(items);
}

void KeyTypist::tapKeysym(unsigned long keysym)
{
    std::vector<Item> items;
    if (!resolveKeysym(keysym, 1, items))
        qCWarning(lcKeyTypist) << "no key for keysym" << Qt::hex << keysym;
    run(items);
}

void KeyTypist::resolve(const KeyStep &step, std::vector<Item> &items) const
{
    switch (step.kind) {
    case KeyStep::Kind::Press:
    case KeyStep::Kind::Release: {
        Item item;
        item.kind = step.kind == KeyStep::Kind::Press ? Item::Kind::Press : Item::Kind::Release;
        item.modifier = step.modifier;
        item.keycode = step.modifier == Modifier::Shift     ? m_map.shiftKeycode
                       : step.modifier == Modifier::Control ? m_map.controlKeycode
                                                            : m_map.altKeycode;
        if (item.keycode == 0)
            qCWarning(lcKeyTypist) << "the keyboard map has no" << ModifierText(step.modifier) << "key";
        else
            items.push_back(item);
        return;
    }
    case KeyStep::Kind::Tap:
        if (!resolveKeysym(kNamedKeysyms[size_t(step.key)], step.count, items))
            qCWarning(lcKeyTypist) << "no key for" << KeyNameText(step.key);
        return;
    case KeyStep::Kind::Type:
        if (const auto stroke = m_lookup.forCharacter(step.character)) {
            Item item;
            item.keycode = stroke->keycode;
            item.levelModifiers = stroke->modifiers;
            items.push_back(item);
        } else if (!resolveKeysym(KeysymForCharacter(step.character), 1, items)) {
            qCWarning(lcKeyTypist) << "cannot type character" << Qt::hex << uint(step.character);
        }
        return;
    }
}

bool KeyTypist::resolveKeysym(unsigned long keysym, int count, std::vector<Item> &items) const
{
    if (keysym == 0 || count <= 0)
        return keysym != 0;
    Item item;
    item.count = count;
    if (const auto stroke = m_lookup.forKeysym(keysym)) {
        item.keycode = stroke->keycode;
        item.levelModifiers = stroke->modifiers;
    } else {
        item.lentKeysym = keysym;
    }
    items.push_back(item);
    return true;
}

// Runs of items whose lent keysyms fit on the spare keycodes together; one map change
// before each run that needs one.
void KeyTypist::run(const std::vector<Item> &items)
{
    size_t first = 0;
    while (first < items.size() && !m_stopped) {
        std::vector<unsigned long> lent;
        size_t end = first;
        for (; end < items.size(); ++end) {
            const unsigned long sym = items[end].lentKeysym;
            if (sym == 0 || std::find(lent.begin(), lent.end(), sym) != lent.end())
                continue;
            if (int(lent.size()) == m_overlay.capacity())
                break;
            lent.push_back(sym);
        }
        if (end == first) {
            qCWarning(lcKeyTypist) << "no spare keycode to type keysym" << Qt::hex << items[first].lentKeysym;
            ++first;
            continue;
        }
        if (!lent.empty())
            lend(lent);
        for (size_t i = first; i < end && !m_stopped; ++i)
            deliver(items[i]);
        first = end;
    }
    XFlush(m_display);
}

void KeyTypist::lend(const std::vector<unsigned long> &keysyms)
{
    if (m_overlay.wouldReplace(keysyms)) {
        waitForLentKeysRead();
        askKeepGoing();
        if (m_stopped)
            return;
    }
    noteMapChanges(m_overlay.place(keysyms));
}

void KeyTypist::deliver(const Item &item)
{
    switch (item.kind) {
    case Item::Kind::Press:
        setLevelModifiers(0);
        m_explicit[int(item.modifier)] = true;
        sendKey(item.keycode, true);
        return;
    case Item::Kind::Release:
        setLevelModifiers(0);
        m_explicit[int(item.modifier)] = false;
        sendKey(item.keycode, false);
        return;
    case Item::Kind::Tap: {
        const int keycode = item.keycode ? item.keycode : m_overlay.keycodeOf(item.lentKeysym);
        if (keycode == 0)
            return;
        // Shift held by the notation already gives the level ("+a" types "A").
        unsigned wanted = item.levelModifiers;
        if (m_explicit[int(Modifier::Shift)])
            wanted &= ~unsigned(kLevelShift);
        setLevelModifiers(wanted);
        for (int i = 0; i < item.count && !m_stopped; ++i) {
            sendKey(keycode, true);
            sendKey(keycode, false);
        }
        if (!item.keycode)
            m_lentKeysReadBy = m_targetDone;
        return;
    }
    }
}

// Level modifiers stay down across characters that need the same ones ("HELLO" is one
// Shift press), and are let go before anything else.
void KeyTypist::setLevelModifiers(unsigned wanted)
{
    const std::pair<unsigned, int> keys[] = {{kLevelShift, m_map.shiftKeycode}, {kLevelThird, m_map.level3Keycode}};
    for (const auto &[bit, keycode] : keys)
        if ((m_levelHeld & bit) && !(wanted & bit))
            sendKey(keycode, false);
    for (const auto &[bit, keycode] : keys)
        if (!(m_levelHeld & bit) && (wanted & bit))
            sendKey(keycode, true);
    m_levelHeld = wanted;
}

void KeyTypist::sendKey(int keycode, bool down)
{
    if (keycode <= 0)
        return;
    XTestFakeKeyEvent(m_display, unsigned(keycode), down ? True : False, CurrentTime);
    const auto now = std::chrono::steady_clock::now();
    m_targetDone = std::max(now, m_targetDone) + kTargetEventCost;
    if (++m_events % kEventsPerSync == 0) {
        XSync(m_display, False);
        askKeepGoing();
    }
}

void KeyTypist::askKeepGoing()
{
    const auto now = std::chrono::steady_clock::now();
    if (!m_keepGoing || now - m_lastAsked < kKeepGoingInterval)
        return;
    m_lastAsked = now;
    if (!m_keepGoing()) {
        m_stopped = true;
        qCDebug(lcKeyTypist) << "typing stopped after" << m_events << "key events";
    }
}

void KeyTypist::noteMapChanges(int changes)
{
    m_targetDone = std::max(std::chrono::steady_clock::now(), m_targetDone) + changes * kTargetMapChangeCost;
    m_lentKeysReadBy = m_targetDone;
}

void KeyTypist::waitForLentKeysRead()
{
    XSync(m_display, False);
    if (!m_ping)
        m_ping.emplace(m_display);
    if (m_ping->roundTrip(kPingLimit))
        return;
    std::this_thread::sleep_until(m_lentKeysReadBy + kMapSettle);
}

void KeyTypist::finish()
{
    setLevelModifiers(0);
    const int modifierKeys[] = {m_map.shiftKeycode, m_map.controlKeycode, m_map.altKeycode};
    for (int m = 0; m < 3; ++m)
        if (m_explicit[m]) {
            sendKey(modifierKeys[m], false);
            m_explicit[m] = false;
        }
    if (m_overlay.lent()) {
        waitForLentKeysRead();
        noteMapChanges(m_overlay.restore());
    }
    XSync(m_display, False);
}

} // namespace platform::x11
