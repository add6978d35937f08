// RTF written by word processors: LibreOffice Writer (generated), including its re-save of a
// document we wrote, and the shape TextEdit writes (by hand).
#include "rtf_test_data.h"

#include "reader/rtf_reader.h"

#include <gtest/gtest.h>

using namespace reader;
using rtftest::DataFile;
using rtftest::ParagraphTexts;
using rtftest::RunWith;

TEST(RtfWordProcessor, LibreOfficeFileTakesSizesFromItsStyleSheet)
{
    QString error;
    const RichDocument document = ReadRtf(DataFile("libreoffice_formatting.rtf"), &error);
    EXPECT_EQ(error, QString());
    ASSERT_EQ(ParagraphTexts(document),
              (QStringList{QStringLiteral("Centred bold title"),
                           QStringLiteral("Plain, italic, underlined, struck and red words."),
                           QStringLiteral("Right aligned"),
                           QStringLiteral("Justified and indented one inch from the left and half an inch "
                                          "from the right, long enough to wrap over more than one line in "
                                          "the page."),
                           QStringLiteral("First bullet"),
                           QString::fromUtf8("Second bullet with ünïcödé € and 日本語"),
                           QStringLiteral("First line indented half an inch.")}));

    const RichParagraph &title = document.paragraphs[0];
    EXPECT_EQ(title.format.alignment, Alignment::Center);
    EXPECT_EQ(title.runs[0].format.family, QStringLiteral("Liberation Serif"));
    EXPECT_EQ(title.runs[0].format.pointSize, 18);
    EXPECT_TRUE(title.runs[0].format.bold);

    const RichParagraph &words = document.paragraphs[1];
    // The size is given only by the paragraph style.
    EXPECT_EQ(words.runs[0].format.pointSize, 12);
    EXPECT_EQ(words.runs[0].format.family, QStringLiteral("Liberation Sans"));
    EXPECT_TRUE(RunWith(words, QStringLiteral("italic"))->format.italic);
    EXPECT_TRUE(RunWith(words, QStringLiteral("underlined"))->format.underline);
    EXPECT_TRUE(RunWith(words, QStringLiteral("struck"))->format.strike);
    EXPECT_EQ(RunWith(words, QStringLiteral("red"))->format.color, std::optional<quint32>(0xC00000));
    EXPECT_EQ(RunWith(words, QStringLiteral("Plain"))->format.color, std::nullopt);

    EXPECT_EQ(document.paragraphs[2].format.alignment, Alignment::Right);
    const ParagraphFormat &justified = document.paragraphs[3].format;
    EXPECT_EQ(justified.alignment, Alignment::Justify);
    EXPECT_EQ(justified.leftIndent, 1440);
    EXPECT_EQ(justified.rightIndent, 720);
    EXPECT_TRUE(document.paragraphs[4].format.bullet);
    EXPECT_TRUE(document.paragraphs[5].format.bullet);
    EXPECT_FALSE(document.paragraphs[6].format.bullet);
    EXPECT_EQ(document.paragraphs[6].format.firstLineIndent, 720);
}

TEST(RtfWordProcessor, OurDocumentResavedByLibreOfficeKeepsTextAndEveryFormat)
{
    QString error;
    const RichDocument resaved = ReadRtf(DataFile("libreoffice_resaved.rtf"), &error);
    EXPECT_EQ(error, QString());
    const RichDocument original = rtftest::SampleDocument();
    ASSERT_EQ(ParagraphTexts(resaved), ParagraphTexts(original));
    for (qsizetype i = 0; i < original.paragraphs.size(); ++i) {
        SCOPED_TRACE(i);
        // The paragraph ends take LibreOffice's default style; the text is what counts.
        EXPECT_EQ(resaved.paragraphs[i].format, original.paragraphs[i].format);
        EXPECT_EQ(resaved.paragraphs[i].runs, original.paragraphs[i].runs);
    }
}

TEST(RtfWordProcessor, TextEditFileWithBackslashLineEndsAndBareFontTable)
{
    QString error;
    const RichDocument document = ReadRtf(DataFile("textedit_cocoa.rtf"), &error);
    EXPECT_EQ(error, QString());
    ASSERT_EQ(ParagraphTexts(document),
              (QStringList{QStringLiteral("Notes from TextEdit"),
                           QString::fromUtf8("A line with red and slanted words, naïve “quotes”."),
                           QStringLiteral("First item"), QStringLiteral("Second item"),
                           QStringLiteral("code(1);")}));
    EXPECT_EQ(document.paragraphs[0].format.alignment, Alignment::Center);
    EXPECT_EQ(document.paragraphs[0].runs[0].format.family, QStringLiteral("Helvetica-Bold"));
    EXPECT_EQ(document.paragraphs[0].runs[0].format.pointSize, 18);
    EXPECT_EQ(RunWith(document.paragraphs[1], QStringLiteral("red"))->format.color,
              std::optional<quint32>(0xFB0007));
    EXPECT_TRUE(RunWith(document.paragraphs[1], QStringLiteral("slanted"))->format.italic);
    EXPECT_TRUE(document.paragraphs[2].format.bullet);
    EXPECT_TRUE(document.paragraphs[3].format.bullet);
    EXPECT_EQ(document.paragraphs[3].format.firstLineIndent, -720);
    EXPECT_FALSE(document.paragraphs[4].format.bullet);
    EXPECT_EQ(document.paragraphs[4].runs[0].format.family, QStringLiteral("Menlo-Regular"));
}
