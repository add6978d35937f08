#pragma once
// The reader's text box (txtSpeech) and the document dialogs of the main window, as the
// exceptions and the document commands use them. The window implements it; tests use a
// plain stand-in. Positions are 0-based characters of text(), where paragraphs end in "\n".
#include "reader/rich_text.h"

#include <QString>
#include <optional>

namespace reader {

// What became of a print request.
struct PrintOutcome {
    enum Kind { Printed, Cancelled, Failed } kind = Cancelled;
    QString error;  // why it failed, for the message
};

class TextBox {
public:
    virtual ~TextBox() = default;

    // The plain text of the box.
    virtual QString text() const = 0;
    virtual QString selectedText() const = 0;
    virtual int selStart() const = 0;
    virtual int selLength() const = 0;
    virtual void select(int start, int length) = 0;
    // SelText = text: replaces the selection; the caret ends behind the new text.
    virtual void replaceSelection(const QString &text) = 0;
    // Text = text, as the edit commands write it back: the formatting of what did not
    // change stays.
    virtual void rewriteText(const QString &text) = 0;
    // Loads a document's text into the plain text property (all formatting dropped).
    virtual void loadPlainText(const QString &text) = 0;
    // The rich text property, as a document model.
    virtual RichDocument richDocument() const = 0;
    virtual void loadRichDocument(const RichDocument &document) = 0;
    virtual void setCaption(const QString &caption) = 0;
    // DoEvents.
    virtual void processEvents() {}

    // The common file dialogs. Nothing when cancelled. filter is in the form
    // "Caption|pattern;pattern" (see QtFileFilter).
    virtual std::optional<QString> showOpen(const QString &title, const QString &filter) = 0;
    virtual std::optional<QString> showSave(const QString &title, const QString &filter) = 0;
    // The page setup dialog.
    virtual void showPageSetup() = 0;
    // The printer dialog, then prints the selection (selectionOnly) or the whole text.
    virtual PrintOutcome printText(bool selectionOnly) = 0;
    // False where there is no printing at all (the text box of sonamark-cli).
    virtual bool canPrint() const { return true; }
};

} // namespace reader

namespace reader {

// The text box of the main window, or nullptr before the window exists (and in tests
// that set none). The window installs itself and removes itself at unload.
TextBox *textBox();
void SetTextBox(TextBox *box);

} // namespace reader
