#pragma once
// Hotkeys.his: the last Hotkeys files used, most recent first, at most five.
#include <QString>
#include <QStringList>

namespace hotkeys {

inline constexpr int kHistorySize = 5;
inline const QString kHistoryFileName = QStringLiteral("Hotkeys.his");

// Reads the history from AppFolder: a missing file is created empty; blank lines are
// skipped; lines for files that are gone and repeats (ignoring case) are dropped, and
// then the file is rewritten at once.
QStringList ReadFileHistory();
// Rewrites the history whole; errors are ignored.
void WriteFileHistory(const QStringList &paths);
// The history after a load or save of current: current first, then the others in
// their order (exact comparison), at most five in all. Writes the file.
QStringList UpdateFileHistory(const QStringList &paths, const QString &current);

} // namespace hotkeys
