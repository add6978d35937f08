// The corpus under data/: expressions and conditions with their expected results.
#include "language_fixture.h"

#include "macro/conditions.h"
#include "macro/expressions.h"
#include "macro/macro_text.h"
#include "macro/number_format.h"

#include <QFile>
#include <QTextStream>

using namespace macro;
using langtest::LanguageTest;

namespace {

struct Case {
    int line;
    QString input;
    QString expected;
};

QList<Case> readCorpus(const char *name)
{
    QFile file(QStringLiteral(LANGUAGE_DATA_DIR "/") + QString::fromLatin1(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        ADD_FAILURE() << "cannot open " << name;
        return {};
    }
    QList<Case> cases;
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    for (int line = 1; !in.atEnd(); ++line) {
        const QString text = in.readLine();
        if (text.isEmpty() || text.startsWith(QLatin1Char('#')))
            continue;
        const qsizetype tab = text.indexOf(QLatin1Char('\t'));
        if (tab < 0) {
            ADD_FAILURE() << name << ":" << line << " has no tab";
            continue;
        }
        cases.append({line, text.left(tab), text.mid(tab + 1)});
    }
    EXPECT_FALSE(cases.isEmpty()) << name;
    return cases;
}

TEST_F(LanguageTest, NumberCorpus)
{
    for (const Case &c : readCorpus("numbers.tsv")) {
        QString msg;
        const double value = SolveEquation(c.input, msg);
        EXPECT_EQ(msg.isEmpty() ? GeneralFormat(value) : msg, c.expected)
            << "numbers.tsv:" << c.line << " " << qPrintable(c.input);
    }
}

TEST_F(LanguageTest, StringCorpus)
{
    for (const Case &c : readCorpus("strings.tsv")) {
        QString msg;
        const QString value = GetString(c.input, msg);
        EXPECT_EQ(msg.isEmpty() ? value : msg, c.expected) << "strings.tsv:" << c.line << " " << qPrintable(c.input);
    }
}

TEST_F(LanguageTest, ConditionCorpus)
{
    for (const Case &c : readCorpus("conditions.tsv")) {
        QString cond = c.input;
        RemoveSpaces(cond);
        EXPECT_EQ(TestCond(cond), c.expected) << "conditions.tsv:" << c.line << " " << qPrintable(c.input);
    }
}

} // namespace
