// [WEBSOURCE URL Src]: starts the fetch, then looks once a second until text has come,
// the time limit has passed, or the user has aborted.
#include "engine/web_source.h"

#include "engine/dispatch.h"
#include "engine/interpreter.h"
#include "engine/macro_clock.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "macro/commands.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "shell/delay.h"
#include "shell/file_util.h"
#include "shell/legacy_text.h"

#include <QFileInfo>
#include <QLoggingCategory>

namespace engine {

namespace {

Q_LOGGING_CATEGORY(lcWebSource, "sonamark.engine.websource", QtWarningMsg)

const QString kStatement = QStringLiteral("[WEBSOURCE URL Src]");

// WebFetchActive and the Esc canceller for the time of one fetch. On every way out the
// fetch is stopped, which does nothing once it has delivered.
class ActiveFetch {
public:
    explicit ActiveFetch(platform::WebFetch &web) : m_web(web)
    {
        hotkeys::SetWebFetchCanceller([&web] { web.cancel(); });
        hotkeys::hookState().WebFetchActive = true;
    }
    ~ActiveFetch()
    {
        hotkeys::hookState().WebFetchActive = false;
        hotkeys::SetWebFetchCanceller(nullptr);
        m_web.cancel();
    }
    ActiveFetch(const ActiveFetch &) = delete;
    ActiveFetch &operator=(const ActiveFetch &) = delete;

private:
    platform::WebFetch &m_web;
};

// Seconds since start on the macro clock; a midnight in between is counted.
double secondsSince(double start)
{
    double now = MacroClock();
    if (now < start)
        now += kSecondsPerDay;
    return now - start;
}

// True when value names a file in an existing folder. A page fetched earlier into the
// same variable is never taken for a path, even when it begins with "/".
bool isFileInExistingFolder(const QString &value)
{
    if (value.isEmpty() || value.contains(QLatin1Char('\n')) || value.contains(QLatin1Char('\r')))
        return false;
    const QFileInfo info(value);
    return info.isAbsolute() && shell::FolderExists(info.absolutePath());
}

// Puts the page where the variable's present value says: into the file it names, or
// into the variable itself.
void storePage(const QString &resultName, const QString &page)
{
    QString name = resultName;
    int type = macro::kTypeString;
    const QString present = macro::GetVarVal(name, type);
    if (name.isEmpty() || !isFileInExistingFolder(present)) {
        macro::SetVarVal(resultName, page);
        return;
    }
    const QString error = shell::WriteFileAtomically(present, shell::EncodeText(page));
    if (!error.isEmpty()) {
        qCWarning(lcWebSource) << "cannot write" << present << ":" << error;
        macro::SetVarVal(resultName, QString::fromLatin1(kWebFileError));
    }
}

} // namespace

QString DoWEBSOURCE(int line)
{
    StringAndResult operands;
    const QString message = GetStringAndResult(line, kStatement, QStringLiteral("URL"), QStringLiteral("URL"),
                                               QStringLiteral("source "), operands,
                                               QStringLiteral("Missing right variable"));
    if (!message.isEmpty())
        return message;
    platform::WebFetch *web = platform::services().web;
    if (!web)
        return QStringLiteral("No web access for [WEBSOURCE URL Src] statement");
    const QUrl url = WebSourceUrl(operands.text);
    if (url.isEmpty()) {
        qCInfo(lcWebSource) << "not an http or https address:" << operands.text;
        macro::SetVarVal(operands.resultName, QString::fromLatin1(kWebInvalidUrl));
        return {};
    }

    QString WebSourceText;
    {
        const ActiveFetch active(*web);
        MacroRunState &s = runState();
        const double start = MacroClock();
        web->start(url);
        while (WebSourceText.isEmpty()) {
            shell::Delay(kWebFetchPollSeconds);
            // Delay pumps nothing: Esc, clicks and hotkeys reach the hooks here, between
            // the sleeps. The fetch itself goes on by itself meanwhile (its own thread).
            DoEvents();
            platform::WebResponse response;
            if (web->takeResponse(response)) {
                WebSourceText = WebResponseText(response);
                if (!WebSourceText.isEmpty())
                    break;
            }
            if (secondsSince(start) >= kWebFetchLimitSeconds) {
                qCInfo(lcWebSource) << "timed out:" << url.toDisplayString();
                macro::SetVarVal(operands.resultName, QString::fromLatin1(kWebTimedOut));
                return {};
            }
            if (s.AbortRequested) {
                s.AbortRequested = false;
                return QStringLiteral("User Abort");
            }
        }
    }
    storePage(operands.resultName, WebSourceText);
    return {};
}

} // namespace engine
