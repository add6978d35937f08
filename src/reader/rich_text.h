#pragma once
// A plain model of formatted text, as the text box holds it and as RTF carries it:
// paragraphs with alignment, indents and a bullet, made of runs of text that share one
// character format. QtCore only; the window layer maps it to and from its text document.
//
// Inside a run, "\t" is a tab and U+2028 (QChar::LineSeparator) a line break that does not
// end the paragraph. Paragraph ends are not characters: they are the paragraph list itself.
#include <QList>
#include <QString>
#include <optional>

namespace reader {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr QChar kLineBreak = QChar::LineSeparator;

// The character format of a run. An empty family or a point size of 0 means "not given":
// the reader of the model falls back to its default font.
struct CharFormat {
    QString family;
    double pointSize = 0;          // in points, kept to half points by RTF
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    std::optional<quint32> color;  // 0xRRGGBB; none means the automatic text colour

    bool operator==(const CharFormat &) const = default;
};

struct TextRun {
    QString text;
    CharFormat format;

    bool operator==(const TextRun &) const = default;
};

enum class Alignment { Left, Right, Center, Justify };

// Indents are in twips (1/1440 inch). The first-line indent is relative to the left
// indent and may be negative (a hanging first line, as bullets have).
struct ParagraphFormat {
    Alignment alignment = Alignment::Left;
    int leftIndent = 0;
    int firstLineIndent = 0;
    int rightIndent = 0;
    bool bullet = false;

    bool operator==(const ParagraphFormat &) const = default;
};

struct RichParagraph {
    ParagraphFormat format;
    QList<TextRun> runs;    // no empty runs; neighbours differ in format
    CharFormat markFormat;  // the format at the paragraph's end (sets an empty line's height)

    // Appends text in a format, joining it to the last run when the formats agree.
    void append(const QString &text, const CharFormat &charFormat);
    QString text() const;

    bool operator==(const RichParagraph &) const = default;
};

// A document has at least one paragraph once it holds anything; an empty list is empty text.
struct RichDocument {
    QList<RichParagraph> paragraphs;

    // The text with paragraphs joined by "\n" (line breaks inside paragraphs stay U+2028).
    QString plainText() const;

    bool operator==(const RichDocument &) const = default;
};

} // namespace reader
