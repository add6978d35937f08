// libFuzzer target for cWavReader and the MP3 encoder behind it. The input is written to a
// file (the reader works on files), its first byte choosing the read buffer size. Besides
// crashes, hangs and sanitizer reports it checks that Read ends within the reads the file
// can fill and never hands out more bytes than the file holds, and that encoding the file
// leaves an MP3 no bigger than the encoder's worst case.
//
// The encoder runs only on files whose sound fills at least one of its chunks: on the
// others it would only start and end a LAME stream, which costs more than everything
// else done with the input and reaches nothing new.
#include "audio/lame_encoder.h"
#include "audio/wav_reader.h"
#include "fuzz_support.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

namespace {

// The encoder's chunk at 44,100 Hz: one 1,152-sample frame of each channel, 16-bit.
constexpr int64_t kEncoderChunkBytes = 1152 * 2 * 2;

QString ScratchName(const char *ending) { return fuzz::folder() + QLatin1String("wav-fuzz") + QLatin1String(ending); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const int32_t bufferUnits = 1 + data[0] % 64;
    const QString wav = ScratchName(".wav");
    {
        QFile f(wav);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        f.write(reinterpret_cast<const char *>(data + 1), qint64(size - 1));
    }
    const int64_t fileSize = int64_t(size - 1);

    audio::cWavReader reader;
    reader.setReadBufferSize(bufferUnits);
    if (!reader.OpenFile(wav)) {
        QFile::remove(wav);
        return 0;
    }
    int64_t delivered = 0;
    const int64_t maxReads = fileSize / (bufferUnits * 4) + 2;
    int64_t reads = 0;
    int32_t before = reader.BufferStartPosition();
    bool more = true;
    while (more) {
        more = reader.Read();
        const int32_t after = reader.BufferStartPosition();
        delivered += after - before;
        before = after;
        if (++reads > maxReads || delivered > fileSize) {
            std::fprintf(stderr, "reads %lld, bytes %lld of a %lld-byte file\n", (long long)reads,
                         (long long)delivered, (long long)fileSize);
            std::abort();
        }
    }

    if (delivered < kEncoderChunkBytes) {
        QFile::remove(wav);
        return 0;
    }
    const QString mp3 = ScratchName(".mp3");
    audio::cLameEncoder encoder;
    encoder.setWavFile(wav);
    encoder.setMp3File(mp3);
    encoder.Re_Initialize(audio::kMp3SampleRate, audio::kPresetLowQuality, 32);
    encoder.Encode(false);
    // At most one output buffer a chunk, and the file holds at most size / 2 samples.
    const int64_t chunks = fileSize / 2 / 1152 + 2;
    if (QFileInfo(mp3).size() > chunks * (1152 * 5 / 4 + 7200)) {
        std::fprintf(stderr, "MP3 of %lld bytes from %lld\n", (long long)QFileInfo(mp3).size(), (long long)fileSize);
        std::abort();
    }
    QFile::remove(mp3);
    QFile::remove(wav);
    return 0;
}
