#include "platform/linux/linux_system_probes.h"

#include "platform/espeak/espeak_engine.h"
#include "platform/espeak/tone_probe.h"
#include "platform/hunspell/hunspell_checker.h"
#include "platform/linux/antiword_files.h"
#include "platform/x11/x11_system_probe.h"

#include <QDir>
#include <QTemporaryFile>

namespace platform {

struct LinuxSystemProbes::X11 {
    x11::X11SystemProbe probe;
};

LinuxSystemProbes::LinuxSystemProbes(QString dataFolder, SpeechEngine *speech)
    : m_dataFolder(std::move(dataFolder)), m_speech(speech)
{
}

LinuxSystemProbes::~LinuxSystemProbes() = default;

QString LinuxSystemProbes::environment(const char *name) { return qEnvironmentVariable(name); }

bool LinuxSystemProbes::displayReachable()
{
    if (!m_x11)
        m_x11 = std::make_unique<X11>();
    return m_x11->probe.reachable();
}

bool LinuxSystemProbes::hasXTest() { return displayReachable() && m_x11->probe.hasXTest(); }

XInputVersion LinuxSystemProbes::xinputVersion()
{
    return displayReachable() ? m_x11->probe.xinputVersion() : XInputVersion{};
}

bool LinuxSystemProbes::trayHostPresent() { return displayReachable() && m_x11->probe.trayHostPresent(); }

AudioProbe LinuxSystemProbes::playTestTone() { return espeak::PlayTestTone(); }

QStringList LinuxSystemProbes::voices()
{
    if (m_speech)
        return m_speech->voices();
    espeak::EspeakEngine engine;
    return engine.ok() ? engine.voices() : QStringList();
}

QStringList LinuxSystemProbes::dictionaries() { return HunspellChecker().dictionaries(); }

bool LinuxSystemProbes::antiwordInstalled() { return AntiwordFiles().installed(); }

FolderProbe LinuxSystemProbes::dataFolder()
{
    FolderProbe result{m_dataFolder, false};
    if (m_dataFolder.isEmpty() || !QDir().mkpath(m_dataFolder))
        return result;
    QTemporaryFile probe(QDir(m_dataFolder).filePath(QStringLiteral(".write-test-XXXXXX")));
    result.writable = probe.open() && probe.write("x", 1) == 1 && probe.flush();
    return result;
}

} // namespace platform
