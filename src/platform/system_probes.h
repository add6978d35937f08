#pragma once
// Port: the questions the system check asks about this machine. Each answer is a plain
// fact; what it means for the user, and what to do about it, is decided above.
#include <QString>
#include <QStringList>

namespace platform {

struct XInputVersion {
    int major = 0;
    int minor = 0;
};

struct AudioProbe {
    bool device = false;       // a default audio output exists and takes our format
    QString deviceName;        // its description, "" when none
    bool tonePlayed = false;   // the test tone went to the device
    QString problem;           // why the tone did not play, "" when it did
};

struct FolderProbe {
    QString path;              // the data folder, with a trailing "/"
    bool writable = false;     // it exists (or could be made) and a file could be written
};

class SystemProbes {
public:
    virtual ~SystemProbes() = default;
    // The value of an environment variable, "" when unset.
    virtual QString environment(const char *name) = 0;
    // True when a connection to the X display could be opened.
    virtual bool displayReachable() = 0;
    // Only asked when the display is reachable.
    virtual bool hasXTest() = 0;
    // The XInput version the server offers (asking for 2.2); 0.0 when it has none.
    virtual XInputVersion xinputVersion() = 0;
    // True when a client owns the system-tray selection of the default screen
    // (_NET_SYSTEM_TRAY_S0 on screen 0).
    virtual bool trayHostPresent() = 0;
    // Plays a short test tone through the audio output the program speaks through.
    virtual AudioProbe playTestTone() = 0;
    // The speech voices espeak-ng offers.
    virtual QStringList voices() = 0;
    // Language codes of the installed Hunspell dictionaries ("en_US").
    virtual QStringList dictionaries() = 0;
    // True when the program that reads .doc files (antiword) is on the PATH.
    virtual bool antiwordInstalled() = 0;
    virtual FolderProbe dataFolder() = 0;
};

} // namespace platform
