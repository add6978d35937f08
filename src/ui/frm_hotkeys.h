#pragma once
// frmHotkeys: the Hotkeys editor, where macros are written, checked, formatted, saved,
// recorded and run. The decisions are hotkeys::HotkeyEditor's; this window holds the
// controls and forwards their events.
#include "hotkeys/editor.h"
#include "hotkeys/wizards.h"

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>

class QAction;
class QCheckBox;
class QComboBox;
class QFileSystemWatcher;
class QLabel;
class QLineEdit;
class QMenu;
class QPrinter;
class QPushButton;
class QStackedWidget;
class QTimer;
class QKeyEvent;

namespace ui {

class CodeBox;
class frmText;

class frmHotkeys : public QMainWindow, private hotkeys::HotkeyEditorView {
    Q_OBJECT
public:
    explicit frmHotkeys(QWidget *parent = nullptr);
    ~frmHotkeys() override;

    hotkeys::HotkeyEditor &editor() { return *m_editor; }
    // The Check Code report window while it is open.
    frmText *reportWindow() const;

    QComboBox *txtNewItem = nullptr;  // all keys, in table order
    QComboBox *txtDescr = nullptr;    // all descriptions, in step with txtNewItem
    QLineEdit *tNewItem = nullptr;    // key of a new macro
    QLineEdit *tActDescr = nullptr;   // description of a new macro
    CodeBox *txtAction = nullptr;
    QCheckBox *chkHotkeyEnable = nullptr;
    QLabel *lbHotkey = nullptr;
    QPushButton *cmdBack = nullptr;
    QPushButton *cmdForward = nullptr;
    QPushButton *cmdNew = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdRemove = nullptr;
    QPushButton *cmdRun = nullptr;
    QPushButton *dumFocus = nullptr;  // takes the focus before a run
    QLabel *sbStatusPanel = nullptr;  // panel 1 of the status bar
    QLabel *sbCaretPanel = nullptr;   // line and column of the caret

    QMenu *mnuFile = nullptr;
    QAction *mnuFileNew = nullptr;
    QAction *mnuFileOpen = nullptr;
    QList<QAction *> mnuFileMRU;
    QAction *mnuFileSaveAs = nullptr;
    QAction *mnuFileSaveAsDef = nullptr;
    QAction *mnuFileSort = nullptr;
    QAction *mnuFilePrintHotkey = nullptr;
    QAction *mnuFilePrintAll = nullptr;
    QAction *mnuFileIcon = nullptr;
    QAction *mnuFileExit = nullptr;
    QMenu *mnuEdit = nullptr;
    QAction *mnuEditUndo = nullptr;
    QAction *mnuEditRedo = nullptr;
    QMenu *mnuInsert = nullptr;
    QAction *mnuInsertComment = nullptr;
    QAction *mnuInsertHotkey = nullptr;  // the next key combination pressed
    QMenu *mnuFunctions = nullptr;
    QAction *mnuFunctionsHelp = nullptr;     // the help switch: a wizard shows its help instead
    QList<QAction *> mnuFunctionsWizards;    // the wizards, named by their handlers
    QAction *mnuFunctionsComDiag = nullptr;  // frmComDiag: a [USERINPUT] dialog string
    QList<QAction *> mnuPUMouse;             // the code box's mouse pick-up entries
    QMenu *mnuFormat = nullptr;
    QAction *mnuFormatCheckCode = nullptr;
    QAction *mnuFormatCode = nullptr;
    QAction *mnuRecord = nullptr;
    QMenu *mnuHelp = nullptr;
    QAction *mnuHelpMacros = nullptr;
    QAction *mnuHelpEditor = nullptr;
    QAction *mnuHelpXML = nullptr;

    // Sets up the printer for File > Print: false when the user cancels. Unset, the
    // print dialog asks, or with no printer on the machine a PDF file name is asked for.
    std::function<bool(QPrinter &printer)> choosePrinter;

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // hotkeys::HotkeyEditorView
    void setLists(const QStringList &keys, const QStringList &descriptions) override;
    void setListIndex(int row) override;
    int listIndex() const override;
    QString keysText() const override;
    void setKeysText(const QString &text) override;
    QString descriptionText() const override;
    void showNewEntry(bool shown) override;
    QString code() const override;
    void setCode(const QString &code) override;
    void colourErrorLines(const QList<int> &lines) override;
    bool enableChecked() const override;
    void setEnableChecked(bool checked) override;
    void setNumberLabel(const QString &text) override;
    void setNavigationEnabled(bool enabled) override;
    void setStatus(const QString &text) override;
    void setCaption(const QString &caption) override;
    void setHistory(const QStringList &paths) override;
    QString runCaption() const override;
    void setRunCaption(const QString &caption, const QString &toolTip) override;
    bool askRunOptions(double &waitSeconds, bool &hide) override;
    void prepareRun(bool hide) override;
    void finishRun() override;
    void showReport(const QString &text, const QList<int> &redLines) override;
    bool askFolder(const QString &title, QString &folder) override;
    bool askText(const QString &title, const QString &prompt, const QString &initial, QString &reply) override;
    bool askOpenFile(const QString &title, const QString &filter, QString &path) override;
    bool askSaveFile(const QString &title, const QString &filter, QString &path) override;
    void setRecordingHidden(bool hidden) override;

    void buildControls();
    void buildMenus();
    void buildInsertMenu();
    void buildFunctionsMenu();
    // The code box's pop-up menu: its edit entries and the mouse pick-up entries.
    void showCodeMenu(const QPoint &pos);
    // Runs a statement wizard with the program's dialogs and pastes the lines it gives.
    void runWizard(const hotkeys::WizardEntry &entry);
    void mnuFunctionsComDiag_Click();
    void connectControls();
    // Runs an editor routine under the failure report, then follows the file it names.
    void handle(const char *source, const std::function<void()> &routine);
    // Key text for the key field that has the focus, or statement keys for the code.
    void pasteKey(const QString &text);
    void pasteStatement(const QString &text);
    void pasteStatements(const QStringList &lines);
    // The Hotkeys file watched for changes by other programs.
    void watchFile();
    bool keyFieldKey(QLineEdit *field, QKeyEvent *event);
    void pauseHotkeys(bool paused);
    // Prints text in the code box's font; "" prints nothing.
    void printText(const QString &text);
    bool askPrinter(QPrinter &printer);
    void helpPage(int page);
    void mnuInsertHotkey_Click();

    std::unique_ptr<hotkeys::HotkeyEditor> m_editor;
    QStackedWidget *m_keyStack = nullptr;
    QStackedWidget *m_descrStack = nullptr;
    QFileSystemWatcher *m_watcher = nullptr;
    QPointer<frmText> m_report;
    bool m_settingByCode = false;  // setters at work: no edit to report
    bool m_hiddenForRun = false;
    QTimer *m_captureTimer = nullptr;  // polls for the key of Insert Hotkey
    int m_captureTicks = 0;
};

// Opens the editor on table().CurrentHotkeyIndex, or brings the open one forward.
void ShowHotkeyEditor();
// Opens the editor on the 0-based macro index; an open editor closes first (it may ask
// about unsaved changes; Cancel keeps it open as it is).
void EditMacro(int macroIndex);
// A finished recording: the editor shows a new macro with this code, to name and save.
void EditRecordedMacro(const QString &code);
// The open editor, or nullptr.
frmHotkeys *hotkeyEditor();

} // namespace ui
