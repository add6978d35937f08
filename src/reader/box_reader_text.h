#pragma once
// The ReaderText port (SONAMARKTEXT) over the reader's text box.
#include "platform/reader_text.h"

namespace reader {

class BoxReaderText : public platform::ReaderText {
public:
    // "" when the window has no text box.
    QString text() override;
    // Unsaved changes of the current file are saved first (as File Save does); then the
    // box takes the text, forgets its file and drops its formatting.
    void setText(const QString &text) override;
};

} // namespace reader
