#include "reader/help_menu.h"

#include "platform/services.h"
#include "reader/rtf_reader.h"
#include "shell/on_top_message.h"
#include "shell/shipped_files.h"
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
    QStringList folders;
    for (const QString &shared : shell::SharedDataFolders(programFolder))
        folders << shared + QStringLiteral("/help");
    return folders;
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

QString StatementHelpText(const QString &plainText, const QString &statement)
{
    QString word = statement.trimmed().toUpper();
    if (word.isEmpty())
        return {};
    const bool wordIsWhole = word.endsWith(QLatin1Char(']')) || word.endsWith(QLatin1Char('='));
    auto isForm = [](const QString &line) {
        return line.startsWith(QLatin1Char('[')) && line.trimmed().endsWith(QLatin1Char(']'));
    };
    auto isGroup = [](const QString &line) { return line.startsWith(QLatin1String("== ")); };
    QStringList lines = plainText.split(QLatin1Char('\n'));
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    qsizetype first = -1;
    for (qsizetype i = 0; i < lines.size() && first < 0; ++i) {
        const QString form = lines.at(i).toUpper();
        if (!isForm(form) || !form.startsWith(word))
            continue;
        const QChar next = form.size() > word.size() ? form.at(word.size()) : QChar();
        if (wordIsWhole || next == QLatin1Char(' ') || next == QLatin1Char(']'))
            first = i;
    }
    if (first < 0)
        return {};
    qsizetype last = first + 1;
    while (last < lines.size() && !isForm(lines.at(last)) && !isGroup(lines.at(last)))
        ++last;
    while (last > first + 1 && lines.at(last - 1).trimmed().isEmpty())
        --last;
    return lines.mid(first, last - first).join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

void HelpHotkeys(const QString &statement)
{
    const QStringList folders = HelpFolders(shell::ProgramFolder());
    for (const QString &folder : folders) {
        const QString path = QDir(folder).filePath(kHotkeysHelpFile);
        if (!QFile::exists(path))
            continue;
        const std::optional<QString> text = ReadHelpText(path);
        if (!text)
            break;
        const QString section = StatementHelpText(*text, statement);
        if (platform::TextWindow *window = platform::services().textWindow) {
            if (section.isEmpty())
                window->showText(kHotkeysHelpCaption, *text);
            else
                window->showText(kHotkeysHelpCaption + QStringLiteral(" - ") + section.section(QLatin1Char('\r'), 0, 0),
                                 section);
        }
        return;
    }
    shell::MsgBoxOT(QStringLiteral("File ") + kHotkeysHelpFile + QStringLiteral(" could not be accessed."), 0,
                    QStringLiteral("File Error"));
}

void ShowCommonDialogHelp()
{
    ShowHelpFile(kCommonDialogHelpFile, kCommonDialogHelpCaption, HelpFolders(shell::ProgramFolder()));
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
