// sonamark-cli: runs macros of a Hotkeys file without a display.
#include "cli/run_command.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = cli::RunCli(app.arguments().mid(1), out, err);
    out.flush();
    err.flush();
    return status;
}
