// pickup_driver ENTRY | class: the Hotkeys editor on the real X server and global hooks.
// With an entry name (mnuPUMouseLeftClick, ...) it triggers that entry of the editor and,
// once the wizard is over, prints the code box a line at a time as "CODE <line>"; with
// "class" it asks for one click and prints "CLASS <name>" of the window clicked, or
// "CLASS <none>". "END" follows, and the program ends.
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "platform/services.h"
#include "platform/x11/x11_input_hooks.h"
#include "platform/x11/x11_mouse_sender.h"
#include "platform/x11/x11_window_finder.h"
#include "shell/app_state.h"
#include "ui/code_box.h"
#include "ui/frm_aot_msg.h"
#include "ui/frm_display_error.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_text.h"
#include "ui/guarded_application.h"
#include "ui/wizard_dialogs.h"

#include <QAction>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kStartDelayMs = 300;  // for the editor to be shown and managed

void Say(const QString &line)
{
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    ui::GuardedApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 2) {
        std::fprintf(stderr, "usage: pickup_driver ENTRY|class\n");
        return 2;
    }
    const QString mode = QString::fromLocal8Bit(argv[1]);

    platform::x11::X11InputHooks hooks;
    platform::x11::X11WindowFinder windows;
    platform::x11::X11MouseSender mouse;
    ui::MessageWindows messages;
    ui::ErrorWindows errors;
    ui::TextWindows textWindow;
    platform::Services services;
    services.inputHooks = &hooks;
    services.windows = &windows;
    services.mouse = &mouse;
    services.messages = &messages;
    services.errors = &errors;
    services.textWindow = &textWindow;
    platform::install(services);
    shell::app().AppFolder = qEnvironmentVariable("SONAMARK_HOME") + QLatin1Char('/');
    if (!hotkeys::HookKeyboard()) {
        std::fprintf(stderr, "pickup_driver: no keyboard hook\n");
        return 1;
    }
    ui::ShowHotkeyEditor();
    ui::frmHotkeys *editor = ui::hotkeyEditor();

    int rc = 0;
    QTimer::singleShot(kStartDelayMs, editor, [&] {
        if (mode == QLatin1String("class")) {
            ui::WizardDialogs dialogs(editor, {});
            QString className;
            bool hooked = false;
            const bool picked = dialogs.windowClass(QStringLiteral("Get Class Name"), className, hooked);
            Say(QStringLiteral("CLASS ") + (picked ? className : QStringLiteral("<none>")));
        } else if (auto *entry = editor->findChild<QAction *>(mode)) {
            entry->trigger();
            for (const QString &line : editor->txtAction->code().split(QStringLiteral("\r\n")))
                Say(QStringLiteral("CODE ") + line);
        } else {
            std::fprintf(stderr, "pickup_driver: no entry %s\n", argv[1]);
            rc = 2;
        }
        Say(QStringLiteral("END"));
        QApplication::exit(rc);
    });
    rc = QApplication::exec();
    hotkeys::UnhookKeyboard();
    platform::install({});
    return rc;
}
