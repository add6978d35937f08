#pragma once
// The classic sequential field format: quoted strings with nothing escaped, booleans
// as #TRUE# and #FALSE#, fields separated by commas, records ended by CR LF.
#include <QString>

namespace hotkeys {

class FieldReader {
public:
    explicit FieldReader(const QString &text) : m_text(text) {}
    // True when nothing but blanks and line ends is left.
    bool atEnd() const;
    // One string field; false when the text is used up (a read past the end).
    bool readString(QString &field);
    // One boolean field; false past the end or for a value that is not a boolean.
    bool readBoolean(bool &value);

private:
    void skipToNextField();
    QString m_text;
    qsizetype m_pos = 0;
};

QString WriteStringField(const QString &text);  // "text", nothing escaped
QString WriteBooleanField(bool value);          // #TRUE# or #FALSE#

} // namespace hotkeys
