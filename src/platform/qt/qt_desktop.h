#pragma once
#include "platform/desktop.h"

namespace platform {

class QtDesktop : public Desktop {
public:
    bool openUrl(const QString &url) override;
    bool startDetached(const QString &program, const QStringList &args, const QString &workDir) override;
    bool runAndWait(const QString &program, const QStringList &args, const QString &workDir) override;
};

} // namespace platform
