#pragma once
#include "platform/processes.h"

namespace platform {

// Process listing over /proc. A process's name is the file name of its executable
// (/proc/PID/exe), falling back to the command name when the link cannot be read.
// pidsNamed lists only the processes of this desktop session (same user, same X
// display), so that another user's or another display's copy is not taken for ours.
class ProcProcesses : public Processes {
public:
    QList<qint64> pidsNamed(const QString &name) const override;
    QString nameOf(qint64 pid) const override;
    bool terminate(qint64 pid) override;
    qint64 selfPid() const override;
};

} // namespace platform
