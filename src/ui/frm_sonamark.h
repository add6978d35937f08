#pragma once
// frmSonamark: the main window. Created hidden; the user reaches it through the tray.
#include "reader/date_panel.h"

#include <QMainWindow>
#include <QPointer>

class QAction;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QMenu;
class QTextEdit;
class QTimer;

namespace platform {
class TrayIcon;
}

namespace ui {

class ClipControls;
class DocumentMenus;
class EditMenu;
class SpeechPanel;
class frmFind;

class frmSonamark : public QMainWindow {
    Q_OBJECT
public:
    explicit frmSonamark(platform::TrayIcon *tray, QWidget *parent = nullptr);
    ~frmSonamark() override;

    // Form_Load: runs once, at the first touch of the window during start-up.
    void Form_Load();
    // False when Form_Load gave up (no notification area).
    bool loaded() const { return m_loaded; }
    // Sets the tray tip and status panel 1.
    void setStatusText(const QString &text);
    // Pops up the tray menu in the form it stands in, beside the icon.
    void popTrayMenu();

    QTextEdit *txtSpeech = nullptr;
    QComboBox *cmbFontSize = nullptr;
    QLabel *sbStatusPanel1 = nullptr;
    QLabel *sbStatusPanel2 = nullptr;
    QLabel *sbStatusPanel3 = nullptr;
    SpeechPanel *speechPanel = nullptr;  // List1, sliders, Talk, Pause, Stop, Timer2
    DocumentMenus *documentMenus = nullptr;  // File and Exceptions entries, Paste, Clear
    ClipControls *clipControls = nullptr;  // cmdClipToggle, Timer1, Timer5, clip rows
    EditMenu *editMenu = nullptr;  // the Edit entries but Find, Find Next; Ln/Col
    QTimer *Timer3 = nullptr;   // collects the clipboard each second
    QTimer *Timer4 = nullptr;   // keeps the date in status panel 3
    QTimer *RunTimer = nullptr; // one-shot start of a pending macro

    QMenu *mnuPopUp = nullptr;
    QAction *mnuTalk = nullptr;
    QAction *mnuPause = nullptr;
    QAction *mnuStop = nullptr;
    QMenu *mnuHotkeys = nullptr;
    QAction *mnuSpellCheck = nullptr;
    QAction *mnuPUSpellCheck = nullptr;
    QAction *mnuSeparatorSC = nullptr;
    QAction *mnuSeparator1 = nullptr;
    QAction *mnuOptions = nullptr;
    QAction *mnuCancel = nullptr;
    QAction *mnuSeparator3 = nullptr;
    QAction *mnuClose = nullptr;
    QAction *mnuHotkeysEnable = nullptr;
    QAction *mnuFormatFind = nullptr;
    QAction *mnuFormatFindNext = nullptr;
    QAction *mnuOptionsHotkeysEnable = nullptr;

    // frmVBLame, modal, on the text box; a target fills its output name beforehand.
    void ShowReadToFile(const QString &target);
    // frmMP3Files, modal: the chosen documents into MP3 files beside them.
    void ShowConvertFiles();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void buildControls();
    void trayClicked(int button);
    void mnuFileExit_Click();
    // Edit > Find..: the modeless frmFind on txtSpeech, loaded at the first use.
    void mnuFormatFind_Click();
    // "Save To MP3": the read-to-file dialog, modal.
    void mnuFileMP3_Click() { ShowReadToFile(QString()); }
    // "Save Text To MP3": the same, with the name of an MP3 beside the open document
    // filled in (none without a document).
    void mnuFileTextMP3_Click();
    void mnuHelpStartup_Click();
    void mnuHelpSystemCheck_Click();
    void mnuHelpDeskTop_Click();
    void mnuHelpPage_Click(int index);
    void mnuHelpAbout_Click();
    void mnuHelpEmail_Click();
    void Timer3_Timer();
    void RunTimer_Timer();

    platform::TrayIcon *m_tray;
    bool m_loaded = false;
    bool m_unloaded = false;
    QString m_statusText;
    frmFind *m_find = nullptr;  // frmFind, once loaded
    QHBoxLayout *m_controlRow = nullptr;  // font size, cmdClipToggle
    reader::DatePanelClock m_dateClock;
};

} // namespace ui
