#include "search/file_walk.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace search {

namespace {

QMutex g_namesMutex;
QHash<QString, QByteArray> g_realNames;  // shown path -> real bytes, for lossy decodings
constexpr qsizetype kRealNamesLimit = 1'000'000;  // a search of many odd names stays bounded

inline unsigned char lowerByte(unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; }

// The order of the file lists: letters alike in either case, then by the bytes.
bool listOrder(const QByteArray &a, const QByteArray &b)
{
    const qsizetype n = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < n; ++i) {
        const unsigned char x = lowerByte(static_cast<unsigned char>(a[i]));
        const unsigned char y = lowerByte(static_cast<unsigned char>(b[i]));
        if (x != y)
            return x < y;
    }
    if (a.size() != b.size())
        return a.size() < b.size();
    return a < b;
}

// One folder being walked: its sub-folders still to enter and its matching files.
struct Frame {
    QByteArray path;
    std::vector<QByteArray> subFolders;
    std::vector<QByteArray> files;
    qsizetype next = 0;  // count of sub-folders still to enter, taken from the back
};

using FolderId = std::pair<dev_t, ino_t>;

// Lists path into frame. False when the folder cannot be read or was listed before.
bool listFolder(const QByteArray &path, const FilePattern &pattern, std::set<FolderId> &seen, Frame &frame,
                WalkResult &result)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        ++result.unreadable;
        return false;
    }
    struct stat self {};
    if (::fstat(fd, &self) != 0 || !seen.insert({self.st_dev, self.st_ino}).second) {
        ::close(fd);
        return false;
    }
    DIR *dir = ::fdopendir(fd);
    if (!dir) {
        ::close(fd);
        ++result.unreadable;
        return false;
    }
    ++result.folders;
    frame.path = path;
    while (const dirent *entry = ::readdir(dir)) {
        const char *name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat target {};
            isFolder = ::fstatat(::dirfd(dir), name, &target, 0) == 0 && S_ISDIR(target.st_mode);
        }
        const QByteArray bytes(name);
        if (isFolder) {
            if (name[0] != '.')
                frame.subFolders.push_back(bytes);
        } else if (pattern.matches(bytes)) {
            frame.files.push_back(bytes);
        }
    }
    ::closedir(dir);
    std::sort(frame.subFolders.begin(), frame.subFolders.end(), listOrder);
    std::sort(frame.files.begin(), frame.files.end(), listOrder);
    frame.next = static_cast<qsizetype>(frame.subFolders.size());
    return true;
}

QByteArray withoutTrailingSlash(QByteArray path)
{
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

} // namespace

QByteArray JoinPath(const QByteArray &folder, const QByteArray &name)
{
    if (folder.endsWith('/'))
        return folder + name;
    return folder + '/' + name;
}

QString JoinPath(const QString &folder, const QString &name)
{
    if (folder.endsWith(QLatin1Char('/')))
        return folder + name;
    return folder + QLatin1Char('/') + name;
}

WalkResult WalkFolder(const QByteArray &root, const FilePattern &pattern, const FileVisitor &visitor,
                      const std::atomic_bool *cancel, qsizetype maxFiles)
{
    WalkResult result;
    std::set<FolderId> seen;
    std::vector<Frame> stack;
    const auto cancelled = [&] { return cancel && cancel->load(std::memory_order_relaxed); };

    Frame first;
    if (root.isEmpty() || !listFolder(withoutTrailingSlash(root), pattern, seen, first, result))
        return result;
    stack.push_back(std::move(first));
    while (!stack.empty()) {
        if (cancelled()) {
            result.cancelled = true;
            return result;
        }
        Frame &top = stack.back();
        if (top.next > 0) {
            --top.next;
            Frame sub;
            if (listFolder(JoinPath(top.path, top.subFolders[size_t(top.next)]), pattern, seen, sub, result))
                stack.push_back(std::move(sub));
            continue;
        }
        for (const QByteArray &file : top.files) {
            if (maxFiles >= 0 && result.files >= maxFiles) {
                result.limitReached = true;
                return result;
            }
            if (cancelled()) {
                result.cancelled = true;
                return result;
            }
            ++result.files;
            if (!visitor(JoinPath(top.path, file))) {
                result.stopped = true;
                return result;
            }
        }
        stack.pop_back();
    }
    return result;
}

FolderListing ListFolder(const QByteArray &folder, const FilePattern &pattern)
{
    FolderListing listing;
    std::set<FolderId> seen;
    Frame frame;
    WalkResult result;
    listing.readable = listFolder(withoutTrailingSlash(folder), pattern, seen, frame, result);
    listing.subFolders = QList<QByteArray>(frame.subFolders.begin(), frame.subFolders.end());
    listing.files = QList<QByteArray>(frame.files.begin(), frame.files.end());
    return listing;
}

QString ShownName(const QByteArray &bytes)
{
    const QString shown = QFile::decodeName(bytes);
    if (QFile::encodeName(shown) != bytes) {
        QMutexLocker lock(&g_namesMutex);
        if (g_realNames.size() < kRealNamesLimit || g_realNames.contains(shown))
            g_realNames.insert(shown, bytes);
    }
    return shown;
}

QByteArray RealFileName(const QString &shown)
{
    {
        QMutexLocker lock(&g_namesMutex);
        const auto it = g_realNames.constFind(shown);
        if (it != g_realNames.constEnd())
            return it.value();
    }
    return QFile::encodeName(shown);
}

} // namespace search
