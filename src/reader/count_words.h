#pragma once
// CountWords: the word count of the Edit menu and of printing.
#include <QString>

namespace reader {

// Runs of characters from "A" to "z" in character order (the six signs between "Z" and
// "a" included); anything else, digits and apostrophes too, ends a word.
int CountWords(const QString &text);

} // namespace reader
