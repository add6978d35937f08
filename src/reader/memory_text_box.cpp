#include "reader/memory_text_box.h"

namespace reader {

QString MemoryTextBox::text() const { return m_rich ? m_rich->plainText() : m_plain; }

QString MemoryTextBox::selectedText() const { return text().mid(m_selStart, m_selLength); }

void MemoryTextBox::select(int start, int length)
{
    const int size = int(text().size());
    m_selStart = qBound(0, start, size);
    m_selLength = qBound(0, length, size - m_selStart);
}

void MemoryTextBox::replaceSelection(const QString &replacement)
{
    QString all = text();
    all.replace(m_selStart, m_selLength, replacement);
    const int caret = m_selStart + int(replacement.size());
    loadPlainText(all);
    m_selStart = caret;
}

void MemoryTextBox::loadPlainText(const QString &plain)
{
    m_plain = plain;
    m_rich.reset();
    m_selStart = m_selLength = 0;
}

RichDocument MemoryTextBox::richDocument() const
{
    if (m_rich)
        return *m_rich;
    RichDocument document;
    if (m_plain.isEmpty())
        return document;
    for (const QString &line : m_plain.split(QLatin1Char('\n'))) {
        RichParagraph paragraph;
        if (!line.isEmpty())
            paragraph.append(line, CharFormat());
        document.paragraphs << paragraph;
    }
    return document;
}

void MemoryTextBox::loadRichDocument(const RichDocument &document)
{
    m_rich = document;
    m_plain.clear();
    m_selStart = m_selLength = 0;
}

PrintOutcome MemoryTextBox::printText(bool)
{
    return {PrintOutcome::Failed, QStringLiteral("Printing needs the desktop program.")};
}

} // namespace reader
