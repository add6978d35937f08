// The /proc process listing: names, and the desktop session a process belongs to.
#include "platform/linux/proc_processes.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Starts a copy of sleep under the given name and DISPLAY.
struct NamedSleeper {
    QProcess process;
    NamedSleeper(const QString &program, const QString &display)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        process.setProcessEnvironment(env);
        process.start(program, {QStringLiteral("30")});
        process.waitForStarted();
    }
    ~NamedSleeper() { process.kill(); process.waitForFinished(); }
    qint64 pid() const { return process.processId(); }
};

TEST(ProcProcessesTest, ListsOnlyProcessesOfThisDisplay)
{
    QTemporaryDir dir;
    const QString program = dir.filePath(QStringLiteral("Sonamark-Probe"));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/sleep"), program));
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray savedDisplay = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");

    NamedSleeper ours(program, QStringLiteral(":4242"));
    NamedSleeper other(program, QStringLiteral(":4243"));
    ASSERT_GT(ours.pid(), 0);

    platform::ProcProcesses processes;
    const QList<qint64> found = processes.pidsNamed(QStringLiteral("sonamark-probe"));
    EXPECT_EQ(found, QList<qint64>{ours.pid()});
    EXPECT_EQ(processes.nameOf(other.pid()), QStringLiteral("Sonamark-Probe"));

    EXPECT_TRUE(processes.terminate(ours.pid()));
    ours.process.waitForFinished(2000);
    EXPECT_TRUE(processes.pidsNamed(QStringLiteral("sonamark-probe")).isEmpty());
    qputenv("DISPLAY", savedDisplay);
}

} // namespace
