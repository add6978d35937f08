// The statement checker on the operand forms of the statements that need no partner
// line, and on the mouse statements with the screen width and the DOWN/UP pairs.
#include "good_check_rows.h"

using namespace goodtest;

class FormTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(FormTest, GivesTheFullMessage)
{
    EXPECT_EQ(CheckAlone(GetParam().line), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    FileNamesAndStrings, FormTest,
    ::testing::Values(
        LineCase{"[LOADFILE \"/home/a b.txt\"]", ""},
        LineCase{"[SAVEFILE F]", ""},
        LineCase{"[KILLFILE \"a\" X]", "ERROR line 7 Missing quote in filename for [KILLFILE File] statement"},
        LineCase{"[PRINT X \"a\"]", "ERROR line 7 Invalid format for [PRINT File] statement"},
        LineCase{"[SAVECLIP A B]", "ERROR line 7 Invalid format for [SAVECLIP File] statement"},
        LineCase{"[MAKEMP3 F1]", "ERROR line 7 Only letters allowed in variable name for [MAKEMP3 File] statement"},
        LineCase{"[LOADCLIP \"\"]", "ERROR line 7 Empty string in variable name for [LOADCLIP File] statement"},
        LineCase{"[SENDKEYS \"abc{ENTER}\"]", ""},
        LineCase{"[SENDKEYS \"a\" b]", "ERROR line 7 Missing quote in string parameter for [SENDKEYS String] statement"},
        LineCase{"[SENDKEYS 5]", "ERROR line 7 Only letters allowed in variable name for [SENDKEYS String] statement"}));

INSTANTIATE_TEST_SUITE_P(
    WaitAndSwitches, FormTest,
    ::testing::Values(
        LineCase{"[WAIT 3600]", ""},
        LineCase{"[WAIT 0.1]", ""},
        LineCase{"[WAIT 0.05]", "ERROR line 7 Invalid time (0.1-3600 secs) for [WAIT Sec] statement"},
        LineCase{"[WAIT 3601]", "ERROR line 7 Invalid time (0.1-3600 secs) for [WAIT Sec] statement"},
        LineCase{"[WAIT 0]", "ERROR line 7 Invalid time (0.1-3600 secs) for [WAIT Sec] statement"},
        LineCase{"[WAIT -5]", "ERROR line 7 Invalid format for [WAIT Sec] statement"},
        LineCase{"[WAIT 1,5]", "ERROR line 7 Invalid format for [WAIT Sec] statement"},
        LineCase{"[WAIT 1 2]", "ERROR line 7 Invalid format for [WAIT Sec] statement"},
        LineCase{"[WAIT Delay]", ""},
        LineCase{"[WAIT \"2030-01-31 10:00\"]", ""},          // a date literal; its "-" are quoted
        LineCase{"[WAIT X2]", "ERROR line 7 Only letters allowed in variable name for [WAIT Sec] statement"},
        LineCase{"[CLIP ON]", ""},
        LineCase{"[clip off]", ""},
        LineCase{"[CLIP MAYBE]", "ERROR line 7 Invalid format for [CLIP ON/OFF] statement"},
        LineCase{"[SPELLCHECKMODE 1]", "ERROR line 7 Invalid format for [SPELLCHECKMODE ON/OFF] statement"},
        LineCase{"[SPELLCHECK]", ""},
        LineCase{"[X [LISTHOTKEYS]", "ERROR line 7 Invalid format for [LISTHOTKEYS] statement"},
        LineCase{"[PRINTSELECTED] ]", "ERROR line 7 Invalid format for [PRINTSELECTED] statement"}));

INSTANTIATE_TEST_SUITE_P(
    Clipboard, FormTest,
    ::testing::Values(
        LineCase{"[GETCLIP X]", ""},
        LineCase{"[GETCLIP \"x\"]", "ERROR line 7 Quotes not allowed in variable for [GETCLIP Var] statement"},
        LineCase{"[GETCLIP X Y]", "ERROR line 7 Invalid format for [GETCLIP Var] statement"},
        LineCase{"[GETCLIP X9]", "ERROR line 7 Only letters allowed in variable name for [GETCLIP Var] statement"},
        LineCase{"[KEYLOG \"k\"]", "ERROR line 7 Quotes not allowed in variable for [KEYLOG Var] statement"},
        LineCase{"[SETCLIP \"\"]", ""},                       // the empty literal clears the clipboard
        LineCase{"[SETCLIP X]", ""},
        LineCase{"[SETCLIP \"a\"b]", "ERROR line 7 Quote mismatch in right variable for [SETCLIP String] statement"},
        LineCase{"[GETMULTICLIP 3 X]", ""},
        LineCase{"[GETMULTICLIP N X]", ""},
        LineCase{"[GETMULTICLIP 6 X]", "ERROR line 7 Invalid clip ID (1-5) for [GETMULTICLIP n Var] statement"},
        LineCase{"[GETMULTICLIP N1 X]",
                 "ERROR line 7 Only letters allowed in clip variable name for [GETMULTICLIP n Var] statement"},
        LineCase{"[GETMULTICLIP 2 \"x\"]",
                 "ERROR line 7 Quotes not allowed in right variable for [GETMULTICLIP n Var] statement"},
        LineCase{"[GETMULTICLIP 2]", "ERROR line 7 Invalid format for [GETMULTICLIP n Var] statement"},
        LineCase{"[SETMULTICLIP 5 \"text\"]", ""},
        LineCase{"[SETMULTICLIP 0 X]",
                 "ERROR line 7 Invalid clip ID (1-5) in variable for [SETMULTICLIP n String] statement"},
        LineCase{"[SETMULTICLIP 1 \"a\" b]",
                 "ERROR line 7 Quote mismatch in right variable for [SETMULTICLIP n String] statement"}));

INSTANTIATE_TEST_SUITE_P(
    CommandsAndDialogs, FormTest,
    ::testing::Values(
        LineCase{"[COMMAND \"ls -l\"]", ""},
        LineCase{"[COMMAND \"ls\"x]", "ERROR line 7 Quote mismatch in right variable for [COMMAND String] statement"},
        LineCase{"[USERINPUT \"Name?\" N]", ""},
        LineCase{"[USERINPUT \"a\"b N]",
                 "ERROR line 7 Quote mismatch in prompt variable for [USERINPUT Title Var] statement"},
        LineCase{"[USERINPUT 5 N]", "ERROR line 7 Invalid format in prompt variable for [USERINPUT Title Var] statement"},
        LineCase{"[USERINPUT \"a\" N2]", "ERROR line 7 Invalid format in right variable for [USERINPUT Title Var] statement"},
        LineCase{"[USERINPUT \"a\"]", "ERROR line 7 Invalid format for [USERINPUT Title Var] statement"},
        LineCase{"[YESNOCANCEL \"Go on?\" A]", ""},
        LineCase{"[YESNOCANCEL \"\" A]",
                 "ERROR line 7 Invalid format in prompt variable for [YESNOCANCEL Question Ans] statement"},
        LineCase{"[YESNOCANCEL Q \"a\"]",
                 "ERROR line 7 Strings not allowed in variable name for [YESNOCANCEL Question Ans] statement"},
        LineCase{"[SETFOCUS \"firefox\" A]", ""},
        LineCase{"[SETFOCUS 3 A]", "ERROR line 7 Invalid format in 1st variable for [SETFOCUS Classname Ans] statement"},
        LineCase{"[SETFOCUS C]", "ERROR line 7 Invalid format for answer variable in [SETFOCUS Classname Ans] statement"},
        LineCase{"[WEBSOURCE \"http://x.org/\" S]", ""},
        LineCase{"[WEBSOURCE \"http://x.org/\"]",
                 "ERROR line 7 Invalid format for source variable in [WEBSOURCE URL Src] statement"}));

INSTANTIATE_TEST_SUITE_P(
    FilesAndStrings, FormTest,
    ::testing::Values(
        LineCase{"[PATHEXISTS \"/tmp\" A]", ""},
        LineCase{"[PATHEXISTS \"/tmp\"x A]", "ERROR line 7 Quote mismatch in 1st variable for [PATHEXISTS File Ans] statement"},
        LineCase{"[PATHEXISTS 12 A]", "ERROR line 7 Invalid format in 1st variable for [PATHEXISTS File Ans] statement"},
        LineCase{"[PATHEXISTS \"/tmp\"]",
                 "ERROR line 7 Invalid format for answer variable in [PATHEXISTS File Ans] statement"},
        LineCase{"[PATHEXISTS F A1]", "ERROR line 7 Only letters allowed in variable name for [PATHEXISTS File Ans] statement"},
        LineCase{"[PATHEXISTS F A B]", "ERROR line 7 Invalid format for [PATHEXISTS File Ans] statement"},
        LineCase{"[SHORTPATH \"/a b\" S]", ""},
        LineCase{"[SHORTPATH \"\" S]", "ERROR line 7 Invalid format in 1st variable for [SHORTPATH File SFile] statement"},
        LineCase{"[COPYFILE \"a\" \"b\"]", ""},
        LineCase{"[COPYFILE \"a\"x \"b\"]", "ERROR line 7 Quote mismatch in 1st file for [COPYFILE FileS FileD] statement"},
        LineCase{"[COPYFILE 1 B]", "ERROR line 7 Invalid format in 1st file for [COPYFILE FileS FileD] statement"},
        LineCase{"[COPYFILE A]", "ERROR line 7 Invalid format for 2nd variable in [COPYFILE FileS FileD] statement"},
        LineCase{"[COPYFILE A \"b\"c]", "ERROR line 7 Quote mismatch in 2nd file for [COPYFILE FileS FileD] statement"},
        LineCase{"[COPYFILE A 2]", "ERROR line 7 Invalid format in 2nd file for [COPYFILE FileS FileD] statement"},
        LineCase{"[FINDFILES \"\" S]", ""},                   // an empty start path is allowed
        LineCase{"[FINDFILES \"/h\"x S]",
                 "ERROR line 7 Quote mismatch in StartPath for [FINDFILES StartPath Selection] statement"},
        LineCase{"[FINDFILES 1 S]", "ERROR line 7 Invalid format in StartPath for [FINDFILES StartPath Selection] statement"},
        LineCase{"[FINDFILES P]",
                 "ERROR line 7 Invalid format for Selection variable in [FINDFILES StartPath Selection] statement"},
        LineCase{"[FINDFILES P \"s\"]",
                 "ERROR line 7 No quotes allowed for Selection variable in [FINDFILES StartPath Selection] statement"},
        LineCase{"[DATEDIFF \"2024-01-01\" TODAY D]", ""},
        LineCase{"[DATEDIFF \"a\"x B D]", "ERROR line 7 Quote mismatch in DateFrom for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF 1 B D]", "ERROR line 7 Invalid format in DateFrom for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF A]", "ERROR line 7 Invalid format for DateTo variable in [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF A \"b\"c D]", "ERROR line 7 Quote mismatch in DateTo for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF A 2 D]", "ERROR line 7 Invalid format in DateTo for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF A B D1]",
                 "ERROR line 7 Only letters allowed in Diff variable name for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[DATEDIFF A B]", "ERROR line 7 Invalid format for [DATEDIFF DateFrom DateTo Diff] statement"},
        LineCase{"[FINDSTRING S \"x\" N]", ""},
        LineCase{"[FINDSTRING \"a\"b S N]",
                 "ERROR line 7 Quote mismatch in 1st variable for [FINDSTRING String Substring CharNum] statement"},
        LineCase{"[FINDSTRING 1 S N]",
                 "ERROR line 7 Invalid format in 1st variable for [FINDSTRING String Substring CharNum] statement"},
        LineCase{"[FINDSTRING S \"x\"y N]",
                 "ERROR line 7 Quote mismatch in 2nd variable for [FINDSTRING String Substring CharNum] statement"},
        LineCase{"[FINDSTRING S 2 N]",
                 "ERROR line 7 Invalid format in 2nd variable for [FINDSTRING String Substring CharNum] statement"},
        LineCase{"[FINDSTRING S T \"n\"]",
                 "ERROR line 7 Quote not allowed in CharNum variable for [FINDSTRING String Substring CharNum] statement"},
        LineCase{"[FINDSTRING S T N1]",
                 "ERROR line 7 Invalid format in CharNum variable for [FINDSTRING String Substring CharNum] statement"}));

INSTANTIATE_TEST_SUITE_P(
    ClickZone, FormTest,
    ::testing::Values(
        LineCase{"[CLICKZONE 10 10 100 100 TRUE]", ""},
        LineCase{"[CLICKZONE A B C D FALSE]", ""},
        LineCase{"[CLICKZONE 1 2 3 4 CX CY FALSE]", ""},    // two names take the click's position
        LineCase{"[CLICKZONE 10 -5 100 100 TRUE]", ""},     // Ymin has no range test
        LineCase{"[CLICKZONE 10 10 100 1900 TRUE]", ""},    // Y is held to the width, not the height
        LineCase{"[CLICKZONE 10 10 100 100 YES]",
                 "ERROR line 7 The TRAP parameter must be TRUE or FALSE for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 10 10 100 TRUE]", "ERROR line 7 Invalid format for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 1 2 3 4 CX TRUE]", "ERROR line 7 Invalid format for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 2000 10 2100 100 TRUE]",
                 "ERROR line 7 Invalid Xmin position for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 10 10 3000 100 TRUE]",
                 "ERROR line 7 Invalid Xmax position for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 10 10 100 1950 TRUE]",
                 "ERROR line 7 Invalid Ymax position for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE A1 B C D TRUE]",
                 "ERROR line 7 Only letters allowed in Xmin position variable name for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 100 10 100 50 TRUE]",
                 "ERROR line 7 Xmax position must be greater than Xmin pixels for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"},
        LineCase{"[CLICKZONE 10 50 100 50 TRUE]",
                 "ERROR line 7 Ymax position must be greater than Ymin pixels for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement"}));

// --- [HOTKEY n] against the hotkeys table ------------------------------------------------------

class HotkeyTest : public ProvidersReset, public ::testing::WithParamInterface<LineCase>
{
protected:
    void SetUp() override
    {
        macro::SetHotkeyLookup([] {
            return QList<macro::HotkeyName>{{QStringLiteral("^%K"), QStringLiteral("Greeting")},
                                            {QStringLiteral("+{F2}"), QStringLiteral("Open mail")}};
        });
    }
};

TEST_P(HotkeyTest, ComparesWithTheInstalledTable)
{
    EXPECT_EQ(CheckAlone(GetParam().line), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    TwoMacros, HotkeyTest,
    ::testing::Values(
        LineCase{"[HOTKEY \"greeting\"]", ""},               // the name in any case
        LineCase{"[HOTKEY \"Open Mail\"]", ""},
        LineCase{"[HOTKEY \"^%k\"]", ""},                    // or the keys
        LineCase{"[HOTKEY \"Nothing\"]", "ERROR line 7 Macro not found for [HOTKEY n] statement"},
        LineCase{"[HOTKEY \"Greeting \"]", "ERROR line 7 Macro not found for [HOTKEY n] statement"},
        LineCase{"[HOTKEY \"Greeting\"x]", "ERROR line 7 Missing quote for [HOTKEY n] statement"},
        LineCase{"[HOTKEY 2]", ""},
        LineCase{"[HOTKEY 3]", "ERROR line 7 Invalid hotkey index for [HOTKEY n] statement"},
        LineCase{"[HOTKEY 0]", "ERROR line 7 Invalid hotkey index for [HOTKEY n] statement"},
        LineCase{"[HOTKEY N]", ""},
        LineCase{"[HOTKEY N1]", "ERROR line 7 Only letters allowed in variable name for [HOTKEY n] statement."},
        LineCase{"[HOTKEY 1 2]", "ERROR line 7 Invalid format for [HOTKEY n] statement"}));

TEST_F(ProvidersReset, WithNoHotkeyTableEveryMacroCallIsReported)
{
    EXPECT_EQ(CheckAlone("[HOTKEY 1]"), QStringLiteral("ERROR line 7 Invalid hotkey index for [HOTKEY n] statement"));
    EXPECT_EQ(CheckAlone("[HOTKEY \"Greeting\"]"), QStringLiteral("ERROR line 7 Macro not found for [HOTKEY n] statement"));
}

// --- mouse statements -----------------------------------------------------------------------

class MouseTest : public ProvidersReset, public ::testing::WithParamInterface<MacroCase> {};

TEST_P(MouseTest, GivesTheFullMessageOnTheDefaultScreen)
{
    EXPECT_EQ(CheckInMacro(GetParam()), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    PositionsAndPairs, MouseTest,
    ::testing::Values(
        MacroCase{{"[LEFTDOWN 10 20]", "[LEFTUP 30 40]"}, 1, ""},
        MacroCase{{"[LEFTDOWN 10 20]", "[LEFTUP 30 40]"}, 2, ""},
        MacroCase{{"[RIGHTDOWN X Y]", "x", "[RIGHTUP X Y]"}, 3, ""},
        MacroCase{{"[LEFTDOWN 1920 0]", "[LEFTUP 1 1]"}, 1, ""},   // the width itself is on the screen
        MacroCase{{"[LEFTDOWN 1921 5]", "[LEFTUP 1 1]"}, 1, "ERROR line 1 Invalid X position for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTDOWN -1 5]", "[LEFTUP 1 1]"}, 1, "ERROR line 1 Invalid X position for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTDOWN 10 2000]", "[LEFTUP 1 1]"}, 1, "ERROR line 1 Invalid Y position for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTDOWN 1 1]", "[RIGHTUP 5 -3]"}, 2, "ERROR line 2 Invalid Y position for [RIGHTUP xp yp] statement"},
        MacroCase{{"[LEFTDOWN X1 5]", "[LEFTUP 1 1]"}, 1,
                  "ERROR line 1 Only letters allowed in X position variable name for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTDOWN 5 \"y\"]", "[LEFTUP 1 1]"}, 1,
                  "ERROR line 1 Strings not allowed in Y position variable name for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTDOWN 1]", "[LEFTUP 1 1]"}, 1, "ERROR line 1 Invalid format for [LEFTDOWN xp yp] statement"},
        MacroCase{{"[LEFTUP 1 1]", "[LEFTDOWN 1 1]"}, 2, "ERROR line 2 Wrong [DOWN/UP] order for [LEFTDOWN x y] statement"},
        MacroCase{{"[LEFTDOWN 1 1]", "x"}, 1, "ERROR line 1 Missing matching [LEFTUP x y] statement"},
        MacroCase{{"[LEFTUP 1 1]", "[LEFTDOWN 1 1]"}, 1, "ERROR line 1 Wrong [DOWN/UP] order for [LEFTUP x y] statement"},
        MacroCase{{"x", "[LEFTUP 1 1]"}, 2, "ERROR line 2 Missing matching [LEFTDOWN x y] statement"},
        MacroCase{{"[RIGHTDOWN 1 1]", "[LEFTUP 1 1]"}, 1, "ERROR line 1 Missing matching [RIGHTUP x y] statement"},
        MacroCase{{"[RIGHTUP 1 1]", "[RIGHTDOWN 1 1]"}, 2, "ERROR line 2 Wrong [DOWN/UP] order for [RIGHTDOWN x y] statement"},
        MacroCase{{"[RIGHTUP 1 1]", "[RIGHTDOWN 1 1]"}, 1, "ERROR line 1 Wrong [DOWN/UP] order for [RIGHTUP x y] statement"},
        MacroCase{{"[LEFTDOWN 1 1]", "[RIGHTUP 1 1]"}, 2, "ERROR line 2 Missing matching [RIGHTDOWN x y] statement"},
        // A pair need only stand somewhere on the right side of each other.
        MacroCase{{"[LEFTDOWN 1 1]", "[LEFTDOWN 2 2]", "[LEFTUP 3 3]"}, 1, ""}));

TEST_F(ProvidersReset, TheScreenWidthLimitsBothCoordinates)
{
    const MacroCase tall{{"[LEFTDOWN 10 2000]", "[LEFTUP 1 1]"}, 1, ""};
    EXPECT_EQ(CheckInMacro(tall), QStringLiteral("ERROR line 1 Invalid Y position for [LEFTDOWN xp yp] statement"));
    macro::SetScreenWidthSource([] { return 2560; });  // a 2560 x 1080 screen
    EXPECT_EQ(CheckInMacro(tall), QString());
    EXPECT_EQ(CheckAlone("[CLICKZONE 10 10 100 2500 TRUE]"), QString());
    EXPECT_EQ(CheckInMacro({{"[LEFTDOWN 2561 1]", "[LEFTUP 1 1]"}, 1, ""}),
              QStringLiteral("ERROR line 1 Invalid X position for [LEFTDOWN xp yp] statement"));
}

TEST_F(ProvidersReset, AScreenWidthSourceWithNoScreenFallsBackToTheDefault)
{
    EXPECT_EQ(macro::CheckScreenWidth(), 1920);
    macro::SetScreenWidthSource([] { return 0; });
    EXPECT_EQ(macro::CheckScreenWidth(), 1920);
    macro::SetScreenWidthSource([] { return 1280; });
    EXPECT_EQ(macro::CheckScreenWidth(), 1280);
}
