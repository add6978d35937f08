#pragma once
// Which installed dictionary the spell checker uses: the one of the reader's voice's
// language, else the one of the system's locale, else American English.
#include <QString>
#include <QStringList>

namespace spell {

// installed: language codes of the installed dictionaries ("en_US", "de_DE", "fr").
// voiceName: the reader's voice as its list shows it ("German", "English (America)");
// systemLocale: a locale name ("de_AT", "C"). "" when nothing is installed.
QString ChooseDictionary(const QStringList &installed, const QString &voiceName, const QString &systemLocale);

// "English (United States) - en_US": the dictionary as the spell window names it.
QString DictionaryDisplayName(const QString &language);

} // namespace spell
