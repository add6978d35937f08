#pragma once
// Writes the rich-text model as RTF that word processors open: a font table of the
// families used, a colour table of the colours used, one \pard per paragraph with its
// alignment, indents and bullet, and each run's character format. Characters outside
// ASCII are written as \uN with a Windows-1252 byte (or "?") as the fallback for readers
// that do not know \u. ReadRtf reads the result back to an equal model, except that a
// point size is kept to half points.
#include "reader/rich_text.h"

#include <QByteArray>

namespace reader {

QByteArray WriteRtf(const RichDocument &document);

} // namespace reader
