#pragma once
// Sequences of [LOOP Var=list]: a comma-separated list of numbers and whole-number
// ranges "a-b" (upward only, ends rounded ties-to-even), and the slot store that keeps
// one running sequence per [LOOP] line. A "-" is always the range mark.
#include <QList>
#include <QString>

namespace macro {

inline constexpr int kMaxSequenceValues = 100000;
inline constexpr double kMaxSequenceMagnitude = 1e99;

struct SequenceSlot {
    int LoopSeqLine = 0;   // action index of the owning [LOOP ...] line
    int LoopSeqPos = 0;    // next value to use, from 1
    int LoopSeqCount = 0;  // number of values; 0 marks the slot as free
    QList<double> LoopSeqValues;
};

// The slots, 1-based, and how many of them are in use.
struct SequenceStore {
    QList<SequenceSlot> entries;
    int LoopSlotCount = 0;  // slots taken by running sequences
    int upperBound() const { return static_cast<int>(entries.size()); }
    SequenceSlot &slot(int n) { return entries[n - 1]; }
    void reset() { *this = SequenceStore(); }
};

SequenceStore &sequenceStore();
// Drops every slot and clears LoopSlotCount. Called at each run's start.
void ResetSequences();

// True when the condition has the shape "Name=digits , - .": no parentheses, no
// AND/OR, no "<" or ">". So [LOOP X=5] is a sequence of one value.
bool IsSequence(const QString &condition);
// "" or a message; min and max are the smallest and largest listed numbers.
QString GetMinMaxVal(const QString &list, double &min, double &max);
// Parses list into the slot's values; "" or a message. A malformed item ends the parse
// with no message and no values.
QString Token(const QString &list, int slot);
// The same parse, nothing stored: for the checker.
QString Token2(const QString &list);

// True when one of slots 1..LoopSlotCount belongs to line (slot set to it); otherwise
// false with slot set to LoopSlotCount + 1.
bool LoopSequence(int line, int &slot);
// A free slot (count 0) among 1..upper bound - 1 when slots are in use, else a new one.
void SetNextLOOPIndex(int &slot);
// Releases the slot: LoopSlotCount drops by one when above 0, the slot's count is 0.
void ResetLoopSequence(int slot);

} // namespace macro
