#pragma once
// Batch conversion: text documents read aloud into MP3 files, each MP3 beside its
// document. The logic of frmMP3Files (the window implements BatchView; tests implement it
// with plain fields) and the pieces sonamark-cli's batch shares with it: which files are
// taken, how a document is read, the names, one document's conversion, the reports.
#include "audio/lame_encoder.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace platform {
class BatchHelper;
class SpeechEngine;
}

namespace audio {

inline constexpr auto kBatchEncodeCaption = "&Read To Files";
inline constexpr auto kBatchReportTitle = "Convert Files To MP3";
inline constexpr int kBatchSpeechFormat = 34;  // 44 kHz, 16 bit mono, whatever the lists say

// FileFormatIsOk: at least 5 characters, ending in .doc, .txt, .rtf or .xml (any case).
bool FileFormatIsOk(const QString &name);
// The MP3 beside a document: its name without the last three characters, plus "MP3".
QString BatchMp3Name(const QString &document);
// The temporary wave file of an MP3: the MP3's bare name with ".wav", in AppFolder.
QString BatchWavName(const QString &mp3Name);
// The window caption for a selection of count files.
QString SelectionCaption(int count);
// The closing report, and the report after a cancel while encoding.
QString BatchReport(int converted);
QString BatchCancelReport(int converted);

// Why a document is left out of a batch (silently in the window, listed by the CLI).
enum class BatchSkip { None, NotADocument, Missing, NoWordReader, Unreadable, Empty };
QString SkipReason(BatchSkip skip);
// Steps 5 to 7 for one document: its text, or why it is skipped.
BatchSkip ReadBatchDocument(const QString &name, QString *text);

// What one document's conversion is given. The text is already read and, when
// exceptions are on, changed by them.
struct BatchFileRun {
    QString text;
    QString wavName;
    QString mp3Name;
    QString pitch = QStringLiteral("0");  // opt Pitch
    int voice = -1;                       // engine voice; -1 keeps the engine's
    int rate = 0;
    int volume = 100;
    int preset = 0;
    int bitRate = 128;
    std::function<void()> DoEvents;           // pending events, during speech and encoding
    std::function<bool()> speechCancelled;    // polled while speaking
    std::function<void(int percent)> progress;
    std::function<void()> spoken;  // the speech is in the wave file; encoding comes next
};
enum class BatchOutcome { Converted, SpeechCancelled, EncodingCancelled, SpeechFailed, EncodingFailed };
// Speaks the text into the wave file, converts it to the MP3 (an old MP3 of that name is
// replaced) and deletes the wave file. The encoder stops when CancelEncoding is set; a
// failure says why in *error. After a cancel or failure of the speech the wave file stays.
BatchOutcome ConvertOneFile(platform::SpeechEngine &engine, cLameEncoder &encoder, const BatchFileRun &run,
                            QString *error);

class BatchView {
public:
    virtual ~BatchView() = default;
    virtual void setCaption(const QString &caption) = 0;
    // txtOutputMp3File: the rows, and the text shown in its edit field.
    virtual void fillFiles(const QStringList &rows) = 0;
    virtual void setFilesText(const QString &text) = 0;
    // cboOption (the one quality list) and cmbBitrate; -1: nothing selected.
    virtual void fillQualities(const QStringList &rows) = 0;
    virtual void fillBitRates(const QStringList &rows) = 0;
    virtual int qualityIndex() const = 0;
    virtual void setQualityIndex(int row) = 0;  // raises cboOption_Click
    virtual int bitRateIndex() const = 0;
    virtual void setBitRateIndex(int row) = 0;
    virtual QString encodeCaption() const = 0;
    virtual void setEncodeCaption(const QString &caption) = 0;
    virtual void setProgress(int percent) = 0;
    virtual void doEvents() = 0;
    virtual void unload() = 0;
    // frmFindFiles, modal, for the state as the caller set it.
    virtual void showFileFinder() = 0;
    // The main window's voice row (row 0 is selected there when none is).
    virtual int voiceRow() = 0;
};

class BatchConversion {
public:
    explicit BatchConversion(BatchView &view);
    BatchConversion(const BatchConversion &) = delete;
    BatchConversion &operator=(const BatchConversion &) = delete;

    void Form_Load();
    void Form_Unload();
    void cmdFile_Click();
    void cmdEncode_Click();
    void cmdCancel_Click();
    void cboOption_Click();

    cLameEncoder &encoder() { return m_cEncoder; }

private:
    void DisplayMP3Options();
    void showSelection();
    void storeQuality();
    void finish(const QString &report);
    BatchFileRun fileRun(const QString &mp3Name, const QString &text);
    bool cancelled() const;
    // Hands the first readable document from number first on to the helper: its number,
    // or 0 when there is none or the helper did not start.
    int startHelper(platform::BatchHelper &helper, const QStringList &selected, int first);
    // Waits for the helper's document; nothing when it must be read here after all.
    std::optional<BatchOutcome> helperOutcome(platform::BatchHelper &helper);

    BatchView &m_view;
    cLameEncoder m_cEncoder;
    bool m_fillingOptions = false;
};

} // namespace audio
