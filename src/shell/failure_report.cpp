#include "shell/failure_report.h"

#include "platform/services.h"
#include "shell/app_state.h"

#include <QCoreApplication>
#include <QList>
#include <QLoggingCategory>
#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

Q_LOGGING_CATEGORY(lcFailure, "sonamark.failure", QtWarningMsg)

namespace shell {

namespace {
QString g_errorText;
std::function<void()> g_quit;
bool g_reporting = false;  // the report window is open
struct PendingReport {
    QString source, description;
    int number;
};
QList<PendingReport> g_pending;  // failures raised while the window was open, in order
constexpr int kPendingLimit = 20;  // a polling fault must not pile up reports for ever
const char *g_failedRoutine = nullptr;  // innermost Routine the current fault left

constexpr int kOverflow = 6;
constexpr int kOutOfMemory = 7;
constexpr int kSubscriptOutOfRange = 9;
constexpr int kDivisionByZero = 11;
constexpr int kInvalidArgument = 5;
constexpr int kUnknownFailure = 440;
} // namespace

Routine::Routine(const char *identity) : m_identity(identity), m_uncaught(std::uncaught_exceptions())
{
    g_failedRoutine = nullptr;  // work goes on: any earlier fault has been dealt with
}

Routine::~Routine()
{
    if (std::uncaught_exceptions() > m_uncaught && !g_failedRoutine)
        g_failedRoutine = m_identity;
}

int FailureNumber(const std::exception &e)
{
    if (dynamic_cast<const std::out_of_range *>(&e) || dynamic_cast<const std::length_error *>(&e))
        return kSubscriptOutOfRange;
    if (dynamic_cast<const std::bad_alloc *>(&e))
        return kOutOfMemory;
    if (dynamic_cast<const std::overflow_error *>(&e) || dynamic_cast<const std::range_error *>(&e)
        || dynamic_cast<const std::underflow_error *>(&e))
        return kOverflow;
    if (dynamic_cast<const std::domain_error *>(&e))
        return kDivisionByZero;
    if (dynamic_cast<const std::invalid_argument *>(&e))
        return kInvalidArgument;
    return kUnknownFailure;
}

const QString &ErrorText() { return g_errorText; }

QString FormatErrorText(const QString &source, const QString &description, int number)
{
    return QStringLiteral("Error %1 in %2\r\nwhile running %3 v%4.%5.%6\r\n\r\nError = '%7'")
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
    if (g_reporting) {
        // Events run under the open window; a failure there is shown once it closes.
        if (g_pending.size() < kPendingLimit)
            g_pending << PendingReport{source, description, number};
        return;
    }
    g_reporting = true;
    PendingReport report{source, description, number};
    for (;;) {
        try {
            g_errorText = FormatErrorText(report.source, report.description, report.number);
            qCWarning(lcFailure).noquote() << g_errorText;
            if (platform::ErrorWindow *window = platform::services().errors) {
                if (window->showError(g_errorText) == platform::ErrorWindow::Choice::Quit) {
                    g_pending.clear();
                    QuitFromErrorWindow();
                }
            }
        } catch (...) {
            // A failure inside the reporter is not reported.
        }
        if (g_pending.isEmpty())
            break;
        report = g_pending.takeFirst();
    }
    g_reporting = false;
}

void ReportCurrentFault(const QString &source)
{
    const char *failed = std::exchange(g_failedRoutine, nullptr);
    const QString identity = failed ? QLatin1String(failed) : source;
    try {
        throw;
    } catch (const std::exception &e) {
        ErrorHandler(identity, QString::fromLocal8Bit(e.what()), FailureNumber(e));
    } catch (...) {
        ErrorHandler(identity, QStringLiteral("Unknown failure"), kUnknownFailure);
    }
}

bool Guarded(const char *source, const std::function<void()> &body)
{
    g_failedRoutine = nullptr;
    try {
        body();
        return true;
    } catch (...) {
        ReportCurrentFault(QLatin1String(source));
    }
    return false;
}

} // namespace shell
