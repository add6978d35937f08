#include "hotkeys/file_history.h"

#include "shell/legacy_text.h"
#include "macro/macro_text.h"
#include "shell/app_state.h"
#include "shell/file_util.h"

#include <QFile>

namespace hotkeys {

namespace {

QString historyPath() { return shell::app().AppFolder + kHistoryFileName; }

} // namespace

QStringList ReadFileHistory()
{
    QFile file(historyPath());
    if (!file.exists()) {
        WriteFileHistory({});
        return {};
    }
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = shell::DecodeLegacyText(file.readAll());
    file.close();

    QStringList accepted;
    bool dropped = false;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (QString line : lines) {
        if (accepted.size() >= kHistorySize)
            break;
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        if (!shell::FileExists(line) || accepted.contains(line, Qt::CaseInsensitive)) {
            dropped = true;
            continue;
        }
        accepted << line;
    }
    if (dropped)
        WriteFileHistory(accepted);
    return accepted;
}

void WriteFileHistory(const QStringList &paths)
{
    QString text;
    for (const QString &path : paths)
        text += path + macro::kCrLf;
    shell::WriteFileAtomically(historyPath(), shell::EncodeText(text));
}

QStringList UpdateFileHistory(const QStringList &paths, const QString &current)
{
    if (current.isEmpty())
        return paths;
    QStringList updated{current};
    for (const QString &path : paths) {
        if (updated.size() >= kHistorySize)
            break;
        if (!path.trimmed().isEmpty() && path != current)
            updated << path;
    }
    WriteFileHistory(updated);
    return updated;
}

} // namespace hotkeys
