#pragma once
// The reader's speech: the voice list, Talk, Pause and Stop, the word highlight and the
// progress figure, over the engine of platform::services().speech and a SpeechView.
#include "reader/speech_view.h"

#include <QString>
#include <array>
#include <optional>

namespace reader {

inline constexpr int kMaxVoices = 101;    // rows VoiceIndex can hold
inline constexpr int kTimer2IntervalMs = 100;

struct SpeechVars {
    std::array<int, kMaxVoices> VoiceIndex{};  // List1 row -> engine voice number
    int VoiceCount = 0;       // rows in List1
    bool HighlightOn = false; // word events may move the selection
    int HighlightBase = 0;    // offset in txtSpeech of the first spoken character
    int TextEndPos = 0;       // last blank (1-based) of the spoken string, or its length
    int ProgressPct = 0;      // 0 .. 100
    bool NoAudioSaid = false; // the status has said that speech is silent
    bool NoVoiceSaid = false; // the user has been told that no voice is installed

    void reset() { *this = SpeechVars(); }
};

SpeechVars &speechVars();

// The List1 text of a voice description, or nothing when the voice is not listed.
std::optional<QString> ListedVoiceName(const QString &description);
// The string Talk hands the engine when the pitch is not "0".
QString PitchWrapped(const QString &text, const QString &pitchOpt);
// Characters of PitchWrapped's head before the text, for a pitch setting.
int PitchHeadLength(const QString &pitchOpt);
// 1-based position of the last blank, or the length when there is none.
int LastBlankOrLength(const QString &text);

// Form_Load step 10: binds the engine's events and the window, fills List1 and sets the
// sliders from the settings.
void CreateSpeechObject(SpeechView *view);
// The row to start on when the saved voice is not installed: the first voice of the
// language (its name starts with the language's English name, as espeak-ng names them),
// else "English (America)", else the first row; -1 for an empty list.
int FallbackVoiceRow(const QStringList &rows, const QString &languageName);
// The status text shown once when the engine has no audio device.
extern const QString kNoAudioText;
extern const QString kNoVoiceText;
// Forgets the window (at unload, and in tests).
void ReleaseSpeechObject();

void cmdTalk_Click();
void mnuTalk_Click();
void cmdPause_Click();
void mnuPause_Click();
void cmdStop_Click();
void mnuStop_Click();
void List1_Click();
void VolumeSldr_Scroll(int value);
void RateSldr_Scroll(int value);
void PitchSldr_Scroll(int value);
void Timer2_Timer();
void v_StartStream();
void V_EndStream();
void v_Word(int characterPosition, int length);
void Reset_txtSpeech();

} // namespace reader
