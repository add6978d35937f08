#pragma once
// sonamark-cli spell [--dict LANG] FILE|-: the words of a text that the dictionary does
// not know, one a line, "line:column<TAB>word<TAB>suggestion, suggestion, ..." in text
// order. Exit status 0 when every word is known, 1 when some are not, 2 for bad
// arguments, an unreadable or binary file, or a missing dictionary.
#include <QStringList>
#include <QTextStream>

namespace cli {

// The text of spell --help.
QString SpellUsageText();

int RunSpell(const QStringList &args, QTextStream &out, QTextStream &err);

} // namespace cli
