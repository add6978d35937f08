// Hotkey notation (LitString) and the check of a typed hotkey (GoodHotkey).
#include "hooks_fixture.h"

#include "hotkeys/good_hotkey.h"
#include "shell/on_top_message.h"
#include "hotkeys/key_names.h"

using namespace hotkeys;

TEST(KeyNames, PrefixesAreCtrlAltShiftFromTheLeft)
{
    EXPECT_EQ(KeyWithPrefixes(65, true, true, false), QStringLiteral("^%65"));
    EXPECT_EQ(KeyWithPrefixes(65, true, true, true), QStringLiteral("^%+65"));
    EXPECT_EQ(KeyWithPrefixes(13, false, false, true), QStringLiteral("+13"));
}

TEST_F(HooksTest, LitStringNamesSpecialKeysAndPrintsTheRest)
{
    const struct {
        const char *code;
        bool shift;
        const char *text;
    } rows[] = {
        {"0", false, "{?}"},        {"^8", false, "^{BACKSPACE}"}, {"9", false, "{TAB}"},
        {"13", false, "{ENTER}"},   {"19", false, "{BREAK}"},      {"%27", false, "%{ESC}"},
        {"32", false, " "},         {"33", false, "{PGUP}"},       {"34", false, "{PGDN}"},
        {"35", false, "{END}"},     {"36", false, "{HOME}"},       {"37", false, "{LEFT}"},
        {"38", false, "{UP}"},      {"39", false, "{RIGHT}"},      {"40", false, "{DOWN}"},
        {"45", false, "{INSERT}"},  {"46", false, "{DELETE}"},     {"^53", false, "^{%}"},
        {"54", true, "{^}"},        {"96", false, "0"},            {"105", false, "9"},
        {"106", false, "*"},        {"107", false, "{+}"},         {"109", false, "-"},
        {"110", false, "."},        {"111", false, "/"},           {"112", false, "{F1}"},
        {"^%+123", true, "^%+{F12}"}, {"144", false, "{NUMLOCK}"}, {"145", false, "{SCROLLLOCK}"},
        {"160", false, "+"},        {"^%65", false, "^%a"},        {"+65", true, "+A"},
        {"+49", true, "+!"},        {"49", false, "1"},            {"20", false, ""},
        {"^", false, ""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(LitString(QLatin1String(row.code), row.shift), QLatin1String(row.text)) << row.code;
}

TEST_F(HooksTest, GetHotkeyIndexIgnoresCaseAndNeedsTheSameModifiers)
{
    addMacro(QStringLiteral("+{F5}"));
    addMacro(QStringLiteral("^%+A"));
    EXPECT_EQ(GetHotkeyIndex(false, false, true, 116), 1);
    EXPECT_EQ(GetHotkeyIndex(false, false, false, 116), 0);
    EXPECT_EQ(GetHotkeyIndex(true, true, true, 'A'), 2);
    EXPECT_EQ(GetHotkeyIndex(true, true, false, 'A'), 0);
    EXPECT_EQ(GetHotkeyIndex(true, true, true, 20), 0);  // a key with no notation
}

namespace {
struct GoodRow {
    const char *typed;
    const char *message;  // "" when accepted
    const char *normalised;
};
} // namespace

TEST_F(HooksTest, GoodHotkeyMessages)
{
    const GoodRow rows[] = {
        {"", "Your hotkey is not valid.", ""},
        {"^", "Your hotkey is not valid.", ""},
        {"+", "Your hotkey is not valid.", ""},
        {"^C", "You cannot redefine the clipboard hotkeys.", ""},
        {"^v", "You cannot redefine the clipboard hotkeys.", ""},
        {"^Z", "You cannot redefine the clipboard hotkeys.", ""},
        {"^{F1}{F2}", "Your hotkey is not not valid.", ""},
        {"^{F1", "Your hotkey is not not valid.", ""},
        {"^^A", "Your hotkey has too many control keys.", ""},
        {"%^%A", "Your hotkey has too many alt keys.", ""},
        {"++A", "Your hotkey has too many shift keys.", ""},
        {"^AB", "Your hotkey has too many keys.", ""},
        {"^{F99}", "Your non-printable {KEY} is invalid.", ""},
        {"^%", "Your hotkey is invalid.", ""},
        {"+^A", "", "^+A"},
        {"+%^k", "", "^%+k"},
        {"^{F5}", "", "^{F5}"},
        {"%{^}", "", "%{^}"},
        {"^{+}", "", "^{+}"},
    };
    for (const GoodRow &row : rows) {
        fakes.messages.shown.clear();
        QString text = QLatin1String(row.typed);
        const bool good = GoodHotkey(text);
        if (*row.message) {
            EXPECT_FALSE(good) << row.typed;
            ASSERT_EQ(fakes.messages.shown.size(), 1) << row.typed;
            EXPECT_EQ(fakes.messages.shown[0].text, QLatin1String(row.message) + QStringLiteral("\r\n")) << row.typed;
            EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("Hotkeys"));
            EXPECT_EQ(text, QLatin1String(row.typed));
        } else {
            EXPECT_TRUE(good) << row.typed;
            EXPECT_TRUE(fakes.messages.shown.isEmpty()) << row.typed;
            EXPECT_EQ(text, QLatin1String(row.normalised));
        }
    }
}

TEST_F(HooksTest, ASingleKeyHotkeyIsAskedAbout)
{
    for (const char *typed : {"{F5}", "q"}) {
        fakes.messages.shown.clear();
        fakes.messages.answers = {shell::MsgNo};
        QString text = QLatin1String(typed);
        EXPECT_FALSE(GoodHotkey(text)) << typed;
        ASSERT_EQ(fakes.messages.shown.size(), 1);
        EXPECT_EQ(fakes.messages.shown[0].type, 1);
        EXPECT_EQ(fakes.messages.shown[0].text,
                  "WARNING A single character hotkey will disable this key for all applications. Continue?\r\n");
        fakes.messages.answers = {shell::MsgYes};
        EXPECT_TRUE(GoodHotkey(text)) << typed;
    }
}
