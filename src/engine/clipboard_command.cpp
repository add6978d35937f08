#include "engine/clipboard_command.h"

#include "engine/interpreter.h"
#include "engine/run_hooks.h"
#include "engine/run_report.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/actions.h"
#include "macro/macro_text.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcClipCommand, "sonamark.clipboard.command", QtWarningMsg)

namespace engine {

namespace {

CommandLineUi g_ui;

const QString kRunMacroTitle = QStringLiteral("Run Macro");

void showReport(const QString &text)
{
    if (platform::TextWindow *window = platform::services().textWindow)
        window->showText(kErrorReportCaption, text);
}

} // namespace

void SetCommandLineUi(CommandLineUi ui) { g_ui = std::move(ui); }

void ParseCommandLineMacro(const QString &line, QString &name, double &seconds)
{
    const qsizetype blank = line.lastIndexOf(QLatin1Char(' '));
    if (blank >= 0) {
        seconds = shell::Val(line.mid(blank + 1));
        name = line.left(blank);
    } else {
        seconds = 0;
        name = line;
    }
    name.replace(QLatin1Char('$'), QLatin1Char(' '));
}

void RunCommandLineMacro(const QString &line)
{
    hotkeys::HotkeyTable &t = hotkeys::table();
    QString name;
    double seconds = 0;
    ParseCommandLineMacro(line, name, seconds);
    const QString notFound = QStringLiteral("Macro not found in file ") + t.HotkeysFileName;
    if (name.trimmed().isEmpty()) {
        shell::MsgBoxOT(notFound, 0, QStringLiteral("QuickLaunch Macro"));
        return;
    }
    int number = 0;
    for (int n = 1; n <= t.HotkeyCount && number == 0; ++n)
        if (t.at(n).Description.compare(name, Qt::CaseInsensitive) == 0)
            number = n;
    if (number == 0) {
        shell::MsgBoxOT(notFound, 0, QStringLiteral("QuickLaunch Macro"));
        return;
    }
    hotkeys::Hotkey &macro = t.at(number);
    const QString code = macro.Code;
    if (code.isEmpty() || code == macro::kCrLf) {
        shell::MsgBoxOT(QStringLiteral("No actions in this macro to run"), 0, kRunMacroTitle);
        return;
    }
    if (!macro.Active) {
        shell::MsgBoxOT(QStringLiteral("This macro is disabled. Enable it?"), 2, kRunMacroTitle);
        const int answer = shell::app().MsgResult;
        if (answer == shell::MsgCancel)
            return;
        if (answer == shell::MsgYes)
            macro.Active = true;
    }
    const QString trimmed = macro::TrimBlanks(code);
    if (trimmed.isEmpty() || trimmed == macro::kCrLf)
        return;

    if (!CheckWholeMacro(code).isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("There were errors found in the code. Edit this macro instead?"), 2,
                        QStringLiteral("Run Hotkey ") + QString::number(number) + QStringLiteral(" \"")
                            + macro.Description + QLatin1Char('"'));
        const int answer = shell::app().MsgResult;
        if (answer == shell::MsgCancel)
            return;
        if (answer == shell::MsgYes) {
            if (g_ui.editMacro)
                g_ui.editMacro(number - 1);
            return;
        }
    }
    if (seconds > kMaxCommandWait) {
        shell::MsgBoxOT(QStringLiteral("You can only wait 3600 secs before running a macro. Use the [WAIT Secs] "
                                       "command for wait times longer than 3600 secs."),
                        0, kRunMacroTitle);
        seconds = kMaxCommandWait;
    } else if (seconds < 0) {
        seconds = 0;
    }
    if (g_ui.hideMainWindow)
        g_ui.hideMainWindow();
    DoEvents();
    if (seconds > 0)
        shell::Delay(seconds);

    const QString result = RunMacro(number);
    if (!result.isEmpty())
        showReport(CommandLineReportText(number, macro.Description, macro.Code, result));
}

bool PollClipboardCommand()
{
    bool taken = false;
    try {
        platform::Clipboard *clipboard = platform::services().clipboard;
        if (!clipboard)
            return false;
        const QString text = clipboard->text();
        if (!text.startsWith(kClipboardCommandPrefix))
            return false;
        clipboard->clear();
        taken = true;
        qCDebug(lcClipCommand) << "command" << text;
        RunCommandLineMacro(text.mid(kClipboardCommandPrefix.size()));
        return true;
    } catch (...) {
        qCDebug(lcClipCommand) << "poll failed; next tick tries again";
        return taken;
    }
}

} // namespace engine
