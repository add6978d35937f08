#pragma once
// The system check's probes on this desktop: X11 for the display, hooks and tray, the
// speech output for the tone, espeak-ng for voices, libhunspell for dictionaries.
#include "platform/system_probes.h"

#include <memory>

namespace platform {

class SpeechEngine;

class LinuxSystemProbes : public SystemProbes {
public:
    // dataFolder: the folder to try writing in. speech: the engine whose voices to list;
    // none: a private espeak-ng engine is started for the question (only when no other
    // engine lives in the process).
    explicit LinuxSystemProbes(QString dataFolder, SpeechEngine *speech = nullptr);
    ~LinuxSystemProbes() override;

    QString environment(const char *name) override;
    bool displayReachable() override;
    bool hasXTest() override;
    XInputVersion xinputVersion() override;
    bool trayHostPresent() override;
    AudioProbe playTestTone() override;
    QStringList voices() override;
    QStringList dictionaries() override;
    bool antiwordInstalled() override;
    FolderProbe dataFolder() override;

private:
    struct X11;
    std::unique_ptr<X11> m_x11;
    QString m_dataFolder;
    SpeechEngine *m_speech;
};

} // namespace platform
