#pragma once
// Records what the test desktop's PulseAudio null sink plays, through its monitor, and
// measures loudness over time. The recording's sample count doubles as a clock: mark()
// at an action, then look at the audio from that sample on.
#include <QProcess>
#include <QTemporaryDir>
#include <QVector>

namespace testaudio {

inline constexpr int kRecordRate = 44100;     // samples a second, mono
inline constexpr int kWindowMs = 10;          // loudness is measured in windows this long
inline constexpr int kAudiblePeak = 1000;     // a window louder than this holds speech
inline constexpr int kSilentPeak = 64;        // a window at most this loud is silence

class SinkRecorder {
public:
    SinkRecorder();
    ~SinkRecorder();

    // "" when the sink exists, else why it cannot be recorded.
    static QString unavailableReason();
    // How far ahead of its clock the sink has mixed, in ms (-1 unknown). What it has
    // mixed is already in the recording but still to be heard, so it counts as sound
    // that follows an action taken now.
    static int sinkLatencyMs();
    // Starts recording; false when no audio arrived within a few seconds.
    bool start();
    // Samples recorded so far: the position in the recording of "now".
    qint64 mark() const;
    // Ends the recording and reads it.
    void stop();

    // After stop(): the loudest sample of each window, from the start of the recording.
    const QVector<int> &peaks() const { return m_peaks; }
    static qint64 windowOf(qint64 sample) { return sample / (kRecordRate * kWindowMs / 1000); }
    // Windows louder than kAudiblePeak in [from, to).
    int audibleWindows(qint64 fromSample, qint64 toSample) const;
    // The end, in ms after fromSample, of the last window in [from, to) above
    // kSilentPeak; 0 when all of it is silent.
    int lastSoundMs(qint64 fromSample, qint64 toSample) const;
    // Ms after fromSample of the first window in [from, to) above kAudiblePeak; -1 if none.
    int firstSoundMs(qint64 fromSample, qint64 toSample) const;

private:
    QTemporaryDir m_dir;
    QString m_path;
    QProcess m_parec;
    QVector<int> m_peaks;
};

} // namespace testaudio
