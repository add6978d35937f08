#pragma once
// Plays 16-bit mono PCM as it arrives, through QAudioSink on the default output, with
// pause and resume and a play position. With no output device it keeps a silent clock
// at the same pace, so the position still advances.
#include <QAudioFormat>
#include <QByteArray>
#include <QElapsedTimer>
#include <QIODevice>
#include <QMutex>
#include <QObject>
#include <memory>

class QAudioSink;

namespace platform::espeak {

// The growing buffer the sink pulls from. It is open for reading from construction.
class PcmFeed : public QIODevice {
public:
    PcmFeed();
    void append(const QByteArray &pcm);
    void clear();
    qint64 consumed() const;
    qint64 size() const override;
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;
protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *, qint64) override { return -1; }
private:
    mutable QMutex m_mutex;
    QByteArray m_data;
    qint64 m_read = 0;
};

class PcmPlayer : public QObject {
    Q_OBJECT
public:
    explicit PcmPlayer(int sampleRate, QObject *parent = nullptr);
    ~PcmPlayer() override;

    // True when no audio device is available and the silent clock stands in.
    bool silent() const { return m_silent; }
    // Starts a new stream (dropping the previous one).
    void begin();
    void append(const QByteArray &pcm);
    void pause();
    void resume();
    void stop();
    // Samples of the stream heard so far (never more than were appended).
    qint64 playedSamples() const;
    qint64 appendedSamples() const { return m_appended; }
    // Bytes of the stream the audio device has taken from us so far.
    qint64 handedOverBytes() const { return m_feed.consumed(); }
    // Everything appended has been heard (or, on a device that does not say, handed over
    // long enough ago to have been).
    bool drained();

private:
    void startSink();
    qint64 clockSamples() const;

    int m_sampleRate;
    QAudioFormat m_format;
    std::unique_ptr<QAudioSink> m_sink;
    quint64 m_resumeTicket = 0;  // a deferred resume counts only if nothing came after it
    PcmFeed m_feed;
    bool m_silent = false;
    bool m_playing = false;
    bool m_paused = false;
    qint64 m_appended = 0;
    QElapsedTimer m_clock;
    qint64 m_clockHeldMs = 0;  // time played before the last pause
    QElapsedTimer m_handedOver; // since the device took the last byte
};

} // namespace platform::espeak
