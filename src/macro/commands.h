#pragma once
// The statement table of the macro language and the line classifier.
//
// ORDER COMMANDS: the row numbers below are the statement codes stored with each
// parsed line and switched on by engine::DoAction (engine/dispatch.cpp). A change of
// order here must be made there too.
#include <QString>
#include <QStringList>

namespace macro {

enum Command : int {
    KeystrokeLine = 0,
    CmdLOOP = 1, CmdIF, CmdLOADFILE, CmdSAVEFILE, CmdOPEN, CmdCLOSE, CmdREAD, CmdWRITE,
    CmdVAR, CmdSENDKEYS, CmdWAIT, CmdCLIP, CmdSPELLCHECKMODE, CmdSPELLCHECK, CmdCANCELIF,
    CmdMAKEMP3, CmdPRINTSELECTED, CmdPRINT, CmdLOADCLIP, CmdSAVECLIP, CmdGETCLIP, CmdSETCLIP,
    CmdGETMULTICLIP, CmdSETMULTICLIP, CmdCOMMAND, CmdUSERINPUT, CmdYESNOCANCEL,
    CmdLISTHOTKEYS, CmdHOTKEY, CmdLEFTDOWN, CmdLEFTUP, CmdRIGHTDOWN, CmdRIGHTUP, CmdENDLOOP,
    CmdELSE, CmdENDIF, CmdCLICKZONE, CmdKEYLOG, CmdPATHEXISTS, CmdCOPYFILE, CmdKILLFILE,
    CmdFINDSTRING, CmdSHORTPATH, CmdQUITLOOP, CmdDATEDIFF, CmdFINDFILES, CmdSETFOCUS,
    CmdWEBSOURCE,
};

inline constexpr int kCommandCount = 48;

// Fills the table (also filled on first use, so calling it is optional).
void SetCommands();
// The 48 table strings; row i (1-based) is element i-1.
const QStringList &Commands();
// The statement as its messages name it, e.g. "[OPEN n File]" for code 5.
QString CanonicalStatement(int code);
// Statement code of a line: 1..48, or 0. First hit in table order wins.
int WhichCommand(QStringView line);
// The code of the first table row, in table order, found anywhere in text with its ASCII
// letters raised; 0 when there is none. For text already upper-cased.
int FirstCommandIn(QStringView text);

} // namespace macro
