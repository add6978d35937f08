#pragma once
// The spell checker's process-wide state: the text handed to it and how its run ended.
#include <QString>

namespace spell {

struct SpellState {
    QString SpellText;            // the text to check; set by the caller
    bool SpellCommit = false;     // true: the result goes to txtSpeech; false: to the clipboard
    bool SpellCancelled = false;  // the run ended without a result
    bool SpellDone = false;       // the window has closed
    bool SpellChanged = false;    // at least one word was changed in this run
    bool SpellAtv = false;        // a word holding "atv" was looked up; nothing reads it

    void reset() { *this = SpellState(); }
};

SpellState &spellState();

} // namespace spell
