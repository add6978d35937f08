// Number and string expressions, the functions, the substitution passes and the
// pre-analysis of [VAR=Val].
#include "language_fixture.h"

#include "macro/expressions.h"
#include "macro/number_format.h"
#include "macro/special_vars.h"
#include "macro/string_functions.h"

using namespace macro;
using langtest::LanguageTest;

namespace {

TEST_F(LanguageTest, EquationRangeAroundAnOperatorKeepsTheSign)
{
    struct Row { const char *text; int position; const char *range; };
    const Row rows[] = {
        {"2+3*4", 4, "3*4"}, {"10/4*2", 3, "10/4"}, {"2*-3+1", 2, "2*-3"}, {"1-2*-3", 4, "2*-3"}, {"2*3-4", 2, "2*3"},
    };
    for (const Row &r : rows) {
        int first = 0, last = 0;
        EXPECT_EQ(GetLeftRightVars(QString::fromLatin1(r.text), r.position, first, last), QString::fromLatin1(r.range))
            << r.text;
    }
}

TEST_F(LanguageTest, GetEquValSumsLeftToRight)
{
    QString msg;
    EXPECT_EQ(GetEquVal(QStringLiteral("2+3*4"), msg), 20.0);  // no precedence at this level
    EXPECT_EQ(GetEquVal(QStringLiteral("-5+1"), msg), -4.0);
    EXPECT_EQ(GetEquVal(QStringLiteral("N-M"), msg), 7.0);
    EXPECT_EQ(msg, QString());
    GetEquVal(QStringLiteral("1&2"), msg);
    EXPECT_EQ(msg, QStringLiteral("Illegal string variable in equation"));
}

TEST_F(LanguageTest, StringFunctionsWorkInPlace)
{
    struct Row {
        const char *expression;
        int position;
        QString (*fn)(QString &, int);
        const char *result;   // the rewritten expression, or "" on failure
        const char *message;
    };
    const Row rows[] = {
        {"\"<\"&STR(N)&\">\"", 5, GetSTR, "\"<\"&\"5\"&\">\"", ""}, {"STR(H)", 1, GetSTR, "\"0.5\"", ""},
        {"STR()", 1, GetSTR, "", "Illegal format in STR()"},
        {"STR(N", 1, GetSTR, "", "Missing right parenthesis in STR()"},
        {"STR(N)", 9, GetSTR, "", "Invalid call to STR()"}, {"1+VAL(FIVE)", 3, GetVAL, "1+5", ""},
        {"VAL(JUNK)", 1, GetVAL, "0", ""}, {"1VAL(FIVE)", 2, GetVAL, "", "Illegal operator in VAL()"},
        {"VAL(5)", 1, GetVAL, "", "Illegal value in VAL()"},
        {"VAL(N)", 1, GetVAL, "", "Number variables not allowed in VAL()"},
        {"VAL(PATH)", 1, GetVAL, "", "Illegal use of PATH in VAL()"}, {"VAL(SONAMARKTEXT)", 1, GetVAL, "0", ""},
        {"VAL(MID(T 1 2))", 1, GetVAL, "", "Missing right parenthesis in MID()"},
        {"VAL(XMID(T)", 1, GetVAL, "", "Illegal use of MID() in VAL()"},
        {"UCASE(\"mIx\")", 1, GetUCASE, "\"MIX\"", ""},
        {"UCASE(N)", 1, GetUCASE, "", "Number variable not allowed in UCASE()"},
        {"UCASE(NOPE)", 1, GetUCASE, "", "Variable not defined in UCASE()"}, {"MID(T 2 3)", 1, GetMID, "\"bc\"", ""},
        {"MID(T 5 99)", 1, GetMID, "\"ef\"", ""}, {"MID(\"hello\" A B)", 1, GetMID, "\"he\"", ""},
        {"MID(T 3 2)", 1, GetMID, "", "Illegal char limits in MID()"},
        {"MID(T 0 2)", 1, GetMID, "", "Illegal 2nd variable in MID()"},
        {"MID(T 1 X9)", 1, GetMID, "", "Illegal 3rd variable in MID()"},
        {"MID(T 1 NOPE)", 1, GetMID, "", "3rd variable not set in MID()"},
        {"MID(T S 2)", 1, GetMID, "", "String variable not allowed in MID()"},
        {"MID(N 1 2)", 1, GetMID, "", "1st variable must be a string variable in MID()"},
        {"MID(NOPE 1 2)", 1, GetMID, "", "String variable not set in MID()"},
        {"MID(TT 12)", 1, GetMID, "", "Missing comma in MID()"},
        {"MID(\"ab 1 2)", 1, GetMID, "", "Missing quote in MID()"},
        {"MID(\"\" 1 2)", 1, GetMID, "", "Empty string in MID()"},
        {"MID(T\" 1 2)", 1, GetMID, "", "Illegal quotes in MID()"},
        {"MID(A1 1 2)", 1, GetMID, "", "Illegal 1st variable format in MID()"},
        {"\"x\"&MID(EMPTY 1 2)&\"y\"", 5, GetMID, "\"x\"&\"\"&\"y\"", ""},
        {"MID(EMPTY 1 2)", 1, GetMID, "", "Illegal char limits in MID()"},
    };
    for (const Row &r : rows) {
        QString expression = QString::fromLatin1(r.expression);
        EXPECT_EQ(r.fn(expression, r.position), QString::fromLatin1(r.message)) << r.expression;
        EXPECT_EQ(expression, QString::fromLatin1(r.result)) << r.expression;
    }
}

TEST_F(LanguageTest, SubstitutionPassesSkipQuotesAndLongerWords)
{
    struct Row { QString (*pass)(QString &); const char *in; const char *out; };
    const auto V = ReplaceSpecialVars;
    const Row rows[] = {
        {V, "MYTIME=TIME", "MYTIME=\"07:05:30\""}, {V, "\"TIME\"=DATE", "\"TIME\"=\"2024-03-09\""},
        {V, "TIMER>1", "45296.25>1"}, {V, "TIMEOUT=180", "180.=180"}, {V, "N=LEN(S)", "N=3"},
        {V, "STR(N)=\"5\"", "\"5\"=\"5\""}, {V, "VAL(FIVE)=5", "5=5"}, {V, "UCASE(S)=MID(T 1 3)", "\"ABC\"=\"abc\""},
        {V, "SONAMARKTEXT<>\"\"", "\"Reader text 42\"<>\"\""}, {V, "A=\"x{TAB}y\"", "A=\"x\ty\""},
        {V, "S=\"a~\"", "S=\"a\r\n\""},  // no special name, keys still expand
        {ReplaceSpecialStringVars, "\"{TAB}\"", "\"\t\""},
        {ReplaceSpecialNumVars, "mypath+timers+timer", "MYPATH+TIMERS+45296.25"},
    };
    for (const Row &r : rows) {
        QString text = QString::fromUtf8(r.in);
        EXPECT_EQ(r.pass(text), QString()) << r.in;
        EXPECT_EQ(text, QString::fromUtf8(r.out)) << r.in;
    }
}

TEST_F(LanguageTest, SubstitutionPassMessagesEmptyTheExpression)
{
    struct Row { QString (*pass)(QString &); const char *in; const char *message; };
    const Row rows[] = {
        {ReplaceSpecialVars, "1LEN(S)=3", "Illegal operator in LEN()"},
        {ReplaceSpecialVars, "LEN(S=3", "Missing right parenthesis"},
        {ReplaceSpecialVars, "LEN(A1)=3", "Illegal variable in LEN()"},
        {ReplaceSpecialVars, "LEN(NOPE)=3", "Error assigning value for LEN()"},
        {ReplaceSpecialVars, "LEN(N)=3", "Number variables not allowed in LEN()"},
        {ReplaceSpecialNumVars, "VAL(N)", "Can't mix VAL() and number variables"},
        {ReplaceSpecialNumVars, "2LEN(S)", "Illegal operator for LEN()"},
        {ReplaceSpecialNumVars, "LEN(S", "Missing right parenthesis for LEN()"},
        {ReplaceSpecialNumVars, "LEN(NOPE)", "Variable not set in LEN()"},
        {ReplaceSpecialNumVars, "LEN(N)", "Number variable not allowed in LEN()"},
        {ReplaceSpecialNumVars, "1+STR(N)", "STR() not allowed in number expression"},
        {ReplaceSpecialNumVars, "SONAMARKTEXT", "Can't mix SONAMARKTEXT and number variables"},
        {ReplaceSpecialNumVars, "time+1", "Can't mix TIME and number variables"},
        {ReplaceSpecialNumVars, "DATE", "Can't mix DATE and number variables"},
        {ReplaceSpecialNumVars, "PATH2+1", "Can't mix PATH and number variables"},
        {ReplaceSpecialNumVars, "MID(T 1 2)", "Can't mix MID() and number variables"},
        {ReplaceSpecialNumVars, "UCASE(S)", "Can't mix UCASE() and number variables"},
        {ReplaceSpecialStringVars, "\"a\"&LEN(S)", "Can't mix LEN() with strings"},
        {ReplaceSpecialStringVars, "VAL(S)", "Can't mix VAL() with strings"},
        {ReplaceSpecialStringVars, "\"a\"&TIMER", "Can't mix the TIMER variable with strings"},
        {ReplaceSpecialStringVars, "TIMEOUT&\"a\"", "Can't mix the TIMEOUT variable with strings"},
        {ReplaceSpecialStringVars, "STR(S)", "String variable not allowed for STR()"},
    };
    for (const Row &r : rows) {
        QString text = QString::fromLatin1(r.in);
        EXPECT_EQ(r.pass(text), QString::fromLatin1(r.message)) << r.in;
        EXPECT_TRUE(text.isEmpty()) << r.in;
    }
}

TEST_F(LanguageTest, StrAroundTimerOrTimeout)
{
    QString text = QStringLiteral("\"a\"&STR(TIMEOUT)");
    EXPECT_TRUE(IsInSTR(text, 9, 15));
    EXPECT_EQ(text, QStringLiteral("\"a\"&\"180\""));
    QString plain = QStringLiteral("\"a\"&TIMEOUT");
    EXPECT_FALSE(IsInSTR(plain, 5, 11));
    EXPECT_EQ(plain, QStringLiteral("\"a\"&TIMEOUT"));
}

TEST_F(LanguageTest, AssignmentPreAnalysis)
{
    struct Row {
        const char *line;
        const char *name;  // or the message
        const char *rhs;
        int isString;
    };
    const Row rows[] = {
        {"[X=2+3]", "X", "2+3", 0}, {"[X=\"a\"&\"b\"]", "X", "\"a\"&\"b\"", 1}, {"[X=S]", "X", "S", 1},
        {"[X=N]", "X", "N", 0}, {"[X=TIME]", "X", "TIME", 1}, {"[X=TIMER]", "X", "TIMER", 0},
        {"[X=PATH]", "X", "PATH", 1}, {"[X=\"a\"&STR(TIMEOUT)]", "X", "\"a\"&STR(TIMEOUT)", 1},
        {"[X5]", "Missing assignment variable for [VAR=Val] statement", "", 0},
        {"[=5]", "", "5", 0},  // a blank name: the statement leaves silently
        {"[X= ]", "Missing RHS for [VAR=Val] statement", "", 0},
        {"[X=\"abc]", "Missing quote from RHS for [VAR=Val] statement", "", 0},
        {"[X=\"a\"&LEN(S)]", "Cannot mix strings and LEN() for [VAR=Val] statement", "", 1},
        {"[X=VAL(S)&\"a\"]", "Cannot mix strings and VAL() for [VAR=Val] statement", "", 1},
        {"[TIMEOUT=\"5\"]", "TIMEOUT must be assigned a number type for [VAR=Val] statement", "", 1},
        {"[X=\"a\"&TIMEOUT]", "Cannot mix TIMEOUT variable with string type for [VAR=Val] statement", "", 1},
        {"[X=S&TIMER]", "Cannot mix TIMER variable with string type for [VAR=Val] statement", "", 1},
        {"[X=NOPE]", "Variable not set for [VAR=Val] statement", "", 0},
    };
    for (const Row &r : rows) {
        QString rhs;
        int isString = -1;
        EXPECT_EQ(GetVarName(QString::fromLatin1(r.line), rhs, isString), QString::fromLatin1(r.name)) << r.line;
        EXPECT_EQ(rhs, QString::fromLatin1(r.rhs)) << r.line;
        EXPECT_EQ(isString, r.isString) << r.line;
    }
}

TEST_F(LanguageTest, StringValuesKeepTheirMarkersAndExpandKeys)
{
    QString msg;
    EXPECT_EQ(GetString(QStringLiteral("Q&\"!\""), msg), QStringLiteral("say \u00E0hi\u00E0!"));
    EXPECT_EQ(GetString(QStringLiteral("\"a{ENTER}b\"&\"~\""), msg), QStringLiteral("a\r\nb\r\n"));
    EXPECT_EQ(msg, QString());
}

} // namespace
