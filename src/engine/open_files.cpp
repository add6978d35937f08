#include "engine/open_files.h"

#include "engine/run_state.h"
#include "shell/legacy_text.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <array>
#include <memory>

namespace engine {

namespace {

Q_LOGGING_CATEGORY(lcOpenFiles, "sonamark.engine.files", QtWarningMsg)

struct OpenFile {
    QString Name;  // empty when the entry is free
    qint16 Mode = kModeInput;
    std::unique_ptr<QFile> file;  // null when the file could not be opened
    bool firstLine = true;        // a byte order mark may still come
};

std::array<OpenFile, kMaxOpenFiles> &OpenFiles()
{
    static std::array<OpenFile, kMaxOpenFiles> files;
    return files;
}

OpenFile *entry(int id)
{
    if (id < 1 || id > kMaxOpenFiles)
        return nullptr;
    return &OpenFiles()[size_t(id - 1)];
}

QByteArray withoutLineBreak(QByteArray line)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return line;
}

} // namespace

QString SetOpenFile(int id, const QString &name, qint16 mode)
{
    OpenFile *e = entry(id);
    if (!e)
        return QStringLiteral("Invalid file number");
    if (!e->Name.isEmpty())
        return QStringLiteral("File already open");
    if (name.trimmed().isEmpty())
        return QStringLiteral("Illegal file name");
    if (mode == kModeInput && !QFileInfo(name).isFile())
        return QStringLiteral("File does not exist");
    if (mode != kModeInput && mode != kModeOutput)
        return QStringLiteral("Illegal Input/Output designation");

    runState().OpenFileCount += 1;
    e->Name = name;
    e->Mode = mode;
    e->firstLine = true;
    auto file = std::make_unique<QFile>(name);
    const QIODevice::OpenMode how = mode == kModeInput ? QIODevice::ReadOnly
                                                       : QIODevice::WriteOnly | QIODevice::Truncate;
    if (file->open(how))
        e->file = std::move(file);
    else
        qCWarning(lcOpenFiles) << "cannot open" << name << ":" << file->errorString();
    return {};
}

bool CloseOpenFile(int id)
{
    OpenFile *e = entry(id);
    if (!e || e->Name.isEmpty())
        return false;
    if (e->file) {
        e->file->close();
        if (e->file->error() != QFileDevice::NoError)
            qCWarning(lcOpenFiles) << "closing" << e->Name << ":" << e->file->errorString();
    }
    *e = OpenFile();
    return true;
}

void CloseAllOpenFiles()
{
    for (int id = 1; id <= kMaxOpenFiles; ++id)
        CloseOpenFile(id);
    runState().OpenFileCount = 0;
}

bool IsFileOpen(int id)
{
    const OpenFile *e = entry(id);
    return e && !e->Name.isEmpty();
}

qint16 OpenFileMode(int id)
{
    const OpenFile *e = entry(id);
    return e ? e->Mode : kModeInput;
}

QString OpenFileName(int id)
{
    const OpenFile *e = entry(id);
    return e ? e->Name : QString();
}

QString GetLineInput(int &id)
{
    OpenFile *e = entry(id);
    if (!e || !e->file || e->Mode != kModeInput || e->file->atEnd()) {
        id = -id;
        return {};
    }
    QByteArray line = withoutLineBreak(e->file->readLine());
    if (e->firstLine && line.startsWith("\xEF\xBB\xBF"))
        line.remove(0, 3);
    e->firstLine = false;
    return shell::DecodeLegacyText(line);
}

void WriteRec(int id, const QString &text)
{
    OpenFile *e = entry(id);
    if (!e || !e->file || e->Mode != kModeOutput)
        return;
    // Every line break of the record is written as CR LF, as the record's own end is.
    QString record = text;
    record.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    record.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    QByteArray bytes = record.toUtf8();
    bytes += "\r\n";
    if (e->file->write(bytes) != bytes.size())
        qCWarning(lcOpenFiles) << "writing" << e->Name << ":" << e->file->errorString();
}

} // namespace engine
