#include "engine/interpreter.h"

#include "engine/composition.h"
#include "engine/dispatch.h"
#include "engine/macro_clock.h"
#include "engine/run_hooks.h"
#include "engine/run_report.h"
#include "engine/run_state.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "shell/failure_report.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcEngine, "sonamark.engine", QtWarningMsg)

namespace engine {

namespace {

const QString kGoTo = QStringLiteral("GoTo 1");
const QString kQuit = QStringLiteral("<QUIT>");
const QLatin1String kFatal("FATAL ERROR");
const QString kIdleStatus = QStringLiteral("Sonamark - Idle");
const QString kMonitoringStatus = QStringLiteral("Monitoring Clipboard..");

void appendError(QString &errorText, int errorCount, int line, const QString &msg)
{
    const QString entry = QString::number(errorCount) + QStringLiteral(") Line ") + QString::number(line)
                          + QLatin1Char(' ') + msg;
    if (errorCount == 1)
        errorText = entry;
    else if (errorCount < kMaxReportedErrors)
        errorText += QStringLiteral("\r\n") + entry;
    else if (errorCount == kMaxReportedErrors)
        errorText += QStringLiteral("\r\n\r\n<<Error messages were truncated at ")
                     + QString::number(kMaxReportedErrors) + QStringLiteral(">>");
}

// Ends the run state however RunMacro is left.
struct FinishGuard {
    ~FinishGuard() { FinishRunningMacro(); }
};

} // namespace

bool MACRO_Expired()
{
    const MacroRunState &s = runState();
    if (s.WaitInProgress)
        return false;
    double now = MacroClock();
    if (now < s.MacroStart)
        now += kSecondsPerDay;  // the run has crossed midnight once
    return s.MacroStart + macro::variableTable().MacroTimeout < now;
}

QString ProcessActions(int index, QString &errorText, int &errorCount)
{
    shell::Routine routine("(Module) modHotkeys::Function ProcessActions");
    MacroRunState &s = runState();
    if (s.ActionCount() == 0)
        return QStringLiteral("No actions to execute");
    errorCount = 0;
    errorText.clear();

    for (;;) {
        const int first = s.NextLine;
        const int last = s.LastLine;
        bool newPass = false;
        for (int line = first; line <= last && !newPass; ++line) {
            if (++s.LinesExecuted > kMaxLinesExecuted)
                return QStringLiteral("Too many lines executed");
            if (MACRO_Expired())
                return QStringLiteral("Macro timed out");
            QString msg = DoAction(line);
            if (s.AbortRequested) {
                s.AbortRequested = false;
                const QString name = hotkeys::table().at(index).Description;
                shell::MsgBoxOT(QStringLiteral("Abort macro \"") + name + QStringLiteral("\"?"), 1,
                                QStringLiteral("ABORT"), 0);
                if (shell::app().MsgResult == shell::MsgYes)
                    return QStringLiteral("User abort");
            }
            if (msg.isEmpty())
                continue;
            if (msg == kGoTo) {
                newPass = true;
                continue;
            }
            if (msg == kQuit)
                return {};
            bool jumpAfter = false;
            if (msg.endsWith(QLatin1Char('$'))) {
                msg.chop(1);
                jumpAfter = true;
            }
            ++errorCount;
            appendError(errorText, errorCount, line, msg);
            qCDebug(lcEngine) << "line" << line << msg;
            if (jumpAfter)
                newPass = true;
            else if (msg.startsWith(kFatal))
                return {};
        }
        if (!newPass)
            return {};
    }
}

QString RunMacro(int index)
{
    shell::Routine routine("(Module) modHotkeys::Function RunMacro");
    const hotkeys::Hotkey &macro = hotkeys::table().at(index);
    if (!macro.Active)
        return {};
    QString result = ParseActions(index);
    if (!result.isEmpty())
        return result;
    const bool hasHotkeyLines = IsHOTKEYcommand();
    if (hasHotkeyLines) {
        result = InsertHOTKEYcode();
        if (!result.isEmpty())
            return result;
    }

    CloseAll();
    InitMacroVars();
    SetupRunningMacro(index);
    FinishGuard finish;

    QString errorText;
    int errorCount = 0;
    result = ProcessActions(index, errorText, errorCount);
    if (errorCount > 0) {
        const QString listing = hasHotkeyLines ? GetAllActions() : macro.Code;
        const QString report = RuntimeReportText(index, macro.Description, listing, errorText, errorCount);
        // Modal, inside the run: MacroRunning stays true until the user has closed it, so
        // a hotkey meanwhile is refused instead of starting a run whose report would
        // take its place.
        if (platform::TextWindow *window = platform::services().textWindow)
            window->showModal(kErrorReportCaption, report);
    }
    return result;
}

void InitMacroVars()
{
    MacroRunState &s = runState();
    s.OpenFileCount = 0;
    s.LinesExecuted = 0;
    ResetVariableTable();  // the time limit too
    ResetLoopSlots();
    s.AbortRequested = false;
    s.WaitInProgress = false;
    hotkeys::HookState &h = hotkeys::hookState();
    h.KeyLogActive = false;
    h.KeyLogText.clear();
    h.ClickZoneWaiting = h.ClickZoneHit = h.ClickZoneTrap = false;
    h.ClickX = h.ClickY = 0;
    h.ClickZoneXmin = h.ClickZoneYmin = h.ClickZoneXmax = h.ClickZoneYmax = 0;
    s.NextLine = 1;
    s.LastLine = s.ActionCount();
    s.MacroStart = MacroClock();
}

void CloseAll()
{
    CloseMacroFiles();
    runState().OpenFileCount = 0;
}

void SetupRunningMacro(int index)
{
    runState().MacroRunning = true;
    RunningStateChanged();
    const QString status = QStringLiteral("Sonamark - Running macro \"") + hotkeys::table().at(index).Description
                           + QStringLiteral("\"..");
    ShowStatusText(status);
    ShowTray(platform::TrayPicture::Macro, status);
}

void FinishRunningMacro()
{
    CloseAll();
    ReleaseMacroMouseHook();
    MacroRunState &s = runState();
    s.MacroRunning = false;
    hotkeys::HookState &h = hotkeys::hookState();
    h.KeyLogText.clear();
    h.KeyLogActive = false;
    h.ClickZoneWaiting = false;
    s.WaitInProgress = false;
    s.AbortRequested = false;
    RunningStateChanged();
    RestoreCurrentState();
}

void RestoreCurrentState()
{
    const ReaderState reader = SaveReaderState();
    if (reader.monitoring)
        ShowTray(reader.spellChecking ? platform::TrayPicture::SpellMonitoring : platform::TrayPicture::Monitoring,
                kMonitoringStatus);
    else
        ShowTray(platform::TrayPicture::Idle, kIdleStatus);
}

} // namespace engine
