#pragma once
// Access to the RTF files under tests/rtf/data and small builders of expected models.
#include "reader/rich_text.h"

#include <QFile>
#include <QString>
#include <ostream>

// Readable texts in test failure messages.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace rtftest {

inline QByteArray DataFile(const char *name)
{
    QFile file(QStringLiteral(SONAMARK_RTF_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

inline QStringList ParagraphTexts(const reader::RichDocument &document)
{
    QStringList texts;
    for (const reader::RichParagraph &paragraph : document.paragraphs)
        texts << paragraph.text();
    return texts;
}

// The run of a paragraph that holds the given text, or nullptr.
inline const reader::TextRun *RunWith(const reader::RichParagraph &paragraph, const QString &text)
{
    for (const reader::TextRun &run : paragraph.runs) {
        if (run.text.contains(text))
            return &run;
    }
    return nullptr;
}

// A document with every format the text box can give, one paragraph per kind. The file
// data/libreoffice_resaved.rtf is this document written by WriteRtf, opened in LibreOffice
// Writer and saved again as RTF.
inline reader::RichDocument SampleDocument()
{
    using namespace reader;
    auto format = [](const char *family, double size) {
        CharFormat f;
        f.family = QLatin1String(family);
        f.pointSize = size;
        return f;
    };
    auto paragraph = [](Alignment alignment, int left, int first, int right, bool bullet) {
        RichParagraph p;
        p.format = ParagraphFormat{alignment, left, first, right, bullet};
        return p;
    };
    const CharFormat body = format("Liberation Serif", 12);
    CharFormat bold = body, italic = body, underline = body, strike = body, red = body;
    bold.bold = true;
    italic.italic = true;
    underline.underline = true;
    strike.strike = true;
    red.color = 0xC00000;
    CharFormat title = format("Liberation Sans", 20);
    title.bold = true;
    title.color = 0x1F4E79;

    RichDocument document;
    RichParagraph p = paragraph(Alignment::Center, 0, 0, 0, false);
    p.append(QStringLiteral("Sample title"), title);
    p.markFormat = title;
    document.paragraphs << p;

    p = paragraph(Alignment::Left, 0, 0, 0, false);
    p.append(QStringLiteral("Plain "), body);
    p.append(QStringLiteral("bold"), bold);
    p.append(QStringLiteral(" "), body);
    p.append(QStringLiteral("italic"), italic);
    p.append(QStringLiteral(" "), body);
    p.append(QStringLiteral("underlined"), underline);
    p.append(QStringLiteral(" "), body);
    p.append(QStringLiteral("struck"), strike);
    p.append(QStringLiteral(" "), body);
    p.append(QStringLiteral("red"), red);
    p.append(QStringLiteral(" and "), body);
    p.append(QStringLiteral("mono 9"), format("Liberation Mono", 9));
    p.markFormat = body;
    document.paragraphs << p;

    p = paragraph(Alignment::Right, 0, 0, 0, false);
    p.append(QString::fromUtf8("Right: café € 日本語"), body);
    p.markFormat = body;
    document.paragraphs << p;

    p = paragraph(Alignment::Justify, 1440, 720, 720, false);
    p.append(QStringLiteral("Justified, one inch in from the left, half an inch from the right, "
                            "with a first line half an inch further in, long enough to wrap."),
             body);
    p.markFormat = body;
    document.paragraphs << p;

    for (const char *item : {"First bullet", "Second bullet"}) {
        p = paragraph(Alignment::Left, 720, -360, 0, true);
        p.append(QLatin1String(item), body);
        p.markFormat = body;
        document.paragraphs << p;
    }
    return document;
}

} // namespace rtftest
