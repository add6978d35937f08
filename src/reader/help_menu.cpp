#include "reader/help_menu.h"

#include "platform/services.h"
#include "reader/rtf_reader.h"
#include "shell/on_top_message.h"
#include "shell/startup.h"

#include <QDir>
#include <QFile>
#include <optional>

namespace reader {

namespace {

constexpr qint64 kMaxHelpFileBytes = 4 * 1024 * 1024;  // far above any help text

// The file's text, or nothing when it cannot be read as rich text.
std::optional<QString> ReadHelpText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxHelpFileBytes)
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (!LooksLikeRtf(bytes))
        return std::nullopt;
    QString error;
    const RichDocument document = ReadRtf(bytes, &error);
    if (!error.isEmpty())
        return std::nullopt;
    QString text = document.plainText();
    text.replace(QChar(0x2028), QLatin1Char('\n'));
    text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return text;
}

} // namespace

QStringList HelpFolders(const QString &programFolder)
{
    return {QDir::cleanPath(programFolder + QStringLiteral("help")),
            QDir::cleanPath(programFolder + QStringLiteral("../share/sonamark/help"))};
}

void ShowHelpFile(const QString &name, const QString &caption, const QStringList &folders)
{
    for (const QString &folder : folders) {
        const QString path = QDir(folder).filePath(name);
        if (!QFile::exists(path))
            continue;
        if (const std::optional<QString> text = ReadHelpText(path)) {
            if (platform::TextWindow *window = platform::services().textWindow)
                window->showText(caption, *text);
            return;
        }
        break;
    }
    shell::MsgBoxOT(QStringLiteral("File ") + name + QStringLiteral(" could not be accessed."), 0,
                    QStringLiteral("File Error"));
}

void mnuHelpXML_Click() { ShowHelpFile(kXmlTutorialFile, kXmlSupportCaption, HelpFolders(shell::ProgramFolder())); }

void LaunchSonamarkWebSite(const QString &url)
{
    platform::Desktop *desktop = platform::services().desktop;
    if (!desktop || !desktop->canOpenUrls()) {
        shell::MsgBoxOT(QStringLiteral("Missing Internet Explorer. Launch the following URL in your browser:\r\n") + url,
                        0, QStringLiteral("Missing IE"));
        return;
    }
    if (desktop->openUrl(url))
        return;
    shell::MsgBoxOT(QStringLiteral("Could not launch Internet Explorer. Visit the following link in your browser:\r\n")
                        + url,
                    0, QStringLiteral("Can't Start IE"));
}

} // namespace reader
