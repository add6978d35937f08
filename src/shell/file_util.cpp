#include "shell/file_util.h"

#include <QFileInfo>
#include <QSaveFile>

namespace shell {

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
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (file.write(data) != data.size()) {
        const QString error = file.errorString();
        file.cancelWriting();
        return error;
    }
    if (!file.commit())
        return file.errorString();
    return {};
}

} // namespace shell
