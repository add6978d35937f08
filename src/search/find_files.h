#pragma once
// The file finder's shared state and the routine behind [FINDFILES StartPath Selection].
// The window itself (frmFindFiles) lives in the user interface, which installs an opener
// for it at start-up; without one (sonamark-cli) FindFiles answers kNoFileFinderMessage.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class QFile;

namespace search {

// What the finder hands its caller.
struct FindFilesState {
    // Files chosen; 0 when nothing. A caller sets -1 before showing the window to ask for
    // the "Select Text Files" face.
    int SelectedCount = 0;
    // The full names of the chosen files. Entry n of the 1-based list is
    // SelectedFiles[n - 1]; SelectedCount equals its size once the window has closed.
    QStringList SelectedFiles;
    // The same names as the file system spells them, entry by entry: a name that is not
    // valid UTF-8 is shown with replacement characters in SelectedFiles, and opens by
    // these bytes.
    QList<QByteArray> SelectedPaths;
    // The folder to start in, with a trailing "/"; also the folder of the last selection.
    QString LastFolder;

    void reset();
    // Sets the selection to these files (names and real bytes).
    void select(const QStringList &files, const QList<QByteArray> &paths);
};

FindFilesState &findFilesState();

// Shows frmFindFiles modally for the state as it stands, and returns when it closed.
using FindFilesOpener = std::function<void()>;
// Installs the opener (nullptr removes it).
void SetFindFilesOpener(FindFilesOpener opener);
bool HasFindFilesOpener();

inline constexpr const char *kNoFileFinderMessage = "The file finder needs the desktop program";
inline constexpr const char *kOutputFileError = "Error accessing output file for selected files";
inline constexpr const char *kVariableError = "Error assigning variable for selected files";
inline constexpr const char *kReaderTextSelection = "SONAMARKTEXT";

// modHotkeys.FindFiles: opens the finder in its "Find Files" face at startPath (given a
// trailing "/"; empty: the current directory), then hands the picks to the reader's text
// (selection "SONAMARKTEXT"), to outFile one a line and to the macro variable named by
// selection, or to that variable alone. Answers "" or one of the messages above.
QString FindFiles(QString &startPath, QString &outFile, const QString &selection);

// The picks joined by CR LF, without the last one.
QString JoinSelection(const QStringList &files);

// Opens a found file by its real name: the bytes ShownName remembered for it.
bool OpenFoundFile(QFile &file, const QString &shown, int openMode);

// Decisions of the window that need no display.

// The question of cmdSelect_Click for selected rows out of rows: "Select this file?",
// "Select these N files?"; with none selected the whole count is asked for.
QString SelectQuestion(int selectedRows, int rows);
// lblCount after one more file: Str(Val(caption) + 1), with its leading blank.
QString NextCountCaption(const QString &caption);
// The folder with a trailing "/".
QString WithTrailingSlash(const QString &folder);
// What cmdSelect_Click chooses from a list: the selected rows (all of them when none
// is), each behind prefix; SelectedCount becomes their number.
void SelectRows(const QStringList &rows, const QList<QByteArray> &rowBytes, const QList<int> &selectedRows,
                const QString &prefix);
// The drive list: the root, the home folder, and the file systems mounted under
// /media and /run/media, from the mount points given, without repeats.
QStringList DriveList(const QStringList &mountPoints, const QString &home);
// The drive list of this machine.
QStringList MountedDrives();

} // namespace search
