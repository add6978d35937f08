#include "spell/dictionary_choice.h"

#include <QLocale>

namespace spell {

namespace {

const QString kFallback = QStringLiteral("en_US");

// Territories as espeak-ng's voice names write them, where Qt names them otherwise.
QLocale::Territory VoiceTerritory(const QString &name)
{
    if (name.compare(QLatin1String("America"), Qt::CaseInsensitive) == 0)
        return QLocale::UnitedStates;
    if (name.compare(QLatin1String("Great Britain"), Qt::CaseInsensitive) == 0)
        return QLocale::UnitedKingdom;
    for (int t = 1; t <= int(QLocale::LastTerritory); ++t) {
        const auto territory = QLocale::Territory(t);
        if (QLocale::territoryToString(territory).compare(name, Qt::CaseInsensitive) == 0)
            return territory;
    }
    return QLocale::AnyTerritory;
}

QLocale::Language LanguageNamed(const QString &name)
{
    for (int l = 2; l <= int(QLocale::LastLanguage); ++l) {
        const auto language = QLocale::Language(l);
        if (QLocale::languageToString(language).compare(name, Qt::CaseInsensitive) == 0)
            return language;
    }
    return QLocale::AnyLanguage;
}

// A code's locale; "fr" stands for the language without a territory.
QLocale LocaleOf(const QString &code) { return QLocale(code); }

bool HasTerritory(const QString &code) { return code.contains(QLatin1Char('_')); }

// The dictionary of language among installed, preferring territory, then the language's
// main territory, then one without a territory, then the first.
QString OfLanguage(const QStringList &installed, QLocale::Language language, QLocale::Territory territory)
{
    if (language == QLocale::AnyLanguage || language == QLocale::C)
        return {};
    QStringList same;
    for (const QString &code : installed)
        if (LocaleOf(code).language() == language)
            same << code;
    if (same.isEmpty())
        return {};
    if (territory != QLocale::AnyTerritory)
        for (const QString &code : same)
            if (HasTerritory(code) && LocaleOf(code).territory() == territory)
                return code;
    const QLocale::Territory main = QLocale(language).territory();
    for (const QString &code : same)
        if (HasTerritory(code) && LocaleOf(code).territory() == main)
            return code;
    for (const QString &code : same)
        if (!HasTerritory(code))
            return code;
    return same.first();
}

} // namespace

QString ChooseDictionary(const QStringList &installed, const QString &voiceName, const QString &systemLocale)
{
    if (installed.isEmpty())
        return {};
    const QString localeName = systemLocale.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('@'), 0, 0);
    const QString voice = voiceName.trimmed();
    if (!voice.isEmpty()) {
        const qsizetype open = voice.indexOf(QLatin1Char('('));
        const QString languageName = (open < 0 ? voice : voice.left(open)).trimmed();
        QLocale::Territory territory = QLocale::AnyTerritory;
        if (open >= 0) {
            // "English (America, New York City)": the first part names the territory.
            QString inside = voice.mid(open + 1);
            inside.truncate(inside.indexOf(QLatin1Char(')')) < 0 ? inside.size() : inside.indexOf(QLatin1Char(')')));
            territory = VoiceTerritory(inside.section(QLatin1Char(','), 0, 0).trimmed());
        }
        const QLocale::Language language = LanguageNamed(languageName);
        // A voice that names no territory takes the user's, when the user speaks its language.
        const QLocale user(localeName);
        if (territory == QLocale::AnyTerritory && user.language() == language)
            territory = user.territory();
        const QString chosen = OfLanguage(installed, language, territory);
        if (!chosen.isEmpty())
            return chosen;
    }
    if (installed.contains(localeName))
        return localeName;
    if (!localeName.isEmpty() && localeName != QLatin1String("C") && localeName != QLatin1String("POSIX")) {
        const QLocale locale(localeName);
        const QString chosen = OfLanguage(installed, locale.language(), locale.territory());
        if (!chosen.isEmpty())
            return chosen;
    }
    return installed.contains(kFallback) ? kFallback : installed.first();
}

QString DictionaryDisplayName(const QString &language)
{
    const QLocale locale(language);
    if (locale.language() == QLocale::C)
        return language;
    QString name = QLocale::languageToString(locale.language());
    if (HasTerritory(language))
        name += QStringLiteral(" (%1)").arg(QLocale::territoryToString(locale.territory()));
    return name + QStringLiteral(" - ") + language;
}

} // namespace spell
