#include "audio/speech_formats.h"

namespace audio {

const std::array<SpeechFormat, kSpeechFormatCount> &SpeechFormats()
{
    using E = SpeechEncoding;
    // ORDER: the rows are the list's rows and the numbers stored in opt X.
    static const std::array<SpeechFormat, kSpeechFormatCount> table = {{
        {4, "SAFT8kHz8BitMono", "8 kHz, 8 bit (Lowest Quality)", 8000, E::Pcm8},
        {6, "SAFT8kHz16BitMono", "8 kHz, 16 bit (Low Quality)", 8000, E::Pcm16},
        {8, "SAFT11kHz8BitMono", "11 kHz, 8 bit (Low Quality)", 11025, E::Pcm8},
        {10, "SAFT11kHz16BitMono", "11 kHz, 16 bit (Medium Quality)", 11025, E::Pcm16},
        {12, "SAFT12kHz8BitMono", "12 kHz, 8 bit (Low Quality)", 12000, E::Pcm8},
        {14, "SAFT12kHz16BitMono", "12 kHz, 16 bit (Medium Quality)", 12000, E::Pcm16},
        // The text of the 12 kHz row, kept as the list has always shown it.
        {16, "SAFT16kHz8BitMono", "12 kHz, 8 bit (Low Quality)", 16000, E::Pcm8},
        {18, "SAFT16kHz16BitMono", "16 kHz, 16 bit (Medium Quality)", 16000, E::Pcm16},
        {20, "SAFT22kHz8BitMono", "22 kHz, 8 bit (Medium Quality)", 22050, E::Pcm8},
        {22, "SAFT22kHz16BitMono", "22 kHz, 16 bit [Standard] (Good Quality)", 22050, E::Pcm16},
        {24, "SAFT24kHz8BitMono", "24 kHz, 8 bit (Medium Quality)", 24000, E::Pcm8},
        {26, "SAFT24kHz16BitMono", "24 kHz, 16 bit (Good Quality)", 24000, E::Pcm16},
        {28, "SAFT32kHz8BitMono", "32 kHz, 8 bit (Medium Quality)", 32000, E::Pcm8},
        {30, "SAFT32kHz16BitMono", "32 kHz, 16 bit (Very Good Quality)", 32000, E::Pcm16},
        {32, "SAFT44kHz8BitMono", "44 kHz, 8 bit (Good Quality)", 44100, E::Pcm8},
        {34, "SAFT44kHz16BitMono", "44 kHz, 16 bit (Very Good Quality)", 44100, E::Pcm16},
        {36, "SAFT48kHz8BitMono", "48 kHz, 8 bit (Good Quality)", 48000, E::Pcm8},
        {38, "SAFT48kHz16BitMono", "48 kHz, 16 bit (Best Quality)", 48000, E::Pcm16},
        {40, "SAFTTrueSpeech_8kHz1BitMono", "True Speech, 8 kHz, 1 bit (Low Quality)", 8000, E::TrueSpeech},
        {41, "SAFTCCITT_ALaw_8kHzMono", "Telephone Standard, ALaw 8 kHz (Low Quality)", 8000, E::ALaw},
        {43, "SAFTCCITT_ALaw_11kHzMono", "Telephone Standard, ALaw 11 kHz (Medium Quality)", 11025, E::ALaw},
        {45, "SAFTCCITT_ALaw_22kHzMono", "Telephone Standard, ALaw 22 kHz (Good Quality)", 22050, E::ALaw},
        {47, "SAFTCCITT_ALaw_44kHzMono", "Telephone Standard, ALaw 44 kHz (Very Good Quality)", 44100, E::ALaw},
        {49, "SAFTCCITT_uLaw_8kHzMono", "Telephone Standard, uLaw 8 kHz (Low Quality)", 8000, E::ULaw},
        {51, "SAFTCCITT_uLaw_11kHzMono", "Telephone Standard, uLaw 11 kHz (Medium Quality)", 11025, E::ULaw},
        {53, "SAFTCCITT_uLaw_22kHzMono", "Telephone Standard, uLaw 22 kHz (Good Quality)", 22050, E::ULaw},
        {55, "SAFTCCITT_uLaw_44kHzMono", "Telephone Standard, uLaw 44 kHz (Very Good Quality)", 44100, E::ULaw},
        {65, "SAFTGSM610_8kHzMono", "Mobile Standard, 8 kHz (Low Quality)", 8000, E::Gsm610},
        {66, "SAFTGSM610_11kHzMono", "Mobile Standard, 11 kHz (Medium Quality)", 11025, E::Gsm610},
        {67, "SAFTGSM610_22kHzMono", "Mobile Standard, 22 kHz (Good Quality)", 22050, E::Gsm610},
        {68, "SAFTGSM610_44kHzMono", "Mobile Standard, 44 kHz (Very Good Quality)", 44100, E::Gsm610},
    }};
    return table;
}

std::optional<int> SpeechFormatRow(int constant)
{
    const auto &table = SpeechFormats();
    for (int row = 0; row < kSpeechFormatCount; ++row)
        if (table[row].constant == constant)
            return row;
    return std::nullopt;
}

} // namespace audio
