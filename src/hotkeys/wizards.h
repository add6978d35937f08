#pragma once
// The statement wizards of the macro editor's Functions menu and of the code box's mouse
// pick-up menu. Each asks for a statement's operands through a WizardAsker and answers
// the lines to paste, in order, one statement per line; an empty list means nothing is
// pasted (Cancel, an empty answer, a refusal, or the help shown instead).
//
// Every wizard starts the same way: with the help switch on it shows the help for its
// statement (ask.help("[COPYFILE ")) and answers nothing. A refused answer is told with
// ". Try again." and the question comes back; a statement that its checker finds fault
// with is told with ". Continue?" and pasted only on Yes.
#include "hotkeys/wizard_asker.h"
#include "macro/good_statements.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace hotkeys {

// What a wizard may look at in the editor.
struct WizardContext {
    QString macro;                      // the code box's text
    int caret = 0;                      // 0-based caret position in macro
    QList<macro::HotkeyName> hotkeys;   // the hotkeys table in order (macro n is element n-1)
    bool help = false;                  // the "help on statements" switch
};

using WizardFunction = QStringList (*)(WizardAsker &ask, const WizardContext &context);

// One menu entry. group is the Functions sub-menu ("&Control", "&Files", ...), or
// kPickUpGroup for the entries of the code box's pop-up menu that pick points with the mouse.
struct WizardEntry {
    QString group;
    QString caption;   // the menu text, e.g. "[COPYFILE Source Destination]"
    QString handler;   // e.g. "mnuFunctionsCOPYFILE_Click"
    WizardFunction function = nullptr;
};
inline constexpr const char *kPickUpGroup = "Pick-up";

// Every wizard, in menu order: the Functions entries by group, then the pick-up entries.
const QList<WizardEntry> &Wizards();

// --- control (wizards_control.cpp) ---------------------------------------------------------
QStringList mnuFunctionsIFTHENELSE_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsDO_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsQUITLOOP_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsCancel_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSetVAR_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsWait_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsMACRO_Click(WizardAsker &ask, const WizardContext &context);

// frmPicDate for [WAIT "moment"]: the lines to paste, or none.
QStringList SetPicTimeDate(WizardAsker &ask);
// frmPicDate for a [DATEDIFF] operand, past dates allowed: the quoted date, or "".
QString SetPicTimeDateDiff(WizardAsker &ask);
// The moment that frmPicDate's texts name: date "dd/MMMM/yyyy" (month by name, English
// or the system's, or by number), time "h:m:s AM" (12-hour, AM or PM). Invalid when
// either does not read.
QDateTime PicDateMoment(const QString &date, const QString &time);
// The text a pasted [WAIT "..."] or [DATEDIFF "..."] holds for a moment:
// "yyyy-MM-dd HH:mm:ss", a form the WAIT and DATEDIFF statements both read.
QString WaitMomentText(const QDateTime &moment);

// --- files (wizards_files.cpp) ---------------------------------------------------------------
QStringList mnuFunctionsCOPYFILE_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsOPEN_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsREAD_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsCLOSE_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsPATHEXISTS_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSHORTPATH_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionFINDFILES_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsFINDSTRING_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionDATEDIFF_Click(WizardAsker &ask, const WizardContext &context);

// --- clipboard (wizards_clipboard.cpp) -----------------------------------------------------
QStringList mnuFunctionsClipboardGetClip_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsClipboardSetClip_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsClipboardLoadClip_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsClipboardSaveClip_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsClipboardGetMultiClip_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsClipboardSetMultiClip_Click(WizardAsker &ask, const WizardContext &context);

// --- mouse (wizards_mouse.cpp) ---------------------------------------------------------------
// "[word X Y]" with both positions asked by input box (word: "LEFTDOWN", ...).
QStringList MouseFunction(WizardAsker &ask, const QString &word);
QStringList mnuFunctionsMouseLEFTDOWN_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsMouseLEFTUP_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsMouseRIGHTDOWN_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsMouseRIGHTUP_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsMouseClickzone_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuPUMouseLeftClick_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuPUMouseLeftDrag_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuPUMouseLeftDbl_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuPUMouseRightDrag_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuPUMouseRightDbl_Click(WizardAsker &ask, const WizardContext &context);
// The click zone picked with the mouse: top left, then bottom right.
QStringList DefineMouseClickZone(WizardAsker &ask, const WizardContext &context);

// --- interaction (wizards_interaction.cpp) ------------------------------------------------
QStringList mnuFunctionsSendkeys_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsKEYLOG_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsCommand_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsUserInputString_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsYesNoCancel_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSETFOCUS_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsWebSource_Click(WizardAsker &ask, const WizardContext &context);

// --- the reader (wizards_reader.cpp) ----------------------------------------------------------
QStringList mnuFunctionsSonamarkLoadFile_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkSaveFile_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkPrintFile_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkMakeMP3_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkPrint_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkClipOn_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkClipOff_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkSpellcheck_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkSpellcheckOn_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsSonamarkSpellcheckOff_Click(WizardAsker &ask, const WizardContext &context);
QStringList mnuFunctionsHKList_Click(WizardAsker &ask, const WizardContext &context);

} // namespace hotkeys
