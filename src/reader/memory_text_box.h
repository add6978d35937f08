#pragma once
// A text box without a window: the reader's text for sonamark-cli, where macros load,
// change and save documents with no display. Dialogs answer "cancelled" and printing
// fails with a reason.
#include "reader/text_box.h"

namespace reader {

class MemoryTextBox : public TextBox {
public:
    QString text() const override;
    QString selectedText() const override;
    int selStart() const override { return m_selStart; }
    int selLength() const override { return m_selLength; }
    void select(int start, int length) override;
    void replaceSelection(const QString &text) override;
    void rewriteText(const QString &text) override { loadPlainText(text); }
    void loadPlainText(const QString &text) override;
    RichDocument richDocument() const override;
    void loadRichDocument(const RichDocument &document) override;
    void setCaption(const QString &caption) override { m_caption = caption; }
    QString caption() const { return m_caption; }

    std::optional<QString> showOpen(const QString &, const QString &) override { return std::nullopt; }
    std::optional<QString> showSave(const QString &, const QString &) override { return std::nullopt; }
    void showPageSetup() override {}
    PrintOutcome printText(bool) override;
    bool canPrint() const override { return false; }

private:
    QString m_plain;                     // the text when it came in plain
    std::optional<RichDocument> m_rich;  // the document when it came in rich
    int m_selStart = 0;
    int m_selLength = 0;
    QString m_caption;
};

} // namespace reader
