#pragma once
// The X clipboard for programs without a window of their own (sonamark-cli): text goes
// through the xclip program, which keeps serving what was set after this process ends.
// Pictures are not handled.
#include "platform/clipboard.h"

namespace platform {

class XclipClipboard : public Clipboard {
public:
    // True when there is an X display and the xclip program.
    static bool available();

    QString text() override;
    void setText(const QString &text) override;
    void clear() override { setText(QString()); }
    PicturePtr picture() override { return nullptr; }
    void setPicture(const PicturePtr &) override {}
};

} // namespace platform
