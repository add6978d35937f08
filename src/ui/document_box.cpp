#include "ui/document_box.h"

#include "reader/documents.h"
#include "shell/app_state.h"
#include "ui/rich_text_bridge.h"
#include "ui/text_printer.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QTextCursor>
#include <QTextEdit>

namespace ui {

namespace {

// The plain text of a cursor's selection, with "\n" between paragraphs as text() has.
QString plainSelection(const QTextCursor &cursor)
{
    QString text = cursor.selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

} // namespace

DocumentBox::DocumentBox(QWidget *window, QTextEdit *txtSpeech)
    : m_window(window), m_box(txtSpeech), m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    reader::SetTextBox(this);
}

DocumentBox::~DocumentBox()
{
    if (reader::textBox() == this)
        reader::SetTextBox(nullptr);
}

QString DocumentBox::text() const { return m_box->toPlainText(); }
QString DocumentBox::selectedText() const { return plainSelection(m_box->textCursor()); }
int DocumentBox::selStart() const { return m_box->textCursor().selectionStart(); }

int DocumentBox::selLength() const
{
    const QTextCursor cursor = m_box->textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
}

void SelectInBox(QTextEdit *box, int start, int length)
{
    QTextCursor cursor = box->textCursor();
    const int last = box->document()->characterCount() - 1;
    const int from = qBound(0, start, last);
    cursor.setPosition(from);
    cursor.setPosition(qBound(from, start + length, last), QTextCursor::KeepAnchor);
    box->setTextCursor(cursor);
}

void DocumentBox::select(int start, int length) { SelectInBox(m_box, start, length); }

void DocumentBox::replaceSelection(const QString &text)
{
    QTextCursor cursor = m_box->textCursor();
    cursor.insertText(text);
    m_box->setTextCursor(cursor);
}

void DocumentBox::rewriteText(const QString &text)
{
    // Only the stretch between the unchanged head and tail is replaced, so the format of
    // the rest stays as it was.
    const QString old = m_box->toPlainText();
    if (old == text)
        return;
    qsizetype head = 0;
    const qsizetype shorter = qMin(old.size(), text.size());
    while (head < shorter && old.at(head) == text.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && old.at(old.size() - 1 - tail) == text.at(text.size() - 1 - tail))
        ++tail;
    QTextCursor cursor(m_box->document());
    cursor.setPosition(int(head));
    cursor.setPosition(int(old.size() - tail), QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(head, text.size() - head - tail));
    QTextCursor caret = m_box->textCursor();
    caret.setPosition(0);
    m_box->setTextCursor(caret);
}

void DocumentBox::loadPlainText(const QString &text) { m_box->setPlainText(text); }

reader::RichDocument DocumentBox::richDocument() const { return RichDocumentOf(m_box->document()); }

void DocumentBox::loadRichDocument(const reader::RichDocument &document)
{
    SetRichDocument(m_box->document(), document);
    QTextCursor caret = m_box->textCursor();
    caret.setPosition(0);
    m_box->setTextCursor(caret);
}

void DocumentBox::setCaption(const QString &caption) { m_window->setWindowTitle(caption); }

void DocumentBox::processEvents() { QApplication::processEvents(); }

QString DocumentBox::startFolder() const
{
    const QString current = shell::app().CurrentFile;
    if (!current.isEmpty() && QFileInfo(current).isAbsolute())
        return QFileInfo(current).absolutePath();
    if (!m_lastFolder.isEmpty())
        return m_lastFolder;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

std::optional<QString> DocumentBox::showOpen(const QString &title, const QString &filter)
{
    const QString name = QFileDialog::getOpenFileName(m_window, title, startFolder(), reader::QtFileFilter(filter));
    if (name.isEmpty())
        return std::nullopt;
    m_lastFolder = QFileInfo(name).absolutePath();
    return name;
}

std::optional<QString> DocumentBox::showSave(const QString &title, const QString &filter)
{
    // The overwrite question is the program's own.
    const QString name = QFileDialog::getSaveFileName(m_window, title, startFolder(), reader::QtFileFilter(filter),
                                                      nullptr, QFileDialog::DontConfirmOverwrite);
    if (name.isEmpty())
        return std::nullopt;
    m_lastFolder = QFileInfo(name).absolutePath();
    return name;
}

void DocumentBox::showPageSetup()
{
    QPageSetupDialog dialog(m_printer.get(), m_window);
    dialog.exec();
}

reader::PrintOutcome DocumentBox::printText(bool selectionOnly)
{
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        // No printer on this machine: the text goes into a PDF file.
        const QString current = shell::app().CurrentFile;
        const QString suggested = QDir(startFolder()).filePath(
            (current.isEmpty() ? QStringLiteral("Sonamark") : QFileInfo(current).completeBaseName())
            + QStringLiteral(".pdf"));
        const QString name = QFileDialog::getSaveFileName(m_window, QStringLiteral("Print To PDF File"), suggested,
                                                          QStringLiteral("PDF Files (*.pdf)"));
        if (name.isEmpty())
            return {reader::PrintOutcome::Cancelled, {}};
        m_printer->setOutputFormat(QPrinter::PdfFormat);
        m_printer->setOutputFileName(name);
    } else {
        m_printer->setOutputFormat(QPrinter::NativeFormat);
        m_printer->setOutputFileName(QString());
        QPrintDialog dialog(m_printer.get(), m_window);
        dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
        dialog.setOption(QAbstractPrintDialog::PrintSelection, selectionOnly);
        dialog.setPrintRange(selectionOnly ? QAbstractPrintDialog::Selection : QAbstractPrintDialog::AllPages);
        if (dialog.exec() != QDialog::Accepted)
            return {reader::PrintOutcome::Cancelled, {}};
    }
    return PrintTextBox(m_box, selectionOnly, *m_printer);
}

} // namespace ui
