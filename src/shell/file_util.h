#pragma once
#include <QString>

namespace shell {

// True when path is not empty and names an existing file or folder.
bool FileExists(const QString &path);
// True when path names an existing folder.
bool FolderExists(const QString &path);
// Writes data to path atomically (beside, then rename). Returns "" or an error text.
QString WriteFileAtomically(const QString &path, const QByteArray &data);

} // namespace shell
