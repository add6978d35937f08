#include "search/folder_history.h"

#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/file_util.h"
#include "shell/legacy_text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace search {

namespace {

QString withoutTrailingSlash(QString folder)
{
    while (folder.size() > 1 && folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    return folder;
}

bool writeRows(const QStringList &rows)
{
    QString text;
    for (const QString &row : rows)
        text += row + QStringLiteral("\r\n");
    return shell::WriteFileAtomically(FolderHistory::FilePath(), shell::EncodeText(text)).isEmpty();
}

} // namespace

QString FolderHistory::FilePath() { return shell::app().AppFolder + QLatin1String(kFolderHistoryFile); }

QStringList FolderHistory::shownRows() const
{
    QStringList shown;
    shown.reserve(m_rows.size());
    for (const QString &row : m_rows)
        shown << shell::CondensedPath(row, kHistoryShownWidth);
    return shown;
}

QString FolderHistory::toolTip() const { return m_current >= 0 ? m_rows.at(m_current) : QString(); }

QStringList FolderHistory::ParseHistory(const QString &text)
{
    QStringList rows;
    QSet<QString> seen;
    for (QString line : text.split(QLatin1Char('\n'))) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        // A byte order mark is no part of a folder name; the file is written without one,
        // so one kept at the start of a row would be lost by the next read.
        while (line.startsWith(QChar(0xFEFF)))
            line.remove(0, 1);
        // Blank after the slashes go: a line of spaces and "/" names no folder.
        line = withoutTrailingSlash(line);
        if (line.trimmed().isEmpty())
            continue;
        const QString key = line.toUpper();
        if (seen.contains(key))
            continue;
        seen.insert(key);
        rows << line;
    }
    return rows;
}

void FolderHistory::PopulateHistory(const QString &currentFolder)
{
    HistoryDirty = false;
    m_rows.clear();
    m_current = -1;
    QFile file(FilePath());
    if (file.open(QIODevice::ReadOnly))
        m_rows = ParseHistory(shell::DecodeLegacyText(file.readAll()));
    if (m_rows.isEmpty()) {
        const QString folder = withoutTrailingSlash(currentFolder);
        writeRows({folder});
        m_rows << folder;
    }
    m_current = 0;
}

bool FolderHistory::IsNewHistory(const QString &folder) const
{
    const QString wanted = withoutTrailingSlash(folder).toUpper();
    for (const QString &row : m_rows)
        if (withoutTrailingSlash(row).toUpper() == wanted)
            return false;
    return true;
}

bool FolderHistory::ValidHistory(const QString &folder)
{
    return QDir::isAbsolutePath(folder) && shell::FolderExists(withoutTrailingSlash(folder) + QLatin1Char('/'));
}

bool FolderHistory::AddHistory(const QString &folder)
{
    const QString row = withoutTrailingSlash(folder);
    if (row.isEmpty() || !IsNewHistory(row) || !ValidHistory(row))
        return false;
    m_rows.prepend(row);
    m_current = 0;
    HistoryDirty = true;
    return true;
}

int FolderHistory::FindRow(const QString &text) const
{
    const QString wanted = text.toUpper();
    // Rows are condensed one at a time, up to the one found.
    const auto names = [&](int i) {
        const QString &row = m_rows.at(i);
        return row.toUpper() == wanted || shell::CondensedPath(row, kHistoryShownWidth).toUpper() == wanted;
    };
    if (m_current >= 0 && names(m_current))
        return m_current;
    for (int i = 0; i < m_rows.size(); ++i)
        if (names(i))
            return i;
    return -1;
}

void FolderHistory::RemoveRow(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    m_rows.removeAt(row);
    m_current = m_rows.isEmpty() ? -1 : 0;
    HistoryDirty = true;
    HistoryAutoSave = false;
}

void FolderHistory::Clear()
{
    m_rows.clear();
    m_current = -1;
    HistoryAutoSave = false;
    HistoryDirty = true;
}

bool FolderHistory::SaveHistory2File()
{
    if (!HistoryDirty)
        return false;
    if (!writeRows(m_rows))
        return false;
    HistoryDirty = false;
    return true;
}

bool FolderHistory::ClearFile()
{
    return shell::WriteFileAtomically(FilePath(), QByteArrayLiteral("\r\n")).isEmpty();
}

} // namespace search
