#include "shell/legacy_text.h"

#include <QStringDecoder>

namespace shell {

namespace {

// Windows-1252 code points for the bytes 0x80..0x9F; the five unassigned bytes map to
// the control character of the same value, as the platform does.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

QString DecodeCp1252Impl(const QByteArray &bytes)
{
    QString out;
    out.resize(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes.at(i));
        out[i] = b >= 0x80 && b <= 0x9F ? QChar(kCp1252High[b - 0x80]) : QChar(b);
    }
    return out;
}

} // namespace

QString DecodeLegacyText(const QByteArray &bytes)
{
    // Stateless: bytes that end inside a UTF-8 sequence ("caf\xe9") are an error, not a
    // silently dropped tail.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    return DecodeCp1252Impl(bytes);
}

QString DecodeCp1252(const QByteArray &bytes) { return DecodeCp1252Impl(bytes); }

QByteArray EncodeText(const QString &text) { return text.toUtf8(); }

} // namespace shell
