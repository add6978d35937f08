// The espeak-ng engine on the default audio output (a PulseAudio null sink under the
// test desktop, or the silent clock when there is none): events, order and positions,
// pause and purge.
#include "platform/espeak/espeak_engine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>

using platform::espeak::EspeakEngine;

namespace {

constexpr int kEndTimeoutMs = 15000;

// Runs the event loop until the condition holds or the time is up.
bool RunUntil(const std::function<bool()> &done, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
    return done();
}

void RunFor(int ms) { RunUntil([] { return false; }, ms); }

struct Recorder {
    QStringList events;  // "start", "word <pos> <len>", "end"
    void attach(EspeakEngine &e)
    {
        e.onStartStream = [this] { events << QStringLiteral("start"); };
        e.onEndStream = [this] { events << QStringLiteral("end"); };
        e.onWord = [this](int p, int l) { events << QStringLiteral("word %1 %2").arg(p).arg(l); };
    }
    bool waitFor(const QString &event, int ms = kEndTimeoutMs)
    {
        return RunUntil([&] { return events.contains(event); }, ms);
    }
    QStringList words() const { return events.filter(QStringLiteral("word")); }
};

class EspeakEngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!engine.ok())
            GTEST_SKIP() << "espeak-ng is not available";
        rec.attach(engine);
    }
    EspeakEngine engine;
    Recorder rec;
};

} // namespace

TEST_F(EspeakEngineTest, SpeaksASentenceWithWordsInOrderThenEnds)
{
    ASSERT_FALSE(engine.voices().isEmpty());
    const QString text = QStringLiteral("Hello big world");
    engine.speak(text, platform::kSpeakAsyncXml);
    EXPECT_EQ(engine.status().RunningState, platform::kRunningSpeaking);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("end")));
    EXPECT_EQ(rec.events, (QStringList{QStringLiteral("start"), QStringLiteral("word 0 5"),
                                       QStringLiteral("word 6 3"), QStringLiteral("word 10 5"),
                                       QStringLiteral("end")}));
    EXPECT_EQ(engine.status().RunningState, platform::kRunningDone);
}

TEST_F(EspeakEngineTest, WordPositionsCountTheTagsOfTheGivenString)
{
    const QString text = QStringLiteral("<xml version=\"1.0\">\r\n<SAPI>\r\n<PITCH MIDDLE=\"5\">Good <EMPH>day</EMPH> now</PITCH>\r\n</SAPI>\r\n</xml>");
    engine.speak(text, platform::kSpeakAsyncXml);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("end")));
    EXPECT_EQ(rec.words(), (QStringList{QStringLiteral("word %1 4").arg(text.indexOf(QStringLiteral("Good"))),
                                        QStringLiteral("word %1 3").arg(text.indexOf(QStringLiteral("day"))),
                                        QStringLiteral("word %1 3").arg(text.indexOf(QStringLiteral("now")))}));
}

TEST_F(EspeakEngineTest, WordsFollowPlaybackNotSynthesis)
{
    QElapsedTimer clock;
    clock.start();
    engine.speak(QStringLiteral("one two three four five six seven eight"), platform::kSpeakAsyncXml);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("end")));
    // Synthesis of this takes a few milliseconds; speaking it takes seconds.
    EXPECT_GT(clock.elapsed(), 1500);
    EXPECT_EQ(rec.words().size(), 8);
}

TEST_F(EspeakEngineTest, PauseHoldsAndResumeContinues)
{
    engine.speak(QStringLiteral("one two three four five six seven eight nine ten"), platform::kSpeakAsyncXml);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("word 4 3")));
    engine.pause();
    EXPECT_EQ(engine.status().RunningState, platform::kRunningPaused);
    const qsizetype heard = rec.events.size();
    RunFor(800);
    EXPECT_EQ(rec.events.size(), heard) << rec.events.join(QLatin1Char(',')).toStdString();
    engine.resume();
    EXPECT_EQ(engine.status().RunningState, platform::kRunningSpeaking);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("end")));
    EXPECT_EQ(rec.words().size(), 10);
}

TEST_F(EspeakEngineTest, PurgeEndsTheStreamAndNothingFollows)
{
    engine.speak(QStringLiteral("one two three four five six seven eight nine ten"), platform::kSpeakAsyncXml);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("word 0 3")));
    engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    EXPECT_EQ(engine.status().RunningState, platform::kRunningDone);
    ASSERT_TRUE(rec.waitFor(QStringLiteral("end"), 1000));
    const qsizetype after = rec.events.size();
    RunFor(500);
    EXPECT_EQ(rec.events.size(), after);
    EXPECT_LT(rec.words().size(), 10);
}

// The suite also runs with no audio server (SONAMARK_EXPECT_NO_AUDIO set): everything
// above must hold on the silent clock too, and the status must say there is no device.
TEST_F(EspeakEngineTest, StatusSaysWhenThereIsNoAudioDevice)
{
    if (qEnvironmentVariableIsSet("SONAMARK_EXPECT_NO_AUDIO"))
        EXPECT_TRUE(engine.status().NoAudioOutput);
    else
        EXPECT_EQ(engine.status().NoAudioOutput, engine.silent());
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
