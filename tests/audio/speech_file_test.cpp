// Speech into files on the real espeak-ng engine: every row of the speech-format table,
// read back by ffprobe; the codec-less row, cancel and unwritable outputs.
#include "audio/read_to_file.h"
#include "audio/speech_formats.h"
#include "audio_fixture.h"
#include "platform/espeak/espeak_engine.h"
#include "shell/app_state.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace audiotest;
using audio::SpeechEncoding;

namespace {

const QString kSentence = QStringLiteral(
    "Sonamark reads this sentence into a sound file, so that it can be heard on the road.");
constexpr double kDurationTolerance = 0.05;

platform::espeak::EspeakEngine &Engine()
{
    static platform::espeak::EspeakEngine engine;
    return engine;
}

// ffprobe's codec and bits for an encoding.
std::pair<QString, int> Expected(SpeechEncoding e)
{
    switch (e) {
    case SpeechEncoding::Pcm8: return {"pcm_u8", 8};
    case SpeechEncoding::Pcm16: return {"pcm_s16le", 16};
    case SpeechEncoding::ALaw: return {"pcm_alaw", 8};
    case SpeechEncoding::ULaw: return {"pcm_mulaw", 8};
    case SpeechEncoding::Gsm610: return {"gsm_ms", 0};
    case SpeechEncoding::TrueSpeech: break;
    }
    return {};
}

class SpeechFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Engine().ok());
        audio::readToFileVars().reset();
    }
    audio::SpeakOutcome speak(const QString &wav, int constant, QString *error = nullptr,
                              std::function<bool()> cancelled = {}, const QString &text = kSentence)
    {
        audio::SpeakToFileRun run;
        run.text = text;
        run.wavName = wav;
        run.formatConstant = constant;
        run.DoEvents = [] { QCoreApplication::processEvents(); };
        run.cancelled = std::move(cancelled);
        run.progress = [this](int p) { progress << p; };
        return audio::SpeakToFile(Engine(), run, error);
    }
    QTemporaryDir dir;
    QList<int> progress;
};

} // namespace

TEST_F(SpeechFileTest, EveryFormatRowIsWrittenAsItsMonoWave)
{
    // The engine's own rate, unresampled, is the length to compare with: 16-bit data.
    const QString reference = dir.filePath("reference.wav");
    ASSERT_EQ(speak(reference, 22), audio::SpeakOutcome::Done);
    const double spoken = (QFileInfo(reference).size() - 44) / 2.0 / 22050;
    ASSERT_GT(spoken, 2.0);
    for (const audio::SpeechFormat &f : audio::SpeechFormats()) {
        if (f.encoding == SpeechEncoding::TrueSpeech)
            continue;
        SCOPED_TRACE(f.sapiName);
        const QString wav = dir.filePath(QString::fromLatin1(f.sapiName) + ".wav");
        QString error;
        ASSERT_EQ(speak(wav, f.constant, &error), audio::SpeakOutcome::Done) << error.toStdString();
        const auto p = FfProbe(wav);
        const auto [codec, bits] = Expected(f.encoding);
        EXPECT_EQ(p["codec_name"], codec);
        EXPECT_EQ(p["sample_rate"].toInt(), f.sampleRate);
        EXPECT_EQ(p["channels"], "1");
        EXPECT_EQ(p["bits_per_sample"].toInt(), bits);
        EXPECT_NEAR(p["duration"].toDouble(), spoken, spoken * kDurationTolerance);
    }
}

TEST_F(SpeechFileTest, TrueSpeechSaysSoAndWritesNothing)
{
    const QString wav = dir.filePath("truespeech.wav");
    QString error;
    EXPECT_EQ(speak(wav, 40, &error), audio::SpeakOutcome::Failed);
    EXPECT_TRUE(error.contains("True Speech, 8 kHz, 1 bit (Low Quality)")) << error.toStdString();
    EXPECT_FALSE(QFileInfo::exists(wav));
}

TEST_F(SpeechFileTest, UnwritableTargetsFailWithAReason)
{
    for (const QString &target : {QStringLiteral("/dev/full"), dir.filePath("missing/folder/x.wav")}) {
        SCOPED_TRACE(target.toStdString());
        QString error;
        EXPECT_EQ(speak(target, 22, &error), audio::SpeakOutcome::Failed);
        EXPECT_FALSE(error.isEmpty());
        EXPECT_FALSE(audio::readToFileVars().ReadToFileBusy);
    }
}

TEST_F(SpeechFileTest, CancelStopsTheSpeechAndLeavesThePartialWave)
{
    const QString longText = QString(kSentence + QLatin1Char(' ')).repeated(200);
    const QString wav = dir.filePath("cancelled.wav");
    int polls = 0;
    EXPECT_EQ(speak(wav, 22, nullptr, [&] { return ++polls == 3; }, longText), audio::SpeakOutcome::Cancelled);
    EXPECT_TRUE(QFileInfo::exists(wav));
    EXPECT_FALSE(audio::readToFileVars().ReadToFileBusy);
    EXPECT_EQ(audio::readToFileVars().CharsPerSecond, audio::kStartCharsPerSecond);  // no correction
    // The engine is free again: the next run is whole, and longer than the cancelled one.
    const QString after = dir.filePath("after.wav");
    EXPECT_EQ(speak(after, 22, nullptr, {}, longText), audio::SpeakOutcome::Done);
    EXPECT_GT(QFileInfo(after).size(), 2 * QFileInfo(wav).size());
    EXPECT_FALSE(progress.isEmpty());
    EXPECT_NE(audio::readToFileVars().CharsPerSecond, audio::kStartCharsPerSecond);  // corrected
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
