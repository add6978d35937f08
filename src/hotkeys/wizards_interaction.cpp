// Wizards of the input and interaction statements: [SENDKEYS], [KEYLOG], [COMMAND],
// [USERINPUT], [YESNOCANCEL], [SETFOCUS] and [WEBSOURCE].
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"
#include "macro/numbers.h"

namespace hotkeys {

using namespace wizard;

namespace {

const QString kComspec = QStringLiteral("COMSPEC");
constexpr double kLongestAnswerWait = 3599;  // seconds; 3600 and more is no time limit
const QString kAnswerVariable = QStringLiteral("ANS");


// The line, pasted when its checker finds nothing or the user goes on.
QStringList Checked(WizardAsker &ask, int command, const QString &line, const QString &title)
{
    if (!CheckedOrAccepted(ask, command, line, title))
        return {};
    return {line};
}

// A class name picked by clicking its window; a mouse that can't be hooked leaves typing.
bool PickClassName(WizardAsker &ask, QString &literal, bool &typeInstead)
{
    bool hooked = true;
    QString className;
    if (ask.windowClass(QStringLiteral("Get Class Name"), className, hooked) && !className.trimmed().isEmpty()) {
        literal = Quoted(className.trimmed());
        return true;
    }
    if (hooked)
        return false;
    ask.message(QStringLiteral("Can't hook the mouse for class name."), kOk, QStringLiteral("Mouse Hook"));
    typeInstead = true;
    return false;
}

} // namespace

QStringList mnuFunctionsSendkeys_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdSENDKEYS)))
        return {};
    const QString title = QStringLiteral("SENDKEYS");
    QString keys;
    if (!AskStringOrVariable(ask, QStringLiteral("keystroke text"), QStringLiteral("[SENDKEYS String]"),
                             Typed(ask, title, QStringLiteral("Enter the keystrokes to send, e.g. {TAB}hello^a")),
                             Named(ask, title, QStringLiteral("Enter a variable that will hold the keystrokes")), keys))
        return {};
    return Checked(ask, macro::CmdSENDKEYS, Statement(title, {keys}), title);
}

QStringList mnuFunctionsKEYLOG_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdKEYLOG)))
        return {};
    const QString title = QStringLiteral("KEYLOG");
    QString name;
    if (!AskValue(ask, title, QStringLiteral("Enter a variable to hold the keystrokes (use RESET to clear the keylog buffer)"),
                  {}, name))
        return {};
    return Checked(ask, macro::CmdKEYLOG, Statement(title, {name}), title);
}

QStringList mnuFunctionsCommand_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCOMMAND)))
        return {};
    const QString title = QStringLiteral("COMMAND");
    QString command;
    if (!AskStringOrVariable(ask, QStringLiteral("command line"), QStringLiteral("[COMMAND Line]"),
                             Typed(ask, title, QStringLiteral("Enter the COMMAND string, e.g. notepad.exe file.txt")),
                             Named(ask, title, QStringLiteral("Enter the COMMAND variable")), command))
        return {};
    // The statement runs a line through the shell only when it begins with COMSPEC in
    // capitals, while quoted text keeps the case it was typed in.
    if (command.mid(1, kComspec.size()).compare(kComspec, Qt::CaseInsensitive) == 0 && command.startsWith(QLatin1Char('"')))
        command.replace(1, kComspec.size(), kComspec);
    return Checked(ask, macro::CmdCOMMAND, Statement(title, {command}), title);
}

QStringList mnuFunctionsUserInputString_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdUSERINPUT)))
        return {};
    const QString title = QStringLiteral("USERINPUT");
    const QString variablePrompt = QStringLiteral("Enter a variable to hold the input, e.g. INVAR");
    const QString defaultVariable = QStringLiteral("INVAR");
    QString name;
    switch (AskChoice(ask, QStringLiteral("Would you like a text box for the input (Yes) or an input box with a prompt (No)?"),
                      title)) {
    case WizardYes: {
        // The text box opens with the variable's value: an optional text to start from.
        QString text;
        if (!ask.input(title, QStringLiteral("Enter an optional text message"), text, QString()))
            return {};
        if (text.contains(QLatin1Char('"'))) {
            ask.message(QStringLiteral("A string can not hold a double quote."), kOk, title);
            return {};
        }
        if (!AskName(ask, title, variablePrompt, name, defaultVariable))
            return {};
        QStringList lines;
        if (!text.isEmpty())
            lines << QLatin1Char('[') + name + QLatin1Char('=') + Quoted(text) + QLatin1Char(']');
        lines << Statement(title, {Quoted(QStringLiteral("TEXTBOX")), name});
        return lines;
    }
    case WizardNo: {
        QString prompt;
        if (!AskLiteral(ask, title, QStringLiteral("Enter the prompt message"), prompt)
            || !AskName(ask, title, variablePrompt, name, defaultVariable))
            return {};
        return Checked(ask, macro::CmdUSERINPUT, Statement(title, {prompt, name}), title);
    }
    default:
        return {};
    }
}

QStringList mnuFunctionsYesNoCancel_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdYESNOCANCEL)))
        return {};
    const QString title = QStringLiteral("YesNoCancel");
    QString question, seconds;
    if (!AskStringOrVariable(ask, QStringLiteral("question"), QStringLiteral("[YESNOCANCEL Question Ans]"),
                             Typed(ask, title, QStringLiteral("Enter the question to ask (exclude ? for a message only)")),
                             Named(ask, title, QStringLiteral("Enter the question variable name")), question))
        return {};
    // The answer variable's value before the box opens is its time limit in seconds.
    if (!AskValue(ask, title, QStringLiteral("Enter the number of seconds to wait for a response (0=no limit)"),
                  NumberOnly(0, kLongestAnswerWait, QStringLiteral("The number of seconds must be less than 3600")),
                  seconds, QStringLiteral("0")))
        return {};
    const QString line = Statement(QStringLiteral("YESNOCANCEL"), {question, kAnswerVariable});
    if (!CheckedOrAccepted(ask, macro::CmdYESNOCANCEL, line, title))
        return {};
    if (macro::Val1(seconds) == 0)
        return {line};
    return {QLatin1Char('[') + kAnswerVariable + QLatin1Char('=') + seconds + QLatin1Char(']'), line};
}

QStringList mnuFunctionsSETFOCUS_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdSETFOCUS)))
        return {};
    const QString title = QStringLiteral("SETFOCUS");
    QString className, answer;
    const auto asString = [&](QString &operand) {
        bool typeInstead = false;
        switch (AskChoice(ask, QStringLiteral("Would you like to pick the window with the mouse (Yes) or type its class name (No)?"),
                          title)) {
        case WizardYes:
            if (PickClassName(ask, operand, typeInstead))
                return true;
            if (!typeInstead)
                return false;
            break;
        case WizardNo:
            break;
        default:
            return false;
        }
        return AskLiteral(ask, title, QStringLiteral("Enter the class name"), operand);
    };
    if (!AskStringOrVariable(ask, QStringLiteral("class name"), QStringLiteral("[SETFOCUS Classname Ans]"), asString,
                             Named(ask, title, QStringLiteral("Enter a variable that will hold the class name")), className))
        return {};
    if (!AskName(ask, title, QStringLiteral("Enter a variable name that will indicate whether SETFOCUS was successful"), answer,
                 kAnswerVariable))
        return {};
    return Checked(ask, macro::CmdSETFOCUS, Statement(title, {className, answer}), title);
}

QStringList mnuFunctionsWebSource_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdWEBSOURCE)))
        return {};
    const QString title = QStringLiteral("WEBSOURCE");
    QString url, source;
    if (!AskStringOrVariable(ask, QStringLiteral("webpage URL"), QStringLiteral("[WEBSOURCE URL Src]"),
                             Typed(ask, title, QStringLiteral("Enter the webpage URL")),
                             Named(ask, title, QStringLiteral("Enter a variable that will hold the URL")), url))
        return {};
    if (!AskName(ask, title, QStringLiteral("Enter a variable that will hold the webpage source code"), source,
                 QStringLiteral("SRC")))
        return {};
    const QStringList fetch = Checked(ask, macro::CmdWEBSOURCE, Statement(title, {url, source}), title);
    if (fetch.isEmpty())
        return {};
    // A file path held by the source variable sends the page to that file.
    switch (AskChoice(ask, QStringLiteral("Would you like to save the webpage source code to a file (Yes) or keep it in the variable (No)?"),
                      title)) {
    case WizardYes: {
        QString output;
        if (!AskFile(ask, QStringLiteral("Output File"), QStringLiteral("Output File (*.*)|*.*"), true, output,
                     QStringLiteral(".htm")))
            return {};
        return QStringList{QLatin1Char('[') + source + QLatin1Char('=') + output + QLatin1Char(']')} + fetch;
    }
    case WizardNo:
        return fetch;
    default:
        return {};
    }
}

} // namespace hotkeys
