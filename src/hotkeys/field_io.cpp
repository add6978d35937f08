#include "hotkeys/field_io.h"

namespace hotkeys {

namespace {

bool isBlank(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); }
bool isLineEnd(QChar c) { return c == QLatin1Char('\r') || c == QLatin1Char('\n'); }

} // namespace

bool FieldReader::atEnd() const
{
    for (qsizetype i = m_pos; i < m_text.size(); ++i)
        if (!isBlank(m_text.at(i)) && !isLineEnd(m_text.at(i)))
            return false;
    return true;
}

void FieldReader::skipToNextField()
{
    while (m_pos < m_text.size() && m_text.at(m_pos) != QLatin1Char(',') && !isLineEnd(m_text.at(m_pos)))
        ++m_pos;
    if (m_pos >= m_text.size())
        return;
    if (m_text.at(m_pos) == QLatin1Char(',')) {
        ++m_pos;
        return;
    }
    if (m_text.at(m_pos) == QLatin1Char('\r'))
        ++m_pos;
    if (m_pos < m_text.size() && m_text.at(m_pos) == QLatin1Char('\n'))
        ++m_pos;
}

bool FieldReader::readString(QString &field)
{
    while (m_pos < m_text.size() && isBlank(m_text.at(m_pos)))
        ++m_pos;
    if (m_pos >= m_text.size())
        return false;
    if (m_text.at(m_pos) == QLatin1Char('"')) {
        const qsizetype close = m_text.indexOf(QLatin1Char('"'), m_pos + 1);
        if (close < 0) {
            field = m_text.mid(m_pos + 1);
            m_pos = m_text.size();
            return true;
        }
        field = m_text.mid(m_pos + 1, close - m_pos - 1);
        m_pos = close + 1;
    } else {
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && m_text.at(m_pos) != QLatin1Char(',') && !isLineEnd(m_text.at(m_pos)))
            ++m_pos;
        field = m_text.mid(start, m_pos - start).trimmed();
    }
    skipToNextField();
    return true;
}

bool FieldReader::readBoolean(bool &value)
{
    QString field;
    if (!readString(field))
        return false;
    const QString up = field.trimmed().toUpper();
    if (up == QLatin1String("#TRUE#") || up == QLatin1String("TRUE")) {
        value = true;
        return true;
    }
    if (up == QLatin1String("#FALSE#") || up == QLatin1String("FALSE") || up.isEmpty()) {
        value = false;
        return true;
    }
    bool ok = false;
    const double number = up.toDouble(&ok);
    if (!ok)
        return false;
    value = number != 0;
    return true;
}

QString WriteStringField(const QString &text) { return QLatin1Char('"') + text + QLatin1Char('"'); }

QString WriteBooleanField(bool value)
{
    return value ? QStringLiteral("#TRUE#") : QStringLiteral("#FALSE#");
}

} // namespace hotkeys
