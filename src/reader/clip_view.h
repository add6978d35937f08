#pragma once
// What the clipboard monitor and the clip store need of the main window: the monitor
// toggle and its timers, the clip rows of the "&Clipboard" menu and of the tray menu,
// the fixed entries of the tray menu, and the text box. The window implements it; tests
// implement it with plain fields.
#include <QString>

namespace reader {

// Fixed entries of the tray menu that its shortened forms hide or show.
enum class TrayEntry {
    Talk,          // mnuTalk
    Pause,         // mnuPause
    Stop,          // mnuStop
    SeparatorSC,   // mnuSeparatorSC
    PUSpellCheck,  // mnuPUSpellCheck
    Separator1,    // mnuSeparator1
    Options,       // mnuOptions
    Separator2,    // mnuSeparator2, above the clip rows
    ClipboardBar,  // mnuClipboardbar, below the clip rows of the "&Clipboard" menu
    ClipStored,    // mnuClipStored, the tray's text count row
    Separator3,    // Separator3, above Cancel
    Cancel,        // mnuCancel
    SeparatorEnd,  // mnuSeparator3, above Quit
    Close,         // mnuClose
};

class ClipView {
public:
    virtual ~ClipView() = default;

    // Clip rows, each set in both menus at once (mnuClipMRU and mnuClipboardMRU, or
    // mnuClipPicMRU and mnuClipboardPicMRU); rows are 0 to 4.
    virtual void setClipRow(int row, const QString &caption, bool visible) = 0;
    virtual void setClipCountRow(const QString &caption, bool visible) = 0;  // mnuClipStored, mnuClipboardStored
    virtual void setPicRow(int row, const QString &caption, bool visible) = 0;
    virtual void setPicCountRow(const QString &caption, bool visible) = 0;   // mnuClipPicStored, mnuClipboardPicStored
    // The check of mnuClipboardEnablePics.
    virtual bool picsEnabled() const = 0;
    virtual void setPicsEnabled(bool checked) = 0;

    // Tray menu entries.
    virtual void setTrayEntryVisible(TrayEntry entry, bool visible) = 0;
    virtual void setTrayEntryEnabled(TrayEntry entry, bool enabled) = 0;
    virtual void setTrayCaption(TrayEntry entry, const QString &caption) = 0;  // Talk and Pause
    // Pops up the tray menu as it stands.
    virtual void popTrayMenu() = 0;

    // The monitor toggle cmdClipToggle: caption and tip.
    virtual QString clipToggleCaption() const = 0;
    virtual void setClipToggle(const QString &caption, const QString &tip) = 0;
    virtual void setTimer1Enabled(bool enabled) = 0;
    virtual void setTimer3Enabled(bool enabled) = 0;
    virtual void setTimer5Enabled(bool enabled) = 0;
    // cmdPaste and cmdClear.
    virtual void setPasteClearEnabled(bool enabled) = 0;
    // The check of mnuPUSpellCheck.
    virtual bool spellClipMode() const = 0;
    virtual void setSpellClipMode(bool) {}

    // Status panel 1 together with the tray tip; status panel 1 alone.
    virtual void setStatusText(const QString &text) = 0;
    virtual void setPanel1(const QString &text) = 0;

    // txtSpeech takes a clip: the font reset of a new clip, the text, Reset_txtSpeech.
    virtual void resetClipFont() = 0;
    virtual void setSpeechText(const QString &text) = 0;
    // cmdTalk_Click.
    virtual void talk() = 0;
    // The made-exceptions flag is cleared when new clipboard text comes in.
    virtual void clearExceptionsMade() {}
    // Hands a monitored text to the spell checker (frmSpellIt, modal).
    virtual void spellCheckClip(const QString &) {}
    // DoEvents.
    virtual void processEvents() {}
};

} // namespace reader
