#include "ui/frm_text.h"

#include "shell/app_state.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace ui {

frmText::frmText(QWidget *parent) : QDialog(parent, Qt::Window | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmText"));
    setAttribute(Qt::WA_DeleteOnClose);
    ++shell::app().ChildFormDepth;
    txtText = new QPlainTextEdit(this);
    txtText->setObjectName(QStringLiteral("txtText"));
    txtText->setReadOnly(true);
    txtText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(txtText);
    resize(640, 420);
}

frmText::~frmText()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmText::setContent(const QString &caption, const QString &text)
{
    setWindowTitle(caption);
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    txtText->setPlainText(shown);
}

TextWindows::~TextWindows() { delete m_window.data(); }

void TextWindows::showText(const QString &caption, const QString &text)
{
    if (!m_window)
        m_window = new frmText;
    m_window->setContent(caption, text);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_window->txtText->setFocus();
}

void TextWindows::showModal(const QString &caption, const QString &text)
{
    // A window of its own: a report shown while another is open never replaces it.
    frmText window;
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.setContent(caption, text);
    window.txtText->setFocus();
    window.exec();
}

} // namespace ui
