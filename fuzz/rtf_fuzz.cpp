// libFuzzer target for the RTF reader. Besides crashes, hangs and sanitizer reports it
// checks one property: whatever the reader makes of the input, writing that model and
// reading it again gives the same model without an error.
#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data),
                                                     static_cast<qsizetype>(size));
    QString error;
    const reader::RichDocument document = reader::ReadRtf(bytes, &error);
    if (!reader::LooksLikeRtf(bytes) && !document.paragraphs.isEmpty())
        std::abort();

    const QByteArray written = reader::WriteRtf(document);
    QString againError;
    const reader::RichDocument again = reader::ReadRtf(written, &againError);
    if (!againError.isEmpty() || !(again == document)) {
        std::fprintf(stderr, "round trip differs: %s\n%s\n", qPrintable(againError), written.constData());
        std::abort();
    }
    return 0;
}
