// The text box's document through RTF and back, formatted the way the Edit menu formats
// it: fonts, sizes, bold, italic, underline, strike, colour, alignment, indents, bullets.
#include "rtf_test_data.h"

#include "reader/rtf_reader.h"
#include "ui/rich_text_bridge.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <gtest/gtest.h>

namespace {

// Selects the characters [from, to) of the document.
QTextCursor Selection(QTextDocument *document, int from, int to)
{
    QTextCursor cursor(document);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    return cursor;
}

QTextCursor Block(QTextDocument *document, int number)
{
    return QTextCursor(document->findBlockByNumber(number));
}

// What a user sees of one character: its font as drawn and its colour.
struct Look {
    QString family;
    double size;
    bool bold, italic, underline, strike;
    QString color;
    bool operator==(const Look &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Look &look)
{
    return out << look.family.toStdString() << ' ' << look.size << (look.bold ? " bold" : "")
               << (look.italic ? " italic" : "") << (look.underline ? " underline" : "")
               << (look.strike ? " strike" : "") << ' ' << look.color.toStdString();
}

Look LookAt(const QTextDocument *document, int position)
{
    QTextCursor cursor(const_cast<QTextDocument *>(document));
    cursor.setPosition(position + 1);  // the format of the character before the cursor
    const QTextCharFormat format = cursor.charFormat();
    const QFont font = format.font().resolve(document->defaultFont());
    const QString color = format.hasProperty(QTextFormat::ForegroundBrush)
        ? format.foreground().color().name() : QStringLiteral("auto");
    return Look{font.family(), font.pointSizeF(), font.bold(), font.italic(), font.underline(),
                font.strikeOut(), color};
}

void ExpectSameDocument(const QTextDocument &expected, const QTextDocument &actual)
{
    ASSERT_EQ(actual.toPlainText(), expected.toPlainText());
    ASSERT_EQ(actual.blockCount(), expected.blockCount());
    for (int i = 0; i < expected.characterCount() - 1; ++i) {
        if (expected.characterAt(i) == QChar::ParagraphSeparator)
            continue;
        ASSERT_EQ(LookAt(&actual, i), LookAt(&expected, i)) << "at character " << i;
    }
    for (int b = 0; b < expected.blockCount(); ++b) {
        SCOPED_TRACE(b);
        const QTextBlock e = expected.findBlockByNumber(b);
        const QTextBlock a = actual.findBlockByNumber(b);
        EXPECT_EQ(a.blockFormat().alignment() & Qt::AlignHorizontal_Mask,
                  e.blockFormat().alignment() & Qt::AlignHorizontal_Mask);
        EXPECT_DOUBLE_EQ(a.blockFormat().leftMargin(), e.blockFormat().leftMargin());
        EXPECT_DOUBLE_EQ(a.blockFormat().rightMargin(), e.blockFormat().rightMargin());
        EXPECT_DOUBLE_EQ(a.blockFormat().textIndent(), e.blockFormat().textIndent());
        EXPECT_EQ(a.textList() != nullptr, e.textList() != nullptr);
        if (a.textList() && e.textList()) {
            EXPECT_EQ(a.textList()->format().style(), e.textList()->format().style());
        }
    }
}

// A box with one paragraph per kind of formatting the Edit menu applies to a selection.
void FormatLikeTheEditMenu(QTextDocument *document)
{
    document->setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 11));
    document->setPlainText(QString::fromUtf8("Title line\n"
                                             "Mixed bold italic underline strike colour here\n"
                                             "Right side\n"
                                             "Indented and justified text\n"
                                             "Bullet one\n"
                                             "Bullet two\n"
                                             "Tab\there and ünïcödé € 日本\n"
                                             "\n"
                                             "Last"));
    QTextCharFormat title;
    title.setFontFamilies({QStringLiteral("Liberation Serif")});
    title.setFontPointSize(20);
    title.setFontWeight(QFont::Bold);
    Selection(document, 0, 10).mergeCharFormat(title);
    QTextBlockFormat centre;
    centre.setAlignment(Qt::AlignHCenter);
    Block(document, 0).mergeBlockFormat(centre);

    const int mixed = document->findBlockByNumber(1).position();
    const auto mark = [&](int from, int to, auto set) {
        QTextCharFormat f;
        set(f);
        Selection(document, mixed + from, mixed + to).mergeCharFormat(f);
    };
    mark(6, 10, [](QTextCharFormat &f) { f.setFontWeight(QFont::Bold); });
    mark(11, 17, [](QTextCharFormat &f) { f.setFontItalic(true); });
    mark(18, 27, [](QTextCharFormat &f) { f.setFontUnderline(true); });
    mark(28, 34, [](QTextCharFormat &f) { f.setFontStrikeOut(true); f.setFontPointSize(10.5); });
    mark(35, 41, [](QTextCharFormat &f) {
        f.setForeground(QColor(0x12, 0x80, 0xC0));
        f.setFontFamilies({QStringLiteral("Liberation Mono")});
    });

    QTextBlockFormat right;
    right.setAlignment(Qt::AlignRight);
    Block(document, 2).mergeBlockFormat(right);

    QTextBlockFormat indented;
    indented.setAlignment(Qt::AlignJustify);
    indented.setLeftMargin(1.25 * 96);
    indented.setRightMargin(0.5 * 96);
    indented.setTextIndent(24);
    Block(document, 3).mergeBlockFormat(indented);

    QTextCursor bullets = Block(document, 4);
    bullets.setPosition(document->findBlockByNumber(5).position(), QTextCursor::KeepAnchor);
    bullets.createList(QTextListFormat::ListDisc);
    QTextBlockFormat bulletIndent;
    bulletIndent.setLeftMargin(48);
    Block(document, 5).mergeBlockFormat(bulletIndent);

    QTextCharFormat big;
    big.setFontPointSize(24);
    Block(document, 7).mergeBlockCharFormat(big);
}

} // namespace

TEST(RichTextBridge, EditMenuFormattingSurvivesTextBoxToRtfToTextBox)
{
    QTextDocument original;
    FormatLikeTheEditMenu(&original);
    const QByteArray rtf = ui::DocumentToRtf(&original);

    QTextDocument loaded;
    loaded.setDefaultFont(QFont(QStringLiteral("Liberation Sans"), 8));  // another box's default
    EXPECT_EQ(ui::RtfToDocument(&loaded, rtf), QString());
    ExpectSameDocument(original, loaded);

    // Spot checks on the loaded box itself, not through the model.
    EXPECT_EQ(loaded.findBlockByNumber(0).blockFormat().alignment() & Qt::AlignHorizontal_Mask,
              Qt::AlignHCenter);
    EXPECT_EQ(LookAt(&loaded, 0), (Look{QStringLiteral("Liberation Serif"), 20, true, false, false, false,
                                        QStringLiteral("auto")}));
    EXPECT_EQ(LookAt(&loaded, loaded.findBlockByNumber(1).position()).family, QStringLiteral("DejaVu Sans"));
    EXPECT_NE(loaded.findBlockByNumber(4).textList(), nullptr);
    EXPECT_EQ(loaded.findBlockByNumber(4).textList(), loaded.findBlockByNumber(5).textList());
    EXPECT_EQ(loaded.findBlockByNumber(6).text(), QString::fromUtf8("Tab\there and ünïcödé € 日本"));
    EXPECT_EQ(loaded.findBlockByNumber(7).charFormat().fontPointSize(), 24);

    // A second trip through a box writes the same RTF.
    EXPECT_EQ(QString::fromLatin1(ui::DocumentToRtf(&loaded)), QString::fromLatin1(rtf));
}

TEST(RichTextBridge, WordProcessorBulletsAndIndentsLandAsListsAndMargins)
{
    QTextDocument document;
    EXPECT_EQ(ui::RtfToDocument(&document, rtftest::DataFile("word_lists_fields.rtf")), QString());
    ASSERT_EQ(document.blockCount(), 4);
    EXPECT_EQ(document.findBlockByNumber(0).textList(), nullptr);
    const QTextList *list = document.findBlockByNumber(1).textList();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->format().style(), QTextListFormat::ListDisc);
    EXPECT_EQ(document.findBlockByNumber(2).textList(), list);
    // \li720 is the list's own 40 pixel indent plus 8 pixels; the hang is the bullet's room.
    EXPECT_DOUBLE_EQ(document.findBlockByNumber(1).blockFormat().leftMargin(),
                     720.0 / ui::kTwipsPerPixel - document.indentWidth());
    EXPECT_DOUBLE_EQ(document.findBlockByNumber(1).blockFormat().textIndent(), 0);
    EXPECT_EQ(document.findBlockByNumber(3).text(), QStringLiteral("See example.org and a picture  here."));
}

TEST(RichTextBridge, LineBreaksInsideAParagraphStayInIt)
{
    QTextDocument document;
    ui::RtfToDocument(&document, "{\\rtf1 one\\line two\\par three}");
    ASSERT_EQ(document.blockCount(), 2);
    EXPECT_EQ(document.firstBlock().text(), QStringLiteral("one") + QChar::LineSeparator + QStringLiteral("two"));
    QTextDocument again;
    ui::RtfToDocument(&again, ui::DocumentToRtf(&document));
    EXPECT_EQ(again.toPlainText(), document.toPlainText());
}

TEST(RichTextBridge, NotRtfLeavesTheBoxAndATruncatedFileShowsWhatWasReadAndSaysSo)
{
    struct Row { const char *bytes; const char *message; QString text; };
    for (const Row &row : {Row{"just text", reader::kRtfNotRtfMessage, QStringLiteral("keep me")},
                           Row{"{\\rtf1 first\\par second {\\b bo", reader::kRtfTruncatedMessage,
                               QStringLiteral("first\nsecond bo")}}) {
        SCOPED_TRACE(row.bytes);
        QTextDocument document;
        document.setPlainText(QStringLiteral("keep me"));
        EXPECT_EQ(ui::RtfToDocument(&document, row.bytes), QString::fromLatin1(row.message));
        EXPECT_EQ(document.toPlainText(), row.text);
    }
}

TEST(RichTextBridge, AnEmptyBoxWritesAndReadsAsAnEmptyBox)
{
    QTextDocument empty;
    QTextDocument loaded;
    loaded.setPlainText(QStringLiteral("something"));
    EXPECT_EQ(ui::RtfToDocument(&loaded, ui::DocumentToRtf(&empty)), QString());
    EXPECT_TRUE(loaded.isEmpty());
    EXPECT_EQ(loaded.blockCount(), 1);
}
