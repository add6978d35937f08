#include "hotkeys/hotkey_sort.h"

#include "hotkeys/hotkeys_table.h"

#include <cmath>
#include <vector>

namespace hotkeys {

namespace {

// count / 2 + 1 converted to an integer by rounding half to even.
int heapStart(int count)
{
    const double x = count / 2.0 + 1;
    const double low = std::floor(x);
    if (x - low != 0.5)
        return static_cast<int>(std::lround(x));
    return static_cast<int>(std::fmod(low, 2.0) == 0 ? low : low + 1);
}

} // namespace

void SortT(QList<SortKey> &keys)
{
    const int count = static_cast<int>(keys.size());
    if (count < 2)
        return;
    // 1-based working arrays: upper-cased keys and the index array alongside.
    std::vector<QString> key(count + 1);
    std::vector<int> index(count + 1);
    for (int k = 1; k <= count; ++k) {
        key[k] = keys[k - 1].Key.toUpper();
        index[k] = k;
    }
    int l = heapStart(count);
    int r = count;
    for (;;) {
        QString pivotKey;
        int pivotIndex;
        if (l > 1) {
            --l;
            pivotKey = key[l];
            pivotIndex = index[l];
        } else {
            pivotKey = key[r];
            pivotIndex = index[r];
            key[r] = key[1];
            index[r] = index[1];
            --r;
            if (r == 1) {
                key[1] = pivotKey;
                index[1] = pivotIndex;
                break;
            }
        }
        int i = l;
        int j = l + l;
        while (j <= r) {
            if (j < r && key[j] < key[j + 1])
                ++j;
            if (pivotKey < key[j]) {
                key[i] = key[j];
                index[i] = index[j];
                i = j;
                j += i;
            } else {
                j = r + 1;
            }
        }
        key[i] = pivotKey;
        index[i] = pivotIndex;
    }
    const QList<SortKey> original = keys;
    for (int k = 1; k <= count; ++k)
        keys[k - 1] = original[index[k] - 1];
}

void SortHotkeys(const QString &name)
{
    HotkeyTable &t = table();
    if (t.HotkeyCount < 1)
        return;
    QList<SortKey> keys;
    for (int n = 1; n <= t.HotkeyCount; ++n)
        keys << SortKey{t.at(n).Description, n};
    SortT(keys);
    std::vector<Hotkey> sorted;
    sorted.reserve(keys.size());
    for (const SortKey &k : keys)
        sorted.push_back(t.at(k.Position));
    for (int n = 1; n <= t.HotkeyCount; ++n) {
        t.at(n) = sorted[n - 1];
        if (t.at(n).Description == name)
            t.CurrentHotkeyIndex = n - 1;
    }
}

} // namespace hotkeys
