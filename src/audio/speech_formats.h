#pragma once
// The speech-format table of the read-to-file dialog (InitSAFT): 31 mono formats, each a
// SAPI audio-format constant, its list text, and what it means on disk here.
#include <QString>
#include <array>
#include <optional>

namespace audio {

enum class SpeechEncoding { Pcm8, Pcm16, TrueSpeech, ALaw, ULaw, Gsm610 };

struct SpeechFormat {
    int constant;          // SpFileStream.Format.Type
    const char *sapiName;  // the constant's SAPI name
    const char *text;      // cboOption(0) row
    int sampleRate;
    SpeechEncoding encoding;
};

inline constexpr int kSpeechFormatCount = 31;
inline constexpr int kDefaultSpeechFormatRow = 22;  // taken when no row is selected
inline constexpr int kMp3SpeechFormatRow = 15;      // 44 kHz, 16 bit: what the encoder reads

const std::array<SpeechFormat, kSpeechFormatCount> &SpeechFormats();
// The row of a SAPI constant.
std::optional<int> SpeechFormatRow(int constant);

} // namespace audio
