#pragma once
// SpeechEngine on espeak-ng: synthesis on its own thread, playback through PcmPlayer,
// word events raised when playback reaches the word, everything reported on the thread
// that created the engine (the GUI thread).
#include "platform/espeak/espeak_synth.h"
#include "platform/espeak/pcm_player.h"
#include "platform/espeak/sapi_markup.h"
#include "platform/speech_engine.h"

#include <QObject>
#include <QTimer>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace platform::espeak {

class EspeakEngine : public QObject, public SpeechEngine {
    Q_OBJECT
public:
    explicit EspeakEngine(QObject *parent = nullptr);
    ~EspeakEngine() override;

    // False when espeak-ng could not start; the engine then speaks nothing.
    bool ok() const { return m_synth && m_synth->ok(); }
    // True when no audio device was found and output is a silent clock.
    bool silent() const { return m_player && m_player->silent(); }
    // Bytes of the current stream taken by the audio device (0 on the silent clock).
    qint64 bytesHandedToDevice() const { return m_player ? m_player->handedOverBytes() : 0; }

    QStringList voices() override;
    void setVoice(int index) override;
    int volume() const override { return m_volume; }
    void setVolume(int volume) override;
    int rate() const override { return m_rate; }
    void setRate(int rate) override;
    void speak(const QString &text, int flags) override;
    void pause() override;
    void resume() override;
    SpeechStatus status() const override;
    void setAudioOutputStream(AudioOutputStream *stream) override;
    bool waitUntilDone(int milliseconds) override;

    // Speaking speed for a rate of -10 .. 10: words per minute, and below espeak-ng's
    // slowest speed a pause after each word that makes up the difference.
    struct Pace {
        int wordsPerMinute = 175;
        int wordGap = 0;  // 10 ms units
    };
    static Pace SpeakingPace(int rate);

private:
    struct PendingWord {
        qint64 sample;
        int position;
        int length;
    };
    void takeChunk(const SynthChunk &chunk);
    void tick();
    void purge();
    void endStream();
    void purgeStreamJob();

    // The stream that synthesis goes to, shared with the synthesis thread, which writes to
    // it directly.
    struct StreamTarget {
        std::mutex mutex;
        std::condition_variable finished;
        AudioOutputStream *stream = nullptr;
        SynthThread *synth = nullptr;
        quint64 jobId = 0;   // the job written to the stream, 0 when none
        bool done = true;    // its last chunk has come
        bool failed = false; // the stream refused samples
    };
    static bool WriteToStream(StreamTarget &target, const SynthChunk &chunk);
    std::shared_ptr<StreamTarget> m_target = std::make_shared<StreamTarget>();

    std::unique_ptr<SynthThread> m_synth;
    std::unique_ptr<PcmPlayer> m_player;
    QTimer m_tick;
    int m_voice = 0;
    int m_volume = 100;
    int m_rate = 0;
    quint64 m_nextId = 1;
    quint64 m_currentId = 0;  // 0: no stream
    bool m_paused = false;
    bool m_synthDone = false;
    SsmlText m_markup;
    QList<PendingWord> m_words;  // in order of sample
    int m_wordPosition = 0;
};

} // namespace platform::espeak
