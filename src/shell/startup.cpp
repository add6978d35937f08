#include "shell/startup.h"

#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/data_folder.h"
#include "shell/delay.h"
#include "shell/file_util.h"
#include "shell/instance.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcStartup, "sonamark.startup", QtWarningMsg)

namespace shell {

namespace {

constexpr double kGreetingSeconds = 3;
constexpr double kSettleSeconds = 0.5;

void call(const std::function<void()> &step)
{
    if (step)
        step();
}

// Step 2: another instance is running. Returns false when this one must end.
bool settlePreviousInstance()
{
    if (!PreviousInstanceRunning(DataFolderPath()))
        return true;
    MsgBoxOT(QStringLiteral("Sonamark appears to be already running. Would you like to restart the program?"),
             1, QStringLiteral("Already Running"));
    if (app().MsgResult != MsgYes)
        return false;
    if (!TerminateEXE(QLatin1String(kExeName))) {
        MsgBoxOT(QStringLiteral("The previous instance of Sonamark could not be terminated. Would you "
                                "like to run a new instance of Sonamark?"),
                 1, QStringLiteral("New Instance"));
        if (app().MsgResult == MsgNo)
            return false;
    }
    return true;
}

} // namespace

bool IsStartHidden(const QStringList &args)
{
    return args.size() == 1 && args.first() == QLatin1String("/h");
}

QString ProgramFolder()
{
    QString folder = QCoreApplication::applicationDirPath();
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}

bool ShowInstructions()
{
    // Failures here are ignored: the help is a courtesy, never a reason to stop.
    const QString path = app().AppFolder + QLatin1String(kFirstRunFlagFile);
    if (!FileExists(path)) {
        WriteFileAtomically(path, "1\r\n");
        return true;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString value = QString::fromUtf8(file.readLine()).trimmed();
    // A stored boolean: "1", "-1" or "#TRUE#" is true.
    return value == QLatin1String("1") || value == QLatin1String("-1")
           || value.compare(QLatin1String("#TRUE#"), Qt::CaseInsensitive) == 0
           || value.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

bool LaunchInstructions()
{
    AppState &state = app();
    ++state.ChildFormDepth;
    bool quit = false;
    const QString folder = ProgramFolder();
    const QString viewer = folder + QLatin1String(kHelpProgram);
    if (!FileExists(viewer)) {
        MsgBoxOT(QStringLiteral("Missing Instructions file. No help available."), 0,
                 QStringLiteral("Missing %1").arg(QLatin1String(kHelpProgram)));
    } else if (platform::Desktop *desktop = platform::services().desktop) {
        const QString page = QStringLiteral("%1").arg(state.HelpPage, 2, 10, QLatin1Char('0'));
        const QString firstRun = state.HelpFirstRun ? QStringLiteral("1") : QStringLiteral("0");
        desktop->runAndWait(viewer, {page, firstRun}, folder);
        if (state.HelpFirstRun) {
            if (platform::Clipboard *clipboard = platform::services().clipboard)
                quit = clipboard->text() == QLatin1String("QuitMe");
        }
    }
    if (state.ChildFormDepth > 0)
        --state.ChildFormDepth;
    return quit;
}

StartupResult SubMain(const QStringList &args, const StartupSteps &steps)
{
    AppState &state = app();
    // 1.
    state.StartingUp = true;
    ClearStopDelay();
    // 2.
    if (!settlePreviousInstance())
        return StartupResult::Exit;
    // 3. and 4.
    const bool hidden = IsStartHidden(args);
    state.reset();
    state.StartHidden = hidden;
    call(steps.resetMacroRunner);
    // 5.
    if (!SetEnvar())
        return StartupResult::Fail;
    WriteLockFile(state.AppFolder);
    // 6. Any Linux with Qt 6 is acceptable; the login folder is the autostart folder.
    // 7.
    state.WordInstalled = steps.probeDictionary && steps.probeDictionary();
    if (!state.WordInstalled && !state.StartHidden)
        MsgBoxOT(QStringLiteral("WARNING no spelling dictionary has been installed on this PC. The "
                                "Spell Check feature will be unavailable."),
                 0, QStringLiteral("Dictionary Missing"));
    // 8.
    GetOptions();
    // 9. and 10.
    if (ShowInstructions() && !state.StartHidden) {
        state.HelpPage = 1;
        state.HelpFirstRun = true;
        if (LaunchInstructions()) {
            MsgBoxOT(QStringLiteral("Quit Sonamark?"), 1, QStringLiteral("End Program"));
            if (state.MsgResult == MsgYes)
                return StartupResult::Exit;
        }
    }
    // 11.
    state.StartingUp = false;
    call(steps.getExceptions);
    // 12. The first touch of the main window runs its Form_Load.
    call(steps.loadMainWindow);
    if (steps.mainWindowAlive && !steps.mainWindowAlive())
        return StartupResult::Fail;
    call(steps.enableCollectTimers);
    // 13.
    call(steps.setLanguageTables);
    // 14.
    if (!state.StartHidden) {
        if (platform::MessageWindow *window = platform::services().messages) {
            state.PopupText = QStringLiteral("Right click    for menu");
            window->showPopup(state.PopupText);
            call(steps.processEvents);
            Delay(kGreetingSeconds);
            window->hidePopup();
        }
    }
    // 15.
    Delay(kSettleSeconds);
    qCInfo(lcStartup) << "started, data folder" << state.AppFolder;
    return StartupResult::Run;
}

} // namespace shell
