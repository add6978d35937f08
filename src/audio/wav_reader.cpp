#include "audio/wav_reader.h"

#include <QFile>
#include <algorithm>
#include <new>

namespace audio {

namespace {

// The largest block AllocateBuffer asks for (four times the read buffer): a bigger
// request counts as insufficient memory.
constexpr int64_t kMaxBufferBlockBytes = int64_t(1) << 30;
constexpr int kChunkHeaderBytes = 8;

constexpr uint32_t FourCC(const char (&code)[5])
{
    return uint32_t(uint8_t(code[0])) | uint32_t(uint8_t(code[1])) << 8 | uint32_t(uint8_t(code[2])) << 16
         | uint32_t(uint8_t(code[3])) << 24;
}
constexpr uint32_t kRiff = FourCC("RIFF");
constexpr uint32_t kWave = FourCC("WAVE");
constexpr uint32_t kFmt = FourCC("fmt ");
constexpr uint32_t kData = FourCC("data");

uint32_t LittleEndian32(const unsigned char *p)
{
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

// Chunks are padded to an even length.
int64_t PaddedSize(uint32_t size) { return (int64_t(size) + 1) & ~int64_t(1); }

} // namespace

QString WavErrorText(int code)
{
    switch (code) {
    case kWavOnlyStereo16: return QStringLiteral("Only stereo 16 bit wave files supported.");
    case kWavUnableToOpen: return QStringLiteral("Unable to open file.");
    case kWavNotWave: return QStringLiteral("Not a Wave file.");
    case kWavNoFormatChunk: return QStringLiteral("Unable to retrieve format chunk");
    case kWavFormatReadError: return QStringLiteral("Error reading format");
    case kWavNoFileOpen: return QStringLiteral("No Wave File Open");
    case kWavNoMemory: return QStringLiteral("Insufficient memory");
    case kWavPositionOutOfRange: return QStringLiteral("Position out of range");
    case kWavBufferSizeLocked: return QStringLiteral("Cannot change buffer size whilst a file is open.");
    default: return QString();
    }
}

cWavReader::cWavReader() = default;

cWavReader::~cWavReader() { CloseFile(); }

void cWavReader::setFilename(const QString &name)
{
    if (OpenFile(name))
        m_fileName = name;
}

void cWavReader::CloseFile()
{
    if (!m_file)
        return;
    std::fclose(m_file);
    m_file = nullptr;
    freeBuffer();
    m_readSize = 0;
    m_dataStart = 0;
    m_dataLength = 0;
    m_fileSize = 0;
}

bool cWavReader::OpenFile(const QString &name)
{
    CloseFile();
    if (name.isEmpty())
        return false;
    m_file = std::fopen(QFile::encodeName(name).constData(), "rb");
    if (!m_file || std::fseek(m_file, 0, SEEK_END) != 0 || (m_fileSize = ftello(m_file)) < 0
        || std::fseek(m_file, 0, SEEK_SET) != 0) {
        if (m_file)
            std::fclose(m_file);
        m_file = nullptr;
        pInternalErrorHandler(kWavUnableToOpen);
        return false;
    }
    Chunk parent;
    if (!descendRiff(parent)) {
        CloseFile();
        pInternalErrorHandler(kWavNotWave);
        return false;
    }
    Chunk chunk;
    chunk.id = kFmt;
    if (!descendChunk(chunk)) {
        CloseFile();
        pInternalErrorHandler(kWavNoFormatChunk);
        return false;
    }
    // A format chunk longer than the buffer is cut to it; the rest is stepped over.
    char format[kWavFormatReadBytes] = {};
    if (readBytes(format, std::min<int64_t>(chunk.size, kWavFormatReadBytes)) < 0) {
        CloseFile();
        pInternalErrorHandler(kWavFormatReadError);
        return false;
    }
    ascend(chunk);
    std::copy_n(format, kWavFormatBytes, reinterpret_cast<char *>(m_waveFormat));
    chunk = Chunk();
    chunk.id = kData;
    // The search goes on from behind the format chunk: a "data" chunk in front of it is
    // not found.
    if (!descendChunk(chunk) || chunk.dataOffset > INT32_MAX) {
        CloseFile();
        pInternalErrorHandler(kWavNoFileOpen);
        return false;
    }
    m_dataStart = int32_t(chunk.dataOffset);
    m_dataLength = int32_t(chunk.size);  // a size field of 2 GB or more turns negative
    if (!AllocateBuffer()) {
        CloseFile();
        pInternalErrorHandler(kWavNoMemory);
        return false;
    }
    return true;
}

bool cWavReader::Read()
{
    if (!m_file) {
        pInternalErrorHandler(kWavNoFileOpen);
        return false;
    }
    // The data chunk ends where its header says, or at the end of the file when that
    // comes first, so that a chunk longer than the file cannot keep Read answering true.
    const int64_t dataEnd = std::min<int64_t>(int64_t(m_dataStart) + m_dataLength, m_fileSize);
    const int64_t remaining = dataEnd - position();
    if (m_readBufferSize < remaining) {
        const int64_t got = readBytes(m_buffer.get(), m_readBufferSize);
        m_readSize = m_readBufferSize;
        return got == m_readBufferSize;  // a failing disk ends the data too
    }
    if (remaining > 0) {
        readBytes(m_buffer.get(), remaining);
        m_readSize = int32_t(remaining);
    }
    return false;
}

int32_t cWavReader::BufferStartPosition() { return int32_t(position() - m_dataStart); }

void cWavReader::SeekAbsolute(int32_t position)
{
    if (int64_t(position) * 4 > m_dataLength || position < 0) {
        pInternalErrorHandler(kWavPositionOutOfRange);
        return;
    }
    seekTo(int64_t(position) * 4 + m_dataStart);
}

void cWavReader::SeekRelative(int32_t distance)
{
    // The position is asked for by a seek to byte 1 of the file, which moves there.
    const int64_t asked = seekTo(1) ? 1 : -1;
    const int64_t current = asked - m_dataStart;
    const int64_t step = int64_t(distance) * 4;
    if (current + step > m_dataLength || current - step < 0) {
        pInternalErrorHandler(kWavPositionOutOfRange);
        return;
    }
    if (m_file)
        seekTo(position() + step);
}

void cWavReader::setReadBufferSize(int32_t units)
{
    if (m_file) {
        pInternalErrorHandler(kWavBufferSizeLocked);
        return;
    }
    m_readBufferSize = int32_t(std::clamp<int64_t>(int64_t(units) * 4, INT32_MIN, INT32_MAX));
}

bool cWavReader::AllocateBuffer()
{
    freeBuffer();
    const int64_t block = int64_t(m_readBufferSize) * 4;
    if (block <= 0 || block > kMaxBufferBlockBytes)
        return false;
    m_buffer.reset(new (std::nothrow) char[size_t(block)]());
    return m_buffer != nullptr;
}

void cWavReader::freeBuffer() { m_buffer.reset(); }

bool cWavReader::descendRiff(Chunk &riff)
{
    for (;;) {
        unsigned char head[kChunkHeaderBytes + 4];
        const int64_t start = position();
        if (readBytes(reinterpret_cast<char *>(head), kChunkHeaderBytes) != kChunkHeaderBytes)
            return false;
        riff.id = LittleEndian32(head);
        riff.size = LittleEndian32(head + 4);
        riff.dataOffset = start + kChunkHeaderBytes;
        if (riff.id == kRiff) {
            if (readBytes(reinterpret_cast<char *>(head + kChunkHeaderBytes), 4) != 4)
                return false;
            riff.formType = LittleEndian32(head + kChunkHeaderBytes);
            if (riff.formType == kWave)
                return true;
        }
        if (!seekTo(riff.dataOffset + PaddedSize(riff.size)))
            return false;
    }
}

bool cWavReader::descendChunk(Chunk &chunk)
{
    for (;;) {
        unsigned char head[kChunkHeaderBytes];
        const int64_t start = position();
        if (readBytes(reinterpret_cast<char *>(head), kChunkHeaderBytes) != kChunkHeaderBytes)
            return false;
        const uint32_t id = LittleEndian32(head);
        const uint32_t size = LittleEndian32(head + 4);
        if (id == chunk.id) {
            chunk.size = size;
            chunk.dataOffset = start + kChunkHeaderBytes;
            return true;
        }
        if (!seekTo(start + kChunkHeaderBytes + PaddedSize(size)))
            return false;
    }
}

void cWavReader::ascend(const Chunk &chunk) { seekTo(chunk.dataOffset + PaddedSize(chunk.size)); }

int64_t cWavReader::position() { return m_file ? int64_t(ftello(m_file)) : -1; }

bool cWavReader::seekTo(int64_t offset)
{
    return m_file && offset >= 0 && fseeko(m_file, off_t(offset), SEEK_SET) == 0;
}

int64_t cWavReader::readBytes(char *into, int64_t count)
{
    if (count <= 0)
        return 0;
    const size_t got = std::fread(into, 1, size_t(count), m_file);
    if (got < size_t(count) && std::ferror(m_file)) {
        std::clearerr(m_file);
        return -1;
    }
    return int64_t(got);
}

} // namespace audio
