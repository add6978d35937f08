#pragma once
// Text files that may come from the original platform: read as UTF-8, or as
// Windows-1252 when the bytes are not valid UTF-8; written as UTF-8.
#include <QByteArray>
#include <QString>

namespace shell {

QString DecodeLegacyText(const QByteArray &bytes);
// Windows-1252 alone, for texts that say they are in it.
QString DecodeCp1252(const QByteArray &bytes);
QByteArray EncodeText(const QString &text);

} // namespace shell
