#include "reader/rich_text.h"

namespace reader {

void RichParagraph::append(const QString &text, const CharFormat &charFormat)
{
    if (text.isEmpty())
        return;
    if (!runs.isEmpty() && runs.last().format == charFormat)
        runs.last().text += text;
    else
        runs.append(TextRun{text, charFormat});
}

QString RichParagraph::text() const
{
    QString result;
    for (const TextRun &run : runs)
        result += run.text;
    return result;
}

QString RichDocument::plainText() const
{
    QString result;
    for (qsizetype i = 0; i < paragraphs.size(); ++i) {
        if (i > 0)
            result += QLatin1Char('\n');
        result += paragraphs[i].text();
    }
    return result;
}

} // namespace reader
