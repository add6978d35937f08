#include "cli/macro_selection.h"

#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"

#include <QFileInfo>

namespace cli {

bool TakeMacroOption(const QStringList &args, qsizetype &i, MacroChoice &choice, QString &problem)
{
    const QString &arg = args.at(i);
    if (arg != QLatin1String("--hotkeys") && arg != QLatin1String("--macro") && arg != QLatin1String("--number"))
        return false;
    if (i + 1 >= args.size()) {
        problem = QStringLiteral("%1 needs a value").arg(arg);
        return true;
    }
    const QString value = args.at(++i);
    if (arg == QLatin1String("--hotkeys")) {
        choice.hotkeysFile = value;
    } else if (arg == QLatin1String("--macro")) {
        choice.macroName = value;
        choice.hasName = true;
    } else {
        bool ok = false;
        const int n = value.toInt(&ok);
        if (ok)
            choice.number = n;
        else
            problem = QStringLiteral("--number needs a whole number, not '%1'").arg(value);
    }
    return true;
}

bool LoadHotkeysFile(const QString &file, QTextStream &err)
{
    hotkeys::HotkeyTable &table = hotkeys::table();
    table.reset();
    table.HotkeysFileName = QFileInfo(file).absoluteFilePath();
    const QString loadError = hotkeys::GetHotKeys();
    if (loadError.isEmpty())
        return true;
    err << "sonamark-cli: " << file << ": " << loadError << Qt::endl;
    return false;
}

int SelectMacro(const QString &file, const QString &name, std::optional<int> number, QTextStream &err)
{
    const hotkeys::HotkeyTable &table = hotkeys::table();
    if (number) {
        if (*number >= 1 && *number <= table.HotkeyCount)
            return *number;
        err << "sonamark-cli: " << file << " has no macro number " << *number << " (it holds " << table.HotkeyCount
            << ")" << Qt::endl;
        return 0;
    }
    for (int n = 1; n <= table.HotkeyCount; ++n)
        if (table.at(n).Description.compare(name, Qt::CaseInsensitive) == 0)
            return n;
    err << "sonamark-cli: Macro not found in file " << file << ": " << name << Qt::endl;
    return 0;
}

} // namespace cli
