#pragma once
#include "platform/clipboard.h"

namespace platform {

// The clipboard through QClipboard (the CLIPBOARD selection on X11).
class QtClipboard : public Clipboard {
public:
    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
};

} // namespace platform
