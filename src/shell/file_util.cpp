#include "shell/file_util.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace shell {

namespace {

// Every save of a file goes through one temporary file with a fixed name beside it, so a
// save cut off by a kill leaves at most that one file behind, and the next save of the
// same file takes it over instead of piling up more.
QString temporaryNameFor(const QString &path)
{
    const QFileInfo info(path);
    return info.dir().filePath(QLatin1Char('.') + info.fileName() + QLatin1String(".saving"));
}

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Closes the descriptor when the save ends, whichever way it ends.
struct FdCloser {
    int fd;
    ~FdCloser()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

// Opens and locks the temporary file. Another process saving the same file at the same
// moment holds the lock; once it has renamed the file away we open the name afresh.
int openLockedTemporary(const QByteArray &tmp, mode_t mode)
{
    for (;;) {
        const int fd = ::open(tmp.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, mode);
        if (fd < 0 || ::flock(fd, LOCK_EX) != 0) {
            if (fd >= 0)
                ::close(fd);
            return -1;
        }
        struct stat held {}, named {};
        if (::fstat(fd, &held) == 0 && ::stat(tmp.constData(), &named) == 0 && held.st_ino == named.st_ino
            && held.st_dev == named.st_dev)
            return fd;
        ::close(fd);
    }
}

bool writeAll(int fd, const QByteArray &data)
{
    const char *p = data.constData();
    qsizetype left = data.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, size_t(left));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        p += n;
        left -= n;
    }
    return true;
}

} // namespace

bool FileExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo::exists(path);
}

bool FolderExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

QString WriteFileAtomically(const QString &path, const QByteArray &data)
{
    // A link is saved through: the file it points at is replaced, the link stays.
    QByteArray final = QFile::encodeName(path);
    struct stat existing {};
    bool replaces = ::lstat(final.constData(), &existing) == 0;
    if (replaces && S_ISLNK(existing.st_mode)) {
        replaces = ::stat(final.constData(), &existing) == 0;
        if (replaces)
            final = QFile::encodeName(QFileInfo(path).canonicalFilePath());
    }
    const QByteArray tmp = QFile::encodeName(temporaryNameFor(QFile::decodeName(final)));
    const mode_t mode = replaces ? (existing.st_mode & 07777) : 0666;

    FdCloser file{openLockedTemporary(tmp, mode)};
    if (file.fd < 0)
        return lastError();
    const bool written = ::ftruncate(file.fd, 0) == 0 && writeAll(file.fd, data) && ::fsync(file.fd) == 0
                         && (!replaces || ::fchmod(file.fd, mode) == 0);
    if (!written || ::rename(tmp.constData(), final.constData()) != 0) {
        const QString error = lastError();
        ::unlink(tmp.constData());
        return error;
    }
    return {};
}

} // namespace shell
