// Wizards of the clipboard statements: [GETCLIP], [SETCLIP], [LOADCLIP], [SAVECLIP],
// [GETMULTICLIP] and [SETMULTICLIP].
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"

namespace hotkeys {

using namespace wizard;

namespace {

constexpr double kFirstClip = 1;
constexpr double kLastClip = 5;
const QString kClipVariablePrompt = QStringLiteral("Enter a variable to hold the clip, e.g. CLIPVAR");


bool AskClipNumber(WizardAsker &ask, const QString &title, QString &clip)
{
    return AskValue(ask, title, QStringLiteral("Select a clip number (1-5) or variable name"),
                    NumberOrName(kFirstClip, kLastClip, QStringLiteral("The clip number must be between 1 and 5"),
                                 QStringLiteral("clip ")),
                    clip);
}

} // namespace

QStringList mnuFunctionsClipboardGetClip_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdGETCLIP)))
        return {};
    const QString title = QStringLiteral("GETCLIP");
    QString name;
    if (!AskValue(ask, title, kClipVariablePrompt, {}, name))
        return {};
    const QString line = Statement(title, {name});
    if (!CheckedOrAccepted(ask, macro::CmdGETCLIP, line, title))
        return {};
    return {line};
}

QStringList mnuFunctionsClipboardSetClip_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdSETCLIP)))
        return {};
    const QString title = QStringLiteral("SETCLIP");
    QString text;
    if (!AskStringOrVariable(
            ask, QStringLiteral("text for the clipboard"), QStringLiteral("[SETCLIP String]"),
            [&](QString &op) {
                return AskLiteral(ask, title, QStringLiteral("Enter string to send to the clipboard (use ~ for ENTER)"), op);
            },
            [&](QString &op) { return AskName(ask, title, QStringLiteral("Enter a variable to send to the clipboard"), op); },
            text))
        return {};
    const QString line = Statement(title, {text});
    if (!CheckedOrAccepted(ask, macro::CmdSETCLIP, line, title))
        return {};
    return {line};
}

QStringList mnuFunctionsClipboardLoadClip_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdLOADCLIP, QStringLiteral("LOADCLIP"), QStringLiteral("Load File"),
                                QStringLiteral("File (*.*)|*.*"), false, {}, {}});
}

QStringList mnuFunctionsClipboardSaveClip_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdSAVECLIP, QStringLiteral("SAVECLIP"), QStringLiteral("Save File"),
                                QStringLiteral("File (*.*)|*.*"), true, {}, {}});
}

QStringList mnuFunctionsClipboardGetMultiClip_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdGETMULTICLIP)))
        return {};
    const QString title = QStringLiteral("GETMULTICLIP");
    QString clip, name;
    if (!AskClipNumber(ask, title, clip) || !AskName(ask, title, kClipVariablePrompt, name))
        return {};
    return {Statement(title, {clip, name})};
}

QStringList mnuFunctionsClipboardSetMultiClip_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdSETMULTICLIP)))
        return {};
    const QString title = QStringLiteral("SETMULTICLIP");
    QString clip, text;
    if (!AskClipNumber(ask, title, clip))
        return {};
    if (!AskStringOrVariable(
            ask, QStringLiteral("text for the clip"), QStringLiteral("[SETMULTICLIP Clip String]"),
            [&](QString &op) {
                return AskLiteral(ask, title, QStringLiteral("Enter string to send to the clip (use ~ for ENTER)"), op);
            },
            [&](QString &op) { return AskName(ask, title, QStringLiteral("Enter a variable to send to the clip"), op); },
            text))
        return {};
    const QString line = Statement(title, {clip, text});
    if (!CheckedOrAccepted(ask, macro::CmdSETMULTICLIP, line, title))
        return {};
    return {line};
}

} // namespace hotkeys
