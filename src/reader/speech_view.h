#pragma once
// What the speech logic needs of the main window: the voice list, the sliders, the text
// box, the status panels, Timer2 and the captions of the Pause and tray entries. The
// window implements it; tests implement it with plain fields.
#include <QString>

namespace reader {

class SpeechView {
public:
    virtual ~SpeechView() = default;

    // List1, the voice list.
    virtual void clearVoiceList() = 0;
    virtual void addVoiceRow(const QString &name) = 0;
    virtual int voiceRowCount() const = 0;
    virtual QString voiceRow(int row) const = 0;
    virtual int listIndex() const = 0;        // -1: nothing selected
    virtual void setListIndex(int row) = 0;
    virtual void setVoiceTip(const QString &tip) = 0;

    // VolumeSldr, RateSldr, PitchSldr: value and tip.
    virtual void setVolumeSlider(int value) = 0;
    virtual void setVolumeTip(const QString &tip) = 0;
    virtual void setRateSlider(int value) = 0;
    virtual void setRateTip(const QString &tip) = 0;
    virtual void setPitchSlider(int value) = 0;
    virtual void setPitchTip(const QString &tip) = 0;

    // txtSpeech. Positions are 0-based characters.
    virtual QString text() const = 0;
    virtual QString selectedText() const = 0;
    virtual int selStart() const = 0;
    virtual void setText(const QString &text) = 0;
    virtual void select(int start, int length) = 0;
    // 1-based line and column of the selection start (SetLineColumnNumbers).
    virtual int currentLine() const = 0;
    virtual int currentColumn() const = 0;
    // The default font and plain paragraph format over the whole text, selection at 0.
    virtual void applyDefaultFormat() = 0;
    virtual void setCaption(const QString &caption) = 0;

    // Status panel 1 together with the tray tip; status panel 2.
    virtual void setStatusText(const QString &text) = 0;
    virtual void setPanel2(const QString &text) = 0;
    virtual void setTimer2Enabled(bool enabled) = 0;

    // Captions and visibility of the buttons and tray entries.
    virtual QString cmdPauseCaption() const = 0;
    virtual QString mnuPauseCaption() const = 0;
    virtual void setPauseCaptions(const QString &caption) = 0;  // cmdPause and mnuPause
    virtual QString mnuTalkCaption() const = 0;
    virtual bool mnuPauseVisible() const = 0;
    virtual bool mnuStopVisible() const = 0;
    virtual QString clipToggleCaption() const = 0;

    // Other parts of the reader the Talk and Pause entries call into.
    virtual bool exceptionsOn() const { return false; }  // mnuExceptionsTog checked
    virtual void applyExceptions() {}                     // mnuExceptionsApply_Click
    virtual QString firstClipRow() const { return {}; }   // text of the tray's first clip row
    virtual void restorePopUp() {}
    virtual void restorePopUp2() {}
    virtual void saveFile() {}                            // mnuFileSave_Click
};

} // namespace reader
