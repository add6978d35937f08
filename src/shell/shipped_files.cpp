#include "shell/shipped_files.h"

#include "shell/startup.h"

#include <QDir>
#include <QFileInfo>

namespace shell {

QStringList SharedDataFolders(const QString &programFolder)
{
    const QString folder = programFolder.endsWith(QLatin1Char('/')) ? programFolder : programFolder + QLatin1Char('/');
    return {QDir::cleanPath(folder + QStringLiteral("../share/sonamark")), QDir::cleanPath(folder)};
}

QStringList SharedDataFolders() { return SharedDataFolders(ProgramFolder()); }

QString FindShippedFile(const QString &relativePath, const QStringList &folders)
{
    for (const QString &folder : folders) {
        const QString path = QDir(folder).filePath(relativePath);
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

QString FindShippedFile(const QString &relativePath) { return FindShippedFile(relativePath, SharedDataFolders()); }

} // namespace shell
