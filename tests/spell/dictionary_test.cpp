// The choice of dictionary, and the Hunspell adapter on sound, damaged and 8-bit
// dictionaries.
#include "platform/hunspell/hunspell_checker.h"
#include "spell/dictionary_choice.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ChoiceCase {
    const char *name;
    QStringList installed;
    const char *voice;
    const char *locale;
    const char *chosen;
};

class Choice : public ::testing::TestWithParam<ChoiceCase> {};

TEST_P(Choice, FollowsVoiceThenLocaleThenAmericanEnglish)
{
    const ChoiceCase &c = GetParam();
    EXPECT_EQ(spell::ChooseDictionary(c.installed, QLatin1String(c.voice), QLatin1String(c.locale)),
              QLatin1String(c.chosen));
}

const QStringList kSome{"de_AT", "de_DE", "en_GB", "en_US", "fr"};

INSTANTIATE_TEST_SUITE_P(
    Table, Choice,
    ::testing::Values(
        ChoiceCase{"VoiceLanguage", kSome, "German", "en_US.UTF-8", "de_DE"},
        ChoiceCase{"VoiceTerritory", kSome, "English (Great Britain)", "de_DE", "en_GB"},
        ChoiceCase{"VoiceAmerica", kSome, "English (America, New York City)", "en_GB", "en_US"},
        ChoiceCase{"VoiceWithoutTerritoryTakesLocaleTerritory", kSome, "German", "de_AT", "de_AT"},
        ChoiceCase{"VoiceLanguageWithoutTerritoryDictionary", kSome, "French (Belgium)", "C", "fr"},
        ChoiceCase{"VoiceWithoutDictionaryFallsToLocale", kSome, "Spanish (Spain)", "de_AT.UTF-8", "de_AT"},
        ChoiceCase{"LocaleLanguageOnly", kSome, "", "de_CH", "de_DE"},
        ChoiceCase{"NothingMatchesAmericanEnglish", kSome, "Welsh", "pl_PL", "en_US"},
        ChoiceCase{"CLocale", kSome, "", "C", "en_US"},
        ChoiceCase{"NoAmericanEnglishTheFirst", QStringList{"de_DE", "fr"}, "", "pl_PL", "de_DE"},
        ChoiceCase{"NoneInstalled", QStringList{}, "German", "de_DE", ""}),
    [](const ::testing::TestParamInfo<ChoiceCase> &info) { return std::string(info.param.name); });

TEST(DictionaryName, NamesLanguageTerritoryAndCode)
{
    EXPECT_EQ(spell::DictionaryDisplayName(QStringLiteral("en_US")), QStringLiteral("English (United States) - en_US"));
    EXPECT_EQ(spell::DictionaryDisplayName(QStringLiteral("fr")), QStringLiteral("French - fr"));
}

class HunspellFolder : public ::testing::Test {
protected:
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile f(dir.filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QTemporaryDir dir;
};

TEST_F(HunspellFolder, EightBitDictionaryIsReadThroughItsEncoding)
{
    write(QStringLiteral("xx_LA.aff"), "SET ISO8859-1\nTRY \xe9\xefaecfinv\n");
    write(QStringLiteral("xx_LA.dic"), "2\ncaf\xe9\nna\xefve\n");
    platform::HunspellChecker c(QStringList{dir.path()});
    EXPECT_EQ(c.dictionaries(), QStringList{QStringLiteral("xx_LA")});
    QString error;
    ASSERT_TRUE(c.useDictionary(QStringLiteral("xx_LA"), &error)) << error.toStdString();
    EXPECT_TRUE(c.isCorrect(QStringLiteral("café")));
    EXPECT_TRUE(c.isCorrect(QStringLiteral("naïve")));
    EXPECT_FALSE(c.isCorrect(QStringLiteral("cafe")));
    EXPECT_TRUE(c.suggestions(QStringLiteral("cafe")).contains(QStringLiteral("café")));
    EXPECT_TRUE(c.suggestions(QStringLiteral("café")).isEmpty());  // known: none
    EXPECT_FALSE(c.isCorrect(QStringLiteral("日本")));               // outside its alphabet
    EXPECT_TRUE(c.suggestions(QStringLiteral("日本")).isEmpty());
}

TEST_F(HunspellFolder, WrongWordCountIsDamageAndTheDictionaryInUseStays)
{
    write(QStringLiteral("good.aff"), "SET UTF-8\n");
    write(QStringLiteral("good.dic"), "1\nhello\n");
    write(QStringLiteral("huge.aff"), "SET UTF-8\n");
    write(QStringLiteral("huge.dic"), "999999999999\nhello\n");
    write(QStringLiteral("text.aff"), "SET UTF-8\n");
    write(QStringLiteral("text.dic"), "hello\nworld\n");
    write(QStringLiteral("bin.aff"), QByteArray("SET UTF-8\n\0\0\x01\x02", 14));
    write(QStringLiteral("bin.dic"), "1\nhello\n");
    write(QStringLiteral("enc.aff"), "SET NO-SUCH-ENCODING-9\n");
    write(QStringLiteral("enc.dic"), "1\nhello\n");
    platform::HunspellChecker c(QStringList{dir.path()});
    QString error;
    ASSERT_TRUE(c.useDictionary(QStringLiteral("good"), &error));
    for (const char *bad : {"huge", "text", "bin", "enc", "missing"}) {
        error.clear();
        EXPECT_FALSE(c.useDictionary(QLatin1String(bad), &error)) << bad;
        EXPECT_FALSE(error.isEmpty()) << bad;
        EXPECT_EQ(c.dictionary(), QStringLiteral("good")) << bad;
        EXPECT_TRUE(c.isCorrect(QStringLiteral("hello"))) << bad;
    }
}

TEST_F(HunspellFolder, UnreadableFileGivesAMessage)
{
    write(QStringLiteral("locked.dic"), "1\nhello\n");
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("locked.aff")));  // a folder cannot be read as a file
    platform::HunspellChecker c(QStringList{dir.path()});
    QString error;
    EXPECT_FALSE(c.useDictionary(QStringLiteral("locked"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("locked.aff"))) << error.toStdString();
}

TEST(Hunspell, LongAndBrokenWordsAreUnknownWithoutSuggestions)
{
    platform::HunspellChecker c;
    if (!c.useDictionary(QStringLiteral("en_US"), nullptr))
        GTEST_SKIP() << "hunspell-en-us is not installed";
    const QString longWord(10000, QLatin1Char('a'));
    EXPECT_FALSE(c.isCorrect(longWord));
    EXPECT_TRUE(c.suggestions(longWord).isEmpty());
    const QString loneSurrogate = QStringLiteral("ab") + QChar(0xD800) + QStringLiteral("cd");
    EXPECT_FALSE(c.isCorrect(loneSurrogate));
    c.suggestions(loneSurrogate);  // answers, whatever it finds
    EXPECT_TRUE(c.isCorrect(QStringLiteral("hello")));
    EXPECT_TRUE(c.isCorrect(QString()));
    EXPECT_FALSE(c.useDictionary(QStringLiteral("../en_US"), nullptr));
}

} // namespace
