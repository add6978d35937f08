#include "ui/frm_sonamark.h"

#include "platform/linux/linux_system_probes.h"
#include "platform/qt/tray_pictures.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/data_folder.h"
#include "shell/failure_report.h"
#include "shell/instance.h"
#include "shell/on_top_message.h"
#include "shell/quit.h"
#include "shell/settings.h"
#include "shell/startup.h"
#include "shell/system_check.h"
#include "spell/spell_check.h"
#include "reader/date_panel.h"
#include "reader/help_menu.h"
#include "reader/clip_store.h"
#include "reader/tray_menu_forms.h"
#include "ui/clip_controls.h"
#include "ui/document_menus.h"
#include "ui/edit_menu.h"
#include "ui/frm_find.h"
#include "ui/frm_find_files.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_mp3_files.h"
#include "ui/speech_panel.h"
#include "ui/subsystem_calls.h"
#include "ui/frm_vb_lame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCursor>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace ui {

namespace {
constexpr int kCollectIntervalMs = 1000;  // Timer3
constexpr int kRunTimerIntervalMs = 1;    // RunTimer
constexpr int kFontSizeMin = 6;
constexpr int kFontSizeMax = 72;
const char *const kIdleText = "Sonamark - Idle";
const char *const kHelpPages[] = {
    "1) Reading the Clipboard", "2) Running Sonamark", "3) Sonamark Options", "4) The TTS Reader",
    "5) The Spell Checker", "6) Read To MP3", "7) Clipboard Overview", "8) The Multi-Clipboard",
    "9) Selecting Text", "10) Hotkeys Macros", "11) Hotkeys Editor"};

// An entry that is wired up and enabled later, once what it opens is connected (the
// Hotkeys entries, the tray's Talk, Pause and Stop): disabled until then.
QAction *later(QMenu *menu, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setEnabled(false);
    return action;
}
} // namespace

frmSonamark::frmSonamark(platform::TrayIcon *tray, QWidget *parent)
    : QMainWindow(parent), m_tray(tray)
{
    setObjectName(QStringLiteral("frmSonamark"));
    setWindowTitle(QStringLiteral("Sonamark"));
    setWindowIcon(platform::ProgramIcon());
    buildControls();
    clipControls = new ClipControls(this, centralWidget());
    m_controlRow->insertWidget(2, clipControls->cmdClipToggle);
    buildMenus();
    Timer3 = new QTimer(this);
    Timer3->setInterval(kCollectIntervalMs);
    connect(Timer3, &QTimer::timeout, this, &frmSonamark::Timer3_Timer);
    RunTimer = new QTimer(this);
    RunTimer->setInterval(kRunTimerIntervalMs);
    RunTimer->setSingleShot(true);
    connect(RunTimer, &QTimer::timeout, this, &frmSonamark::RunTimer_Timer);
    m_tray->onClick = [this](platform::TrayClick click) {
        shell::Guarded("(Form) frmSonamark::Function MyWindowProc",
                       [&] { trayClicked(click == platform::TrayClick::Left ? 0 : 1); });
    };
}

frmSonamark::~frmSonamark() { m_tray->onClick = nullptr; }

void frmSonamark::buildControls()
{
    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    auto *row = new QHBoxLayout;
    m_controlRow = row;
    cmbFontSize = new QComboBox(central);
    cmbFontSize->setObjectName(QStringLiteral("cmbFontSize"));
    cmbFontSize->setEditable(true);
    row->addWidget(new QLabel(QStringLiteral("Font size"), central));
    row->addWidget(cmbFontSize);
    row->addStretch();
    layout->addLayout(row);
    txtSpeech = new QTextEdit(central);
    txtSpeech->setObjectName(QStringLiteral("txtSpeech"));
    documentMenus = new DocumentMenus(this, txtSpeech, [this] { return speechPanel->listIndex(); });
    row->addWidget(documentMenus->cmdPaste);
    row->addWidget(documentMenus->cmdClear);
    layout->addWidget(txtSpeech, 1);
    setCentralWidget(central);

    sbStatusPanel1 = new QLabel(this);
    sbStatusPanel2 = new QLabel(this);
    speechPanel = new SpeechPanel(this, txtSpeech, sbStatusPanel2);
    editMenu = new EditMenu(this, txtSpeech, sbStatusPanel2);
    layout->insertWidget(1, speechPanel);
    sbStatusPanel3 = new QLabel(this);
    Timer4 = new QTimer(this);
    Timer4->setInterval(reader::kTimer4FirstIntervalMs);
    connect(Timer4, &QTimer::timeout, this, [this] {
        if (const std::optional<QString> date = reader::Timer4_Timer(m_dateClock, QDateTime::currentDateTime()))
            sbStatusPanel3->setText(*date);
        if (Timer4->interval() == reader::kTimer4FirstIntervalMs)
            Timer4->setInterval(reader::kTimer4IntervalMs);
    });
    Timer4->start();
    statusBar()->addWidget(sbStatusPanel1, 1);
    statusBar()->addPermanentWidget(sbStatusPanel2);
    statusBar()->addPermanentWidget(sbStatusPanel3);
    resize(640, 480);
}

void frmSonamark::buildMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    documentMenus->addOpenSave(file);
    connect(file->addAction(QStringLiteral("Save To MP3")), &QAction::triggered, this, &frmSonamark::mnuFileMP3_Click);
    connect(file->addAction(QStringLiteral("Save Text To MP3")), &QAction::triggered, this,
            &frmSonamark::mnuFileTextMP3_Click);
    connect(file->addAction(QStringLiteral("Convert Files To MP3")), &QAction::triggered, this,
            &frmSonamark::ShowConvertFiles);
    documentMenus->addPrinting(file);
    file->addSeparator();
    connect(file->addAction(QStringLiteral("Exit")), &QAction::triggered, this, &frmSonamark::mnuFileExit_Click);

    QMenu *edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    editMenu->addFormatEntries(edit);
    mnuFormatFind = edit->addAction(QStringLiteral("Find.."));
    connect(mnuFormatFind, &QAction::triggered, this, [this] {
        shell::Guarded("(Form) frmSonamark::Sub mnuFormatFind_Click", [this] { mnuFormatFind_Click(); });
    });
    mnuFormatFindNext = edit->addAction(QStringLiteral("Find Next"));
    connect(mnuFormatFindNext, &QAction::triggered, this, [this] {
        shell::Guarded("(Form) frmSonamark::Sub mnuFormatFindNext_Click",
                       [this] { FindNextText(txtSpeech, m_find); });
    });
    editMenu->addToolEntries(edit);

    clipControls->addClipboardMenu(menuBar()->addMenu(QStringLiteral("&Clipboard")));

    mnuSpellCheck = menuBar()->addAction(QStringLiteral("&Spell Check"));
    connect(mnuSpellCheck, &QAction::triggered, this, [] {
        shell::Guarded("(Form) frmSonamark::Sub mnuSpellCheck_Click", [] { spell::mnuSpellCheck_Click(); });
    });

    documentMenus->addExceptionsMenu(menuBar()->addMenu(QStringLiteral("E&xceptions")));

    mnuHotkeys = menuBar()->addMenu(QStringLiteral("Hot&keys"));
    for (const char *caption : {"Edit Hotkeys", "Make Hotkeys Macro", "List Hotkeys"})
        later(mnuHotkeys, QLatin1String(caption));
    mnuHotkeysEnable = later(mnuHotkeys, QStringLiteral("Enable Hotkeys"));
    mnuHotkeysEnable->setCheckable(true);

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    QMenu *instructions = help->addMenu(QStringLiteral("Instructions"));
    for (int i = 0; i < int(std::size(kHelpPages)); ++i)
        connect(instructions->addAction(QLatin1String(kHelpPages[i])), &QAction::triggered, this,
                [this, i] { mnuHelpPage_Click(i + 1); });
    connect(help->addAction(QStringLiteral("XML Support")), &QAction::triggered, this,
            [] { shell::Guarded("(Form) frmSonamark::Sub mnuHelpXML_Click", [] { reader::mnuHelpXML_Click(); }); });
    connect(help->addAction(QStringLiteral("Email Sonamark Support")), &QAction::triggered, this,
            &frmSonamark::mnuHelpEmail_Click);
    connect(help->addAction(QStringLiteral("Sonamark Web Site")), &QAction::triggered, this, [] {
        shell::Guarded("(Form) frmSonamark::Sub mnuHelpWebSite_Click",
                       [] { reader::LaunchSonamarkWebSite(reader::kWebSiteUrl); });
    });
    connect(help->addAction(QStringLiteral("Add Sonamark Icon To DeskTop")), &QAction::triggered, this,
            &frmSonamark::mnuHelpDeskTop_Click);
    connect(help->addAction(QStringLiteral("Run Sonamark at Startup")), &QAction::triggered, this,
            &frmSonamark::mnuHelpStartup_Click);
    connect(help->addAction(QStringLiteral("System Check...")), &QAction::triggered, this, [this] {
        shell::Guarded("(Form) frmSonamark::Sub mnuHelpSystemCheck_Click", [this] { mnuHelpSystemCheck_Click(); });
    });
    connect(help->addAction(QStringLiteral("About")), &QAction::triggered, this, &frmSonamark::mnuHelpAbout_Click);

    // The tray menu; never on the bar.
    mnuPopUp = new QMenu(this);
    mnuPopUp->setObjectName(QStringLiteral("mnuPopUp"));
    mnuTalk = later(mnuPopUp, QStringLiteral("Talk"));
    mnuPause = later(mnuPopUp, QStringLiteral("Pause"));
    mnuStop = later(mnuPopUp, QStringLiteral("Stop"));
    mnuSeparatorSC = mnuPopUp->addSeparator();
    mnuPUSpellCheck = mnuPopUp->addAction(QStringLiteral("Spell Check"));
    mnuPUSpellCheck->setCheckable(true);
    connect(mnuPUSpellCheck, &QAction::triggered, this, [this] {
        // The handler flips the check itself; undo the flip the menu made on the click.
        {
            const QSignalBlocker block(mnuPUSpellCheck);
            mnuPUSpellCheck->setChecked(!mnuPUSpellCheck->isChecked());
        }
        shell::Guarded("(Form) frmSonamark::Sub mnuPUSpellCheck_Click", [] { spell::mnuPUSpellCheck_Click(); });
    });
    mnuSeparator1 = mnuPopUp->addSeparator();
    QMenu *options = mnuPopUp->addMenu(QStringLiteral("Options"));
    mnuOptions = options->menuAction();
    connect(options->addAction(QStringLiteral("Sonamark")), &QAction::triggered, this, [this] {
        showNormal();
        raise();
        activateWindow();
    });
    QMenu *hotkeys = options->addMenu(QStringLiteral("Hotkeys"));
    for (const char *caption : {"Edit Hotkeys", "Make Hotkeys Macro", "List Hotkeys"})
        later(hotkeys, QLatin1String(caption));
    mnuOptionsHotkeysEnable = later(hotkeys, QStringLiteral("Enable Hotkeys"));
    mnuOptionsHotkeysEnable->setCheckable(true);
    clipControls->addTrayRows(mnuPopUp);
    mnuCancel = mnuPopUp->addAction(QStringLiteral("Cancel"));
    connect(mnuCancel, &QAction::triggered, this,
            [] { shell::Guarded("(Form) frmSonamark::Sub mnuCancel_Click", [] { reader::RestorePopUp2(); }); });
    mnuSeparator3 = mnuPopUp->addSeparator();
    mnuClose = mnuPopUp->addAction(QStringLiteral("Quit Sonamark"));
    connect(mnuClose, &QAction::triggered, this, &frmSonamark::mnuFileExit_Click);
}

void frmSonamark::Form_Load()
{
    shell::AppState &state = shell::app();
    shell::Settings &opts = shell::settings();
    state.WindowLoading = true;
    if (!state.WordInstalled) {
        mnuSpellCheck->setEnabled(false);
        mnuPUSpellCheck->setEnabled(false);
    }
    for (int size = kFontSizeMin; size <= kFontSizeMax; size += 2)
        cmbFontSize->addItem(QString::number(size));
    cmbFontSize->setEditText(opts.FontSizeOpt);
    QFont font(QStringLiteral("Sans Serif"));
    font.setPointSizeF(qMax(1.0, shell::Val(opts.FontSizeOpt)));
    txtSpeech->setFont(font);
    speechPanel->setDefaultFont(font);
    editMenu->rememberDefaultFont();
    connect(cmbFontSize, &QComboBox::textActivated, this, [this](const QString &size) {
        shell::Guarded("(Form) frmSonamark::Sub cmbFontSize_Click",
                       [&] { reader::cmbFontSize_Click(*editMenu, size, shell::app().WindowLoading); });
    });

    if (!m_tray->exists()) {
        shell::MsgBoxOT(QStringLiteral("FATAL ERROR there is no taskbar currently available. Aborting.\r\n\r\n")
                            + shell::SystemCheckHint(false),
                        0, QStringLiteral("Error"));
        state.WindowLoading = false;
        return;
    }
    m_statusText = MonitoringClipboard() ? QStringLiteral("Monitoring Clipboard..") : QLatin1String(kIdleText);
    m_tray->addIcon(MonitoringClipboard() ? platform::TrayPicture::Monitoring : platform::TrayPicture::Idle,
                    m_statusText);
    sbStatusPanel1->setText(m_statusText);
    state.ChildFormDepth = 0;

    CreateSpeechObject(this);
    reader::SetClipView(clipControls);

    if (HookKeyboard()) {
        LoadHotkeysTable();
        const bool enabled = opts.HotkeysEnabledOpt == QLatin1String("1");
        mnuHotkeysEnable->setChecked(enabled);
        mnuOptionsHotkeysEnable->setChecked(enabled);
    } else {
        if (!state.StartHidden)
            shell::MsgBoxOT(QStringLiteral("Error hooking keyboard. No global hotkey will be available.\r\n\r\n")
                                + shell::SystemCheckHint(true),
                            0, QStringLiteral("Hotkey"));
        mnuHotkeys->setEnabled(false);
        opts.HotkeysEnabledOpt = QStringLiteral("0");
    }
    state.PendingHotkey = 0;
    state.WindowLoading = false;
    m_loaded = true;
}

void frmSonamark::setStatusText(const QString &text)
{
    m_statusText = text;
    sbStatusPanel1->setText(text);
    m_tray->changeTip(text.left(platform::TrayIcon::kTipLength));
}

void frmSonamark::trayClicked(int button)
{
    shell::AppState &state = shell::app();
    if (TrayClickTakenByMacro())
        return;
    if (mnuPopUp->isVisible() || state.ChildFormDepth != 0)
        return;
    if (button == 0) {
        TrayLeftClick(this);
        return;
    }
    activateWindow();
    popTrayMenu();
}

void frmSonamark::popTrayMenu()
{
    // At the pointer, where the click on the icon was. Of the window hook only the icon's
    // clicks have a meaning here: they arrive as QSystemTrayIcon signals, so no window
    // procedure is replaced, and there is nothing to give back at quit but the icon.
    mnuPopUp->popup(QCursor::pos());
}

void frmSonamark::Timer3_Timer() { CollectClipboard(this); }

void frmSonamark::RunTimer_Timer() { RunPendingHotkey(this); }

void frmSonamark::mnuFileExit_Click() { close(); }

void frmSonamark::mnuFormatFind_Click()
{
    if (!m_find)
        m_find = new frmFind(txtSpeech, this);  // loaded once, unloaded with the window
    m_find->show();
    m_find->raise();
    m_find->activateWindow();
}

void frmSonamark::mnuFileTextMP3_Click()
{
    const QString document = shell::app().CurrentFile;
    if (document.isEmpty()) {
        ShowReadToFile(QString());
        return;
    }
    const QFileInfo info(document);
    ShowReadToFile(info.dir().filePath(info.completeBaseName() + QStringLiteral(".mp3")));
}

void frmSonamark::ShowReadToFile(const QString &target)
{
    frmVBLame dialog(this, [this] {
        if (speechPanel->listIndex() < 0 && speechPanel->List1->count() > 0)
            speechPanel->List1->setCurrentRow(0);
        return speechPanel->listIndex();
    });
    if (!target.isEmpty())
        dialog.SettxtOutputMp3File(target);
    dialog.exec();
}

void frmSonamark::ShowConvertFiles()
{
    frmMP3Files dialog(
        this,
        [this] {
            if (speechPanel->listIndex() < 0 && speechPanel->List1->count() > 0)
                speechPanel->List1->setCurrentRow(0);
            return speechPanel->listIndex();
        },
        [this] { ShowFindFiles(this); });
    dialog.exec();
}

void frmSonamark::closeEvent(QCloseEvent *event)
{
    // The Hotkey editor closes first, asking about its unsaved changes; its Cancel keeps
    // the program running.
    if (frmHotkeys *editor = hotkeyEditor(); editor && !m_unloaded && !editor->close()) {
        event->ignore();
        return;
    }
    bool quit = false;
    shell::Guarded("(Form) frmSonamark::Sub Form_Unload", [&] {
        quit = shell::ConfirmQuit(SaveCurrentText(this));
    });
    if (!quit) {
        event->ignore();
        return;
    }
    if (m_unloaded) {
        event->accept();
        return;
    }
    m_unloaded = true;
    Timer3->stop();
    clipControls->stopTimers();
    reader::SetClipView(nullptr);
    RunTimer->stop();
    m_tray->deleteIcon();
    UnhookKeyboard();
    ReleaseSpeechObject();
    shell::RemoveLockFile(shell::app().AppFolder);
    event->accept();
    QApplication::quit();
}

void frmSonamark::mnuHelpStartup_Click()
{
    shell::ToggleStartupEntry(QApplication::applicationFilePath());
}

void frmSonamark::mnuHelpSystemCheck_Click()
{
    // The check plays a short tone and waits for it: a moment, not long.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    platform::LinuxSystemProbes probes(shell::app().AppFolder, platform::services().speech);
    shell::ShowSystemCheck(probes);
    QApplication::restoreOverrideCursor();
}

void frmSonamark::mnuHelpDeskTop_Click()
{
    shell::AddDesktopEntry(QApplication::applicationFilePath());
}

void frmSonamark::mnuHelpPage_Click(int index)
{
    shell::app().HelpPage = index;
    shell::app().HelpFirstRun = false;
    shell::LaunchInstructions();
}

void frmSonamark::mnuHelpEmail_Click()
{
    if (platform::Desktop *desktop = platform::services().desktop)
        desktop->openUrl(QStringLiteral("mailto:") + QLatin1String(shell::kSupportAddress)
                         + QStringLiteral("?subject=Sonamark Help"));
}

void frmSonamark::mnuHelpAbout_Click()
{
    shell::MsgBoxOT(QStringLiteral("Sonamark v%1.%2.%3\r\nReads copied text aloud and runs hotkey macros.\r\n"
                                   "Data folder: %4")
                        .arg(SONAMARK_VERSION_MAJOR)
                        .arg(SONAMARK_VERSION_MINOR)
                        .arg(SONAMARK_VERSION_PATCH)
                        .arg(shell::app().AppFolder),
                    0, QStringLiteral("About Sonamark"));
}

} // namespace ui
