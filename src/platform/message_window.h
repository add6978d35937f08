#pragma once
// Port: the always-on-top message window (frmAOTMsg) and the small notice (frmPopup).
#include <QString>
#include <functional>

namespace platform {

// One message as the window must show it.
struct MessageSpec {
    QString text;     // already cut to its shown length
    QString title;
    int type = 0;     // 0 OK, 1 Yes/No, 2 Yes/No/Cancel
    double timeout = 0;  // seconds; 0 or below: no count-down
    int align = 2;    // 0 left, 1 right, 2 centre
};

class MessageWindow {
public:
    virtual ~MessageWindow() = default;
    // Shows the window modally and returns the answer (1 Yes, -1 No, -2 Cancel, -3 OK).
    virtual int showModal(const MessageSpec &request) = 0;
    // Shows the window without modality and returns at once. The window reports its
    // answer through answered when a button is pressed or its count-down ends.
    virtual void showModeless(const MessageSpec &request) = 0;
    // Unloads a modeless window that is still open; its unload gives the default answer.
    virtual void unload() = 0;
    // frmPopup: shows a borderless notice until hidePopup.
    virtual void showPopup(const QString &text) = 0;
    virtual void hidePopup() = 0;

    // Takes the answer of a modeless window (1 Yes, -1 No, -2 Cancel, -3 OK); the caller
    // sets it before showModeless.
    std::function<void(int answer)> answered;
};

} // namespace platform
