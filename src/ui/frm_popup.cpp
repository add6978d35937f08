#include "ui/frm_popup.h"

#include "platform/qt/tray_pictures.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>

namespace ui {

frmPopup::frmPopup(const QString &text, QWidget *parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmPopup"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setStyleSheet(QStringLiteral("frmPopup, QWidget#frmPopup { background: #fff8d0; border: 1px solid #806000; }"));
    Image1 = new QLabel(this);
    Image1->setPixmap(platform::ProgramIcon().pixmap(32, 32));
    lblPopup = new QLabel(text, this);
    lblPopup->setObjectName(QStringLiteral("lblPopup"));
    QFont font = lblPopup->font();
    font.setPointSize(11);
    font.setBold(true);
    lblPopup->setFont(font);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->addWidget(Image1);
    layout->addWidget(lblPopup);
    adjustSize();
    // Bottom right, where the notification area usually is.
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.right() - width() - 16, area.bottom() - height() - 16);
    }
}

} // namespace ui
