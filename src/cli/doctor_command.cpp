#include "cli/doctor_command.h"

#include "shell/system_check.h"

namespace cli {

namespace {
constexpr int kUsageError = 2;
}

QString DoctorUsageText()
{
    return QStringLiteral(
        "Usage: sonamark-cli doctor\n"
        "\n"
        "Checks what Sonamark needs on this machine: the X display, XTest and XInput 2.2 for\n"
        "global hotkeys, a notification area (tray host), the session type (under Wayland\n"
        "hotkeys work only in XWayland windows), the audio output (a short test tone is\n"
        "played), the espeak-ng voices, the Hunspell dictionaries, antiword for .doc files,\n"
        "and whether the data folder can be written. Each problem is printed with its fix.\n"
        "Exit status: 0 everything needed works (notes allowed), 1 something is missing,\n"
        "2 bad arguments.\n");
}

int RunDoctor(const QStringList &args, platform::SystemProbes &probes, QTextStream &out, QTextStream &err)
{
    if (!args.isEmpty()) {
        if (args.size() == 1 && (args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h"))) {
            out << DoctorUsageText();
            return 0;
        }
        err << "sonamark-cli doctor: unexpected argument '" << args.first() << "'\n\n" << DoctorUsageText();
        return kUsageError;
    }
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    out << shell::SystemCheckText(report);
    return shell::SystemCheckExitCode(report);
}

} // namespace cli
