#include "ui/macro_prompts.h"

#include "ui/frm_text.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace ui {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kLf = QStringLiteral("\n");

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

} // namespace ui
