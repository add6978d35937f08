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

// The X display a process was started for ("" without one). Readable only for our own
// processes, which are the only ones asked about.
QByteArray displayOf(const QString &pidDir)
{
    QFile environ(pidDir + QStringLiteral("/environ"));
    if (!environ.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> entries = environ.readAll().split('\0');
    for (const QByteArray &entry : entries)
        if (entry.startsWith("DISPLAY="))
            return entry.mid(8);
    return {};
}

// Belongs to this desktop session: the same user and the same X display.
bool inOurSession(const QString &pidDir)
{
    if (QFileInfo(pidDir).ownerId() != ::getuid())
        return false;
    return displayOf(pidDir) == qgetenv("DISPLAY");
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
        const QString pidDir = proc.filePath(entry);
        if (processName(pidDir).compare(name, Qt::CaseInsensitive) == 0 && inOurSession(pidDir))
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
