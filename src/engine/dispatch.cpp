#include "engine/dispatch.h"

#include "engine/composition.h"
#include "engine/control_statements.h"
#include "engine/file_statements.h"
#include "engine/input_statements.h"
#include "engine/keystrokes.h"
#include "engine/reader_statements.h"
#include "engine/run_state.h"
#include "engine/web_source.h"
#include "macro/commands.h"
#include "shell/failure_report.h"

namespace engine {

namespace {

constexpr int kSubscriptOutOfRange = 9;  // failure number of a line outside Actions

// ORDER COMMANDS: the failure-report identity of the routine behind each statement
// code (0 is a keystroke line), in the order of the table in macro/commands.cpp.
constexpr const char *kRoutine[macro::kCommandCount + 1] = {
    "(Module) modDoHotkeys::Function Keystrokes_Only",
    "(Module) modDoHotkeys::Function DoLOOP",
    "(Module) modDoHotkeys::Function DoIF",
    "(Module) modDoHotkeys::Function DoLOADFILE",
    "(Module) modDoHotkeys::Function DoSAVEFILE",
    "(Module) modDoHotkeys::Function DoOPEN",
    "(Module) modDoHotkeys::Function DoCLOSE",
    "(Module) modDoHotkeys::Function DoREAD",
    "(Module) modDoHotkeys::Function DoWRITE",
    "(Module) modDoHotkeys::Function DoVAR",
    "(Module) modDoHotkeys::Function DoSENDKEYS",
    "(Module) modDoHotkeys::Function DoWAIT",
    "(Module) modDoHotkeys::Function DoCLIP",
    "(Module) modDoHotkeys::Function DoSPELLCHECKMODE",
    "(Module) modDoHotkeys::Function DoSPELLCHECK",
    "(Module) modDoHotkeys::Function DoCANCELIF",
    "(Module) modDoHotkeys::Function DoMAKEMP3",
    "(Module) modDoHotkeys::Function DoPRINTSELECTED",
    "(Module) modDoHotkeys::Function DoPRINT",
    "(Module) modDoHotkeys::Function DoLOADCLIP",
    "(Module) modDoHotkeys::Function DoSAVECLIP",
    "(Module) modDoHotkeys::Function DoGETCLIP",
    "(Module) modDoHotkeys::Function DoSETCLIP",
    "(Module) modDoHotkeys::Function DoGETMULTICLIP",
    "(Module) modDoHotkeys::Function DoSETMULTICLIP",
    "(Module) modDoHotkeys::Function DoCOMMAND",
    "(Module) modDoHotkeys::Function DoUSERINPUT",
    "(Module) modDoHotkeys::Function DoYESNOCANCEL",
    "(Module) modDoHotkeys::Function DoAction",  // [LISTHOTKEYS] is handled inline
    "(Module) modDoHotkeys::Function DoMACRO",
    "(Module) modDoHotkeys::Function DoMOUSE",
    "(Module) modDoHotkeys::Function DoMOUSE",
    "(Module) modDoHotkeys::Function DoMOUSE",
    "(Module) modDoHotkeys::Function DoMOUSE",
    "(Module) modDoHotkeys::Function DoENDLOOP",
    "(Module) modDoHotkeys::Function DoELSE",
    "(Module) modDoHotkeys::Function DoAction",  // [ENDIF]
    "(Module) modDoHotkeys::Function DoCLICKZONE",
    "(Module) modDoHotkeys::Function DoKEYLOG",
    "(Module) modDoHotkeys::Function DoPATHEXISTS",
    "(Module) modDoHotkeys::Function DoCOPYFILE",
    "(Module) modDoHotkeys::Function DoKILLFILE",
    "(Module) modDoHotkeys::Function DoFINDSTRING",
    "(Module) modDoHotkeys::Function DoSHORTPATH",
    "(Module) modDoHotkeys::Function DoQUITLOOP",
    "(Module) modDoHotkeys::Function DoDATEDIFF",
    "(Module) modDoHotkeys::Function DoFINDFILES",
    "(Module) modDoHotkeys::Function DoSETFOCUS",
    "(Module) modDoHotkeys::Function DoWEBSOURCE",
};

// Runs one statement routine under the failure report.
QString guarded(int command, const std::function<QString()> &routine)
{
    QString message;
    if (!shell::Guarded(kRoutine[command], [&] { message = routine(); }))
        return {};
    return message;
}

} // namespace

QString DoAction(int line)
{
    MacroRunState &s = runState();
    if (line < 1 || line > s.ActionCount()) {
        shell::ErrorHandler(QStringLiteral("(Module) modDoHotkeys::Function DoAction"),
                            QStringLiteral("Subscript out of range"), kSubscriptOutOfRange);
        return {};
    }
    const int command = s.Actions[line - 1].Command;
    switch (command) {
    case macro::KeystrokeLine:
        return guarded(command, [&] { return Keystrokes_Only(line); });
    case macro::CmdLOOP:
        return guarded(command, [&] { return DoLOOP(line); });
    case macro::CmdIF:
        return guarded(command, [&] { return DoIF(line); });
    case macro::CmdVAR:
        return guarded(command, [&] { return DoVAR(line); });
    case macro::CmdWAIT:
        return guarded(command, [&] { return DoWAIT(line); });
    case macro::CmdCANCELIF:
        return guarded(command, [&] { return DoCANCELIF(line); });
    case macro::CmdENDLOOP:
        return guarded(command, [&] { return DoENDLOOP(line); });
    case macro::CmdELSE:
        return guarded(command, [&] { return DoELSE(line); });
    case macro::CmdQUITLOOP:
        return guarded(command, [&] { return DoQUITLOOP(line); });
    case macro::CmdHOTKEY:
        return guarded(command, [&] { return DoMACRO(line); });
    case macro::CmdSENDKEYS:
        return guarded(command, [&] { return DoSENDKEYS(line); });
    case macro::CmdLEFTDOWN:
    case macro::CmdLEFTUP:
    case macro::CmdRIGHTDOWN:
    case macro::CmdRIGHTUP:
        return guarded(command, [&] { return DoMOUSE(line); });
    case macro::CmdCLICKZONE:
        return guarded(command, [&] { return DoCLICKZONE(line); });
    case macro::CmdKEYLOG:
        return guarded(command, [&] { return DoKEYLOG(line); });
    case macro::CmdSETFOCUS:
        return guarded(command, [&] { return DoSETFOCUS(line); });
    case macro::CmdCOMMAND:
        return guarded(command, [&] { return DoCOMMAND(line); });
    case macro::CmdUSERINPUT:
        return guarded(command, [&] { return DoUSERINPUT(line); });
    case macro::CmdYESNOCANCEL:
        return guarded(command, [&] { return DoYESNOCANCEL(line); });
    case macro::CmdWEBSOURCE:
        return guarded(command, [&] { return DoWEBSOURCE(line); });
    case macro::CmdLOADFILE:
        return guarded(command, [&] { return DoLOADFILE(line); });
    case macro::CmdSAVEFILE:
        return guarded(command, [&] { return DoSAVEFILE(line); });
    case macro::CmdOPEN:
        return guarded(command, [&] { return DoOPEN(line); });
    case macro::CmdCLOSE:
        return guarded(command, [&] { return DoCLOSE(line); });
    case macro::CmdREAD:
        return guarded(command, [&] { return DoREAD(line); });
    case macro::CmdWRITE:
        return guarded(command, [&] { return DoWRITE(line); });
    case macro::CmdKILLFILE:
        return guarded(command, [&] { return DoKILLFILE(line); });
    case macro::CmdCOPYFILE:
        return guarded(command, [&] { return DoCOPYFILE(line); });
    case macro::CmdPATHEXISTS:
        return guarded(command, [&] { return DoPATHEXISTS(line); });
    case macro::CmdSHORTPATH:
        return guarded(command, [&] { return DoSHORTPATH(line); });
    case macro::CmdDATEDIFF:
        return guarded(command, [&] { return DoDATEDIFF(line); });
    case macro::CmdFINDSTRING:
        return guarded(command, [&] { return DoFINDSTRING(line); });
    case macro::CmdFINDFILES:
        return guarded(command, [&] { return DoFINDFILES(line); });
    case macro::CmdSPELLCHECKMODE:
        return guarded(command, [&] { return DoSPELLCHECKMODE(line); });
    case macro::CmdSPELLCHECK:
        return guarded(command, [&] { return DoSPELLCHECK(line); });
    case macro::CmdCLIP:
        return guarded(command, [&] { return DoCLIP(line); });
    case macro::CmdMAKEMP3:
        return guarded(command, [&] { return DoMAKEMP3(line); });
    case macro::CmdPRINTSELECTED:
        return guarded(command, [&] { return DoPRINTSELECTED(line); });
    case macro::CmdPRINT:
        return guarded(command, [&] { return DoPRINT(line); });
    case macro::CmdGETCLIP:
        return guarded(command, [&] { return DoGETCLIP(line); });
    case macro::CmdSETCLIP:
        return guarded(command, [&] { return DoSETCLIP(line); });
    case macro::CmdLOADCLIP:
        return guarded(command, [&] { return DoLOADCLIP(line); });
    case macro::CmdSAVECLIP:
        return guarded(command, [&] { return DoSAVECLIP(line); });
    case macro::CmdGETMULTICLIP:
        return guarded(command, [&] { return DoGETMULTICLIP(line); });
    case macro::CmdSETMULTICLIP:
        return guarded(command, [&] { return DoSETMULTICLIP(line); });
    case macro::CmdLISTHOTKEYS:
        return guarded(command, [&] { return DoLISTHOTKEYS(line); });
    case macro::CmdENDIF:
        return {};
    default:
        // Every statement code has its case above; anything else is no statement.
        return {};
    }
}

} // namespace engine
