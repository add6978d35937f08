#pragma once
// Previous-instance detection and termination.
#include <QString>

namespace shell {

inline constexpr const char *kExeName = "sonamark";
inline constexpr const char *kLockFileName = "sonamark.lock";

// The first process running under name (compared without regard to case), 0 when none.
// The calling process is not excluded.
qint64 GetEXEProcessID(const QString &name);
// Ends every process running under name, the caller included once the others are gone.
// Always true.
bool TerminateEXE(const QString &name);
// True when another process runs as this program: one named like it other than this
// one, or the process recorded in the lock file of folder.
bool PreviousInstanceRunning(const QString &folder);
// Records this process in the lock file of folder.
void WriteLockFile(const QString &folder);
void RemoveLockFile(const QString &folder);

} // namespace shell
