// The shipped help: the eleven pages (sources and the built ones), the viewer's lookup,
// sonamark-cli's --help texts and the man pages.
#include "help_reference.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

struct Result {
    int status = -1;
    QString out;
    QString err;
};

Result run(const QString &program, const QStringList &args)
{
    QProcess p;
    p.start(program, args);
    Result r;
    if (!p.waitForFinished(60000))
        return r;
    r.status = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

Result cli(const QStringList &args) { return run(QStringLiteral(SONAMARK_CLI_PATH), args); }

const QStringList kCommands = {QStringLiteral("run"),    QStringLiteral("check"),  QStringLiteral("format"),
                               QStringLiteral("voices"), QStringLiteral("speak"),  QStringLiteral("to-file"),
                               QStringLiteral("batch"),  QStringLiteral("find"),   QStringLiteral("spell")};

} // namespace

TEST(HelpPages, EveryPageIsWrittenAndReadsAsAHelpPage)
{
    const QStringList &titles = help::HelpPageTitles();
    ASSERT_EQ(titles.size(), 11);
    for (int page = 1; page <= titles.size(); ++page) {
        for (const QString &folder : {QStringLiteral(SONAMARK_HELP_SOURCE "/pages"), QStringLiteral(SONAMARK_BUILT_HELP)}) {
            const QString path = QDir(folder).filePath(help::HelpPageFileName(page));
            const QString html = readFile(path);
            ASSERT_FALSE(html.trimmed().isEmpty()) << qPrintable(path);
            EXPECT_FALSE(html.contains(QLatin1String("not been written"), Qt::CaseInsensitive)) << qPrintable(path);
            EXPECT_TRUE(html.contains(QStringLiteral("<h1>") + titles.at(page - 1) + QStringLiteral("</h1>")))
                << qPrintable(path) << " lacks its title";
            EXPECT_GT(html.size(), 1500) << qPrintable(path) << " is too short to be a real page";
            QString error;
            help::HtmlPageToRoff(html, QString(), &error);
            EXPECT_EQ(error, QString()) << qPrintable(path);
        }
    }
}

TEST(HelpPages, TheBuiltHotkeysMacrosPageHoldsTheWholeReference)
{
    const QString page = readFile(QStringLiteral(SONAMARK_BUILT_HELP "/10.html"));
    EXPECT_FALSE(page.contains(help::kStatementReferenceMark));
    QString error;
    const auto entries = help::ParseStatementReference(readFile(QStringLiteral(SONAMARK_HELP_SOURCE "/statements.txt")),
                                                       &error);
    ASSERT_FALSE(entries.isEmpty());
    for (const help::StatementEntry &e : entries)
        EXPECT_TRUE(page.contains(QStringLiteral("<a name=\"%1\">").arg(help::StatementAnchor(e)))) << qPrintable(e.form);
    const QString rtf = readFile(QStringLiteral(SONAMARK_BUILT_HELP "/Hotkeys.rtf"));
    EXPECT_TRUE(rtf.startsWith(QLatin1String("{\\rtf1")));
    EXPECT_FALSE(rtf.contains(QLatin1String("%STATEMENT REFERENCE%")));
    for (const help::StatementEntry &e : entries)
        EXPECT_TRUE(rtf.contains(help::RtfEscaped(e.form))) << qPrintable(e.form);
}

TEST(HelpPages, LinksBetweenPagesPointToPagesThatExist)
{
    const QRegularExpression link(QStringLiteral("href=\"(\\d\\d)\\.html"));
    for (int page = 1; page <= 11; ++page) {
        const QString html = readFile(QStringLiteral(SONAMARK_HELP_SOURCE "/pages/") + help::HelpPageFileName(page));
        for (auto it = link.globalMatch(html); it.hasNext();) {
            const int target = it.next().captured(1).toInt();
            EXPECT_TRUE(target >= 1 && target <= 11) << "page " << page << " links to " << target;
        }
    }
}

TEST(HelpViewer, AMissingPageSaysWhereItWasLookedFor)
{
    QTemporaryDir empty;
    const QStringList folders = {empty.filePath(QStringLiteral("share/sonamark/help")), empty.filePath(QStringLiteral("bin/help"))};
    bool found = true;
    const QString html = help::HelpPageHtml(4, folders, &found);
    EXPECT_FALSE(found);
    EXPECT_TRUE(html.contains(QStringLiteral("04.html")));
    for (const QString &folder : folders)
        EXPECT_TRUE(html.contains(folder.toHtmlEscaped())) << qPrintable(folder);
    EXPECT_FALSE(html.contains(QLatin1String("not been written")));
}

TEST(HelpViewer, APageIsTakenFromTheFirstFolderThatHasIt)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("a"));
    QDir(dir.path()).mkpath(QStringLiteral("b"));
    QFile b(dir.filePath(QStringLiteral("b/02.html")));
    ASSERT_TRUE(b.open(QIODevice::WriteOnly));
    b.write("<h1>Running Sonamark</h1>");
    b.close();
    bool found = false;
    EXPECT_EQ(help::HelpPageHtml(2, {dir.filePath(QStringLiteral("a")), dir.filePath(QStringLiteral("b"))}, &found),
              QStringLiteral("<h1>Running Sonamark</h1>"));
    EXPECT_TRUE(found);
}

TEST(HelpViewer, PagesBecomeManTextWithTheirStructure)
{
    QString error;
    const QString roff = help::HtmlPageToRoff(
        QStringLiteral("<html><head><title>x</title></head><body><h1>Read To MP3</h1><p>Use <b>File</b> &gt; "
                       "<code>--x</code>.</p><ul><li>one</li><li>.two</li></ul><pre>[IF A=1]\n.dot</pre>"
                       "<!-- STATEMENT REFERENCE --></body></html>"),
        QStringLiteral(".SS REF\n"), &error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(roff, QStringLiteral(".SH READ TO MP3\n.PP\nUse \\fBFile\\fR > \\fB\\-\\-x\\fR.\n.IP \\(bu 2\none\n"
                                   ".IP \\(bu 2\n\\&.two\n.PP\n.RS 4\n.nf\n[IF A=1]\n\\&.dot\n.fi\n.RE\n.SS REF\n"));
    help::HtmlPageToRoff(QStringLiteral("<html><body><p>open<p></body></html>"), QString(), &error);
    EXPECT_FALSE(error.isEmpty());
    help::HtmlPageToRoff(QStringLiteral("<html><body><blink>x</blink></body></html>"), QString(), &error);
    EXPECT_TRUE(error.contains(QLatin1String("<blink>"))) << qPrintable(error);
}

TEST(CliHelp, HelpListsEveryCommandAndEachCommandHasItsOwnHelp)
{
    const Result overview = cli({QStringLiteral("--help")});
    EXPECT_EQ(overview.status, 0);
    for (const QString &command : kCommands) {
        EXPECT_TRUE(overview.out.contains(QStringLiteral("\n  ") + command + QLatin1Char(' '))) << qPrintable(command);
        for (const QStringList &args : {QStringList{command, QStringLiteral("--help")}, QStringList{command, QStringLiteral("-h")},
                                        QStringList{QStringLiteral("help"), command}}) {
            const Result r = cli(args);
            EXPECT_EQ(r.status, 0) << qPrintable(args.join(u' '));
            EXPECT_TRUE(r.out.startsWith(QStringLiteral("Usage: sonamark-cli ") + command, Qt::CaseInsensitive))
                << qPrintable(args.join(u' ')) << ": " << qPrintable(r.out.left(200));
            EXPECT_EQ(r.err, QString()) << qPrintable(args.join(u' '));
        }
    }
    const Result unknown = cli({QStringLiteral("help"), QStringLiteral("fly")});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.contains(QLatin1String("unknown command 'fly'")));
}

TEST(CliHelp, TheManPageHoldsEveryCommandsHelp)
{
    const Result man = cli({QStringLiteral("--help-man")});
    EXPECT_EQ(man.status, 0);
    EXPECT_TRUE(man.out.startsWith(QLatin1String(".TH SONAMARK\\-CLI 1")));
    for (const QString &command : kCommands)
        EXPECT_TRUE(man.out.contains(QStringLiteral(".SS ") + help::RoffEscaped(command) + QLatin1Char('\n')))
            << qPrintable(command);
    EXPECT_EQ(readFile(QStringLiteral(SONAMARK_BUILT_MAN "/sonamark-cli.1")), man.out);
}

TEST(ManPages, GroffRendersBothWithoutWarnings)
{
    for (const char *name : {"sonamark.1", "sonamark-cli.1"}) {
        const QString path = QStringLiteral(SONAMARK_BUILT_MAN "/") + QLatin1String(name);
        ASSERT_TRUE(QFile::exists(path)) << qPrintable(path);
        const Result text = run(QStringLiteral("groff"), {QStringLiteral("-man"), QStringLiteral("-Tutf8"),
                                                       QStringLiteral("-ww"), QStringLiteral("-rLL=80n"), path});
        ASSERT_EQ(text.status, 0) << "groff (Debian package groff-base) must be installed: " << qPrintable(text.err);
        EXPECT_EQ(text.err, QString()) << name;
        EXPECT_GT(text.out.size(), 2000) << name;
    }
    const QString sonamark = readFile(QStringLiteral(SONAMARK_BUILT_MAN "/sonamark.1"));
    for (const QString &title : help::HelpPageTitles())
        EXPECT_TRUE(sonamark.contains(QStringLiteral(".SH ") + help::RoffEscaped(title.toUpper()))) << qPrintable(title);
    EXPECT_TRUE(sonamark.contains(QLatin1String("[OPEN n File]")));
}
