#pragma once
// txtSpeech as the documents and exceptions see it (reader::TextBox), with the window's
// file dialogs, page setup and printer. Installs itself as reader::textBox() for its life.
#include "reader/text_box.h"

#include <QPrinter>
#include <memory>

class QTextEdit;
class QWidget;

namespace ui {

// Selects length characters from start (0-based, as TextBox counts them) in box, both
// kept inside its text.
void SelectInBox(QTextEdit *box, int start, int length);

class DocumentBox : public reader::TextBox {
public:
    DocumentBox(QWidget *window, QTextEdit *txtSpeech);
    ~DocumentBox() override;

    QString text() const override;
    QString selectedText() const override;
    int selStart() const override;
    int selLength() const override;
    void select(int start, int length) override;
    void replaceSelection(const QString &text) override;
    void rewriteText(const QString &text) override;
    void loadPlainText(const QString &text) override;
    reader::RichDocument richDocument() const override;
    void loadRichDocument(const reader::RichDocument &document) override;
    void setCaption(const QString &caption) override;
    void processEvents() override;
    std::optional<QString> showOpen(const QString &title, const QString &filter) override;
    std::optional<QString> showSave(const QString &title, const QString &filter) override;
    void showPageSetup() override;
    reader::PrintOutcome printText(bool selectionOnly) override;

    // The printer the page setup and printing share.
    QPrinter &printer() { return *m_printer; }

private:
    QString startFolder() const;

    QWidget *m_window;
    QTextEdit *m_box;
    std::unique_ptr<QPrinter> m_printer;
    QString m_lastFolder;
};

} // namespace ui
