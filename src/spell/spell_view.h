#pragma once
// What the word walk needs of the spell window frmSpellIt. The walk owns the working
// copy of the text and the choices; the window shows them. Tests implement this with
// plain fields.
#include <QString>

namespace spell {

class SpellView {
public:
    virtual ~SpellView() = default;

    // rtfSpell, which the user does not edit: the whole text, a change of one piece, and
    // the selection. Positions are 0-based characters of the walk's text.
    virtual void showText(const QString &text) = 0;
    virtual void replaceText(qsizetype start, qsizetype length, const QString &with) = 0;
    virtual void showSelection(qsizetype selStart, qsizetype selLength) = 0;
    // lblFind.
    virtual void setFound(const QString &word) = 0;
    // lstCorrect: its rows, whether it takes clicks, the highlighted row.
    virtual void clearSuggestions() = 0;
    virtual void addSuggestion(const QString &row) = 0;
    virtual void setSuggestionsEnabled(bool enabled) = 0;
    virtual void selectSuggestion(int row) = 0;
    // txtSpell ("Change To"): its text, and all of it selected (SelectIt).
    virtual void setChangeTo(const QString &text) = 0;
    virtual void selectChangeTo() = 0;
    virtual void setChangeEnabled(bool enabled) = 0;  // cmdChange
    virtual void setIgnoreEnabled(bool enabled) = 0;  // cmdIgnore
    virtual void setStartEnabled(bool enabled) = 0;   // cmdStart
    // The dictionary in use, shown in the window's status line.
    virtual void setDictionary(const QString &name) = 0;
    // The busy pointer; while busy the window takes no choice but Cancel.
    virtual void setBusy(bool busy) = 0;
    // Timer1: runs the first walk once the window is on the screen.
    virtual void startTimer1() = 0;
    // DoEvents.
    virtual void processEvents() = 0;
    // Closes the window (its Form_Unload follows).
    virtual void unload() = 0;
};

} // namespace spell
