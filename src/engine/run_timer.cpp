#include "engine/run_timer.h"

#include "engine/interpreter.h"
#include "engine/run_report.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"
#include "shell/on_top_message.h"

namespace engine {

QString ProcessHotkey(int index)
{
    shell::app().PendingHotkey = 0;
    const hotkeys::HotkeyTable &t = hotkeys::table();
    if (index < 1 || index > t.HotkeyCount)
        return QStringLiteral("Error Hotkey ") + QString::number(index)
               + QStringLiteral(" not found. No actions taken.");
    if (!t.at(index).Active)
        return {};
    shell::app().PendingHotkey = index;
    return {};
}

void RunTimer_Timer()
{
    shell::AppState &app = shell::app();
    if (app.PendingHotkey == 0)
        return;
    if (runState().MacroRunning) {
        // PendingHotkey stays: the next ProcessHotkey clears it.
        shell::MsgBoxOT(QStringLiteral("A macro is already running"), 0, QStringLiteral("Run Macro"));
        return;
    }
    const int number = app.PendingHotkey;
    QString result;
    // After a fault the routine goes on with its next statement, so the pending
    // hotkey is cleared whatever happened to the run.
    shell::Guarded("(Form) frmSonamark::Sub RunTimer_Timer", [&] { result = RunMacro(number); });
    if (!result.isEmpty()) {
        const hotkeys::Hotkey &macro = hotkeys::table().at(number);
        if (platform::TextWindow *window = platform::services().textWindow)
            window->showText(QString(), RunTimerReportText(number, macro.Description, macro.Code, result));
    }
    app.PendingHotkey = 0;
}

} // namespace engine
