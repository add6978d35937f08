// Wizards of the reader's statements: files loaded, saved, printed and spoken to MP3, and
// the switches and commands that take no operand.
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"

namespace hotkeys {

using namespace wizard;

namespace {

// A statement without a question: only the help comes first.
QStringList Fixed(WizardAsker &ask, const WizardContext &context, int command, const QString &line)
{
    if (ShowsHelp(ask, context, macro::Commands().at(command - 1)))
        return {};
    return {line};
}

} // namespace

QStringList mnuFunctionsSonamarkLoadFile_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdLOADFILE, QStringLiteral("LOADFILE"), QStringLiteral("Open File"),
                                QStringLiteral("Text & XML Files (*.txt;*.rtf;*.xml;*.doc)|*.txt;*.rtf;*.xml;*.doc"), false,
                                {}, {}});
}

QStringList mnuFunctionsSonamarkSaveFile_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdSAVEFILE, QStringLiteral("SAVEFILE"), QStringLiteral("Save File"),
                                QStringLiteral("Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml"), true,
                                QStringLiteral(".TXT"),
                                {QStringLiteral(".txt"), QStringLiteral(".rtf"), QStringLiteral(".xml")}});
}

QStringList mnuFunctionsSonamarkPrintFile_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdPRINT, QStringLiteral("PRINT"), QStringLiteral("Print File"),
                                QStringLiteral("File (*.*)|*.*"), false, {}, {}});
}

QStringList mnuFunctionsSonamarkMakeMP3_Click(WizardAsker &ask, const WizardContext &context)
{
    return FileStatementWizard(ask, context,
                               {macro::CmdMAKEMP3, QStringLiteral("MAKEMP3"), QStringLiteral("Create MP3"),
                                QStringLiteral("MP3 File (*.mp3)|*.mp3"), true, QStringLiteral(".MP3"),
                                {QStringLiteral(".mp3")}});
}

QStringList mnuFunctionsSonamarkPrint_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdPRINTSELECTED, QStringLiteral("[PRINTSELECTED]"));
}

QStringList mnuFunctionsSonamarkClipOn_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdCLIP, QStringLiteral("[CLIP ON]"));
}

QStringList mnuFunctionsSonamarkClipOff_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdCLIP, QStringLiteral("[CLIP OFF]"));
}

QStringList mnuFunctionsSonamarkSpellcheck_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdSPELLCHECK, QStringLiteral("[SPELLCHECK]"));
}

QStringList mnuFunctionsSonamarkSpellcheckOn_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdSPELLCHECKMODE, QStringLiteral("[SPELLCHECKMODE ON]"));
}

QStringList mnuFunctionsSonamarkSpellcheckOff_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdSPELLCHECKMODE, QStringLiteral("[SPELLCHECKMODE OFF]"));
}

QStringList mnuFunctionsHKList_Click(WizardAsker &ask, const WizardContext &context)
{
    return Fixed(ask, context, macro::CmdLISTHOTKEYS, QStringLiteral("[LISTHOTKEYS]"));
}

} // namespace hotkeys
