#pragma once
#include "platform/desktop.h"

namespace platform {

class QtDesktop : public Desktop {
public:
    // Through xdg-open, which hands the URL to the user's browser or mail program.
    bool openUrl(const QString &url) override;
    bool canOpenUrls() const override;
    bool startDetached(const QString &program, const QStringList &args, const QString &workDir) override;
    bool runAndWait(const QString &program, const QStringList &args, const QString &workDir) override;
};

} // namespace platform
