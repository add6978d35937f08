#pragma once
// sonamark-cli find: the file finder's search on the command line.
#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QTextStream>

namespace cli {

bool IsFindCommand(const QList<QByteArray> &args);
// args: the command line without the program name, as the bytes it was given ("find",
// options, FOLDER, PATTERN). Writes one full path a line to out, as the file system
// spells it. Exit status: 0 found, 1 none found, 2 bad arguments.
int RunFind(const QList<QByteArray> &args, QIODevice &out, QTextStream &err);
QString FindUsageText();

} // namespace cli
