// libFuzzer target for the Hotkeys file reader. Whatever table the reader makes of the
// input, writing it and reading it back gives the same table.
#include "fuzz_support.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"

#include <QCoreApplication>

namespace {

struct Record {
    bool active;
    QString keys, description, code;
    bool operator==(const Record &) const = default;
};

QList<Record> records()
{
    QList<Record> out;
    const hotkeys::HotkeyTable &t = hotkeys::table();
    for (int n = 1; n <= t.HotkeyCount; ++n) {
        const hotkeys::Hotkey &h = t.at(n);
        // Quotes in keys and names are written as apostrophes.
        out << Record{h.Active, QString(h.Keys).replace(QLatin1Char('"'), QLatin1Char('\'')),
                      QString(h.Description).replace(QLatin1Char('"'), QLatin1Char('\'')), h.Code};
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString file = fuzz::folder() + QStringLiteral("Hotkeys.txt");
    fuzz::writeFile(file, fuzz::bytes(data, size));
    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    t.HotkeysFileName = file;
    if (!hotkeys::GetHotKeys().isEmpty())
        return 0;
    const QList<Record> first = records();
    if (!hotkeys::UpdateHotkeyWordsFile())
        fuzz::fail("the table could not be written");
    t.reset();
    t.HotkeysFileName = file;
    if (!hotkeys::GetHotKeys().isEmpty())
        fuzz::fail("the written file could not be read");
    if (records() != first)
        fuzz::fail("the table read back differs");
    return 0;
}
