#pragma once
// The folder history of the file finder and its file, FolderHistory.txt in the data
// folder: one folder a line, the most recent first, UTF-8 with CR LF.
#include <QString>
#include <QStringList>

namespace search {

inline constexpr const char *kFolderHistoryFile = "FolderHistory.txt";
inline constexpr int kHistoryShownWidth = 50;  // cmbHistory shows folders condensed to this

// The rows of cmbHistoryFull (full paths, without a trailing "/" except the root), the
// row marked in both history lists, and the two flags of the window.
class FolderHistory {
public:
    // Where the history is kept: the data folder plus kFolderHistoryFile.
    static QString FilePath();

    const QStringList &rows() const { return m_rows; }
    // cmbHistory's rows: each full row through CondensedPath(row, 50).
    QStringList shownRows() const;
    int current() const { return m_current; }
    void setCurrent(int row) { m_current = row >= 0 && row < m_rows.size() ? row : -1; }
    // The tool-tip of cmbHistory: the full path of the marked row.
    QString toolTip() const;

    bool HistoryDirty = false;
    bool HistoryAutoSave = false;

    // PopulateHistory: reads the file; a missing or empty one is started with
    // currentFolder, written as its only line.
    void PopulateHistory(const QString &currentFolder);
    // False when folder (trailing "/" or not) is a row already, letters in either case.
    bool IsNewHistory(const QString &folder) const;
    // An absolute path of an existing folder.
    static bool ValidHistory(const QString &folder);
    // Puts a new, valid folder first and marks it. True when it added.
    bool AddHistory(const QString &folder);
    // The row that text names: the marked row when its shown or full form equals text
    // (letters in either case), else the first row that does; -1 when none.
    int FindRow(const QString &text) const;
    // Removes a row from both lists; row 0 is marked if rows remain.
    void RemoveRow(int row);
    // Empties both lists (mnuPUClear).
    void Clear();
    // SaveHistory2File: writes the rows when dirty. True when it wrote.
    bool SaveHistory2File();
    // Rewrites the file as one empty line (Clear History with the file too).
    bool ClearFile();

    // The rows of a history file's text: byte order marks at the start of a line and
    // trailing "/" dropped, lines blank after that and rows that repeat one above
    // (letters in either case) left out.
    static QStringList ParseHistory(const QString &text);

private:
    QStringList m_rows;
    int m_current = -1;
};

} // namespace search
