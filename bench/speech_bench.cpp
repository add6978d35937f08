// Speech on espeak-ng: how soon Talk is heard and how fast text becomes audio.
//  - BM_TalkToFirstBuffer: from speak() of a one-sentence text to the moment the audio
//    device has taken the first bytes of it (goal under 60 ms). Needs an audio output
//    (the test desktop's null sink); the first Talk after start-up is reported apart.
//  - BM_SynthesisSpeed: a paragraph synthesised on the synthesis thread alone, in
//    characters a second and as a multiple of real time (goal at least 50x).
// Run under scripts/with-desktop.sh.
#include "platform/espeak/espeak_engine.h"
#include "platform/espeak/espeak_synth.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <benchmark/benchmark.h>
#include <chrono>
#include <condition_variable>
#include <mutex>

using platform::espeak::EspeakEngine;
using platform::espeak::SynthChunk;
using platform::espeak::SynthJob;
using platform::espeak::SynthThread;

namespace {

constexpr int kWaitLimitMs = 5000;  // a first buffer later than this is a failure
const QString kSentence = QStringLiteral("The quick brown fox jumps over the lazy dog.");
const char *const kParagraph =
    "Sonamark reads the clipboard aloud. When a text is copied, the reader takes it, "
    "highlights each word as it is spoken, and shows how far it has come in the status "
    "bar and in the tip of its notification icon. Pause holds the voice where it is; "
    "Resume continues from the same place, and Stop ends the speech at once. The voice, "
    "its rate, its volume and its pitch are chosen in the main window and kept between "
    "sessions. Long documents are spoken in one piece, without gaps between sentences, "
    "and the highlight keeps pace with the voice from the first word to the last one.";

// Runs the event loop until done() holds; false when the limit passed first.
template <typename F>
bool SpinUntil(F done, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > limitMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    return true;
}

// The time from speak() to the first bytes taken by the device, in seconds; < 0 on time-out.
double TalkOnce(EspeakEngine &engine)
{
    engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    const auto start = std::chrono::steady_clock::now();
    engine.speak(kSentence, platform::kSpeakAsyncXml);
    if (!SpinUntil([&] { return engine.bytesHandedToDevice() > 0; }, kWaitLimitMs))
        return -1;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    return took.count();
}

void BM_TalkToFirstBuffer(benchmark::State &state)
{
    EspeakEngine engine;
    if (!engine.ok() || engine.silent()) {
        state.SkipWithError(engine.ok() ? "no audio device" : "espeak-ng did not start");
        return;
    }
    const double first = TalkOnce(engine);
    double worst = 0;
    for (auto _ : state) {
        const double took = TalkOnce(engine);
        if (took < 0 || first < 0) {
            state.SkipWithError("the audio device took nothing within 5 s");
            return;
        }
        worst = std::max(worst, took);
        state.SetIterationTime(took);
    }
    state.counters["first_talk_ms"] = first * 1000;
    state.counters["worst_ms"] = worst * 1000;
}
BENCHMARK(BM_TalkToFirstBuffer)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);

// Collects one job's audio on the synthesis thread.
struct JobCollector {
    std::mutex mutex;
    std::condition_variable done;
    qint64 samples = 0;
    bool finished = false;

    void take(const SynthChunk &chunk)
    {
        std::lock_guard lock(mutex);
        samples += chunk.pcm.size() / 2;
        if (chunk.last) {
            finished = true;
            done.notify_all();
        }
    }
    void reset()
    {
        std::lock_guard lock(mutex);
        samples = 0;
        finished = false;
    }
    qint64 wait()
    {
        std::unique_lock lock(mutex);
        done.wait(lock, [this] { return finished; });
        return samples;
    }
};

void BM_SynthesisSpeed(benchmark::State &state)
{
    JobCollector collector;
    SynthThread synth([&collector](SynthChunk chunk) { collector.take(chunk); });
    if (!synth.ok()) {
        state.SkipWithError("espeak-ng did not start");
        return;
    }
    const QString text = QString::fromLatin1(kParagraph);
    quint64 id = 1;
    double audioSeconds = 0;
    double wallSeconds = 0;
    for (auto _ : state) {
        collector.reset();
        SynthJob job;
        job.id = id++;
        job.ssml = text;
        const auto start = std::chrono::steady_clock::now();
        synth.submit(job);
        const qint64 samples = collector.wait();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        audioSeconds += double(samples) / synth.sampleRate();
        wallSeconds += took.count();
    }
    state.counters["chars/s"] = wallSeconds > 0 ? double(text.size()) * double(state.iterations()) / wallSeconds : 0;
    state.counters["x_real_time"] = wallSeconds > 0 ? audioSeconds / wallSeconds : 0;
}
BENCHMARK(BM_SynthesisSpeed)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
