#pragma once
// The file statements: plain text files a line at a time ([OPEN n File], [CLOSE n],
// [READ n Rec], [WRITE n Rec]), whole documents in the reader ([LOADFILE File],
// [SAVEFILE File]), file system tests and changes, and small string functions. Each takes
// the 1-based line in Actions and returns its message ("" to go on, "GoTo 1" after
// setting NextLine, or a message to record, fatal when it begins "FATAL ERROR").
#include <QString>

namespace engine {

QString DoOPEN(int line);
QString DoCLOSE(int line);
QString DoREAD(int line);
QString DoWRITE(int line);

QString DoLOADFILE(int line);
QString DoSAVEFILE(int line);
QString DoKILLFILE(int line);
QString DoCOPYFILE(int line);
QString DoFINDFILES(int line);
QString DoPATHEXISTS(int line);
QString DoSHORTPATH(int line);
QString DoDATEDIFF(int line);
QString DoFINDSTRING(int line);

// The id of [OPEN n File], [CLOSE n], [READ n Rec] or [WRITE n Rec] as written: a number,
// or the name of a number variable. 0 when it is neither.
int FileIdOf(const QString &word);
// GetOpenParams: the id, the file name and the mode of the [OPEN n File] at line; the
// mode comes from the [READ n ...] or [WRITE n ...] statements of that id between this
// line and its [CLOSE n]. "" or the message (without "FATAL ERROR ").
QString GetOpenParams(int line, int &id, QString &name, qint16 &mode);
// True when the folder part of path (up to the last "/") exists; a bare name is in the
// current folder, which always exists.
bool FolderOfPathExists(const QString &path);

} // namespace engine
