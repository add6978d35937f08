// The statement corpus: each folder under corpus/ holds a macro (macro.txt, and the macro
// it calls, macro2.txt), the files it starts with, the report sonamark-cli run prints for
// it (report.txt) and, under after/, files that must exist afterwards with exactly that
// content. The macro runs in a copy of the folder, which is the current folder of the run.
//
// SONAMARK_UPDATE_CORPUS=1 writes report.txt from the run instead of comparing.
#include "cli/run_command.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// One record of a Hotkeys file for a macro: lines joined by CR LF, double quotes as
// U+00E0.
QString hotkeyRecord(const QString &keys, const QString &name, const QByteArray &macro)
{
    QString code = QString::fromUtf8(macro);
    code.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    while (code.endsWith(QLatin1Char('\n')))
        code.chop(1);
    code.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    code.replace(QLatin1Char('"'), QChar(0xE0));
    return QStringLiteral("#TRUE#,\"") + keys + QStringLiteral("\",\"") + name + QStringLiteral("\",\"") + code
           + QStringLiteral("\"\r\n");
}

// The Hotkeys file of a case: macro.txt is macro 1, run by the test; macro2.txt, when
// there is one, is macro 2, for [HOTKEY 2].
QByteArray hotkeysFileFor(const QString &name, const QString &folder)
{
    QString file = QStringLiteral("\"<Hotkeys Macros v1.2>\"\r\n")
                   + hotkeyRecord(QStringLiteral("^%K"), name, readAll(folder + QStringLiteral("/macro.txt")));
    if (QFile::exists(folder + QStringLiteral("/macro2.txt")))
        file += hotkeyRecord(QStringLiteral("^%L"), name + QStringLiteral(" 2"), readAll(folder + QStringLiteral("/macro2.txt")));
    return file.toUtf8();
}

class CorpusTest : public ::testing::TestWithParam<QString> {};

TEST_P(CorpusTest, ReportAndFilesAreAsRecorded)
{
    const QString source = QStringLiteral(SONAMARK_CORPUS_DIR "/") + GetParam();
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    for (const QString &name : QDir(source).entryList(QDir::Files))
        if (name != QLatin1String("report.txt"))
            ASSERT_TRUE(QFile::copy(source + QLatin1Char('/') + name, work.filePath(name)));
    const QString hotkeys = work.filePath(QStringLiteral("Hotkeys.txt"));
    {
        QFile f(hotkeys);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(hotkeysFileFor(GetParam(), source));
    }

    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(work.path()));
    // Without a display the clipboard statements answer the same everywhere.
    const QByteArray display = qgetenv("DISPLAY");
    qunsetenv("DISPLAY");
    QString out, err;
    {
        QTextStream o(&out), e(&err);
        cli::RunCli({QStringLiteral("run"), QStringLiteral("--hotkeys"), hotkeys, QStringLiteral("--number"),
                     QStringLiteral("1")},
                    o, e);
    }
    if (!display.isEmpty())
        qputenv("DISPLAY", display);
    QDir::setCurrent(before);

    const QString reportFile = source + QStringLiteral("/report.txt");
    if (qEnvironmentVariableIntValue("SONAMARK_UPDATE_CORPUS") == 1) {
        QFile f(reportFile);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(out.toUtf8());
    }
    EXPECT_EQ(out.toStdString(), readAll(reportFile).toStdString()) << err.toStdString();

    QDirIterator after(source + QStringLiteral("/after"), QDir::Files, QDirIterator::Subdirectories);
    while (after.hasNext()) {
        const QString expected = after.next();
        const QString relative = QDir(source + QStringLiteral("/after")).relativeFilePath(expected);
        EXPECT_EQ(readAll(work.filePath(relative)).toStdString(), readAll(expected).toStdString()) << relative.toStdString();
    }
}

QStringList corpusCases()
{
    return QDir(QStringLiteral(SONAMARK_CORPUS_DIR)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

INSTANTIATE_TEST_SUITE_P(Statements, CorpusTest, ::testing::ValuesIn(corpusCases()),
                         [](const ::testing::TestParamInfo<QString> &info) { return info.param.toStdString(); });

} // namespace
