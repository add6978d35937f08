// cLameEncoder and cMp3Writer on libmp3lame, their MP3 files checked by ffprobe and mpg123.
#include "audio/lame_encoder.h"
#include "audio/mp3_writer.h"
#include "audio/pcm_queue.h"
#include "audio/read_to_file_vars.h"
#include "audio_fixture.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <thread>

using namespace audiotest;
using audio::cLameEncoder;

namespace {

constexpr int kChunkSamples = 1152;  // one MPEG-1 frame of mono audio

// A mono 16-bit 44100 Hz wave file of the given samples (a sweep, so that frames differ).
QByteArray MonoWave(int samples, int seed = 1)
{
    QByteArray data(samples * 2, '\0');
    for (int i = 0; i < samples; ++i) {
        const qint16 v = qint16(8000.0 * std::sin(i * (0.01 + seed * 0.0001 * (i % 500))));
        data[2 * i] = char(v & 0xFF);
        data[2 * i + 1] = char((v >> 8) & 0xFF);
    }
    return Riff(Chunk("fmt ", PcmFormat(1, 44100, 16)) + Chunk("data", data));
}

class LameEncoderTest : public ::testing::Test {
protected:
    void SetUp() override { audio::readToFileVars().reset(); }
    void TearDown() override { audio::readToFileVars().reset(); }
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = dir.filePath(name);
        EXPECT_TRUE(WriteFile(path, bytes));
        return path;
    }
    // Encodes wav into mp3 with the quality given; the progress values seen.
    QList<int> encode(const QString &wav, const QString &mp3, int preset, int bitRate, cLameEncoder *use = nullptr)
    {
        cLameEncoder own;
        cLameEncoder &e = use ? *use : own;
        QList<int> progress;
        e.SetProgress = [&](bool isBatch, int percent) {
            EXPECT_FALSE(isBatch);
            progress << percent;
        };
        e.setWavFile(wav);
        e.setMp3File(mp3);
        e.Re_Initialize(audio::kMp3SampleRate, preset, bitRate);
        e.Encode(false);
        return progress;
    }
    QTemporaryDir dir;
};

} // namespace

struct QualityCase {
    const char *name;
    int preset;
    int bitRate;
};

TEST_F(LameEncoderTest, EveryQualityAndTheOuterBitRatesMakeMonoMp3OfTheWavesLength)
{
    QList<QualityCase> cases;
    for (const audio::Mp3Quality &q : audio::Mp3Qualities())
        cases << QualityCase{q.text, q.preset, audio::BitRates()[q.bitRateRow]};
    cases << QualityCase{"32 kbps", audio::kPresetNormalQuality, 32}
          << QualityCase{"320 kbps", audio::kPresetHighQuality, 320};
    const int samples = 44100 * 3;
    const QString wav = write("in.wav", MonoWave(samples));
    for (const QualityCase &c : cases) {
        SCOPED_TRACE(c.name);
        const QString mp3 = dir.filePath("out.mp3");
        const QList<int> progress = encode(wav, mp3, c.preset, c.bitRate);
        const auto p = FfProbe(mp3);
        EXPECT_EQ(p["codec_name"], "mp3");
        EXPECT_EQ(p["sample_rate"], "44100");
        EXPECT_EQ(p["channels"], "1");
        EXPECT_EQ(p["bit_rate"].toInt(), c.bitRate * 1000);
        EXPECT_NEAR(p["duration"].toDouble(), 3.0, 3.0 * 0.05);
        int exitCode = -1;
        const auto test = RunTool("mpg123", {"-q", "-t", mp3}, &exitCode);
        EXPECT_TRUE(test.has_value());
        EXPECT_EQ(exitCode, 0);
        ASSERT_FALSE(progress.isEmpty());
        EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
        EXPECT_GE(progress.first(), 50);
        EXPECT_EQ(progress.last(), 100);
    }
}

TEST_F(LameEncoderTest, ChunkIsOneFrameAndTheLastFullOrShortChunkIsNotEncoded)
{
    cLameEncoder probe;
    encode(write("tiny.wav", MonoWave(10)), dir.filePath("tiny.mp3"), 0, 128, &probe);
    EXPECT_EQ(probe.samplesPerChunk(), uint32_t(kChunkSamples));
    // Exactly three chunks, and two chunks plus a remainder: both encode two chunks.
    const QByteArray three = MonoWave(3 * kChunkSamples);
    QByteArray twoAndABit = three;
    twoAndABit.chop(2 * (kChunkSamples - 500));
    twoAndABit.replace(40, 4, QByteArray("\x00\x00\x00\x00", 4));
    const uint32_t bytes = (2 * kChunkSamples + 500) * 2;
    for (int i = 0; i < 4; ++i)
        twoAndABit[40 + i] = char((bytes >> (8 * i)) & 0xFF);
    encode(write("three.wav", three), dir.filePath("three.mp3"), 0, 128);
    encode(write("two.wav", twoAndABit), dir.filePath("two.mp3"), 0, 128);
    EXPECT_EQ(ReadFile(dir.filePath("three.mp3")), ReadFile(dir.filePath("two.mp3")));
    // Fewer samples than one chunk: only what the end of the stream delivers, the same as
    // for no samples at all.
    encode(write("empty.wav", MonoWave(0)), dir.filePath("empty.mp3"), 0, 128);
    EXPECT_EQ(ReadFile(dir.filePath("tiny.mp3")), ReadFile(dir.filePath("empty.mp3")));
    EXPECT_LT(ReadFile(dir.filePath("tiny.mp3")).size(), ReadFile(dir.filePath("three.mp3")).size());
}

TEST_F(LameEncoderTest, CancelIsSeenAfterTheFirstChunkAndRemovesTheMp3)
{
    audio::readToFileVars().CancelEncoding = true;
    cLameEncoder e;
    int pumps = 0;
    e.DoEvents = [&] { ++pumps; };
    const QString mp3 = dir.filePath("cancelled.mp3");
    const QList<int> progress = encode(write("in.wav", MonoWave(44100)), mp3, 0, 128, &e);
    EXPECT_EQ(pumps, 1);
    EXPECT_EQ(progress, QList<int>{100});
    EXPECT_FALSE(QFileInfo::exists(mp3));
}

TEST_F(LameEncoderTest, CancelDuringEncodingStopsAtTheNextChunk)
{
    cLameEncoder e;
    int pumps = 0;
    e.DoEvents = [&] {
        if (++pumps == 5)
            audio::readToFileVars().CancelEncoding = true;
    };
    const QString mp3 = dir.filePath("cancelled.mp3");
    encode(write("in.wav", MonoWave(44100)), mp3, 0, 128, &e);
    EXPECT_EQ(pumps, 6);
    EXPECT_FALSE(QFileInfo::exists(mp3));
}

TEST_F(LameEncoderTest, RefusedConfigurationMakesNoFile)
{
    cLameEncoder e;
    const QString mp3 = dir.filePath("refused.mp3");
    e.setWavFile(write("in.wav", MonoWave(5000)));
    e.setMp3File(mp3);
    e.Re_Initialize(1234567, 0, 128);
    e.Encode(false);
    EXPECT_FALSE(QFileInfo::exists(mp3));
    EXPECT_EQ(e.LastError(), "Lame engine not initialised");
}

TEST_F(LameEncoderTest, MissingWaveFileKeepsThePreviousOne)
{
    cLameEncoder e;
    const QString wav = write("in.wav", MonoWave(100));
    e.setWavFile(wav);
    e.setWavFile(dir.filePath("missing.wav"));
    EXPECT_EQ(e.WavFile(), wav);
}

TEST_F(LameEncoderTest, ReInitializeWritesTheWholeRecord)
{
    cLameEncoder e;
    e.setOutputMode(0);
    e.Re_Initialize(22050, 2, 320);
    audio::BE_CONFIG expected;
    expected.dwSampleRate = 22050;
    expected.nPreset = 2;
    expected.dwBitrate = 320;
    EXPECT_TRUE(e.config() == expected);
    EXPECT_EQ(e.OutputMode(), 3);
    EXPECT_EQ(expected.dwConfig, 256u);
    EXPECT_EQ(expected.dwStructSize, 331u);
    EXPECT_EQ(expected.bNoRes, 1);
    EXPECT_EQ(expected.bWriteVBRHeader, 1);
}

TEST_F(LameEncoderTest, UnwritableOutputsLeaveAReasonAndNoCompleteFile)
{
    const QString wav = write("in.wav", MonoWave(44100));
    struct Case {
        const char *name;
        QString mp3;
        QString error;
    };
    for (const Case &c : {Case{"full disk", "/dev/full", "Failed to write buffer to file"},
                          Case{"missing folder", dir.filePath("no/such/out.mp3"), "File not open for writing"}}) {
        SCOPED_TRACE(c.name);
        cLameEncoder e;
        encode(wav, c.mp3, 0, 128, &e);
        EXPECT_EQ(e.LastError(), c.error);
    }
}

TEST_F(LameEncoderTest, WriterChecksCountsAndItsFile)
{
    audio::cMp3Writer w;
    w.setBufferSize(16);
    EXPECT_EQ(w.WriteBufferToFile(4), 0);
    EXPECT_EQ(w.LastErrorCode(), 4);
    const QString out = dir.filePath("w.bin");
    w.setFilename(out);
    EXPECT_EQ(w.WriteBufferToFile(0), 0);
    EXPECT_EQ(w.LastErrorCode(), 4);  // unchanged: a count of 0 is no failure
    EXPECT_EQ(w.WriteBufferToFile(17), 0);
    EXPECT_EQ(w.LastErrorCode(), 3);
    std::fill_n(w.BufferPointer(), 16, 'x');
    EXPECT_EQ(w.WriteBufferToFile(16), 16);
    w.CloseFile();
    EXPECT_EQ(ReadFile(out), QByteArray(16, 'x'));
}

// The encoder fed from a queue while another thread still fills it, in pieces of odd
// sizes, makes exactly the MP3 that the finished wave file makes.
TEST_F(LameEncoderTest, EncodingFromTheQueueMakesTheSameMp3AsFromTheWaveFile)
{
    const int samples = 40 * kChunkSamples + 333;
    const QByteArray wave = MonoWave(samples, 3);
    encode(write("whole.wav", wave), dir.filePath("from-file.mp3"), 0, 128);

    const QByteArray pcm = wave.mid(wave.size() - samples * 2);
    audio::PcmQueue queue;
    cLameEncoder e;
    e.setMp3File(dir.filePath("from-queue.mp3"));
    e.Re_Initialize(audio::kMp3SampleRate, 0, 128);
    std::thread speaking([&] {
        const auto *all = reinterpret_cast<const qint16 *>(pcm.constData());
        for (int at = 0, step = 1; at < samples; at += step, step = step * 7 % 4099 + 1)
            queue.push(all + at, size_t(qMin(step, samples - at)));
        queue.close();
    });
    e.EncodeFrom(queue, false);
    speaking.join();
    EXPECT_EQ(e.samplesEncoded(), 40 * kChunkSamples);
    const QByteArray fromQueue = ReadFile(dir.filePath("from-queue.mp3"));
    EXPECT_GT(fromQueue.size(), 1000);
    EXPECT_EQ(fromQueue, ReadFile(dir.filePath("from-file.mp3")));
}

TEST_F(LameEncoderTest, AnAbortedQueueStopsTheEncoderAndKeepsNoMp3)
{
    audio::PcmQueue queue;
    cLameEncoder e;
    const QString mp3 = dir.filePath("aborted.mp3");
    e.setMp3File(mp3);
    e.Re_Initialize(audio::kMp3SampleRate, 0, 128);
    std::vector<qint16> silence(kChunkSamples * 3, 100);
    queue.push(silence.data(), silence.size());
    std::thread speaking([&] {
        QThread::msleep(50);
        queue.abort();  // the speaking failed: no more samples will come
    });
    e.EncodeFrom(queue, false);
    speaking.join();
    EXPECT_FALSE(QFileInfo::exists(mp3));
}
