#pragma once
// The SpellChecker port on libhunspell, with the system's dictionaries: pairs of
// LANG.aff and LANG.dic in the dictionary folders.
#include "platform/spell_checker.h"

#include <memory>

class Hunspell;

namespace platform {

class HunspellChecker : public SpellChecker {
public:
    // Dictionaries are looked for in folders, the first folder holding a language
    // winning; none given: DefaultFolders().
    explicit HunspellChecker(QStringList folders = {});
    ~HunspellChecker() override;
    HunspellChecker(const HunspellChecker &) = delete;
    HunspellChecker &operator=(const HunspellChecker &) = delete;

    // The folders of $DICPATH (colon-separated), then /usr/share/hunspell and
    // /usr/share/myspell/dicts.
    static QStringList DefaultFolders();

    QStringList dictionaries() const override;
    bool useDictionary(const QString &language, QString *error) override;
    QString dictionary() const override { return m_language; }
    bool isCorrect(const QString &word) override;
    QStringList suggestions(const QString &word) override;

private:
    struct Loaded;
    QStringList m_folders;
    std::unique_ptr<Loaded> m_loaded;
    QString m_language;
};

} // namespace platform
