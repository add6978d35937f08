#include "shell/instance.h"

#include "platform/services.h"
#include "shell/file_util.h"

#include <QFile>
#include <QThread>

namespace shell {

namespace {
constexpr int kTerminateRounds = 200;     // bound on the terminate loop
constexpr int kTerminatePauseMs = 10;     // time for a killed process to go
} // namespace

qint64 GetEXEProcessID(const QString &name)
{
    platform::Processes *processes = platform::services().processes;
    if (!processes)
        return 0;
    const QList<qint64> pids = processes->pidsNamed(name);
    return pids.isEmpty() ? 0 : pids.first();
}

bool TerminateEXE(const QString &name)
{
    platform::Processes *processes = platform::services().processes;
    if (!processes)
        return true;
    // Others first, so that the caller, which the search does not exclude, goes last.
    for (int round = 0; round < kTerminateRounds; ++round) {
        QList<qint64> pids = processes->pidsNamed(name);
        if (pids.isEmpty())
            break;
        const qint64 self = processes->selfPid();
        if (pids.size() > 1)
            pids.removeAll(self);
        for (const qint64 pid : pids)
            processes->terminate(pid);
        QThread::msleep(kTerminatePauseMs);
    }
    return true;
}

bool PreviousInstanceRunning(const QString &folder)
{
    platform::Processes *processes = platform::services().processes;
    if (!processes)
        return false;
    const qint64 self = processes->selfPid();
    const QList<qint64> named = processes->pidsNamed(QLatin1String(kExeName));
    for (const qint64 pid : named)
        if (pid != self)
            return true;
    QFile lock(folder + QLatin1String(kLockFileName));
    if (!lock.open(QIODevice::ReadOnly))
        return false;
    bool ok = false;
    const qint64 recorded = lock.readAll().trimmed().toLongLong(&ok);
    return ok && recorded != self
           && processes->nameOf(recorded).compare(QLatin1String(kExeName), Qt::CaseInsensitive) == 0;
}

void WriteLockFile(const QString &folder)
{
    if (platform::Processes *processes = platform::services().processes)
        WriteFileAtomically(folder + QLatin1String(kLockFileName),
                            QByteArray::number(processes->selfPid()) + '\n');
}

void RemoveLockFile(const QString &folder)
{
    QFile::remove(folder + QLatin1String(kLockFileName));
}

} // namespace shell
