#pragma once
// SpeechFileStream: the file a voice speaks into (the SpFileStream of the read-to-file
// dialog). It takes the engine's 16-bit mono PCM at the engine's rate, resamples it to the
// format's rate and writes a mono WAV file in the format's encoding.
#include "platform/speech_engine.h"

#include <QString>
#include <atomic>
#include <functional>
#include <vector>

struct sf_private_tag;
struct soxr;

namespace audio {

class SpeechFileStream : public platform::AudioOutputStream {
public:
    SpeechFileStream() = default;
    ~SpeechFileStream() override;
    SpeechFileStream(const SpeechFileStream &) = delete;
    SpeechFileStream &operator=(const SpeechFileStream &) = delete;

    // Creates (or empties) the file for the format with this SAPI constant. False, with
    // errorString(), when the format has no codec here or the file cannot be made; nothing
    // is written then.
    bool Open(const QString &fileName, int formatConstant);
    // Flushes the resampler and finishes the file's header. False when some audio could
    // not be written (a full disk): the file is then incomplete.
    bool Close();
    bool isOpen() const { return m_file != nullptr; }
    QString errorString() const { return m_error; }
    // Seconds of speech received so far, at the engine's rate.
    double receivedSeconds() const;

    bool write(const qint16 *samples, qsizetype count, int sampleRate) override;

    // Also given every block of samples at the file's rate as it is written (a 16-bit
    // format's samples exactly as the file gets them). Called on the speaking thread.
    std::function<void(const qint16 *samples, size_t count)> tap;

private:
    bool writeOut(const qint16 *samples, size_t count);
    void fail(const QString &reason);

    sf_private_tag *m_file = nullptr;
    soxr *m_resampler = nullptr;
    int m_fileRate = 0;
    std::atomic<int> m_sourceRate{0};
    std::atomic<qint64> m_received{0};
    std::vector<qint16> m_resampled;  // reused for every write
    bool m_failed = false;
    QString m_fileName;
    QString m_error;
};

// The message of a format that has no codec on this system.
QString NoCodecMessage(const QString &formatText);

} // namespace audio
