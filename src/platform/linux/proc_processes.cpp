#include "platform/linux/proc_processes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <signal.h>
#include <unistd.h>

namespace platform {

namespace {

bool isZombie(const QString &pidDir)
{
    QFile stat(pidDir + QStringLiteral("/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype close = line.lastIndexOf(')');
    return close < 0 || line.mid(close + 2, 1) == "Z";
}

QString processName(const QString &pidDir)
{
    if (isZombie(pidDir))
        return {};
    QString exe = QFile::symLinkTarget(pidDir + QStringLiteral("/exe"));
    if (!exe.isEmpty()) {
        // A program replaced on disk while running still counts under its name.
        exe.remove(QStringLiteral(" (deleted)"));
        return QFileInfo(exe).fileName();
    }
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

QString ProcProcesses::nameOf(qint64 pid) const
{
    if (pid <= 0)
        return {};
    return processName(QStringLiteral("/proc/%1").arg(pid));
}

bool ProcProcesses::terminate(qint64 pid)
{
    return ::kill(static_cast<pid_t>(pid), SIGKILL) == 0;
}

qint64 ProcProcesses::selfPid() const { return ::getpid(); }

} // namespace platform
