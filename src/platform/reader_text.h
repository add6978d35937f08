#pragma once
// Port: the reader's main text box (txtSpeech), as the macro variable SONAMARKTEXT
// reads and writes it.
#include <QString>

namespace platform {

class ReaderText {
public:
    virtual ~ReaderText() = default;
    // The text the reader's text box holds now.
    virtual QString text() = 0;
    // Replaces the reader's text: unsaved changes are saved first (as File Save does),
    // then the box takes the text and the reader refreshes its state for it.
    virtual void setText(const QString &text) = 0;
};

} // namespace platform
