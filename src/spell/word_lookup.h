#pragma once
// What the word walk asks the dictionary, on the text of one walk step. Such a text is
// cut at blanks only: it may carry its leading blank, punctuation before the word, and
// further words behind a line end ("end.\r\nNext"). Every word in it is looked up on its
// own; suggestions are whole replacements for the text less its leading blank, so that
// Change keeps the punctuation and the line end around the word it corrects.
#include "platform/spell_checker.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace spell {

// A word inside a text: 0-based start and length.
struct WordSpan {
    qsizetype start = 0;
    qsizetype length = 0;
};

// The words of text, in order: runs of letters, marks and digits, with apostrophes and
// hyphens between them ("don't", "well-known"). Runs of digits alone are not words.
QList<WordSpan> FindWords(const QString &text);
// The same words handed to visit one by one, for texts too long to list.
void VisitWords(const QString &text, const std::function<void(const WordSpan &)> &visit);

// What the dictionary says of a step text, each word in it looked up once.
struct StepLookup {
    // One replacement per row, best first: the text less its leading blank with each
    // unknown word replaced by its k-th suggestion (its last one when it has fewer).
    // None when every word is known, or when the unknown ones have no suggestions.
    QStringList suggestions;
    bool allKnown = true;  // the dictionary knows every word of the text
};
StepLookup LookUpStep(platform::SpellChecker &checker, const QString &text);

} // namespace spell
