#pragma once
// cWavReader: walks a RIFF wave file once, remembers where its "data" chunk lies and hands
// the chunk's bytes out one fixed buffer at a time. Positions and sizes in its interface
// are in units of four bytes (one stereo 16-bit frame), except BufferStartPosition.
// Failures are silent: a false answer, a Read that yields nothing, and LastError() for
// whoever wants to know the code.
#include <QString>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace audio {

// Codes of the reader's failures.
enum WavError : int {
    kWavNoError = 0,
    kWavOnlyStereo16 = 1,  // raised by nothing: no format field is ever examined
    kWavUnableToOpen = 2,
    kWavNotWave = 3,
    kWavNoFormatChunk = 4,
    kWavFormatReadError = 5,
    kWavNoFileOpen = 6,
    kWavNoMemory = 7,
    kWavPositionOutOfRange = 8,
    kWavBufferSizeLocked = 9,
};
QString WavErrorText(int code);

inline constexpr int32_t kWavDefaultReadBufferBytes = 131072;
inline constexpr int kWavFormatBytes = 18;        // the WAVEFORMATEX head kept from "fmt "
inline constexpr int kWavFormatReadBytes = 50;    // room for the format chunk's contents

class cWavReader {
public:
    cWavReader();
    ~cWavReader();
    cWavReader(const cWavReader &) = delete;
    cWavReader &operator=(const cWavReader &) = delete;

    QString Filename() const { return m_fileName; }
    void setFilename(const QString &name);
    void CloseFile();
    bool OpenFile(const QString &name);
    bool Read();
    int32_t BufferStartPosition();  // bytes, not units
    int32_t AudioLength() const { return m_dataLength / 4; }
    void SeekAbsolute(int32_t position);
    void SeekRelative(int32_t distance);
    int32_t ReadBufferSize() const { return m_readBufferSize / 4; }
    void setReadBufferSize(int32_t units);
    int32_t ReadSize() const { return m_readSize / 4; }
    const char *ReadBufferPtr() const { return m_buffer.get(); }

    bool isOpen() const { return m_file != nullptr; }
    const unsigned char *waveFormat() const { return m_waveFormat; }
    int LastError() const { return m_lastError; }

private:
    bool AllocateBuffer();
    void freeBuffer();
    void pInternalErrorHandler(int code) { m_lastError = code; }

    // RIFF walking on the open file: find the form, find a chunk, step behind a chunk.
    struct Chunk {
        uint32_t id = 0;
        uint32_t size = 0;
        uint32_t formType = 0;
        int64_t dataOffset = 0;
    };
    bool descendRiff(Chunk &riff);
    bool descendChunk(Chunk &chunk);
    void ascend(const Chunk &chunk);
    int64_t position();
    bool seekTo(int64_t offset);
    int64_t readBytes(char *into, int64_t count);

    std::FILE *m_file = nullptr;
    unsigned char m_waveFormat[kWavFormatBytes] = {};
    int32_t m_dataStart = 0;
    int32_t m_dataLength = 0;
    std::unique_ptr<char[]> m_buffer;
    int32_t m_readBufferSize = kWavDefaultReadBufferBytes;
    int32_t m_readSize = 0;
    QString m_fileName;
    int64_t m_fileSize = 0;
    int m_lastError = kWavNoError;
};

} // namespace audio
