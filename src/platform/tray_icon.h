#pragma once
// Port: the notification-area icon.
#include <QString>
#include <functional>

namespace platform {

enum class TrayPicture { Idle, Monitoring, SpellMonitoring, Macro };
enum class TrayClick { Left, Right };

class TrayIcon {
public:
    virtual ~TrayIcon() = default;
    // True when a notification area (tray host) is present.
    virtual bool exists() const = 0;
    virtual bool addIcon(TrayPicture picture, const QString &tip) = 0;
    virtual void changeIcon(TrayPicture picture) = 0;
    // The tip is cut to kTipLength characters by the caller.
    virtual void changeTip(const QString &tip) = 0;
    virtual void deleteIcon() = 0;
    virtual bool isShown() const = 0;
    // Called on the GUI thread when the icon is clicked (button released).
    std::function<void(TrayClick)> onClick;

    static constexpr int kTipLength = 64;
};

} // namespace platform
