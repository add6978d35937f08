// The menu of the statement wizards: the Functions menu by group, then the mouse pick-up
// entries of the code box's pop-up menu.
#include "hotkeys/wizards.h"

namespace hotkeys {

namespace {

WizardEntry Entry(const char *group, const char *caption, const char *handler, WizardFunction function)
{
    return {QLatin1String(group), QLatin1String(caption), QLatin1String(handler), function};
}

#define WIZARD(group, caption, handler) Entry(group, caption, #handler, &handler)

QList<WizardEntry> MakeWizards()
{
    const char *control = "&Control";
    const char *keys = "&Keys and Mouse";
    const char *files = "&Files";
    const char *clipboard = "C&lipboard";
    const char *reader = "&Sonamark";
    const char *interaction = "&Interaction";
    const char *pickUp = kPickUpGroup;
    return {
        WIZARD(control, "[IF Cond] [ELSE] [ENDIF]", mnuFunctionsIFTHENELSE_Click),
        WIZARD(control, "[LOOP Cond] [ENDLOOP]", mnuFunctionsDO_Click),
        WIZARD(control, "[QUITLOOP]", mnuFunctionsQUITLOOP_Click),
        WIZARD(control, "[CANCEL IF Cond]", mnuFunctionsCancel_Click),
        WIZARD(control, "[VAR=Val]", mnuFunctionsSetVAR_Click),
        WIZARD(control, "[WAIT Secs]", mnuFunctionsWait_Click),
        WIZARD(control, "[HOTKEY n]", mnuFunctionsMACRO_Click),
        WIZARD(keys, "[SENDKEYS String]", mnuFunctionsSendkeys_Click),
        WIZARD(keys, "[KEYLOG Var]", mnuFunctionsKEYLOG_Click),
        WIZARD(keys, "[LEFTDOWN X Y]", mnuFunctionsMouseLEFTDOWN_Click),
        WIZARD(keys, "[LEFTUP X Y]", mnuFunctionsMouseLEFTUP_Click),
        WIZARD(keys, "[RIGHTDOWN X Y]", mnuFunctionsMouseRIGHTDOWN_Click),
        WIZARD(keys, "[RIGHTUP X Y]", mnuFunctionsMouseRIGHTUP_Click),
        WIZARD(keys, "[CLICKZONE Xmn Ymn Xmx Ymx Trap]", mnuFunctionsMouseClickzone_Click),
        WIZARD(keys, "[SETFOCUS Classname Ans]", mnuFunctionsSETFOCUS_Click),
        WIZARD(files, "[OPEN n File]", mnuFunctionsOPEN_Click),
        WIZARD(files, "[READ n Var]", mnuFunctionsREAD_Click),
        WIZARD(files, "[CLOSE n]", mnuFunctionsCLOSE_Click),
        WIZARD(files, "[COPYFILE Source Destination]", mnuFunctionsCOPYFILE_Click),
        WIZARD(files, "[PATHEXISTS Path Ans]", mnuFunctionsPATHEXISTS_Click),
        WIZARD(files, "[SHORTPATH File Var]", mnuFunctionsSHORTPATH_Click),
        WIZARD(files, "[FINDFILES StartPath Selection]", mnuFunctionFINDFILES_Click),
        WIZARD(files, "[FINDSTRING String Substring Start]", mnuFunctionsFINDSTRING_Click),
        WIZARD(files, "[DATEDIFF From To Var]", mnuFunctionDATEDIFF_Click),
        WIZARD(clipboard, "[GETCLIP Var]", mnuFunctionsClipboardGetClip_Click),
        WIZARD(clipboard, "[SETCLIP String]", mnuFunctionsClipboardSetClip_Click),
        WIZARD(clipboard, "[LOADCLIP Filename]", mnuFunctionsClipboardLoadClip_Click),
        WIZARD(clipboard, "[SAVECLIP Filename]", mnuFunctionsClipboardSaveClip_Click),
        WIZARD(clipboard, "[GETMULTICLIP Clip Var]", mnuFunctionsClipboardGetMultiClip_Click),
        WIZARD(clipboard, "[SETMULTICLIP Clip String]", mnuFunctionsClipboardSetMultiClip_Click),
        WIZARD(reader, "[LOADFILE Filename]", mnuFunctionsSonamarkLoadFile_Click),
        WIZARD(reader, "[SAVEFILE Filename]", mnuFunctionsSonamarkSaveFile_Click),
        WIZARD(reader, "[PRINT Filename]", mnuFunctionsSonamarkPrintFile_Click),
        WIZARD(reader, "[PRINTSELECTED]", mnuFunctionsSonamarkPrint_Click),
        WIZARD(reader, "[MAKEMP3 Filename]", mnuFunctionsSonamarkMakeMP3_Click),
        WIZARD(reader, "[CLIP ON]", mnuFunctionsSonamarkClipOn_Click),
        WIZARD(reader, "[CLIP OFF]", mnuFunctionsSonamarkClipOff_Click),
        WIZARD(reader, "[SPELLCHECK]", mnuFunctionsSonamarkSpellcheck_Click),
        WIZARD(reader, "[SPELLCHECKMODE ON]", mnuFunctionsSonamarkSpellcheckOn_Click),
        WIZARD(reader, "[SPELLCHECKMODE OFF]", mnuFunctionsSonamarkSpellcheckOff_Click),
        WIZARD(reader, "[LISTHOTKEYS]", mnuFunctionsHKList_Click),
        WIZARD(interaction, "[USERINPUT Message Var]", mnuFunctionsUserInputString_Click),
        WIZARD(interaction, "[YESNOCANCEL Question Ans]", mnuFunctionsYesNoCancel_Click),
        WIZARD(interaction, "[COMMAND Line]", mnuFunctionsCommand_Click),
        WIZARD(interaction, "[WEBSOURCE URL Src]", mnuFunctionsWebSource_Click),
        WIZARD(pickUp, "Left Click", mnuPUMouseLeftClick_Click),
        WIZARD(pickUp, "Left Drag", mnuPUMouseLeftDrag_Click),
        WIZARD(pickUp, "Left Double Click", mnuPUMouseLeftDbl_Click),
        WIZARD(pickUp, "Right Drag", mnuPUMouseRightDrag_Click),
        WIZARD(pickUp, "Right Double Click", mnuPUMouseRightDbl_Click),
        WIZARD(pickUp, "Click Zone", DefineMouseClickZone),
    };
}

#undef WIZARD

} // namespace

const QList<WizardEntry> &Wizards()
{
    static const QList<WizardEntry> wizards = MakeWizards();
    return wizards;
}

} // namespace hotkeys
