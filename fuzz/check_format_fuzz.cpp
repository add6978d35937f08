// libFuzzer target for Check Code and Format Code together: any text is checked and
// formatted, and the properties of format_properties.h must hold on it.
#include "format_properties.h"
#include "fuzz_support.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/macro_text.h"
#include "shell/legacy_text.h"

#include <QCoreApplication>
#include <array>
#include <cstdio>

namespace {

// Two macros for [HOTKEY "name"] and [HOTKEY n] to find.
void fillTable()
{
    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    t.Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^%a"), QStringLiteral("First"), QStringLiteral("a")};
    t.Hotkeys[1] = hotkeys::Hotkey{true, QStringLiteral("^%b"), QStringLiteral("Second"), QStringLiteral("b")};
    t.HotkeyCount = 2;
}

// What the properties are not asked to hold on:
//  - the marker characters that the language reserves (macro_text.h) stand for blanks,
//    quotes and operators inside the tidying, so a macro cannot hold them as text;
//  - characters whose full upper case is longer ("ß" is "SS"): the tidying upper-cases
//    them one by one now, but the other upper-case copies of the language have not all
//    been checked for them yet;
//  - MID() with unusual separators: "MID(S, 1, 2)" and the other usual forms tidy once
//    for all (the property test holds them to it), but a MID whose separators the swap
//    leaves alone on one pass (an odd count of them, a line feed or a bracket among the
//    arguments, "MID (" with a blank) can change on the next.
// For every UTF-16 unit: whether its full upper case is more than one unit. Worked out once:
// a string per character for every input would cost more than the rest of the target.
const std::array<bool, 0x10000> &upperGrows()
{
    static const std::array<bool, 0x10000> grows = [] {
        std::array<bool, 0x10000> table{};
        for (char32_t u = 0; u < 0x10000; ++u)
            table[u] = QString(QChar(char16_t(u))).toUpper().size() != 1;
        return table;
    }();
    return grows;
}

QString withoutKnownBreaks(QString text)
{
    if (QString(text).remove(QLatin1Char(' ')).contains(QLatin1String("MID("), Qt::CaseInsensitive))
        return {};
    static const QChar kMarkers[] = {macro::kQuoteMarker, macro::kQuoteMarker2, macro::kSpaceMarker,
                                     macro::kAmpersandMarker, macro::kLessEqualMarker, macro::kGreaterEqualMarker};
    for (QChar marker : kMarkers)
        text.replace(marker, QLatin1Char('?'));
    for (QChar &c : text)
        if (upperGrows()[c.unicode()])
            c = QLatin1Char('?');
    return text;
}

void check(const QString &decoded)
{
    const QString text = withoutKnownBreaks(decoded);
    const QString broken = props::BrokenFormatProperty(text);
    if (broken.isEmpty())
        return;
    std::fprintf(stderr, "%s\n", broken.toLocal8Bit().constData());
    fuzz::fail("checking or formatting a macro");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    fillTable();
    upperGrows();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Read as the Hotkeys file is: UTF-8 when it is valid, else Windows-1252; the fuzzer
    // reaches both readings by itself.
    check(shell::DecodeLegacyText(fuzz::bytes(data, size)));
    return 0;
}
