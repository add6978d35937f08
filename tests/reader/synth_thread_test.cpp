// The espeak-ng synthesis thread: whole jobs, and cancelling the one being synthesised.
#include "platform/espeak/espeak_engine.h"
#include "platform/espeak/espeak_synth.h"

#include <condition_variable>
#include <gtest/gtest.h>
#include <map>
#include <mutex>

using platform::espeak::SynthChunk;
using platform::espeak::SynthJob;
using platform::espeak::SynthThread;

namespace {

// A few minutes of speech: far longer than the moment it takes to cancel it.
QString LongText()
{
    QString text;
    for (int i = 0; i < 200; ++i)
        text += QStringLiteral("This sentence is one of many in a long document. ");
    return text;
}

struct Collector {
    std::mutex mutex;
    std::condition_variable changed;
    std::map<quint64, qint64> samples;  // by job id
    std::map<quint64, bool> finished;

    void take(const SynthChunk &c)
    {
        std::lock_guard lock(mutex);
        samples[c.id] += c.pcm.size() / 2;
        if (c.last)
            finished[c.id] = true;
        changed.notify_all();
    }
    template <typename P>
    bool waitFor(P done)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(60), done);
    }
};

SynthJob Job(quint64 id, const QString &text)
{
    SynthJob job;
    job.id = id;
    job.ssml = text;
    return job;
}

} // namespace

TEST(SynthThread, CancelEndsTheJobBeingSynthesisedAndTheNextOneRuns)
{
    Collector got;
    SynthThread synth([&got](SynthChunk c) { got.take(c); });
    if (!synth.ok())
        GTEST_SKIP() << "espeak-ng is not available";

    synth.submit(Job(1, LongText()));
    ASSERT_TRUE(got.waitFor([&] { return got.finished[1]; }));
    const qint64 whole = got.samples[1];
    ASSERT_GT(whole, qint64(synth.sampleRate()) * 60);  // over a minute of audio

    synth.submit(Job(2, LongText()));
    ASSERT_TRUE(got.waitFor([&] { return got.samples[2] > 0; }));
    synth.cancelAll();
    synth.submit(Job(3, QStringLiteral("Next.")));
    ASSERT_TRUE(got.waitFor([&] { return got.finished[3]; }));
    std::lock_guard lock(got.mutex);
    EXPECT_TRUE(got.finished[2]);
    EXPECT_LT(got.samples[2], whole / 2) << "the cancelled job ran on";
    EXPECT_GT(got.samples[3], 0);
}

// Rate -10 speaks at about a third of the normal speed and 10 at about three times it,
// judged by the length of the audio made for the same sentence.
TEST(SynthThread, RateRangeSpansAThirdToThreeTimesTheNormalSpeed)
{
    Collector got;
    SynthThread synth([&got](SynthChunk c) { got.take(c); });
    if (!synth.ok())
        GTEST_SKIP() << "espeak-ng is not available";
    const QString sentence = QStringLiteral(
        "The quick brown fox jumps over the lazy dog while the farmer watches from the gate.");
    quint64 id = 0;
    for (const int rate : {-10, 0, 10}) {
        SynthJob job = Job(++id, sentence);
        const platform::espeak::EspeakEngine::Pace pace = platform::espeak::EspeakEngine::SpeakingPace(rate);
        job.wordsPerMinute = pace.wordsPerMinute;
        job.wordGap = pace.wordGap;
        synth.submit(job);
    }
    ASSERT_TRUE(got.waitFor([&] { return got.finished.size() == 3; }));
    const double slow = double(got.samples[1]) / double(got.samples[2]);
    const double fast = double(got.samples[3]) / double(got.samples[2]);
    EXPECT_GT(slow, 2.3) << "rate -10 is only " << slow << " times as long";
    EXPECT_LT(slow, 4.0);
    EXPECT_LT(fast, 1.0 / 2.0) << "rate 10 is " << fast << " of the normal length";
    EXPECT_GT(fast, 1.0 / 4.0);
}
