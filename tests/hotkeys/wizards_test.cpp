// The statement wizards driven by a script of questions and answers: what each asks, in
// what order, what it refuses, and the lines it pastes.
#include "hotkeys/wizards.h"

#include "engine/control_statements.h"
#include "wizard_script.h"

#include <QSet>

using namespace wizard_script;
using hotkeys::WizardContext;
using hotkeys::WizardFunction;
using hotkeys::WizardNo;
using hotkeys::WizardOk;
using hotkeys::WizardYes;

namespace {

const QString kFilenamePrompt = QStringLiteral("Enter a variable that will hold the filename");

struct Case {
    const char *name;
    WizardFunction wizard;
    QList<Question> script;
    QStringList pasted;
    QString macro = {};  // the code box's text, caret at its end
};

WizardContext Context(const QString &macro = QString())
{
    WizardContext context;
    context.macro = macro;
    context.caret = int(macro.size());
    context.hotkeys = {{QStringLiteral("^{F1}"), QStringLiteral("Select All")}, {QStringLiteral("^%K"), QStringLiteral("Mail")}};
    return context;
}

QStringList Play(const Case &c, QSize screen = QSize(1920, 1080))
{
    ScriptedAsker ask(c.script, screen);
    const QStringList lines = c.wizard(ask, Context(c.macro));
    EXPECT_TRUE(ask.finished()) << "questions left unasked";
    return lines;
}

QString S(const char *text) { return QString::fromUtf8(text); }

// --- the pattern, on [COPYFILE] ------------------------------------------------------------

const QString kCopyForm = S("[COPYFILE Source Destination]");
const QString kCopyOrRename = S("Would you like to copy the files (Yes) or rename them (No)?");
const QString kSourceKind = S("Is the source file a string (Yes) or a variable (No)?");
const QString kDestinationKind = S("Is the destination file a string (Yes) or a variable (No)?");
const QString kSourceVariable = S("Enter a variable that will hold the source file");
const QString kDestinationVariable = S("Enter a variable that will hold the destination file");
const QString kCopyFilter = S("Copy File (*.*)|*.*");

const QList<Case> kCopyCases = {
    {"copy of two picked files, names with blanks",
     &hotkeys::mnuFunctionsCOPYFILE_Click,
     {Ask(kCopyForm, kCopyOrRename, WizardYes), Ask(kCopyForm, kSourceKind, WizardYes),
      File(S("Copy File"), kCopyFilter, S("/home/me/my notes.txt")), Ask(kCopyForm, kDestinationKind, WizardYes),
      File(S("Copy File"), kCopyFilter, S("/backup/my notes.txt"))},
     {S("[COPYFILE \"/home/me/my notes.txt\" \"/backup/my notes.txt\"]")}},
    {"copy between variables, a bad name refused and asked again",
     &hotkeys::mnuFunctionsCOPYFILE_Click,
     {Ask(kCopyForm, kCopyOrRename, WizardYes), Ask(kCopyForm, kSourceKind, WizardNo),
      Input(S("COPYFILE"), kSourceVariable, S("FROM1")),
      Note(S("COPYFILE"), S("Only letters allowed in variable name. Try again.")),
      Input(S("COPYFILE"), kSourceVariable, S(" FROM ")), Ask(kCopyForm, kDestinationKind, WizardNo),
      Input(S("COPYFILE"), kDestinationVariable, S("TO"))},
     {S("[COPYFILE FROM TO]")}},
    {"the same source and destination start the questions again",
     &hotkeys::mnuFunctionsCOPYFILE_Click,
     {Ask(kCopyForm, kCopyOrRename, WizardYes), Ask(kCopyForm, kSourceKind, WizardNo),
      Input(S("COPYFILE"), kSourceVariable, S("F")), Ask(kCopyForm, kDestinationKind, WizardNo),
      Input(S("COPYFILE"), kDestinationVariable, S("f")),
      Note(S("CopyFile"), S("The source and destination files can not be the same. Try again.")),
      Ask(kCopyForm, kSourceKind, WizardYes), File(S("Copy File"), kCopyFilter, S("/a.txt")),
      Ask(kCopyForm, kDestinationKind, WizardNo), Input(S("COPYFILE"), kDestinationVariable, S("F"))},
     {S("[COPYFILE \"/a.txt\" F]")}},
    {"rename: the new name goes through the variable IRENAME",
     &hotkeys::mnuFunctionsCOPYFILE_Click,
     {Ask(kCopyForm, kCopyOrRename, WizardNo), Ask(kCopyForm, kSourceKind, WizardYes),
      File(S("Copy File"), kCopyFilter, S("/old.txt")),
      InputWithDefault(S("RENAME"), kDestinationVariable, S("IRENAME"), S("NEWNAME"))},
     {S("[IRENAME=NEWNAME]"), S("[COPYFILE \"/old.txt\" IRENAME]")}},
    {"rename into IRENAME itself needs no assignment",
     &hotkeys::mnuFunctionsCOPYFILE_Click,
     {Ask(kCopyForm, kCopyOrRename, WizardNo), Ask(kCopyForm, kSourceKind, WizardNo),
      Input(S("COPYFILE"), kSourceVariable, S("OLD")), Input(S("RENAME"), kDestinationVariable, S("IRENAME"))},
     {S("[COPYFILE OLD IRENAME]")}},
};

// --- control statements --------------------------------------------------------------------

const QString kIfPrompt = S("Enter the IF condition, e.g. X=Y");
const QString kIncludeIf = S("Would you like to include an [If Cond] statement?");
const QString kWaitDate = S("Would you like to enter a time and date to wait for?");
const QString kWaitPrompt = S("Enter seconds to wait or a variable name");
const QString kWaitRange = S("Value must be between 0.1 and 3600.0 seconds. Try again.");
const QString kHotkeyWay = S("Would you like to name the hotkey by its descriptor (Yes) or by its index or a variable (No)?");
const QString kOpenLoop = S("[LOOP I=1,3]\r\n{TAB}\r\n");

const QList<Case> kControlCases = {
    {"IF block of three lines", &hotkeys::mnuFunctionsIFTHENELSE_Click, {Input(S("IF"), kIfPrompt, S("X=\"yes\""))},
     {S("[IF X=\"yes\"]"), S("[ELSE]"), S("[ENDIF]")}},
    {"IF condition at fault, the user stops", &hotkeys::mnuFunctionsIFTHENELSE_Click,
     {Input(S("IF"), kIfPrompt, S("X=")), Continue(S("IF"), S("Missing right variable for [IF Cond] statement. Continue?"), WizardNo)},
     {}},
    {"IF condition at fault, the user goes on", &hotkeys::mnuFunctionsIFTHENELSE_Click,
     {Input(S("IF"), kIfPrompt, S("X=")), Continue(S("IF"), S("Missing right variable for [IF Cond] statement. Continue?"), WizardYes)},
     {S("[IF X=]"), S("[ELSE]"), S("[ENDIF]")}},
    {"LOOP with a sequence", &hotkeys::mnuFunctionsDO_Click,
     {Input(S("LOOP"), S("Enter the LOOP condition, e.g. X=1,3-10"), S("X=1,3-10"))}, {S("[LOOP X=1,3-10]"), S("[ENDLOOP]")}},
    {"QUITLOOP alone inside a loop", &hotkeys::mnuFunctionsQUITLOOP_Click, {Ask(S("QUITLOOP"), kIncludeIf, WizardNo)},
     {S("[QUITLOOP]")}, kOpenLoop},
    {"QUITLOOP under an IF", &hotkeys::mnuFunctionsQUITLOOP_Click,
     {Ask(S("QUITLOOP"), kIncludeIf, WizardYes), Input(S("QUITLOOP"), S("Enter the IF condition"), S("I=2"))},
     {S("[IF I=2]"), S("[QUITLOOP]"), S("[ENDIF]")}, kOpenLoop},
    {"QUITLOOP behind a closed inner loop is still inside the outer one", &hotkeys::mnuFunctionsQUITLOOP_Click,
     {Ask(S("QUITLOOP"), kIncludeIf, WizardNo)}, {S("[QUITLOOP]")},
     S("[LOOP I=1,3]\r\n[loop J=1,2]\r\n[endloop]\r\n")},
    {"QUITLOOP outside any loop asks first", &hotkeys::mnuFunctionsQUITLOOP_Click,
     {Continue(S("QUITLOOP"), S("No matching [LOOP Cond] statement. Continue?"), WizardYes),
      Ask(S("QUITLOOP"), kIncludeIf, WizardNo)},
     {S("[QUITLOOP]")}, S("[LOOP I=1,3]\r\n[ENDLOOP]\r\n")},
    {"CANCEL IF", &hotkeys::mnuFunctionsCancel_Click,
     {Input(S("CANCEL IF"), S("Enter CANCEL condition, e.g. X=Y"), S("ANS=\"CANCEL\""))}, {S("[CANCEL IF ANS=\"CANCEL\"]")}},
    {"VAR= with a literal", &hotkeys::mnuFunctionsSetVAR_Click,
     {Input(S("VAR="), S("Enter the variable name"), S("NAME")),
      Input(S("VAR="), S("NAME=? (Enter the right hand side of the equation)\n(include double quotes for literal strings)"),
            S("\"Jo Ann\""))},
     {S("[NAME=\"Jo Ann\"]")}},
    {"VAR= with a bad right side, stopped", &hotkeys::mnuFunctionsSetVAR_Click,
     {Input(S("VAR="), S("Enter the variable name"), S("N")),
      Input(S("VAR="), S("N=? (Enter the right hand side of the equation)\n(include double quotes for literal strings)"), S("1++2")),
      Continue(S("VAR="), S("Duplicate operators for [VAR=Val] statement. Continue?"), WizardNo)},
     {}},
    {"WAIT seconds, out of range refused", &hotkeys::mnuFunctionsWait_Click,
     {Ask(S("WAIT"), kWaitDate, WizardNo), Input(S("WAIT"), kWaitPrompt, S("3601")), Note(S("WAIT"), kWaitRange),
      Input(S("WAIT"), kWaitPrompt, S("0.05")), Note(S("WAIT"), kWaitRange), Input(S("WAIT"), kWaitPrompt, S(".5"))},
     {S("[WAIT .5]")}},
    {"WAIT of the longest time", &hotkeys::mnuFunctionsWait_Click,
     {Ask(S("WAIT"), kWaitDate, WizardNo), Input(S("WAIT"), kWaitPrompt, S("3600")), }, {S("[WAIT 3600]")}},
    {"WAIT until a moment picked in the afternoon", &hotkeys::mnuFunctionsWait_Click,
     {Ask(S("WAIT"), kWaitDate, WizardYes), Date(true, S("07/March/2031"), S("3:07:09 PM"))},
     {S("[WAIT \"2031-03-07 15:07:09\"]")}},
    {"WAIT until just after midnight", &hotkeys::mnuFunctionsWait_Click,
     {Ask(S("WAIT"), kWaitDate, WizardYes), Date(true, S("31/December/2031"), S("12:00:05 AM"))},
     {S("[WAIT \"2031-12-31 00:00:05\"]")}},
    {"WAIT on a moment that does not read", &hotkeys::mnuFunctionsWait_Click,
     {Ask(S("WAIT"), kWaitDate, WizardYes), Date(true, S("31/February/2031"), S("1:00:00 PM")),
      Note(S("Set Time/Date"), S("Illegal time/date"))},
     {}},
    {"HOTKEY by a descriptor of the table", &hotkeys::mnuFunctionsMACRO_Click,
     {Ask(S("HOTKEY"), kHotkeyWay, WizardYes),
      Input(S("HOTKEY"), S("Enter the hotkey descriptor e.g. ^{F1} -or- Select All"), S("select all"))},
     {S("[HOTKEY \"select all\"]")}},
    {"HOTKEY by a descriptor not in the table", &hotkeys::mnuFunctionsMACRO_Click,
     {Ask(S("HOTKEY"), kHotkeyWay, WizardYes),
      Input(S("HOTKEY"), S("Enter the hotkey descriptor e.g. ^{F1} -or- Select All"), S("Nothing")),
      Continue(S("HOTKEY"), S("Macro not found for [HOTKEY n] statement. Continue?"), WizardNo)},
     {}},
    {"HOTKEY by index, past the count refused", &hotkeys::mnuFunctionsMACRO_Click,
     {Ask(S("HOTKEY"), kHotkeyWay, WizardNo), Input(S("HOTKEY"), S("Enter the hotkey index or variable"), S("3")),
      Note(S("HOTKEY"), S("Invalid hotkey index (NumHotkeys=2). Try again.")),
      Input(S("HOTKEY"), S("Enter the hotkey index or variable"), S("0")),
      Note(S("HOTKEY"), S("Invalid hotkey index (NumHotkeys=2). Try again.")),
      Input(S("HOTKEY"), S("Enter the hotkey index or variable"), S("2"))},
     {S("[HOTKEY 2]")}},
};

// --- files -----------------------------------------------------------------------------------

const QString kIdPrompt = S("Enter the file ID number (1-9) or variable name");
const QString kBadId = S("Invalid ID number (1-9). Try again.");

const QList<Case> kFileCases = {
    {"OPEN: id out of range, then a picked file", &hotkeys::mnuFunctionsOPEN_Click,
     {Input(S("OPEN"), kIdPrompt, S("10")), Note(S("OPEN"), kBadId), Input(S("OPEN"), kIdPrompt, S("1.5")), Note(S("OPEN"), kBadId),
      Input(S("OPEN"), kIdPrompt, S("1")), Ask(S("[OPEN n Filename]"), S("Is the file a string (Yes) or a variable (No)?"), WizardYes),
      File(S("Open File"), S("Open File (*.*)|*.*"), S("/data/in file.txt"))},
     {S("[OPEN 1 \"/data/in file.txt\"]")}},
    {"OPEN: id and file variable must differ", &hotkeys::mnuFunctionsOPEN_Click,
     {Input(S("OPEN"), kIdPrompt, S("U")), Ask(S("[OPEN n Filename]"), S("Is the file a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("OPEN"), kFilenamePrompt, S("u")), Note(S("OPEN"), S("Unit and file variables must be different. Try again.")),
      Input(S("OPEN"), kFilenamePrompt, S("NAME"))},
     {S("[OPEN U NAME]")}},
    {"READ with its OPEN before", &hotkeys::mnuFunctionsREAD_Click,
     {Input(S("READ"), kIdPrompt, S("2")), Input(S("READ"), S("Enter a variable that will hold the record, e.g. REC"), S("REC"))},
     {S("[READ 2 REC]")}, S("[open 2 \"f.txt\"]\r\n")},
    {"READ without an OPEN is warned of and still pasted", &hotkeys::mnuFunctionsREAD_Click,
     {Input(S("READ"), kIdPrompt, S("2")), Input(S("READ"), S("Enter a variable that will hold the record, e.g. REC"), S("REC")),
      Note(S("READ"), S("Warning, no matching OPEN statement for READ"))},
     {S("[READ 2 REC]")}, S("[OPEN 3 \"f.txt\"]\r\n")},
    {"CLOSE takes a number only", &hotkeys::mnuFunctionsCLOSE_Click,
     {Input(S("CLOSE"), S("Enter the file ID number (1-9)"), S("U")), Note(S("CLOSE"), kBadId),
      Input(S("CLOSE"), S("Enter the file ID number (1-9)"), S("3"))},
     {S("[CLOSE 3]")}, S("[OPEN 3 \"f.txt\"]\r\n")},
    {"CLOSE without an OPEN is warned of", &hotkeys::mnuFunctionsCLOSE_Click,
     {Input(S("CLOSE"), S("Enter the file ID number (1-9)"), S("4")),
      Note(S("CLOSE"), S("Warning, no matching OPEN statement for CLOSE"))},
     {S("[CLOSE 4]")}},
    {"PATHEXISTS creating a typed folder", &hotkeys::mnuFunctionsPATHEXISTS_Click,
     {Ask(S("PATHEXISTS"), S("Would you like to create a new folder (Yes) or test whether a path exists (No)?"), WizardYes),
      Ask(S("PATHEXISTS"), S("Is the new folder a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("PATHEXISTS"), S("Enter the new folder"), S("/tmp/new folder"))},
     {S("[PATHEXISTS \"/tmp/new folder\" CREATE]")}},
    {"PATHEXISTS creating a folder held by a variable", &hotkeys::mnuFunctionsPATHEXISTS_Click,
     {Ask(S("PATHEXISTS"), S("Would you like to create a new folder (Yes) or test whether a path exists (No)?"), WizardYes),
      Ask(S("PATHEXISTS"), S("Is the new folder a string (Yes) or a variable (No)?"), WizardNo),
      InputWithDefault(S("PATHEXISTS"), S("Enter a variable that will hold the new folder"), S("NEW"), S("NEW"))},
     {S("[PATHEXISTS NEW CREATE]")}},
    {"PATHEXISTS testing a picked folder", &hotkeys::mnuFunctionsPATHEXISTS_Click,
     {Ask(S("PATHEXISTS"), S("Would you like to create a new folder (Yes) or test whether a path exists (No)?"), WizardNo),
      Ask(S("Path Exist?"), S("Is the path a folder (Yes) or a file (No)?"), WizardYes),
      Ask(S("Path Exist?"), S("Is the folder a string (Yes) or a variable (No)?"), WizardYes), Folder(S("Path Exist?"), S("/srv/my data")),
      InputWithDefault(S("PATHEXISTS"), S("Enter a variable that will hold the answer"), S("ANS"), S("ANS"))},
     {S("[PATHEXISTS \"/srv/my data\" ANS]")}},
    {"PATHEXISTS testing a file variable", &hotkeys::mnuFunctionsPATHEXISTS_Click,
     {Ask(S("PATHEXISTS"), S("Would you like to create a new folder (Yes) or test whether a path exists (No)?"), WizardNo),
      Ask(S("Path Exist?"), S("Is the path a folder (Yes) or a file (No)?"), WizardNo),
      Ask(S("Path Exist?"), S("Is the file a string (Yes) or a variable (No)?"), WizardNo), Input(S("PATHEXISTS"), kFilenamePrompt, S("F")),
      Input(S("PATHEXISTS"), S("Enter a variable that will hold the answer"), S("FOUND"))},
     {S("[PATHEXISTS F FOUND]")}},
    {"SHORTPATH of a picked file", &hotkeys::mnuFunctionsSHORTPATH_Click,
     {Ask(S("SHORTPATH"), S("Is the file a string (Yes) or a variable (No)?"), WizardYes),
      File(S("Open File"), S("Short Path (*.*)|*.*"), S("/a b/c.txt")),
      InputWithDefault(S("SHORTPATH"), S("Enter a variable that will hold the short path name"), S("SPATH"), S("SPATH"))},
     {S("[SHORTPATH \"/a b/c.txt\" SPATH]")}},
    {"FINDFILES into an output file, its extension added", &hotkeys::mnuFunctionFINDFILES_Click,
     {Ask(S("[FINDFILES StartPath Selection]"), S("Is the start-in folder a string (Yes) or a variable (No)?"), WizardYes),
      Folder(S("Select Start-In Folder"), S("/home/me")),
      Input(S("FINDFILES"), S("Enter a variable that will hold the file selection"), S("SEL")),
      Ask(S("Find Files"), S("Would you like to save the file selection to a file (Yes) or keep it in the variable (No)?"), WizardYes),
      File(S("Output File"), S("Output File (*.*)|*.*"), S("/tmp/found"))},
     {S("[SEL=\"/tmp/found.txt\"]"), S("[FINDFILES \"/home/me\" SEL]")}},
    {"FINDFILES kept in a variable", &hotkeys::mnuFunctionFINDFILES_Click,
     {Ask(S("[FINDFILES StartPath Selection]"), S("Is the start-in folder a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("FINDFILES"), S("Enter a variable that will hold the start-in path"), S("START")),
      Input(S("FINDFILES"), S("Enter a variable that will hold the file selection"), S("SEL")),
      Ask(S("Find Files"), S("Would you like to save the file selection to a file (Yes) or keep it in the variable (No)?"), WizardNo)},
     {S("[FINDFILES START SEL]")}},
    {"FINDSTRING in a literal, start past its end refused", &hotkeys::mnuFunctionsFINDSTRING_Click,
     {Ask(S("[FINDSTRING String Substring Start]"), S("Is the string to search a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("FINDSTRING"), S("Enter a string to search"), S("hello")),
      Ask(S("[FINDSTRING String Substring Start]"), S("Is the sub-string a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("FINDSTRING"), S("Enter a sub-string to search for"), S("l")),
      Input(S("FINDSTRING"), S("Enter a variable that will hold the character position"), S("POS")),
      InputWithDefault(S("FINDSTRING"), S("Enter the start character position to search from [1-LEN(String)]"), S("1"), S("6")),
      Note(S("FINDSTRING"), S("The start position must be within 1 and 5. Try again.")),
      Input(S("FINDSTRING"), S("Enter the start character position to search from [1-LEN(String)]"), S("4"))},
     {S("[POS=4]"), S("[FINDSTRING \"hello\" \"l\" POS]")}},
    {"FINDSTRING in variables", &hotkeys::mnuFunctionsFINDSTRING_Click,
     {Ask(S("[FINDSTRING String Substring Start]"), S("Is the string to search a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("FINDSTRING"), S("Enter a variable for the search string"), S("TEXT")),
      Ask(S("[FINDSTRING String Substring Start]"), S("Is the sub-string a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("FINDSTRING"), S("Enter a variable for the sub-string"), S("PART")),
      Input(S("FINDSTRING"), S("Enter a variable that will hold the character position"), S("AT")),
      Input(S("FINDSTRING"), S("Enter the start character position to search from [1-LEN(String)]"), S("0")),
      Note(S("FINDSTRING"), S("The start position must be within 1 and LEN(String). Try again.")),
      Input(S("FINDSTRING"), S("Enter the start character position to search from [1-LEN(String)]"), S("250"))},
     {S("[AT=250]"), S("[FINDSTRING TEXT PART AT]")}},
    {"DATEDIFF from a file's date to a picked date", &hotkeys::mnuFunctionDATEDIFF_Click,
     {Ask(S("[DATEDIFF DateFrom DateTo Diff]"), S("Is the date (from) a string (Yes) or a variable (No)?"), WizardYes),
      Ask(S("DATEDIFF"), S("Is the date (from) the date of a file (Yes) or a date you pick (No)?"), WizardYes),
      File(S("File Date (From)"), S("File Date (*.*)|*.*"), S("/etc/hosts")),
      Ask(S("[DATEDIFF DateFrom DateTo Diff]"), S("Is the date (to) a string (Yes) or a variable (No)?"), WizardYes),
      Ask(S("DATEDIFF"), S("Is the date (to) the date of a file (Yes) or a date you pick (No)?"), WizardNo),
      Date(false, S("01/January/2001"), S("9:30:00 AM")),
      Input(S("DATEDIFF"), S("Enter a variable that will hold the difference (days)"), S("DAYS"))},
     {S("[DATEDIFF \"/etc/hosts\" \"2001-01-01 09:30:00\" DAYS]")}},
    {"DATEDIFF between variables", &hotkeys::mnuFunctionDATEDIFF_Click,
     {Ask(S("[DATEDIFF DateFrom DateTo Diff]"), S("Is the date (from) a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("DATEDIFF"), S("Enter a date (from) string variable"), S("FROM")),
      Ask(S("[DATEDIFF DateFrom DateTo Diff]"), S("Is the date (to) a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("DATEDIFF"), S("Enter a date (to) string variable"), S("TO")),
      Input(S("DATEDIFF"), S("Enter a variable that will hold the difference (days)"), S("DAYS"))},
     {S("[DATEDIFF FROM TO DAYS]")}},
};

// --- clipboard and the reader --------------------------------------------------------------------

const QString kClipPrompt = S("Select a clip number (1-5) or variable name");
const QString kClipRange = S("The clip number must be between 1 and 5. Try again.");
const QString kFileKind = S("Is the file a string (Yes) or a variable (No)?");

const QList<Case> kClipboardCases = {
    {"GETCLIP", &hotkeys::mnuFunctionsClipboardGetClip_Click,
     {Input(S("GETCLIP"), S("Enter a variable to hold the clip, e.g. CLIPVAR"), S("CLIPVAR"))}, {S("[GETCLIP CLIPVAR]")}},
    {"GETCLIP of a literal is a fault, the user stops", &hotkeys::mnuFunctionsClipboardGetClip_Click,
     {Input(S("GETCLIP"), S("Enter a variable to hold the clip, e.g. CLIPVAR"), S("\"x\"")),
      Continue(S("GETCLIP"), S("Quotes not allowed in variable for [GETCLIP Var] statement. Continue?"), WizardNo)},
     {}},
    {"SETCLIP a typed text; a double quote refused", &hotkeys::mnuFunctionsClipboardSetClip_Click,
     {Ask(S("[SETCLIP String]"), S("Is the text for the clipboard a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("SETCLIP"), S("Enter string to send to the clipboard (use ~ for ENTER)"), S("say \"hi\"")),
      Note(S("SETCLIP"), S("A string can not hold a double quote. Try again.")),
      Input(S("SETCLIP"), S("Enter string to send to the clipboard (use ~ for ENTER)"), S("Dear Sir,~"))},
     {S("[SETCLIP \"Dear Sir,~\"]")}},
    {"SETCLIP a variable", &hotkeys::mnuFunctionsClipboardSetClip_Click,
     {Ask(S("[SETCLIP String]"), S("Is the text for the clipboard a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("SETCLIP"), S("Enter a variable to send to the clipboard"), S("TEXT"))},
     {S("[SETCLIP TEXT]")}},
    {"LOADCLIP a picked file", &hotkeys::mnuFunctionsClipboardLoadClip_Click,
     {Ask(S("[LOADCLIP Filename]"), kFileKind, WizardYes), File(S("Load File"), S("File (*.*)|*.*"), S("/p/pic 1.bmp"))},
     {S("[LOADCLIP \"/p/pic 1.bmp\"]")}},
    {"SAVECLIP to a variable", &hotkeys::mnuFunctionsClipboardSaveClip_Click,
     {Ask(S("[SAVECLIP Filename]"), kFileKind, WizardNo), Input(S("SAVECLIP"), kFilenamePrompt, S("OUT"))}, {S("[SAVECLIP OUT]")}},
    {"GETMULTICLIP, clip 6 refused", &hotkeys::mnuFunctionsClipboardGetMultiClip_Click,
     {Input(S("GETMULTICLIP"), kClipPrompt, S("6")), Note(S("GETMULTICLIP"), kClipRange), Input(S("GETMULTICLIP"), kClipPrompt, S("0")),
      Note(S("GETMULTICLIP"), kClipRange), Input(S("GETMULTICLIP"), kClipPrompt, S("5")),
      Input(S("GETMULTICLIP"), S("Enter a variable to hold the clip, e.g. CLIPVAR"), S("C"))},
     {S("[GETMULTICLIP 5 C]")}},
    {"GETMULTICLIP, a clip number that is no name", &hotkeys::mnuFunctionsClipboardGetMultiClip_Click,
     {Input(S("GETMULTICLIP"), kClipPrompt, S("N1")),
      Note(S("GETMULTICLIP"), S("Only letters allowed in clip variable name. Try again.")), Input(S("GETMULTICLIP"), kClipPrompt, S("N")),
      Input(S("GETMULTICLIP"), S("Enter a variable to hold the clip, e.g. CLIPVAR"), S("C"))},
     {S("[GETMULTICLIP N C]")}},
    {"SETMULTICLIP a typed text", &hotkeys::mnuFunctionsClipboardSetMultiClip_Click,
     {Input(S("SETMULTICLIP"), kClipPrompt, S("2")),
      Ask(S("[SETMULTICLIP Clip String]"), S("Is the text for the clip a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("SETMULTICLIP"), S("Enter string to send to the clip (use ~ for ENTER)"), S("two words"))},
     {S("[SETMULTICLIP 2 \"two words\"]")}},
    {"LOADFILE a document", &hotkeys::mnuFunctionsSonamarkLoadFile_Click,
     {Ask(S("[LOADFILE Filename]"), kFileKind, WizardYes),
      File(S("Open File"), S("Text & XML Files (*.txt;*.rtf;*.xml;*.doc)|*.txt;*.rtf;*.xml;*.doc"), S("/d/a.doc"))},
     {S("[LOADFILE \"/d/a.doc\"]")}},
    {"SAVEFILE keeps a known extension", &hotkeys::mnuFunctionsSonamarkSaveFile_Click,
     {Ask(S("[SAVEFILE Filename]"), kFileKind, WizardYes),
      File(S("Save File"), S("Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml"), S("/d/a.RTF"))},
     {S("[SAVEFILE \"/d/a.RTF\"]")}},
    {"SAVEFILE adds .TXT to another", &hotkeys::mnuFunctionsSonamarkSaveFile_Click,
     {Ask(S("[SAVEFILE Filename]"), kFileKind, WizardYes),
      File(S("Save File"), S("Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml"), S("/d/a.doc"))},
     {S("[SAVEFILE \"/d/a.doc.TXT\"]")}},
    {"MAKEMP3 adds .MP3", &hotkeys::mnuFunctionsSonamarkMakeMP3_Click,
     {Ask(S("[MAKEMP3 Filename]"), kFileKind, WizardYes), File(S("Create MP3"), S("MP3 File (*.mp3)|*.mp3"), S("/m/talk"))},
     {S("[MAKEMP3 \"/m/talk.MP3\"]")}},
    {"PRINT a variable", &hotkeys::mnuFunctionsSonamarkPrintFile_Click,
     {Ask(S("[PRINT Filename]"), kFileKind, WizardNo), Input(S("PRINT"), kFilenamePrompt, S("DOC"))}, {S("[PRINT DOC]")}},
};

// --- mouse -------------------------------------------------------------------------------------

const QString kXPrompt = S("Enter the X position or variable name");
const QString kYPrompt = S("Enter the Y position or variable name");
const QString kTrap = S("Would you like the click zone to trap the mouse click (Yes) or let it through (No)?");

const QList<Case> kMouseCases = {
    {"LEFTDOWN typed, positions off the screen refused", &hotkeys::mnuFunctionsMouseLEFTDOWN_Click,
     {Input(S("LEFTDOWN"), kXPrompt, S("1920")), Note(S("LEFTDOWN"), S("X position must be less than 1920 pixels. Try again.")),
      Input(S("LEFTDOWN"), kXPrompt, S("-3")), Note(S("LEFTDOWN"), S("Invalid X mouse position. Try again.")),
      Input(S("LEFTDOWN"), kXPrompt, S("1919")), Input(S("LEFTDOWN"), kYPrompt, S("1080")),
      Note(S("LEFTDOWN"), S("Y position must be less than 1080 pixels. Try again.")), Input(S("LEFTDOWN"), kYPrompt, S("YPOS"))},
     {S("[LEFTDOWN 1919 YPOS]")}},
    {"RIGHTUP typed", &hotkeys::mnuFunctionsMouseRIGHTUP_Click,
     {Input(S("RIGHTUP"), kXPrompt, S("0")), Input(S("RIGHTUP"), kYPrompt, S("0"))}, {S("[RIGHTUP 0 0]")}},
    {"CLICKZONE typed with each refusal of the maxima", &hotkeys::mnuFunctionsMouseClickzone_Click,
     {Input(S("CLICKZONE"), S("Enter the Xmin position or variable name"), S("100")),
      Input(S("CLICKZONE"), S("Enter the Ymin position or variable name"), S("1080")),
      Note(S("CLICKZONE"), S("Ymin position must be less than 1080 pixels. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Ymin position or variable name"), S("50")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("100")),
      Note(S("CLICKZONE"), S("Xmin and Xmax can not be the same. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("99")),
      Note(S("CLICKZONE"), S("Xmax position must be greater than 100 (Xmin) pixels. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("x y")),
      Note(S("CLICKZONE"), S("Invalid Xmax mouse position. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("300")),
      Input(S("CLICKZONE"), S("Enter the Ymax position or variable name"), S("10")),
      Note(S("CLICKZONE"), S("Ymax position must be greater than 50 (Ymin) pixels. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Ymax position or variable name"), S("400")), Ask(S("CLICKZONE"), kTrap, WizardYes)},
     {S("[CLICKZONE 100 50 300 400 TRUE]")}},
    {"CLICKZONE with variables for the minima", &hotkeys::mnuFunctionsMouseClickzone_Click,
     {Input(S("CLICKZONE"), S("Enter the Xmin position or variable name"), S("LEFT")),
      Input(S("CLICKZONE"), S("Enter the Ymin position or variable name"), S("TOP")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("left")),
      Note(S("CLICKZONE"), S("Xmin and Xmax can not be the same. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("0")),
      Note(S("CLICKZONE"), S("Xmax mouse position must be > 0. Try again.")),
      Input(S("CLICKZONE"), S("Enter the Xmax position or variable name"), S("10")),
      Input(S("CLICKZONE"), S("Enter the Ymax position or variable name"), S("10")), Ask(S("CLICKZONE"), kTrap, WizardNo)},
     {S("[CLICKZONE LEFT TOP 10 10 FALSE]")}},
    {"left click picked", &hotkeys::mnuPUMouseLeftClick_Click, {Point(S("Define Left Click"), 640, 480)},
     {S("[LEFTDOWN 640 480]"), S("[LEFTUP 640 480]")}},
    {"left click, the mouse can't be hooked", &hotkeys::mnuPUMouseLeftClick_Click,
     {Unhooked(S("Define Left Click")), Note(S("Mouse Hook"), S("Can't hook the mouse for Left Click statement."))}, {}},
    {"left double click picked", &hotkeys::mnuPUMouseLeftDbl_Click, {Point(S("Define Left Doubleclick"), 5, 6)},
     {S("[LEFTDOWN 5 6]"), S("[LEFTUP 5 6]"), S("[WAIT .2]"), S("[LEFTDOWN 5 6]"), S("[LEFTUP 5 6]")}},
    {"right double click, the mouse can't be hooked", &hotkeys::mnuPUMouseRightDbl_Click,
     {Unhooked(S("Define Right Doubleclick")), Note(S("Mouse Hook"), S("Can't hook the mouse for Right Doubleclick statement."))}, {}},
    {"left drag picked", &hotkeys::mnuPUMouseLeftDrag_Click,
     {Point(S("Define Left Down"), 10, 20), Point(S("Define Left Up"), 300, 400)}, {S("[LEFTDOWN 10 20]"), S("[LEFTUP 300 400]")}},
    {"right drag, the hook lost at the second point", &hotkeys::mnuPUMouseRightDrag_Click,
     {Point(S("Define Right Down"), 10, 20), Unhooked(S("Define Right Up")),
      Note(S("Mouse Hook"), S("Can't hook the mouse for Right Drag statement."))},
     {}},
    {"click zone picked bottom right first", &hotkeys::DefineMouseClickZone,
     {Point(S("Define Top Left"), 300, 400), Point(S("Define Bottom Right"), 100, 50), Ask(S("CLICKZONE"), kTrap, WizardNo)},
     {S("[CLICKZONE 100 50 300 400 FALSE]")}},
    {"click zone of no width picked again", &hotkeys::DefineMouseClickZone,
     {Point(S("Define Top Left"), 100, 50), Point(S("Define Bottom Right"), 100, 400),
      Note(S("CLICKZONE"), S("Xmin and Xmax can not be the same. Try again.")), Point(S("Define Top Left"), 100, 50),
      Point(S("Define Bottom Right"), 101, 51), Ask(S("CLICKZONE"), kTrap, WizardYes)},
     {S("[CLICKZONE 100 50 101 51 TRUE]")}},
};

// --- interaction ---------------------------------------------------------------------------------

const QString kTextOrPrompt = S("Would you like a text box for the input (Yes) or an input box with a prompt (No)?");
const QString kInputVariable = S("Enter a variable to hold the input, e.g. INVAR");
const QString kSecondsPrompt = S("Enter the number of seconds to wait for a response (0=no limit)");
const QString kPickOrType = S("Would you like to pick the window with the mouse (Yes) or type its class name (No)?");
const QString kFocusAnswer = S("Enter a variable name that will indicate whether SETFOCUS was successful");

const QList<Case> kInteractionCases = {
    {"SENDKEYS typed keystrokes", &hotkeys::mnuFunctionsSendkeys_Click,
     {Ask(S("[SENDKEYS String]"), S("Is the keystroke text a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("SENDKEYS"), S("Enter the keystrokes to send, e.g. {TAB}hello^a"), S("{TAB}hello world^a"))},
     {S("[SENDKEYS \"{TAB}hello world^a\"]")}},
    {"SENDKEYS a variable", &hotkeys::mnuFunctionsSendkeys_Click,
     {Ask(S("[SENDKEYS String]"), S("Is the keystroke text a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("SENDKEYS"), S("Enter a variable that will hold the keystrokes"), S("KEYS"))},
     {S("[SENDKEYS KEYS]")}},
    {"KEYLOG RESET", &hotkeys::mnuFunctionsKEYLOG_Click,
     {Input(S("KEYLOG"), S("Enter a variable to hold the keystrokes (use RESET to clear the keylog buffer)"), S("RESET"))},
     {S("[KEYLOG RESET]")}},
    {"COMMAND through the shell, COMSPEC put in capitals", &hotkeys::mnuFunctionsCommand_Click,
     {Ask(S("[COMMAND Line]"), S("Is the command line a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("COMMAND"), S("Enter the COMMAND string, e.g. notepad.exe file.txt"), S("comspec ls -l"))},
     {S("[COMMAND \"COMSPEC ls -l\"]")}},
    {"COMMAND variable, letters only", &hotkeys::mnuFunctionsCommand_Click,
     {Ask(S("[COMMAND Line]"), S("Is the command line a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("COMMAND"), S("Enter the COMMAND variable"), S("CMD2")),
      Note(S("COMMAND"), S("Only letters allowed in variable name. Try again.")), Input(S("COMMAND"), S("Enter the COMMAND variable"), S("CMD"))},
     {S("[COMMAND CMD]")}},
    {"USERINPUT in the text box, starting from a text", &hotkeys::mnuFunctionsUserInputString_Click,
     {Ask(S("USERINPUT"), kTextOrPrompt, WizardYes), Input(S("USERINPUT"), S("Enter an optional text message"), S("Dear Sir")),
      InputWithDefault(S("USERINPUT"), kInputVariable, S("INVAR"), S("INVAR"))},
     {S("[INVAR=\"Dear Sir\"]"), S("[USERINPUT \"TEXTBOX\" INVAR]")}},
    {"USERINPUT in the text box, empty", &hotkeys::mnuFunctionsUserInputString_Click,
     {Ask(S("USERINPUT"), kTextOrPrompt, WizardYes), Input(S("USERINPUT"), S("Enter an optional text message"), S("")),
      Input(S("USERINPUT"), kInputVariable, S("NOTE"))},
     {S("[USERINPUT \"TEXTBOX\" NOTE]")}},
    {"USERINPUT with a prompt", &hotkeys::mnuFunctionsUserInputString_Click,
     {Ask(S("USERINPUT"), kTextOrPrompt, WizardNo), Input(S("USERINPUT"), S("Enter the prompt message"), S("Your name:")),
      Input(S("USERINPUT"), kInputVariable, S("NAME"))},
     {S("[USERINPUT \"Your name:\" NAME]")}},
    {"YESNOCANCEL with a time limit", &hotkeys::mnuFunctionsYesNoCancel_Click,
     {Ask(S("[YESNOCANCEL Question Ans]"), S("Is the question a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("YesNoCancel"), S("Enter the question to ask (exclude ? for a message only)"), S("Go on?")),
      InputWithDefault(S("YesNoCancel"), kSecondsPrompt, S("0"), S("3600")),
      Note(S("YesNoCancel"), S("The number of seconds must be less than 3600. Try again.")), Input(S("YesNoCancel"), kSecondsPrompt, S("10"))},
     {S("[ANS=10]"), S("[YESNOCANCEL \"Go on?\" ANS]")}},
    {"YESNOCANCEL without a limit", &hotkeys::mnuFunctionsYesNoCancel_Click,
     {Ask(S("[YESNOCANCEL Question Ans]"), S("Is the question a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("YesNoCancel"), S("Enter the question variable name"), S("Q")), Input(S("YesNoCancel"), kSecondsPrompt, S("0"))},
     {S("[YESNOCANCEL Q ANS]")}},
    {"SETFOCUS on a window picked", &hotkeys::mnuFunctionsSETFOCUS_Click,
     {Ask(S("[SETFOCUS Classname Ans]"), S("Is the class name a string (Yes) or a variable (No)?"), WizardYes),
      Ask(S("SETFOCUS"), kPickOrType, WizardYes), Class(S("Get Class Name"), S("XTerm")),
      InputWithDefault(S("SETFOCUS"), kFocusAnswer, S("ANS"), S("ANS"))},
     {S("[SETFOCUS \"XTerm\" ANS]")}},
    {"SETFOCUS, the mouse can't be hooked: the name is typed", &hotkeys::mnuFunctionsSETFOCUS_Click,
     {Ask(S("[SETFOCUS Classname Ans]"), S("Is the class name a string (Yes) or a variable (No)?"), WizardYes),
      Ask(S("SETFOCUS"), kPickOrType, WizardYes), ClassUnhooked(S("Get Class Name")),
      Note(S("Mouse Hook"), S("Can't hook the mouse for class name.")), Input(S("SETFOCUS"), S("Enter the class name"), S("Gedit")),
      Input(S("SETFOCUS"), kFocusAnswer, S("OK"))},
     {S("[SETFOCUS \"Gedit\" OK]")}},
    {"SETFOCUS on a variable", &hotkeys::mnuFunctionsSETFOCUS_Click,
     {Ask(S("[SETFOCUS Classname Ans]"), S("Is the class name a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("SETFOCUS"), S("Enter a variable that will hold the class name"), S("WIN")), Input(S("SETFOCUS"), kFocusAnswer, S("ANS"))},
     {S("[SETFOCUS WIN ANS]")}},
    {"WEBSOURCE into a file", &hotkeys::mnuFunctionsWebSource_Click,
     {Ask(S("[WEBSOURCE URL Src]"), S("Is the webpage URL a string (Yes) or a variable (No)?"), WizardYes),
      Input(S("WEBSOURCE"), S("Enter the webpage URL"), S("http://example.com/a?b=1")),
      InputWithDefault(S("WEBSOURCE"), S("Enter a variable that will hold the webpage source code"), S("SRC"), S("SRC")),
      Ask(S("WEBSOURCE"), S("Would you like to save the webpage source code to a file (Yes) or keep it in the variable (No)?"), WizardYes),
      File(S("Output File"), S("Output File (*.*)|*.*"), S("/tmp/page"))},
     {S("[SRC=\"/tmp/page.htm\"]"), S("[WEBSOURCE \"http://example.com/a?b=1\" SRC]")}},
    {"WEBSOURCE kept in a variable", &hotkeys::mnuFunctionsWebSource_Click,
     {Ask(S("[WEBSOURCE URL Src]"), S("Is the webpage URL a string (Yes) or a variable (No)?"), WizardNo),
      Input(S("WEBSOURCE"), S("Enter a variable that will hold the URL"), S("URL")),
      Input(S("WEBSOURCE"), S("Enter a variable that will hold the webpage source code"), S("PAGE")),
      Ask(S("WEBSOURCE"), S("Would you like to save the webpage source code to a file (Yes) or keep it in the variable (No)?"), WizardNo)},
     {S("[WEBSOURCE URL PAGE]")}},
};

QList<Case> AllCases()
{
    return kCopyCases + kControlCases + kFileCases + kClipboardCases + kMouseCases + kInteractionCases;
}

} // namespace

TEST(Wizards, EachScriptPastesItsLines)
{
    for (const Case &c : AllCases()) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Play(c), c.pasted);
    }
}

// An empty answer at an input box ends a wizard as Cancel does.
TEST(Wizards, AnEmptyAnswerEndsTheWizard)
{
    for (const Case &c : AllCases()) {
        for (int i = 0; i < c.script.size(); ++i) {
            const Question &q = c.script.at(i);
            if (q.kind != Kind::Input || q.text == S("Enter an optional text message"))
                continue;
            SCOPED_TRACE(std::string(c.name) + ", blank answer to question " + std::to_string(i + 1));
            QList<Question> script = c.script.mid(0, i);
            Question blank = q;
            blank.reply = S("   ");
            script << blank;
            EXPECT_TRUE(Play({c.name, c.wizard, script, {}, c.macro}).isEmpty());
        }
    }
}

// Cancel at any question ends the wizard with nothing pasted and nothing more asked.
TEST(Wizards, CancelAtEveryQuestionPastesNothing)
{
    for (const Case &c : AllCases()) {
        for (int i = 0; i < c.script.size(); ++i) {
            if (!Cancellable(c.script.at(i)))
                continue;
            SCOPED_TRACE(std::string(c.name) + ", cancel at question " + std::to_string(i + 1));
            QList<Question> script = c.script.mid(0, i);
            script << Cancelled(c.script.at(i));
            EXPECT_TRUE(Play({c.name, c.wizard, script, {}, c.macro}).isEmpty());
        }
    }
}

TEST(Wizards, HelpSwitchShowsTheStatementsHelpInstead)
{
    QSet<QString> words;
    for (const hotkeys::WizardEntry &entry : hotkeys::Wizards()) {
        SCOPED_TRACE(entry.handler.toStdString());
        ScriptedAsker ask({});
        WizardContext context = Context();
        context.help = true;
        EXPECT_TRUE(entry.function(ask, context).isEmpty());
        EXPECT_EQ(ask.asked(), 0);
        ASSERT_EQ(ask.helped.size(), 1);
        EXPECT_TRUE(ask.helped.at(0).startsWith(QLatin1Char('['))) << ask.helped.at(0).toStdString();
        words << ask.helped.at(0);
    }
    // Spot checks of the words handed to the help.
    EXPECT_TRUE(words.contains(S("[COPYFILE ")));
    EXPECT_TRUE(words.contains(S("[VAR=")));
    EXPECT_TRUE(words.contains(S("[QUITLOOP]")));
    EXPECT_TRUE(words.contains(S("[LEFTDOWN ")));
    EXPECT_TRUE(words.contains(S("[CLICKZONE ")));
}

TEST(Wizards, EntriesWithoutQuestionsPasteTheirStatement)
{
    const struct {
        WizardFunction wizard;
        const char *line;
    } rows[] = {
        {&hotkeys::mnuFunctionsSonamarkClipOn_Click, "[CLIP ON]"},
        {&hotkeys::mnuFunctionsSonamarkClipOff_Click, "[CLIP OFF]"},
        {&hotkeys::mnuFunctionsHKList_Click, "[LISTHOTKEYS]"},
        {&hotkeys::mnuFunctionsSonamarkPrint_Click, "[PRINTSELECTED]"},
        {&hotkeys::mnuFunctionsSonamarkSpellcheck_Click, "[SPELLCHECK]"},
        {&hotkeys::mnuFunctionsSonamarkSpellcheckOn_Click, "[SPELLCHECKMODE ON]"},
        {&hotkeys::mnuFunctionsSonamarkSpellcheckOff_Click, "[SPELLCHECKMODE OFF]"},
    };
    for (const auto &row : rows) {
        ScriptedAsker ask({});
        EXPECT_EQ(row.wizard(ask, Context()), QStringList{S(row.line)});
        EXPECT_EQ(ask.asked(), 0);
    }
}

TEST(Wizards, TableNamesEveryHandlerOnce)
{
    QSet<QString> handlers;
    QSet<WizardFunction> functions;
    int pickUps = 0;
    for (const hotkeys::WizardEntry &entry : hotkeys::Wizards()) {
        EXPECT_FALSE(entry.group.isEmpty());
        EXPECT_FALSE(entry.caption.isEmpty());
        EXPECT_TRUE(entry.handler.startsWith(S("mnu")) || entry.handler == S("DefineMouseClickZone")) << entry.handler.toStdString();
        handlers << entry.handler;
        functions << entry.function;
        pickUps += entry.group == QLatin1String(hotkeys::kPickUpGroup);
    }
    EXPECT_EQ(handlers.size(), hotkeys::Wizards().size());
    EXPECT_EQ(functions.size(), hotkeys::Wizards().size());
    EXPECT_EQ(pickUps, 6);
    // The table's rows of the Functions menu, the mouse pick-ups and the four typed buttons.
    EXPECT_EQ(hotkeys::Wizards().size(), 51);
}

// The moment frmPicDate gives is pasted in a form that the [WAIT] statement reads back.
TEST(Wizards, PickedMomentReadsBackAsTheSameMoment)
{
    const struct {
        const char *date;
        const char *time;
        QDateTime moment;
    } rows[] = {
        {"07/March/2031", "3:07:09 PM", QDateTime(QDate(2031, 3, 7), QTime(15, 7, 9))},
        {"01/january/2030", "12:00:00 AM", QDateTime(QDate(2030, 1, 1), QTime(0, 0, 0))},
        {"29/February/2032", "12:30:00 PM", QDateTime(QDate(2032, 2, 29), QTime(12, 30, 0))},
        {"5/11/2030", "11:59:59 PM", QDateTime(QDate(2030, 11, 5), QTime(23, 59, 59))},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.date);
        const QDateTime moment = hotkeys::PicDateMoment(S(row.date), S(row.time));
        EXPECT_EQ(moment, row.moment);
        EXPECT_EQ(engine::ParseWaitMoment(hotkeys::WaitMomentText(moment)), row.moment);
    }
    for (const char *bad : {"29/February/2031", "March/2031", "7/Marchy/2031"})
        EXPECT_FALSE(hotkeys::PicDateMoment(S(bad), S("1:00:00 PM")).isValid()) << bad;
    for (const char *bad : {"13:00:00 PM", "0:10:00 AM", "3:60:00 PM", "3:07 PM"})
        EXPECT_FALSE(hotkeys::PicDateMoment(S("07/March/2031"), S(bad)).isValid()) << bad;
}
