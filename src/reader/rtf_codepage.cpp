#include "reader/rtf_codepage.h"

namespace reader {
namespace {

const char *CodePageName(int codePage)
{
    switch (codePage) {
    case 437: return "IBM437";
    case 850: return "IBM850";
    case 852: return "IBM852";
    case 866: return "IBM866";
    case 874: return "windows-874";
    case 932: return "windows-31j";
    case 936: return "GBK";
    case 949: return "windows-949";
    case 950: return "Big5";
    case 1250: return "windows-1250";
    case 1251: return "windows-1251";
    case 1252: return "windows-1252";
    case 1253: return "windows-1253";
    case 1254: return "windows-1254";
    case 1255: return "windows-1255";
    case 1256: return "windows-1256";
    case 1257: return "windows-1257";
    case 1258: return "windows-1258";
    case 10000: return "macintosh";
    case 65001: return "UTF-8";
    default: return nullptr;
    }
}

} // namespace

int CodePageOfCharset(int charset)
{
    switch (charset) {
    case 77: return 10000;   // Mac Roman
    case 128: return 932;    // Shift JIS
    case 129: return 949;    // Hangul
    case 134: return 936;    // GB2312
    case 136: return 950;    // Big5
    case 161: return 1253;   // Greek
    case 162: return 1254;   // Turkish
    case 163: return 1258;   // Vietnamese
    case 177: return 1255;   // Hebrew
    case 178: return 1256;   // Arabic
    case 186: return 1257;   // Baltic
    case 204: return 1251;   // Cyrillic
    case 222: return 874;    // Thai
    case 238: return 1250;   // Eastern European
    case 254: return 437;    // PC 437
    case 255: return 850;    // OEM
    default: return 0;       // ANSI, default, symbol: the document's page
    }
}

QStringDecoder &CodePageDecoder::decoderFor(int codePage)
{
    auto found = decoders_.find(codePage);
    if (found != decoders_.end())
        return found->second;
    QStringDecoder decoder;
    if (const char *name = CodePageName(codePage))
        decoder = QStringDecoder(name);
    if (!decoder.isValid())
        decoder = QStringDecoder("windows-1252");
    if (!decoder.isValid())
        decoder = QStringDecoder(QStringConverter::Latin1);
    return decoders_.emplace(codePage, std::move(decoder)).first->second;
}

QString CodePageDecoder::decode(int codePage, const QByteArray &bytes)
{
    QStringDecoder &decoder = decoderFor(codePage);
    decoder.resetState();
    return decoder.decode(bytes);
}

} // namespace reader
