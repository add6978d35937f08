#include "audio/mp3_writer.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace audio {

namespace {
constexpr int32_t kMaxBufferBytes = 64 * 1024 * 1024;
}

cMp3Writer::~cMp3Writer()
{
    freeBuffer();
    CloseFile();
}

QString cMp3Writer::LastError() const
{
    switch (m_lastError) {
    case 1: return QStringLiteral("Unable to allocate output buffer for writing");
    case 2: return QStringLiteral("Unable to open file for writing");
    case 3: return QStringLiteral("Cannot write more data than is available in the buffer");
    case 4: return QStringLiteral("File not open for writing");
    case 5: return QStringLiteral("Failed to write buffer to file");
    default: return QString();
    }
}

void cMp3Writer::CloseFile()
{
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

void cMp3Writer::setFilename(const QString &name)
{
    CloseFile();
    m_fileName = name;
    if (!m_memoryHandle && !AllocateBuffer(m_bufferSize))
        return;
    m_fd = OpenFile(name);
}

void cMp3Writer::setBufferSize(int32_t size)
{
    freeBuffer();
    m_bufferSize = AllocateBuffer(size) ? size : 0;
}

int32_t cMp3Writer::WriteBufferToFile(int32_t count)
{
    if (count > m_bufferSize) {
        errHandler(3);
        return 0;
    }
    if (m_fd < 0 || !m_buffer) {
        errHandler(4);
        return 0;
    }
    int32_t written = 0;
    while (written < count) {
        const ssize_t n = ::write(m_fd, m_buffer.get() + written, size_t(count - written));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        written += int32_t(n);
    }
    if (written != count)
        errHandler(5);
    return written;
}

int cMp3Writer::OpenFile(const QString &name)
{
    const int fd = ::open(QFile::encodeName(name).constData(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        errHandler(2);
    return fd < 0 ? -1 : fd;
}

bool cMp3Writer::AllocateBuffer(int32_t size)
{
    if (size <= 0 || size > kMaxBufferBytes) {
        errHandler(1);
        return false;
    }
    m_buffer.reset(new (std::nothrow) unsigned char[size_t(size)]());
    m_memoryHandle = true;
    if (!m_buffer) {
        freeBuffer();
        errHandler(1);
        return false;
    }
    return true;
}

void cMp3Writer::freeBuffer() { m_buffer.reset(); }

} // namespace audio
