// The statement reference: its source reads cleanly, every statement of the language has
// an entry, and every example macro passes the real checker (sonamark-cli check).
#include "help_reference.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/commands.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString readSource()
{
    QFile file(QStringLiteral(SONAMARK_HELP_SOURCE "/statements.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return QString::fromUtf8(file.readAll());
}

QList<help::StatementEntry> entries()
{
    QString error;
    const QList<help::StatementEntry> list = help::ParseStatementReference(readSource(), &error);
    EXPECT_EQ(error, QString());
    return list;
}

// The statement code of a line as the parser sees it (upper case outside quotes).
int codeOf(const QString &line)
{
    return macro::WhichCommand(line.trimmed());
}

} // namespace

TEST(StatementReference, EveryStatementOfTheLanguageHasOneEntry)
{
    const QList<help::StatementEntry> list = entries();
    QMap<int, QString> covered;
    for (const help::StatementEntry &e : list) {
        const int code = codeOf(e.form);
        EXPECT_GT(code, 0) << "not a statement of the language: " << qPrintable(e.form);
        EXPECT_FALSE(covered.contains(code)) << "two entries for " << qPrintable(e.form);
        covered.insert(code, e.form);
    }
    for (int code = 1; code <= macro::kCommandCount; ++code)
        EXPECT_TRUE(covered.contains(code)) << "no entry for " << qPrintable(macro::CanonicalStatement(code));
}

TEST(StatementReference, EachExampleUsesItsOwnStatement)
{
    for (const help::StatementEntry &e : entries()) {
        const int code = codeOf(e.form);
        bool used = false;
        for (const QString &line : e.example.split(QLatin1Char('\n')))
            used = used || codeOf(line) == code;
        EXPECT_TRUE(used) << qPrintable(e.form) << " does not appear in its example";
    }
}

// All examples go into one Hotkeys file, one macro each, with the macro "Greeting" that
// the [HOTKEY n] example runs, and the real sonamark-cli checks them all.
TEST(StatementReference, EveryExamplePassesTheChecker)
{
    const QList<help::StatementEntry> list = entries();
    ASSERT_GE(list.size(), macro::kCommandCount);
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    hotkeys::HotkeyTable &table = hotkeys::table();
    table.reset();
    auto add = [&table](const QString &keys, const QString &name, const QString &code) {
        hotkeys::Hotkey &h = table.at(++table.HotkeyCount);
        h.Active = true;
        h.Keys = keys;
        h.Description = name;
        h.Code = code;
    };
    add(QStringLiteral("^%{F1}"), QStringLiteral("Greeting"), QStringLiteral("Hello{ENTER}"));
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QString keys = (i < 26 ? QStringLiteral("^%") : QStringLiteral("^+")) + QChar(char16_t(u'A' + i % 26));
        QString code = list.at(i).example;
        code.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
        add(keys, list.at(i).form, code);
    }
    table.HotkeysFileName = dir.filePath(QStringLiteral("Examples.txt"));
    ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
    table.reset();

    QProcess cli;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));  // the mouse limits are those of a 1920 pixel screen
    env.insert(QStringLiteral("SONAMARK_HOME"), dir.path());
    cli.setProcessEnvironment(env);
    cli.start(QStringLiteral(SONAMARK_CLI_PATH),
              {QStringLiteral("check"), QStringLiteral("--hotkeys"), dir.filePath(QStringLiteral("Examples.txt")),
               QStringLiteral("--all")});
    ASSERT_TRUE(cli.waitForFinished(60000));
    const QString out = QString::fromUtf8(cli.readAllStandardOutput());
    EXPECT_EQ(cli.exitCode(), 0) << qPrintable(out) << qPrintable(QString::fromUtf8(cli.readAllStandardError()));
    EXPECT_TRUE(out.isEmpty());
}

TEST(StatementReference, ABrokenExampleIsCaughtByTheSameCheck)
{
    // The check above must be able to fail: one bad example in the same kind of file.
    QTemporaryDir dir;
    hotkeys::HotkeyTable &table = hotkeys::table();
    table.reset();
    hotkeys::Hotkey &h = table.at(++table.HotkeyCount);
    h.Active = true;
    h.Keys = QStringLiteral("^%A");
    h.Description = QStringLiteral("[WAIT Sec]");
    h.Code = QStringLiteral("[WAIT 5000]");
    table.HotkeysFileName = dir.filePath(QStringLiteral("Bad.txt"));
    ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
    table.reset();
    QProcess cli;
    cli.start(QStringLiteral(SONAMARK_CLI_PATH),
              {QStringLiteral("check"), QStringLiteral("--hotkeys"), dir.filePath(QStringLiteral("Bad.txt")),
               QStringLiteral("--all")});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_EQ(cli.exitCode(), 1);
    EXPECT_TRUE(cli.readAllStandardOutput().contains("[WAIT Sec]"));
}

TEST(StatementReference, SourceMistakesAreReportedWithTheirLine)
{
    QString error;
    help::ParseStatementReference(QStringLiteral("## G\n== [CLOSE n]\nCloses.\n== [OPEN n File]\nOpens.\nExample:\n[X=1]\n"),
                                  &error);
    EXPECT_EQ(error, QStringLiteral("line 2: [CLOSE n] has no example"));
    help::ParseStatementReference(QStringLiteral("== [CLOSE n]\nCloses.\nExample:\n[CLOSE 1]\n"), &error);
    EXPECT_EQ(error, QStringLiteral("line 1: an entry before the first group"));
    help::ParseStatementReference(QStringLiteral("## G\nstray words\n"), &error);
    EXPECT_EQ(error, QStringLiteral("line 2: text outside an entry"));
    const QList<help::StatementEntry> list = help::ParseStatementReference(
        QStringLiteral("## Files\n== [CLOSE n]\nCloses\nthe file.\n\nAll of it.\nExample:\n  [CLOSE 1]\n\n\n"), &error);
    EXPECT_EQ(error, QString());
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0).group, QStringLiteral("Files"));
    EXPECT_EQ(list.at(0).paragraphs, QStringList({QStringLiteral("Closes the file."), QStringLiteral("All of it.")}));
    EXPECT_EQ(list.at(0).example, QStringLiteral("  [CLOSE 1]"));
}

TEST(StatementReference, WordsAndAnchorsNameTheStatement)
{
    help::StatementEntry e;
    for (const auto &[form, word, anchor] :
         {std::tuple{"[OPEN n File]", "[OPEN", "st-OPEN"}, std::tuple{"[VAR=Val]", "[VAR=", "st-VAR"},
          std::tuple{"[SPELLCHECK]", "[SPELLCHECK]", "st-SPELLCHECK"},
          std::tuple{"[CANCEL IF Cond]", "[CANCEL IF", "st-CANCELIF"}}) {
        e.form = QLatin1String(form);
        EXPECT_EQ(help::StatementWord(e), QLatin1String(word));
        EXPECT_EQ(help::StatementAnchor(e), QLatin1String(anchor));
    }
}

TEST(StatementReference, HtmlSetsFormsAsCodeAndEscapesExamples)
{
    QString error;
    const auto list = help::ParseStatementReference(
        QStringLiteral("## Files\n== [CLOSE n]\nCloses what [OPEN n File] opened & more.\nExample:\n[IF A<B]\n"), &error);
    const QString html = help::StatementReferenceHtml(list);
    EXPECT_TRUE(html.contains(QStringLiteral("<a name=\"st-CLOSE\"></a><code>[CLOSE n]</code>")));
    EXPECT_TRUE(html.contains(QStringLiteral("what <code>[OPEN n File]</code> opened &amp; more.")));
    EXPECT_TRUE(html.contains(QStringLiteral("<pre>[IF A&lt;B]</pre>")));
    EXPECT_TRUE(html.contains(QStringLiteral("<a href=\"#st-CLOSE\">")));
}

TEST(StatementReference, RtfAndRoffEscapeTheirSpecialCharacters)
{
    EXPECT_EQ(help::RtfEscaped(QStringLiteral("a\\b{c}\nd\u00e9")), QStringLiteral("a\\\\b\\{c\\}\\par\nd\\u233?"));
    EXPECT_EQ(help::RoffEscaped(QStringLiteral(".x -y\\z\n'q")), QStringLiteral("\\&.x \\-y\\ez\n\\&'q"));
}
