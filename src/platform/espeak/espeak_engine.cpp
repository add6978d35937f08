#include "platform/espeak/espeak_engine.h"

#include <QLoggingCategory>
#include <QMetaObject>
#include <QPointer>
#include <algorithm>
#include <cmath>

Q_LOGGING_CATEGORY(lcEspeakEngine, "sonamark.speech.engine", QtWarningMsg)

namespace platform::espeak {

namespace {
constexpr int kTickMs = 10;               // how often playback is followed
constexpr int kNormalWordsPerMinute = 175;
constexpr double kRateFactorAtTen = 3.0;  // rate 10: three times normal, -10: a third
constexpr int kMinWordsPerMinute = 80;    // espeak-ng's slowest
// Measured on espeak-ng's English voices: at its slowest a text takes about twice as long
// as at normal speed, and a word-gap unit at that speed lengthens each word by about
// 1/8.6 of a normal word.
constexpr double kSlowestLength = 2.0;
constexpr double kGapUnitsPerNormalWord = 8.6;
constexpr int kMaxWordsPerMinute = 600;
constexpr int kStreamStopPollMs = 5;  // while a purged stream job comes to its end
} // namespace

EspeakEngine::EspeakEngine(QObject *parent) : QObject(parent)
{
    QPointer<EspeakEngine> self(this);
    m_synth = std::make_unique<SynthThread>([self, target = m_target](SynthChunk chunk) {
        if (WriteToStream(*target, chunk))
            return;
        QMetaObject::invokeMethod(self.data(), [self, chunk = std::move(chunk)] {
            if (self)
                self->takeChunk(chunk);
        }, Qt::QueuedConnection);
    });
    m_target->synth = m_synth.get();
    m_player = std::make_unique<PcmPlayer>(m_synth->ok() ? m_synth->sampleRate() : 22050);
    m_tick.setInterval(kTickMs);
    connect(&m_tick, &QTimer::timeout, this, &EspeakEngine::tick);
}

// On the synthesis thread: hands a chunk of the stream's job to the stream. False when
// the chunk belongs to a spoken job.
bool EspeakEngine::WriteToStream(StreamTarget &target, const SynthChunk &chunk)
{
    AudioOutputStream *stream = nullptr;
    {
        std::lock_guard lock(target.mutex);
        if (!target.jobId || chunk.id != target.jobId)
            return false;
        if (!target.failed)
            stream = target.stream;
    }
    if (stream && !chunk.pcm.isEmpty()
        && !stream->write(reinterpret_cast<const qint16 *>(chunk.pcm.constData()), chunk.pcm.size() / 2,
                          target.synth->sampleRate())) {
        std::lock_guard lock(target.mutex);
        target.failed = true;
        target.synth->cancelAll();
    }
    if (chunk.last) {
        std::lock_guard lock(target.mutex);
        target.done = true;
        target.finished.notify_all();
    }
    return true;
}

EspeakEngine::~EspeakEngine()
{
    m_tick.stop();
    m_synth.reset();  // joins the thread: no chunk is posted after this
}

EspeakEngine::Pace EspeakEngine::SpeakingPace(int rate)
{
    const double factor = std::pow(kRateFactorAtTen, qBound(-10, rate, 10) / 10.0);
    const double wanted = kNormalWordsPerMinute * factor;
    Pace pace;
    pace.wordsPerMinute = qBound(kMinWordsPerMinute, int(std::lround(wanted)), kMaxWordsPerMinute);
    if (wanted < kMinWordsPerMinute) {
        // How much longer than normal a word should take, less what the slowest speed gives.
        const double extra = kNormalWordsPerMinute / wanted - kSlowestLength;
        pace.wordGap = std::max(0, int(std::lround(extra * kGapUnitsPerNormalWord)));
    }
    return pace;
}

QStringList EspeakEngine::voices()
{
    QStringList names;
    for (const VoiceInfo &v : m_synth->voices())
        names << v.name;
    return names;
}

void EspeakEngine::setVoice(int index)
{
    if (index < 0 || index >= m_synth->voices().size())
        throw std::out_of_range("no such voice");
    m_voice = index;
}

void EspeakEngine::setVolume(int volume) { m_volume = qBound(0, volume, 100); }

void EspeakEngine::setRate(int rate) { m_rate = qBound(-10, rate, 10); }

void EspeakEngine::speak(const QString &text, int flags)
{
    if ((flags & kSpeakPurgeBeforeSpeak) || m_currentId)
        purge();
    purgeStreamJob();
    if (text.isEmpty())
        return;
    if (!ok())
        throw std::runtime_error("speech engine not available");
    AudioOutputStream *stream = nullptr;
    {
        std::lock_guard lock(m_target->mutex);
        stream = m_target->stream;
    }
    m_markup = SapiToSsml(text);
    SynthJob job;
    job.id = m_nextId++;
    job.ssml = m_markup.ssml;
    if (m_voice < m_synth->voices().size())
        job.voiceIdentifier = m_synth->voices().at(m_voice).identifier;
    const Pace pace = SpeakingPace(m_rate);
    job.wordsPerMinute = pace.wordsPerMinute;
    job.wordGap = pace.wordGap;
    job.volume = m_volume;
    if (stream) {
        {
            std::lock_guard lock(m_target->mutex);
            m_target->jobId = job.id;
            m_target->done = false;
            m_target->failed = false;
        }
        m_synth->submit(job);
        return;
    }
    m_currentId = job.id;
    m_synthDone = false;
    m_paused = false;
    m_wordPosition = 0;
    m_words.clear();
    m_player->begin();
    m_synth->submit(job);
    m_tick.start();
    const quint64 id = m_currentId;
    QMetaObject::invokeMethod(this, [this, id] {
        if (m_currentId == id && onStartStream)
            onStartStream();
    }, Qt::QueuedConnection);
}

void EspeakEngine::purge()
{
    if (!m_currentId)
        return;
    m_synth->cancelAll();
    m_player->stop();
    m_words.clear();
    m_paused = false;
    endStream();
}

void EspeakEngine::purgeStreamJob()
{
    quint64 id;
    {
        std::lock_guard lock(m_target->mutex);
        id = m_target->jobId;
    }
    if (!id)
        return;
    m_synth->cancelAll();
    // A job dropped from the queue never reports its end; a running one ends at its next
    // chunk. Either way the stream is not written to once this returns.
    std::unique_lock lock(m_target->mutex);
    while (!m_target->done && m_synth->isRunning(id))
        m_target->finished.wait_for(lock, std::chrono::milliseconds(kStreamStopPollMs));
    m_target->jobId = 0;
    m_target->done = true;
}

void EspeakEngine::setAudioOutputStream(AudioOutputStream *stream)
{
    purgeStreamJob();
    std::lock_guard lock(m_target->mutex);
    m_target->stream = stream;
}

bool EspeakEngine::waitUntilDone(int milliseconds)
{
    {
        std::unique_lock lock(m_target->mutex);
        if (m_target->jobId) {
            if (!m_target->finished.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                             [this] { return m_target->done; }))
                return false;
            m_target->jobId = 0;
            return true;
        }
    }
    return !m_currentId;
}

void EspeakEngine::endStream()
{
    m_currentId = 0;
    m_tick.stop();
    QMetaObject::invokeMethod(this, [this] {
        if (onEndStream)
            onEndStream();
    }, Qt::QueuedConnection);
}

void EspeakEngine::pause()
{
    if (!m_currentId || m_paused)
        return;
    m_paused = true;
    m_player->pause();
}

void EspeakEngine::resume()
{
    if (!m_paused)
        return;
    m_paused = false;
    m_player->resume();
}

SpeechStatus EspeakEngine::status() const
{
    SpeechStatus s;
    bool streaming;
    {
        std::lock_guard lock(m_target->mutex);
        streaming = m_target->jobId && !m_target->done;
    }
    s.RunningState = streaming ? kRunningSpeaking : !m_currentId ? kRunningDone : m_paused ? kRunningPaused : kRunningSpeaking;
    s.InputWordPosition = m_wordPosition;
    s.NoAudioOutput = silent();
    return s;
}

void EspeakEngine::takeChunk(const SynthChunk &chunk)
{
    if (chunk.id != m_currentId)
        return;  // from a purged stream
    for (const WordMark &w : chunk.words)
        m_words.push_back({w.sample, m_markup.originalPosition(w.ssmlPosition),
                           m_markup.originalLength(w.ssmlPosition, w.length)});
    if (!chunk.pcm.isEmpty())
        m_player->append(chunk.pcm);
    if (chunk.last)
        m_synthDone = true;
}

void EspeakEngine::tick()
{
    if (!m_currentId)
        return;
    const quint64 id = m_currentId;
    const qint64 played = m_player->playedSamples();
    while (!m_words.isEmpty() && m_words.first().sample <= played) {
        const PendingWord w = m_words.takeFirst();
        m_wordPosition = w.position;
        qCDebug(lcEspeakEngine) << "word" << w.position << w.length << "at sample" << w.sample;
        if (onWord)
            onWord(w.position, w.length);
        if (m_currentId != id)
            return;  // the handler purged or spoke again
    }
    if (m_synthDone && m_words.isEmpty() && m_player->drained()) {
        m_player->stop();
        endStream();
    }
}

} // namespace platform::espeak
