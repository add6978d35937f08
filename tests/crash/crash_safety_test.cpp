// Every data file survives a kill at any moment: after SIGKILL during a save the file
// holds the old or the new version whole, never nothing, a part or a mix.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <map>

namespace {

const QStringList kFiles{"options.def", "Hotkeys.txt", "Hotkeys.his", "exceptions.txt", "FolderHistory.txt",
                         "document.txt"};
constexpr int kKills = 200;

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

bool runOnce(const QString &folder, int version)
{
    return QProcess::execute(QStringLiteral(SONAMARK_CRASH_WRITER),
                             {folder, QStringLiteral("--once"), QString::number(version)}) == 0;
}

} // namespace

TEST(CrashSafety, DataFilesHoldAWholeVersionAfterAKillDuringSaves)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString folder = dir.path();
    std::map<QString, QByteArray> versions[2];
    for (int v : {0, 1}) {
        ASSERT_TRUE(runOnce(folder, v));
        for (const QString &name : kFiles)
            versions[v][name] = readAll(folder + QLatin1Char('/') + name);
    }
    for (const QString &name : kFiles)
        ASSERT_NE(versions[0][name], versions[1][name]) << name.toStdString();

    int sawNew = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        QProcess writer;
        writer.start(QStringLiteral(SONAMARK_CRASH_WRITER), {folder});
        ASSERT_TRUE(writer.waitForStarted());
        QThread::usleep(QRandomGenerator::global()->bounded(2000, 40000));
        ::kill(pid_t(writer.processId()), SIGKILL);
        writer.waitForFinished();
        for (const QString &name : kFiles) {
            const QByteArray now = readAll(folder + QLatin1Char('/') + name);
            const bool whole = now == versions[0][name] || now == versions[1][name];
            ASSERT_TRUE(whole) << name.toStdString() << " after kill " << kill << ": " << now.size() << " bytes";
            sawNew += now == versions[1][name];
        }
    }
    EXPECT_GT(sawNew, 0);  // the kills did land between saves, not only before the first
    // Nothing piles up: besides the files themselves there is at most the one temporary
    // file of each, where a kill interrupted its last save (the next save takes it over).
    QStringList allowed = kFiles;
    for (const QString &name : kFiles)
        allowed << QLatin1Char('.') + name + QStringLiteral(".saving");
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden))
        EXPECT_TRUE(allowed.contains(name)) << name.toStdString();
}
