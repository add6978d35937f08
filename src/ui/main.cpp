// sonamark: the resident program.
#include "audio/process_batch_helper.h"
#include "engine/run_state.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/hunspell/hunspell_checker.h"
#include "platform/linux/antiword_files.h"
#include "platform/linux/proc_processes.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_tray_icon.h"
#include "platform/qt/qt_web_fetch.h"
#include "platform/qt/tray_pictures.h"
#include "platform/services.h"
#include "reader/box_reader_text.h"
#include "reader/exceptions.h"
#include "search/find_files.h"
#include "platform/x11/x11_input_hooks.h"
#include "platform/x11/x11_key_sender.h"
#include "platform/x11/x11_mouse_sender.h"
#include "platform/x11/x11_window_finder.h"
#include "shell/failure_report.h"
#include "shell/startup.h"
#include "spell/spell_check.h"
#include "ui/frm_aot_msg.h"
#include "ui/frm_display_error.h"
#include "ui/frm_find_files.h"
#include "ui/frm_sonamark.h"
#include "ui/frm_spell_it.h"
#include "ui/frm_text.h"
#include "ui/guarded_application.h"
#include "ui/macro_prompts.h"
#include "ui/subsystem_calls.h"

#include <QFileInfo>
#include <QThread>
#include <QTimer>
#include <memory>

int main(int argc, char **argv)
{
    ui::GuardedApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Sonamark"));
    QApplication::setApplicationVersion(QStringLiteral(SONAMARK_VERSION_TEXT));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(platform::ProgramIcon());

    platform::ProcProcesses processes;
    platform::QtClipboard clipboard;
    platform::QtDesktop desktop;
    platform::QtTrayIcon tray;
    ui::MessageWindows messages;
    ui::ErrorWindows errors;
    ui::TextWindows textWindow;
    platform::espeak::EspeakEngine speech;
    platform::x11::X11InputHooks inputHooks;
    platform::x11::X11KeySender keys;
    platform::x11::X11MouseSender mouse;
    platform::x11::X11WindowFinder windows;
    platform::AntiwordFiles wordFiles;
    platform::QtWebFetch web;
    reader::BoxReaderText readerText;
    ui::MacroPrompts prompts;
    platform::HunspellChecker spellChecker;
    platform::Services services;
    services.speech = &speech;
    services.processes = &processes;
    services.clipboard = &clipboard;
    services.desktop = &desktop;
    services.tray = &tray;
    services.messages = &messages;
    services.errors = &errors;
    services.textWindow = &textWindow;
    services.wordFiles = &wordFiles;
    services.readerText = &readerText;
    services.inputHooks = &inputHooks;
    services.keys = &keys;
    services.mouse = &mouse;
    services.windows = &windows;
    services.prompts = &prompts;
    services.web = &web;
    services.spell = &spellChecker;
    // With a second core, the batch window reads two documents at once.
    const QString cli = QApplication::applicationDirPath() + QStringLiteral("/sonamark-cli");
    audio::ProcessBatchHelper batchHelper(cli);
    if (QThread::idealThreadCount() > 1 && QFileInfo(cli).isExecutable())
        services.batchHelper = &batchHelper;
    platform::install(services);
    ui::InstallSpellWindow();

    std::unique_ptr<ui::frmSonamark> window;
    shell::SetQuitHandler([&window] {
        if (window)
            window->close();
    });
    search::SetFindFilesOpener([&window] { ui::ShowFindFiles(window.get()); });

    shell::StartupSteps steps;
    steps.resetMacroRunner = [] { engine::runState().reset(); };
    steps.probeDictionary = spell::SpellCheckAvailable;
    steps.getExceptions = reader::GetExceptions;
    steps.loadMainWindow = [&] {
        window = std::make_unique<ui::frmSonamark>(&tray);
        window->Form_Load();
        ui::ConnectMacroRunner(window.get());
    };
    steps.mainWindowAlive = [&] { return window && window->loaded(); };
    steps.enableCollectTimers = [&] {
        if (window)
            window->Timer3->start();
    };
    steps.processEvents = [] { QApplication::processEvents(); };
    steps.setLanguageTables = ui::SetLanguageTables;

    QStringList args = QApplication::arguments();
    args.removeFirst();
    switch (shell::SubMain(args, steps)) {
    case shell::StartupResult::Exit:
        return 0;
    case shell::StartupResult::Fail:
        return 1;
    case shell::StartupResult::Run:
        break;
    }
    const int rc = QApplication::exec();
    search::SetFindFilesOpener(nullptr);
    window.reset();
    spell::SetSpellWindowOpener(nullptr);
    platform::install({});
    return rc;
}
