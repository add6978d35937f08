// Conditions, sequences and the check-time split of a condition.
#include "language_fixture.h"

#include "macro/check_helpers.h"
#include "macro/commands.h"
#include "macro/conditions.h"
#include "macro/macro_text.h"
#include "macro/statement_check.h"

using namespace macro;
using langtest::LanguageTest;

namespace {

// ParseParam's outputs and message for one condition.
struct Split {
    QList<int> connectors;
    QStringList lefts, ops, rights;
    int count = 0;
    QString message;
};

Split split(const QString &cond, int flag)
{
    Split r;
    r.message = ParseParam(cond, r.connectors, r.lefts, r.ops, r.rights, r.count, flag);
    return r;
}

TEST_F(LanguageTest, OnlyTwoBooleanValuesCountPerLevel)
{
    struct Row { const char *text; int value; const char *message; };
    const Row rows[] = {
        {"1 AND 1", 1, ""}, {"1 and 0", 0, ""}, {"0 OR 1", 1, ""},
        {"1 OR 0 AND 0", 1, ""},   // no AND-before-OR, and the third is not read
        {"0 AND 1 OR 1", 0, ""}, {"1 AND 1 AND 0", 1, ""}, {"1 AND 1 AND X", 1, ""}, {"1", 1, ""}, {"0", 0, ""},
        {"1 AND 2", 0, "Invalid boolean operation"}, {"A OR 1", 0, "Invalid boolean operation"},
    };
    for (const Row &r : rows) {
        QString msg;
        EXPECT_EQ(GetANDORVal(QString::fromLatin1(r.text), msg), r.value) << r.text;
        EXPECT_EQ(msg, QString::fromLatin1(r.message)) << r.text;
    }
}

TEST_F(LanguageTest, TermAroundAComparison)
{
    int first = 0, last = 0;
    EXPECT_EQ(GetLeftRightCondVars(QStringLiteral("A=1 AND B<=2"), 10, first, last), QStringLiteral("B<=2"));
    EXPECT_EQ(first, 9);
    EXPECT_EQ(last, 12);
    EXPECT_EQ(GetLeftRightCondVars(QStringLiteral("S=\"x y=z\" OR 1=1"), 2, first, last), QStringLiteral("S=\"x y=z\""));
}

TEST_F(LanguageTest, ComparisonTermsAndOperatorMarkers)
{
    struct Row { QString term; int value; };
    const Row rows[] = {
        {QStringLiteral("N=5"), 1}, {QStringLiteral("N") + kLessEqualMarker + QStringLiteral("5"), 1},
        {QStringLiteral("N") + kGreaterEqualMarker + QStringLiteral("6"), 0},
        {QStringLiteral("N") + kNotEqualMarker + QStringLiteral("5"), 0},
        {QStringLiteral("FIVE>5"), 1},        // a number orders below a string
        {QStringLiteral("5<FIVE"), 1}, {QStringLiteral("FIVE=5"), 0},
        {QStringLiteral("UP=\"abc\""), 0},    // case counts
        {QStringLiteral("S<T"), 1}, {QStringLiteral("N*2-1=9"), 1}, {QStringLiteral("H=.5"), 1},
    };
    for (const Row &r : rows) {
        QString msg;
        EXPECT_EQ(GetCondVal(r.term, msg), r.value) << qPrintable(r.term);
        EXPECT_EQ(msg, QString()) << qPrintable(r.term);
    }
    QString msg;
    GetCondVal(QStringLiteral("NOPE=1"), msg);
    EXPECT_EQ(msg, QStringLiteral("Condition variable not set"));
}

TEST_F(LanguageTest, IllegalOperatorTouchesAFurtherOperator)
{
    EXPECT_TRUE(IllegalOperator(QStringLiteral("A<>=5"), 2));
    EXPECT_TRUE(IllegalOperator(QStringLiteral("A=<=5"), 3));
    EXPECT_FALSE(IllegalOperator(QStringLiteral("A<>5"), 2));
    QString cond = QStringLiteral("(N<>=5)");
    EXPECT_EQ(TestCond(cond), QStringLiteral("Illegal operator"));
    EXPECT_TRUE(cond.isEmpty());
    QString outer = QStringLiteral("N<>=5");
    EXPECT_NE(TestCond(outer), QStringLiteral("Illegal operator"));  // not tested outside parentheses
}

// --- sequences -----------------------------------------------------------------------

TEST_F(LanguageTest, SequenceShape)
{
    struct Row { const char *cond; bool sequence; };
    const Row rows[] = {
        {"X=5", true},   {"I=1-3,7", true}, {"I=1.5,2.5", true}, {"X=A", false}, {"X<>5", false},
        {"A1=5", false}, {"=5", false},     {"(X=5)", false},    {"X=1 AND Y=2", false},
    };
    for (const Row &r : rows)
        EXPECT_EQ(IsSequence(QString::fromLatin1(r.cond)), r.sequence) << r.cond;
}

TEST_F(LanguageTest, SequenceValuesAndMessages)
{
    struct Row { const char *list; const char *message; QList<double> values; };
    const Row rows[] = {
        {"1-3,7", "", {1, 2, 3, 7}}, {"7,1-3,1", "", {7, 1, 2, 3, 1}}, {"1.5,2.5", "", {1.5, 2.5}},
        {"1.5-3", "", {2, 3}},
        {"2.5-4", "", {2, 3, 4}},         // ends round ties-to-even
        {"3-1", "No values in sequence", {}},
        {"1,,2", "", {}},                 // stops at the empty item, no message
        {"", "Invalid sequence format", {}}, {"1,a", "Invalid number in sequence", {}},
        {"0.0,1", "Invalid number in sequence", {}}, {"2E99", "Invalid max value in sequence", {}},
        {"1-3000000000", "Error determining range in sequence", {}},
        {"1-100001", "Max number of values exceeded in sequence", {}},
    };
    for (const Row &r : rows) {
        int slot = 0;
        SetNextLOOPIndex(slot);
        EXPECT_EQ(Token(QString::fromLatin1(r.list), slot), QString::fromLatin1(r.message)) << r.list;
        const SequenceSlot &s = sequenceStore().slot(slot);
        EXPECT_EQ(s.LoopSeqCount, r.values.size()) << r.list;
        if (s.LoopSeqCount > 0) {
            EXPECT_EQ(s.LoopSeqValues, r.values) << r.list;
        }
        EXPECT_EQ(Token2(QString::fromLatin1(r.list)), QString::fromLatin1(r.message)) << r.list;
        ResetLoopSequence(slot);
    }
}

TEST_F(LanguageTest, SequenceLimitIsInclusive)
{
    int slot = 0;
    SetNextLOOPIndex(slot);
    EXPECT_EQ(Token(QStringLiteral("1-100000"), slot), QString());
    EXPECT_EQ(sequenceStore().slot(slot).LoopSeqCount, kMaxSequenceValues);
    // The check counts ranges and single values together, either way round.
    const QString tooMany = QStringLiteral("Max number of values exceeded in sequence");
    EXPECT_EQ(Token2(QStringLiteral("1-99999,5")), QString());
    EXPECT_EQ(Token2(QStringLiteral("5,1-99999")), QString());
    EXPECT_EQ(Token2(QStringLiteral("1-99999,5,6")), tooMany);
    EXPECT_EQ(Token2(QStringLiteral("5,6,1-99999")), tooMany);
    EXPECT_EQ(Token2(QStringLiteral("1-50000,1-50001")), tooMany);
}

TEST_F(LanguageTest, SlotsAreReusedBelowTheUpperBound)
{
    int first = 0, second = 0;
    SetNextLOOPIndex(first);
    Token(QStringLiteral("1"), first);
    SetNextLOOPIndex(second);
    Token(QStringLiteral("2"), second);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    EXPECT_EQ(sequenceStore().LoopSlotCount, 2);
    ResetLoopSequence(first);
    EXPECT_EQ(sequenceStore().LoopSlotCount, 1);
    int again = 0;
    SetNextLOOPIndex(again);
    EXPECT_EQ(again, 1);
    sequenceStore().slot(1).LoopSeqLine = 9;
    int found = 0;
    EXPECT_TRUE(LoopSequence(9, found));
    EXPECT_EQ(found, 1);
    EXPECT_FALSE(LoopSequence(4, found));
    EXPECT_EQ(found, 2);
}

TEST_F(LanguageTest, GetCondTakesTheConditionOrStartsASequence)
{
    struct Row { const char *line; int command; const char *result; int state; };
    const Row rows[] = {
        {"[IF A = 1 and B=2]", CmdIF, "A=1 AND B=2", 1},
        {"[IF ]", CmdIF, "Illegal format for [IF Cond] statement", 0},
        {"[CANCEL IF N>\"a b\"]", CmdCANCELIF, "N>\"a b\"", 1},
        {"[CANCEL IF]", CmdCANCELIF, "Illegal format for [CANCEL IF Cond] statement", 0},
        {"[LOOP]", CmdLOOP, "Illegal format for [LOOP Cond] statement", 0}, {"[LOOP X<>5]", CmdLOOP, "X<>5", 1},
        {"[LOOP I=3-1]", CmdLOOP, "No values in sequence for [LOOP Cond] statement", 0},
        {"[LOOP I=1,,2]", CmdLOOP, "Invalid sequence for [LOOP Cond] statement", 0},
        {"[LOOP I=1-3,7]", CmdLOOP, "I=1-3,7", 1},
    };
    for (const Row &r : rows) {
        const ActionLine action{QString::fromLatin1(r.line), r.command};
        int state = -1;
        EXPECT_EQ(GetCond(action, 1, state), QString::fromLatin1(r.result)) << r.line;
        EXPECT_EQ(state, r.state) << r.line;
    }
    // The last row started a sequence: its slot holds the values, I the first.
    int slot = 0;
    ASSERT_TRUE(LoopSequence(1, slot));
    EXPECT_EQ(sequenceStore().slot(slot).LoopSeqValues, (QList<double>{1, 2, 3, 7}));
    EXPECT_EQ(sequenceStore().LoopSlotCount, 1);
    int type = -1;
    QString name = QStringLiteral("I");
    EXPECT_EQ(GetVarVal(name, type), QStringLiteral("1"));
}

// --- check-time split ------------------------------------------------------------------

TEST(ConditionSplit, TermsOperatorsAndConnectors)
{
    const Split s = split(QStringLiteral("A=1 AND B<ALITERAL OR C<>AEMPTY"), 1);
    EXPECT_EQ(s.message, QString());
    EXPECT_EQ(s.count, 3);
    EXPECT_EQ(s.connectors, (QList<int>{1, 0}));
    EXPECT_EQ(s.lefts, (QStringList{"A", "B", "C"}));
    EXPECT_EQ(s.ops, (QStringList{"=", "<", "<>"}));
    EXPECT_EQ(s.rights, (QStringList{"1", "ALITERAL", "AEMPTY"}));
}

TEST(ConditionSplit, OperatorsAreSearchedInAFixedOrder)
{
    // "<" is looked for before "=", so "=<" gives "<" and a left side that ends in "=".
    EXPECT_EQ(GetOperator(QStringLiteral("A=<5"), 1), QStringLiteral("<"));
    EXPECT_EQ(GetOperator(QStringLiteral("A=>5"), 1), QStringLiteral(">"));
    EXPECT_EQ(GetOperator(QStringLiteral("A>=5"), 1), QStringLiteral(">="));
    EXPECT_EQ(GetLeadVar(QStringLiteral("A=<5"), 1), QStringLiteral("A="));
    EXPECT_EQ(GetTrailVar(QStringLiteral("A = 1 or B >= 22"), 2), QStringLiteral("22"));
    EXPECT_EQ(GetLeadVar(QStringLiteral("A = 1 or B >= 22"), 2), QStringLiteral("B"));
}

TEST(ConditionSplit, Messages)
{
    struct Row { const char *cond; int flag; const char *message; };
    const Row rows[] = {
        {"AB", 1, "Missing operator"}, {"A1=1", 1, "Only letters allowed in variable name"},
        {"A=B1", 1, "Only letters allowed in variable name"}, {"A=B1", 0, ""}, {"ALITERAL=B", 1, ""},
        {"X=0,1", 1, ""},       // a sequence's list is not a name
        {"X<0,1", 1, "Only letters allowed in variable name"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(split(QString::fromLatin1(r.cond), r.flag).message, QString::fromLatin1(r.message)) << r.cond;
}

TEST(ConditionSplit, ParseParamSidesMatchTheTermGetters)
{
    const char *const conds[] = {
        "A = 1 or B >= 22", "S>5 AND N<>3", "a=\"x and y\" AND b<=2", "A=<5 OR B=>6 and C<7", "A=1 AND  B=2 OR C",
        "X = MID(s 1 2) AND y = 1", "N<100000000", "J=1,2", "A=\"p q\" OR B>\"r\"",
    };
    for (const char *c : conds) {
        const QString cond = QString::fromLatin1(c);
        const Split s = split(cond, 0);
        // A message stops the split early, so the lists may end before count.
        ASSERT_LE(s.lefts.size(), s.count) << c;
        for (int i = 1; i <= s.lefts.size(); ++i)
            EXPECT_EQ(s.lefts.at(i - 1), GetLeadVar(cond, i)) << c << " term " << i;
        for (int i = 1; i <= s.ops.size(); ++i)
            EXPECT_EQ(s.ops.at(i - 1), GetOperator(cond, i)) << c << " term " << i;
        for (int i = 1; i <= s.rights.size(); ++i)
            EXPECT_EQ(s.rights.at(i - 1), GetTrailVar(cond, i)) << c << " term " << i;
    }
    const Split quoted = split(QStringLiteral("a = \"x and y\" AND b<=2"), 0);
    EXPECT_EQ(quoted.message, QStringLiteral("Only letters allowed in variable name"));
    EXPECT_EQ(quoted.count, 3);
    EXPECT_EQ(quoted.lefts, (QStringList{QStringLiteral("A"), QStringLiteral("y\"")}));
    EXPECT_EQ(quoted.rights, (QStringList{QStringLiteral("\"x")}));
    const Split open = split(QStringLiteral("A=1 AND  B=2 OR C"), 0);
    EXPECT_EQ(open.message, QStringLiteral("Missing operator"));
    EXPECT_EQ(open.lefts, (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    EXPECT_EQ(open.rights, (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
}

TEST(SpecialNames, EachFormGivesItsMessage)
{
    struct Row { const char *text; const char *message; };
    const Row rows[] = {
        {"N<100000000", ""}, {"S>5 AND N<>3", ""}, {"X&TIMER", "Cannot mix the TIMER variable with strings"},
        {"X+TIMER", ""}, {"1TIMEOUT", "Missing operator for TIMEOUT variable"}, {"A=PATH", ""}, {"APATH", ""},
        {"PATH1", "Missing operator (&) for PATH variable"}, {"PATH+1", "Missing operator (&) for PATH variable"},
        {"DATE*2", "Missing operator (&) for DATE variable"}, {"TIME-1", "Missing operator (&) for TIME variable"},
        {"SONAMARKTEXT/2", "Missing operator (&) for SONAMARKTEXT variable"}, {"X=STR(N)", ""},
        {"X+STR(N)", "Illegal format for STR()"}, {"X=STR(N", "Missing closing parenthesis in STR()"},
        {"LEN(S)&X", ""}, {"X=UCASE(1)", "Illegal format for UCASE()"},
        {"X=MID(S 1)", "Missing 3rd variable in MID()"}, {"X=MID(S 1 2)", ""},
    };
    for (const Row &r : rows)
        EXPECT_EQ(GoodSpecial(QString::fromLatin1(r.text)).toStdString(), std::string(r.message)) << r.text;
}

TEST(ConditionSplit, TooManyConnectorsGiveNoConditionParameters)
{
    QString cond = QStringLiteral("A=1");
    for (int i = 0; i < kMaxConnectors; ++i)
        cond += QStringLiteral(" OR A=1");
    QList<int> connectors;
    EXPECT_EQ(GetNumANDORs(cond, connectors), kMaxConnectors);
    cond += QStringLiteral(" AND A=1");
    EXPECT_EQ(GetNumANDORs(cond, connectors), -1);
    const Split s = split(cond, 1);
    EXPECT_EQ(s.message, QStringLiteral("No condition parameters"));
    EXPECT_EQ(s.count, 0);
}

} // namespace
