#pragma once
// The words of a text that the dictionary does not know, with their places and
// suggestions: what `sonamark-cli spell` prints. Each distinct word is looked up once.
#include "platform/spell_checker.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace spell {

struct UnknownWord {
    qsizetype line = 1;    // 1-based; lines end at "\n" (CR LF included)
    qsizetype column = 1;  // 1-based, in characters (code points) of the line
    QString word;
    QStringList suggestions;  // best first
};

// Calls report for every unknown word of text, in text order; returns how many there were.
// Suggestions are asked for the first suggestLimit distinct unknown words only (each
// costs the dictionary milliseconds); -1: for all of them.
qsizetype FindUnknownWords(const QString &text, platform::SpellChecker &checker,
                           const std::function<void(const UnknownWord &)> &report, qsizetype suggestLimit = -1);

// "line:column<TAB>word<TAB>suggestion, suggestion, ..."
QString UnknownWordLine(const UnknownWord &unknown);

} // namespace spell
