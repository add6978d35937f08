#include "shell/quit.h"

#include "shell/app_state.h"
#include "shell/data_folder.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>

namespace shell {

bool ConfirmQuit(const std::function<void()> &saveText)
{
    AppState &state = app();
    if (!state.TextDirty && !state.OptionsDirty) {
        MsgBoxOT(QStringLiteral("Quit Sonamark?"), 1, QStringLiteral("End Program"));
        return state.MsgResult != MsgNo;
    }
    MsgBoxOT(QStringLiteral("Save changes to the current file before quitting?"), 2,
             QStringLiteral("Save To File"));
    if (state.MsgResult == MsgCancel)
        return false;
    if (state.MsgResult == MsgYes) {
        if (state.TextDirty && saveText)
            saveText();
        if (state.OptionsDirty)
            WriteFileOpts();
    }
    return true;
}

QString DesktopEntryText(const QString &programPath, const QString &arguments)
{
    QString exec = programPath;
    if (exec.contains(QLatin1Char(' ')))
        exec = QLatin1Char('"') + exec + QLatin1Char('"');
    if (!arguments.isEmpty())
        exec += QLatin1Char(' ') + arguments;
    return QStringLiteral("[Desktop Entry]\nType=Application\nName=Sonamark\n"
                          "Comment=Reads copied text aloud and runs hotkey macros\n"
                          "Exec=%1\nIcon=sonamark\nTerminal=false\nCategories=Utility;Accessibility;\n")
        .arg(exec);
}

void ToggleStartupEntry(const QString &programPath)
{
    const QString folder = StartupFolderPath();
    const QString entry = folder + QLatin1String(kDesktopEntryName);
    if (FileExists(entry)) {
        MsgBoxOT(QStringLiteral("Remove Sonamark from the Startup menu?"), 1,
                 QStringLiteral("Remove From Startup"));
        if (app().MsgResult == MsgYes)
            QFile::remove(entry);
        return;
    }
    MsgBoxOT(QStringLiteral("Add Sonamark to the Startup menu?"), 1, QStringLiteral("Add To Startup"));
    if (app().MsgResult != MsgYes)
        return;
    QDir().mkpath(folder);
    const QString error =
        WriteFileAtomically(entry, DesktopEntryText(programPath, QStringLiteral("/h")).toUtf8());
    if (!error.isEmpty())
        MsgBoxOT(QStringLiteral("Could not write %1: %2").arg(entry, error), 0,
                 QStringLiteral("Add To Startup"));
}

void AddDesktopEntry(const QString &programPath)
{
    const QString folder = DesktopFolderPath();
    QDir().mkpath(folder);
    const QString entry = folder + QLatin1String(kDesktopEntryName);
    // The icon hands the program what is dropped on it (%f is the desktop entry's field
    // for one file); the program itself ignores every argument but "/h".
    const QString error = WriteFileAtomically(entry, DesktopEntryText(programPath, QStringLiteral("%f")).toUtf8());
    if (!error.isEmpty()) {
        MsgBoxOT(QStringLiteral("Could not write %1: %2").arg(entry, error), 0,
                 QStringLiteral("Add Sonamark Icon To DeskTop"));
        return;
    }
    QFile::setPermissions(entry, QFile::permissions(entry) | QFile::ExeOwner);
}

} // namespace shell
