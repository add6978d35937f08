// [SETFOCUS], [COMMAND], [USERINPUT] and [YESNOCANCEL]: other programs' windows, starting
// programs, and questions to the user.
#include "engine/input_statements.h"

#include "engine/operands.h"
#include "engine/run_state.h"
#include "hotkeys/dialog_string.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace engine {

namespace {

const QString kHotkeysTitle = QStringLiteral("Hotkeys");
const QString kComspec = QStringLiteral("COMSPEC");
const QString kMailto = QStringLiteral("MAILTO:");
const QString kTextBoxTitle = QStringLiteral("TEXTBOX");

// The shell that stands for the command interpreter: the user's own, else /bin/sh.
QString commandShell()
{
    const QString shell = qEnvironmentVariable("SHELL");
    return shell.isEmpty() ? QStringLiteral("/bin/sh") : shell;
}

// Starts a command line without waiting for it. A document, a folder or an address is
// opened with the user's handler; anything else is a program and its arguments.
bool startCommand(const QString &command)
{
    platform::Desktop *desktop = platform::services().desktop;
    if (!desktop)
        return false;
    const QString trimmed = command.trimmed();
    if (trimmed.startsWith(kComspec, Qt::CaseInsensitive))
        return desktop->startDetached(commandShell(), {QStringLiteral("-c"), macro::Mid(command, 9)},
                                      QDir::currentPath());
    if (trimmed.startsWith(kMailto, Qt::CaseInsensitive))
        return desktop->openUrl(trimmed);
    const QUrl url(trimmed, QUrl::StrictMode);
    if ((url.isValid() && url.scheme().size() > 1 && !url.host().isEmpty())
        || (QFileInfo::exists(trimmed) && !QFileInfo(trimmed).isExecutable()) || QFileInfo(trimmed).isDir())
        return desktop->openUrl(QFileInfo::exists(trimmed) ? QUrl::fromLocalFile(trimmed).toString() : trimmed);
    QStringList words = QProcess::splitCommand(trimmed);
    if (words.isEmpty())
        return false;
    const QString program = words.takeFirst();
    return desktop->startDetached(program, words, QDir::currentPath());
}

} // namespace

QString DoSETFOCUS(int line)
{
    StringAndResult operands;
    const QString message = GetStringAndResult(line, QStringLiteral("[SETFOCUS Classname Ans]"),
                                               QStringLiteral("Class name"), QStringLiteral("class name"),
                                               QStringLiteral("answer "), operands);
    if (!message.isEmpty())
        return message;
    platform::WindowFinder *windows = platform::services().windows;
    const bool found = windows && windows->activateWindowOfClass(operands.text);
    macro::SetVarVal(operands.resultName, found ? QStringLiteral("YES") : QStringLiteral("NO"));
    return {};
}

QString DoCOMMAND(int line)
{
    QString command;
    if (!GetFName(line, command) || command.trimmed().isEmpty())
        return QStringLiteral("FATAL ERROR Invalid command line for [COMMAND String] statement");
    macro::RestoreQuotes(command);
    const bool started = startCommand(command);
    DoEvents();
    if (!started)
        return QStringLiteral("FATAL ERROR Unable to execute command line for [COMMAND String] statement");
    return {};
}

QString DoUSERINPUT(int line)
{
    QString prompt, name;
    if (!GetFName(line, prompt, &name) || prompt.trimmed().isEmpty())
        return QStringLiteral("Invalid title for [USERINPUT Title Var] statement");
    if (name.isEmpty())
        return QStringLiteral("Invalid response variable name for [USERINPUT Title Var] statement");
    if (!macro::IsVarName(name))
        return QStringLiteral("Only letters allowed in variable name for [USERINPUT Title Var] statement");
    macro::RestoreQuotes(prompt);
    if (hotkeys::IsDialogString(prompt)) {
        const bool shortPath = hotkeys::WantsShortPath(prompt);
        QString dialog = prompt;
        QString chosen = hotkeys::LaunchDialog(dialog);
        if (dialog.isEmpty())
            return QStringLiteral("Invalid dialog string for [USERINPUT Title Var] statement");
        if (shortPath && !chosen.isEmpty() && !chosen.contains(QLatin1Char('\n')))
            chosen = hotkeys::GetShortPath(chosen);
        macro::SetVarVal(name, chosen);
        return {};
    }

    platform::Prompts *prompts = platform::services().prompts;
    QString reply;
    if (prompt == kTextBoxTitle) {
        QString current = name;
        int type = macro::kTypeString;
        reply = macro::GetVarVal(current, type);
        if (!prompts || !prompts->editText(reply))
            reply.clear();
    } else if (!prompts || !prompts->inputBox(kHotkeysTitle, prompt, reply)) {
        reply.clear();
    }
    macro::SetVarVal(name, reply);
    return {};
}

QString DoYESNOCANCEL(int line)
{
    QString question, name;
    if (!GetFName(line, question, &name) || question.trimmed().isEmpty())
        return QStringLiteral("Invalid question for [YESNOCANCEL Question Ans] statement");
    if (name.isEmpty() || !macro::IsVarName(name))
        return QStringLiteral("Invalid answer variable name for [YESNOCANCEL Question Ans] statement");
    macro::RestoreQuotes(question);

    // The answer variable's present value instructs the box: an alignment or a time-out.
    QString current = name;
    int type = macro::kTypeString;
    const QString instruction = macro::GetVarVal(current, type).trimmed();
    double timeout = 0;
    if (!current.isEmpty()) {
        const QString upper = instruction.toUpper();
        if (upper == QLatin1String("CJUSTIFY"))
            shell::SetMsgAlign(2);
        else if (upper == QLatin1String("LJUSTIFY"))
            shell::SetMsgAlign(0);
        else if (upper == QLatin1String("RJUSTIFY"))
            shell::SetMsgAlign(1);
        else if (const double seconds = macro::Val1(instruction);
                 (seconds != 0 || instruction == QLatin1String("0")) && seconds >= 0 && seconds < kQuestionTimeoutLimit)
            timeout = seconds;
    }

    if (!question.contains(QLatin1Char('?'))) {
        shell::MsgBoxOT(question, 0, kHotkeysTitle, timeout);
        macro::SetVarVal(name, QString());
        return {};
    }
    shell::MsgBoxOT(question, 2, kHotkeysTitle, timeout);
    switch (shell::app().MsgResult) {
    case shell::MsgYes:
        macro::SetVarVal(name, QStringLiteral("YES"));
        return {};
    case shell::MsgNo:
        macro::SetVarVal(name, QStringLiteral("NO"));
        return {};
    case shell::MsgCancel:
        macro::SetVarVal(name, QStringLiteral("CANCEL"));
        return {};
    default:
        return QStringLiteral("Invalid response for answer variable for [YESNOCANCEL Question Ans] statement");
    }
}

} // namespace engine
