#pragma once
// The eight user settings, kept as strings, and their file "options.def".
#include <QString>

namespace shell {

struct Settings {
    QString FontSizeOpt;        // size of the text box font
    QString VoiceOpt;           // reader voice as listed in List1
    QString RateOpt;            // -10 .. 10
    QString VolumeOpt;          // 1 .. 100
    QString PitchOpt;           // -10 .. 10
    QString Mp3QualityOpt;      // -30 .. 3
    QString HotkeysEnabledOpt;  // "1" or "0"
    QString HotkeysFileOpt;     // absolute path of the Hotkeys file

    void reset() { *this = Settings(); }
};

Settings &settings();

inline constexpr const char *kOptionsFileName = "options.def";

// Reads "options.def" from AppFolder, replacing bad values (and marking OptionsDirty
// where that is the rule); a missing file or a "SETUP" placeholder gives the defaults.
void GetOptions();
// Assigns the defaults and writes them.
void SetDef();
// Rewrites "options.def" whole (atomically) and clears OptionsDirty.
void WriteFileOpts();

// Lenient number parse: the longest numeric prefix, 0 when there is none.
double Val(const QString &text);

} // namespace shell
