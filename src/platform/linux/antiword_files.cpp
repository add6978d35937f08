#include "platform/linux/antiword_files.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {
constexpr int kReadTimeoutMs = 30000;  // a document that takes longer is given up
}

AntiwordFiles::AntiwordFiles(QString program)
    : m_program(program.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("antiword")) : program)
{
}

bool AntiwordFiles::installed() const { return !m_program.isEmpty() && QFileInfo(m_program).isExecutable(); }

bool AntiwordFiles::readText(const QString &path, QString *text, QString *error)
{
    if (!installed()) {
        *error = QStringLiteral("antiword is not installed");
        return false;
    }
    QProcess process;
    // -m UTF-8.txt: output encoding; -w 0: a paragraph stays on one line.
    process.start(m_program, {QStringLiteral("-m"), QStringLiteral("UTF-8.txt"), QStringLiteral("-w"),
                              QStringLiteral("0"), QStringLiteral("--"), path});
    if (!process.waitForStarted()) {
        *error = process.errorString();
        return false;
    }
    process.closeWriteChannel();
    if (!process.waitForFinished(kReadTimeoutMs)) {
        process.kill();
        process.waitForFinished();
        *error = QStringLiteral("antiword took too long");
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString why = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
        *error = why.isEmpty() ? QStringLiteral("antiword failed") : why;
        return false;
    }
    QString out = QString::fromUtf8(process.readAllStandardOutput());
    // antiword starts its output with an empty line.
    while (out.startsWith(QLatin1Char('\n')))
        out.remove(0, 1);
    *text = out;
    return true;
}

} // namespace platform
