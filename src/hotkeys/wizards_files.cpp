// Wizards of the file statements: [COPYFILE], [OPEN], [READ], [CLOSE], [PATHEXISTS],
// [SHORTPATH], [FINDFILES], [FINDSTRING] and [DATEDIFF].
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"
#include "macro/variables.h"

namespace hotkeys {

using namespace wizard;

namespace {

constexpr int kLowestFileId = 1;
constexpr int kHighestFileId = 9;
// The variable whose name makes [COPYFILE] rename: it holds the new name.
const QString kRenameVariable = QStringLiteral("IRENAME");
const QString kFilenamePrompt = QStringLiteral("Enter a variable that will hold the filename");


// A file id: a whole number 1 to 9, or (withName) a variable name.
Validator FileId(bool withName)
{
    return [withName](const QString &answer) -> QString {
        const QString invalid = QStringLiteral("Invalid ID number (1-9)");
        if (IsPlainNumber(answer)) {
            bool whole = false;
            const int n = answer.toInt(&whole);
            return whole && n >= kLowestFileId && n <= kHighestFileId ? QString() : invalid;
        }
        if (!withName)
            return invalid;
        return macro::AllLetters(answer, QStringLiteral("ID "));
    };
}

// A variable name that must differ from the file id it goes with.
Validator NameBesideId(const QString &id, const QString &same)
{
    return [id, same](const QString &answer) -> QString {
        const QString letters = macro::AllLetters(answer, QString());
        if (!letters.isEmpty())
            return letters;
        return answer.compare(id, Qt::CaseInsensitive) == 0 ? same : QString();
    };
}

// True when the macro holds an [OPEN id ...] for this id.
bool HasOpen(const QString &macro, const QString &id)
{
    return macro.toUpper().contains(QStringLiteral("[OPEN ") + id.toUpper() + QLatin1Char(' '));
}

// The start position of [FINDSTRING]: a whole number from 1 to the length of a literal
// searched (any length when a variable is searched), or a variable name.
Validator StartPosition(const QString &searched)
{
    const bool literal = searched.startsWith(QLatin1Char('"'));
    const qsizetype length = literal ? searched.size() - 2 : -1;
    const QString outOfRange = QStringLiteral("The start position must be within 1 and ")
                               + (literal ? QString::number(length) : QStringLiteral("LEN(String)"));
    return [length, outOfRange](const QString &answer) -> QString {
        if (IsPlainNumber(answer)) {
            bool whole = false;
            const int n = answer.toInt(&whole);
            return whole && n >= 1 && (length < 0 || n <= length) ? QString() : outOfRange;
        }
        return macro::AllLetters(answer, QString());
    };
}

// One date operand of [DATEDIFF]: a file's date, a date picked, or a variable.
bool AskDate(WizardAsker &ask, const QString &which, QString &operand)
{
    const QString form = macro::CanonicalStatement(macro::CmdDATEDIFF);
    const auto asString = [&](QString &value) {
        const QString question = QStringLiteral("Is the date (") + which
                                 + QStringLiteral(") the date of a file (Yes) or a date you pick (No)?");
        switch (AskChoice(ask, question, QStringLiteral("DATEDIFF"))) {
        case WizardYes:
            return AskFile(ask, QStringLiteral("File Date (") + (which == QLatin1String("from") ? QStringLiteral("From") : QStringLiteral("To")) + QLatin1Char(')'),
                           QStringLiteral("File Date (*.*)|*.*"), false, value);
        case WizardNo:
            value = SetPicTimeDateDiff(ask);
            return !value.isEmpty();
        default:
            return false;
        }
    };
    return AskStringOrVariable(
        ask, QStringLiteral("date (") + which + QLatin1Char(')'), form, asString,
        Named(ask, QStringLiteral("DATEDIFF"), QStringLiteral("Enter a date (") + which + QStringLiteral(") string variable")),
        operand);
}

} // namespace

QStringList mnuFunctionsCOPYFILE_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCOPYFILE)))
        return {};
    const QString form = QStringLiteral("[COPYFILE Source Destination]");
    const QString title = QStringLiteral("COPYFILE");
    const QString dialogTitle = QStringLiteral("Copy File");
    const QString filter = QStringLiteral("Copy File (*.*)|*.*");
    const int mode = AskChoice(ask, QStringLiteral("Would you like to copy the files (Yes) or rename them (No)?"), form);
    if (mode == WizardCancel)
        return {};
    const bool copying = mode == WizardYes;
    for (;;) {
        QString source, destination;
        if (!AskStringOrVariable(
                ask, QStringLiteral("source file"), form,
                [&](QString &op) { return AskFile(ask, dialogTitle, filter, false, op); },
                Named(ask, title, QStringLiteral("Enter a variable that will hold the source file")), source))
            return {};
        const QString destinationPrompt = QStringLiteral("Enter a variable that will hold the destination file");
        if (copying) {
            if (!AskStringOrVariable(
                    ask, QStringLiteral("destination file"), form,
                    [&](QString &op) { return AskFile(ask, dialogTitle, filter, true, op); },
                    Named(ask, title, destinationPrompt), destination))
                return {};
        } else if (!AskName(ask, QStringLiteral("RENAME"), destinationPrompt, destination, kRenameVariable)) {
            return {};
        }
        if (source.compare(destination, Qt::CaseInsensitive) == 0) {
            ask.message(QStringLiteral("The source and destination files can not be the same. Try again."), kOk,
                        QStringLiteral("CopyFile"));
            continue;
        }
        if (copying)
            return {Statement(title, {source, destination})};
        // Renaming is a copy to the variable IRENAME, which holds the new name.
        QStringList lines;
        if (destination.compare(kRenameVariable, Qt::CaseInsensitive) != 0)
            lines << QLatin1Char('[') + kRenameVariable + QLatin1Char('=') + destination + QLatin1Char(']');
        lines << Statement(title, {source, kRenameVariable});
        return lines;
    }
}

QStringList mnuFunctionsOPEN_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdOPEN)))
        return {};
    const QString title = QStringLiteral("OPEN");
    QString id, file;
    if (!AskValue(ask, title, QStringLiteral("Enter the file ID number (1-9) or variable name"), FileId(true), id))
        return {};
    const auto asVariable = [&](QString &op) {
        return AskValue(ask, title, kFilenamePrompt,
                        NameBesideId(id, QStringLiteral("Unit and file variables must be different")), op);
    };
    if (!AskStringOrVariable(
            ask, QStringLiteral("file"), QStringLiteral("[OPEN n Filename]"),
            [&](QString &op) { return AskFile(ask, QStringLiteral("Open File"), QStringLiteral("Open File (*.*)|*.*"), false, op); },
            asVariable, file))
        return {};
    return {Statement(title, {id, file})};
}

QStringList mnuFunctionsREAD_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdREAD)))
        return {};
    const QString title = QStringLiteral("READ");
    QString id, record;
    if (!AskValue(ask, title, QStringLiteral("Enter the file ID number (1-9) or variable name"), FileId(true), id))
        return {};
    if (!AskValue(ask, title, QStringLiteral("Enter a variable that will hold the record, e.g. REC"),
                  NameBesideId(id, QStringLiteral("Unit and output variables must be different")), record))
        return {};
    if (!HasOpen(context.macro, id))
        ask.message(QStringLiteral("Warning, no matching OPEN statement for READ"), kOk, title);
    return {Statement(title, {id, record})};
}

QStringList mnuFunctionsCLOSE_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCLOSE)))
        return {};
    const QString title = QStringLiteral("CLOSE");
    QString id;
    if (!AskValue(ask, title, QStringLiteral("Enter the file ID number (1-9)"), FileId(false), id))
        return {};
    if (!HasOpen(context.macro, id))
        ask.message(QStringLiteral("Warning, no matching OPEN statement for CLOSE"), kOk, title);
    return {Statement(title, {id})};
}

QStringList mnuFunctionsPATHEXISTS_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdPATHEXISTS)))
        return {};
    const QString title = QStringLiteral("PATHEXISTS");
    const QString testTitle = QStringLiteral("Path Exist?");
    QString path, answer;
    switch (AskChoice(ask, QStringLiteral("Would you like to create a new folder (Yes) or test whether a path exists (No)?"),
                      title)) {
    case WizardYes:
        // The answer word CREATE makes the folder; the variable CREATE gets YES or NO.
        if (!AskStringOrVariable(ask, QStringLiteral("new folder"), title,
                                 Typed(ask, title, QStringLiteral("Enter the new folder")),
                                 Named(ask, title, QStringLiteral("Enter a variable that will hold the new folder"),
                                       QStringLiteral("NEW")),
                                 path))
            return {};
        return {Statement(title, {path, QStringLiteral("CREATE")})};
    case WizardNo:
        break;
    default:
        return {};
    }
    bool given = false;
    switch (AskChoice(ask, QStringLiteral("Is the path a folder (Yes) or a file (No)?"), testTitle)) {
    case WizardYes:
        given = AskStringOrVariable(ask, QStringLiteral("folder"), testTitle,
                                    [&](QString &op) { return AskFolder(ask, testTitle, op); },
                                    Named(ask, title, QStringLiteral("Enter a variable that will hold the existing folder")),
                                    path);
        break;
    case WizardNo:
        given = AskStringOrVariable(
            ask, QStringLiteral("file"), testTitle,
            [&](QString &op) { return AskFile(ask, QStringLiteral("Open File"), QStringLiteral("File Exists (*.*)|*.*"), false, op); },
            Named(ask, title, kFilenamePrompt), path);
        break;
    default:
        return {};
    }
    if (!given || !AskName(ask, title, QStringLiteral("Enter a variable that will hold the answer"), answer, QStringLiteral("ANS")))
        return {};
    return {Statement(title, {path, answer})};
}

QStringList mnuFunctionsSHORTPATH_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdSHORTPATH)))
        return {};
    const QString title = QStringLiteral("SHORTPATH");
    QString file, shortPath;
    if (!AskStringOrVariable(
            ask, QStringLiteral("file"), title,
            [&](QString &op) { return AskFile(ask, QStringLiteral("Open File"), QStringLiteral("Short Path (*.*)|*.*"), false, op); },
            Named(ask, title, kFilenamePrompt), file))
        return {};
    if (!AskName(ask, title, QStringLiteral("Enter a variable that will hold the short path name"), shortPath,
                 QStringLiteral("SPATH")))
        return {};
    return {Statement(title, {file, shortPath})};
}

QStringList mnuFunctionFINDFILES_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdFINDFILES)))
        return {};
    const QString title = QStringLiteral("FINDFILES");
    QString start, selection;
    if (!AskStringOrVariable(ask, QStringLiteral("start-in folder"), QStringLiteral("[FINDFILES StartPath Selection]"),
                             [&](QString &op) { return AskFolder(ask, QStringLiteral("Select Start-In Folder"), op); },
                             Named(ask, title, QStringLiteral("Enter a variable that will hold the start-in path")),
                             start))
        return {};
    if (!AskValue(ask, title, QStringLiteral("Enter a variable that will hold the file selection"),
                  NameBesideId(start, QStringLiteral("The start-in path and the file selection must be different variables")),
                  selection))
        return {};
    const QString statement = Statement(title, {start, selection});
    // A file path held by the selection variable sends the files found to that file.
    switch (AskChoice(ask, QStringLiteral("Would you like to save the file selection to a file (Yes) or keep it in the variable (No)?"),
                      QStringLiteral("Find Files"))) {
    case WizardYes: {
        QString output;
        if (!AskFile(ask, QStringLiteral("Output File"), QStringLiteral("Output File (*.*)|*.*"), true, output,
                     QStringLiteral(".txt")))
            return {};
        return {QLatin1Char('[') + selection + QLatin1Char('=') + output + QLatin1Char(']'), statement};
    }
    case WizardNo:
        return {statement};
    default:
        return {};
    }
}

QStringList mnuFunctionsFINDSTRING_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdFINDSTRING)))
        return {};
    const QString title = QStringLiteral("FINDSTRING");
    const QString form = QStringLiteral("[FINDSTRING String Substring Start]");
    QString searched, sought, position, start;
    if (!AskStringOrVariable(ask, QStringLiteral("string to search"), form,
                             Typed(ask, title, QStringLiteral("Enter a string to search")),
                             Named(ask, title, QStringLiteral("Enter a variable for the search string")), searched))
        return {};
    if (!AskStringOrVariable(ask, QStringLiteral("sub-string"), form,
                             Typed(ask, title, QStringLiteral("Enter a sub-string to search for")),
                             Named(ask, title, QStringLiteral("Enter a variable for the sub-string")), sought))
        return {};
    if (!AskName(ask, title, QStringLiteral("Enter a variable that will hold the character position"), position))
        return {};
    // The position variable is also where the search starts.
    if (!AskValue(ask, title, QStringLiteral("Enter the start character position to search from [1-LEN(String)]"),
                  StartPosition(searched), start, QStringLiteral("1")))
        return {};
    return {QLatin1Char('[') + position + QLatin1Char('=') + start + QLatin1Char(']'),
            Statement(title, {searched, sought, position})};
}

QStringList mnuFunctionDATEDIFF_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdDATEDIFF)))
        return {};
    const QString title = QStringLiteral("DATEDIFF");
    QString from, to, difference;
    if (!AskDate(ask, QStringLiteral("from"), from) || !AskDate(ask, QStringLiteral("to"), to))
        return {};
    if (!AskName(ask, title, QStringLiteral("Enter a variable that will hold the difference (days)"), difference))
        return {};
    return {Statement(title, {from, to, difference})};
}

} // namespace hotkeys
