#include "platform/qt/qt_desktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace platform {

namespace {
const QString kUrlOpener = QStringLiteral("xdg-open");
}

bool QtDesktop::openUrl(const QString &url)
{
    // xdg-open itself, not QDesktopServices: the same handler whatever platform plugin
    // the program runs on (offscreen has none).
    if (!canOpenUrls())
        return QDesktopServices::openUrl(QUrl(url, QUrl::TolerantMode));
    return QProcess::startDetached(kUrlOpener, {QUrl(url, QUrl::TolerantMode).toString(QUrl::FullyEncoded)});
}

bool QtDesktop::canOpenUrls() const { return !QStandardPaths::findExecutable(kUrlOpener).isEmpty(); }

bool QtDesktop::startDetached(const QString &program, const QStringList &args, const QString &workDir)
{
    return QProcess::startDetached(program, args, workDir);
}

bool QtDesktop::runAndWait(const QString &program, const QStringList &args, const QString &workDir)
{
    QProcess process;
    process.setWorkingDirectory(workDir);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, args);
    if (!process.waitForStarted())
        return false;
    // Wait without limit. The user cannot reach our windows meanwhile (their input is
    // held back), but the event loop keeps serving X: a blocked GUI thread would leave
    // our clipboard data unpasteable in other programs, the help viewer included, and
    // the window manager would mark the program as not responding.
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    return true;
}

} // namespace platform
