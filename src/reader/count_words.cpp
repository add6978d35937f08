#include "reader/count_words.h"

namespace reader {

int CountWords(const QString &text)
{
    int words = 0;
    bool inWord = false;
    for (const QChar c : text) {
        const bool wordChar = c >= QLatin1Char('A') && c <= QLatin1Char('z');
        if (wordChar && !inWord)
            ++words;
        inWord = wordChar;
    }
    return words;
}

} // namespace reader
