#pragma once
// sonamark-cli: the headless front end over the macro engine.
#include <QList>
#include <QStringList>
#include <QTextStream>

namespace cli {

enum ExitCode { kExitClean = 0, kExitReported = 1, kExitUsage = 2, kExitFailure = 3 };

// Runs the command line (without the program name). Reports go to out exactly as the
// report windows would show them; keystrokes, messages and diagnostics go to err.
int RunCli(const QStringList &args, QTextStream &out, QTextStream &err);

// A command of sonamark-cli and its one-line summary.
struct CliCommand {
    const char *name;
    const char *summary;
};
// Every command, in the order --help lists them.
const QList<CliCommand> &CliCommands();

// sonamark-cli --help: the commands and the help options.
QString UsageText();
// sonamark-cli run --help.
QString RunUsageText();

} // namespace cli
