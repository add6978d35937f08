#pragma once
// The logic of frmVBLame ("Sonamark - Read To MP3"): the output name, the three lists, the
// Read To File button with its Cancel, and the unload question. The window implements
// ReadToFileView; tests implement it with plain fields.
#include "audio/lame_encoder.h"

#include <QString>
#include <QStringList>

namespace audio {

inline constexpr auto kReadToFileTitle = "Sonamark - Read To MP3";
inline constexpr auto kEncodeCaption = "&Read To File";
inline constexpr auto kCancelCaption = "Cancel";

// The lists of the dialog, by the index of cboOption or as cmbBitrate.
enum ReadToFileList : int { kSpeechFormatList = 0, kQualityList = 1, kBitRateList = 2 };

class ReadToFileView {
public:
    virtual ~ReadToFileView() = default;
    // txtOutputMp3File: Text holds the name as shown, Tag the full name.
    virtual QString outputText() const = 0;
    virtual void setOutputText(const QString &text) = 0;  // raises txtOutputMp3File_Change
    virtual QString outputTag() const = 0;
    virtual void setOutputTag(const QString &tag) = 0;
    virtual void selectAndFocusOutput() = 0;
    // cboOption(0), cboOption(1) and cmbBitrate; -1: nothing selected.
    virtual void fillList(ReadToFileList list, const QStringList &rows) = 0;
    virtual int listIndex(ReadToFileList list) const = 0;
    virtual void setListIndex(ReadToFileList list, int row) = 0;  // raises cboOption_Click
    virtual void setSpeechFormatVisible(bool visible) = 0;
    // cmdEncode and m_cProgress.
    virtual QString encodeCaption() const = 0;
    virtual void setEncodeCaption(const QString &caption) = 0;
    virtual void setEncodeEnabled(bool enabled) = 0;
    virtual void setProgress(int percent) = 0;
    virtual void setProgressVisible(bool visible) = 0;
    // Lets pending user actions run (DoEvents).
    virtual void doEvents() = 0;
    virtual void unload() = 0;
    // The main window: the text of txtSpeech and the row of its voice list (row 0 is
    // selected there when none is).
    virtual QString speechText() const = 0;
    virtual void setSpeechText(const QString &text) = 0;
    virtual int voiceRow() = 0;
};

class ReadToFileDialog {
public:
    explicit ReadToFileDialog(ReadToFileView &view);
    ReadToFileDialog(const ReadToFileDialog &) = delete;
    ReadToFileDialog &operator=(const ReadToFileDialog &) = delete;

    void Form_Load();
    // False refuses the unload.
    bool Form_Unload();
    void SettxtOutputMp3File(const QString &name);
    void txtOutputMp3File_Change();
    void cboOption_Click(int index);
    void cmdCancel_Click();
    void cmdEncode_Click();
    void cmdFile_Click(const QString &chosenName);  // after the file picker; "" when cancelled

    cLameEncoder &encoder() { return m_cEncoder; }

private:
    void DisplayWAVOptions();
    void DisplayMP3Options();
    void refuse(const QString &text, const QString &title);
    void encode();

    ReadToFileView &m_view;
    cLameEncoder m_cEncoder;
    bool m_fillingOptions = false;  // FillingOptions: list clicks are ignored
};

} // namespace audio
