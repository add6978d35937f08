#pragma once
// The Hotkeys editor: one macro of the table at a time, saved to the Hotkeys file on
// each change, checked, formatted and run from here. The window shows the controls;
// every decision is made here, on the view below.
#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace hotkeys {

inline const QString kEditorRunTip = QStringLiteral("Run the current macro");
inline const QString kEditorStopTip = QStringLiteral("Stop the running macro");
inline const QString kHotkeyFileFilter = QStringLiteral("Hotkey Files (*.txt)|*.txt");

// The window as the editor's logic sees it. Rows of the two combos are 0-based table
// indexes. Setters never count as user edits.
class HotkeyEditorView {
public:
    virtual ~HotkeyEditorView() = default;
    // txtNewItem and txtDescr: all Keys and all Description values, in table order.
    virtual void setLists(const QStringList &keys, const QStringList &descriptions) = 0;
    // Selects row (-1: none, both texts empty) in both combos.
    virtual void setListIndex(int row) = 0;
    virtual int listIndex() const = 0;
    // The key and description as they stand in the visible boxes: the combos' texts, or
    // tNewItem and tActDescr while a new macro is entered.
    virtual QString keysText() const = 0;
    virtual void setKeysText(const QString &text) = 0;
    virtual QString descriptionText() const = 0;
    // tNewItem and tActDescr, emptied, in place of the combos (or the combos back).
    virtual void showNewEntry(bool shown) = 0;
    // txtAction, with CR LF line ends.
    virtual QString code() const = 0;
    virtual void setCode(const QString &code) = 0;
    // Paints these 1-based lines of txtAction red and all others normal.
    virtual void colourErrorLines(const QList<int> &lines) = 0;
    virtual bool enableChecked() const = 0;
    virtual void setEnableChecked(bool checked) = 0;
    virtual void setNumberLabel(const QString &text) = 0;  // lbHotkey
    virtual void setNavigationEnabled(bool enabled) = 0;  // cmdBack, cmdForward, cmdNew
    virtual void setStatus(const QString &text) = 0;       // sbStatusBar panel 1
    virtual void setCaption(const QString &caption) = 0;
    virtual void setHistory(const QStringList &paths) = 0;  // mnuFileMRU
    virtual QString runCaption() const = 0;
    virtual void setRunCaption(const QString &caption, const QString &toolTip) = 0;
    // frmRunMacroPopup, modal: false on Quit, else the seconds as typed and the hide choice.
    virtual bool askRunOptions(double &waitSeconds, bool &hide) = 0;
    // Just before the wait: the focus to dumFocus, the window out of the way if asked.
    virtual void prepareRun(bool hide) = 0;
    virtual void finishRun() = 0;
    // The Check Code report in frmText ("ERROR REPORT"), with the 1-based lines of the
    // report text given painted red.
    virtual void showReport(const QString &text, const QList<int> &redLines) = 0;
    // Dialogs; false on Cancel.
    virtual bool askFolder(const QString &title, QString &folder) = 0;
    virtual bool askText(const QString &title, const QString &prompt, const QString &initial, QString &reply) = 0;
    virtual bool askOpenFile(const QString &title, const QString &filter, QString &path) = 0;
    virtual bool askSaveFile(const QString &title, const QString &filter, QString &path) = 0;
    // Hides the window while a recording runs (it comes back through NewRecordedMacro),
    // or shows it again when none started.
    virtual void setRecordingHidden(bool hidden) = 0;
};

// What the editor needs from above its layer, installed by the window.
struct HotkeyEditorLinks {
    std::function<bool()> running;          // a macro is running now
    std::function<void()> stop;             // sets the abort latch of the running macro
    std::function<QString(int number)> run; // RunMacro: "" or the message that ended it
    std::function<bool()> startRecording;   // the recorder's question and start; false: none
    std::function<void()> writeOptions;     // WriteFileOpts, for Save As Default
};

// The file as last read or written by the editor, to notice another program's change.
struct FileStamp {
    bool exists = false;
    qint64 size = -1;
    QDateTime modified;
    QByteArray hash;
};

class HotkeyEditor {
public:
    HotkeyEditor(HotkeyEditorView &view, HotkeyEditorLinks links);

    // Opens on CurrentHotkeyIndex (or empty); reads Hotkeys.his.
    void Form_Load();
    // Asks about unsaved changes; false when the window must stay open.
    bool Form_Unload();

    void LoadHotkeys();
    bool SaveHKChanges();
    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdNew_Click();
    void Blank_Macro();
    void RecordNewMacro();
    // A recording has ended: a new macro with this code, ready to name and save.
    void NewRecordedMacro(const QString &code);
    void cmdRun_Click();
    void cmdBack_Click();
    void cmdForward_Click();
    // A row picked in either combo.
    void Move2Hotkey(int row);
    void chkHotkeyEnable_Click();
    // Any edit of the key, description or code by the user.
    void fieldsEdited();

    void mnuFormatCheckCode_Click();
    void mnuFormatCode_Click();
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileMRU_Click(int item);
    void mnuFileSaveAs_Click(bool asDefault = false);
    void mnuFileSort_Click();
    // The blanks to put before statement text inserted at caret (0-based) of the code.
    int insertIndent(int caret, const QString &pasted) const;

    // The window came to the front or the file watcher fired: when another program has
    // changed the Hotkeys file, asks whether to load it again or keep what is shown.
    void CheckFileOnDisk();

    // Makes the macro shown here current again, after others moved CurrentHotkeyIndex.
    void RestoreCurrent();

    // File > Print Hotkey: the shown macro as it stands in the window. "" when there is
    // none, after saying so.
    QString PrintHotkeyText() const;
    // File > Print All Hotkeys: every stored macro; "" after "No hotkeys to print.".
    QString PrintAllText() const;
    // File > Desktop Icon: after the save question, writes a launcher into folder that
    // runs the shown, stored macro through launchProgram.
    void mnuFileIcon_Click(const QString &folder, const QString &launchProgram);
    // Another window changed the stored flags: the enable box shows the shown macro's.
    void RefreshEnabled();

    bool savedFlag() const { return m_saved; }
    bool newEntry() const { return m_newEntry; }
    const QStringList &history() const { return m_history; }

private:
    void RefreshHotkey();
    void ShowCaption();
    QString Label() const;
    QString SaveTitle() const;
    // Writes the table; says "Unable to save hotkey file." (and why) when it cannot.
    bool WriteTable();
    bool MakeNewFile();
    // The duplicate key and description questions of a save; false when the user stops.
    bool DuplicateQuestions(const QString &keys, const QString &description, int skip);
    void LoadFile(const QString &path);
    void TakeStamp();
    bool ChangedOnDisk();

    HotkeyEditorView &m_view;
    HotkeyEditorLinks m_links;
    bool m_saved = false;      // the last cmdAdd_Click stored the macro (or had nothing to)
    bool m_newEntry = false;   // tNewItem and tActDescr are shown
    bool m_fileBehind = false; // the last write failed: the file lacks the table's changes
    bool m_askingReload = false;
    int m_shown = -1;          // the index of the macro the window shows
    QStringList m_history;
    FileStamp m_stamp;
};

// The 1-based lines of text that the lines of its tidied form stand on: tidying drops
// empty lines, so tidied line k is the k-th non-empty line of text.
QList<int> UntidiedLines(const QString &text, const QList<int> &tidiedLines);

} // namespace hotkeys
