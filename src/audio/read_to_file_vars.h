#pragma once
// The state shared by the read-to-file dialog, the batch conversion and the encoder.
#include <QString>

namespace audio {

inline constexpr double kStartCharsPerSecond = 800;

struct ReadToFileVars {
    QString WavFileName;      // the wave file that speech goes to
    QString Mp3FileName;      // the MP3 file
    bool MakeMp3 = false;     // convert after speaking
    bool ReadToFileBusy = false;
    bool CancelEncoding = false;  // the user asked to stop; read by the encoder after each chunk
    double CharsPerSecond = kStartCharsPerSecond;  // expected speed of a speech run
    int TextEndPos = 0;       // characters expected to be spoken

    void reset() { *this = ReadToFileVars(); }
};

ReadToFileVars &readToFileVars();

// Deletes the file if it is one, ignoring any failure. Never a device or a folder: an
// output of /dev/full is not removed.
void KillFileIfExists(const QString &name);

} // namespace audio
