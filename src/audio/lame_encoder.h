#pragma once
// cLameEncoder: one wave file to one MP3 file through libmp3lame, driven as a stream of
// chunks whose size is the encoder's own answer. The caller sets the files and the
// quality, then calls Encode; the dialogs learn of progress through SetProgress and stay
// responsive through DoEvents, both called once per chunk; after each chunk the global
// CancelEncoding is read. Failures are silent;
// LastError() keeps the last text for callers that want to say why a file came out short.
#include <QString>
#include <QtGlobal>
#include <atomic>
#include <cstdint>
#include <functional>

struct lame_global_struct;

namespace audio {

class PcmQueue;

// The encoder's configuration record (the LAME form of BE_CONFIG).
struct BE_CONFIG {
    uint32_t dwConfig = 256;
    uint32_t dwStructVersion = 1;
    uint32_t dwStructSize = 331;
    uint32_t dwSampleRate = 44100;
    uint32_t dwReSampleRate = 0;
    int32_t nMode = 3;  // mono
    uint32_t dwBitrate = 128;
    uint32_t dwMaxBitrate = 0;
    int32_t nPreset = 0;
    uint32_t dwMpegVersion = 1;
    uint32_t dwPsyModel = 0;
    uint32_t dwEmphasis = 0;
    int32_t bPrivate = 0;
    int32_t bCRC = 0;
    int32_t bCopyright = 0;
    int32_t bOriginal = 1;
    int32_t bWriteVBRHeader = 1;
    int32_t bEnableVBR = 0;
    int32_t nVBRQuality = 0;
    uint32_t dwVbrAbr_bps = 0;
    int32_t nVbrMethod = 0;
    int32_t bNoRes = 1;
    int32_t bStrictIso = 0;
    uint16_t nQuality = 0;
    bool operator==(const BE_CONFIG &) const = default;
};

// Presets of nPreset.
inline constexpr int kPresetNormalQuality = 0;
inline constexpr int kPresetLowQuality = 1;
inline constexpr int kPresetHighQuality = 2;

class cLameEncoder {
public:
    cLameEncoder();
    ~cLameEncoder();
    cLameEncoder(const cLameEncoder &) = delete;
    cLameEncoder &operator=(const cLameEncoder &) = delete;

    QString WavFile() const { return m_wavFile; }
    void setWavFile(const QString &name);  // kept only when the file exists
    QString Mp3File() const { return m_mp3File; }
    void setMp3File(const QString &name) { m_mp3File = name; }
    int32_t EncodingPreset() const { return m_config.nPreset; }
    void setEncodingPreset(int32_t v) { m_config.nPreset = v; }
    int32_t BitRate() const { return int32_t(m_config.dwBitrate); }
    void setBitRate(int32_t v) { m_config.dwBitrate = uint32_t(v); }
    int32_t SampleRate() const { return int32_t(m_config.dwSampleRate); }
    void setSampleRate(int32_t v) { m_config.dwSampleRate = uint32_t(v); }
    int32_t OutputMode() const { return m_config.nMode; }
    void setOutputMode(int32_t v) { m_config.nMode = v; }

    // Converts WavFile to Mp3File. IsBatch says whose progress bar SetProgress moves.
    void Encode(bool IsBatch);
    // Converts the samples of queue to Mp3File while they are still coming (another
    // thread speaks into the queue): the same chunks, and so the same MP3, as Encode makes
    // of a wave file holding those samples. Progress is told only at the end; the
    // encoder stops, keeping no MP3, when the queue is aborted or CancelEncoding is set.
    void EncodeFrom(PcmQueue &queue, bool IsBatch);
    // 16-bit samples encoded so far by the running Encode or EncodeFrom (any thread).
    qint64 samplesEncoded() const { return m_samplesEncoded; }
    void Re_Initialize(int32_t sampleRate, int32_t preset, int32_t bitRate);

    const BE_CONFIG &config() const { return m_config; }
    // The chunk of the last stream, in 16-bit samples, and its output buffer size.
    uint32_t samplesPerChunk() const { return m_lastChunk; }
    QString LastError() const { return m_lastError; }

    // One call per chunk that may run pending user actions (and so set CancelEncoding).
    std::function<void()> DoEvents;
    // The progress in percent, for the batch dialog's bar or the read-to-file one.
    std::function<void(bool isBatch, int percent)> SetProgress;

private:
    // The loop of Encode and EncodeFrom: nextChunk gives one chunk of samples and the
    // fraction done (below 0: unknown), or nullptr at the end.
    void encodeChunks(bool IsBatch, const std::function<const short *(double *fraction)> &nextChunk);
    void LameInitialise();
    void LameClose();
    void errHandler(const char *source, int code, bool isLame);
    void progress(bool isBatch, int percent);

    BE_CONFIG m_config;
    lame_global_struct *m_stream = nullptr;
    uint32_t m_samples = 0;
    uint32_t m_mp3Buffer = 0;
    uint32_t m_lastChunk = 0;
    std::atomic<qint64> m_samplesEncoded{0};
    double m_readDone = 0;
    bool m_sourceCancelled = false;  // EncodeFrom's queue was aborted
    QString m_wavFile;
    QString m_mp3File;
    QString m_lastError;
};

// The MP3 quality list (InitCodingPreset) and the bit-rate list (InitBitRate).
struct Mp3Quality {
    int preset;
    int bitRateRow;
    const char *text;
};
inline constexpr int kMp3QualityCount = 4;
inline constexpr int kBitRateCount = 14;
inline constexpr int kDefaultBitRateRow = 8;   // 128 kbps
inline constexpr int kFallbackBitRate = 64;    // when no bit rate is selected
inline constexpr int kMp3SampleRate = 44100;
const Mp3Quality (&Mp3Qualities())[kMp3QualityCount];
const int (&BitRates())[kBitRateCount];
QString BitRateText(int kbps);

} // namespace audio
