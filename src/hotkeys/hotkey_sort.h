#pragma once
// Sorting the hotkeys table by name.
#include <QList>
#include <QString>

namespace hotkeys {

struct SortKey {
    QString Key;       // compared upper-cased, in binary order of the characters
    int Position = 0;  // 1-based position before the sort
};

// Heap sort of keys[0..n-1] (1-based in the algorithm); not stable.
void SortT(QList<SortKey> &keys);
// Sorts the table by Description, ignoring case; the macro named name (exact match,
// the last one wins) becomes CurrentHotkeyIndex.
void SortHotkeys(const QString &name);

} // namespace hotkeys
