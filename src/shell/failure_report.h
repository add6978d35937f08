#pragma once
// One reporter for unforeseen run-time failures: every routine hands it its identity
// ("(Form) frmX::Sub Y", "(Module) modX::Function Z") and goes on when it returns.
#include <QString>
#include <exception>
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

// Runs body; a C++ exception escaping it is reported with the identity of the innermost
// Routine it left (see below), or with source when it left none. Returns true when body
// finished without a fault.
bool Guarded(const char *source, const std::function<void()> &body);

// Called inside a catch block: reports the exception being handled, under the identity
// of the innermost Routine it left, or source.
void ReportCurrentFault(const QString &source);

// Names the routine it lives in for the failure report: a fault that unwinds through it
// is reported as this routine's, not as the event handler's that caught it.
//     shell::Routine routine("(Module) modHotkeys::Function RunMacro");
class Routine {
public:
    explicit Routine(const char *identity);
    ~Routine();
    Routine(const Routine &) = delete;
    Routine &operator=(const Routine &) = delete;

private:
    const char *m_identity;
    int m_uncaught;
};

// The number a report gives a C++ exception: the run-time error number of its kind
// (9 subscript out of range, 7 out of memory, 6 overflow, 11 division by zero,
// 5 invalid argument, 440 any other failure).
int FailureNumber(const std::exception &e);

} // namespace shell
