#pragma once
// One reporter for unforeseen run-time failures: every routine hands it its identity
// ("(Form) frmX::Sub Y", "(Module) modX::Function Z") and goes on when it returns.
#include <QString>
#include <functional>

namespace shell {

inline constexpr const char *kSupportAddress = "support@sonamark.org";
inline constexpr const char *kProgramFileName = "sonamark";

// Formats ErrorText, shows frmDisplayError modally and returns when the user chose
// Continue. Quit ends the process (during start-up) or closes the main window.
void ErrorHandler(const QString &source, const QString &description, int number);
// The last report, as the window shows it.
const QString &ErrorText();
QString FormatErrorText(const QString &source, const QString &description, int number);

// The mailto: address of cmdErrorReport_Click for a report text.
QString ErrorReportUrl(const QString &errorText);
// CR dropped, LF as "%0D%0A"; nothing else is escaped.
QString EncodeMailBody(const QString &body);

// What Quit does once the window has closed; the UI installs closing the main window.
void SetQuitHandler(std::function<void()> quit);
// Called by the error window's Quit button.
void QuitFromErrorWindow();

// Runs body; a C++ exception escaping it is reported with source as identity.
// Returns true when body finished without a fault.
bool Guarded(const char *source, const std::function<void()> &body);

} // namespace shell
