#pragma once
// The recursive file search over a folder tree, on the file system's own names (bytes).
#include "search/file_pattern.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <atomic>
#include <functional>

namespace search {

// What a walk came to.
struct WalkResult {
    qsizetype files = 0;      // matches handed to the visitor
    qsizetype folders = 0;    // folders listed
    qsizetype unreadable = 0; // folders that could not be listed, and were left out
    bool cancelled = false;
    bool limitReached = false;
    bool stopped = false;     // the visitor asked to stop
};

// Called with the full path of each match, as the file system spells it. Answer false
// to end the walk.
using FileVisitor = std::function<bool(const QByteArray &path)>;

// Walks the tree below root. Sub-folders are taken from the last to the first (names in
// the file list's order: letters in either case alike), and a folder's files come after
// those of all its sub-folders, first to last. Hidden folders (".name") are not entered.
// A symbolic link to a folder is followed, but no folder is listed twice, so links
// that loop end there. Folders that cannot be read are counted and left out. cancel is
// looked at between folders and between files; maxFiles (below 0: none) ends the walk
// with limitReached once that many matches were given.
WalkResult WalkFolder(const QByteArray &root, const FilePattern &pattern, const FileVisitor &visitor,
                      const std::atomic_bool *cancel = nullptr, qsizetype maxFiles = -1);

// One folder's own listing, as the folder and file lists show it.
struct FolderListing {
    bool readable = false;
    QList<QByteArray> subFolders;  // names, in list order, hidden ones left out
    QList<QByteArray> files;       // names that match the pattern, in list order
};
FolderListing ListFolder(const QByteArray &folder, const FilePattern &pattern);

// The folder part of a found path joined to a name: "/" + "a" is "/a", "/x" + "a" is "/x/a".
QByteArray JoinPath(const QByteArray &folder, const QByteArray &name);
QString JoinPath(const QString &folder, const QString &name);

// A path as the lists show it: decoded as Qt's local 8-bit does. A name that does not
// survive the decoding (bytes that are not UTF-8) is remembered with its real bytes.
QString ShownName(const QByteArray &bytes);
// The real bytes of a path shown by ShownName, or the path's plain encoding.
QByteArray RealFileName(const QString &shown);

} // namespace search
