#include "hotkeys/editor_commands.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "shell/file_util.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStringList>

namespace hotkeys {

namespace {

const QString kRule = QStringLiteral("==============================");

// An argument of a launcher's Exec key: quoted, with the characters that are special
// inside the quotes escaped, then the backslashes doubled for the file's own escaping,
// and "%" doubled so that it is not read as a field code.
QString ExecArgument(const QString &text)
{
    QString quoted;
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    quoted.replace(QLatin1Char('%'), QStringLiteral("%%"));
    return quoted;
}

// A value of a launcher's string key: one line, backslashes escaped.
QString EntryValue(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

} // namespace

QString HotkeyPrintText(int number, const Hotkey &hotkey)
{
    QString text = kRule + QStringLiteral("\r\nHotkey ") + QString::number(number) + QStringLiteral(": ")
                   + hotkey.Description + QStringLiteral("\r\nKey: ") + hotkey.Keys
                   + (hotkey.Active ? QStringLiteral("    Enabled") : QStringLiteral("    Disabled"))
                   + QStringLiteral("\r\n") + kRule + QStringLiteral("\r\n");
    QString code = hotkey.Code;
    code.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (code.endsWith(QLatin1Char('\n')))
        code.chop(1);
    const QStringList lines = code.split(QLatin1Char('\n'));
    const int width = int(QString::number(lines.size()).size());
    for (int i = 0; i < lines.size(); ++i)
        text += QStringLiteral("%1  ").arg(i + 1, width) + lines[i] + QStringLiteral("\r\n");
    return text;
}

QString AllHotkeysPrintText(const HotkeyTable &t)
{
    QString text;
    for (int number = 1; number <= t.HotkeyCount; ++number) {
        if (number > 1)
            text += QStringLiteral("\r\n");
        text += HotkeyPrintText(number, t.at(number));
    }
    return text;
}

QString LaunchName(const QString &description)
{
    QString name = description.trimmed();
    name.replace(QLatin1Char(' '), QLatin1Char('$'));
    return name;
}

QString MacroLauncherFileName(const QString &description)
{
    const QString name = description.trimmed();
    QString stem;
    for (const QChar c : name)
        stem += c.isLetterOrNumber() && c.unicode() < 0x80 ? c.toLower() : QLatin1Char('-');
    // Where the stem lost something (capitals, blanks, other letters), a digest of the
    // whole name keeps two macros such as "Mail Ärger" and "Mail Örger" apart.
    if (stem != name)
        stem += QLatin1Char('-')
                + QString::fromLatin1(QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex().left(8));
    return QStringLiteral("sonamark-macro-") + stem + QStringLiteral(".desktop");
}

QString MacroLauncherText(const QString &launchProgram, const QString &description)
{
    return QStringLiteral("[Desktop Entry]\nType=Application\nName=") + EntryValue(description.trimmed())
           + QStringLiteral("\nComment=Runs the Sonamark macro ") + EntryValue(description.trimmed())
           + QStringLiteral("\nExec=") + ExecArgument(launchProgram) + QLatin1Char(' ')
           + ExecArgument(LaunchName(description))
           + QStringLiteral("\nIcon=sonamark\nTerminal=false\nCategories=Utility;Accessibility;\n");
}

QString WriteMacroLauncher(const QString &folder, const QString &launchProgram, const QString &description,
                           QString *path)
{
    if (!QDir().mkpath(folder))
        return QStringLiteral("the folder ") + folder + QStringLiteral(" could not be made");
    const QString file = QDir(folder).filePath(MacroLauncherFileName(description));
    if (path)
        *path = file;
    const QString error = shell::WriteFileAtomically(file, MacroLauncherText(launchProgram, description).toUtf8());
    if (!error.isEmpty())
        return error;
    QFile::setPermissions(file, QFile::permissions(file) | QFile::ExeOwner | QFile::ExeUser);
    return {};
}

void BeginHotkeyCapture()
{
    HookState &h = hookState();
    h.CapturedKey.clear();
    h.HotkeyCapture = true;
    UpdateHookPlan();
}

QString TakeCapturedKey()
{
    HookState &h = hookState();
    if (!h.HotkeyCapture || h.CapturedKey.isEmpty())
        return {};
    const QString key = h.CapturedKey;
    EndHotkeyCapture();
    return key;
}

void EndHotkeyCapture()
{
    HookState &h = hookState();
    h.CapturedKey.clear();
    if (!h.HotkeyCapture)
        return;
    h.HotkeyCapture = false;
    UpdateHookPlan();
}

} // namespace hotkeys
