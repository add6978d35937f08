#include "platform/linux/xclip_clipboard.h"

#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {

Q_LOGGING_CATEGORY(lcXclip, "sonamark.clipboard.xclip", QtWarningMsg)

constexpr int kWaitMs = 3000;  // an owner that has not answered by then gives nothing

QString xclipProgram() { return QStandardPaths::findExecutable(QStringLiteral("xclip")); }

} // namespace

bool XclipClipboard::available()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") && !xclipProgram().isEmpty();
}

QString XclipClipboard::text()
{
    QProcess xclip;
    xclip.start(xclipProgram(), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    if (!xclip.waitForFinished(kWaitMs)) {
        qCWarning(lcXclip) << "xclip did not answer:" << xclip.errorString();
        xclip.kill();
        xclip.waitForFinished();
        return {};
    }
    // A clipboard without text makes xclip fail: that is no text, not a fault.
    return xclip.exitCode() == 0 ? QString::fromUtf8(xclip.readAllStandardOutput()) : QString();
}

void XclipClipboard::setText(const QString &text)
{
    QProcess xclip;
    // xclip forks a server for the selection and returns; its output is not ours.
    xclip.setStandardOutputFile(QProcess::nullDevice());
    xclip.setStandardErrorFile(QProcess::nullDevice());
    xclip.start(xclipProgram(), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")});
    if (!xclip.waitForStarted(kWaitMs)) {
        qCWarning(lcXclip) << "xclip did not start:" << xclip.errorString();
        return;
    }
    xclip.write(text.toUtf8());
    xclip.closeWriteChannel();
    if (!xclip.waitForFinished(kWaitMs))
        qCWarning(lcXclip) << "xclip did not finish:" << xclip.errorString();
}

} // namespace platform
