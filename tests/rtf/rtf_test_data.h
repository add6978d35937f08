#pragma once
// Access to the RTF files under tests/rtf/data and small builders of expected models.
#include "reader/rich_text.h"

#include <QFile>
#include <QString>

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

} // namespace rtftest
