// libFuzzer target for the SAPI-style mark-up translation: every SSML character maps
// back into the original string, in order, and every span gives a position inside it.
#include "fuzz_support.h"
#include "platform/espeak/sapi_markup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(fuzz::bytes(data, size));
    const platform::espeak::SsmlText out = platform::espeak::SapiToSsml(text);
    if (out.origin.size() != out.ssml.size())
        fuzz::fail("the position map has another length than the SSML");
    for (int i = 0; i < out.origin.size(); ++i) {
        const int o = out.origin.at(i);
        if (o < 0 || o > text.size())
            fuzz::fail("a mapped position lies outside the string");
    }
    for (int start = 0; start < out.ssml.size(); start += 7) {
        const int p = out.originalPosition(start);
        const int n = out.originalLength(start, 5);
        if (p < 0 || p > text.size() || n < 0 || p + n > text.size())
            fuzz::fail("a span maps outside the string");
    }
    return 0;
}
