#include "ui/frm_hotkeys.h"

#include "engine/interpreter.h"
#include "engine/run_state.h"
#include "hotkeys/editor_commands.h"
#include "hotkeys/file_history.h"
#include "hotkeys/formatter.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "reader/help_menu.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/data_folder.h"
#include "shell/failure_report.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "shell/startup.h"
#include "ui/code_box.h"
#include "ui/frm_com_diag.h"
#include "ui/frm_run_macro_popup.h"
#include "ui/frm_text.h"
#include "ui/text_printer.h"
#include "ui/wizard_dialogs.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr int kWatchSettleMs = 300;  // a file being written settles before it is compared
constexpr int kMruMenuChars = 60;
constexpr int kCapturePollMs = 50;
constexpr int kCaptureTicks = 10000 / kCapturePollMs;  // ten seconds to press the key
constexpr int kHelpPageMacros = 10;  // pages of the help viewer
constexpr int kHelpPageEditor = 11;
const QColor kErrorColour(255, 0, 0);

QPointer<frmHotkeys> g_editor;

QPushButton *Button(QWidget *parent, const char *name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

// "Hotkey Files (*.txt)|*.txt" as a file dialog filter.
QString DialogFilter(const QString &filter) { return filter.section(QLatin1Char('|'), 0, 0); }

// The notation of a key typed into a key field with Ctrl or Alt, or of a key that
// types nothing; "" for the keys that edit the field as usual.
QString KeyFieldNotation(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers mods = event->modifiers();
    const bool ctrl = mods & Qt::ControlModifier, alt = mods & Qt::AltModifier, shift = mods & Qt::ShiftModifier;
    const int key = event->key();
    QString name;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        name = QStringLiteral("{F%1}").arg(key - Qt::Key_F1 + 1);
    const bool special = !name.isEmpty();
    if (!ctrl && !alt && !special)
        return {};
    if (!special) {
        if (key >= Qt::Key_A && key <= Qt::Key_Z) {
            const QChar letter(char16_t('a' + (key - Qt::Key_A)));
            name = shift ? letter.toUpper() : letter;
            // Cut, copy, paste, select all, undo and redo keep their work in the field.
            if (ctrl && !alt && QStringLiteral("acvxyz").contains(letter))
                return {};
        } else if (key >= Qt::Key_0 && key <= Qt::Key_9) {
            name = QChar(char16_t('0' + (key - Qt::Key_0)));
        } else {
            switch (key) {
            case Qt::Key_Return: case Qt::Key_Enter: name = QStringLiteral("{ENTER}"); break;
            case Qt::Key_Tab: case Qt::Key_Backtab: name = QStringLiteral("{TAB}"); break;
            case Qt::Key_Escape: name = QStringLiteral("{ESC}"); break;
            case Qt::Key_Backspace: name = QStringLiteral("{BACKSPACE}"); break;
            case Qt::Key_Delete: name = QStringLiteral("{DELETE}"); break;
            case Qt::Key_Insert: name = QStringLiteral("{INSERT}"); break;
            case Qt::Key_Home: name = QStringLiteral("{HOME}"); break;
            case Qt::Key_End: name = QStringLiteral("{END}"); break;
            case Qt::Key_PageUp: name = QStringLiteral("{PGUP}"); break;
            case Qt::Key_PageDown: name = QStringLiteral("{PGDN}"); break;
            case Qt::Key_Up: name = QStringLiteral("{UP}"); break;
            case Qt::Key_Down: name = QStringLiteral("{DOWN}"); break;
            case Qt::Key_Left: name = QStringLiteral("{LEFT}"); break;
            case Qt::Key_Right: name = QStringLiteral("{RIGHT}"); break;
            case Qt::Key_Space: name = QStringLiteral(" "); break;
            default: return {};  // a modifier alone, or a key without a name
            }
        }
    }
    QString prefix;
    if (ctrl)
        prefix += QLatin1Char('^');
    if (alt)
        prefix += QLatin1Char('%');
    if (shift)
        prefix += QLatin1Char('+');
    return prefix + name;
}

} // namespace

frmHotkeys::frmHotkeys(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmHotkeys"));
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls();
    buildMenus();
    hotkeys::HotkeyEditorLinks links;
    links.running = [] { return engine::runState().MacroRunning; };
    links.stop = engine::RequestAbort;
    links.run = engine::RunMacro;
    links.startRecording = [] { return hotkeys::StartRecording(); };
    m_editor = std::make_unique<hotkeys::HotkeyEditor>(static_cast<hotkeys::HotkeyEditorView &>(*this), std::move(links));
    m_watcher = new QFileSystemWatcher(this);
    connectControls();
    handle("(Form) frmHotkeys::Sub Form_Load", [this] { m_editor->Form_Load(); });
    resize(960, 640);
}

frmHotkeys::~frmHotkeys()
{
    if (m_captureTimer && m_captureTimer->isActive())
        hotkeys::EndHotkeyCapture();
    pauseHotkeys(false);
}

frmText *frmHotkeys::reportWindow() const { return m_report; }

void frmHotkeys::buildControls()
{
    auto *central = new QWidget(this);
    setCentralWidget(central);

    lbHotkey = new QLabel(QStringLiteral("Hotkey "), central);
    lbHotkey->setObjectName(QStringLiteral("lbHotkey"));
    QFont bold = lbHotkey->font();
    bold.setBold(true);
    lbHotkey->setFont(bold);
    chkHotkeyEnable = new QCheckBox(QStringLiteral("Enab&led"), central);
    chkHotkeyEnable->setObjectName(QStringLiteral("chkHotkeyEnable"));
    chkHotkeyEnable->setToolTip(QStringLiteral("The hotkey fires only when it is enabled"));

    txtNewItem = new QComboBox(central);
    txtNewItem->setObjectName(QStringLiteral("txtNewItem"));
    txtNewItem->setEditable(true);
    txtNewItem->setInsertPolicy(QComboBox::NoInsert);
    txtNewItem->setToolTip(QStringLiteral("The hotkey: type it (e.g. ^%k for Ctrl+Alt+K) or press it here"));
    tNewItem = new QLineEdit(central);
    tNewItem->setObjectName(QStringLiteral("tNewItem"));
    tNewItem->setPlaceholderText(QStringLiteral("Press or type the new hotkey, e.g. ^%k"));
    tNewItem->setToolTip(txtNewItem->toolTip());
    m_keyStack = new QStackedWidget(central);
    m_keyStack->addWidget(txtNewItem);
    m_keyStack->addWidget(tNewItem);

    txtDescr = new QComboBox(central);
    txtDescr->setObjectName(QStringLiteral("txtDescr"));
    txtDescr->setEditable(true);
    txtDescr->setInsertPolicy(QComboBox::NoInsert);
    txtDescr->setToolTip(QStringLiteral("The macro's name"));
    tActDescr = new QLineEdit(central);
    tActDescr->setObjectName(QStringLiteral("tActDescr"));
    tActDescr->setPlaceholderText(QStringLiteral("Name of the new macro"));
    m_descrStack = new QStackedWidget(central);
    m_descrStack->addWidget(txtDescr);
    m_descrStack->addWidget(tActDescr);
    for (QWidget *w : {static_cast<QWidget *>(m_keyStack), static_cast<QWidget *>(m_descrStack)})
        w->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    txtAction = new CodeBox(central);
    txtAction->setObjectName(QStringLiteral("txtAction"));
    txtAction->setToolTip(QString());

    cmdBack = Button(central, "cmdBack", QStringLiteral("<< &Back"), QStringLiteral("View the previous hotkey"));
    cmdForward = Button(central, "cmdForward", QStringLiteral("For&ward >>"), QStringLiteral("View the next hotkey"));
    cmdNew = Button(central, "cmdNew", QStringLiteral("&New"), QStringLiteral("Record or create a new macro"));
    cmdAdd = Button(central, "cmdAdd", QStringLiteral("&Save"), QStringLiteral("Save this hotkey to the Hotkeys file"));
    cmdRemove = Button(central, "cmdRemove", QStringLiteral("Re&move"), QStringLiteral("Delete this hotkey"));
    cmdRun = Button(central, "cmdRun", QStringLiteral("&Run"), hotkeys::kEditorRunTip);
    dumFocus = new QPushButton(central);
    dumFocus->setObjectName(QStringLiteral("dumFocus"));
    dumFocus->setFlat(true);
    dumFocus->setFixedSize(1, 1);

    auto *fields = new QGridLayout;
    fields->addWidget(lbHotkey, 0, 0);
    fields->addWidget(chkHotkeyEnable, 0, 1, Qt::AlignRight);
    auto *keyLabel = new QLabel(QStringLiteral("Hot&key:"), central);
    keyLabel->setBuddy(txtNewItem);
    auto *descrLabel = new QLabel(QStringLiteral("&Description:"), central);
    descrLabel->setBuddy(txtDescr);
    auto *keyRow = new QHBoxLayout;
    keyRow->addWidget(keyLabel);
    keyRow->addWidget(m_keyStack, 1);
    keyRow->addSpacing(12);
    keyRow->addWidget(descrLabel);
    keyRow->addWidget(m_descrStack, 3);
    auto *codeLabel = new QLabel(QStringLiteral("&Actions:"), central);
    codeLabel->setBuddy(txtAction);

    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdBack, cmdForward})
        buttons->addWidget(b);
    buttons->addSpacing(16);
    for (QPushButton *b : {cmdNew, cmdAdd, cmdRemove})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(dumFocus);
    buttons->addWidget(cmdRun);

    auto *layout = new QVBoxLayout(central);
    layout->addLayout(fields);
    layout->addLayout(keyRow);
    layout->addWidget(codeLabel);
    layout->addWidget(txtAction, 1);
    layout->addLayout(buttons);

    sbStatusPanel = new QLabel(statusBar());
    sbStatusPanel->setObjectName(QStringLiteral("sbStatusPanel"));
    sbCaretPanel = new QLabel(statusBar());
    sbCaretPanel->setObjectName(QStringLiteral("sbCaretPanel"));
    statusBar()->setObjectName(QStringLiteral("sbStatusBar"));
    statusBar()->addWidget(sbStatusPanel, 1);
    statusBar()->addPermanentWidget(sbCaretPanel);
}

void frmHotkeys::buildMenus()
{
    mnuFile = menuBar()->addMenu(QStringLiteral("&File"));
    mnuFileNew = mnuFile->addAction(QStringLiteral("&New Hotkeys File..."));
    mnuFileOpen = mnuFile->addAction(QStringLiteral("&Open Hotkeys File..."));
    mnuFileOpen->setShortcut(QKeySequence::Open);
    mnuFileSaveAs = mnuFile->addAction(QStringLiteral("Save &As..."));
    mnuFileSaveAsDef = mnuFile->addAction(QStringLiteral("Save As &Default..."));
    mnuFileSaveAsDef->setToolTip(QStringLiteral("Save the hotkeys to a file that Sonamark loads at its next start"));
    mnuFile->addSeparator();
    mnuFileSort = mnuFile->addAction(QStringLiteral("Sor&t by Description"));
    mnuFile->addSeparator();
    mnuFilePrintHotkey = mnuFile->addAction(QStringLiteral("&Print Hotkey..."));
    mnuFilePrintHotkey->setShortcut(QKeySequence::Print);
    mnuFilePrintAll = mnuFile->addAction(QStringLiteral("Print A&ll Hotkeys..."));
    mnuFileIcon = mnuFile->addAction(QStringLiteral("Add Macro &Icon To Desktop"));
    mnuFileIcon->setToolTip(QStringLiteral("Put an icon on the desktop that runs this macro"));
    mnuFile->addSeparator();
    for (int i = 0; i < hotkeys::kHistorySize; ++i) {
        QAction *item = mnuFile->addAction(QString());
        item->setObjectName(QStringLiteral("mnuFileMRU%1").arg(i));
        item->setVisible(false);
        mnuFileMRU << item;
    }
    mnuFile->addSeparator();
    mnuFileExit = mnuFile->addAction(QStringLiteral("&Close"));
    mnuFileExit->setShortcut(QKeySequence::Close);

    mnuEdit = menuBar()->addMenu(QStringLiteral("&Edit"));
    mnuEditUndo = mnuEdit->addAction(QStringLiteral("&Undo"), txtAction, &QPlainTextEdit::undo);
    mnuEditUndo->setShortcut(QKeySequence::Undo);
    mnuEditRedo = mnuEdit->addAction(QStringLiteral("&Redo"), txtAction, &QPlainTextEdit::redo);
    mnuEditRedo->setShortcut(QKeySequence::Redo);
    mnuEditUndo->setEnabled(false);
    mnuEditRedo->setEnabled(false);
    mnuEdit->addSeparator();
    mnuEdit->addAction(QStringLiteral("Cu&t"), txtAction, &QPlainTextEdit::cut);
    mnuEdit->addAction(QStringLiteral("&Copy"), txtAction, &QPlainTextEdit::copy);
    mnuEdit->addAction(QStringLiteral("&Paste"), txtAction, &QPlainTextEdit::paste);
    mnuEdit->addAction(QStringLiteral("Select &All"), txtAction, &QPlainTextEdit::selectAll);
    for (QAction *a : mnuEdit->actions())
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addActions(mnuEdit->actions());

    buildInsertMenu();
    buildFunctionsMenu();

    mnuFormat = menuBar()->addMenu(QStringLiteral("F&ormat"));
    mnuFormatCheckCode = mnuFormat->addAction(QStringLiteral("&Check Code"));
    mnuFormatCheckCode->setShortcut(QKeySequence(Qt::Key_F7));
    mnuFormatCode = mnuFormat->addAction(QStringLiteral("&Format Code"));
    mnuFormatCode->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));
    mnuFormat->addSeparator();
    mnuRecord = mnuFormat->addAction(QStringLiteral("&Record a New Macro..."));

    mnuHelp = menuBar()->addMenu(QStringLiteral("&Help"));
    mnuHelpMacros = mnuHelp->addAction(QStringLiteral("Hotkeys &Macros"));
    mnuHelpEditor = mnuHelp->addAction(QStringLiteral("Hotkeys &Editor"));
    mnuHelpEditor->setShortcut(QKeySequence::HelpContents);
    mnuHelpXML = mnuHelp->addAction(QStringLiteral("&XML Support"));
    connect(mnuHelp->addAction(QStringLiteral("&Statement Reference")), &QAction::triggered, this, [] {
        shell::Guarded("(Form) frmHotkeys::Sub mnuHelpStatements_Click", [] { reader::HelpHotkeys(QString()); });
    });
}

void frmHotkeys::buildInsertMenu()
{
    mnuInsert = menuBar()->addMenu(QStringLiteral("&Insert"));
    mnuInsert->setToolTipsVisible(true);
    QMenu *keys = mnuInsert->addMenu(QStringLiteral("&Keys"));
    QStringList names{QStringLiteral("{ENTER}"), QStringLiteral("{TAB}"), QStringLiteral("{ESC}"),
                      QStringLiteral("{BACKSPACE}"), QStringLiteral("{DELETE}"), QStringLiteral("{INSERT}"),
                      QStringLiteral("{HOME}"), QStringLiteral("{END}"), QStringLiteral("{PGUP}"),
                      QStringLiteral("{PGDN}"), QStringLiteral("{UP}"), QStringLiteral("{DOWN}"),
                      QStringLiteral("{LEFT}"), QStringLiteral("{RIGHT}"), QStringLiteral("{BREAK}"),
                      QStringLiteral("{CAPSLOCK}"), QStringLiteral("{NUMLOCK}"), QStringLiteral("{SCROLLLOCK}"),
                      QStringLiteral("{PRTSC}"), QStringLiteral("{HELP}")};
    for (const QString &name : names)
        keys->addAction(name, this, [this, name] { pasteKey(name); });
    QMenu *functionKeys = mnuInsert->addMenu(QStringLiteral("F&unction Keys"));
    for (int f = 1; f <= 16; ++f) {
        const QString name = QStringLiteral("{F%1}").arg(f);
        functionKeys->addAction(name, this, [this, name] { pasteKey(name); });
    }
    QMenu *modifiers = mnuInsert->addMenu(QStringLiteral("&Modifiers"));
    modifiers->addAction(QStringLiteral("Ctrl  ^"), this, [this] { pasteKey(QStringLiteral("^")); });
    modifiers->addAction(QStringLiteral("Alt  %"), this, [this] { pasteKey(QStringLiteral("%")); });
    modifiers->addAction(QStringLiteral("Shift  +"), this, [this] { pasteKey(QStringLiteral("+")); });
    QMenu *literals = mnuInsert->addMenu(QStringLiteral("&Literal Characters"));
    for (const char *text : {"{+}", "{%}", "{^}", "{{}", "{}}"}) {
        const QString literal = QLatin1String(text);
        literals->addAction(literal, this, [this, literal] { pasteKey(literal); });
    }
    mnuInsertHotkey = mnuInsert->addAction(QStringLiteral("&Hotkey..."), this, [this] { mnuInsertHotkey_Click(); });
    mnuInsertHotkey->setToolTip(QStringLiteral("Press a key combination to insert its notation"));
    mnuInsert->addSeparator();
    mnuInsertComment = mnuInsert->addAction(QStringLiteral("&Comment Line  #"), this,
                                            [this] { pasteStatement(QStringLiteral("# ")); });
}

void frmHotkeys::buildFunctionsMenu()
{
    mnuFunctions = menuBar()->addMenu(QStringLiteral("F&unctions"));
    mnuFunctions->setToolTipsVisible(true);
    mnuFunctionsHelp = mnuFunctions->addAction(QStringLiteral("&Help on Statements"));
    mnuFunctionsHelp->setObjectName(QStringLiteral("mnuFunctionsHelp"));
    mnuFunctionsHelp->setCheckable(true);
    mnuFunctionsHelp->setToolTip(QStringLiteral("When checked, an entry shows the help for its statement "
                                                "instead of asking for it"));
    mnuFunctions->addSeparator();
    QMap<QString, QMenu *> groups;
    for (const hotkeys::WizardEntry &entry : hotkeys::Wizards()) {
        if (!entry.function)
            continue;
        QString name = entry.handler;
        name.remove(QStringLiteral("_Click"));
        auto *action = new QAction(entry.caption, this);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, entry] { runWizard(entry); });
        if (entry.group == QLatin1String(hotkeys::kPickUpGroup)) {
            mnuPUMouse << action;
            continue;
        }
        if (!groups.contains(entry.group))
            groups[entry.group] = mnuFunctions->addMenu(entry.group);
        groups[entry.group]->addAction(action);
        mnuFunctionsWizards << action;
    }
    mnuFunctionsComDiag = new QAction(QStringLiteral("[USERINPUT] &Common Dialog..."), this);
    mnuFunctionsComDiag->setObjectName(QStringLiteral("mnuFunctionsComDiag"));
    connect(mnuFunctionsComDiag, &QAction::triggered, this, &frmHotkeys::mnuFunctionsComDiag_Click);
    QMenu *interaction = nullptr;
    for (auto it = groups.cbegin(); it != groups.cend(); ++it)
        if (QString(it.key()).remove(QLatin1Char('&')) == QLatin1String("Interaction"))
            interaction = it.value();
    if (!interaction)
        interaction = mnuFunctions->addMenu(QStringLiteral("&Interaction"));
    interaction->addAction(mnuFunctionsComDiag);

    txtAction->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(txtAction, &QWidget::customContextMenuRequested, this, &frmHotkeys::showCodeMenu);
}

void frmHotkeys::showCodeMenu(const QPoint &pos)
{
    QMenu *menu = txtAction->createStandardContextMenu(pos);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!mnuPUMouse.isEmpty()) {
        menu->addSeparator();
        QMenu *pickUp = menu->addMenu(QStringLiteral("&Mouse Pick-Up"));
        pickUp->addActions(mnuPUMouse);
    }
    menu->popup(txtAction->viewport()->mapToGlobal(pos));
}

void frmHotkeys::runWizard(const hotkeys::WizardEntry &entry)
{
    const QString source = QStringLiteral("(Form) frmHotkeys::Sub ") + entry.handler;
    handle(source.toUtf8().constData(), [this, &entry] {
        hotkeys::WizardContext context;
        context.macro = txtAction->code();
        const QTextCursor caret = txtAction->textCursor();
        context.caret = caret.position() + caret.blockNumber();  // CR LF counted as two
        const hotkeys::HotkeyTable &t = hotkeys::table();
        for (int n = 1; n <= t.HotkeyCount; ++n)
            context.hotkeys << macro::HotkeyName{t.at(n).Keys, t.at(n).Description};
        context.help = mnuFunctionsHelp->isChecked();
        WizardDialogs dialogs(this, [this] { helpPage(kHelpPageMacros); });
        const QStringList lines = entry.function(dialogs, context);
        if (!lines.isEmpty())
            pasteStatements(lines);
    });
}

void frmHotkeys::mnuFunctionsComDiag_Click()
{
    handle("(Form) frmHotkeys::Sub mnuFunctionsComDiag_Click", [this] {
        if (mnuFunctionsHelp->isChecked()) {
            reader::ShowCommonDialogHelp();
            return;
        }
        QString statement;
        if (frmComDiag::Ask(this, [] { reader::ShowCommonDialogHelp(); }, statement))
            pasteStatement(statement);
    });
}

void frmHotkeys::handle(const char *source, const std::function<void()> &routine)
{
    shell::Guarded(source, routine);
    if (g_editor == this || !g_editor)
        watchFile();
}

void frmHotkeys::connectControls()
{
    using hotkeys::HotkeyEditor;
    const auto on = [this](const char *source, void (HotkeyEditor::*routine)()) {
        return [this, source, routine] { handle(source, [this, routine] { (m_editor.get()->*routine)(); }); };
    };
    connect(cmdBack, &QPushButton::clicked, this, on("(Form) frmHotkeys::Sub cmdBack_Click", &HotkeyEditor::cmdBack_Click));
    connect(cmdForward, &QPushButton::clicked, this,
            on("(Form) frmHotkeys::Sub cmdForward_Click", &HotkeyEditor::cmdForward_Click));
    connect(cmdNew, &QPushButton::clicked, this, on("(Form) frmHotkeys::Sub cmdNew_Click", &HotkeyEditor::cmdNew_Click));
    connect(cmdAdd, &QPushButton::clicked, this, on("(Form) frmHotkeys::Sub cmdAdd_Click", &HotkeyEditor::cmdAdd_Click));
    connect(cmdRemove, &QPushButton::clicked, this,
            on("(Form) frmHotkeys::Sub cmdRemove_Click", &HotkeyEditor::cmdRemove_Click));
    connect(cmdRun, &QPushButton::clicked, this, on("(Form) frmHotkeys::Sub cmdRun_Click", &HotkeyEditor::cmdRun_Click));
    connect(mnuFormatCheckCode, &QAction::triggered, this,
            on("(Form) frmHotkeys::Sub mnuFormatCheckCode_Click", &HotkeyEditor::mnuFormatCheckCode_Click));
    connect(mnuFormatCode, &QAction::triggered, this,
            on("(Form) frmHotkeys::Sub mnuFormatCode_Click", &HotkeyEditor::mnuFormatCode_Click));
    connect(mnuRecord, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub RecordNewMacro", [this] {
            if (m_editor->SaveHKChanges())
                m_editor->RecordNewMacro();
        });
    });
    connect(mnuFileNew, &QAction::triggered, this,
            on("(Form) frmHotkeys::Sub mnuFileNew_Click", &HotkeyEditor::mnuFileNew_Click));
    connect(mnuFileOpen, &QAction::triggered, this,
            on("(Form) frmHotkeys::Sub mnuFileOpen_Click", &HotkeyEditor::mnuFileOpen_Click));
    connect(mnuFileSaveAs, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub mnuFileSaveAs_Click", [this] { m_editor->mnuFileSaveAs_Click(false); });
    });
    connect(mnuFileSaveAsDef, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub mnuFileSaveAsDef_Click", [this] { m_editor->mnuFileSaveAs_Click(true); });
    });
    connect(mnuFileSort, &QAction::triggered, this,
            on("(Form) frmHotkeys::Sub mnuFileSort_Click", &HotkeyEditor::mnuFileSort_Click));
    for (int i = 0; i < mnuFileMRU.size(); ++i)
        connect(mnuFileMRU[i], &QAction::triggered, this, [this, i] {
            handle("(Form) frmHotkeys::Sub mnuFileMRU_Click", [this, i] { m_editor->mnuFileMRU_Click(i); });
        });
    connect(mnuFileExit, &QAction::triggered, this, &QWidget::close);
    connect(mnuFilePrintHotkey, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub mnuFilePrintHotkey_Click", [this] { printText(m_editor->PrintHotkeyText()); });
    });
    connect(mnuFilePrintAll, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub mnuFilePrintAll_Click", [this] { printText(m_editor->PrintAllText()); });
    });
    connect(mnuFileIcon, &QAction::triggered, this, [this] {
        handle("(Form) frmHotkeys::Sub mnuFileIcon_Click", [this] {
            QString launcher = QDir(shell::ProgramFolder()).filePath(QStringLiteral("sonamark-launch"));
            if (!QFileInfo::exists(launcher))
                launcher = QStringLiteral("sonamark-launch");  // installed on the PATH
            m_editor->mnuFileIcon_Click(shell::DesktopFolderPath(), launcher);
        });
    });
    connect(mnuHelpMacros, &QAction::triggered, this, [this] { helpPage(kHelpPageMacros); });
    connect(mnuHelpEditor, &QAction::triggered, this, [this] { helpPage(kHelpPageEditor); });
    connect(mnuHelpXML, &QAction::triggered, this,
            [] { shell::Guarded("(Form) frmHotkeys::Sub mnuHelpXML_Click", [] { reader::mnuHelpXML_Click(); }); });

    const auto picked = [this](int row) {
        if (!m_settingByCode)
            handle("(Form) frmHotkeys::Sub txtNewItem_Click", [this, row] { m_editor->Move2Hotkey(row); });
    };
    connect(txtNewItem, qOverload<int>(&QComboBox::activated), this, picked);
    connect(txtDescr, qOverload<int>(&QComboBox::activated), this, picked);
    const auto edited = [this] {
        if (!m_settingByCode)
            m_editor->fieldsEdited();
    };
    connect(txtNewItem->lineEdit(), &QLineEdit::textEdited, this, edited);
    connect(txtDescr->lineEdit(), &QLineEdit::textEdited, this, edited);
    connect(tNewItem, &QLineEdit::textEdited, this, edited);
    connect(tActDescr, &QLineEdit::textEdited, this, edited);
    connect(txtAction, &QPlainTextEdit::textChanged, this, edited);
    connect(chkHotkeyEnable, &QCheckBox::clicked, this, [this] {
        handle("(Form) frmHotkeys::Sub chkHotkeyEnable_Click", [this] { m_editor->chkHotkeyEnable_Click(); });
    });
    connect(txtAction, &QPlainTextEdit::undoAvailable, mnuEditUndo, &QAction::setEnabled);
    connect(txtAction, &QPlainTextEdit::redoAvailable, mnuEditRedo, &QAction::setEnabled);
    connect(txtAction, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        sbCaretPanel->setText(QStringLiteral("Line %1, Col %2").arg(txtAction->caretLine()).arg(txtAction->caretColumn()));
    });
    for (QLineEdit *field : {txtNewItem->lineEdit(), tNewItem})
        field->installEventFilter(this);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        QTimer::singleShot(kWatchSettleMs, this, [this] {
            handle("(Form) frmHotkeys::Sub Form_Activate", [this] { m_editor->CheckFileOnDisk(); });
        });
    });
}

void frmHotkeys::watchFile()
{
    const QString name = hotkeys::table().HotkeysFileName;
    const QStringList watched = m_watcher->files();
    if (watched.size() == 1 && watched.first() == name)
        return;
    if (!watched.isEmpty())
        m_watcher->removePaths(watched);
    if (!name.isEmpty() && QFileInfo::exists(name))
        m_watcher->addPath(name);
}

void frmHotkeys::closeEvent(QCloseEvent *event)
{
    bool unload = true;
    shell::Guarded("(Form) frmHotkeys::Sub Form_Unload", [this, &unload] { unload = m_editor->Form_Unload(); });
    if (!unload) {
        event->ignore();
        return;
    }
    if (m_captureTimer && m_captureTimer->isActive()) {
        m_captureTimer->stop();
        hotkeys::EndHotkeyCapture();
    }
    pauseHotkeys(false);
    if (m_report)
        m_report->close();
    event->accept();
}

void frmHotkeys::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QTimer::singleShot(0, this, [this] {
            handle("(Form) frmHotkeys::Sub Form_Activate", [this] { m_editor->CheckFileOnDisk(); });
        });
}

void frmHotkeys::pauseHotkeys(bool paused)
{
    hotkeys::HookState &h = hotkeys::hookState();
    if (h.HotkeysPaused == paused)
        return;
    h.HotkeysPaused = paused;
    hotkeys::UpdateHookPlan();
}

bool frmHotkeys::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = qobject_cast<QLineEdit *>(watched);
    if (field && event->type() == QEvent::FocusIn)
        pauseHotkeys(true);
    else if (field && event->type() == QEvent::FocusOut)
        pauseHotkeys(false);
    else if (field && event->type() == QEvent::KeyPress && keyFieldKey(field, static_cast<QKeyEvent *>(event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

bool frmHotkeys::keyFieldKey(QLineEdit *field, QKeyEvent *event)
{
    const QString notation = KeyFieldNotation(event);
    if (notation.isEmpty())
        return false;
    field->setText(notation);
    m_editor->fieldsEdited();
    return true;
}

void frmHotkeys::pasteKey(const QString &text)
{
    QWidget *focus = QApplication::focusWidget();
    if (focus == tNewItem || focus == txtNewItem->lineEdit()) {
        static_cast<QLineEdit *>(focus)->insert(text);
        m_editor->fieldsEdited();
        return;
    }
    txtAction->setFocus();
    txtAction->pasteText(text);
}

void frmHotkeys::pasteStatement(const QString &text) { pasteStatements(QStringList{text}); }

void frmHotkeys::pasteStatements(const QStringList &lines)
{
    txtAction->setFocus();
    // The first line takes the indent of its place; the others keep theirs relative to it,
    // as Format Code gives them ([ELSE] under its [IF], a body one step in).
    QString block = lines.join(QStringLiteral("\r\n"));
    hotkeys::IndentActions(block);
    QList<int> relative;
    for (const QString &line : block.split(QStringLiteral("\r\n"))) {
        int blanks = 0;
        while (blanks < line.size() && line.at(blanks) == QLatin1Char(' '))
            ++blanks;
        relative << blanks;
    }
    int first = 0, index = 0;
    txtAction->pasteStatements(lines, [&](const QString &code, int caret, const QString &pasted) {
        Q_UNUSED(code);  // the editor reads the box itself
        if (index == 0)
            first = m_editor->insertIndent(caret, pasted.trimmed());
        return first + relative.value(index++);
    });
}

void frmHotkeys::mnuInsertHotkey_Click()
{
    if (!m_captureTimer) {
        m_captureTimer = new QTimer(this);
        m_captureTimer->setInterval(kCapturePollMs);
        connect(m_captureTimer, &QTimer::timeout, this, [this] {
            const QString key = hotkeys::TakeCapturedKey();
            if (!key.isEmpty()) {
                m_captureTimer->stop();
                sbStatusPanel->setText(QStringLiteral("Inserted hotkey ") + key);
                pasteKey(key);
            } else if (++m_captureTicks >= kCaptureTicks) {
                m_captureTimer->stop();
                hotkeys::EndHotkeyCapture();
                sbStatusPanel->setText(QStringLiteral("No hotkey was pressed."));
            }
        });
    }
    m_captureTicks = 0;
    hotkeys::BeginHotkeyCapture();
    m_captureTimer->start();
    sbStatusPanel->setText(QStringLiteral("Press the hotkey to insert."));
}

void frmHotkeys::helpPage(int page)
{
    shell::Guarded("(Form) frmHotkeys::Sub mnuHelpPage_Click", [page] {
        shell::app().HelpPage = page;
        shell::app().HelpFirstRun = false;
        shell::LaunchInstructions();
    });
}

bool frmHotkeys::askPrinter(QPrinter &printer)
{
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        // No printer on this machine: the text goes into a PDF file.
        const QString folder = hotkeys::table().HotkeysFileName.isEmpty()
                                   ? shell::app().AppFolder
                                   : QFileInfo(hotkeys::table().HotkeysFileName).absolutePath();
        const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Print To PDF File"),
                                                          QDir(folder).filePath(QStringLiteral("Hotkeys.pdf")),
                                                          QStringLiteral("PDF Files (*.pdf)"));
        if (name.isEmpty())
            return false;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(name);
        return true;
    }
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, false);
    return dialog.exec() == QDialog::Accepted;
}

void frmHotkeys::printText(const QString &text)
{
    if (text.isEmpty())
        return;
    QPrinter printer(QPrinter::HighResolution);
    if (!(choosePrinter ? choosePrinter(printer) : askPrinter(printer)))
        return;
    QTextEdit box;
    box.document()->setDefaultFont(txtAction->font());
    box.setPlainText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    const reader::PrintOutcome outcome = PrintTextBox(&box, false, printer);
    if (outcome.kind == reader::PrintOutcome::Failed)
        shell::MsgBoxOT(QStringLiteral("The hotkeys could not be printed: ") + outcome.error, 0, hotkeys::kPrintTitle);
    else if (outcome.kind == reader::PrintOutcome::Printed)
        sbStatusPanel->setText(printer.outputFormat() == QPrinter::PdfFormat
                                   ? QStringLiteral("Printed to ") + printer.outputFileName()
                                   : QStringLiteral("Sent to the printer."));
}

// --- hotkeys::HotkeyEditorView

void frmHotkeys::setLists(const QStringList &keys, const QStringList &descriptions)
{
    m_settingByCode = true;
    txtNewItem->clear();
    txtNewItem->addItems(keys);
    txtDescr->clear();
    txtDescr->addItems(descriptions);
    m_settingByCode = false;
}

void frmHotkeys::setListIndex(int row)
{
    m_settingByCode = true;
    txtNewItem->setCurrentIndex(row);
    txtDescr->setCurrentIndex(row);
    if (row < 0) {
        txtNewItem->setEditText(QString());
        txtDescr->setEditText(QString());
    } else {
        txtNewItem->setEditText(txtNewItem->itemText(row));
        txtDescr->setEditText(txtDescr->itemText(row));
    }
    m_settingByCode = false;
}

int frmHotkeys::listIndex() const { return txtNewItem->currentIndex(); }

QString frmHotkeys::keysText() const
{
    return m_keyStack->currentWidget() == tNewItem ? tNewItem->text() : txtNewItem->currentText();
}

void frmHotkeys::setKeysText(const QString &text)
{
    m_settingByCode = true;
    if (m_keyStack->currentWidget() == tNewItem)
        tNewItem->setText(text);
    else
        txtNewItem->setEditText(text);
    m_settingByCode = false;
}

QString frmHotkeys::descriptionText() const
{
    return m_descrStack->currentWidget() == tActDescr ? tActDescr->text() : txtDescr->currentText();
}

void frmHotkeys::showNewEntry(bool shown)
{
    m_settingByCode = true;
    tNewItem->clear();
    tActDescr->clear();
    m_keyStack->setCurrentWidget(shown ? static_cast<QWidget *>(tNewItem) : txtNewItem);
    m_descrStack->setCurrentWidget(shown ? static_cast<QWidget *>(tActDescr) : txtDescr);
    m_settingByCode = false;
    if (shown)
        tNewItem->setFocus();
}

QString frmHotkeys::code() const { return txtAction->code(); }

void frmHotkeys::setCode(const QString &code)
{
    m_settingByCode = true;
    txtAction->setCode(code);
    m_settingByCode = false;
}

void frmHotkeys::colourErrorLines(const QList<int> &lines) { txtAction->setErrorLines(lines); }

bool frmHotkeys::enableChecked() const { return chkHotkeyEnable->isChecked(); }

void frmHotkeys::setEnableChecked(bool checked) { chkHotkeyEnable->setChecked(checked); }

void frmHotkeys::setNumberLabel(const QString &text) { lbHotkey->setText(text); }

void frmHotkeys::setNavigationEnabled(bool enabled)
{
    for (QPushButton *b : {cmdBack, cmdForward, cmdNew})
        b->setEnabled(enabled);
}

void frmHotkeys::setStatus(const QString &text) { sbStatusPanel->setText(text); }

void frmHotkeys::setCaption(const QString &caption) { setWindowTitle(caption); }

void frmHotkeys::setHistory(const QStringList &paths)
{
    for (int i = 0; i < mnuFileMRU.size(); ++i) {
        QAction *item = mnuFileMRU[i];
        const bool used = i < paths.size();
        item->setVisible(used);
        item->setData(used ? paths[i] : QString());
        item->setText(used ? QStringLiteral("&%1 ").arg(i + 1) + shell::CondensedPath(paths[i], kMruMenuChars)
                           : QString());
    }
}

QString frmHotkeys::runCaption() const { return cmdRun->text(); }

void frmHotkeys::setRunCaption(const QString &caption, const QString &toolTip)
{
    cmdRun->setText(caption);
    cmdRun->setToolTip(toolTip);
}

bool frmHotkeys::askRunOptions(double &waitSeconds, bool &hide) { return frmRunMacroPopup::Ask(waitSeconds, hide); }

void frmHotkeys::prepareRun(bool hide)
{
    dumFocus->setFocus();
    if (hide) {
        this->hide();
        m_hiddenForRun = true;
    }
    QCoreApplication::processEvents();
}

void frmHotkeys::finishRun()
{
    if (m_hiddenForRun) {
        show();
        raise();
        activateWindow();
    }
    m_hiddenForRun = false;
}

void frmHotkeys::showReport(const QString &text, const QList<int> &redLines)
{
    if (!m_report) {
        m_report = new frmText;
        m_report->setObjectName(QStringLiteral("frmTextReport"));
    }
    m_report->setContent(QStringLiteral("ERROR REPORT"), text);
    QList<QTextEdit::ExtraSelection> selections;
    QTextDocument *document = m_report->txtText->document();
    for (const int line : redLines) {
        const QTextBlock block = document->findBlockByNumber(line - 1);
        if (!block.isValid())
            break;
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(block);
        selection.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        selection.format.setForeground(kErrorColour);
        selections << selection;
    }
    m_report->txtText->setExtraSelections(selections);
    m_report->txtText->moveCursor(QTextCursor::End);
    m_report->resize(qMax(m_report->width(), 720), qMax(m_report->height(), 480));
    m_report->show();
    m_report->raise();
    m_report->activateWindow();
}

bool frmHotkeys::askFolder(const QString &title, QString &folder)
{
    folder = QFileDialog::getExistingDirectory(this, title, shell::app().AppFolder);
    return !folder.isEmpty();
}

bool frmHotkeys::askText(const QString &title, const QString &prompt, const QString &initial, QString &reply)
{
    bool ok = false;
    reply = QInputDialog::getText(this, title, prompt, QLineEdit::Normal, initial, &ok);
    return ok;
}

bool frmHotkeys::askOpenFile(const QString &title, const QString &filter, QString &path)
{
    const QString folder = QFileInfo(hotkeys::table().HotkeysFileName).absolutePath();
    path = QFileDialog::getOpenFileName(this, title, folder, DialogFilter(filter));
    return !path.isEmpty();
}

bool frmHotkeys::askSaveFile(const QString &title, const QString &filter, QString &path)
{
    const QString folder = QFileInfo(hotkeys::table().HotkeysFileName).absolutePath();
    // The editor asks about an existing file itself.
    path = QFileDialog::getSaveFileName(this, title, folder, DialogFilter(filter), nullptr,
                                        QFileDialog::DontConfirmOverwrite);
    return !path.isEmpty();
}

void frmHotkeys::setRecordingHidden(bool hidden)
{
    if (hidden) {
        hide();
    } else {
        show();
        raise();
        activateWindow();
    }
}

// --- opening

frmHotkeys *hotkeyEditor() { return g_editor; }

void ShowHotkeyEditor()
{
    if (!g_editor)
        g_editor = new frmHotkeys;
    g_editor->show();
    g_editor->raise();
    g_editor->activateWindow();
}

void EditMacro(int macroIndex)
{
    if (g_editor) {
        // Its save question works on the macro it shows, whoever moved the index.
        g_editor->editor().RestoreCurrent();
        if (!g_editor->close())
            return;  // Cancel on its question: it stays as it is
    }
    if (g_editor)
        delete g_editor.data();  // closed: gone before the new one reads the table
    hotkeys::table().CurrentHotkeyIndex = macroIndex;
    ShowHotkeyEditor();
}

void EditRecordedMacro(const QString &code)
{
    ShowHotkeyEditor();
    shell::Guarded("(Form) frmHotkeys::Sub RecordNewMacro",
                   [code] { g_editor->editor().NewRecordedMacro(code); });
}

} // namespace ui
