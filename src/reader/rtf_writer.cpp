#include "reader/rtf_writer.h"

#include <QStringEncoder>
#include <cmath>

namespace reader {
namespace {

constexpr int kBulletHalfPointSize = 20;

class RtfWriter {
public:
    explicit RtfWriter(const RichDocument &document) : document_(document) {}
    QByteArray run();

private:
    void collectTables();
    void writeHeader();
    void writeParagraph(const RichParagraph &paragraph);
    void writeFormat(const CharFormat &format);
    void writeText(const QString &text);
    void writeEscapedByte(char byte);

    const RichDocument &document_;
    QByteArray out_;
    QStringList fonts_;
    QList<quint32> colors_;
    int symbolFont_ = -1;
    int defaultFont_ = 0;  // past the table when some run names no font
    QStringEncoder fallback_{"windows-1252"};
};

void RtfWriter::collectTables()
{
    bool bullets = false;
    bool unnamed = false;
    auto collect = [this, &unnamed](const CharFormat &format) {
        unnamed = unnamed || format.family.isEmpty();
        if (!format.family.isEmpty() && !fonts_.contains(format.family))
            fonts_.append(format.family);
        if (format.color && !colors_.contains(*format.color))
            colors_.append(*format.color);
    };
    for (const RichParagraph &paragraph : document_.paragraphs) {
        for (const TextRun &run : paragraph.runs)
            collect(run.format);
        collect(paragraph.markFormat);
        bullets = bullets || paragraph.format.bullet;
    }
    if (bullets) {
        symbolFont_ = fonts_.indexOf(QStringLiteral("Symbol"));
        if (symbolFont_ < 0) {
            symbolFont_ = fonts_.size();
            fonts_.append(QStringLiteral("Symbol"));
        }
    }
    if (unnamed)
        defaultFont_ = fonts_.size();
}

void RtfWriter::writeHeader()
{
    out_ += "{\\rtf1\\ansi\\ansicpg1252\\deff" + QByteArray::number(defaultFont_) + "\\uc1\n{\\fonttbl";
    for (int i = 0; i < fonts_.size(); ++i) {
        out_ += "{\\f" + QByteArray::number(i);
        out_ += i == symbolFont_ ? "\\ftech\\fcharset2 " : "\\fnil\\fcharset0 ";
        writeText(fonts_[i]);
        out_ += ";}";
    }
    out_ += "}\n{\\colortbl;";
    for (quint32 rgb : colors_) {
        out_ += "\\red" + QByteArray::number((rgb >> 16) & 0xff) + "\\green"
            + QByteArray::number((rgb >> 8) & 0xff) + "\\blue" + QByteArray::number(rgb & 0xff)
            + ';';
    }
    out_ += "}\n{\\*\\generator Sonamark;}\n";
}

void RtfWriter::writeFormat(const CharFormat &format)
{
    out_ += "\\plain";
    const int font = fonts_.indexOf(format.family);
    if (font >= 0)
        out_ += "\\f" + QByteArray::number(font);
    const int halfPoints = static_cast<int>(std::lround(format.pointSize * 2));
    if (halfPoints > 0)
        out_ += "\\fs" + QByteArray::number(halfPoints);
    if (format.bold)
        out_ += "\\b";
    if (format.italic)
        out_ += "\\i";
    if (format.underline)
        out_ += "\\ul";
    if (format.strike)
        out_ += "\\strike";
    if (format.color)
        out_ += "\\cf" + QByteArray::number(colors_.indexOf(*format.color) + 1);
    out_ += ' ';
}

void RtfWriter::writeEscapedByte(char byte)
{
    static const char kHex[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    out_ += "\\'";
    out_ += kHex[value >> 4];
    out_ += kHex[value & 0xf];
}

void RtfWriter::writeText(const QString &text)
{
    for (const QChar ch : text) {
        const char16_t code = ch.unicode();
        if (code == '\\' || code == '{' || code == '}') {
            out_ += '\\';
            out_ += char(code);
        } else if (code == ';') {
            out_ += "\\'3b";  // a ";" would end a font name
        } else if (code == '\t') {
            out_ += "\\tab ";
        } else if (code == kLineBreak.unicode() || code == '\n' || code == QChar::ParagraphSeparator) {
            out_ += "\\line ";
        } else if (code == 0x00A0) {
            out_ += "\\~";
        } else if (code >= 0x20 && code < 0x80) {
            out_ += char(code);
        } else if (code >= 0x80) {
            out_ += "\\u" + QByteArray::number(code > 0x7FFF ? int(code) - 65536 : int(code));
            const QByteArray encoded = ch.isSurrogate() ? QByteArray() : fallback_.encode(QString(ch));
            if (encoded.size() == 1 && !fallback_.hasError())
                writeEscapedByte(encoded[0]);
            else
                out_ += '?';
            fallback_.resetState();
        }
        // Other control characters are not text and are left out.
    }
}

void RtfWriter::writeParagraph(const RichParagraph &paragraph)
{
    const ParagraphFormat &f = paragraph.format;
    out_ += "\\pard";
    switch (f.alignment) {
    case Alignment::Left: out_ += "\\ql"; break;
    case Alignment::Right: out_ += "\\qr"; break;
    case Alignment::Center: out_ += "\\qc"; break;
    case Alignment::Justify: out_ += "\\qj"; break;
    }
    if (f.leftIndent)
        out_ += "\\li" + QByteArray::number(f.leftIndent);
    if (f.firstLineIndent)
        out_ += "\\fi" + QByteArray::number(f.firstLineIndent);
    if (f.rightIndent)
        out_ += "\\ri" + QByteArray::number(f.rightIndent);
    if (f.bullet) {
        const QByteArray symbol = QByteArray::number(symbolFont_);
        const QByteArray size = QByteArray::number(kBulletHalfPointSize);
        out_ += "{\\pntext\\f" + symbol + "\\fs" + size + "\\'b7\\tab}{\\*\\pn\\pnlvlblt\\pnf"
            + symbol + "\\pnindent0{\\pntxtb\\'b7}}";
    }
    const CharFormat *current = nullptr;
    for (const TextRun &run : paragraph.runs) {
        if (!current || !(*current == run.format))
            writeFormat(run.format);
        current = &run.format;
        writeText(run.text);
    }
    if (!current || !(*current == paragraph.markFormat))
        writeFormat(paragraph.markFormat);
    out_ += "\\par\n";
}

QByteArray RtfWriter::run()
{
    collectTables();
    writeHeader();
    for (const RichParagraph &paragraph : document_.paragraphs)
        writeParagraph(paragraph);
    out_ += "}";
    return out_;
}

} // namespace

QByteArray WriteRtf(const RichDocument &document)
{
    return RtfWriter(document).run();
}

} // namespace reader
