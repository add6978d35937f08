#pragma once
// The documents of the batch tests: twenty in one folder, of every kind the batch reads,
// with one empty and one that cannot be read as text.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace batchtest {

struct Corpus {
    QStringList files;      // in the order they are handed to the batch
    QStringList converted;  // those that must get an MP3
    QStringList skipped;    // the empty one and the unreadable one
};

inline bool Write(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// Fills folder; wordDoc is a real Word 97 file to copy in.
inline Corpus MakeCorpus(const QString &folder, const QString &wordDoc)
{
    Corpus c;
    const QDir dir(folder);
    auto add = [&](const QString &name, const QByteArray &bytes, bool converts) {
        const QString path = dir.filePath(name);
        Write(path, bytes);
        c.files << path;
        (converts ? c.converted : c.skipped) << path;
    };
    for (int i = 1; i <= 8; ++i)
        add(QStringLiteral("note%1.txt").arg(i),
            QStringLiteral("Note %1 of the batch. The reader speaks it into a file.\r\n").arg(i).toUtf8(), true);
    add(QStringLiteral("Upper.TXT"), "An upper case ending still counts as text.\r\n", true);
    for (int i = 1; i <= 4; ++i)
        add(QStringLiteral("letter%1.rtf").arg(i),
            QStringLiteral("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0 Letter {\\b %1} in rich text.\\par}").arg(i).toUtf8(),
            true);
    for (int i = 1; i <= 4; ++i)
        add(QStringLiteral("speech%1.xml").arg(i),
            QStringLiteral("<xml version=\"1.0\">\r\n<SAPI>\r\nMarked up speech number %1.\r\n</SAPI>\r\n</xml>\r\n")
                .arg(i)
                .toUtf8(),
            true);
    QFile::copy(wordDoc, dir.filePath(QStringLiteral("report.doc")));
    c.files << dir.filePath(QStringLiteral("report.doc"));
    c.converted << dir.filePath(QStringLiteral("report.doc"));
    add(QStringLiteral("empty.txt"), "  \r\n", false);
    add(QStringLiteral("binary.txt"), QByteArray("\x00\x01\x02 not text \x00", 14), false);
    return c;
}

// The MP3 the batch writes for a document.
inline QString Mp3Of(const QString &document) { return document.chopped(3) + QStringLiteral("MP3"); }

// True when mpg123 decodes the whole file without an error.
inline bool Mp3Decodes(const QString &mp3)
{
    QProcess p;
    p.start(QStringLiteral("mpg123"), {QStringLiteral("-q"), QStringLiteral("-t"), mp3});
    if (!p.waitForFinished(60000))
        return false;
    const QByteArray err = p.readAllStandardError();
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0 && !err.contains("rror");
}

} // namespace batchtest
