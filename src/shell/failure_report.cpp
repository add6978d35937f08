#include "shell/failure_report.h"

#include "platform/services.h"
#include "shell/app_state.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <exception>

Q_LOGGING_CATEGORY(lcFailure, "sonamark.failure", QtWarningMsg)

namespace shell {

namespace {
QString g_errorText;
std::function<void()> g_quit;
bool g_reporting = false;  // a failure inside the reporter is not reported
constexpr int kUnknownFailure = 440;  // number used for faults that carry none
} // namespace

const QString &ErrorText() { return g_errorText; }

QString FormatErrorText(const QString &source, const QString &description, int number)
{
    return QStringLiteral("Error %1 in %2\r\nwhile running %3.exe v%4.%5.%6\r\n\r\nError = '%7'")
        .arg(number)
        .arg(source, QLatin1String(kProgramFileName))
        .arg(SONAMARK_VERSION_MAJOR)
        .arg(SONAMARK_VERSION_MINOR)
        .arg(SONAMARK_VERSION_PATCH)
        .arg(description);
}

QString EncodeMailBody(const QString &body)
{
    QString out;
    out.reserve(body.size());
    for (const QChar c : body) {
        if (c == QLatin1Char('\r'))
            continue;
        if (c == QLatin1Char('\n'))
            out += QStringLiteral("%0D%0A");
        else
            out += c;
    }
    return out;
}

QString ErrorReportUrl(const QString &errorText)
{
    const QString body = errorText + QStringLiteral("\r\n\r\nPlease include any comments below.");
    return QStringLiteral("mailto:") + QLatin1String(kSupportAddress)
           + QStringLiteral("?subject=Sonamark Help - ") + QStringLiteral("&body=")
           + EncodeMailBody(body);
}

void SetQuitHandler(std::function<void()> quit) { g_quit = std::move(quit); }

void QuitFromErrorWindow()
{
    if (app().StartingUp || !g_quit)
        ::exit(0);
    QCoreApplication::processEvents();
    g_quit();
}

void ErrorHandler(const QString &source, const QString &description, int number)
{
    if (g_reporting)
        return;
    g_reporting = true;
    try {
        g_errorText = FormatErrorText(source, description, number);
        qCWarning(lcFailure).noquote() << g_errorText;
        if (platform::ErrorWindow *window = platform::services().errors) {
            if (window->showError(g_errorText) == platform::ErrorWindow::Choice::Quit)
                QuitFromErrorWindow();
        }
    } catch (...) {
    }
    g_reporting = false;
}

bool Guarded(const char *source, const std::function<void()> &body)
{
    try {
        body();
        return true;
    } catch (const std::exception &e) {
        ErrorHandler(QLatin1String(source), QString::fromLocal8Bit(e.what()), kUnknownFailure);
    } catch (...) {
        ErrorHandler(QLatin1String(source), QStringLiteral("Unknown failure"), kUnknownFailure);
    }
    return false;
}

} // namespace shell
