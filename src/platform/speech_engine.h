#pragma once
// Port: the text-to-speech engine of the reader (the voice object `v`).
// Every call and every event happens on the GUI thread; an implementation may synthesise
// and play on threads of its own, but hands its events over to the GUI thread.
#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// Values of SpeechStatus::RunningState.
inline constexpr int kRunningDone = 1;      // nothing is spoken
inline constexpr int kRunningSpeaking = 2;  // a stream is playing
inline constexpr int kRunningPaused = 3;    // any other value means paused

// Flags of speak().
inline constexpr int kSpeakPurgeBeforeSpeak = 2;  // with "": drop whatever is queued or playing
inline constexpr int kSpeakAsyncXml = 9;          // return at once; obey XML mark-up in the text

struct SpeechStatus {
    int RunningState = kRunningDone;
    // 0-based position, in the string given to speak(), of the word being spoken.
    int InputWordPosition = 0;
    // No audio device: streams run on a silent clock, with their events as usual.
    bool NoAudioOutput = false;
};

// Where synthesis goes instead of the loudspeaker (the voice's AudioOutputStream).
class AudioOutputStream {
public:
    virtual ~AudioOutputStream() = default;
    // 16-bit mono samples at sampleRate, in order, called on the engine's synthesis thread.
    // False when the stream could not take them: the synthesis then stops.
    virtual bool write(const qint16 *samples, qsizetype count, int sampleRate) = 0;
};

class SpeechEngine {
public:
    virtual ~SpeechEngine() = default;

    // Display texts of the installed voices, in the engine's order (GetVoices + GetDescription).
    virtual QStringList voices() = 0;
    // Chooses the voice at index in voices(); it applies from the next speak().
    virtual void setVoice(int index) = 0;
    // 0 .. 100.
    virtual int volume() const = 0;
    virtual void setVolume(int volume) = 0;
    // -10 .. 10, 0 being the voice's normal speed.
    virtual int rate() const = 0;
    virtual void setRate(int rate) = 0;
    // Speak(text, flags): kSpeakPurgeBeforeSpeak with "" purges; kSpeakAsyncXml speaks the
    // text (SAPI-style XML tags obeyed) and returns at once.
    virtual void speak(const QString &text, int flags) = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    virtual SpeechStatus status() const = 0;

    // Sends what the following speak() calls synthesise to stream instead of the audio
    // device, as fast as it can be made; nullptr gives the device back (and stops a stream
    // being written). A stream raises no StartStream, EndStream or Word events.
    virtual void setAudioOutputStream(AudioOutputStream *stream) = 0;
    // WaitUntilDone: true when nothing is being spoken or written any more, waiting at most
    // milliseconds for it. The stream is no longer touched once this answered true.
    virtual bool waitUntilDone(int milliseconds) = 0;

    // Events, raised on the GUI thread. Word positions are 0-based characters of the
    // string given to speak(), tags included.
    std::function<void()> onStartStream;
    std::function<void()> onEndStream;
    std::function<void(int characterPosition, int length)> onWord;
};

} // namespace platform
