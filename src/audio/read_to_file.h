#pragma once
// Read to file without the window: the output-name rules of the read-to-file dialog, its
// progress estimate, and speaking a text into a wave file through the speech engine.
#include "audio/read_to_file_vars.h"

#include <QString>
#include <functional>

namespace platform {
class SpeechEngine;
}

namespace audio {

inline constexpr int kMinCorrectedCharsPerSecond = 501;  // slower runs leave the estimate
inline constexpr int kWaitUntilDoneMs = 10;
inline constexpr int kCondensedNameWidth = 60;

// True when the name's last four characters, lower-cased, are ".wav" (HasSoundEnding: or ".mp3").
bool IsWavName(const QString &name);
bool HasSoundEnding(const QString &name);
// The name SettxtOutputMp3File keeps: with neither ending, trimmed plus ".mp3".
QString OutputMp3Name(const QString &name);
// True if the file exists, or its folder does and the name goes on behind the last "/".
bool ValidMissingFile(const QString &name);
// True when the folder the name lies in exists.
bool OutputFolderExists(const QString &name);
// SetFNameWAV_MP3: sets WavFileName, Mp3FileName and MakeMp3. The temporary wave file of
// an MP3 lies in AppFolder; when it exists, overwriteOk(bare wave name) is asked and a
// No empties name.
void SetFNameWAV_MP3(QString &name, const std::function<bool(const QString &bareWavName)> &overwriteOk);
// The overwrite question of SetFNameWAV_MP3.
QString OverwriteQuestion(const QString &bareWavName);
// ProgressWAV's percent at now, for a run expected from start to end.
int ProgressWAV(double now, double start, double end, bool makeMp3);
// Takes the speed of a finished run as the new CharsPerSecond when it is above 500.
void CorrectCharsPerSecond(int textEndPos, double seconds);
// Timer: seconds since midnight.
double Timer();

// Speaking a text into a wave file: the voice, rate and volume for the run (the engine's
// own are given back afterwards), the pending-events pump, the cancel check and the
// progress bar of the speech phase.
struct SpeakToFileRun {
    QString text;            // as given to the engine, pitch mark-up included
    QString wavName;
    int formatConstant = 0;  // SAPI constant of the speech-format row
    int voice = -1;          // engine voice number; -1 keeps the engine's
    int rate = 0;
    int volume = 100;
    std::function<void()> DoEvents;
    std::function<bool()> cancelled;
    std::function<void(int percent)> progress;
    // Given the samples as the wave file gets them, while they are written.
    std::function<void(const qint16 *samples, size_t count)> pcmTap;
};
enum class SpeakOutcome { Done, Cancelled, Failed };
// Runs it; on Failed, error says why (no codec, file not writable, disk full). The wave
// file stays on disk after a cancel or a failure.
SpeakOutcome SpeakToFile(platform::SpeechEngine &engine, const SpeakToFileRun &run, QString *error);

} // namespace audio
