// [LOADFILE File], [SAVEFILE File], [KILLFILE File], [COPYFILE FileS FileD],
// [PATHEXISTS File Ans], [SHORTPATH File SPath]: documents and the file system.
#include "engine/file_statements.h"

#include "engine/operands.h"
#include "engine/run_state.h"
#include "hotkeys/dialog_string.h"
#include "macro/macro_text.h"
#include "macro/variables.h"
#include "reader/documents.h"
#include "reader/text_box.h"
#include "shell/file_util.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTemporaryFile>
#include <filesystem>
#include <system_error>

namespace engine {

namespace {

Q_LOGGING_CATEGORY(lcFileStatements, "sonamark.engine.files", QtWarningMsg)

const QString kLoadFrame = QStringLiteral(" for [LOADFILE File] statement");
const QString kSaveFrame = QStringLiteral(" for [SAVEFILE File] statement");
const QString kKillFrame = QStringLiteral(" for [KILLFILE File] statement");
const QString kCopyStatement = QStringLiteral("[COPYFILE FileS FileD]");
const QString kCopyFrame = QStringLiteral(" for [COPYFILE FileS FileD] statement");
const QString kYes = QStringLiteral("YES");
const QString kNo = QStringLiteral("NO");

// Documents bigger than this are refused by [LOADFILE]: a text box with hundreds of
// megabytes of text is of no use, and reading it would take the memory of the machine.
constexpr qint64 kMaxLoadBytes = qint64(64) << 20;

std::filesystem::path nativePath(const QString &path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

// Copies source over destination: into a temporary file beside it, then renamed over
// it, so that a destination that existed is never left half written.
bool copyOver(const QString &source, const QString &destination, QString *error)
{
    QTemporaryFile temporary(QFileInfo(destination).absolutePath() + QStringLiteral("/.sonamark-copy-XXXXXX"));
    QFile in(source);
    if (!temporary.open() || !in.open(QIODevice::ReadOnly)) {
        *error = temporary.isOpen() ? in.errorString() : temporary.errorString();
        return false;
    }
    char buffer[1 << 16];
    for (;;) {
        const qint64 got = in.read(buffer, sizeof buffer);
        if (got < 0 || (got > 0 && temporary.write(buffer, got) != got)) {
            *error = got < 0 ? in.errorString() : temporary.errorString();
            return false;
        }
        if (got == 0)
            break;
    }
    temporary.setPermissions(in.permissions());
    if (!temporary.flush()) {
        *error = temporary.errorString();
        return false;
    }
    std::error_code code;
    std::filesystem::rename(nativePath(temporary.fileName()), nativePath(destination), code);
    if (code) {
        *error = QString::fromStdString(code.message());
        return false;
    }
    temporary.setAutoRemove(false);
    return true;
}

// The last part of a path, after its last "/".
QString lastPart(const QString &path)
{
    QString p = path;
    while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
        p.chop(1);
    return p.mid(p.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

bool FolderOfPathExists(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0)
        return true;
    return shell::FolderExists(slash == 0 ? QStringLiteral("/") : path.left(slash));
}

QString DoLOADFILE(int line)
{
    QString name;
    if (!GetFName(line, name))
        return QStringLiteral("Illegal file name") + kLoadFrame;
    const QFileInfo info(name);
    if (name.trimmed().isEmpty() || !info.isFile())
        return QStringLiteral("File not found") + kLoadFrame;
    if (info.size() > kMaxLoadBytes)
        return QStringLiteral("File too large (over %1 MB)").arg(kMaxLoadBytes >> 20) + kLoadFrame;
    const QString message = reader::LoadFile2Reader(name);
    return message.isEmpty() ? QString() : message + kLoadFrame;
}

QString DoSAVEFILE(int line)
{
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Invalid filename") + kSaveFrame;
    if (!FolderOfPathExists(name) || QFileInfo(name).isDir())
        return QStringLiteral("Folder not found") + kSaveFrame;
    const reader::TextBox *box = reader::textBox();
    if (!box || box->text().isEmpty())
        return QStringLiteral("No text to save") + kSaveFrame;
    const QString error = reader::WriteReaderDocument(name, name.toUpper().endsWith(QLatin1String(".RTF")));
    if (error.isEmpty())
        return {};
    qCWarning(lcFileStatements) << "cannot save" << name << ":" << error;
    return QStringLiteral("Error saving file ") + name + kSaveFrame;
}

QString DoKILLFILE(int line)
{
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Illegal file name") + kKillFrame;
    const QFileInfo info(name);
    if (!info.isFile() && !info.isSymLink())
        return QStringLiteral("File not found") + kKillFrame;
    QFile file(name);
    if (file.remove())
        return {};
    qCWarning(lcFileStatements) << "cannot delete" << name << ":" << file.errorString();
    return QStringLiteral("Error deleting file ") + name + kKillFrame;
}

QString DoCOPYFILE(int line)
{
    QList<OperandToken> tokens;
    if (!SplitOperands(runState().action(line).Text, tokens))
        return QStringLiteral("Quote mismatch in variable") + kCopyFrame;
    if (tokens.size() != 2)
        return QStringLiteral("Invalid format") + kCopyFrame;
    QString source, destination;
    QString message = OperandValue(tokens.at(0), QStringLiteral("File"), QStringLiteral("file"), source);
    if (message.isEmpty())
        message = OperandValue(tokens.at(1), QStringLiteral("2nd file"), QStringLiteral("2nd file"), destination);
    if (!message.isEmpty())
        return message + kCopyFrame;
    if (!QFileInfo(source).isFile())
        return QStringLiteral("Source file does not exist") + kCopyFrame;
    // A folder as the destination takes the file under its own name.
    if (QFileInfo(destination).isDir())
        destination = QDir(destination).filePath(lastPart(source));
    if (!FolderOfPathExists(destination))
        return QStringLiteral("Destination path does not exist") + kCopyFrame;
    if (destination.toUpper() == source.toUpper()
        || QFileInfo(destination).canonicalFilePath() == QFileInfo(source).canonicalFilePath())
        return QStringLiteral("Destination and source files must be different") + kCopyFrame;

    const bool rename = !tokens.at(1).literal && macro::UpperSameLength(tokens.at(1).text) == QLatin1String("IRENAME");
    QString error;
    if (rename) {
        std::error_code code;
        std::filesystem::rename(nativePath(source), nativePath(destination), code);
        if (code)
            error = QString::fromStdString(code.message());
    } else {
        copyOver(source, destination, &error);
    }
    if (!error.isEmpty())
        qCWarning(lcFileStatements) << (rename ? "cannot rename" : "cannot copy") << source << "to" << destination
                                    << ":" << error;
    return {};
}

QString DoPATHEXISTS(int line)
{
    StringAndResult operands;
    const QString message = GetStringAndResult(line, QStringLiteral("[PATHEXISTS File Ans]"), QStringLiteral("File"),
                                               QStringLiteral("file"), QStringLiteral("answer "), operands);
    if (!message.isEmpty())
        return message;
    const QString &name = operands.text;
    const bool hasDot = lastPart(name).contains(QLatin1Char('.'));
    if (macro::UpperSameLength(operands.resultName) != QLatin1String("CREATE")) {
        const bool found = QFileInfo::exists(name) || (!hasDot && shell::FolderExists(name));
        macro::SetVarVal(operands.resultName, found ? kYes : kNo);
        return {};
    }
    // [PATHEXISTS Folder CREATE]: makes the folder. A name with an extension is a file.
    if (hasDot) {
        macro::SetVarVal(operands.resultName, kNo);
        return {};
    }
    if (!shell::FolderExists(name) && !QDir().mkpath(name))
        qCWarning(lcFileStatements) << "cannot make the folder" << name;
    macro::SetVarVal(operands.resultName, shell::FolderExists(name) ? kYes : kNo);
    return {};
}

QString DoSHORTPATH(int line)
{
    StringAndResult operands;
    const QString message = GetStringAndResult(line, QStringLiteral("[SHORTPATH File SPath]"), QStringLiteral("File"),
                                               QStringLiteral("file"), QString(), operands,
                                               QStringLiteral("Invalid variable format"));
    if (!message.isEmpty())
        return message;
    macro::SetVarVal(operands.resultName, hotkeys::GetShortPath(operands.text));
    return {};
}

} // namespace engine
