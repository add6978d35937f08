#pragma once
// Windows code pages as RTF names them (\ansicpgN, \cpgN, \fcharsetN), decoded to text.
#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <unordered_map>

namespace reader {

inline constexpr int kRtfDefaultCodePage = 1252;

// The code page of a font character set, or 0 when the set means "the document's".
int CodePageOfCharset(int charset);

// Decodes byte runs for code page numbers, keeping one decoder per page. Unknown pages
// decode as Windows-1252.
class CodePageDecoder {
public:
    QString decode(int codePage, const QByteArray &bytes);

private:
    QStringDecoder &decoderFor(int codePage);
    std::unordered_map<int, QStringDecoder> decoders_;
};

} // namespace reader
