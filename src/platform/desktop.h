#pragma once
// Port: starting other programs and opening addresses.
#include <QString>
#include <QStringList>

namespace platform {

class Desktop {
public:
    virtual ~Desktop() = default;
    // Opens a URL (mailto:, http:, a file) with the user's handler. False on failure.
    virtual bool openUrl(const QString &url) = 0;
    // False when the program that opens URLs is not installed at all.
    virtual bool canOpenUrls() const { return true; }
    virtual bool startDetached(const QString &program, const QStringList &args,
                               const QString &workDir) = 0;
    // Starts a program and waits until it ends, keeping the event loop alive.
    // False when it could not be started.
    virtual bool runAndWait(const QString &program, const QStringList &args,
                            const QString &workDir) = 0;
};

} // namespace platform
