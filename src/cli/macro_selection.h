#pragma once
// Loading a Hotkeys file and choosing one of its macros, for the commands that work on
// a macro (run, check, format).
#include <QString>
#include <QTextStream>
#include <optional>

namespace cli {

// Reads the file into the hotkeys table. False, after saying why on err.
bool LoadHotkeysFile(const QString &file, QTextStream &err);
// The macro by name (any case) or by number; 0, after saying why on err, when there is
// none such.
int SelectMacro(const QString &file, const QString &name, std::optional<int> number, QTextStream &err);

} // namespace cli
