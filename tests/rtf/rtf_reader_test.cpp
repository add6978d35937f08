// Reading RTF written by hand from the grammar and in the shapes word processors write.
#include "rtf_test_data.h"

#include "reader/rtf_reader.h"

#include <gtest/gtest.h>

using namespace reader;
using rtftest::DataFile;
using rtftest::ParagraphTexts;
using rtftest::RunWith;

namespace {

RichDocument Read(const char *rtf, QString *error = nullptr)
{
    return ReadRtf(QByteArray(rtf), error);
}

// A data file read without an error.
RichDocument ReadFile(const char *name)
{
    const QByteArray bytes = DataFile(name);
    EXPECT_FALSE(bytes.isEmpty()) << name;
    QString error;
    const RichDocument document = ReadRtf(bytes, &error);
    EXPECT_EQ(error, QString()) << name;
    return document;
}

} // namespace

TEST(RtfReader, MinimalDocumentIsOneParagraphWithoutError)
{
    QString error = QStringLiteral("unset");
    const RichDocument document = Read("{\\rtf1 Hello}", &error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(ParagraphTexts(document), QStringList{QStringLiteral("Hello")});
    EXPECT_EQ(document.paragraphs[0].runs[0].format, CharFormat());
}

TEST(RtfReader, WordPadFileKeepsFontsColoursAlignmentIndentsAndBullets)
{
    const RichDocument document = ReadFile("wordpad_bullets.rtf");
    ASSERT_EQ(ParagraphTexts(document),
              (QStringList{QString::fromUtf8("Café Menu"), QStringLiteral("Soup of the day"),
                           QStringLiteral("Bread"), QStringLiteral("Butter"),
                           QStringLiteral("old price new"),
                           QStringLiteral("Tab\tafter") + kLineBreak + QStringLiteral("second line")}));

    const RichParagraph &title = document.paragraphs[0];
    EXPECT_EQ(title.format.alignment, Alignment::Center);
    ASSERT_EQ(title.runs.size(), 1);
    EXPECT_EQ(title.runs[0].format, (CharFormat{QStringLiteral("Arial"), 16, true}));
    EXPECT_FALSE(title.markFormat.bold);  // \b0 came before the \par

    const RichParagraph &soup = document.paragraphs[1];
    EXPECT_EQ(soup.format.leftIndent, 720);
    EXPECT_EQ(soup.format.rightIndent, 360);
    EXPECT_EQ(soup.format.alignment, Alignment::Left);
    EXPECT_EQ(soup.runs[0].format, (CharFormat{QStringLiteral("Arial"), 10, false, true, false, false, 0xFF0000}));

    const RichParagraph &bread = document.paragraphs[2];
    EXPECT_TRUE(bread.format.bullet);
    EXPECT_EQ(bread.format.firstLineIndent, -720);
    EXPECT_EQ(bread.runs[0].format, (CharFormat{QStringLiteral("Times New Roman"), 12}));
    EXPECT_TRUE(document.paragraphs[3].format.bullet);  // \pn holds until the next \pard
    EXPECT_EQ(document.paragraphs[3].runs[0].format,
              (CharFormat{QStringLiteral("Times New Roman"), 12, false, false, true}));
    EXPECT_FALSE(document.paragraphs[4].format.bullet);

    const RichParagraph &price = document.paragraphs[4];
    EXPECT_EQ(price.format.alignment, Alignment::Right);
    ASSERT_NE(RunWith(price, QStringLiteral("old price")), nullptr);
    EXPECT_TRUE(RunWith(price, QStringLiteral("old price"))->format.strike);
    ASSERT_NE(RunWith(price, QStringLiteral("new")), nullptr);
    EXPECT_FALSE(RunWith(price, QStringLiteral("new"))->format.strike);
    EXPECT_EQ(RunWith(price, QStringLiteral("new"))->format.color, std::optional<quint32>(0x000080));
    EXPECT_EQ(document.paragraphs[5].format.alignment, Alignment::Justify);
}

TEST(RtfReader, WordFileSkipsHeadersTablesPicturesAndFieldCodes)
{
    const RichDocument document = ReadFile("word_lists_fields.rtf");
    ASSERT_EQ(ParagraphTexts(document),
              (QStringList{QStringLiteral("Shopping list"), QStringLiteral("Milk"),
                           QString::fromUtf8("Don’t forget € 5"),
                           QStringLiteral("See example.org and a picture  here.")}));

    const RichParagraph &heading = document.paragraphs[0];
    EXPECT_TRUE(heading.runs[0].format.bold);
    EXPECT_EQ(heading.runs[0].format.family, QStringLiteral("Calibri"));  // not its \falt
    EXPECT_EQ(heading.runs[0].format.pointSize, 11);
    EXPECT_FALSE(heading.format.bullet);

    EXPECT_TRUE(document.paragraphs[1].format.bullet);
    EXPECT_EQ(document.paragraphs[1].format.leftIndent, 720);
    EXPECT_EQ(document.paragraphs[1].format.firstLineIndent, -360);
    EXPECT_TRUE(document.paragraphs[2].format.bullet);
    EXPECT_FALSE(document.paragraphs[3].format.bullet);

    const TextRun *link = RunWith(document.paragraphs[3], QStringLiteral("example.org"));
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->text, QStringLiteral("example.org"));
    EXPECT_TRUE(link->format.underline);
    EXPECT_EQ(link->format.color, std::optional<quint32>(0x0000FF));
}

TEST(RtfReader, CodePageEscapesFollowTheDocumentAndTheFontCharacterSet)
{
    const RichDocument document = ReadFile("code_pages.rtf");
    ASSERT_EQ(ParagraphTexts(document),
              (QStringList{QString::fromUtf8("Привет, мир!"), QString::fromUtf8("日本語"),
                           QString::fromUtf8("αετα"), QString::fromUtf8("wide 你 and 好done"),
                           QString::fromUtf8("pair 😀 end")}));
    EXPECT_EQ(document.paragraphs[2].runs[0].format.family, QStringLiteral("Tahoma"));
}

TEST(RtfReader, TextOfEscapesBreaksSkippedDataAndCodePages)
{
    struct Row { const char *rtf; QStringList paragraphs; };
    const Row rows[] = {
        {"{\\rtf1 a\\{b\\}c\\\\d\\~e\\_f\\-g\\emdash\\endash\\bullet\\lquote x\\rquote\\ldblquote y\\rdblquote}",
         {QString::fromUtf8("a{b}c\\d\u00A0e\u2011fg—–•‘x’“y”")}},
        // \uc2: the two \'hh bytes after \u are the fallback; a group end cancels the rest.
        {"{\\rtf1\\uc2 x\\u233\\'65\\'27y{\\u233}z}", {QString::fromUtf8("xéyéz")}},
        {"{\\rtf1 one\\par two\\par}", {QStringLiteral("one"), QStringLiteral("two")}},
        {"{\\rtf1 one\\par\\par}", {QStringLiteral("one"), QString()}},
        {"{\\rtf1 one\\par two}", {QStringLiteral("one"), QStringLiteral("two")}},
        {"{\\rtf1 }", {}},
        {"{\\rtf1 a{\\*\\blob \\bin4 }}{{}b}", {QStringLiteral("ab")}},  // binary data holding braces
        {"{\\rtf1 shown{\\v hidden} too}", {QStringLiteral("shown too")}},
        {"{\\rtf1\\mac caf\\'8e}", {QString::fromUtf8("café")}},
        {"{\\rtf1\\ansi\\ansicpg65001 caf\\'c3\\'a9}", {QString::fromUtf8("café")}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.rtf);
        EXPECT_EQ(ParagraphTexts(Read(row.rtf)), row.paragraphs);
    }
}

TEST(RtfReader, GroupsRestoreTheFormatAndPlainResetsIt)
{
    const RichDocument document = Read("{\\rtf1 \\b A{\\i B}C\\plain D}");
    ASSERT_EQ(document.paragraphs.size(), 1);
    const QList<TextRun> &runs = document.paragraphs[0].runs;
    ASSERT_EQ(runs.size(), 4);
    EXPECT_TRUE(runs[0].format.bold && !runs[0].format.italic);
    EXPECT_TRUE(runs[1].format.bold && runs[1].format.italic);
    EXPECT_TRUE(runs[2].format.bold && !runs[2].format.italic);
    EXPECT_FALSE(runs[3].format.bold);
}

TEST(RtfReader, PardResetsParagraphFormatButNotCharacterFormat)
{
    const RichDocument document = Read("{\\rtf1 \\qc\\li400\\b one\\par\\pard two\\par}");
    ASSERT_EQ(document.paragraphs.size(), 2);
    EXPECT_EQ(document.paragraphs[0].format.alignment, Alignment::Center);
    EXPECT_EQ(document.paragraphs[0].format.leftIndent, 400);
    EXPECT_EQ(document.paragraphs[1].format, ParagraphFormat());
    EXPECT_TRUE(document.paragraphs[1].runs[0].format.bold);
}

TEST(RtfReader, NumberedItemsKeepTheirNumbersAsTextAndAreNotBullets)
{
    const RichDocument document = Read(
        "{\\rtf1{\\listtext 1.\\tab}\\ls1 first\\par{\\listtext 2.\\tab}second\\par"
        "\\pard{\\pntext\\f1 a)\\tab}{\\*\\pn\\pnlvlbody\\pnlcltr{\\pntxta )}}third\\par"
        "\\pard{\\listtext\\uc0\\u8226\\tab}\\ls2 dot\\par}");
    EXPECT_EQ(ParagraphTexts(document),
              (QStringList{QStringLiteral("1.\tfirst"), QStringLiteral("2.\tsecond"),
                           QStringLiteral("a)\tthird"), QStringLiteral("dot")}));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(document.paragraphs[i].format.bullet, i == 3) << i;
}
