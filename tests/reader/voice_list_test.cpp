// The voice list, slider start values and the settings the controls write.
#include "speech_fixture.h"

using reader::ListedVoiceName;

TEST(VoiceListName, FollowsTheListingRules)
{
    struct Row { const char *description; const char *listed; };
    const Row rows[] = {
        {"Microsoft Mary", "Mary"},
        {"Microsoft Sam", "Sam"},
        {"Microsoft Mike in Sample", "Mike in Sample"},  // the Microsoft test comes first
        {"Cepstral David", "David"},
        {"NeoSpeech Kate16 Voice", "Kate"},
        {"English (America)", "English (America)"},
        {"cepstral lower case", "cepstral lower case"},  // the test is case-sensitive
    };
    for (const Row &r : rows)
        EXPECT_EQ(ListedVoiceName(QString::fromUtf8(r.description)), QString::fromUtf8(r.listed))
            << r.description;
    EXPECT_FALSE(ListedVoiceName(QStringLiteral("Sample TTS Voice")));
}

TEST_F(SpeechTest, UnlistedVoicesKeepTheEngineNumbersOfTheOthers)
{
    fx.speech.voiceList = {QStringLiteral("Sample One"), QStringLiteral("Microsoft Mary"),
                           QStringLiteral("Sample Two"), QStringLiteral("Voice B")};
    reader::CreateSpeechObject(&view);
    EXPECT_EQ(view.rows, (QStringList{QStringLiteral("Mary"), QStringLiteral("Voice B")}));
    EXPECT_EQ(reader::speechVars().VoiceCount, 2);
    EXPECT_EQ(view.index, 1);
    EXPECT_EQ(view.voiceTip, QStringLiteral("Reader: Voice B"));

    view.box = QStringLiteral("Hello");
    reader::cmdTalk_Click();
    EXPECT_EQ(fx.speech.chosenVoice, 3);
}

TEST(FallbackVoice, SystemLanguageThenAmericanEnglishThenFirst)
{
    const QStringList rows{QStringLiteral("Afrikaans"), QStringLiteral("English (Great Britain)"),
                           QStringLiteral("English (America)"), QStringLiteral("German"),
                           QStringLiteral("French (Belgium)")};
    EXPECT_EQ(reader::FallbackVoiceRow(rows, QStringLiteral("German")), 3);
    EXPECT_EQ(reader::FallbackVoiceRow(rows, QStringLiteral("French")), 4);
    EXPECT_EQ(reader::FallbackVoiceRow(rows, QStringLiteral("English")), 2);
    EXPECT_EQ(reader::FallbackVoiceRow(rows, QStringLiteral("Japanese")), 2);
    EXPECT_EQ(reader::FallbackVoiceRow({QStringLiteral("Zulu"), QStringLiteral("Welsh")}, QStringLiteral("Japanese")), 0);
    EXPECT_EQ(reader::FallbackVoiceRow({}, QStringLiteral("German")), -1);
}

TEST_F(SpeechTest, StoredVoiceNotInstalledStartsOnAFallbackSilently)
{
    shell::settings().VoiceOpt = QStringLiteral("Mary");
    fx.speech.voiceList = {QStringLiteral("Voice A"), QStringLiteral("English (America)")};
    view = FakeSpeechView();
    reader::CreateSpeechObject(&view);
    EXPECT_EQ(view.index, 1);
    EXPECT_EQ(view.voiceTip, QStringLiteral("Reader: English (America)"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_EQ(shell::settings().VoiceOpt, QStringLiteral("Mary"));
}

TEST_F(SpeechTest, NoVoiceInstalledSaysSoOnceAndTalkReturns)
{
    fx.speech.voiceList.clear();
    view = FakeSpeechView();
    reader::CreateSpeechObject(&view);
    view.box = QStringLiteral("Hello");
    reader::cmdTalk_Click();  // must return, not wait for a voice row to appear
    reader::cmdTalk_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, reader::kNoVoiceText + "\r\n");
    EXPECT_TRUE(fx.speech.lastSpoken.isEmpty());
}

TEST_F(SpeechTest, MoreThanTheVoiceIndexHoldsIsAFailure)
{
    fx.speech.voiceList.clear();
    for (int i = 0; i < reader::kMaxVoices + 1; ++i)
        fx.speech.voiceList << QStringLiteral("V%1").arg(i);
    EXPECT_THROW(reader::CreateSpeechObject(&view), std::exception);
}

TEST_F(SpeechTest, SlidersStartFromTheSettingsThroughTheEngine)
{
    EXPECT_EQ(fx.speech.vol, 80);
    EXPECT_EQ(view.volumeValue, 80);
    EXPECT_EQ(view.volumeTip, QStringLiteral("80"));
    EXPECT_EQ(fx.speech.rt, -3);
    EXPECT_EQ(view.rateValue, -3);
    EXPECT_EQ(view.pitchValue, 0);
    EXPECT_EQ(view.pitchTip, QStringLiteral("0"));
}

TEST_F(SpeechTest, SliderWritesMarkOptionsOnlyOutsideWindowLoading)
{
    shell::app().WindowLoading = true;
    reader::VolumeSldr_Scroll(40);
    reader::PitchSldr_Scroll(-4);
    EXPECT_FALSE(shell::app().OptionsDirty);
    EXPECT_EQ(shell::settings().VolumeOpt, QStringLiteral("40"));
    EXPECT_EQ(shell::settings().PitchOpt, QStringLiteral("-4"));
    EXPECT_EQ(view.pitchTip, QStringLiteral("-4"));

    shell::app().WindowLoading = false;
    reader::RateSldr_Scroll(7);
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_EQ(fx.speech.rt, 7);
    EXPECT_EQ(shell::settings().RateOpt, QStringLiteral("7"));
    EXPECT_EQ(view.rateTip, QStringLiteral("7"));
}

TEST_F(SpeechTest, VolumeSettingIsTheValueReadBackFromTheEngine)
{
    reader::VolumeSldr_Scroll(150);  // the fake engine holds at most 100
    EXPECT_EQ(shell::settings().VolumeOpt, QStringLiteral("100"));
    EXPECT_EQ(view.volumeTip, QStringLiteral("100"));
}

TEST_F(SpeechTest, ListClickStoresTheVoiceButTheEngineChangesOnlyAtTalk)
{
    view.index = 0;
    reader::List1_Click();
    EXPECT_EQ(shell::settings().VoiceOpt, QStringLiteral("Voice A"));
    EXPECT_EQ(view.voiceTip, QStringLiteral("Reader: Voice A"));
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_TRUE(fx.speech.calls.isEmpty());
}
