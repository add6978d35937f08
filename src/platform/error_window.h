#pragma once
// Port: the failure window frmDisplayError.
#include <QString>

namespace platform {

class ErrorWindow {
public:
    enum class Choice { Continue, Quit };
    virtual ~ErrorWindow() = default;
    // Shows the report modally. The window's report button is handled inside the window
    // (it asks shell for the mail address and opens it); only Continue and Quit end it.
    virtual Choice showError(const QString &errorText) = 0;
};

} // namespace platform
