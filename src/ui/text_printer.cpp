#include "ui/text_printer.h"

#include <QDateTime>
#include <QFileInfo>
#include <QPrinter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <memory>

namespace ui {

reader::PrintOutcome PrintTextBox(const QTextEdit *box, bool selectionOnly, QPrinter &printer)
{
    using reader::PrintOutcome;
    const bool toPdf = printer.outputFormat() == QPrinter::PdfFormat;
    if (toPdf && printer.outputFileName().isEmpty())
        return {PrintOutcome::Failed, QStringLiteral("No file was given for the PDF.")};
    // The document to print: a copy, so that pagination leaves the box's layout alone.
    std::unique_ptr<QTextDocument> copy;
    const QTextCursor cursor = box->textCursor();
    if (selectionOnly && cursor.hasSelection()) {
        copy = std::make_unique<QTextDocument>();
        copy->setDefaultFont(box->document()->defaultFont());
        QTextCursor(copy.get()).insertFragment(cursor.selection());
    } else {
        copy.reset(box->document()->clone());
    }
    const QDateTime started = QDateTime::currentDateTime().addSecs(-1);
    copy->print(&printer);
    const QFileInfo pdf(printer.outputFileName());
    if (toPdf && (!pdf.isFile() || pdf.size() == 0 || pdf.lastModified() < started))
        return {PrintOutcome::Failed, QStringLiteral("The file %1 could not be written.").arg(printer.outputFileName())};
    if (printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted)
        return {PrintOutcome::Failed, QStringLiteral("The printer %1 reported an error.").arg(printer.printerName())};
    return {PrintOutcome::Printed, {}};
}

} // namespace ui
