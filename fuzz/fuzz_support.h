#pragma once
// Shared pieces of the fuzz targets: the input as bytes or text, and a data folder in
// memory-backed storage that the file readers can be pointed at.
#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>
#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

// A folder of this process, ending in "/", made once.
inline const QString &folder()
{
    static const QString path = [] {
        const QString base = QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
        const QString p = QStringLiteral("%1/sonamark-fuzz-%2/").arg(base).arg(QCoreApplication::applicationPid());
        QDir().mkpath(p);
        return p;
    }();
    return path;
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(content);
}

[[noreturn]] inline void fail(const char *what)
{
    std::fprintf(stderr, "property broken: %s\n", what);
    std::abort();
}

} // namespace fuzz
