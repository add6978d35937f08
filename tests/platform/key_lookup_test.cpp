// Which key and level modifiers type a character, from what each key produces.
#include "platform/x11/key_lookup.h"

#include <gtest/gtest.h>
// After gtest: X.h defines None.
#include <X11/keysym.h>

using namespace platform::x11;

namespace {

const std::vector<KeyProduct> kProducts = {
    {10, 0, XK_1},         {10, kLevelShift, XK_exclam},
    {26, 0, XK_e},         {26, kLevelShift, XK_E},        {26, kLevelThird, XK_EuroSign},
    {36, 0, XK_Return},    {48, 0, XK_dead_acute},         {48, kLevelShift, XK_dead_grave},
    {38, 0, XK_a},         {38, kLevelShift, XK_A},
    {87, 0, XK_KP_1},      {87, kLevelShift, XK_KP_End},
    {90, 0, XK_KP_0},
    {120, kLevelShift, XK_a},  // a second "a", worse: it needs Shift
    {121, 0, XK_ssharp},   {122, 0, XK_ssharp},            // two equal keys: the lower keycode
    {130, kLevelShift | kLevelThird, XK_Greek_OMEGA},
};

} // namespace

TEST(KeyLookup, ThePlainestKeyTypesACharacter)
{
    const KeyLookup lookup(kProducts);
    struct Row {
        char32_t c;
        KeyStroke stroke;
    };
    const Row rows[] = {
        {U'a', {38, 0}},
        {U'A', {38, kLevelShift}},
        {U'1', {10, 0}},             // main row before keypad
        {U'0', {90, 0}},             // keypad when nothing else has it
        {U'!', {10, kLevelShift}},
        {U'\u20ac', {26, kLevelThird}},
        {U'\u00df', {121, 0}},
        {U'\u03a9', {130, kLevelShift | kLevelThird}},
    };
    for (const Row &row : rows) {
        const auto stroke = lookup.forCharacter(row.c);
        ASSERT_TRUE(stroke.has_value()) << uint(row.c);
        EXPECT_EQ(*stroke, row.stroke) << uint(row.c);
    }
}

TEST(KeyLookup, DeadAndControlKeysTypeNoCharacterButCanBePressed)
{
    const KeyLookup lookup(kProducts);
    EXPECT_FALSE(lookup.forCharacter(U'\u00b4').has_value());  // acute accent: only a dead key
    EXPECT_FALSE(lookup.forCharacter(U'`').has_value());
    EXPECT_FALSE(lookup.forCharacter(U'\r').has_value());
    EXPECT_FALSE(lookup.forCharacter(U'\u00e9').has_value());  // not on this map at all
    EXPECT_EQ(lookup.forKeysym(XK_Return), (KeyStroke{36, 0}));
    EXPECT_EQ(lookup.forKeysym(XK_dead_grave), (KeyStroke{48, kLevelShift}));
    EXPECT_EQ(lookup.forKeysym(XK_KP_End), (KeyStroke{87, kLevelShift}));
    EXPECT_FALSE(lookup.forKeysym(XK_Help).has_value());
}

TEST(KeyLookup, KeysymsToLendForCharacters)
{
    struct Row {
        char32_t c;
        unsigned long keysym;
    };
    const Row rows[] = {
        {U'a', XK_a},
        {U'\u00e9', XK_eacute},
        {U'\u20ac', XK_EuroSign},           // the legacy keysym, as maps carry it
        {U'\u03a9', XK_Greek_OMEGA},
        {U'\u65e5', 0x10065e5},             // Unicode keysyms for the rest
        {U'\U0001F600', 0x101f600},
        {U'\n', 0},
        {char32_t(0xd800), 0},
    };
    for (const Row &row : rows)
        EXPECT_EQ(KeysymForCharacter(row.c), row.keysym) << uint(row.c);
}
