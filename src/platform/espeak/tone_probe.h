#pragma once
// Plays a short test tone through the same output the speech goes to (PcmPlayer on the
// default device) and says whether the device took it.
#include "platform/system_probes.h"

namespace platform::espeak {

inline constexpr int kToneSampleRate = 22050;  // espeak-ng's own rate
inline constexpr int kToneMilliseconds = 250;

// The tone's samples: a soft 440 Hz sine with short fades, 16-bit mono little-endian.
QByteArray TestTone(int sampleRate, int milliseconds);

// Blocks (serving events) until the tone has played or a few seconds have passed.
AudioProbe PlayTestTone();

} // namespace platform::espeak
