// [HOTKEY n] lines replaced in place by the macros they name.
#include "engine_fixture.h"

#include "engine/composition.h"
#include "engine/interpreter.h"

using namespace engine;

TEST_F(EngineTest, NestedMacrosBecomeOneFlatList)
{
    addMacro(QStringLiteral("Outer"), QStringLiteral("o1\r\n[HOTKEY 2]\r\no2"));
    addMacro(QStringLiteral("Middle"), QStringLiteral("# note\r\nm1\r\n[hotkey \"third\"]"));
    addMacro(QStringLiteral("Third"), QStringLiteral("t1\r\n  [endif]"));
    ASSERT_EQ(ParseActions(1), QString());
    ASSERT_TRUE(IsHOTKEYcommand());
    ASSERT_EQ(InsertHOTKEYcode(), QString());
    EXPECT_EQ(actionTexts(), (QStringList{QStringLiteral("o1"), QStringLiteral("m1"), QStringLiteral("t1"),
                                          QStringLiteral("[ENDIF]"), QStringLiteral("o2")}));
    EXPECT_EQ(runState().Actions[3].Command, 36);
}

TEST_F(EngineTest, ReportOfAnExpandedMacroListsTheFlatList)
{
    addMacro(QStringLiteral("Outer"), QStringLiteral("[HOTKEY 2]\r\n[GETMULTICLIP 6 X]"));
    addMacro(QStringLiteral("Inner"), QStringLiteral("a\r\nb"));
    EXPECT_EQ(RunMacro(1), QString());
    EXPECT_TRUE(fakes.textWindow.text.contains(QStringLiteral("\r\n1:a\r\n2:b\r\n3:[GETMULTICLIP 6 X]\r\n")));
    EXPECT_TRUE(fakes.textWindow.text.contains(QStringLiteral("1) Line 3 ")));
}

TEST_F(EngineTest, QuotedNamesMatchKeysOrNameFirstByNumber)
{
    addMacro(QStringLiteral("Caller"), QStringLiteral("[HOTKEY \"^%k\"]"));
    addMacro(QStringLiteral("ByKeys"), QStringLiteral("from keys"), QStringLiteral("^%K"));
    addMacro(QStringLiteral("^%K"), QStringLiteral("from name"));
    ASSERT_EQ(ParseActions(1), QString());
    ASSERT_EQ(InsertHOTKEYcode(), QString());
    EXPECT_EQ(actionTexts(), QStringList{QStringLiteral("from keys")});
}

TEST_F(EngineTest, SelfInclusionHitsTheScanLimit)
{
    const int n = addMacro(QStringLiteral("Loop"), QStringLiteral("[HOTKEY 1]\r\nx\r\ny"));
    EXPECT_EQ(RunMacro(n), QStringLiteral("FATAL ERROR Too many lines of macro code"));
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
    EXPECT_FALSE(runState().MacroRunning);
}

TEST_F(EngineTest, MacrosIncludingEachOtherHitTheScanLimitBeforeLaterLines)
{
    // 1 -> 2 -> 3 -> 2 ...: the unknown macro behind the first inclusion is never reached.
    const int n = addMacro(QStringLiteral("Main"), QStringLiteral("a\r\n[HOTKEY 2]\r\n[HOTKEY 99]"));
    addMacro(QStringLiteral("Two"), QStringLiteral("b\r\n[HOTKEY \"three\"]"));
    addMacro(QStringLiteral("Three"), QStringLiteral("[HOTKEY 2]\r\nc"));
    EXPECT_EQ(RunMacro(n), QStringLiteral("FATAL ERROR Too many lines of macro code"));
    EXPECT_TRUE(fakes.keys.sent.isEmpty());
}

TEST_F(EngineTest, AMacroIncludedManyTimesOverIsNoLoop)
{
    addMacro(QStringLiteral("Main"), QStringLiteral("[HOTKEY 2]\r\n[HOTKEY 2]\r\n[HOTKEY 3]"));
    addMacro(QStringLiteral("Two"), QStringLiteral("[HOTKEY 3]\r\nt\r\n[HOTKEY 3]"));
    addMacro(QStringLiteral("Three"), QStringLiteral("x"));
    ASSERT_EQ(ParseActions(1), QString());
    ASSERT_EQ(InsertHOTKEYcode(), QString());
    EXPECT_EQ(actionTexts(), (QStringList{"x", "t", "x", "x", "t", "x", "x"}));
}

TEST_F(EngineTest, CompositionMessagesNameTheLine)
{
    addMacro(QStringLiteral("Main"), QStringLiteral("# c\r\na\r\n[HOTKEY 9]"));
    addMacro(QStringLiteral("Empty"), QString());
    addMacro(QStringLiteral("Notes"), QStringLiteral("# only a comment"));
    addMacro(QStringLiteral("UsesEmpty"), QStringLiteral("a\r\n[HOTKEY 2]"));
    addMacro(QStringLiteral("UsesNotes"), QStringLiteral("[HOTKEY \"notes\"]"));
    addMacro(QStringLiteral("Unknown"), QStringLiteral("[HOTKEY \"nobody\"]"));
    EXPECT_EQ(RunMacro(1), QStringLiteral("FATAL ERROR Cannot find macro referenced in line 2"));
    EXPECT_EQ(RunMacro(4), QStringLiteral("FATAL ERROR No macro actions to parse referenced in line 2"));
    EXPECT_EQ(RunMacro(5), QStringLiteral("FATAL ERROR No macro lines to insert. referenced in line 1"));
    EXPECT_EQ(RunMacro(6), QStringLiteral("FATAL ERROR Cannot find macro referenced in line 1"));
    EXPECT_EQ(fakes.textWindow.shows, 0);
}

TEST_F(EngineTest, DisabledMacrosCanBeIncluded)
{
    addMacro(QStringLiteral("Caller"), QStringLiteral("[HOTKEY 2]"));
    addMacro(QStringLiteral("Off"), QStringLiteral("typed"));
    hotkeys::table().at(2).Active = false;
    EXPECT_EQ(RunMacro(1), QString());
    EXPECT_EQ(fakes.keys.sent, QStringList{QStringLiteral("SENDKEYS typed")});
}

TEST_F(EngineTest, NumbersBeyondTheTableNameNoMacro)
{
    for (const char *number : {"99999999999", "2147483648", "4294967297", "1e300", "-1", "-2147483649"}) {
        hotkeys::table().reset();
        addMacro(QStringLiteral("Caller"), QStringLiteral("[HOTKEY %1]").arg(QLatin1String(number)));
        EXPECT_EQ(RunMacro(1), QStringLiteral("FATAL ERROR Cannot find macro referenced in line 1")) << number;
    }
}
