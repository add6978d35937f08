// libFuzzer target for "FolderHistory.txt": whatever rows the reader makes of a file are
// clean (not blank, no trailing "/", no repeats in either case), writing them and reading
// the file again gives the same rows, and the rows are found by their own text.
#include "fuzz_support.h"
#include "search/folder_history.h"
#include "shell/app_state.h"

#include <QSet>

namespace {

constexpr int kRowsLookedUp = 8;  // FindRow condenses every row; a few rows are enough

void checkRows(const QStringList &rows)
{
    QSet<QString> seen;
    for (const QString &row : rows) {
        if (row.trimmed().isEmpty())
            fuzz::fail("a blank row");
        if (row.size() > 1 && row.endsWith(QLatin1Char('/')))
            fuzz::fail("a row ends with a slash");
        if (seen.contains(row.toUpper()))
            fuzz::fail("a row repeats one above it");
        seen.insert(row.toUpper());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    shell::app().AppFolder = fuzz::folder();
    const QString file = search::FolderHistory::FilePath();
    fuzz::writeFile(file, fuzz::bytes(data, size));
    const QString start = QStringLiteral("/start/folder");

    search::FolderHistory first;
    first.PopulateHistory(start);
    const QStringList rows = first.rows();
    if (rows.isEmpty() || first.current() != 0)
        fuzz::fail("a history without a marked row");
    checkRows(rows);
    for (int i = 0; i < rows.size() && i < kRowsLookedUp; ++i) {
        const int found = first.FindRow(rows.at(i));
        if (found < 0 || found > i)
            fuzz::fail("a row is not found by its own text");
    }

    first.HistoryDirty = true;
    if (!first.SaveHistory2File())
        fuzz::fail("the history could not be written");
    search::FolderHistory again;
    again.PopulateHistory(QStringLiteral("/other/folder"));
    if (again.rows() != rows)
        fuzz::fail("the rows read back differ");
    return 0;
}
