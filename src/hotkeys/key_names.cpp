#include "hotkeys/key_names.h"

#include "hotkeys/hotkeys_table.h"
#include "platform/services.h"

namespace hotkeys {

namespace {

struct KeyName {
    int key;
    const char *text;
};

// Keys whose notation is a name rather than the character they print.
constexpr KeyName kKeyNames[] = {
    {0, "{?}"},        {8, "{BACKSPACE}"}, {9, "{TAB}"},      {13, "{ENTER}"},  {19, "{BREAK}"},
    {27, "{ESC}"},     {32, " "},          {33, "{PGUP}"},    {34, "{PGDN}"},   {35, "{END}"},
    {36, "{HOME}"},    {37, "{LEFT}"},     {38, "{UP}"},      {39, "{RIGHT}"},  {40, "{DOWN}"},
    {45, "{INSERT}"},  {46, "{DELETE}"},   {53, "{%}"},       {54, "{^}"},      {106, "*"},
    {107, "{+}"},      {109, "-"},         {110, "."},        {111, "/"},       {144, "{NUMLOCK}"},
    {145, "{SCROLLLOCK}"}, {160, "+"},
};
constexpr int kNumPad0 = 96, kNumPad9 = 105;
constexpr int kF1 = 112, kF12 = 123;

QString NamedKey(int key)
{
    for (const KeyName &name : kKeyNames)
        if (name.key == key)
            return QLatin1String(name.text);
    if (key >= kNumPad0 && key <= kNumPad9)
        return QString(QLatin1Char(char('0' + key - kNumPad0)));
    if (key >= kF1 && key <= kF12)
        return QStringLiteral("{F%1}").arg(key - kF1 + 1);
    return {};
}

bool IsPrefix(QChar c) { return c == QLatin1Char('^') || c == QLatin1Char('%') || c == QLatin1Char('+'); }

} // namespace

QString KeyWithPrefixes(int virtualKey, bool ctrl, bool alt, bool shift)
{
    QString text = QString::number(virtualKey);
    if (shift)
        text.prepend(QLatin1Char('+'));
    if (alt)
        text.prepend(QLatin1Char('%'));
    if (ctrl)
        text.prepend(QLatin1Char('^'));
    return text;
}

QString Convert2ASCII(int virtualKey, bool shift)
{
    if (platform::InputHooks *hooks = platform::services().inputHooks)
        return hooks->keyText(virtualKey, shift);
    // No keyboard layout to ask: letters and digits, as on any layout.
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return QString(QLatin1Char(char(shift ? virtualKey : virtualKey + 32)));
    if (virtualKey >= '0' && virtualKey <= '9' && !shift)
        return QString(QLatin1Char(char(virtualKey)));
    return {};
}

QString LitString(const QString &keyCode, bool shift)
{
    int digits = 0;
    while (digits < keyCode.size() && IsPrefix(keyCode.at(digits)))
        ++digits;
    const QString prefix = keyCode.left(digits);
    bool ok = false;
    const int key = keyCode.mid(digits).toInt(&ok);
    if (!ok)
        return {};
    QString name = NamedKey(key);
    if (name.isEmpty())
        name = Convert2ASCII(key, shift);
    if (name.isEmpty())
        return {};
    return prefix + name;
}

int GetHotkeyIndex(bool ctrl, bool alt, bool shift, int virtualKey)
{
    const QString notation = LitString(KeyWithPrefixes(virtualKey, ctrl, alt, shift), shift).toUpper();
    if (notation.isEmpty())
        return 0;
    const HotkeyTable &t = table();
    for (int number = 1; number <= t.HotkeyCount; ++number) {
        const Hotkey &macro = t.at(number);
        if (macro.Active && macro.Keys.toUpper() == notation)
            return number;
    }
    return 0;
}

} // namespace hotkeys
