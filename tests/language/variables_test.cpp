// The variable table, the name rule and the special names.
#include "language_fixture.h"

#include "macro/macro_text.h"

#include <QDir>
#include <QTemporaryDir>

using namespace macro;
using langtest::LanguageTest;

namespace {

QString read(const QString &name, int &type)
{
    QString n = name;
    return GetVarVal(n, type);
}

TEST(AllLettersRule, CodeRangeAndMessages)
{
    struct Row {
        const char *text;
        const char *caption;
        const char *message;
    };
    const Row rows[] = {
        {"Name", "", ""},
        {"[\\]^_`", "", ""},  // the six characters between Z and a pass
        {"", "LHS ", ""},
        {"A1", "LHS ", "Only letters allowed in LHS variable name"},
        {"MY VAR", "", "Only letters allowed in variable name"},
        {"xALITERAL", "right hand side ", "Strings not allowed in right hand side variable name"},
        {"AEMPTY", "", "Empty string in variable name"},
        {"{", "", "Only letters allowed in variable name"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(AllLetters(QString::fromLatin1(r.text), QString::fromLatin1(r.caption)),
                  QString::fromLatin1(r.message))
            << r.text;
}

TEST_F(LanguageTest, NamesCompareWithoutCaseAndKeepTheirFirstSpelling)
{
    ResetVariables();
    SetVarVal(QStringLiteral("x"), QStringLiteral("a"));
    SetVarVal(QStringLiteral("X"), 1.0);
    ASSERT_EQ(variableTable().VarCount(), 1);
    EXPECT_EQ(variableTable().MacroVars[0].VarName, QStringLiteral("x"));
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("X"), type), QStringLiteral("1"));
    EXPECT_EQ(type, kTypeNumber);
    EXPECT_EQ(GetVarIndex(QStringLiteral("X")), 1);
    EXPECT_EQ(GetVarIndex(QStringLiteral("Y")), 0);
}

TEST_F(LanguageTest, NotFoundEmptiesTheName)
{
    QString name = QStringLiteral("foo");
    int type = 7;
    EXPECT_EQ(GetVarVal(name, type), QString());
    EXPECT_TRUE(name.isEmpty());
    QString empty;
    EXPECT_EQ(GetVarVal(empty, type), QString());
    EXPECT_EQ(type, 7);
}

TEST_F(LanguageTest, StoredQuotesBecomeTheMarker)
{
    int type = -1;
    const QString value = read(QStringLiteral("q"), type);
    EXPECT_EQ(value, QStringLiteral("say \u00E0hi\u00E0"));
    EXPECT_EQ(type, kTypeString);
    QString shown = value;
    RestoreQuotes(shown);
    EXPECT_EQ(shown, QStringLiteral("say \"hi\""));
}

TEST_F(LanguageTest, NumbersReadInTheGeneralFormat)
{
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("H"), type), QStringLiteral("0.5"));
    EXPECT_EQ(read(QStringLiteral("M"), type), QStringLiteral("-2"));
}

TEST_F(LanguageTest, AsciiReadsTheCharacterOfItsCode)
{
    int type = 0;
    EXPECT_EQ(read(QStringLiteral("ascii"), type), QStringLiteral("A"));
    EXPECT_EQ(type, kTypeString);
    SetVarVal(QStringLiteral("ASCII"), 300.0);
    type = 0;
    EXPECT_EQ(read(QStringLiteral("ASCII"), type), QString());
    EXPECT_EQ(type, kTypeString);

    ResetVariables();
    QString name = QStringLiteral("ASCII");
    type = 0;
    EXPECT_EQ(GetVarVal(name, type), QString());
    EXPECT_EQ(name, QStringLiteral("ASCII"));  // not reported as missing
    EXPECT_EQ(type, 0);
}

TEST_F(LanguageTest, TimeoutIsReadInMinutesAndStoredInSeconds)
{
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("TIMEOUT"), type), QStringLiteral("180"));
    SetVarVal(QStringLiteral("timeout"), 90.0);
    EXPECT_EQ(variableTable().MacroTimeout, 5400.0);
    EXPECT_EQ(read(QStringLiteral("TIMEOUT"), type), QStringLiteral("90"));
    EXPECT_EQ(type, kTypeNumber);
    SetVarVal(QStringLiteral("TIMEOUT"), 0.0);
    SetVarVal(QStringLiteral("TIMEOUT"), QStringLiteral("-3"));
    EXPECT_EQ(variableTable().MacroTimeout, 5400.0);
    EXPECT_EQ(GetVarIndex(QStringLiteral("TIMEOUT")), 0);
}

TEST_F(LanguageTest, DateTimeAndTimerHaveFixedForms)
{
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("DATE"), type), QStringLiteral("2024-03-09"));
    EXPECT_EQ(type, kTypeString);
    EXPECT_EQ(read(QStringLiteral("time"), type), QStringLiteral("07:05:30"));
    EXPECT_EQ(read(QStringLiteral("TIMER"), type), QStringLiteral("45296.25"));
    EXPECT_EQ(type, kTypeNumber);
    // The forms read back.
    EXPECT_EQ(QDate::fromString(CurrentDateText(), Qt::ISODate), QDate(2024, 3, 9));
    EXPECT_EQ(QTime::fromString(CurrentTimeText(), QLatin1String(kTimeFormat)), QTime(7, 5, 30));
}

TEST_F(LanguageTest, PathChangesOnlyToAnExistingFolder)
{
    const QString before = QDir::currentPath();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    SetVarVal(QStringLiteral("PATH"), QStringLiteral("  ") + dir.path() + QStringLiteral(" "));
    int type = -1;
    EXPECT_EQ(QDir(read(QStringLiteral("PATH"), type)).canonicalPath(), QDir(dir.path()).canonicalPath());
    EXPECT_EQ(type, kTypeString);
    SetVarVal(QStringLiteral("PATH"), dir.path() + QStringLiteral("/missing"));
    SetVarVal(QStringLiteral("PATH"), QStringLiteral("   "));
    EXPECT_EQ(QDir(read(QStringLiteral("PATH"), type)).canonicalPath(), QDir(dir.path()).canonicalPath());
    QDir::setCurrent(before);
}

TEST_F(LanguageTest, SonamarkTextReachesTheReader)
{
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("SonamarkText"), type), QStringLiteral("Reader text 42"));
    SetVarVal(QStringLiteral("SONAMARKTEXT"), QStringLiteral("new \u00E0x\u00E0 \u00C0y\u00C0"));
    ASSERT_EQ(fakes.readerText.written.size(), 1);
    EXPECT_EQ(fakes.readerText.written[0], QStringLiteral("new \"x\" \"y\""));
    EXPECT_EQ(GetVarIndex(QStringLiteral("SONAMARKTEXT")), 0);
}

TEST_F(LanguageTest, ReservedFunctionNamesAreNeverStored)
{
    const int before = variableTable().VarCount();
    for (const char *name : {"LEN", "mid", "VAL", "STR", "TIME", "DATE", "TIMER"}) {
        SetVarVal(QString::fromLatin1(name), 1.0);
        EXPECT_TRUE(LeftSpecial(QString::fromLatin1(name))) << name;
    }
    EXPECT_EQ(variableTable().VarCount(), before);
    QString name = QStringLiteral("LEN");
    int type = 0;
    GetVarVal(name, type);
    EXPECT_TRUE(name.isEmpty());
    for (const char *name : {"PATH", "SONAMARKTEXT", "TIMEOUT", "UCASE", "ASCII", "X"})
        EXPECT_FALSE(LeftSpecial(QString::fromLatin1(name))) << name;
    SetVarVal(QStringLiteral("UCASE"), QStringLiteral("ordinary"));
    EXPECT_EQ(GetVarIndex(QStringLiteral("ucase")), before + 1);
}

TEST_F(LanguageTest, TypeFollowsTheLastAssignment)
{
    SetVarVal(QStringLiteral("N"), QStringLiteral("now text"));
    int type = -1;
    EXPECT_EQ(read(QStringLiteral("N"), type), QStringLiteral("now text"));
    EXPECT_EQ(type, kTypeString);
    double number = 0;
    EXPECT_TRUE(GetVarNumber(QStringLiteral("FIVE"), number, type));
    EXPECT_EQ(number, 5.0);
    EXPECT_EQ(type, kTypeString);
}

TEST_F(LanguageTest, ResetEmptiesTheTable)
{
    ASSERT_GT(variableTable().VarCount(), 0);
    ResetVariables();
    EXPECT_EQ(variableTable().VarCount(), 0);
    EXPECT_EQ(GetVarIndex(QStringLiteral("N")), 0);
}

} // namespace
