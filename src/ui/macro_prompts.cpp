#include "ui/macro_prompts.h"

#include "shell/startup.h"
#include "ui/frm_text.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QInputDialog>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace ui {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kLf = QStringLiteral("\n");

// Common dialog flags that have a meaning here.
constexpr qint32 kOverwritePrompt = 0x2;     // cdlOFNOverwritePrompt
constexpr qint32 kAllowMultiselect = 0x200;  // cdlOFNAllowMultiselect

QString filterOf(const platform::CommonDialog &d)
{
    return d.extension.isEmpty() ? QString()
                                 : QStringLiteral("Files (*.%1)").arg(d.extension) + QStringLiteral(";;All Files (*)");
}

QString titleOr(const platform::CommonDialog &d, const char *fallback)
{
    return d.title.trimmed().isEmpty() ? QString::fromLatin1(fallback) : d.title;
}

} // namespace

bool MacroPrompts::inputBox(const QString &title, const QString &prompt, QString &reply)
{
    QInputDialog box;
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setInputMode(QInputDialog::TextInput);
    box.resize(qMax(box.sizeHint().width(), 360), box.sizeHint().height());
    if (box.exec() != QDialog::Accepted)
        return false;
    reply = box.textValue();
    return true;
}

bool MacroPrompts::editText(QString &text)
{
    frmText window;
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.setContent(QStringLiteral("Hotkeys"), text);
    window.txtText->setReadOnly(false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &window);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    window.layout()->addWidget(buttons);
    window.txtText->setFocus();
    window.txtText->moveCursor(QTextCursor::End);
    if (window.exec() != QDialog::Accepted)
        return false;
    text = window.txtText->toPlainText().replace(kLf, kCrLf);
    return true;
}

bool MacroPrompts::commonDialog(const platform::CommonDialog &d, QString &result)
{
    result.clear();
    switch (d.kind) {
    case platform::CommonDialog::Folder:
        result = QFileDialog::getExistingDirectory(nullptr, titleOr(d, "Browse for Folder"), d.startPath);
        break;
    case platform::CommonDialog::Open:
        if (d.flags & kAllowMultiselect)
            result = QFileDialog::getOpenFileNames(nullptr, titleOr(d, "Open"), d.startPath, filterOf(d)).join(kCrLf);
        else
            result = QFileDialog::getOpenFileName(nullptr, titleOr(d, "Open"), d.startPath, filterOf(d));
        break;
    case platform::CommonDialog::Save:
        result = QFileDialog::getSaveFileName(nullptr, titleOr(d, "Save As"), d.startPath, filterOf(d), nullptr,
                                              d.flags & kOverwritePrompt ? QFileDialog::Options()
                                                                         : QFileDialog::DontConfirmOverwrite);
        break;
    case platform::CommonDialog::Color: {
        const QColor colour = QColorDialog::getColor(Qt::white, nullptr, titleOr(d, "Color"));
        if (colour.isValid())
            result = colour.name();
        break;
    }
    case platform::CommonDialog::Font: {
        bool chosen = false;
        const QFont font = QFontDialog::getFont(&chosen, QApplication::font(), nullptr, titleOr(d, "Font"));
        if (chosen)
            result = font.family();
        break;
    }
    case platform::CommonDialog::Print: {
        QPrinter printer;
        QPrintDialog dialog(&printer);
        dialog.setWindowTitle(titleOr(d, "Print"));
        if (dialog.exec() == QDialog::Accepted)
            result = printer.printerName().isEmpty() ? printer.outputFileName() : printer.printerName();
        break;
    }
    case platform::CommonDialog::Help:
        // The program's own help: its viewer, which answers nothing to the macro.
        shell::LaunchInstructions();
        break;
    }
    return !result.isEmpty();
}

} // namespace ui
