#include "hotkeys/hotkeys_table.h"

#include "shell/app_state.h"

#include <QDir>
#include <stdexcept>

namespace hotkeys {

Hotkey &HotkeyTable::at(int number)
{
    if (number < 1 || number > kMaxHotkeys)
        throw std::out_of_range("hotkey number " + std::to_string(number) + " outside 1..500");
    return Hotkeys[number - 1];
}

const Hotkey &HotkeyTable::at(int number) const
{
    return const_cast<HotkeyTable *>(this)->at(number);
}

HotkeyTable &table()
{
    static HotkeyTable t;
    return t;
}

QString HotkeysFileFromSetting(const QString &setting)
{
    const QString name = setting.trimmed();
    if (name.isEmpty())
        return shell::app().AppFolder + kDefaultHotkeysFile;
    if (QDir::isAbsolutePath(name))
        return name;
    return shell::app().AppFolder + name;
}

} // namespace hotkeys
