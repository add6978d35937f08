// sonamark-cli: runs macros of a Hotkeys file without a display.
#include "cli/doctor_command.h"
#include "cli/find_command.h"
#include "cli/help_command.h"
#include "cli/run_command.h"
#include "cli/speech_commands.h"
#include "platform/linux/linux_system_probes.h"
#include "shell/data_folder.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

int main(int argc, char **argv)
{
    QList<QByteArray> rawArgs;  // as given: folder names need not be UTF-8
    QStringList helpArgs;
    for (int i = 1; i < argc; ++i) {
        rawArgs << QByteArray(argv[i]);
        helpArgs << QString::fromLocal8Bit(argv[i]);
    }
    {
        QTextStream out(stdout);
        QTextStream err(stderr);
        if (const std::optional<int> status = cli::RunHelp(helpArgs, out, err))
            return *status;
    }
    if (cli::IsFindCommand(rawArgs)) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly))
            return 2;
        QTextStream err(stderr);
        const int status = cli::RunFind(rawArgs, out, err);
        out.close();
        err.flush();
        return status;
    }
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    if (!args.isEmpty() && args.first() == QLatin1String(cli::kDoctorCommand)) {
        // The report says all there is to say; the libraries' own warnings on the way
        // (no display, no sound server) would only repeat it less clearly.
        if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        platform::LinuxSystemProbes probes(shell::DataFolderPath());
        const int status = cli::RunDoctor(args.mid(1), probes, out, err);
        out.flush();
        err.flush();
        return status;
    }
    const int status = cli::IsSpeechCommand(args) ? cli::RunSpeechCommand(args, out, err)
                                                  : cli::RunCli(args, out, err);
    out.flush();
    err.flush();
    return status;
}
