#include "platform/qt/qt_tray_icon.h"

#include "platform/qt/tray_pictures.h"

#include <QCursor>
#include <QLoggingCategory>
#include <QSystemTrayIcon>

namespace platform {

namespace {

// "sonamark.tray.info=true" logs every picture and tip the icon is given.
Q_LOGGING_CATEGORY(lcTray, "sonamark.tray", QtWarningMsg)

const char *pictureName(TrayPicture picture)
{
    switch (picture) {
    case TrayPicture::Idle: return "idle";
    case TrayPicture::Monitoring: return "monitoring";
    case TrayPicture::SpellMonitoring: return "spell-monitoring";
    case TrayPicture::Macro: return "macro";
    }
    return "?";
}

} // namespace

QtTrayIcon::QtTrayIcon() : m_icon(std::make_unique<QSystemTrayIcon>())
{
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (!onClick)
                    return;
                // A double click is two releases of the left button: Qt reports the
                // second as DoubleClick, and it counts as the second left click.
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    onClick(TrayClick::Left);
                else if (reason == QSystemTrayIcon::Context)
                    onClick(TrayClick::Right);
            });
}

QtTrayIcon::~QtTrayIcon() = default;

bool QtTrayIcon::exists() const { return QSystemTrayIcon::isSystemTrayAvailable(); }

bool QtTrayIcon::addIcon(TrayPicture picture, const QString &tip)
{
    changeIcon(picture);
    changeTip(tip);
    m_icon->show();
    return m_icon->isVisible();
}

void QtTrayIcon::changeIcon(TrayPicture picture)
{
    qCInfo(lcTray).noquote() << "picture" << pictureName(picture);
    m_icon->setIcon(TrayPictureIcon(picture));
}

void QtTrayIcon::changeTip(const QString &tip)
{
    qCInfo(lcTray).noquote() << "tip" << tip.left(kTipLength);
    m_icon->setToolTip(tip.left(kTipLength));
}

void QtTrayIcon::deleteIcon() { m_icon->hide(); }

bool QtTrayIcon::isShown() const { return m_icon->isVisible(); }

QPoint QtTrayIcon::menuPosition() const
{
    const QRect where = m_icon->geometry();
    return where.isValid() ? where.center() : QCursor::pos();
}

} // namespace platform
