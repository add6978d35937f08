#include "platform/x11/key_grabs.h"

#include <vector>

namespace platform::x11 {

namespace {

std::vector<unsigned> LockCombinations(const ModifierMasks &m)
{
    std::set<unsigned> combos;
    for (unsigned bits = 0; bits < 8; ++bits)
        combos.insert(((bits & 1) ? m.capsLock : 0) | ((bits & 2) ? m.numLock : 0) | ((bits & 4) ? m.scrollLock : 0));
    return {combos.begin(), combos.end()};
}

void AddKey(GrabSet &grabs, int virtualKey, unsigned required, const KeycodeTable &keys, const ModifierMasks &m,
            const std::vector<unsigned> &locks)
{
    const unsigned all[] = {m.shift, m.control, m.alt};
    for (int code = 0; code < int(keys.size()); ++code) {
        if (keys[code] != virtualKey)
            continue;
        for (unsigned bits = 0; bits < 8; ++bits) {
            unsigned mods = 0;
            for (int i = 0; i < 3; ++i)
                if (bits & (1u << i))
                    mods |= all[i];
            if ((mods & required) != required)
                continue;
            for (unsigned lock : locks)
                grabs.insert({code, mods | lock});
        }
    }
}

} // namespace

GrabSet GrabsForPlan(const KeyPlan &plan, const KeycodeTable &keys, const ModifierMasks &masks)
{
    GrabSet grabs;
    if (plan.everyKey)
        return grabs;  // the whole keyboard is grabbed instead
    const std::vector<unsigned> locks = LockCombinations(masks);
    if (plan.escape)
        AddKey(grabs, vk::Escape, 0, keys, masks, locks);
    for (const KeyCombination &key : plan.hotkeys) {
        const unsigned required = (key.control ? masks.control : 0) | (key.alt ? masks.alt : 0)
                                  | (key.shift ? masks.shift : 0);
        AddKey(grabs, key.virtualKey, required, keys, masks, locks);
    }
    return grabs;
}

QList<KeyCombination> TakenHotkeys(const GrabSet &refused, const KeyPlan &plan, const KeycodeTable &keys,
                                   const ModifierMasks &masks)
{
    QList<KeyCombination> taken;
    if (refused.empty())
        return taken;
    const std::vector<unsigned> locks = LockCombinations(masks);
    for (const KeyCombination &key : plan.hotkeys) {
        const unsigned exact = (key.control ? masks.control : 0) | (key.alt ? masks.alt : 0)
                               | (key.shift ? masks.shift : 0);
        bool held = false;
        for (int code = 0; code < int(keys.size()) && !held; ++code)
            if (keys[code] == key.virtualKey)
                for (unsigned lock : locks)
                    held = held || refused.count({code, exact | lock}) > 0;
        if (held)
            taken << key;
    }
    return taken;
}

} // namespace platform::x11
