#pragma once
// CondensedPath: a long path shortened for a caption, its head and tail kept around "..".
#include <QString>

namespace shell {

// A path of at most width characters comes back as it is; a longer one keeps its head
// up to a "/" and its tail from the last "/".
QString CondensedPath(const QString &path, int width);

} // namespace shell
