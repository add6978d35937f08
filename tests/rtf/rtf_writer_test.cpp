// Writing the model as RTF, and reading that back to the same model.
#include "rtf_test_data.h"

#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"

#include <gtest/gtest.h>

using namespace reader;

namespace {

CharFormat Format(const QString &family, double size)
{
    CharFormat format;
    format.family = family;
    format.pointSize = size;
    return format;
}

RichParagraph Paragraph(const QList<TextRun> &runs, const ParagraphFormat &format = {})
{
    RichParagraph paragraph;
    paragraph.format = format;
    paragraph.runs = runs;
    paragraph.markFormat = runs.isEmpty() ? CharFormat() : runs.last().format;
    return paragraph;
}

RichDocument RoundTrip(const RichDocument &document, QString *error)
{
    return ReadRtf(WriteRtf(document), error);
}

} // namespace

TEST(RtfWriter, EveryFormatOfTheModelSurvivesARoundTrip)
{
    const CharFormat plain = Format(QStringLiteral("DejaVu Sans"), 12);
    const CharFormat loud{QStringLiteral("Liberation Serif"), 20.5, true, true, true, true, 0x12AB34};
    CharFormat blue = plain, black = plain;
    blue.color = 0x0000FF;
    black.color = 0x000000;  // explicit black differs from the automatic colour
    const ParagraphFormat centred{
        .alignment = Alignment::Center, .leftIndent = 1440, .firstLineIndent = -360, .rightIndent = 720};
    const ParagraphFormat bullet{.leftIndent = 600, .firstLineIndent = -360, .bullet = true};

    RichDocument document;
    document.paragraphs << Paragraph({{QStringLiteral("Plain "), plain}, {QStringLiteral("loud"), loud}}, centred)
                        << Paragraph({{QStringLiteral("item one"), blue}}, bullet)
                        << Paragraph({{QStringLiteral("item two"), black}}, bullet)
                        << Paragraph({}, {.alignment = Alignment::Right})
                        << Paragraph({{QStringLiteral("end"), plain}}, {.alignment = Alignment::Justify});
    document.paragraphs[3].markFormat = loud;  // an empty line keeps its own size

    QString error = QStringLiteral("unset");
    EXPECT_EQ(RoundTrip(document, &error), document);
    EXPECT_EQ(error, QString());
}

TEST(RtfWriter, OutputIsSevenBitWithAHeaderAndTablesWordProcessorsExpect)
{
    CharFormat red = Format(QStringLiteral("Arial"), 10);
    red.color = 0xFF0000;
    RichDocument document;
    document.paragraphs << Paragraph({{QString::fromUtf8("é€"), red}});
    const QByteArray rtf = WriteRtf(document);

    EXPECT_TRUE(rtf.startsWith("{\\rtf1\\ansi\\ansicpg1252\\deff0"));
    EXPECT_TRUE(rtf.endsWith('}'));
    EXPECT_TRUE(rtf.contains("{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}}"));
    EXPECT_TRUE(rtf.contains("{\\colortbl;\\red255\\green0\\blue0;}"));
    // Non-ASCII as \uN with a Windows-1252 fallback byte for older readers.
    EXPECT_TRUE(rtf.contains("\\u233\\'e9\\u8364\\'80"));
    for (char c : rtf)
        ASSERT_LT(static_cast<unsigned char>(c), 0x80);
    EXPECT_EQ(rtf.count('{'), rtf.count('}'));
}

TEST(RtfWriter, EscapedTextAnEmptyDocumentAndOneEmptyParagraphSurviveARoundTrip)
{
    const QString text = QString::fromUtf8("{braces} back\\slash; semi\ttab ü € 日本 😀 ") + kLineBreak
        + QString::fromUtf8("next\u00A0line");
    RichDocument escaped, empty, blank;
    escaped.paragraphs << Paragraph({{text, Format(QStringLiteral("Font; with {odd} name"), 11)}});
    blank.paragraphs << RichParagraph();
    for (const auto &[name, document] : {std::pair{"escaped", &escaped}, {"empty", &empty}, {"blank", &blank}}) {
        SCOPED_TRACE(name);
        QString error = QStringLiteral("unset");
        EXPECT_EQ(RoundTrip(*document, &error), *document);
        EXPECT_EQ(error, QString());
    }
}

TEST(RtfWriter, HandWrittenFilesReadWriteReadToTheSameModel)
{
    for (const char *name : {"wordpad_bullets.rtf", "word_lists_fields.rtf", "code_pages.rtf"}) {
        SCOPED_TRACE(name);
        const RichDocument first = ReadRtf(rtftest::DataFile(name));
        ASSERT_FALSE(first.paragraphs.isEmpty());
        QString error;
        EXPECT_EQ(RoundTrip(first, &error), first);
        EXPECT_EQ(error, QString());
    }
}
