#pragma once
// Port: frmText, the window that shows a long text (the run-time report, help pages).
#include <QString>

namespace platform {

class TextWindow {
public:
    virtual ~TextWindow() = default;
    // Shows text under the caption (for example "ERROR REPORT"); returns at once.
    virtual void showText(const QString &caption, const QString &text) = 0;
    // Shows text under the caption in a window of its own, modally: returns when the user
    // has closed it. Events are served meanwhile.
    virtual void showModal(const QString &caption, const QString &text) = 0;
};

} // namespace platform
