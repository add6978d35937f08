// The rich text help shown in the text window: the statement reference (Hotkeys.rtf, as
// built) is cut into one section a statement for the wizards' help, and the examples of
// CommonDialog.rtf are dialog strings that the dialog statement understands.
#include "fakes/fake_services.h"
#include "help_reference.h"
#include "hotkeys/dialog_string.h"
#include "reader/help_menu.h"
#include "reader/rtf_reader.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

QString plainTextOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(reader::LooksLikeRtf(bytes)) << qPrintable(path);
    QString error;
    QString text = reader::ReadRtf(bytes, &error).plainText();
    EXPECT_EQ(error, QString()) << qPrintable(path);
    text.replace(QChar(0x2028), QLatin1Char('\n'));
    return text;
}

QList<help::StatementEntry> entries()
{
    QFile file(QStringLiteral(SONAMARK_HELP_SOURCE "/statements.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QString error;
    return help::ParseStatementReference(QString::fromUtf8(file.readAll()), &error);
}

} // namespace

TEST(HotkeysRtf, EachStatementsHelpIsItsOwnSection)
{
    const QString text = plainTextOf(QStringLiteral(SONAMARK_BUILT_HELP "/Hotkeys.rtf"));
    const QList<help::StatementEntry> list = entries();
    ASSERT_FALSE(list.isEmpty());
    for (const help::StatementEntry &e : list) {
        // As a wizard names it: the word with its blank, in the case it happens to have.
        const QString word = help::StatementWord(e) + (help::StatementWord(e).endsWith(QLatin1Char(']')) ? "" : " ");
        const QString section = reader::StatementHelpText(text, word.toLower());
        ASSERT_TRUE(section.startsWith(e.form + QStringLiteral("\r\n"))) << qPrintable(e.form) << ": "
                                                                          << qPrintable(section.left(80));
        EXPECT_TRUE(section.contains(e.example.section(QLatin1Char('\n'), 0, 0))) << qPrintable(e.form);
        // Nothing of the next statement.
        for (const help::StatementEntry &other : list)
            if (other.form != e.form)
                EXPECT_FALSE(section.contains(QStringLiteral("\r\n") + other.form + QStringLiteral("\r\n")))
                    << qPrintable(e.form) << " runs into " << qPrintable(other.form);
    }
    EXPECT_EQ(reader::StatementHelpText(text, QStringLiteral("[NOSUCH ")), QString());
    EXPECT_EQ(reader::StatementHelpText(text, QString()), QString());
}

TEST(HotkeysRtf, SimilarWordsFindTheirOwnStatement)
{
    const QString text = QStringLiteral("== G ==\n[SPELLCHECKMODE ON/OFF]\nmode\n[SPELLCHECK]\ncheck\n    [SPELLCHECK]\n"
                                        "== H ==\n[IF Cond]\nif\n");
    EXPECT_EQ(reader::StatementHelpText(text, QStringLiteral("[SPELLCHECK]")),
              QStringLiteral("[SPELLCHECK]\r\ncheck\r\n    [SPELLCHECK]\r\n"));
    EXPECT_EQ(reader::StatementHelpText(text, QStringLiteral("[spellcheckmode ")),
              QStringLiteral("[SPELLCHECKMODE ON/OFF]\r\nmode\r\n"));
    EXPECT_EQ(reader::StatementHelpText(text, QStringLiteral("[IF ")), QStringLiteral("[IF Cond]\r\nif\r\n"));
    EXPECT_EQ(reader::StatementHelpText(text, QStringLiteral("[I")), QString());
}

TEST(CommonDialogRtf, EveryExampleIsADialogStringWithKnownFlags)
{
    fakes::FakeServices fx;
    const QString text = plainTextOf(QStringLiteral(SONAMARK_SHIPPED_RTF "/CommonDialog.rtf"));
    const QRegularExpression example(QStringLiteral("\\[USERINPUT \"([^\"]+)\" [A-Za-z]+\\]"));
    int count = 0;
    for (auto it = example.globalMatch(text); it.hasNext();) {
        const QString title = it.next().captured(1);
        ++count;
        EXPECT_TRUE(hotkeys::IsDialogString(title)) << qPrintable(title);
        QString type, caption, path, extension;
        QList<qint32> flags;
        qint16 flagCount = 0;
        hotkeys::ParseDialog(title, type, caption, path, extension, flags, flagCount);
        EXPECT_TRUE(QStringList({"Folder", "Open", "Save", "Color", "Font", "Print", "Help"}).contains(type))
            << qPrintable(title);
        const int named = int(title.count(QLatin1String("+cdl")));
        EXPECT_EQ(flagCount, named) << qPrintable(title) << " names a flag that is not known";
    }
    EXPECT_GE(count, 5);
    // Every flag name the help lists is one the dialog statement knows.
    const QRegularExpression flag(QStringLiteral("\\bcdl[A-Za-z]+"));
    int flags = 0;
    for (auto it = flag.globalMatch(text); it.hasNext(); ++flags) {
        const QString word = it.next().captured();
        if (word != QLatin1String("cdlPDAllPages"))  // the one flag whose value is 0
            EXPECT_NE(hotkeys::GetCDL(word), 0) << qPrintable(word);
    }
    EXPECT_GE(flags, 67);
}
