// SAPI mark-up to SSML: what espeak-ng is given, and positions mapped back.
#include "platform/espeak/sapi_markup.h"

#include <gtest/gtest.h>

using platform::espeak::SapiToSsml;

namespace {
// The original position of the SSML character at the first place `needle` appears.
int OriginOf(const platform::espeak::SsmlText &t, const QString &needle)
{
    return t.originalPosition(int(t.ssml.indexOf(needle)));
}
} // namespace

TEST(SapiMarkup, TagsBecomeSsmlCaseInsensitively)
{
    struct Row { const char *sapi; const char *ssml; };
    const Row rows[] = {
        {"plain", "<speak>plain</speak>"},
        {"<pitch middle=\"5\">a</pitch>", "<speak><prosody pitch=\"+25%\">a</prosody></speak>"},
        {"<PITCH ABSMIDDLE='-10'>a</PITCH>", "<speak><prosody pitch=\"-50%\">a</prosody></speak>"},
        {"<rate speed=\"10\">a</rate>", "<speak><prosody rate=\"300%\">a</prosody></speak>"},
        {"<Rate AbsSpeed=\"-10\">a</Rate>", "<speak><prosody rate=\"33%\">a</prosody></speak>"},
        {"<volume level=\"40\">a</volume>", "<speak><prosody volume=\"40%\">a</prosody></speak>"},
        {"<emph>a</emph>", "<speak><emphasis>a</emphasis></speak>"},
        {"a<silence msec=\"300\"/>b", "<speak>a<break time=\"300ms\"/>b</speak>"},
        {"<spell>ab</spell>", "<speak><say-as interpret-as=\"characters\">ab</say-as></speak>"},
        {"<voice required=\"Gender=Female;Name=English (America)\">a</voice>",
         "<speak><voice name=\"English (America)\">a</voice></speak>"},
        {"<xml version=\"1.0\">\r\n<SAPI>x</SAPI>\r\n</xml>", "<speak>\r\nx\r\n</speak>"},
        {"<bogus attr=1>a</bogus>", "<speak>a</speak>"},
        {"1 < 2 & 3", "<speak>1 &lt; 2 &amp; 3</speak>"},
        {"a &amp; b", "<speak>a &amp; b</speak>"},
        {"<rate speed=\"5\"/>rest", "<speak><prosody rate=\"173%\">rest</prosody></speak>"},
        {"<emph><pitch middle=\"1\">a</emph>b", "<speak><emphasis><prosody pitch=\"+5%\">a</prosody></emphasis>b</speak>"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(SapiToSsml(QString::fromUtf8(r.sapi)).ssml, QString::fromUtf8(r.ssml)) << r.sapi;
}

TEST(SapiMarkup, PositionsCountTheOriginalWithItsTags)
{
    const QString original = QStringLiteral("<PITCH MIDDLE=\"5\">Hello <EMPH>big</EMPH> world</PITCH>");
    const auto t = SapiToSsml(original);
    EXPECT_EQ(OriginOf(t, QStringLiteral("Hello")), original.indexOf(QStringLiteral("Hello")));
    EXPECT_EQ(OriginOf(t, QStringLiteral("big")), original.indexOf(QStringLiteral("big")));
    EXPECT_EQ(OriginOf(t, QStringLiteral("world")), original.indexOf(QStringLiteral("world")));
    const int worldAt = int(t.ssml.indexOf(QStringLiteral("world")));
    EXPECT_EQ(t.originalLength(worldAt, 5), 5);
}

TEST(SapiMarkup, EscapedCharactersMapToTheirOneOriginal)
{
    const auto t = SapiToSsml(QStringLiteral("a & b"));
    const int amp = int(t.ssml.indexOf(QStringLiteral("&amp;")));
    // espeak-ng reports the entity at its last character; it is the one "&" of the text.
    EXPECT_EQ(t.originalPosition(amp + 4), 2);
    EXPECT_EQ(t.originalLength(amp, 5), 1);
    EXPECT_EQ(OriginOf(t, QStringLiteral("b")), 4);
}

TEST(SapiMarkup, SpansOfTheClosingMarkupStayInsideTheOriginal)
{
    // Found by fuzzing: the closing tags map to the end, one behind the last character.
    EXPECT_EQ(SapiToSsml(QString()).originalLength(0, 5), 0);
    const QString original = QStringLiteral("<EMPH>hi</EMPH>");
    const auto t = SapiToSsml(original);
    const int hi = int(t.ssml.indexOf(QStringLiteral("hi")));
    EXPECT_LE(t.originalPosition(hi) + t.originalLength(hi, int(t.ssml.size()) - hi), original.size());
}
