#pragma once
// The files a macro opens with [OPEN n File]: nine entries, file ids 1 to 9. A file is
// opened for line input or for output (truncating), read and written a line at a time,
// and closed by [CLOSE n] or, at the latest, when the run ends however it ends.
#include <QString>

namespace engine {

inline constexpr int kMaxOpenFiles = 9;
inline constexpr qint16 kModeInput = 0;
inline constexpr qint16 kModeOutput = 1;

// SetOpenFile: "" when the entry was filled and the file opened, else "Invalid file
// number", "File already open", "Illegal file name", "File does not exist" or "Illegal
// Input/Output designation". A file system fault when opening is not a message: the
// entry stays in use and its reads give the end of the file, its writes go nowhere.
QString SetOpenFile(int id, const QString &name, qint16 mode);
// Closes the file of id and frees its entry. False when the entry was free.
bool CloseOpenFile(int id);
// Closes every file and frees every entry; faults are ignored. Data written is on disk
// when this returns.
void CloseAllOpenFiles();

bool IsFileOpen(int id);
qint16 OpenFileMode(int id);
QString OpenFileName(int id);

// One text line of the input file id, without its line break. At the end of the file
// (or for an id that is not open for input): "" and id negated.
QString GetLineInput(int &id);
// Writes text as one line (CR LF) on the output file id. Faults are swallowed.
void WriteRec(int id, const QString &text);

} // namespace engine
