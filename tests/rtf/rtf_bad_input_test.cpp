// Truncated, malformed and hostile RTF: never a crash or hang, and a clear result.
#include "rtf_test_data.h"

#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"

#include <gtest/gtest.h>

using namespace reader;
using rtftest::ParagraphTexts;

TEST(RtfBadInput, BytesThatAreNotRtfGiveAnEmptyDocumentAndTheMessage)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("plain text"), QByteArray("{\\rt"),
                                    QByteArray("\x89PNG\r\n\x1a\n", 8), QByteArray("{\\urtf1 x}")}) {
        QString error;
        EXPECT_TRUE(ReadRtf(bytes, &error).paragraphs.isEmpty());
        EXPECT_EQ(error, QString::fromLatin1(kRtfNotRtfMessage));
    }
}

TEST(RtfBadInput, LeadingBlanksAndAByteOrderMarkAreAccepted)
{
    QString error;
    EXPECT_EQ(ParagraphTexts(ReadRtf("\xEF\xBB\xBF \r\n{\\rtf1 ok}", &error)),
              QStringList{QStringLiteral("ok")});
    EXPECT_EQ(error, QString());
}

TEST(RtfBadInput, ATruncatedFileKeepsWhatWasReadAndSaysSo)
{
    const QByteArray whole = rtftest::DataFile("wordpad_bullets.rtf");
    const qsizetype cut = whole.indexOf("Butter") + 3;
    QString error;
    const RichDocument document = ReadRtf(whole.left(cut), &error);
    EXPECT_EQ(error, QString::fromLatin1(kRtfTruncatedMessage));
    const QStringList texts = ParagraphTexts(document);
    ASSERT_EQ(texts.size(), 4);
    EXPECT_EQ(texts[2], QStringLiteral("Bread"));
    EXPECT_EQ(texts[3], QStringLiteral("But"));
    EXPECT_TRUE(document.paragraphs[3].format.bullet);
}

TEST(RtfBadInput, EveryPrefixOfARealFileReadsWithoutFault)
{
    const QByteArray whole = rtftest::DataFile("word_lists_fields.rtf");
    ASSERT_FALSE(whole.isEmpty());
    const qsizetype end = whole.lastIndexOf('}');
    for (qsizetype length = 0; length < end; ++length) {
        QString error;
        const RichDocument document = ReadRtf(whole.left(length), &error);
        ASSERT_FALSE(error.isEmpty()) << "prefix of " << length << " bytes";
        ASSERT_LE(document.plainText().size(), length);
    }
}

TEST(RtfBadInput, DeepNestingIsSkippedWithoutExhaustingTheStack)
{
    const int depth = 1'000'000;
    QByteArray bytes = "{\\rtf1 before";
    bytes += QByteArray(depth, '{');
    bytes += "deep";
    bytes += QByteArray(depth, '}');
    bytes += "after}";
    QString error;
    const RichDocument document = ReadRtf(bytes, &error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(ParagraphTexts(document), QStringList{QStringLiteral("beforeafter")});
}

TEST(RtfBadInput, TextWithinTheDepthLimitIsStillRead)
{
    QByteArray bytes = "{\\rtf1 ";
    bytes += QByteArray(kMaxRtfGroupDepth - 2, '{');
    bytes += "x";
    bytes += QByteArray(kMaxRtfGroupDepth - 2, '}');
    bytes += "}";
    EXPECT_EQ(ParagraphTexts(ReadRtf(bytes)), QStringList{QStringLiteral("x")});
}

TEST(RtfBadInput, HugeNumbersAndLongWordsAreClampedNotOverflowed)
{
    QString error;
    const RichDocument document = ReadRtf(
        "{\\rtf1{\\colortbl;\\red99999999999\\green-5\\blue300;}\\cf1\\fs99999999999999"
        "\\li-2147483649\\uc1\\u99999999 x"
        "\\averyveryveryverylongcontrolwordthatgoesonandonandonandon12 y\\bin99999999999 }",
        &error);
    EXPECT_EQ(error, QString::fromLatin1(kRtfTruncatedMessage));  // \bin ate the final brace
    ASSERT_EQ(document.paragraphs.size(), 1);
    const RichParagraph &paragraph = document.paragraphs[0];
    EXPECT_EQ(paragraph.text(), QStringLiteral("y"));  // x was the \u's fallback
    EXPECT_EQ(paragraph.runs[0].format.color, std::optional<quint32>(0xFF00FF));
    EXPECT_GT(paragraph.runs[0].format.pointSize, 0);
    EXPECT_EQ(paragraph.format.leftIndent, INT_MIN);
}

TEST(RtfBadInput, StrayClosingBracesAndTextAfterTheEndAreIgnored)
{
    QString error;
    EXPECT_EQ(ParagraphTexts(ReadRtf("{\\rtf1 one} two}}} {three", &error)),
              QStringList{QStringLiteral("one")});
    EXPECT_EQ(error, QString());
}

TEST(RtfBadInput, ColourAndFontIndexesOutsideTheirTablesFallBackToDefaults)
{
    const RichDocument document =
        ReadRtf("{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red1\\green2\\blue3;}\\f7\\cf9 x\\cf-3\\f0 y}");
    ASSERT_EQ(document.paragraphs.size(), 1);
    const QList<TextRun> &runs = document.paragraphs[0].runs;
    ASSERT_EQ(runs.size(), 2);
    EXPECT_EQ(runs[0].format.family, QString());
    EXPECT_EQ(runs[0].format.color, std::nullopt);
    EXPECT_EQ(runs[1].format.family, QStringLiteral("Arial"));
}

TEST(RtfBadInput, LoneSurrogatesBecomeReplacementCharacters)
{
    const RichDocument document = ReadRtf("{\\rtf1 a\\u-10179?b\\u-8704?c}");
    EXPECT_EQ(ParagraphTexts(document), QStringList{QString::fromUtf8("a\uFFFDb\uFFFDc")});
}

TEST(RtfBadInput, ControlBytesAndNulsInTextAreDropped)
{
    const RichDocument document = ReadRtf(QByteArray("{\\rtf1 a\0b\x01\x1f" "c}", 14));
    EXPECT_EQ(ParagraphTexts(document), QStringList{QStringLiteral("abc")});
}

TEST(RtfBadInput, AParagraphSeparatorInTheTextIsALineBreakAndSurvivesARoundTrip)
{
    const RichDocument document = ReadRtf("{\\rtf1 a\\u8233?b\\par c}");
    EXPECT_EQ(ParagraphTexts(document), (QStringList{QStringLiteral("a\u2028b"), QStringLiteral("c")}));
    EXPECT_EQ(ReadRtf(WriteRtf(document)), document);

    const RichDocument found = ReadRtf(rtftest::DataFile("fuzz_paragraph_separator.rtf"));
    ASSERT_FALSE(found.paragraphs.isEmpty());
    EXPECT_EQ(ReadRtf(WriteRtf(found)), found);
}
