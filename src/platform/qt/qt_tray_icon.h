#pragma once
#include "platform/tray_icon.h"

#include <QObject>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace platform {

// The notification-area icon on QSystemTrayIcon. Left clicks arrive as Trigger, right
// clicks as Context; the context menu is popped up by the click handler, not by Qt.
class QtTrayIcon : public QObject, public TrayIcon {
    Q_OBJECT
public:
    QtTrayIcon();
    ~QtTrayIcon() override;
    bool exists() const override;
    bool addIcon(TrayPicture picture, const QString &tip) override;
    void changeIcon(TrayPicture picture) override;
    void changeTip(const QString &tip) override;
    void deleteIcon() override;
    bool isShown() const override;
    // Where the menu should pop up: at the icon when the host tells, else at the pointer.
    QPoint menuPosition() const;

private:
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace platform
