#include "platform/espeak/pcm_player.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QLoggingCategory>
#include <QMediaDevices>
#include <QTimer>

Q_LOGGING_CATEGORY(lcEspeakPlayer, "sonamark.speech.audio", QtWarningMsg)

namespace platform::espeak {

namespace {
constexpr int kSinkBufferMs = 60;  // audio queued in the device: the pause and highlight lag
constexpr int kBytesPerSample = 2;
constexpr int kDrainGraceMs = 3 * kSinkBufferMs + 100;  // longest a device may hold audio
} // namespace

PcmFeed::PcmFeed()
{
    // Unbuffered: QIODevice's own read-ahead would outlive clear() and play audio of a
    // purged stream at the start of the next one.
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

void PcmFeed::append(const QByteArray &pcm)
{
    {
        QMutexLocker lock(&m_mutex);
        m_data += pcm;
    }
    emit readyRead();
}

void PcmFeed::clear()
{
    QMutexLocker lock(&m_mutex);
    m_data.clear();
    m_read = 0;
}

qint64 PcmFeed::consumed() const
{
    QMutexLocker lock(&m_mutex);
    return m_read;
}

qint64 PcmFeed::size() const
{
    QMutexLocker lock(&m_mutex);
    return m_data.size();
}

qint64 PcmFeed::bytesAvailable() const
{
    QMutexLocker lock(&m_mutex);
    return m_data.size() - m_read + QIODevice::bytesAvailable();
}

qint64 PcmFeed::readData(char *data, qint64 maxSize)
{
    QMutexLocker lock(&m_mutex);
    const qint64 n = qMin(maxSize, qint64(m_data.size()) - m_read);
    if (n <= 0)
        return 0;
    memcpy(data, m_data.constData() + m_read, size_t(n));
    m_read += n;
    return n;
}

PcmPlayer::PcmPlayer(int sampleRate, QObject *parent) : QObject(parent), m_sampleRate(sampleRate)
{
    m_format.setSampleRate(sampleRate);
    m_format.setChannelCount(1);
    m_format.setSampleFormat(QAudioFormat::Int16);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    m_silent = device.isNull() || !device.isFormatSupported(m_format);
    if (m_silent)
        qCWarning(lcEspeakPlayer) << "no audio output device: speech runs silently";
    else
        m_sink = std::make_unique<QAudioSink>(device, m_format);
}

PcmPlayer::~PcmPlayer() { stop(); }

void PcmPlayer::begin()
{
    stop();
    m_feed.clear();
    m_appended = 0;
    m_clockHeldMs = 0;
    m_paused = false;
    m_handedOver.invalidate();
}

bool PcmPlayer::drained()
{
    if (m_paused)
        return false;
    if (playedSamples() >= m_appended)
        return true;
    if (m_feed.consumed() < m_feed.size()) {
        m_handedOver.invalidate();
        return false;
    }
    if (!m_handedOver.isValid())
        m_handedOver.start();
    return m_handedOver.elapsed() >= kDrainGraceMs;
}

void PcmPlayer::append(const QByteArray &pcm)
{
    m_appended += pcm.size() / kBytesPerSample;
    m_feed.append(pcm);
    if (!m_playing)
        startSink();
}

void PcmPlayer::startSink()
{
    m_playing = true;
    m_clock.start();
    if (m_silent)
        return;
    m_sink->setBufferSize(m_sampleRate * kBytesPerSample * kSinkBufferMs / 1000);
    m_sink->start(&m_feed);
    if (m_sink->error() != QAudio::NoError) {
        qCWarning(lcEspeakPlayer) << "audio output failed to start: speech runs silently";
        m_sink.reset();
        m_silent = true;
    }
    if (m_paused && m_sink)
        m_sink->suspend();
}

void PcmPlayer::pause()
{
    if (m_paused)
        return;
    m_paused = true;
    if (m_playing)
        m_clockHeldMs += m_clock.elapsed();
    if (m_sink && m_playing)
        m_sink->suspend();
}

void PcmPlayer::resume()
{
    if (!m_paused)
        return;
    m_paused = false;
    m_clock.restart();
    if (!m_sink || !m_playing)
        return;
    // The device takes up again on the next turn of the event loop, so that a purge
    // following at once (Stop while paused) drops the held sound before any of it is heard.
    const quint64 ticket = ++m_resumeTicket;
    QTimer::singleShot(0, m_sink.get(), [this, ticket] {
        if (ticket == m_resumeTicket && !m_paused && m_playing)
            m_sink->resume();
    });
}

void PcmPlayer::stop()
{
    ++m_resumeTicket;
    if (m_sink && m_playing)
        m_sink->reset();
    m_playing = false;
}

qint64 PcmPlayer::clockSamples() const
{
    if (!m_playing)
        return 0;
    const qint64 ms = m_clockHeldMs + (m_paused ? 0 : m_clock.elapsed());
    return ms * m_sampleRate / 1000;
}

qint64 PcmPlayer::playedSamples() const
{
    qint64 played = 0;
    if (!m_playing)
        played = 0;
    else if (!m_sink)
        played = clockSamples();
    else {
        // processedUSecs counts what went to the device; what it still holds is unheard.
        const qint64 processed = m_sink->processedUSecs() * m_sampleRate / 1000000;
        const qint64 queued = (m_sink->bufferSize() - m_sink->bytesFree()) / kBytesPerSample;
        played = processed - qMax<qint64>(0, queued);
    }
    return qBound<qint64>(0, played, m_appended);
}

} // namespace platform::espeak
