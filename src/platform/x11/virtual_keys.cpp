#include "platform/x11/virtual_keys.h"

#include <X11/keysym.h>

namespace platform::x11 {

namespace {

struct KeyPair {
    unsigned long keysym;
    int virtualKey;
};

// Keys that are not letters, digits or function keys. ORDER: any; a virtual key may
// appear with several keysyms (keypad keys with and without Num Lock).
constexpr KeyPair kPairs[] = {
    {XK_BackSpace, 8},     {XK_Tab, 9},           {XK_ISO_Left_Tab, 9},  {XK_Clear, 12},
    {XK_Return, 13},       {XK_KP_Enter, 13},     {XK_Pause, 19},        {XK_Break, 19},
    {XK_Caps_Lock, 20},    {XK_Escape, 27},       {XK_space, 32},        {XK_Prior, 33},
    {XK_Next, 34},         {XK_End, 35},          {XK_Home, 36},         {XK_Left, 37},
    {XK_Up, 38},           {XK_Right, 39},        {XK_Down, 40},         {XK_Select, 41},
    {XK_Print, 44},        {XK_Insert, 45},       {XK_Delete, 46},       {XK_Help, 47},
    {XK_Super_L, 91},      {XK_Super_R, 92},      {XK_Menu, 93},
    {XK_KP_0, 96},         {XK_KP_1, 97},         {XK_KP_2, 98},         {XK_KP_3, 99},
    {XK_KP_4, 100},        {XK_KP_5, 101},        {XK_KP_6, 102},        {XK_KP_7, 103},
    {XK_KP_8, 104},        {XK_KP_9, 105},        {XK_KP_Multiply, 106}, {XK_KP_Add, 107},
    {XK_KP_Separator, 108}, {XK_KP_Subtract, 109}, {XK_KP_Decimal, 110}, {XK_KP_Divide, 111},
    {XK_Num_Lock, 144},    {XK_Scroll_Lock, 145},
    {XK_Shift_L, 0xA0},    {XK_Shift_R, 0xA1},    {XK_Control_L, 0xA2},  {XK_Control_R, 0xA3},
    {XK_Alt_L, 0xA4},      {XK_Meta_L, 0xA4},     {XK_Alt_R, 0xA5},      {XK_ISO_Level3_Shift, 0xA5},
    {XK_Mode_switch, 0xA5},
    {XK_semicolon, 186},   {XK_equal, 187},       {XK_comma, 188},       {XK_minus, 189},
    {XK_period, 190},      {XK_slash, 191},       {XK_grave, 192},       {XK_bracketleft, 219},
    {XK_backslash, 220},   {XK_bracketright, 221}, {XK_apostrophe, 222}, {XK_less, 226},
    // Keypad keys as they read with Num Lock off.
    {XK_KP_Insert, 96},    {XK_KP_End, 97},       {XK_KP_Down, 98},      {XK_KP_Next, 99},
    {XK_KP_Left, 100},     {XK_KP_Begin, 101},    {XK_KP_Right, 102},    {XK_KP_Home, 103},
    {XK_KP_Up, 104},       {XK_KP_Prior, 105},    {XK_KP_Delete, 110},
};

constexpr int kF1 = 112;
constexpr int kFunctionKeys = 24;

} // namespace

int VirtualKeyOfKeysym(unsigned long keysym)
{
    if (keysym >= XK_a && keysym <= XK_z)
        return int(keysym - XK_a) + 'A';
    if (keysym >= XK_A && keysym <= XK_Z)
        return int(keysym - XK_A) + 'A';
    if (keysym >= XK_0 && keysym <= XK_9)
        return int(keysym - XK_0) + '0';
    if (keysym >= XK_F1 && keysym < XK_F1 + kFunctionKeys)
        return int(keysym - XK_F1) + kF1;
    for (const KeyPair &pair : kPairs)
        if (pair.keysym == keysym)
            return pair.virtualKey;
    return 0;
}

char32_t KeysymCharacter(unsigned long keysym)
{
    constexpr unsigned long kUnicodeKeysyms = 0x01000000;
    if ((keysym >= 0x20 && keysym <= 0x7e) || (keysym >= 0xa0 && keysym <= 0xff))
        return char32_t(keysym);  // Latin-1 keysyms are their own code points
    if (keysym >= kUnicodeKeysyms + 0x20 && keysym <= kUnicodeKeysyms + 0x10ffff)
        return char32_t(keysym - kUnicodeKeysyms);
    if (keysym >= XK_KP_0 && keysym <= XK_KP_9)
        return char32_t('0' + (keysym - XK_KP_0));
    switch (keysym) {
    case XK_KP_Multiply: return U'*';
    case XK_KP_Add: return U'+';
    case XK_KP_Subtract: return U'-';
    case XK_KP_Decimal: return U'.';
    case XK_KP_Divide: return U'/';
    default: return 0;
    }
}

} // namespace platform::x11
