#include "cli/find_command.h"

#include "search/file_pattern.h"
#include "search/file_walk.h"

#include <QFile>
#include <QString>
#include <sys/stat.h>

namespace cli {

namespace {

constexpr int kFound = 0;
constexpr int kNoneFound = 1;
constexpr int kBadArguments = 2;
constexpr qsizetype kOutputChunk = 64 * 1024;  // bytes gathered before each write

int usageError(QTextStream &err, const QString &problem)
{
    err << "sonamark-cli find: " << problem << "\n\n" << FindUsageText();
    return kBadArguments;
}

} // namespace

bool IsFindCommand(const QList<QByteArray> &args) { return !args.isEmpty() && args.first() == "find"; }

QString FindUsageText()
{
    return QStringLiteral(
        "Usage: sonamark-cli find [--max N] FOLDER PATTERN\n"
        "\n"
        "Searches FOLDER and every folder below it for the files PATTERN matches, as the\n"
        "file finder does: wildcards separated by \";\", \"*\" for any characters, \"?\" for one,\n"
        "letters in either case, \"*.*\" for every file. Hidden files and folders (\".name\")\n"
        "are left out unless a wildcard begins with \".\". Links to folders are followed,\n"
        "each folder once; folders that cannot be read are skipped. Prints one full path a\n"
        "line; --max N stops after N files.\n"
        "Exit status: 0 files found, 1 none found, 2 bad arguments.\n");
}

int RunFind(const QList<QByteArray> &args, QIODevice &out, QTextStream &err)
{
    QList<QByteArray> operands;
    qsizetype maxFiles = -1;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QByteArray &arg = args.at(i);
        if (arg == "--help" || arg == "-h") {
            out.write(FindUsageText().toUtf8());
            return kFound;
        }
        if (arg == "--max") {
            if (i + 1 >= args.size())
                return usageError(err, QStringLiteral("--max needs a number"));
            bool ok = false;
            maxFiles = args.at(++i).toLongLong(&ok);
            if (!ok || maxFiles < 1)
                return usageError(err, QStringLiteral("--max needs a whole number of at least 1, not '%1'")
                                           .arg(QString::fromLocal8Bit(args.at(i))));
            continue;
        }
        if (arg.startsWith("--"))
            return usageError(err, QStringLiteral("unknown option '%1'").arg(QString::fromLocal8Bit(arg)));
        operands << arg;
    }
    if (operands.size() != 2)
        return usageError(err, QStringLiteral("give one FOLDER and one PATTERN"));
    const QByteArray &folder = operands.at(0);
    struct stat info {};
    if (::stat(folder.constData(), &info) != 0 || !S_ISDIR(info.st_mode))
        return usageError(err, QStringLiteral("'%1' is not a folder").arg(QString::fromLocal8Bit(folder)));

    QByteArray chunk;
    chunk.reserve(kOutputChunk + 4096);
    bool writeFailed = false;
    const search::WalkResult result = search::WalkFolder(
        folder, search::FilePattern(QString::fromLocal8Bit(operands.at(1))),
        [&](const QByteArray &path) {
            chunk += path;
            chunk += '\n';
            if (chunk.size() >= kOutputChunk) {
                writeFailed = out.write(chunk) != chunk.size();
                chunk.clear();
            }
            return !writeFailed;
        },
        nullptr, maxFiles);
    if (!chunk.isEmpty())
        out.write(chunk);
    return result.files > 0 ? kFound : kNoneFound;
}

} // namespace cli
