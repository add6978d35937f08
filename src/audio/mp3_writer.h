#pragma once
// cMp3Writer: the encoder's output side, one fixed buffer that the encoder fills and the
// file the buffer is written to. Failures are silent; LastError() keeps the last text.
#include <QString>
#include <cstdint>
#include <memory>

namespace audio {

inline constexpr int32_t kMp3WriterDefaultBufferSize = 8192;

class cMp3Writer {
public:
    cMp3Writer() = default;
    ~cMp3Writer();
    cMp3Writer(const cMp3Writer &) = delete;
    cMp3Writer &operator=(const cMp3Writer &) = delete;

    void CloseFile();
    // Closes, stores the name, makes the buffer if there never was one, and creates or
    // empties the file.
    void setFilename(const QString &name);
    QString Filename() const { return m_fileName; }
    int32_t BufferSize() const { return m_bufferSize; }
    void setBufferSize(int32_t size);
    unsigned char *BufferPointer() const { return m_buffer.get(); }
    // Writes count bytes of the buffer; the bytes written, 0 on refusal.
    int32_t WriteBufferToFile(int32_t count);

    bool isOpen() const { return m_fd >= 0; }
    int LastErrorCode() const { return m_lastError; }
    QString LastError() const;

private:
    int OpenFile(const QString &name);
    bool AllocateBuffer(int32_t size);
    void freeBuffer();
    void errHandler(int code) { m_lastError = code; }

    bool m_memoryHandle = false;  // a block was allocated once; kept after freeBuffer
    std::unique_ptr<unsigned char[]> m_buffer;
    QString m_fileName;
    int32_t m_bufferSize = kMp3WriterDefaultBufferSize;
    int m_fd = -1;
    int m_lastError = 0;
};

} // namespace audio
