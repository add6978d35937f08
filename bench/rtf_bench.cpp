// The RTF codec at speed: reading a 1 MB document of formatted paragraphs with code-page
// and Unicode escapes, and writing that document back (goal: each under 100 ms).
#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"

#include <benchmark/benchmark.h>

namespace {

constexpr qsizetype kDocumentBytes = 1 << 20;

QByteArray LargeRtf()
{
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\froman "
                     "Times New Roman;}}{\\colortbl;\\red192\\green0\\blue0;}"
                     "{\\stylesheet{\\s0\\fs24 Normal;}}\n";
    const QByteArray paragraph =
        "\\pard\\plain\\s0\\qj\\li720\\fi-360 {\\f1 Plain text with }{\\b bold}, {\\i italic}, "
        "{\\ul underlined} and {\\cf1 red} words, caf\\'e9 na\\'efve \\u8364\\'80 and "
        "\\u26085?\\u26412? in one line that wraps.\\par\n";
    while (rtf.size() < kDocumentBytes)
        rtf += paragraph;
    rtf += "}";
    return rtf;
}

void BM_ReadRtfOneMegabyte(benchmark::State &state)
{
    const QByteArray rtf = LargeRtf();
    for (auto _ : state) {
        QString error;
        reader::RichDocument document = reader::ReadRtf(rtf, &error);
        benchmark::DoNotOptimize(document);
        if (!error.isEmpty())
            state.SkipWithError("read failed");
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
}
BENCHMARK(BM_ReadRtfOneMegabyte)->Unit(benchmark::kMillisecond);

void BM_WriteRtfOfAOneMegabyteDocument(benchmark::State &state)
{
    const reader::RichDocument document = reader::ReadRtf(LargeRtf());
    for (auto _ : state) {
        QByteArray rtf = reader::WriteRtf(document);
        benchmark::DoNotOptimize(rtf);
    }
}
BENCHMARK(BM_WriteRtfOfAOneMegabyteDocument)->Unit(benchmark::kMillisecond);

} // namespace
