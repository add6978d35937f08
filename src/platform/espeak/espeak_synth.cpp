#include "platform/espeak/espeak_synth.h"

#include <QLocale>
#include <QLoggingCategory>
#include <espeak-ng/speak_lib.h>

Q_LOGGING_CATEGORY(lcEspeakSynth, "sonamark.speech.espeak", QtWarningMsg)

namespace platform::espeak {

namespace {

constexpr int kChunkMs = 40;  // audio per callback: small, so the first sound comes early

// The job being synthesised; only the synthesis thread touches it.
struct Running {
    const SynthJob *job = nullptr;
    qint64 samplesDone = 0;
    int sampleRate = 0;
    std::function<void(SynthChunk)> sink;
    std::atomic<quint64> *cancelBelow = nullptr;
};
thread_local Running *t_running = nullptr;

// The voices listed: English ones and those of the user's language. espeak-ng ships far
// more languages than a voice list holds.
bool Wanted(const QString &language)
{
    const QString own = QLocale::system().name().section(QLatin1Char('_'), 0, 0).toLower();
    const QString lang = language.toLower();
    return lang == QLatin1String("en") || lang.startsWith(QLatin1String("en-"))
        || (!own.isEmpty() && own != QLatin1String("c") && (lang == own || lang.startsWith(own + QLatin1Char('-'))));
}

int SynthCallback(short *wav, int samples, espeak_EVENT *events);

} // namespace

SynthThread::SynthThread(ChunkSink sink) : m_sink(std::move(sink))
{
    // espeak-ng starts once per process: it does not survive a second initialisation.
    static const int sampleRate =
        espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, kChunkMs, nullptr, espeakINITIALIZE_DONT_EXIT);
    m_sampleRate = sampleRate;
    if (m_sampleRate <= 0) {
        qCWarning(lcEspeakSynth) << "espeak-ng did not start";
        m_sampleRate = 0;
        return;
    }
    espeak_SetSynthCallback(&SynthCallback);
    for (const espeak_VOICE **v = espeak_ListVoices(nullptr); v && *v; ++v) {
        const char *languages = (*v)->languages;
        const QString language = languages ? QString::fromUtf8(languages + 1) : QString();
        if (Wanted(language))
            m_voices.push_back({QString::fromUtf8((*v)->name), QString::fromUtf8((*v)->identifier)});
    }
    m_thread = std::thread([this] { run(); });
}

SynthThread::~SynthThread()
{
    if (!m_thread.joinable())
        return;
    {
        std::lock_guard lock(m_mutex);
        m_quit = true;
        m_queue.clear();
    }
    m_cancelBelow = ~quint64(0);
    m_wake.notify_all();
    m_thread.join();
}

void SynthThread::submit(const SynthJob &job)
{
    {
        std::lock_guard lock(m_mutex);
        m_queue.push_back(job);
    }
    m_wake.notify_one();
}

void SynthThread::cancelAll()
{
    std::lock_guard lock(m_mutex);
    // The running job is among those dropped: a long text would otherwise go on being
    // synthesised and hold back the next one.
    quint64 highest = m_runningId;
    for (const SynthJob &j : m_queue)
        highest = qMax(highest, j.id);
    m_queue.clear();
    m_cancelBelow = qMax<quint64>(m_cancelBelow, highest + 1);
}

namespace {

int SynthCallback(short *wav, int samples, espeak_EVENT *events)
{
    Running *r = t_running;
    if (!r)
        return 1;
    SynthChunk chunk;
    chunk.id = r->job->id;
    if (wav && samples > 0)
        chunk.pcm = QByteArray(reinterpret_cast<const char *>(wav), samples * int(sizeof(short)));
    for (espeak_EVENT *e = events; e && e->type != espeakEVENT_LIST_TERMINATED; ++e) {
        if (e->type != espeakEVENT_WORD)
            continue;
        WordMark w;
        w.sample = qint64(e->audio_position) * r->sampleRate / 1000;
        w.ssmlPosition = e->text_position - 1;  // espeak counts from 1
        w.length = e->length;
        chunk.words.push_back(w);
    }
    r->samplesDone += samples;
    if (!chunk.pcm.isEmpty() || !chunk.words.isEmpty())
        r->sink(std::move(chunk));
    return r->job->id < r->cancelBelow->load() ? 1 : 0;
}

} // namespace

void SynthThread::run()
{
    for (;;) {
        SynthJob job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_quit || !m_queue.empty(); });
            if (m_quit)
                return;
            job = m_queue.front();
            m_queue.pop_front();
            m_runningId = job.id;
        }
        if (job.id < m_cancelBelow) {
            m_runningId = 0;
            continue;
        }
        if (!job.voiceIdentifier.isEmpty())
            espeak_SetVoiceByName(job.voiceIdentifier.toUtf8().constData());
        espeak_SetParameter(espeakRATE, job.wordsPerMinute, 0);
        espeak_SetParameter(espeakWORDGAP, job.wordGap, 0);
        espeak_SetParameter(espeakVOLUME, job.volume, 0);
        Running running{&job, 0, m_sampleRate, m_sink, &m_cancelBelow};
        t_running = &running;
        const QByteArray utf8 = job.ssml.toUtf8();
        const espeak_ERROR err = espeak_Synth(utf8.constData(), size_t(utf8.size()) + 1, 0, POS_CHARACTER, 0,
                                              espeakCHARS_UTF8 | espeakSSML, nullptr, nullptr);
        if (err != EE_OK)
            qCWarning(lcEspeakSynth) << "synthesis failed:" << err;
        t_running = nullptr;
        m_runningId = 0;
        SynthChunk end;
        end.id = job.id;
        end.last = true;
        m_sink(std::move(end));
    }
}

} // namespace platform::espeak
