#include "platform/linux/proc_processes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <signal.h>
#include <unistd.h>

namespace platform {

namespace {

QString processName(const QString &pidDir)
{
    const QString exe = QFile::symLinkTarget(pidDir + QStringLiteral("/exe"));
    if (!exe.isEmpty())
        return QFileInfo(exe).fileName();
    QFile comm(pidDir + QStringLiteral("/comm"));
    if (comm.open(QIODevice::ReadOnly))
        return QString::fromUtf8(comm.readAll()).trimmed();
    return {};
}

} // namespace

QList<qint64> ProcProcesses::pidsNamed(const QString &name) const
{
    QList<qint64> pids;
    const QDir proc(QStringLiteral("/proc"));
    const QStringList entries = proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        if (processName(proc.filePath(entry)).compare(name, Qt::CaseInsensitive) == 0)
            pids.append(pid);
    }
    return pids;
}

bool ProcProcesses::terminate(qint64 pid)
{
    return ::kill(static_cast<pid_t>(pid), SIGTERM) == 0;
}

qint64 ProcProcesses::selfPid() const { return ::getpid(); }

} // namespace platform
