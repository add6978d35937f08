// The printed form of macros and the desktop launcher that runs one.
#include "hotkeys/editor_commands.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

using hotkeys::Hotkey;

TEST(EditorCommands, PrintedMacroNumbersItsCodeLines)
{
    QString code;
    for (int i = 1; i <= 12; ++i)
        code += QStringLiteral("line%1\r\n").arg(i);
    const QString text = hotkeys::HotkeyPrintText(7, Hotkey{false, QStringLiteral("^%k"), QStringLiteral("Kay"), code});
    EXPECT_TRUE(text.contains(QStringLiteral("Hotkey 7: Kay\r\nKey: ^%k    Disabled\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("\r\n 1  line1\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("\r\n12  line12\r\n")));
    EXPECT_FALSE(text.contains(QStringLiteral("13  ")));  // the final line end makes no empty line
}

TEST(EditorCommands, LaunchNameWritesBlanksAsDollars)
{
    EXPECT_EQ(hotkeys::LaunchName(QStringLiteral("  Open my mail ")), QStringLiteral("Open$my$mail"));
    EXPECT_EQ(hotkeys::MacroLauncherFileName(QStringLiteral("open-mail")), QStringLiteral("sonamark-macro-open-mail.desktop"));
    const QString mail = hotkeys::MacroLauncherFileName(QStringLiteral("Open my/mail!"));
    EXPECT_TRUE(mail.startsWith(QStringLiteral("sonamark-macro-open-my-mail--"))) << mail.toStdString();
    EXPECT_TRUE(mail.endsWith(QStringLiteral(".desktop")));
    EXPECT_EQ(hotkeys::MacroLauncherFileName(QStringLiteral(" Open my/mail! ")), mail);  // the same macro
    // Names that differ only where the file name cannot follow them get files of their own.
    const QStringList names{QStringLiteral("Mail \u00c4rger"), QStringLiteral("Mail \u00d6rger"),
                            QStringLiteral("mail-rger"), QStringLiteral("Mail$rger"), QStringLiteral("MAIL rger")};
    QSet<QString> files;
    for (const QString &name : names)
        files.insert(hotkeys::MacroLauncherFileName(name));
    EXPECT_EQ(files.size(), names.size());
}

// What a desktop reads from the Exec key: the file's escapes undone, then the quoted
// arguments split, the way a freedesktop desktop reads a launcher.
QStringList ExecArguments(const QString &entry)
{
    QString exec;
    for (const QString &line : entry.split(QLatin1Char('\n')))
        if (line.startsWith(QStringLiteral("Exec=")))
            exec = line.mid(5);
    QString unescaped;
    for (int i = 0; i < exec.size(); ++i) {
        if (exec[i] == QLatin1Char('\\') && i + 1 < exec.size())
            ++i;
        unescaped += exec[i];
    }
    unescaped.replace(QStringLiteral("%%"), QStringLiteral("%"));
    QStringList args;
    QString current;
    bool quoted = false;
    for (int i = 0; i < unescaped.size(); ++i) {
        const QChar c = unescaped[i];
        if (quoted && c == QLatin1Char('\\') && i + 1 < unescaped.size()) {
            current += unescaped[++i];
        } else if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (c == QLatin1Char(' ') && !quoted) {
            args << current;
            current.clear();
        } else {
            current += c;
        }
    }
    args << current;
    return args;
}

TEST(EditorCommands, LauncherHandsTheNameOverUntouched)
{
    const QString name = QStringLiteral("50% \"off\" $now `x` back\\slash");
    const QString entry = hotkeys::MacroLauncherText(QStringLiteral("/a b/sonamark-launch"), name);
    EXPECT_TRUE(entry.startsWith(QStringLiteral("[Desktop Entry]\nType=Application\n")));
    EXPECT_EQ(ExecArguments(entry), (QStringList{QStringLiteral("/a b/sonamark-launch"), hotkeys::LaunchName(name)}));
}

TEST(EditorCommands, LauncherFileIsWrittenIntoANewFolder)
{
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("Desktop/Sub"));
    QString path;
    EXPECT_EQ(hotkeys::WriteMacroLauncher(folder, QStringLiteral("sonamark-launch"), QStringLiteral("Tea"), &path),
              QString());
    EXPECT_EQ(path, folder + QLatin1Char('/') + hotkeys::MacroLauncherFileName(QStringLiteral("Tea")));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("Name=Tea\n"));
    EXPECT_TRUE(file.permissions() & QFile::ExeOwner);
}

TEST(EditorCommands, LauncherInAFolderThatCannotBeMadeGivesTheReason)
{
    QTemporaryDir dir;
    QFile blocker(dir.filePath(QStringLiteral("plain")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QString error = hotkeys::WriteMacroLauncher(dir.filePath(QStringLiteral("plain/sub")),
                                                      QStringLiteral("sonamark-launch"), QStringLiteral("Tea"));
    EXPECT_FALSE(error.isEmpty());
}
