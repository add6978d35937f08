#include "audio/batch_conversion.h"

#include "audio/read_to_file.h"
#include "audio/read_to_file_dialog.h"
#include "audio/read_to_file_vars.h"
#include "platform/services.h"
#include "platform/speech_engine.h"
#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/rtf_reader.h"
#include "reader/speech.h"
#include "search/find_files.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cmath>

namespace audio {

namespace {

constexpr int kMsgOk = 0;
constexpr int kMinDocumentNameLength = 5;
constexpr int kDefaultQualityOpt = 1;
constexpr int kProgressAfterSpeech = 50;
constexpr int kHelperPollMs = 50;
const QString kCancelled = QStringLiteral("Read To File cancelled by user.");

} // namespace

bool FileFormatIsOk(const QString &name)
{
    if (name.size() < kMinDocumentNameLength)
        return false;
    const QString ending = name.right(4).toLower();
    return ending == QLatin1String(".doc") || ending == QLatin1String(".txt") || ending == QLatin1String(".rtf")
        || ending == QLatin1String(".xml");
}

QString BatchMp3Name(const QString &document) { return document.chopped(3) + QStringLiteral("MP3"); }

QString BatchWavName(const QString &mp3Name)
{
    const qsizetype slash = mp3Name.lastIndexOf(QLatin1Char('/'));
    return shell::app().AppFolder + mp3Name.mid(slash + 1).chopped(4) + QStringLiteral(".wav");
}

QString SelectionCaption(int count)
{
    if (count <= 0)
        return QStringLiteral("Sonamark - No files selected");
    if (count == 1)
        return QStringLiteral("Sonamark - 1 file selected");
    return QStringLiteral("Sonamark - ") + QString::number(count) + QStringLiteral(" files selected");
}

QString BatchReport(int converted)
{
    if (converted == 0)
        return QStringLiteral("No files were converted.");
    if (converted == 1)
        return QStringLiteral("There was 1 file converted.");
    return QStringLiteral("There were ") + QString::number(converted) + QStringLiteral(" files converted.");
}

QString BatchCancelReport(int converted)
{
    if (converted == 0)
        return QStringLiteral("Read To Files cancelled by user.");
    if (converted == 1)
        return QStringLiteral("Read To Files cancelled by user. There was 1 file converted.");
    return QStringLiteral("Read To Files cancelled by user. There were ") + QString::number(converted)
         + QStringLiteral(" files converted.");
}

QString SkipReason(BatchSkip skip)
{
    switch (skip) {
    case BatchSkip::NotADocument: return QStringLiteral("not a .txt, .rtf, .xml or .doc document");
    case BatchSkip::Missing: return QStringLiteral("no such file");
    case BatchSkip::NoWordReader: return QStringLiteral("antiword is not installed to read .doc files");
    case BatchSkip::Unreadable: return QStringLiteral("cannot be read");
    case BatchSkip::Empty: return QStringLiteral("no text to read");
    case BatchSkip::None: break;
    }
    return {};
}

BatchSkip ReadBatchDocument(const QString &name, QString *text)
{
    if (!FileFormatIsOk(name))
        return BatchSkip::NotADocument;
    if (!shell::FileExists(name))
        return BatchSkip::Missing;
    const QString kind = name.right(3).toLower();
    QString read;
    if (kind == QLatin1String("doc")) {
        platform::WordFiles *word = platform::services().wordFiles;
        if (!word || !word->installed())
            return BatchSkip::NoWordReader;
        QString error;
        if (!word->readText(name, &read, &error))
            return BatchSkip::Unreadable;
    } else {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            return BatchSkip::Unreadable;
        const QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError || reader::LooksBinary(bytes))
            return BatchSkip::Unreadable;
        if (kind == QLatin1String("rtf")) {
            QString error;
            const reader::RichDocument document = reader::ReadRtf(bytes, &error);
            if (!reader::LooksLikeRtf(bytes))
                return BatchSkip::Unreadable;
            read = document.plainText();
        } else {
            read = reader::PlainTextOfFile(bytes);
        }
    }
    if (read.trimmed().isEmpty())
        return BatchSkip::Empty;
    *text = read;
    return BatchSkip::None;
}

BatchOutcome ConvertOneFile(platform::SpeechEngine &engine, cLameEncoder &encoder, const BatchFileRun &run,
                            QString *error)
{
    ReadToFileVars &vars = readToFileVars();
    SpeakToFileRun speech;
    speech.text = run.pitch != QLatin1String("0") && !run.text.toLower().contains(QLatin1String("<xml version"))
                    ? reader::PitchWrapped(run.text, run.pitch)
                    : run.text;
    speech.wavName = run.wavName;
    speech.formatConstant = kBatchSpeechFormat;
    speech.voice = run.voice;
    speech.rate = run.rate;
    speech.volume = run.volume;
    speech.DoEvents = run.DoEvents;
    speech.cancelled = run.speechCancelled;
    speech.progress = run.progress;
    switch (SpeakToFile(engine, speech, error)) {
    case SpeakOutcome::Cancelled: return BatchOutcome::SpeechCancelled;
    case SpeakOutcome::Failed: return BatchOutcome::SpeechFailed;
    case SpeakOutcome::Done: break;
    }
    if (run.spoken)
        run.spoken();
    if (run.progress)
        run.progress(kProgressAfterSpeech);
    encoder.setWavFile(run.wavName);
    encoder.setMp3File(run.mp3Name);
    encoder.Re_Initialize(kMp3SampleRate, run.preset, run.bitRate);
    encoder.DoEvents = run.DoEvents;
    encoder.SetProgress = [&run](bool, int percent) {
        if (run.progress)
            run.progress(percent);
    };
    KillFileIfExists(encoder.Mp3File());
    encoder.Encode(true);
    KillFileIfExists(run.wavName);
    if (vars.CancelEncoding)
        return BatchOutcome::EncodingCancelled;
    if (!encoder.LastError().isEmpty()) {
        if (error)
            *error = encoder.LastError();
        return BatchOutcome::EncodingFailed;
    }
    return BatchOutcome::Converted;
}

BatchConversion::BatchConversion(BatchView &view) : m_view(view) {}

void BatchConversion::Form_Load()
{
    ++shell::app().ChildFormDepth;
    readToFileVars().ReadToFileBusy = false;
    DisplayMP3Options();
    showSelection();
    QString &optX = shell::settings().Mp3QualityOpt;
    const double value = shell::Val(optX);
    if (value < 0 || value > kMp3QualityCount - 1) {
        optX = QString::number(kDefaultQualityOpt);
        shell::app().OptionsDirty = true;
    }
    m_view.setQualityIndex(int(std::lround(shell::Val(optX))));
}

void BatchConversion::Form_Unload()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void BatchConversion::DisplayMP3Options()
{
    m_fillingOptions = true;
    QStringList rows;
    for (const Mp3Quality &q : Mp3Qualities())
        rows << QString::fromLatin1(q.text);
    m_view.fillQualities(rows);
    rows.clear();
    for (int kbps : BitRates())
        rows << BitRateText(kbps);
    m_view.fillBitRates(rows);
    m_view.setBitRateIndex(kDefaultBitRateRow);
    m_fillingOptions = false;
}

void BatchConversion::showSelection()
{
    const search::FindFilesState &files = search::findFilesState();
    const int count = qMax(0, files.SelectedCount);
    QStringList rows;
    for (int i = 0; i < count && i < files.SelectedFiles.size(); ++i)
        rows << shell::CondensedPath(files.SelectedFiles.at(i), kCondensedNameWidth);
    m_view.fillFiles(rows);
    m_view.setCaption(SelectionCaption(count));
}

void BatchConversion::cboOption_Click()
{
    if (m_fillingOptions)
        return;
    const int row = m_view.qualityIndex();
    if (row >= 0 && row < kMp3QualityCount)
        m_view.setBitRateIndex(Mp3Qualities()[row].bitRateRow);
}

void BatchConversion::cmdFile_Click()
{
    search::FindFilesState &files = search::findFilesState();
    files.SelectedCount = -1;
    files.LastFolder = QDir::currentPath() + QLatin1Char('/');
    m_view.showFileFinder();
    showSelection();
}

void BatchConversion::cmdCancel_Click()
{
    if (m_view.encodeCaption() != QLatin1String(kCancelCaption))
        m_view.unload();
}

void BatchConversion::storeQuality()
{
    QString &optX = shell::settings().Mp3QualityOpt;
    const int row = m_view.qualityIndex();
    if (shell::Val(optX) != row) {
        shell::app().OptionsDirty = true;
        optX = QString::number(row);
    }
}

void BatchConversion::finish(const QString &report)
{
    m_view.setEncodeCaption(QLatin1String(kBatchEncodeCaption));
    storeQuality();
    shell::MsgBoxOT(report, kMsgOk, QLatin1String(kBatchReportTitle));
}

BatchFileRun BatchConversion::fileRun(const QString &mp3Name, const QString &text)
{
    BatchFileRun run;
    run.text = text;
    run.wavName = BatchWavName(mp3Name);
    run.mp3Name = mp3Name;
    run.pitch = shell::settings().PitchOpt;
    const int voiceRow = m_view.voiceRow();
    run.voice = voiceRow >= 0 && voiceRow < reader::kMaxVoices ? reader::speechVars().VoiceIndex[voiceRow] : -1;
    if (m_view.qualityIndex() < 0)
        m_view.setQualityIndex(kDefaultQualityOpt);
    const int bitRateRow = m_view.bitRateIndex();
    run.bitRate = bitRateRow >= 0 && bitRateRow < kBitRateCount ? BitRates()[bitRateRow] : kFallbackBitRate;
    run.preset = Mp3Qualities()[m_view.qualityIndex()].preset;
    run.DoEvents = [this] { m_view.doEvents(); };
    run.speechCancelled = [this] { return cancelled(); };
    run.progress = [this](int percent) { m_view.setProgress(percent); };
    return run;
}

bool BatchConversion::cancelled() const { return m_view.encodeCaption() != QLatin1String(kCancelCaption); }

// A document's text as it is spoken: read, and changed by the exceptions when they are on.
static BatchSkip SpokenText(const QString &name, QString *text)
{
    const BatchSkip skip = ReadBatchDocument(name, text);
    if (skip == BatchSkip::None && reader::exceptionsState().ExceptionsOn)
        reader::MakeExceptions(*text);
    return skip;
}

int BatchConversion::startHelper(platform::BatchHelper &helper, const QStringList &selected, int first)
{
    for (int i = first; i <= selected.size(); ++i) {
        const QString &name = selected.at(i - 1);
        QString text;
        if (SpokenText(name, &text) != BatchSkip::None)
            continue;
        const BatchFileRun run = fileRun(BatchMp3Name(name), text);
        platform::BatchHelperJob job;
        job.document = name;
        job.text = text;
        job.pitch = run.pitch;
        job.voice = run.voice;
        job.qualityRow = m_view.qualityIndex();
        job.bitRate = run.bitRate;
        return helper.start(job) ? i : 0;
    }
    return 0;
}

std::optional<BatchOutcome> BatchConversion::helperOutcome(platform::BatchHelper &helper)
{
    using State = platform::BatchHelper::State;
    for (;;) {
        const State state = helper.state();
        m_view.setProgress(helper.percent());
        if (state == State::Converted)
            return BatchOutcome::Converted;
        if (state == State::Failed || state == State::Idle)
            return std::nullopt;  // read it here instead
        m_view.doEvents();
        if (cancelled() || readToFileVars().CancelEncoding) {
            helper.cancel();
            return state == State::Speaking ? BatchOutcome::SpeechCancelled : BatchOutcome::EncodingCancelled;
        }
        helper.wait(kHelperPollMs);
    }
}

void BatchConversion::cmdEncode_Click()
{
    ReadToFileVars &vars = readToFileVars();
    if (m_view.encodeCaption() == QLatin1String(kCancelCaption)) {
        vars.CancelEncoding = true;
        m_view.setEncodeCaption(QLatin1String(kBatchEncodeCaption));
        return;
    }
    if (vars.ReadToFileBusy)
        return;
    const search::FindFilesState &files = search::findFilesState();
    const int count = qMin(qMax(0, files.SelectedCount), int(files.SelectedFiles.size()));
    if (count == 0) {
        shell::MsgBoxOT(QStringLiteral("No text files have been selected."), kMsgOk, QStringLiteral("No Files"));
        return;
    }
    // The list may change under a nested event (the finder is modal, but be safe): work
    // on a copy.
    const QStringList selected = files.SelectedFiles.mid(0, count);
    platform::SpeechEngine *engine = platform::services().speech;
    if (!engine) {
        shell::MsgBoxOT(QStringLiteral("The speech engine is not available."), kMsgOk, QStringLiteral("Save To File"));
        return;
    }
    // A helper process reads the next document while this one is read here; the window
    // still reports the documents one after the other.
    platform::BatchHelper *helper = platform::services().batchHelper;
    int helped = 0;  // the document the helper has, 0 for none
    const auto stopHelper = [&] {
        if (helper && helped)
            helper->cancel();
        helped = 0;
    };
    int converted = 0;
    m_view.setProgress(0);
    vars.CancelEncoding = false;
    m_view.setEncodeCaption(QLatin1String(kCancelCaption));
    for (int i = 1; i <= count; ++i) {
        const QString &name = selected.at(i - 1);
        std::optional<BatchOutcome> outcome;
        QString text;
        const bool withHelper = i == helped;
        if (!withHelper && SpokenText(name, &text) != BatchSkip::None)
            continue;
        m_view.setCaption(QStringLiteral("Sonamark - Converting ") + QString::number(i) + QStringLiteral(" of ")
                          + QString::number(count));
        vars.Mp3FileName = BatchMp3Name(name);
        vars.WavFileName = BatchWavName(vars.Mp3FileName);
        m_view.setFilesText(shell::CondensedPath(vars.Mp3FileName, kCondensedNameWidth));
        vars.MakeMp3 = true;
        reader::speechVars().HighlightOn = false;
        m_view.setProgress(0);
        if (withHelper) {
            helped = 0;
            outcome = helperOutcome(*helper);
            if (!outcome && SpokenText(name, &text) != BatchSkip::None)
                continue;
        }
        if (!outcome) {
            const BatchFileRun run = fileRun(vars.Mp3FileName, text);
            if (helper && !helped)
                helped = startHelper(*helper, selected, i + 1);
            QString error;
            outcome = ConvertOneFile(*engine, m_cEncoder, run, &error);
        }
        switch (*outcome) {
        case BatchOutcome::SpeechCancelled:
            stopHelper();
            m_view.setProgress(0);
            m_view.setEncodeCaption(QLatin1String(kBatchEncodeCaption));
            shell::MsgBoxOT(kCancelled, kMsgOk, QStringLiteral("Save To File"));
            return;
        case BatchOutcome::EncodingCancelled:
            stopHelper();
            finish(BatchCancelReport(converted));
            return;
        case BatchOutcome::SpeechFailed:
            break;  // nothing was spoken: like an unreadable file, not counted
        case BatchOutcome::EncodingFailed:  // the encoder's failures are silent
        case BatchOutcome::Converted:
            ++converted;
            break;
        }
    }
    finish(BatchReport(converted));
}

} // namespace audio
