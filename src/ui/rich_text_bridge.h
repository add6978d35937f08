#pragma once
// The text box's document as the rich-text model, and back: the bridge between txtSpeech
// (a QTextEdit) and the RTF codec in reader/.
//
// Kept across a round trip: font family, point size, bold, italic, underline, strike and
// text colour of every run and of every paragraph end; paragraph alignment, left, right
// and first-line indents; bullets (a block in a QTextList). Margins in the document are
// pixels at 96 per inch, 15 twips each. A bulleted paragraph's left indent in the model
// includes the list's own indent and its first line hangs kBulletHangTwips to the left,
// as word processors write bullets.
#include "reader/rich_text.h"

#include <QByteArray>
#include <QString>

class QFont;
class QTextBlock;
class QTextCharFormat;
class QTextDocument;

namespace ui {

inline constexpr int kTwipsPerPixel = 15;
inline constexpr int kBulletHangTwips = 360;

reader::RichDocument RichDocumentOf(const QTextDocument *document);
// Replaces the document's content with the model, as one undo step.
void SetRichDocument(QTextDocument *document, const reader::RichDocument &model);

// One character format, and one paragraph's format, as the model has them.
reader::CharFormat CharFormatOf(const QTextCharFormat &format, const QFont &defaultFont);
QTextCharFormat QtCharFormat(const reader::CharFormat &format);
reader::ParagraphFormat ParagraphFormatOf(const QTextDocument *document, const QTextBlock &block);

// The document as RTF bytes.
QByteArray DocumentToRtf(const QTextDocument *document);
// Reads RTF into the document. Returns "" or the reader's error; bytes that are not RTF
// at all leave the document as it was (the caller may show them as plain text), a
// truncated file leaves what could be read.
QString RtfToDocument(QTextDocument *document, const QByteArray &rtf);

} // namespace ui
