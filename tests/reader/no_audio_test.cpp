// Speech without an audio device: the reader works on, and the status says so once.
#include "speech_fixture.h"

#include "platform/speech_engine.h"

using namespace reader;

namespace {

// The engine speaks one stream to its end, and Timer2 sees it end.
void SpeakToTheEnd(fakes::FakeSpeechEngine &engine)
{
    cmdTalk_Click();
    engine.startStream();
    engine.word(0, 3);
    Timer2_Timer();
    engine.endStream();
    Timer2_Timer();
}

} // namespace

TEST_F(SpeechTest, NoAudioDeviceIsSaidOnceAtLoadAndTalkStillWorks)
{
    fx.speech.state.NoAudioOutput = true;
    speechVars().reset();
    CreateSpeechObject(&view);  // Form_Load
    ASSERT_EQ(view.statusTexts.count(kNoAudioText), 1);
    EXPECT_EQ(view.statusTexts.last(), kNoAudioText);  // what the tip reads after start-up

    view.box = QStringLiteral("One two");
    SpeakToTheEnd(fx.speech);
    SpeakToTheEnd(fx.speech);
    EXPECT_EQ(view.statusTexts.count(kNoAudioText), 1);
    EXPECT_EQ(view.statusTexts.last(), "Sonamark - Idle");
    EXPECT_TRUE(view.statusTexts.contains("Speaking %"));
    EXPECT_EQ(view.selectionStart, 0);  // the highlight still follows the words
    EXPECT_EQ(view.selectionLength, 3);
}

TEST_F(SpeechTest, DeviceLostWhileSpeakingIsSaidWhenTheStreamEnds)
{
    view.box = QStringLiteral("One two");
    SpeakToTheEnd(fx.speech);
    EXPECT_FALSE(view.statusTexts.contains(kNoAudioText));

    cmdTalk_Click();
    fx.speech.startStream();
    fx.speech.state.NoAudioOutput = true;  // the sink failed to start
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), "Speaking %");  // progress is not interrupted
    fx.speech.endStream();
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), kNoAudioText);

    SpeakToTheEnd(fx.speech);
    EXPECT_EQ(view.statusTexts.count(kNoAudioText), 1);
    EXPECT_EQ(view.statusTexts.last(), "Sonamark - Idle");
}

TEST_F(SpeechTest, WithAnAudioDeviceNothingIsSaid)
{
    speechVars().reset();
    view.statusTexts.clear();
    CreateSpeechObject(&view);
    view.box = QStringLiteral("One two");
    SpeakToTheEnd(fx.speech);
    EXPECT_FALSE(view.statusTexts.contains(kNoAudioText));
}
