// The main window speaking through the real espeak-ng engine to the test desktop's
// PulseAudio null sink, with the sink's monitor recorded alongside: Talk is heard, the
// highlight walks the words in order, Pause silences the sound within 150 ms and
// Resume brings it back where it was, Stop ends it. The buttons are pressed as a user
// would; the sound is judged from the recording.
#include "fakes/fake_services.h"
#include "platform/espeak/espeak_engine.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "sink_recorder.h"
#include "ui/frm_sonamark.h"
#include "ui/speech_panel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTextEdit>
#include <QThread>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>

using testaudio::kRecordRate;
using testaudio::SinkRecorder;

namespace {

constexpr int kPauseSilenceLimitMs = 150;  // Pause must silence the voice this soon
constexpr int kStopSilenceLimitMs = 150;
constexpr int kFirstWordsLimitMs = 15000;  // generous: a loaded machine, a cold sink
constexpr int kResumeSoundLimitMs = 1000;
constexpr int kPausedForMs = 1000;         // held paused after Pause's own second
const QString kText = QStringLiteral(
    "Sonamark reads every copied word aloud while the highlight follows the voice across the whole line of text");

bool RunUntil(const std::function<bool()> &done, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < ms) {
        QApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
    return done();
}

void RunFor(int ms) { RunUntil([] { return false; }, ms); }

qint64 Samples(int ms) { return qint64(ms) * kRecordRate / 1000; }

struct Highlight {
    QString word;
    int start;
};

class TalkAudioTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const QString why = SinkRecorder::unavailableReason();
        if (!why.isEmpty())
            GTEST_SKIP() << why.toStdString();
        if (!engine.ok())
            GTEST_SKIP() << "espeak-ng is not available";
        ASSERT_FALSE(engine.silent()) << "the null sink exists but the engine found no audio device";
        shell::app().reset();
        shell::settings().reset();
        shell::settings().VolumeOpt = QStringLiteral("100");
        shell::settings().RateOpt = QStringLiteral("0");
        shell::settings().PitchOpt = QStringLiteral("3");  // wrapped: the head is subtracted
        reader::speechVars().reset();
        platform::Services withEngine = platform::services();
        withEngine.speech = &engine;
        m_previous = platform::install(withEngine);
        m_installed = true;
        window = std::make_unique<ui::frmSonamark>(&fx.tray);
        window->Form_Load();
        ASSERT_TRUE(window->loaded());
        QObject::connect(window->txtSpeech, &QTextEdit::selectionChanged, [this] {
            const QTextCursor c = window->txtSpeech->textCursor();
            if (c.hasSelection())
                highlights.push_back({c.selectedText(), c.selectionStart()});
        });
        window->txtSpeech->setPlainText(kText);
        ASSERT_TRUE(recorder.start()) << "parec recorded nothing from the sink's monitor";
    }
    void TearDown() override
    {
        if (!m_installed)
            return;
        engine.speak(QString(), platform::kSpeakPurgeBeforeSpeak);
        reader::ReleaseSpeechObject();
        window.reset();
        platform::install(m_previous);
    }
    ui::SpeechPanel &panel() { return *window->speechPanel; }

    fakes::FakeServices fx;
    platform::espeak::EspeakEngine engine;
    std::unique_ptr<ui::frmSonamark> window;
    SinkRecorder recorder;
    QVector<Highlight> highlights;

private:
    platform::Services m_previous;
    bool m_installed = false;
};

} // namespace

TEST_F(TalkAudioTest, TalkPauseResumeAndStopAsHeardAtTheSink)
{
    const QStringList words = kText.split(QLatin1Char(' '));

    const qint64 talkAt = recorder.mark();
    panel().cmdTalk->click();
    ASSERT_TRUE(RunUntil([&] { return highlights.size() >= 4; }, kFirstWordsLimitMs))
        << "no word was highlighted";

    const int latencyAtPause = SinkRecorder::sinkLatencyMs();
    const qint64 pauseAt = recorder.mark();
    panel().cmdPause->click();  // holds the window for a second, as Pause does
    EXPECT_EQ(panel().cmdPause->text(), "Resume");
    EXPECT_NE(engine.status().RunningState, platform::kRunningSpeaking);
    const qsizetype wordsBeforePause = highlights.size();
    RunFor(kPausedForMs);
    EXPECT_EQ(highlights.size(), wordsBeforePause) << "the highlight moved while paused";

    const qint64 resumeAt = recorder.mark();
    panel().cmdPause->click();
    EXPECT_EQ(panel().cmdPause->text(), "Pause");
    ASSERT_TRUE(RunUntil([&] { return highlights.size() >= wordsBeforePause + 3; }, kFirstWordsLimitMs))
        << "the highlight did not go on after Resume";

    const int latencyAtStop = SinkRecorder::sinkLatencyMs();
    const qint64 stopAt = recorder.mark();
    panel().cmdStop->click();
    EXPECT_EQ(engine.status().RunningState, platform::kRunningDone);
    const qsizetype wordsAtStop = highlights.size();
    RunFor(1000);
    const qint64 endAt = recorder.mark();
    recorder.stop();
    EXPECT_EQ(highlights.size(), wordsAtStop) << "words were highlighted after Stop";
    ASSERT_LT(wordsAtStop, words.size()) << "the sentence ended before Stop: nothing left to stop";

    // Every word once, in order, from the first, each selection on the word itself.
    for (qsizetype i = 0; i < highlights.size(); ++i) {
        ASSERT_LT(i, words.size());
        const int offset = int(kText.indexOf(QLatin1Char(' ') + words.at(i) + QLatin1Char(' '),
                                             i == 0 ? 0 : highlights.at(i - 1).start) + 1);
        EXPECT_EQ(highlights.at(i).word, words.at(i)) << "highlight " << i;
        EXPECT_EQ(highlights.at(i).start, i == 0 ? 0 : offset) << "highlight " << i;
    }

    ASSERT_GE(latencyAtPause, 0);
    ASSERT_GE(latencyAtStop, 0);
    const int pauseSilentAfter = recorder.lastSoundMs(pauseAt, resumeAt) + latencyAtPause;
    const int resumeSoundAfter = recorder.firstSoundMs(resumeAt, stopAt);
    const int stopSilentAfter = recorder.lastSoundMs(stopAt, endAt) + latencyAtStop;
    // Not judged: an idle null sink mixes up to two seconds ahead, and new sound waits
    // for that to pass; a real device takes it at once.
    std::cout << "heard " << recorder.firstSoundMs(talkAt, pauseAt) << " ms after Talk, ";
    std::cout << "sound stopped " << pauseSilentAfter << " ms after Pause, came back " << resumeSoundAfter
              << " ms after Resume, stopped " << stopSilentAfter << " ms after Stop\n";
    EXPECT_GT(recorder.audibleWindows(talkAt, pauseAt), 20) << "Talk was not heard at the sink";
    EXPECT_LE(pauseSilentAfter, kPauseSilenceLimitMs) << "the voice went on after Pause";
    EXPECT_GE(resumeSoundAfter, 0) << "Resume was not heard";
    EXPECT_LE(resumeSoundAfter, kResumeSoundLimitMs);
    EXPECT_GT(recorder.audibleWindows(resumeAt, stopAt), 20) << "too little was heard after Resume";
    EXPECT_LE(stopSilentAfter, kStopSilenceLimitMs) << "the voice went on after Stop";
    EXPECT_GT(endAt - stopAt, Samples(800));
}

TEST_F(TalkAudioTest, StopWhilePausedStaysSilent)
{
    panel().cmdTalk->click();
    ASSERT_TRUE(RunUntil([&] { return highlights.size() >= 3; }, kFirstWordsLimitMs))
        << "no word was highlighted";
    const int latencyAtPause = SinkRecorder::sinkLatencyMs();
    const qint64 pauseAt = recorder.mark();
    panel().cmdPause->click();
    RunFor(kPausedForMs);

    const qint64 stopAt = recorder.mark();
    panel().cmdStop->click();  // resumes the engine, then purges it
    EXPECT_EQ(panel().cmdPause->text(), "Pause");
    EXPECT_EQ(engine.status().RunningState, platform::kRunningDone);
    RunFor(1000);
    const qint64 endAt = recorder.mark();
    recorder.stop();

    ASSERT_GE(latencyAtPause, 0);
    EXPECT_LE(recorder.lastSoundMs(pauseAt, stopAt) + latencyAtPause, kPauseSilenceLimitMs);
    EXPECT_EQ(recorder.lastSoundMs(stopAt, endAt), 0) << "Stop let some of the paused speech out";
    EXPECT_GT(endAt - stopAt, Samples(800));
}
