#pragma once
// sonamark-cli check and format: the checker's reports and the formatter, without the
// editor.
#include <QStringList>
#include <QTextStream>

namespace cli {

// check --hotkeys FILE (--macro NAME | --number N | --all). 0 clean, 1 errors, 2 usage.
int RunCheck(const QStringList &args, QTextStream &out, QTextStream &err);
// format --hotkeys FILE (--macro NAME | --number N) [--write]. 0 unchanged, 1 changed,
// 2 usage or a file that could not be written.
int RunFormat(const QStringList &args, QTextStream &out, QTextStream &err);

QString CheckUsageText();
QString FormatUsageText();

} // namespace cli
