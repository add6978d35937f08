#include "audio/read_to_file_dialog.h"

#include "audio/read_to_file.h"
#include "audio/speech_formats.h"
#include "platform/services.h"
#include "platform/speech_engine.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <cmath>

namespace audio {

namespace {

constexpr int kMsgOk = 0;
constexpr int kMsgYesNo = 1;
constexpr int kAnswerNo = -1;
constexpr int kForgottenFormatOpt = -13;  // what a stored wave format turns into
constexpr int kDefaultQualityOpt = 1;
const QString kInvalidFile = QStringLiteral("Invalid File");
const QString kSaveToFile = QStringLiteral("Save To File");
const QString kCancelled = QStringLiteral("Read To File cancelled by user.");

bool Answered(const QString &question, const QString &title)
{
    shell::MsgBoxOT(question, kMsgYesNo, title);
    return shell::app().MsgResult != kAnswerNo;
}

} // namespace

ReadToFileDialog::ReadToFileDialog(ReadToFileView &view) : m_view(view) {}

void ReadToFileDialog::Form_Load()
{
    ++shell::app().ChildFormDepth;
    readToFileVars().ReadToFileBusy = false;
    DisplayWAVOptions();
    DisplayMP3Options();
    QString &optX = shell::settings().Mp3QualityOpt;
    const double value = shell::Val(optX);
    if (value < 0) {
        // Every negative value is below 30: a stored wave format is never restored.
        if (value < 30) {
            optX = QString::number(kForgottenFormatOpt);
            shell::app().OptionsDirty = true;
        }
        m_view.setSpeechFormatVisible(true);
        m_view.setListIndex(kSpeechFormatList, int(std::lround(std::abs(shell::Val(optX)))));
    } else {
        if (value > kMp3QualityCount - 1) {
            optX = QString::number(kDefaultQualityOpt);
            shell::app().OptionsDirty = true;
        }
        m_view.setSpeechFormatVisible(false);
        m_view.setListIndex(kQualityList, int(std::lround(shell::Val(optX))));
    }
}

bool ReadToFileDialog::Form_Unload()
{
    if (m_view.encodeCaption() == QLatin1String(kCancelCaption)) {
        if (!Answered(QStringLiteral("Cancel MP3 conversion?"), QStringLiteral("Cancel")))
            return false;
        cmdEncode_Click();
    }
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
    return true;
}

void ReadToFileDialog::DisplayWAVOptions()
{
    m_fillingOptions = true;
    QStringList rows;
    for (const SpeechFormat &f : SpeechFormats())
        rows << QString::fromLatin1(f.text);
    m_view.fillList(kSpeechFormatList, rows);
    m_fillingOptions = false;
}

void ReadToFileDialog::DisplayMP3Options()
{
    m_fillingOptions = true;
    QStringList rows;
    for (const Mp3Quality &q : Mp3Qualities())
        rows << QString::fromLatin1(q.text);
    m_view.fillList(kQualityList, rows);
    rows.clear();
    for (int kbps : BitRates())
        rows << BitRateText(kbps);
    m_view.fillList(kBitRateList, rows);
    m_view.setListIndex(kBitRateList, kDefaultBitRateRow);
    m_fillingOptions = false;
}

void ReadToFileDialog::SettxtOutputMp3File(const QString &name)
{
    const QString full = OutputMp3Name(name);
    m_view.setOutputText(shell::CondensedPath(full, kCondensedNameWidth));
    m_view.setOutputTag(full);
}

void ReadToFileDialog::txtOutputMp3File_Change()
{
    const QString text = m_view.outputText();
    m_view.setOutputTag(text);
    if (!HasSoundEnding(text))
        return;
    m_view.setSpeechFormatVisible(IsWavName(text));
    m_view.setEncodeEnabled(true);
}

void ReadToFileDialog::cboOption_Click(int index)
{
    if (m_fillingOptions || index != kQualityList)
        return;
    m_view.setListIndex(kSpeechFormatList, kMp3SpeechFormatRow);
    const int row = m_view.listIndex(kQualityList);
    if (row >= 0 && row < kMp3QualityCount)
        m_view.setListIndex(kBitRateList, Mp3Qualities()[row].bitRateRow);
}

void ReadToFileDialog::cmdCancel_Click()
{
    if (m_view.encodeCaption() != QLatin1String(kCancelCaption))
        m_view.unload();
}

void ReadToFileDialog::cmdFile_Click(const QString &chosenName)
{
    if (!chosenName.isEmpty())
        SettxtOutputMp3File(chosenName);
}

void ReadToFileDialog::refuse(const QString &text, const QString &title)
{
    shell::MsgBoxOT(text, kMsgOk, title);
    m_view.selectAndFocusOutput();
}

void ReadToFileDialog::cmdEncode_Click()
{
    ReadToFileVars &vars = readToFileVars();
    if (m_view.encodeCaption() == QLatin1String(kCancelCaption)) {
        vars.CancelEncoding = true;
        m_view.setEncodeCaption(QLatin1String(kEncodeCaption));
        return;
    }
    if (vars.ReadToFileBusy)
        return;
    const QString tag = m_view.outputTag();
    if (tag.trimmed().isEmpty())
        return refuse(QStringLiteral("The MP3 output file is not specified."), kInvalidFile);
    if (!ValidMissingFile(tag))
        return refuse(QStringLiteral("Invalid MP3 output file."), kInvalidFile);
    const QString text = m_view.outputText();
    // A condensed name shows "/../" and stands for the tag; a typed one differs from it.
    QString name = text.contains(QLatin1String("/../")) ? tag : text != tag ? text : tag;
    if (name.trimmed().isEmpty())
        return refuse(QStringLiteral("The output file is not specified."), kInvalidFile);
    if (!OutputFolderExists(name))
        return refuse(QStringLiteral("The output folder does not exist."), QStringLiteral("Invalid Folder"));
    SetFNameWAV_MP3(name, [](const QString &bare) { return Answered(OverwriteQuestion(bare), kSaveToFile); });
    if (name.isEmpty())
        return m_view.selectAndFocusOutput();
    if (vars.WavFileName.trimmed().isEmpty())
        return refuse(QStringLiteral("The output file is not specified."), kInvalidFile);
    if (reader::exceptionsState().ExceptionsOn) {
        QString spoken = m_view.speechText();
        reader::MakeExceptions(spoken);
        m_view.setSpeechText(spoken);
        if (!shell::app().CurrentFile.isEmpty())
            shell::app().TextDirty = true;
    }
    m_view.setProgress(0);
    m_view.setProgressVisible(true);
    vars.CancelEncoding = false;
    m_view.setEncodeCaption(QLatin1String(kCancelCaption));
    m_view.doEvents();

    platform::SpeechEngine *engine = platform::services().speech;
    if (m_view.listIndex(kSpeechFormatList) < 0)
        m_view.setListIndex(kSpeechFormatList, kDefaultSpeechFormatRow);
    const int voiceRow = m_view.voiceRow();
    reader::speechVars().HighlightOn = false;
    const QString pitch = shell::settings().PitchOpt;
    QString spoken = m_view.speechText();
    if (pitch != QLatin1String("0") && !spoken.toLower().contains(QLatin1String("<xml version")))
        spoken = reader::PitchWrapped(spoken, pitch);

    SpeakToFileRun run;
    run.text = spoken;
    run.wavName = vars.WavFileName;
    run.formatConstant = SpeechFormats()[m_view.listIndex(kSpeechFormatList)].constant;
    run.voice = voiceRow >= 0 && voiceRow < reader::kMaxVoices ? reader::speechVars().VoiceIndex[voiceRow] : -1;
    run.DoEvents = [this] { m_view.doEvents(); };
    run.cancelled = [this] { return m_view.encodeCaption() != QLatin1String(kCancelCaption); };
    run.progress = [this](int percent) { m_view.setProgress(percent); };
    QString error;
    const SpeakOutcome outcome = engine ? SpeakToFile(*engine, run, &error) : SpeakOutcome::Failed;
    if (outcome != SpeakOutcome::Done) {
        m_view.setProgress(0);
        m_view.setEncodeCaption(QLatin1String(kEncodeCaption));
        shell::MsgBoxOT(outcome == SpeakOutcome::Cancelled ? kCancelled
                        : error.isEmpty() ? QStringLiteral("The speech engine is not available.") : error,
                        kMsgOk, kSaveToFile);
        return;
    }
    if (!vars.MakeMp3) {
        m_view.setEncodeCaption(QLatin1String(kEncodeCaption));
        m_view.setProgress(100);
        shell::MsgBoxOT(QStringLiteral("Saved to WAV file : ") + vars.WavFileName, kMsgOk, QStringLiteral("File Saved"));
        return;
    }
    encode();
}

void ReadToFileDialog::encode()
{
    ReadToFileVars &vars = readToFileVars();
    m_view.setProgress(50);
    m_cEncoder.setWavFile(vars.WavFileName);
    m_cEncoder.setMp3File(vars.Mp3FileName);
    if (m_view.listIndex(kQualityList) < 0)
        m_view.setListIndex(kQualityList, kDefaultQualityOpt);
    const int bitRateRow = m_view.listIndex(kBitRateList);
    const int bitRate = bitRateRow >= 0 && bitRateRow < kBitRateCount ? BitRates()[bitRateRow] : kFallbackBitRate;
    const int qualityRow = m_view.listIndex(kQualityList);
    m_cEncoder.Re_Initialize(kMp3SampleRate, Mp3Qualities()[qualityRow].preset, bitRate);
    m_cEncoder.DoEvents = [this] { m_view.doEvents(); };
    m_cEncoder.SetProgress = [this](bool isBatch, int percent) {
        if (!isBatch)
            m_view.setProgress(percent);
    };
    KillFileIfExists(m_cEncoder.Mp3File());
    m_cEncoder.Encode(false);
    m_view.setEncodeCaption(QLatin1String(kEncodeCaption));
    KillFileIfExists(m_cEncoder.WavFile());  // temporary on this path, whatever the outcome
    QString &optX = shell::settings().Mp3QualityOpt;
    if (shell::Val(optX) != qualityRow) {
        shell::app().OptionsDirty = true;
        optX = QString::number(qualityRow);
    }
    if (vars.CancelEncoding)
        shell::MsgBoxOT(kCancelled, kMsgOk, kSaveToFile);
    else
        shell::MsgBoxOT(QStringLiteral("Saved to MP3 file : ") + vars.Mp3FileName, kMsgOk, QStringLiteral("File Saved"));
}

} // namespace audio
