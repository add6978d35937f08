// cWavReader against WAV files made by sox and against hand-built, broken RIFF files.
#include "audio/wav_reader.h"
#include "audio_fixture.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

using namespace audiotest;
using audio::cWavReader;

namespace {

constexpr int kSmallBufferUnits = 100;  // 400 bytes a read

class WavReaderTest : public ::testing::Test {
protected:
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = dir.filePath(name);
        EXPECT_TRUE(WriteFile(path, bytes));
        return path;
    }
    QTemporaryDir dir;
};

// Every byte the reader hands out, read to the end, with the answers of the reads.
struct Delivered {
    QByteArray bytes;
    QList<bool> answers;
};
Delivered ReadAll(cWavReader &r)
{
    Delivered d;
    int32_t before = r.BufferStartPosition();
    for (int guard = 0; guard < 1000000; ++guard) {
        const bool more = r.Read();
        const int32_t after = r.BufferStartPosition();
        d.bytes.append(r.ReadBufferPtr(), after - before);
        d.answers << more;
        before = after;
        if (!more)
            break;
    }
    return d;
}

QByteArray WaveWithData(const QByteArray &data) { return Riff(Chunk("fmt ", PcmFormat()) + Chunk("data", data)); }

} // namespace

struct SoxFormat {
    const char *name;
    QStringList wavArgs;  // format options of the WAV sox writes
    QStringList rawArgs;  // the same encoding as headerless raw data
};

TEST_F(WavReaderTest, DeliversExactlyTheSampleBytesOfSoxFiles)
{
    const QList<SoxFormat> formats = {
        {"16-bit stereo 44100", {"-r", "44100", "-c", "2", "-b", "16", "-e", "signed-integer"}, {"-e", "signed-integer", "-b", "16"}},
        {"16-bit mono 22050", {"-r", "22050", "-c", "1", "-b", "16", "-e", "signed-integer"}, {"-e", "signed-integer", "-b", "16"}},
        {"8-bit unsigned mono 11025", {"-r", "11025", "-c", "1", "-b", "8", "-e", "unsigned-integer"}, {"-e", "unsigned-integer", "-b", "8"}},
        {"24-bit stereo 48000", {"-r", "48000", "-c", "2", "-b", "24", "-e", "signed-integer"}, {"-e", "signed-integer", "-b", "24"}},
        {"A-law mono 8000", {"-r", "8000", "-c", "1", "-e", "a-law"}, {"-e", "a-law", "-b", "8"}},
        {"u-law mono 8000", {"-r", "8000", "-c", "1", "-e", "u-law"}, {"-e", "u-law", "-b", "8"}},
        {"float stereo 32000", {"-r", "32000", "-c", "2", "-b", "32", "-e", "floating-point"}, {"-e", "floating-point", "-b", "32"}},
    };
    for (const SoxFormat &f : formats) {
        SCOPED_TRACE(f.name);
        const QString wav = dir.filePath(QStringLiteral("sox.wav")), raw = dir.filePath(QStringLiteral("sox.raw"));
        ASSERT_TRUE(RunTool("sox", QStringList{"-n"} + f.wavArgs + QStringList{wav, "synth", "0.37", "sine", "300-900"}).has_value());
        ASSERT_TRUE(RunTool("sox", QStringList{wav, "-t", "raw"} + f.rawArgs + QStringList{raw}).has_value());
        const QByteArray expected = ReadFile(raw);
        ASSERT_GT(expected.size(), 0);
        cWavReader r;
        r.setReadBufferSize(kSmallBufferUnits);
        r.setFilename(wav);
        ASSERT_TRUE(r.isOpen());
        EXPECT_EQ(r.Filename(), wav);
        EXPECT_EQ(r.AudioLength(), expected.size() / 4);
        EXPECT_EQ(ReadAll(r).bytes, expected);
        EXPECT_EQ(r.LastError(), audio::kWavNoError);
    }
}

struct ReadSequenceCase {
    const char *name;
    int dataBytes;
    QList<bool> answers;
    int lastReadSizeUnits;
};

TEST_F(WavReaderTest, ReadAnswersTrueOnlyWhileDataStaysBehindTheBuffer)
{
    const int buffer = kSmallBufferUnits * 4;
    const QList<ReadSequenceCase> cases = {
        {"below one buffer", buffer - 4, {false}, kSmallBufferUnits - 1},
        {"exactly one buffer", buffer, {false}, kSmallBufferUnits},
        {"exactly two buffers", 2 * buffer, {true, false, false}, kSmallBufferUnits},
        {"three buffers and one unit", 3 * buffer + 4, {true, true, true, false}, 1},
        {"empty data chunk", 0, {false}, 0},
    };
    for (const ReadSequenceCase &c : cases) {
        SCOPED_TRACE(c.name);
        const QByteArray data = Ramp(c.dataBytes);
        cWavReader r;
        r.setReadBufferSize(kSmallBufferUnits);
        ASSERT_TRUE(r.OpenFile(write("seq.wav", WaveWithData(data))));
        QList<bool> answers;
        QByteArray got;
        for (int i = 0; i < c.answers.size(); ++i) {
            const int32_t before = r.BufferStartPosition();
            answers << r.Read();
            got.append(r.ReadBufferPtr(), r.BufferStartPosition() - before);
        }
        EXPECT_EQ(answers, c.answers);
        EXPECT_EQ(r.ReadSize(), c.lastReadSizeUnits);
        EXPECT_EQ(got, data);
    }
}

TEST_F(WavReaderTest, EmptyNameIsRefusedWithoutAnErrorAndLeavesNoFileOpen)
{
    cWavReader r;
    ASSERT_TRUE(r.OpenFile(write("a.wav", WaveWithData(Ramp(8)))));
    EXPECT_FALSE(r.OpenFile(QString()));
    EXPECT_FALSE(r.isOpen());
    EXPECT_EQ(r.LastError(), audio::kWavNoError);
    EXPECT_FALSE(r.Read());
    EXPECT_EQ(r.LastError(), audio::kWavNoFileOpen);
}

struct BrokenCase {
    const char *name;
    QByteArray bytes;
    int error;            // expected code when the open fails, 0 when it succeeds
    QByteArray delivered; // bytes handed out when it opens
    int32_t audioLength = 0;
};

TEST_F(WavReaderTest, BrokenFilesAreRefusedWithTheirCodeOrReadSafely)
{
    const QByteArray fmt = Chunk("fmt ", PcmFormat());
    const QByteArray data = Ramp(1000);
    const QList<BrokenCase> cases = {
        {"0-byte file", QByteArray(), audio::kWavNotWave, {}},
        {"truncated RIFF header", QByteArray("RIFF\x10\x00", 6), audio::kWavNotWave, {}},
        {"RIFF of another form", Riff(fmt + Chunk("data", data), "AVI "), audio::kWavNotWave, {}},
        {"text file", QByteArray("hello, this is not a wave file at all\n"), audio::kWavNotWave, {}},
        {"WAVE with nothing in it", Riff(QByteArray()), audio::kWavNoFormatChunk, {}},
        {"missing fmt chunk", Riff(Chunk("data", data)), audio::kWavNoFormatChunk, {}},
        {"data before fmt", Riff(Chunk("data", data) + fmt), audio::kWavNoFileOpen, {}},
        {"no data chunk", Riff(fmt), audio::kWavNoFileOpen, {}},
        {"fmt chunk cut short", Riff(QByteArray("fmt \x10\x00\x00\x00\x01\x00", 10)), audio::kWavNoFileOpen, {}},
        {"data header cut short", Riff(fmt + QByteArray("dat", 3)), audio::kWavNoFileOpen, {}},
        {"fmt chunk stated at 4 GB", Riff(Chunk("fmt ", PcmFormat(), 0xFFFFFFFFu) + Chunk("data", data)), audio::kWavNoFileOpen, {}},
        {"data chunk longer than the file", Riff(fmt + Chunk("data", data, 5000)), 0, data, 1250},
        {"data size field of 4 GB", Riff(fmt + Chunk("data", data, 0xFFFFFFFFu)), 0, {}, 0},
        {"data size field of 2 GB", Riff(fmt + Chunk("data", data, 0x80000000u)), 0, {}, -536870912},
        {"RIFF size field of 4 GB", Riff(fmt + Chunk("data", data), "WAVE", 0xFFFFFFFFu), 0, data, 250},
        {"odd chunk before fmt, padded", Riff(Chunk("LIST", Ramp(17)) + fmt + Chunk("data", data)), 0, data, 250},
        {"odd data chunk", Riff(fmt + Chunk("data", Ramp(999))), 0, Ramp(999), 249},
        {"long fmt chunk", Riff(Chunk("fmt ", PcmFormat() + Ramp(90)) + Chunk("data", data)), 0, data, 250},
        {"junk RIFF in front", Chunk("JUNK", Ramp(33)) + Riff(fmt + Chunk("data", data)), 0, data, 250},
    };
    for (const BrokenCase &c : cases) {
        SCOPED_TRACE(c.name);
        cWavReader r;
        r.setReadBufferSize(kSmallBufferUnits);
        const QString path = write("broken.wav", c.bytes);
        const bool opened = r.OpenFile(path);
        EXPECT_EQ(opened, c.error == 0);
        EXPECT_EQ(r.LastError(), c.error);
        EXPECT_EQ(r.isOpen(), opened);
        if (!opened)
            continue;
        EXPECT_EQ(r.AudioLength(), c.audioLength);
        const Delivered d = ReadAll(r);
        EXPECT_EQ(d.bytes, c.delivered);
        EXPECT_FALSE(d.answers.last());
    }
}

TEST_F(WavReaderTest, MissingFileAndFolderAreUnableToOpen)
{
    for (const QString &name : {dir.filePath("none.wav"), dir.path()}) {
        cWavReader r;
        EXPECT_FALSE(r.OpenFile(name));
        EXPECT_FALSE(r.isOpen());
        EXPECT_NE(r.LastError(), audio::kWavNoError);
    }
}

TEST_F(WavReaderTest, FormatHeadIsKeptAndNotExamined)
{
    QByteArray format = PcmFormat(1, 8000, 8);
    format[0] = char(0x31);  // GSM 6.10: opened all the same
    cWavReader r;
    ASSERT_TRUE(r.OpenFile(write("gsm.wav", Riff(Chunk("fmt ", format) + Chunk("data", Ramp(64))))));
    EXPECT_EQ(QByteArray(reinterpret_cast<const char *>(r.waveFormat()), 16), format);
    EXPECT_EQ(ReadAll(r).bytes, Ramp(64));
}

TEST_F(WavReaderTest, BufferSizeIsLockedWhileAFileIsOpen)
{
    cWavReader r;
    EXPECT_EQ(r.ReadBufferSize(), audio::kWavDefaultReadBufferBytes / 4);
    r.setReadBufferSize(kSmallBufferUnits);
    ASSERT_TRUE(r.OpenFile(write("a.wav", WaveWithData(Ramp(4 * kSmallBufferUnits * 3)))));
    r.setReadBufferSize(7);
    EXPECT_EQ(r.LastError(), audio::kWavBufferSizeLocked);
    EXPECT_EQ(r.ReadBufferSize(), kSmallBufferUnits);
    EXPECT_TRUE(r.Read());
    EXPECT_EQ(r.ReadSize(), kSmallBufferUnits);
    r.CloseFile();
    r.setReadBufferSize(7);
    EXPECT_EQ(r.ReadBufferSize(), 7);
}

TEST_F(WavReaderTest, FailedOpenKeepsThePreviousNameAndClosesTheFile)
{
    cWavReader r;
    const QString good = write("good.wav", WaveWithData(Ramp(40)));
    r.setFilename(good);
    r.setFilename(write("bad.wav", QByteArray("RIFF")));
    EXPECT_EQ(r.Filename(), good);
    EXPECT_FALSE(r.isOpen());
    EXPECT_EQ(r.LastError(), audio::kWavNotWave);
}

TEST_F(WavReaderTest, SeeksCountInUnitsAndCheckTheirRange)
{
    const QByteArray data = Ramp(400);
    cWavReader r;
    r.setReadBufferSize(kSmallBufferUnits);
    ASSERT_TRUE(r.OpenFile(write("a.wav", WaveWithData(data))));
    const int32_t dataStart = 44;
    r.SeekAbsolute(101);  // one unit past the end
    EXPECT_EQ(r.LastError(), audio::kWavPositionOutOfRange);
    EXPECT_EQ(r.BufferStartPosition(), 0);
    r.SeekAbsolute(-1);
    EXPECT_EQ(r.BufferStartPosition(), 0);
    r.SeekAbsolute(90);
    EXPECT_EQ(r.BufferStartPosition(), 360);
    EXPECT_EQ(ReadAll(r).bytes, data.mid(360));
    // The relative seek asks for the position by moving to byte 1 of the file, which lies
    // in front of the data: it refuses, and the file stays at byte 1.
    r.SeekRelative(0);
    EXPECT_EQ(r.LastError(), audio::kWavPositionOutOfRange);
    EXPECT_EQ(r.BufferStartPosition(), 1 - dataStart);
}

TEST_F(WavReaderTest, RandomBytesNeverHangOrCrash)
{
    std::mt19937 random(1717);
    const QByteArray good = WaveWithData(Ramp(900));
    for (int round = 0; round < 400; ++round) {
        QByteArray bytes = good;
        // Damage a few bytes, with a bias to the headers, and sometimes cut the file.
        const int damage = 1 + int(random() % 6);
        for (int i = 0; i < damage; ++i)
            bytes[int(random() % (round % 2 ? 48 : bytes.size()))] = char(random());
        if (round % 3 == 0)
            bytes.truncate(int(random() % bytes.size()));
        cWavReader r;
        r.setReadBufferSize(int32_t(1 + random() % 300));
        if (r.OpenFile(write("random.wav", bytes))) {
            const Delivered d = ReadAll(r);
            EXPECT_FALSE(d.answers.last());
            EXPECT_LE(d.bytes.size(), bytes.size());
        }
    }
}
