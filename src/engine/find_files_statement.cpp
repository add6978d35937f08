// [FINDFILES StartPath Selection]: the file finder, its picks going to a variable, a
// file, or the reader's text.
#include "engine/file_statements.h"

#include "engine/operands.h"
#include "macro/variables.h"
#include "search/find_files.h"
#include "shell/file_util.h"

#include <QFileInfo>

namespace engine {

namespace {

const QString kStatement = QStringLiteral("[FINDFILES StartPath Selection]");
const QString kFrame = QStringLiteral(" for [FINDFILES StartPath Selection] statement");

} // namespace

QString DoFINDFILES(int line)
{
    StringAndResult operands;
    const QString message = GetStringAndResult(line, kStatement, QStringLiteral("StartPath"),
                                               QStringLiteral("StartPath"), QStringLiteral("Selection "), operands,
                                               QStringLiteral("Selection variable missing"));
    if (!message.isEmpty())
        return message;
    QString startPath = operands.text;
    if (!shell::FolderExists(startPath))
        return QStringLiteral("Start-in folder does not exist") + kFrame;
    startPath = search::WithTrailingSlash(startPath);

    // A variable that holds a path names the file the picks are written to.
    QString name = operands.resultName;
    int type = macro::kTypeString;
    QString output = macro::GetVarVal(name, type);
    if (name.isEmpty() || type != macro::kTypeString || !output.contains(QLatin1Char('/'))) {
        output.clear();
    } else {
        if (!QFileInfo(output).fileName().contains(QLatin1Char('.'))) {
            output += QStringLiteral(".txt");
            macro::SetVarVal(operands.resultName, output);
        }
        if (!FolderOfPathExists(output))
            return QStringLiteral("Folder does not exist for Selection output") + kFrame;
    }
    const QString result = search::FindFiles(startPath, output, operands.resultName);
    return result.isEmpty() ? QString() : result + kFrame;
}

} // namespace engine
