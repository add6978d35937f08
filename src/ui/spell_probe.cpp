#include "ui/spell_probe.h"

#include <QDir>

namespace ui {

bool DictionaryInstalled()
{
    for (const char *folder : {"/usr/share/hunspell", "/usr/share/myspell/dicts"}) {
        if (!QDir(QLatin1String(folder)).entryList({QStringLiteral("*.dic")}, QDir::Files).isEmpty())
            return true;
    }
    return false;
}

} // namespace ui
