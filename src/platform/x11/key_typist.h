#pragma once
// Delivers key steps as XTest key events on one connection, in order: each character
// through the key and level modifiers that type it on the map in use, or through a spare
// keycode lent to it for the moment when the map has no key for it.
#include "platform/key_sequence.h"
#include "platform/x11/focus_ping.h"
#include "platform/x11/key_lookup.h"
#include "platform/x11/keymap_overlay.h"
#include "platform/x11/keymap_snapshot.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

typedef struct _XDisplay Display;

namespace platform::x11 {

class KeyTypist {
public:
    KeyTypist(Display *display, const KeymapSnapshot &map);
    // finish(), whatever way the typing ended.
    ~KeyTypist();
    KeyTypist(const KeyTypist &) = delete;
    KeyTypist &operator=(const KeyTypist &) = delete;

    // Asked now and then while typing; typing stops when it answers false.
    void setKeepGoing(std::function<bool()> keepGoing) { m_keepGoing = std::move(keepGoing); }
    bool stopped() const { return m_stopped; }

    void type(const KeySequence &steps);
    // One press and release of the key of a keysym.
    void tapKeysym(unsigned long keysym);
    // Lets go of every key still held and, once the target has had time to read the
    // keys typed with them, gives the lent keycodes back.
    void finish();

    int eventsSent() const { return m_events; }

private:
    struct Item {
        enum class Kind { Press, Release, Tap };
        Kind kind = Kind::Tap;
        int keycode = 0;              // 0 for a lent key, found when it is typed
        unsigned levelModifiers = 0;  // LevelModifier bits
        unsigned long lentKeysym = 0;
        int count = 1;
        Modifier modifier = Modifier::Shift;
    };

    void resolve(const KeyStep &step, std::vector<Item> &items) const;
    bool resolveKeysym(unsigned long keysym, int count, std::vector<Item> &items) const;
    void run(const std::vector<Item> &items);
    void lend(const std::vector<unsigned long> &keysyms);
    void deliver(const Item &item);
    void setLevelModifiers(unsigned wanted);
    void sendKey(int keycode, bool down);
    void noteMapChanges(int changes);
    void waitForLentKeysRead();
    void askKeepGoing();

    Display *m_display;
    KeymapSnapshot m_map;
    KeyLookup m_lookup;
    KeymapOverlay m_overlay;
    std::optional<FocusPing> m_ping;  // looked for when first needed
    unsigned m_levelHeld = 0;          // level modifiers pressed by us for characters
    bool m_explicit[3] = {};           // modifiers pressed by the notation, by Modifier
    int m_events = 0;
    std::function<bool()> m_keepGoing;
    bool m_stopped = false;
    std::chrono::steady_clock::time_point m_lastAsked;
    // When the target has probably read every key sent so far (see kTargetEventCost),
    // and every key typed on a lent keycode with the map changes before it.
    std::chrono::steady_clock::time_point m_targetDone;
    std::chrono::steady_clock::time_point m_lentKeysReadBy;
};

} // namespace platform::x11
