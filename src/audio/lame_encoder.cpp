#include "audio/lame_encoder.h"

#include "audio/mp3_writer.h"
#include "audio/pcm_queue.h"
#include "audio/read_to_file_vars.h"
#include "audio/wav_reader.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <cmath>
#include <cstdio>
#include <lame/lame.h>
#include <memory>

Q_LOGGING_CATEGORY(lcLame, "sonamark.audio.lame", QtWarningMsg)

namespace audio {

ReadToFileVars &readToFileVars()
{
    static ReadToFileVars vars;
    return vars;
}

void KillFileIfExists(const QString &name)
{
    const QFileInfo info(name);
    if (!name.isEmpty() && info.isFile() && !info.isSymLink())
        QFile::remove(name);
}

namespace {

// Answers of the stream entry points.
enum BeError : int {
    kBeSuccess = 0,
    kBeInvalidFormat = 1,
    kBeInvalidFormatParameters = 2,
    kBeNoMoreHandles = 3,
    kBeInvalidHandle = 4,
    kBeBufferTooSmall = 5,
};
constexpr uint32_t kLameConfig = 256;
constexpr int kMonoMode = 3;
constexpr double kOutputBufferPerSample = 1.25;
constexpr uint32_t kOutputBufferSlack = 7200;

int LameQuality(int preset)
{
    switch (preset) {
    case kPresetLowQuality: return 9;
    case kPresetHighQuality: return 2;
    default: return 5;
    }
}

// libmp3lame quietly bends any rate to the nearest one it has; the stream refuses instead.
constexpr uint32_t kMpegSampleRates[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
constexpr uint32_t kMpegBitRates[] = {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 192, 224, 256, 320};

template <size_t N>
bool OneOf(uint32_t value, const uint32_t (&set)[N])
{
    return std::find(std::begin(set), std::end(set), value) != std::end(set);
}

// beInitStream on libmp3lame: the chunk is one frame of each channel.
int beInitStream(const BE_CONFIG &config, uint32_t &samples, uint32_t &bufferSize, lame_global_struct *&stream)
{
    if (config.dwConfig != kLameConfig)
        return kBeInvalidFormat;
    if (!OneOf(config.dwSampleRate, kMpegSampleRates) || !OneOf(config.dwBitrate, kMpegBitRates)
        || (config.dwReSampleRate && !OneOf(config.dwReSampleRate, kMpegSampleRates)))
        return kBeInvalidFormatParameters;
    lame_global_flags *gfp = lame_init();
    if (!gfp)
        return kBeNoMoreHandles;
    const bool mono = config.nMode == kMonoMode;
    lame_set_in_samplerate(gfp, int(config.dwSampleRate));
    lame_set_out_samplerate(gfp, int(config.dwReSampleRate ? config.dwReSampleRate : config.dwSampleRate));
    lame_set_num_channels(gfp, mono ? 1 : 2);
    lame_set_mode(gfp, mono ? MONO : JOINT_STEREO);
    lame_set_brate(gfp, int(config.dwBitrate));
    lame_set_VBR(gfp, vbr_off);
    lame_set_quality(gfp, LameQuality(config.nPreset));
    lame_set_original(gfp, config.bOriginal);
    lame_set_copyright(gfp, config.bCopyright);
    lame_set_error_protection(gfp, config.bCRC);
    lame_set_extension(gfp, config.bPrivate);
    lame_set_strict_ISO(gfp, config.bStrictIso);
    lame_set_disable_reservoir(gfp, config.bNoRes);
    lame_set_bWriteVbrTag(gfp, config.bWriteVBRHeader);
    lame_set_write_id3tag_automatic(gfp, 0);
    if (lame_init_params(gfp) < 0) {
        lame_close(gfp);
        return kBeInvalidFormatParameters;
    }
    const int channels = lame_get_num_channels(gfp);
    samples = uint32_t(lame_get_framesize(gfp) * channels);
    bufferSize = uint32_t(kOutputBufferPerSample * (samples / channels)) + kOutputBufferSlack;
    stream = gfp;
    return kBeSuccess;
}

int beEncodeChunk(lame_global_struct *stream, uint32_t samples, const short *input, unsigned char *output,
                  uint32_t outputSize, uint32_t &produced)
{
    produced = 0;
    if (!stream)
        return kBeInvalidHandle;
    int made;
    if (lame_get_num_channels(stream) == 1)
        made = lame_encode_buffer(stream, input, nullptr, int(samples), output, int(outputSize));
    else
        made = lame_encode_buffer_interleaved(stream, const_cast<short *>(input), int(samples / 2), output, int(outputSize));
    if (made < 0)
        return made == -1 ? kBeBufferTooSmall : kBeInvalidFormatParameters;
    produced = uint32_t(made);
    return kBeSuccess;
}

int beDeinitStream(lame_global_struct *stream, unsigned char *output, uint32_t outputSize, uint32_t &produced)
{
    produced = 0;
    if (!stream)
        return kBeInvalidHandle;
    const int made = lame_encode_flush(stream, output, int(outputSize));
    if (made < 0)
        return kBeBufferTooSmall;
    produced = uint32_t(made);
    return kBeSuccess;
}

int beCloseStream(lame_global_struct *stream)
{
    if (!stream)
        return kBeInvalidHandle;
    lame_close(stream);
    return kBeSuccess;
}

// The information frame that opens the stream, filled in now that the frames are known.
void WriteInfoFrame(lame_global_struct *stream, const QString &mp3File)
{
    unsigned char frame[2880];
    const size_t size = lame_get_lametag_frame(stream, frame, sizeof frame);
    if (size == 0 || size > sizeof frame)
        return;
    std::FILE *f = std::fopen(QFile::encodeName(mp3File).constData(), "r+b");
    if (!f)
        return;
    std::fwrite(frame, 1, size, f);
    std::fclose(f);
}

} // namespace

const Mp3Quality (&Mp3Qualities())[kMp3QualityCount]
{
    static const Mp3Quality table[kMp3QualityCount] = {
        {kPresetLowQuality, 0, "Low Quality (CBR 44kHz, 32kbps)"},
        {kPresetLowQuality, 4, "Standard Quality (CBR 44kHz, 64kbps)"},
        {kPresetNormalQuality, 6, "High Quality (CBR 44kHz, 96kbps)"},
        {kPresetHighQuality, 8, "Very High Quality (CBR 44kHz, 128kbps)"},
    };
    return table;
}

const int (&BitRates())[kBitRateCount]
{
    static const int rates[kBitRateCount] = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    return rates;
}

QString BitRateText(int kbps) { return QString::number(kbps) + QStringLiteral(" kbps"); }

cLameEncoder::cLameEncoder() = default;

cLameEncoder::~cLameEncoder() { LameClose(); }

void cLameEncoder::setWavFile(const QString &name)
{
    if (!name.isEmpty() && QFileInfo::exists(name))
        m_wavFile = name;
}

void cLameEncoder::Re_Initialize(int32_t sampleRate, int32_t preset, int32_t bitRate)
{
    m_config = BE_CONFIG();
    m_config.dwSampleRate = uint32_t(sampleRate);
    m_config.nPreset = preset;
    m_config.dwBitrate = uint32_t(bitRate);
}

void cLameEncoder::LameInitialise()
{
    LameClose();
    const int code = beInitStream(m_config, m_samples, m_mp3Buffer, m_stream);
    m_lastChunk = m_samples;
    if (code != kBeSuccess) {
        m_stream = nullptr;
        m_samples = 0;
        m_mp3Buffer = 0;
    }
    errHandler("lameInit", code, true);
}

void cLameEncoder::LameClose()
{
    if (!m_stream)
        return;
    const int code = beCloseStream(m_stream);
    m_stream = nullptr;
    m_samples = 0;
    m_mp3Buffer = 0;
    errHandler("lameClose", code, true);
}

void cLameEncoder::Encode(bool IsBatch)
{
    // createWavReader: one full read holds exactly one chunk of 16-bit samples. It is made once the encoder has given the chunk size.
    std::unique_ptr<cWavReader> reader;
    encodeChunks(IsBatch, [&](double *fraction) -> const short * {
        if (!reader) {
            reader = std::make_unique<cWavReader>();
            reader->setReadBufferSize(int32_t(m_samples / 2));
            reader->setFilename(m_wavFile);
        }
        if (!reader->Read())
            return nullptr;
        m_readDone += double(reader->ReadBufferSize()) * 2;
        const double total = double(reader->AudioLength()) * 2;
        *fraction = total > 0 ? m_readDone / total : -1;
        return reinterpret_cast<const short *>(reader->ReadBufferPtr());
    });
}

void cLameEncoder::EncodeFrom(PcmQueue &queue, bool IsBatch)
{
    // However the encoder ends, a speaker still waiting for room goes on.
    const auto release = qScopeGuard([&queue] { queue.abort(); });
    std::vector<qint16> chunk;
    encodeChunks(IsBatch, [&](double *fraction) -> const short * {
        chunk.resize(m_samples);
        if (!queue.take(chunk.data(), chunk.size())) {
            m_sourceCancelled = queue.aborted();  // no MP3 of a speaking that failed
            return nullptr;
        }
        *fraction = -1;  // the whole length is not known while it is still spoken
        return chunk.data();
    });
}

void cLameEncoder::encodeChunks(bool IsBatch, const std::function<const short *(double *fraction)> &nextChunk)
{
    m_lastError.clear();
    m_samplesEncoded = 0;
    m_readDone = 0;
    LameInitialise();
    if (!m_stream) {
        errHandler("lameConvert", 1, false);
        return;
    }
    // createMp3Writer
    auto writer = std::make_unique<cMp3Writer>();
    writer->setBufferSize(int32_t(m_mp3Buffer));
    writer->setFilename(m_mp3File);

    bool cancelled = false;
    m_sourceCancelled = false;
    double fraction = -1;
    // A source that has no whole chunk left ends the stream: the rest is not encoded.
    for (const short *samples; !cancelled && (samples = nextChunk(&fraction));) {
        uint32_t produced = 0;
        const int code = beEncodeChunk(m_stream, m_samples, samples, writer->BufferPointer(),
                                       uint32_t(writer->BufferSize()), produced);
        errHandler("lameConvert", code, true);
        writer->WriteBufferToFile(int32_t(produced));
        m_samplesEncoded += m_samples;
        cancelled = readToFileVars().CancelEncoding;
        if (DoEvents)
            DoEvents();
        if (cancelled)
            progress(IsBatch, 100);
        else if (fraction >= 0)
            progress(IsBatch, int(std::nearbyint(fraction * 50 + 50)));  // halves to even
    }
    if (m_sourceCancelled) {
        cancelled = true;
        progress(IsBatch, 100);
    }
    if (!cancelled) {
        uint32_t produced = 0;
        const int code = beDeinitStream(m_stream, writer->BufferPointer(), uint32_t(writer->BufferSize()), produced);
        errHandler("lameConvert", code, true);
        writer->WriteBufferToFile(int32_t(produced));
        progress(IsBatch, 100);
        writer->CloseFile();
        if (!writer->LastErrorCode())
            WriteInfoFrame(m_stream, writer->Filename());
    } else {
        writer->CloseFile();
        KillFileIfExists(writer->Filename());  // the partial MP3 is not kept
    }
    if (writer->LastErrorCode())
        m_lastError = writer->LastError();
    writer.reset();
    LameClose();
}

void cLameEncoder::errHandler(const char *source, int code, bool isLame)
{
    QString text;
    if (isLame) {
        switch (code) {
        case kBeSuccess: return;
        case kBeInvalidFormat: text = QStringLiteral("Invalid Format"); break;
        case kBeInvalidFormatParameters: text = QStringLiteral("Invalid Format Parameters"); break;
        case kBeNoMoreHandles: text = QStringLiteral("Out of LAME handles"); break;
        case kBeInvalidHandle: text = QStringLiteral("LAME handle is invalid"); break;
        case kBeBufferTooSmall: text = QStringLiteral("Buffer is too small"); break;
        default: break;
        }
    } else if (code == 1) {
        text = QStringLiteral("Lame engine not initialised");
    }
    if (!text.isEmpty()) {
        qCDebug(lcLame) << source << text;
        m_lastError = text;
    }
}

void cLameEncoder::progress(bool isBatch, int percent)
{
    if (SetProgress)
        SetProgress(isBatch, percent);
}

} // namespace audio
