#pragma once
// Port: process listing and termination.
#include <QList>
#include <QString>

namespace platform {

class Processes {
public:
    virtual ~Processes() = default;
    // Process ids whose executable file name equals name, compared without regard to case.
    virtual QList<qint64> pidsNamed(const QString &name) const = 0;
    // The executable file name of a running process, "" when there is none.
    virtual QString nameOf(qint64 pid) const = 0;
    virtual bool terminate(qint64 pid) = 0;
    virtual qint64 selfPid() const = 0;
};

} // namespace platform
