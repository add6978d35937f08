// sonamark-cli: runs macros of a Hotkeys file without a display.
#include "cli/run_command.h"
#include "cli/speech_commands.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char **argv)
{
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
