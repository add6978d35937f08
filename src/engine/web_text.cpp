// The address and the text of [WEBSOURCE]: which URLs are fetched, and how a response
// becomes text.
#include "engine/web_source.h"

#include "shell/legacy_text.h"

#include <QStringDecoder>

namespace engine {

namespace {

// Labels that web servers use for Latin-1. Pages so labelled are in practice written in
// Windows-1252 (its superset with curly quotes, dashes and the euro sign in
// 0x80..0x9F), and browsers decode them as that; so do we.
constexpr const char *kWindows1252Labels[] = {
    "windows-1252", "cp1252", "x-cp1252", "iso-8859-1", "iso8859-1", "iso_8859-1", "latin1",
    "l1", "cp819", "ibm819", "iso-ir-100", "csisolatin1", "us-ascii", "ascii",
};

// The charset parameter of a Content-Type, lower case and unquoted; "" when none.
QByteArray charsetOf(const QByteArray &contentType)
{
    const QList<QByteArray> parts = contentType.split(';');
    for (qsizetype i = 1; i < parts.size(); ++i) {
        const QByteArray part = parts.at(i).trimmed();
        const qsizetype equals = part.indexOf('=');
        if (equals < 0 || part.left(equals).trimmed().toLower() != "charset")
            continue;
        QByteArray value = part.mid(equals + 1).trimmed();
        if (value.size() >= 2 && value.startsWith('"') && value.endsWith('"'))
            value = value.mid(1, value.size() - 2).trimmed();
        return value.toLower();
    }
    return {};
}

QString decode(const QByteArray &body, const QByteArray &charset)
{
    for (const char *label : kWindows1252Labels)
        if (charset == label)
            return shell::DecodeCp1252(body);
    if (!charset.isEmpty()) {
        QStringDecoder decoder(charset.constData());
        if (decoder.isValid())
            return decoder.decode(body);
    }
    // No charset, or one this Qt cannot decode: UTF-8, and Windows-1252 for bytes that
    // are not UTF-8 at all.
    return shell::DecodeLegacyText(body);
}

} // namespace

QUrl WebSourceUrl(const QString &operand)
{
    const QUrl url = QUrl::fromUserInput(operand.trimmed());
    const QString scheme = url.scheme().toLower();
    if (!url.isValid() || url.host().isEmpty() || (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return {};
    return url;
}

QString WebResponseText(const platform::WebResponse &response)
{
    if (!response.contentType.toLower().contains("text/"))
        return {};
    return decode(response.body, charsetOf(response.contentType));
}

} // namespace engine
