#pragma once
// Port: the spelling dictionary the spell checker asks about words.
#include <QString>
#include <QStringList>

namespace platform {

class SpellChecker {
public:
    virtual ~SpellChecker() = default;

    // The installed dictionaries by language code ("en_US", "de_DE", "fr"), sorted.
    virtual QStringList dictionaries() const = 0;
    // Loads the dictionary of language (one of dictionaries()) for the calls below.
    // False, with *error saying why, when it is missing, unreadable or damaged; the
    // dictionary in use before stays in use.
    virtual bool useDictionary(const QString &language, QString *error) = 0;
    // The language of the dictionary in use; "" when none is loaded.
    virtual QString dictionary() const = 0;

    // True when the dictionary in use knows word (one word, no blanks around it).
    virtual bool isCorrect(const QString &word) = 0;
    // The dictionary's suggestions for word, best first; none for a word it knows.
    virtual QStringList suggestions(const QString &word) = 0;
};

} // namespace platform
