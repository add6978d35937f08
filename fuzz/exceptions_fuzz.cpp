// libFuzzer target for "exceptions.txt" and the rewrite it drives: the pairs read from
// any file survive a save, and making and unmaking them on a text never hangs or fails.
#include "fuzz_support.h"
#include "reader/exceptions.h"
#include "shell/legacy_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    bool ok = true;
    const QList<reader::ExceptionRec> pairs = reader::ParseExceptions(shell::DecodeLegacyText(fuzz::bytes(data, size)), &ok);
    bool again = true;
    if (reader::ParseExceptions(reader::FormatExceptions(pairs), &again) != pairs || !again)
        fuzz::fail("pairs read back from a save differ");

    reader::ExceptionsState &state = reader::exceptionsState();
    state.reset();
    state.Exceptions = pairs;
    QString text = QStringLiteral("The quick brown fox, Sonamark's reader; jumps over 12 lazy dogs.\r\nNew line: fox!");
    reader::MakeExceptions(text);
    reader::UnmakeText(text);
    // Nothing kept between inputs: libFuzzer takes memory kept by a run for a leak and
    // looks for it, which costs more than the run.
    state.reset();
    return 0;
}
