#pragma once
// sonamark-cli's help: --help, -h, help [COMMAND], COMMAND --help, and --help-man [FILE],
// the manual page built from the same texts.
#include <QStringList>
#include <QTextStream>
#include <optional>

namespace cli {

// The --help text of a command, or nothing for a name that is no command.
std::optional<QString> CommandUsageText(const QString &command);

// The manual page sonamark-cli(1) in roff: the overview, then every command's --help.
QString CliManPage();

// Answers the help requests above and returns the exit status; nothing when args are not
// a help request. A help request for an unknown command is a usage error (2).
std::optional<int> RunHelp(const QStringList &args, QTextStream &out, QTextStream &err);

} // namespace cli
