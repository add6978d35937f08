#pragma once
// For a statement that puts other text into the reader's box for a moment (to print a
// file, to spell check a selection, to read a document onto the clipboard): everything
// the user had is put back when the borrow ends, the text with its formatting and
// selection, the document's name, its changed flag and the caption. The user's document
// is never left holding foreign text under its own name.
#include "reader/rich_text.h"

#include <QString>

namespace reader {

class BorrowedDocument {
public:
    BorrowedDocument();
    ~BorrowedDocument();
    BorrowedDocument(const BorrowedDocument &) = delete;
    BorrowedDocument &operator=(const BorrowedDocument &) = delete;

private:
    bool m_hasBox = false;
    RichDocument m_document;
    int m_selStart = 0;
    int m_selLength = 0;
    QString m_currentFile;
    bool m_textDirty = false;
    bool m_exceptionsMade = false;
};

} // namespace reader
