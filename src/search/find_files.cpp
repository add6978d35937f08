#include "search/find_files.h"

#include "macro/variables.h"
#include "platform/services.h"
#include "search/file_walk.h"
#include "shell/failure_report.h"
#include "shell/file_util.h"
#include "shell/legacy_text.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>

#include <fcntl.h>
#include <unistd.h>

namespace search {

namespace {
FindFilesState g_state;
FindFilesOpener g_opener;
} // namespace

void FindFilesState::reset() { *this = FindFilesState(); }

void FindFilesState::select(const QStringList &files, const QList<QByteArray> &paths)
{
    SelectedFiles = files;
    SelectedPaths = paths;
    while (SelectedPaths.size() < SelectedFiles.size())
        SelectedPaths << RealFileName(SelectedFiles.at(SelectedPaths.size()));
    SelectedCount = int(SelectedFiles.size());
}

FindFilesState &findFilesState() { return g_state; }

void SetFindFilesOpener(FindFilesOpener opener) { g_opener = std::move(opener); }

bool HasFindFilesOpener() { return bool(g_opener); }

QString WithTrailingSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

QString JoinSelection(const QStringList &files) { return files.join(QStringLiteral("\r\n")); }

QString FindFiles(QString &startPath, QString &outFile, const QString &selection)
{
    shell::Routine routine("(Module) modHotkeys::Function FindFiles");
    if (!g_opener)
        return QLatin1String(kNoFileFinderMessage);
    FindFilesState &state = g_state;
    state.SelectedCount = 0;
    state.SelectedFiles.clear();
    state.SelectedPaths.clear();
    if (!startPath.isEmpty()) {
        startPath = WithTrailingSlash(startPath);
        state.LastFolder = startPath;
        QDir::setCurrent(startPath);  // a folder that is not there leaves the directory as it was
    } else {
        state.LastFolder = WithTrailingSlash(QDir::currentPath());
    }
    g_opener();

    if (state.SelectedCount == 0) {
        macro::SetVarVal(selection, QString());
        return {};
    }
    const QStringList files = state.SelectedFiles.mid(0, qMax(0, state.SelectedCount));
    const QString joined = JoinSelection(files);
    if (selection.toUpper() == QLatin1String(kReaderTextSelection)) {
        if (platform::ReaderText *reader = platform::services().readerText)
            reader->setText(joined);
        return {};
    }
    if (!outFile.isEmpty()) {
        QString text;
        for (const QString &file : files)
            text += file + QStringLiteral("\r\n");
        if (!shell::WriteFileAtomically(outFile, shell::EncodeText(text)).isEmpty())
            return QLatin1String(kOutputFileError);
    }
    try {
        macro::SetVarVal(selection, joined);
    } catch (...) {
        return QLatin1String(kVariableError);
    }
    return {};
}

bool OpenFoundFile(QFile &file, const QString &shown, int openMode)
{
    const QByteArray bytes = RealFileName(shown);
    int flags = O_CLOEXEC;
    const auto mode = QIODevice::OpenMode(openMode);
    if ((mode & QIODevice::ReadWrite) == QIODevice::ReadWrite)
        flags |= O_RDWR;
    else if (mode & QIODevice::WriteOnly)
        flags |= O_WRONLY;
    else
        flags |= O_RDONLY;
    const int fd = ::open(bytes.constData(), flags);
    if (fd < 0)
        return false;
    if (!file.open(fd, mode, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    return true;
}

QString SelectQuestion(int selectedRows, int rows)
{
    if (selectedRows == 1)
        return QStringLiteral("Select this file?");
    return QStringLiteral("Select these %1 files?").arg(selectedRows > 1 ? selectedRows : rows);
}

QString NextCountCaption(const QString &caption)
{
    return QLatin1Char(' ') + QString::number(caption.trimmed().toLongLong() + 1);
}

void SelectRows(const QStringList &rows, const QList<QByteArray> &rowBytes, const QList<int> &selectedRows,
                const QString &prefix)
{
    QStringList files;
    QList<QByteArray> paths;
    const QByteArray bytePrefix = RealFileName(prefix);
    const auto take = [&](int row) {
        files << prefix + rows.at(row);
        paths << (row < rowBytes.size() ? bytePrefix + rowBytes.at(row) : RealFileName(prefix + rows.at(row)));
    };
    if (selectedRows.isEmpty()) {
        for (int row = 0; row < rows.size(); ++row)
            take(row);
    } else {
        for (const int row : selectedRows)
            if (row >= 0 && row < rows.size())
                take(row);
    }
    g_state.select(files, paths);
}

QStringList DriveList(const QStringList &mountPoints, const QString &home)
{
    QStringList drives{QStringLiteral("/")};
    if (!home.isEmpty() && home != QLatin1String("/"))
        drives << home;
    for (const QString &mount : mountPoints) {
        const bool removable = mount.startsWith(QLatin1String("/media/")) || mount.startsWith(QLatin1String("/run/media/"));
        if (removable && !drives.contains(mount))
            drives << mount;
    }
    return drives;
}

QStringList MountedDrives()
{
    QStringList mounts;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady())
            mounts << volume.rootPath();
    mounts.sort();
    return DriveList(mounts, QDir::homePath());
}

} // namespace search
