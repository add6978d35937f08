// sonamark-helpgen: builds the shipped help from its sources at build time.
//
//   sonamark-helpgen STATEMENTS PAGES_DIR HOTKEYS_RTF_TEMPLATE MAN_TEMPLATE VERSION OUT_HELP OUT_MAN
//
// Writes into OUT_HELP the help pages NN.html of PAGES_DIR (page 10 with the statement
// reference of STATEMENTS in place of its marker) and Hotkeys.rtf (the template with the
// reference in place of its marker paragraph), and into OUT_MAN the man page sonamark.1:
// MAN_TEMPLATE with @VERSION@ and @PAGES@ (every page as man text) filled in.
// Any source that does not read cleanly stops the build with its file and line.
#include "help_reference.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <cstdio>

namespace {

const QString kRtfMark = QStringLiteral("%STATEMENT REFERENCE%");

bool readText(const QString &path, QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "sonamark-helpgen: cannot read %s\n", qPrintable(path));
        return false;
    }
    text = QString::fromUtf8(file.readAll());
    return true;
}

bool writeText(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        std::fprintf(stderr, "sonamark-helpgen: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

int fail(const QString &path, const QString &problem)
{
    std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(problem));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 8) {
        std::fprintf(stderr, "usage: sonamark-helpgen STATEMENTS PAGES_DIR HOTKEYS_RTF_TEMPLATE MAN_TEMPLATE "
                             "VERSION OUT_HELP OUT_MAN\n");
        return 2;
    }
    const QString statementsPath = args.at(1);
    const QDir pages(args.at(2));
    const QString rtfTemplatePath = args.at(3);
    const QString manTemplatePath = args.at(4);
    const QString version = args.at(5);
    const QDir outHelp(args.at(6));
    const QDir outMan(args.at(7));
    if (!QDir().mkpath(outHelp.path()) || !QDir().mkpath(outMan.path()))
        return fail(outHelp.path(), QStringLiteral("cannot make the output folders"));

    QString source;
    if (!readText(statementsPath, source))
        return 1;
    QString problem;
    const QList<help::StatementEntry> entries = help::ParseStatementReference(source, &problem);
    if (!problem.isEmpty())
        return fail(statementsPath, problem);

    QString pagesRoff;
    const QString referenceRoff = help::StatementReferenceRoff(entries);
    const QStringList names = pages.entryList({QStringLiteral("[0-9][0-9].html")}, QDir::Files, QDir::Name);
    if (names.isEmpty())
        return fail(pages.path(), QStringLiteral("no help pages"));
    for (const QString &name : names) {
        QString page;
        if (!readText(pages.filePath(name), page))
            return 1;
        pagesRoff += help::HtmlPageToRoff(page, referenceRoff, &problem);
        if (!problem.isEmpty())
            return fail(pages.filePath(name), problem);
        if (!writeText(outHelp.filePath(name), help::PageWithReference(page, entries).toUtf8()))
            return 1;
    }

    QString rtf;
    if (!readText(rtfTemplatePath, rtf))
        return 1;
    if (!rtf.contains(kRtfMark))
        return fail(rtfTemplatePath, QStringLiteral("no %1 paragraph").arg(kRtfMark));
    rtf.replace(QStringLiteral("\\pard ") + kRtfMark + QStringLiteral("\\par"), help::StatementReferenceRtf(entries));
    rtf.replace(kRtfMark, help::StatementReferenceRtf(entries));
    if (!writeText(outHelp.filePath(QStringLiteral("Hotkeys.rtf")), rtf.toLatin1()))
        return 1;

    QString man;
    if (!readText(manTemplatePath, man))
        return 1;
    man.replace(QStringLiteral("@VERSION@"), version);
    man.replace(QStringLiteral("@PAGES@\n"), pagesRoff);
    if (!writeText(outMan.filePath(QStringLiteral("sonamark.1")), man.toUtf8()))
        return 1;
    return 0;
}
