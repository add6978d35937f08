#pragma once
// The espeak-ng library on a thread of its own. Jobs are synthesised one at a time into
// 16-bit mono PCM with the word marks found in them; chunks are handed to a callback on
// the synthesis thread as they come. espeak-ng keeps global state, so this is the only
// code that calls it after start-up, and one SynthThread at a time may exist.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace platform::espeak {

struct WordMark {
    qint64 sample = 0;    // offset of the word in the job's audio, in samples
    int ssmlPosition = 0; // 0-based character position in the SSML given
    int length = 0;       // characters
};

struct SynthJob {
    quint64 id = 0;
    QString ssml;
    QString voiceIdentifier;  // "" keeps the default voice
    int wordsPerMinute = 175;
    int wordGap = 0;          // extra pause after each word, in units of 10 ms
    int volume = 100;         // espeak-ng's amplitude, 100 normal
};

struct SynthChunk {
    quint64 id = 0;
    QByteArray pcm;           // little-endian 16-bit mono
    QVector<WordMark> words;
    bool last = false;        // the job is complete (or was cancelled)
};

struct VoiceInfo {
    QString name;        // display text
    QString identifier;  // what espeak_SetVoiceByName takes
};

class SynthThread {
public:
    using ChunkSink = std::function<void(SynthChunk chunk)>;
    // Initialises espeak-ng. sink is called on the synthesis thread.
    explicit SynthThread(ChunkSink sink);
    ~SynthThread();

    bool ok() const { return m_sampleRate > 0; }
    int sampleRate() const { return m_sampleRate; }
    // The installed voices, read once at start-up.
    const QVector<VoiceInfo> &voices() const { return m_voices; }

    void submit(const SynthJob &job);
    // Drops queued jobs and ends the running one at its next chunk.
    void cancelAll();
    // True while the job is being synthesised (its chunks may still come).
    bool isRunning(quint64 id) const { return id && m_runningId == id; }

private:
    void run();

    ChunkSink m_sink;
    int m_sampleRate = 0;
    QVector<VoiceInfo> m_voices;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<SynthJob> m_queue;
    std::atomic<quint64> m_cancelBelow{0};  // jobs with a lower id are abandoned
    std::atomic<quint64> m_runningId{0};    // the job being synthesised, 0 between jobs
    bool m_quit = false;
    std::thread m_thread;
};

} // namespace platform::espeak
