#include "reader/borrowed_document.h"

#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/text_box.h"
#include "shell/app_state.h"

namespace reader {

BorrowedDocument::BorrowedDocument()
{
    const shell::AppState &app = shell::app();
    m_currentFile = app.CurrentFile;
    m_textDirty = app.TextDirty;
    m_exceptionsMade = exceptionsState().ExceptionsMade;
    if (TextBox *box = textBox()) {
        m_hasBox = true;
        m_document = box->richDocument();
        m_selStart = box->selStart();
        m_selLength = box->selLength();
    }
}

BorrowedDocument::~BorrowedDocument()
{
    // The box first: loading it may count as a change, which the flags below undo.
    TextBox *box = m_hasBox ? textBox() : nullptr;
    if (box) {
        box->loadRichDocument(m_document);
        box->select(m_selStart, m_selLength);
    }
    shell::AppState &app = shell::app();
    app.CurrentFile = m_currentFile;
    app.TextDirty = m_textDirty;
    exceptionsState().ExceptionsMade = m_exceptionsMade;
    if (box)
        box->setCaption(DocumentCaption(m_currentFile));
}

} // namespace reader
