#pragma once
// Writes a picture as a GIF file (Qt reads GIF but does not write it): the colours are
// reduced to a palette of at most 256, with dithering.
#include <QImage>
#include <QString>

namespace platform {

// False, with *error, when the file could not be written.
bool WriteGif(const QImage &image, const QString &path, QString *error);

} // namespace platform
