#pragma once
// web_server.py on 127.0.0.1 for the life of the object: pages in UTF-8, Latin-1 and
// Windows-1252, a binary body, a 404 page, redirects, and a request that is never
// answered (its end is written to the server's log).
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

class LocalWebServer {
public:
    LocalWebServer()
    {
        m_log = m_dir.filePath(QStringLiteral("server.log"));
        m_process.start(QStringLiteral("python3"), {QStringLiteral(SONAMARK_WEB_SERVER_SCRIPT), m_log});
        if (m_process.waitForReadyRead(15000))
            m_port = m_process.readLine().trimmed().toInt();
    }
    ~LocalWebServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    LocalWebServer(const LocalWebServer &) = delete;
    LocalWebServer &operator=(const LocalWebServer &) = delete;

    bool running() const { return m_port > 0; }
    QString url(const QString &path) const { return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path); }

    // Waits up to ms for line to appear in the server's log.
    bool waitForLog(const QString &line, int ms) const
    {
        QElapsedTimer timer;
        timer.start();
        do {
            if (log().contains(line))
                return true;
            QThread::msleep(20);
        } while (timer.elapsed() < ms);
        return false;
    }
    QStringList log() const
    {
        QFile f(m_log);
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    void clearLog() const { QFile::remove(m_log); }

private:
    QTemporaryDir m_dir;
    QString m_log;
    QProcess m_process;
    int m_port = 0;
};
