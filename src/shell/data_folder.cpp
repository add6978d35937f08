#include "shell/data_folder.h"

#include "shell/app_state.h"
#include "shell/on_top_message.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace shell {

namespace {
QString withSlash(QString folder)
{
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}
} // namespace

QString DataFolderPath()
{
    const QString home = qEnvironmentVariable("SONAMARK_HOME");
    // Made absolute once, here: a relative folder would otherwise be read against
    // whatever the current folder is, and saved paths inside it would drift.
    if (!home.trimmed().isEmpty())
        return withSlash(QDir(home).absolutePath());
    QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (xdg.trimmed().isEmpty())
        xdg = QDir::homePath() + QStringLiteral("/.local/share");
    return withSlash(xdg) + QStringLiteral("sonamark/");
}

bool SetEnvar()
{
    const QString folder = DataFolderPath();
    if (folder.trimmed().isEmpty()) {
        MsgBoxOT(QStringLiteral("FATAL ERROR assigning environment variable : ") + folder, 0,
                 QStringLiteral("Fatal Error"));
        return false;
    }
    if (folder.contains(QLatin1Char('"'))) {
        // options.def stores paths inside double quotes; a quote in the folder would cut
        // every saved path short.
        MsgBoxOT(QStringLiteral("FATAL ERROR the data folder %1 has a double quote in its path. "
                                "Set SONAMARK_HOME to a folder without one.")
                     .arg(folder),
                 0, QStringLiteral("Fatal Error"));
        return false;
    }
    bool usable = QDir().mkpath(folder);
    if (usable) {
        QTemporaryFile probe(folder + QStringLiteral(".write-test-XXXXXX"));
        usable = probe.open();
    }
    if (!usable) {
        MsgBoxOT(QStringLiteral("FATAL ERROR the data folder %1 cannot be created or written. "
                                "Check its permissions or set SONAMARK_HOME to another folder.")
                     .arg(folder),
                 0, QStringLiteral("Fatal Error"));
        return false;
    }
    app().AppFolder = folder;
    return true;
}

QString StartupFolderPath()
{
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.trimmed().isEmpty())
        config = QDir::homePath() + QStringLiteral("/.config");
    return withSlash(config) + QStringLiteral("autostart/");
}

QString DesktopFolderPath()
{
    return withSlash(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
}

} // namespace shell
