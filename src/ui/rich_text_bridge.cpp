#include "ui/rich_text_bridge.h"

#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <cmath>

namespace ui {
namespace {

int ToTwips(qreal pixels)
{
    return static_cast<int>(std::lround(pixels * kTwipsPerPixel));
}

qreal ToPixels(int twips)
{
    return static_cast<qreal>(twips) / kTwipsPerPixel;
}

reader::CharFormat ModelFormat(const QTextCharFormat &format, const QFont &defaultFont)
{
    const QFont font = format.font().resolve(defaultFont);
    reader::CharFormat result;
    result.family = font.family();
    result.pointSize = font.pointSizeF() > 0 ? font.pointSizeF() : 0;
    result.bold = font.bold();
    result.italic = font.italic();
    result.underline = font.underline();
    result.strike = font.strikeOut();
    if (format.hasProperty(QTextFormat::ForegroundBrush) && format.foreground().style() != Qt::NoBrush)
        result.color = format.foreground().color().rgb() & 0xFFFFFFu;
    return result;
}

QTextCharFormat QtFormat(const reader::CharFormat &format)
{
    QTextCharFormat result;
    if (!format.family.isEmpty())
        result.setFontFamilies(QStringList{format.family});
    if (format.pointSize > 0)
        result.setFontPointSize(format.pointSize);
    result.setFontWeight(format.bold ? QFont::Bold : QFont::Normal);
    result.setFontItalic(format.italic);
    result.setFontUnderline(format.underline);
    result.setFontStrikeOut(format.strike);
    if (format.color)
        result.setForeground(QColor::fromRgb(*format.color | 0xFF000000u));
    return result;
}

reader::Alignment ModelAlignment(Qt::Alignment alignment)
{
    const Qt::Alignment horizontal = alignment & Qt::AlignHorizontal_Mask;
    if (horizontal & Qt::AlignJustify)
        return reader::Alignment::Justify;
    if (horizontal & Qt::AlignHCenter)
        return reader::Alignment::Center;
    if (horizontal & Qt::AlignRight)
        return reader::Alignment::Right;
    return reader::Alignment::Left;
}

Qt::Alignment QtAlignment(reader::Alignment alignment)
{
    switch (alignment) {
    case reader::Alignment::Right: return Qt::AlignRight;
    case reader::Alignment::Center: return Qt::AlignHCenter;
    case reader::Alignment::Justify: return Qt::AlignJustify;
    case reader::Alignment::Left: break;
    }
    return Qt::AlignLeft;
}

// The pixels a list of this format indents its items.
qreal ListIndentPixels(const QTextDocument *document, const QTextList *list)
{
    return list ? list->format().indent() * document->indentWidth() : 0;
}

reader::ParagraphFormat ModelParagraph(const QTextDocument *document, const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    reader::ParagraphFormat result;
    result.alignment = ModelAlignment(format.alignment());
    result.rightIndent = ToTwips(format.rightMargin());
    const QTextList *list = block.textList();
    result.bullet = list != nullptr;
    if (list) {
        result.leftIndent = ToTwips(format.leftMargin() + ListIndentPixels(document, list));
        result.firstLineIndent = ToTwips(format.textIndent()) - kBulletHangTwips;
    } else {
        result.leftIndent = ToTwips(format.leftMargin());
        result.firstLineIndent = ToTwips(format.textIndent());
    }
    return result;
}

QTextBlockFormat QtParagraph(const reader::ParagraphFormat &format, qreal listIndentPixels)
{
    QTextBlockFormat result;
    result.setAlignment(QtAlignment(format.alignment));
    result.setRightMargin(ToPixels(format.rightIndent));
    if (format.bullet) {
        result.setLeftMargin(std::max<qreal>(0, ToPixels(format.leftIndent) - listIndentPixels));
        result.setTextIndent(ToPixels(format.firstLineIndent + kBulletHangTwips));
    } else {
        result.setLeftMargin(ToPixels(format.leftIndent));
        result.setTextIndent(ToPixels(format.firstLineIndent));
    }
    return result;
}

} // namespace

reader::CharFormat CharFormatOf(const QTextCharFormat &format, const QFont &defaultFont)
{
    return ModelFormat(format, defaultFont);
}

QTextCharFormat QtCharFormat(const reader::CharFormat &format) { return QtFormat(format); }

reader::ParagraphFormat ParagraphFormatOf(const QTextDocument *document, const QTextBlock &block)
{
    return ModelParagraph(document, block);
}

reader::RichDocument RichDocumentOf(const QTextDocument *document)
{
    reader::RichDocument result;
    const QFont defaultFont = document->defaultFont();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        reader::RichParagraph paragraph;
        paragraph.format = ModelParagraph(document, block);
        paragraph.markFormat = ModelFormat(block.charFormat(), defaultFont);
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.isValid())
                continue;
            QString text = fragment.text();
            text.remove(QChar::ObjectReplacementCharacter);  // pictures have no text
            paragraph.append(text, ModelFormat(fragment.charFormat(), defaultFont));
        }
        result.paragraphs.append(std::move(paragraph));
    }
    return result;
}

void SetRichDocument(QTextDocument *document, const reader::RichDocument &model)
{
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    cursor.setBlockFormat(QTextBlockFormat());
    cursor.setBlockCharFormat(QTextCharFormat());
    if (QTextList *list = cursor.currentList())
        list->remove(cursor.block());

    QTextListFormat listFormat;
    listFormat.setStyle(QTextListFormat::ListDisc);
    listFormat.setIndent(1);
    const qreal listIndent = listFormat.indent() * document->indentWidth();
    QTextList *list = nullptr;
    bool first = true;
    for (const reader::RichParagraph &paragraph : model.paragraphs) {
        const QTextBlockFormat blockFormat = QtParagraph(paragraph.format, listIndent);
        const QTextCharFormat markFormat = QtFormat(paragraph.markFormat);
        if (first) {
            cursor.setBlockFormat(blockFormat);
            cursor.setBlockCharFormat(markFormat);
            first = false;
        } else {
            cursor.insertBlock(blockFormat, markFormat);
        }
        if (paragraph.format.bullet) {
            if (list)
                list->add(cursor.block());
            else
                list = cursor.createList(listFormat);
        } else {
            list = nullptr;
        }
        for (const reader::TextRun &run : paragraph.runs) {
            // A paragraph break inside a run would split the block: keep it a line break.
            QString text = run.text;
            text.replace(QLatin1Char('\n'), reader::kLineBreak);
            text.replace(QChar::ParagraphSeparator, reader::kLineBreak);
            cursor.insertText(text, QtFormat(run.format));
        }
    }
    cursor.endEditBlock();
}

QByteArray DocumentToRtf(const QTextDocument *document)
{
    return reader::WriteRtf(RichDocumentOf(document));
}

QString RtfToDocument(QTextDocument *document, const QByteArray &rtf)
{
    QString error;
    const reader::RichDocument model = reader::ReadRtf(rtf, &error);
    if (!reader::LooksLikeRtf(rtf))
        return error;
    SetRichDocument(document, model);
    return error;
}

} // namespace ui
