// Talk, Pause, Stop, the progress figure and the word highlight against the fake engine.
#include "speech_fixture.h"

#include "platform/speech_engine.h"

using namespace reader;

namespace {
const QString kSentence = QStringLiteral("One two three four");
}

TEST_F(SpeechTest, TalkPurgesThenSpeaksTheWholeTextAsXml)
{
    view.box = kSentence;
    cmdTalk_Click();
    EXPECT_EQ(speakCalls(), (QStringList{QStringLiteral("speak 2 "), QStringLiteral("speak 9 ") + kSentence}));
    EXPECT_TRUE(speechVars().HighlightOn);
    EXPECT_EQ(speechVars().HighlightBase, 0);
    EXPECT_EQ(speechVars().TextEndPos, 14);  // the blank before "four", 1-based
    EXPECT_TRUE(view.timer2);
}

TEST_F(SpeechTest, TextWithoutBlankMeasuresItsLength)
{
    view.box = QStringLiteral("Word");
    cmdTalk_Click();
    EXPECT_EQ(speechVars().TextEndPos, 4);
}

TEST_F(SpeechTest, TalkWithAnEmptyBoxDoesNothingAtAll)
{
    cmdTalk_Click();
    EXPECT_TRUE(speakCalls().isEmpty());
    EXPECT_TRUE(view.statusTexts.isEmpty());
    EXPECT_FALSE(view.timer2);
}

TEST_F(SpeechTest, TalkWhileSpeakingDoesNothing)
{
    view.box = kSentence;
    fx.speech.state.RunningState = platform::kRunningSpeaking;
    cmdTalk_Click();
    EXPECT_TRUE(fx.speech.calls.isEmpty());
}

TEST_F(SpeechTest, PitchWrapperHeadMatchesTheHighlightArithmetic)
{
    for (const char *pitch : {"5", "10", "-10", "-5"}) {
        const QString p = QString::fromLatin1(pitch);
        const QString wrapped = PitchWrapped(QStringLiteral("TEXT"), p);
        EXPECT_EQ(wrapped.indexOf(QStringLiteral("TEXT")), PitchHeadLength(p)) << pitch;
    }
    EXPECT_EQ(PitchHeadLength(QStringLiteral("5")), 47);
    EXPECT_EQ(PitchHeadLength(QStringLiteral("10")), 48);
    EXPECT_EQ(PitchHeadLength(QStringLiteral("-10")), 49);
    EXPECT_EQ(PitchWrapped(QStringLiteral("Hi"), QStringLiteral("3")),
              QStringLiteral("<xml version=\"1.0\">\r\n<SAPI>\r\n<PITCH MIDDLE=\"3\">Hi</PITCH>\r\n</SAPI>\r\n</xml>"));
}

TEST_F(SpeechTest, SelectionWithPitchIsWrappedAndHighlightedFromTheSelection)
{
    shell::settings().PitchOpt = QStringLiteral("-10");
    view.box = QStringLiteral("Skip this. Read these words");
    view.select(11, 16);  // "Read these words"
    cmdTalk_Click();
    const QString spoken = fx.speech.lastSpoken;
    EXPECT_EQ(spoken, PitchWrapped(QStringLiteral("Read these words"), QStringLiteral("-10")));
    EXPECT_EQ(speechVars().HighlightBase, 11);
    EXPECT_EQ(speechVars().TextEndPos, spoken.lastIndexOf(QLatin1Char(' ')) + 1);

    // The engine reports "these" at its place in the wrapped string.
    fx.speech.word(int(spoken.indexOf(QStringLiteral("these"))), 5);
    EXPECT_EQ(view.selectedText(), QStringLiteral("these"));
    EXPECT_EQ(view.panel2, QStringLiteral("Ln 1, Col 17"));
}

TEST_F(SpeechTest, TextAlreadyHoldingXmlIsNotWrappedButTheHeadIsStillSubtracted)
{
    shell::settings().PitchOpt = QStringLiteral("5");
    view.box = QStringLiteral("<XML VERSION=\"1.0\"> hello");
    cmdTalk_Click();
    EXPECT_EQ(fx.speech.lastSpoken, view.box);
    fx.speech.word(100, 3);
    EXPECT_EQ(view.selectionStart, 100 - 47);
}

TEST_F(SpeechTest, WordEventsMoveNothingAfterStop)
{
    view.box = kSentence;
    cmdTalk_Click();
    fx.speech.word(4, 3);
    EXPECT_EQ(view.selectedText(), QStringLiteral("two"));
    cmdStop_Click();
    fx.speech.word(8, 5);
    EXPECT_EQ(view.selectedText(), QStringLiteral("two"));
}

TEST_F(SpeechTest, StreamEventsSetSpeechState)
{
    fx.speech.startStream();
    EXPECT_EQ(shell::app().SpeechState, 0);
    fx.speech.endStream();
    EXPECT_EQ(shell::app().SpeechState, 2);
}

TEST_F(SpeechTest, Timer2ShowsProgressThenIdle)
{
    view.box = kSentence;  // TextEndPos 14
    cmdTalk_Click();
    fx.speech.state.InputWordPosition = 0;
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Speaking %"));
    fx.speech.state.InputWordPosition = 7;
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Speaking 50%"));
    fx.speech.state.InputWordPosition = 15;
    Timer2_Timer();
    EXPECT_EQ(speechVars().ProgressPct, 0);
    EXPECT_EQ(shell::app().SpeechState, 0);

    fx.speech.state.RunningState = platform::kRunningDone;
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Sonamark - Idle"));
    EXPECT_EQ(speechVars().ProgressPct, 100);
    EXPECT_FALSE(view.timer2);
    EXPECT_EQ(shell::app().SpeechState, 2);

    view.clipToggle = QStringLiteral("Clip On");
    cmdTalk_Click();
    fx.speech.state.RunningState = platform::kRunningDone;
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Monitoring Clipboard.."));
}

TEST_F(SpeechTest, PauseHoldsWaitsASecondAndShowsThePercentage)
{
    view.box = kSentence;
    cmdTalk_Click();
    fx.speech.state.InputWordPosition = 7;
    Timer2_Timer();
    cmdPause_Click();
    EXPECT_EQ(fx.speech.calls.last(), QStringLiteral("pause"));
    EXPECT_EQ(view.pauseCmd, QStringLiteral("Resume"));
    EXPECT_EQ(view.pauseMnu, QStringLiteral("Resume"));
    EXPECT_EQ(slept, 1000);
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Paused 50%"));

    // An engine that still says "speaking" while paused: the timer shows Paused, Talk waits.
    fx.speech.state.RunningState = platform::kRunningSpeaking;
    Timer2_Timer();
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Paused 50%"));
    const qsizetype callsBefore = fx.speech.calls.size();
    cmdTalk_Click();
    EXPECT_EQ(fx.speech.calls.size(), callsBefore);

    cmdPause_Click();
    EXPECT_EQ(fx.speech.calls.last(), QStringLiteral("resume"));
    EXPECT_EQ(view.pauseCmd, QStringLiteral("Pause"));
}

TEST_F(SpeechTest, PauseWhenIdleDoesNothing)
{
    cmdPause_Click();
    EXPECT_TRUE(fx.speech.calls.isEmpty());
    EXPECT_EQ(view.pauseCmd, QStringLiteral("Pause"));
    EXPECT_EQ(slept, 0);
}

TEST_F(SpeechTest, TalkWhilePausedResumes)
{
    view.box = kSentence;
    cmdTalk_Click();
    cmdPause_Click();
    ASSERT_EQ(fx.speech.state.RunningState, platform::kRunningPaused);
    cmdTalk_Click();
    EXPECT_EQ(fx.speech.calls.last(), QStringLiteral("resume"));
    EXPECT_EQ(view.pauseCmd, QStringLiteral("Pause"));
    EXPECT_EQ(speakCalls().size(), 2);  // no second speak
}

TEST_F(SpeechTest, StopWhilePausedResumesBeforeThePurge)
{
    view.box = kSentence;
    cmdTalk_Click();
    cmdPause_Click();
    fx.speech.calls.clear();
    cmdStop_Click();
    EXPECT_EQ(fx.speech.calls, (QStringList{QStringLiteral("resume"), QStringLiteral("speak 2 ")}));
    EXPECT_EQ(view.pauseCmd, QStringLiteral("Pause"));
    EXPECT_FALSE(speechVars().HighlightOn);
    EXPECT_EQ(view.statusTexts.last(), QStringLiteral("Sonamark - Idle"));
    EXPECT_TRUE(view.timer2);  // the next tick stops it
}

TEST_F(SpeechTest, StopWhenIdleOnlyResetsTheStatus)
{
    speechVars().ProgressPct = 40;
    cmdStop_Click();
    EXPECT_TRUE(fx.speech.calls.isEmpty());
    EXPECT_EQ(speechVars().ProgressPct, 0);
    EXPECT_EQ(view.statusTexts, QStringList{QStringLiteral("Sonamark - Idle")});
}

TEST_F(SpeechTest, TrayPauseSetsSpeechState)
{
    view.box = kSentence;
    cmdTalk_Click();
    mnuPause_Click();
    EXPECT_EQ(shell::app().SpeechState, 1);
    mnuPause_Click();
    EXPECT_EQ(shell::app().SpeechState, 0);
    EXPECT_EQ(fx.speech.calls.last(), QStringLiteral("resume"));
}

TEST_F(SpeechTest, TrayTalkSpeaksTheClipboardWholeAndKeepsTheHighlightBase)
{
    view.box = QStringLiteral("old text here");
    view.select(4, 4);
    cmdTalk_Click();
    ASSERT_EQ(speechVars().HighlightBase, 4);
    fx.speech.state.RunningState = platform::kRunningDone;

    shell::app().TextDirty = true;
    shell::app().CurrentFile = QStringLiteral("/tmp/a.txt");
    fx.messages.answers = {1};
    fx.clipboard.content = QStringLiteral("clip words");
    mnuTalk_Click();
    ASSERT_FALSE(fx.messages.shown.isEmpty());
    EXPECT_TRUE(fx.messages.shown.last().text.startsWith(QStringLiteral("Save changes first?")));
    EXPECT_EQ(fx.messages.shown.last().title, QStringLiteral("Save"));
    EXPECT_EQ(view.saves, 1);
    EXPECT_EQ(view.box, QStringLiteral("clip words"));
    EXPECT_EQ(fx.speech.lastSpoken, QStringLiteral("clip words"));
    EXPECT_EQ(speechVars().HighlightBase, 4);
    EXPECT_EQ(speechVars().TextEndPos, 5);
    // Reset_txtSpeech forgot the file.
    EXPECT_TRUE(shell::app().CurrentFile.isEmpty());
    EXPECT_FALSE(shell::app().TextDirty);
    EXPECT_EQ(view.caption, QStringLiteral("Sonamark - Text-To-Speech Reader"));
    EXPECT_EQ(view.formatResets, 1);
}

TEST_F(SpeechTest, ResetTextBoxActsOnlyWithAFile)
{
    shell::app().TextDirty = true;
    Reset_txtSpeech();
    EXPECT_TRUE(shell::app().TextDirty);
    EXPECT_EQ(view.formatResets, 0);
}
