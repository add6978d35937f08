#pragma once
// Loading a Hotkeys file and choosing one of its macros, for the commands that work on
// a macro (run, check, format).
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <optional>

namespace cli {

// The options that name a Hotkeys file and one of its macros.
struct MacroChoice {
    QString hotkeysFile;
    QString macroName;
    bool hasName = false;
    std::optional<int> number;
};
// Takes args[i] when it is --hotkeys, --macro or --number, with its value (i moves on to
// it): true then, and problem says what is wrong with the value, if anything. False for
// any other argument.
bool TakeMacroOption(const QStringList &args, qsizetype &i, MacroChoice &choice, QString &problem);

// Reads the file into the hotkeys table. False, after saying why on err.
bool LoadHotkeysFile(const QString &file, QTextStream &err);
// The macro by name (any case) or by number; 0, after saying why on err, when there is
// none such.
int SelectMacro(const QString &file, const QString &name, std::optional<int> number, QTextStream &err);

} // namespace cli
