#pragma once
// SAPI-style XML mark-up to espeak-ng SSML, with a map from each SSML character back to
// the character of the original string it came from, so that word positions reported
// on the SSML can be given in the string the caller spoke.
#include <QString>
#include <QVector>

namespace platform::espeak {

struct SsmlText {
    QString ssml;
    QVector<int> origin;  // origin[i]: 0-based index in the original of ssml[i]
    int originalSize = 0;  // length of the original string
    // 0-based start and length in the original of the SSML span [ssmlStart, +ssmlLength).
    int originalPosition(int ssmlStart) const;
    int originalLength(int ssmlStart, int ssmlLength) const;
};

// Obeys PITCH (MIDDLE, ABSMIDDLE), RATE (SPEED, ABSSPEED), VOLUME (LEVEL), EMPH, SILENCE
// (MSEC), SPELL, VOICE (REQUIRED="Name=..."); drops SAPI, the xml header and every
// unknown tag; names are case-insensitive. A "<" with no ">" after it is text.
SsmlText SapiToSsml(const QString &text);

} // namespace platform::espeak
