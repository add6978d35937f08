// libFuzzer target for "options.def": any file gives eight settings within their
// ranges, and writing them and reading again gives the same settings, clean.
#include "fuzz_support.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    shell::app().AppFolder = fuzz::folder();
    fuzz::writeFile(fuzz::folder() + QLatin1String(shell::kOptionsFileName), fuzz::bytes(data, size));
    shell::settings().reset();
    shell::GetOptions();
    const shell::Settings first = shell::settings();
    const double rate = shell::Val(first.RateOpt);
    if (rate < -10 || rate > 10 || shell::Val(first.VolumeOpt) < 1 || shell::Val(first.VolumeOpt) > 100)
        fuzz::fail("a numeric setting is out of range");
    if (!first.HotkeysFileOpt.startsWith(QLatin1Char('/')))
        fuzz::fail("the Hotkeys file is not an absolute path");
    // Fields with a quote or a line break cannot be stored in this format; the rest
    // must survive a save.
    const QString all = first.FontSizeOpt + first.VoiceOpt + first.RateOpt + first.VolumeOpt + first.PitchOpt
                        + first.Mp3QualityOpt + first.HotkeysEnabledOpt + first.HotkeysFileOpt;
    if (all.contains(QLatin1Char('"')) || all.contains(QLatin1Char('\n')) || all.contains(QLatin1Char('\r')))
        return 0;
    shell::WriteFileOpts();
    shell::settings().reset();
    shell::app().OptionsDirty = false;
    shell::GetOptions();
    const shell::Settings &again = shell::settings();
    if (again.FontSizeOpt != first.FontSizeOpt || again.VoiceOpt != first.VoiceOpt || again.RateOpt != first.RateOpt
        || again.VolumeOpt != first.VolumeOpt || again.PitchOpt != first.PitchOpt
        || again.Mp3QualityOpt != first.Mp3QualityOpt || again.HotkeysEnabledOpt != first.HotkeysEnabledOpt
        || again.HotkeysFileOpt != first.HotkeysFileOpt)
        fuzz::fail("settings read back differ");
    return 0;
}
