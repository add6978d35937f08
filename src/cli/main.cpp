// sonamark-cli: runs macros of a Hotkeys file without a display.
#include "cli/find_command.h"
#include "cli/run_command.h"
#include "cli/speech_commands.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

int main(int argc, char **argv)
{
    QList<QByteArray> rawArgs;  // as given: folder names need not be UTF-8
    for (int i = 1; i < argc; ++i)
        rawArgs << QByteArray(argv[i]);
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
    const int status = cli::IsSpeechCommand(args) ? cli::RunSpeechCommand(args, out, err)
                                                  : cli::RunCli(args, out, err);
    out.flush();
    err.flush();
    return status;
}
