#pragma once
// The Hotkey List: every macro of the table as one row of number, key and description
// with its enable flag as a check mark; the flags for all rows, Apply, Run (with its
// stop) and the way to the editor. The window shows the rows; the decisions are here.
#include "hotkeys/hotkeys_table.h"

#include <QString>
#include <functional>

namespace hotkeys {

inline constexpr int kListNumberWidth = 4;         // "1)  ", "10) ", "100)"
inline constexpr int kListKeyGap = 2;              // blanks at least between key and description
inline constexpr int kListMinKeyWidth = 40;        // 4 + 40: descriptions start under "Description"
inline constexpr int kListDescriptionWidth = 40;   // longer descriptions are cut and end in ".."
inline constexpr double kMaxRunDelaySeconds = 3600;

inline const QString kListHeader =
    QStringLiteral("               Hotkey                       Description");
inline const QString kRunCaption = QStringLiteral("&Run");
inline const QString kStopCaption = QStringLiteral("&Stop");
inline const QString kRunTip = QStringLiteral("Run a selected macro");
inline const QString kStopTip = QStringLiteral("Stop the running macro");

// Characters of the key column: the longest key text of the table's macros and the gap,
// at least kListMinKeyWidth.
int KeyColumnWidth(const HotkeyTable &table);
// One row: number and ")" padded to kListNumberWidth, the key padded to keyWidth, the
// description, cut to descriptionWidth with ".." at its end when longer.
QString HotkeyListRow(int number, const Hotkey &hotkey, int keyWidth,
                      int descriptionWidth = kListDescriptionWidth);
// "Hotkeys : " and the file's name behind its last "/" (the whole name without one).
QString HotkeyListCaption(const QString &fileName);

// The window as the list's logic sees it. Rows are 0-based: row i is macro i + 1.
class HotkeyListView {
public:
    virtual ~HotkeyListView() = default;
    virtual void clearRows() = 0;
    virtual void addRow(const QString &text, bool checked) = 0;
    virtual int rowCount() const = 0;
    virtual bool isChecked(int row) const = 0;
    virtual void setChecked(int row, bool checked) = 0;
    virtual int selectedRow() const = 0;  // -1 when none
    virtual void setCaption(const QString &caption) = 0;
    virtual void setHotkeysEnabledBox(bool on) = 0;
    virtual void setRunEnabled(bool enabled) = 0;
    virtual QString runCaption() const = 0;
    virtual void setRunCaption(const QString &caption, const QString &toolTip) = 0;
    // frmRunMacroPopup, modal: false when the user quits, else the seconds to wait (as
    // typed, not limited) and whether to minimise.
    virtual bool askRunOptions(double &waitSeconds, bool &minimise) = 0;
    // Just before the wait: the focus away from the list, minimised if asked, events
    // served once so that the window is out of the way.
    virtual void prepareRun(bool minimise) = 0;
    // After the run: the window back as it was before prepareRun.
    virtual void finishRun() = 0;
    // Closes the window; the editor opens once it has gone.
    virtual void closeForEditor() = 0;
};

// The interpreter and the main window above this layer, installed by the window.
struct HotkeyListLinks {
    std::function<bool()> running;              // a macro is running now
    std::function<void()> stop;                 // sets the abort latch of the running macro
    std::function<QString(int index)> run;      // RunMacro: "" or the message that ended it
    std::function<void()> hotkeysEnabledShown;  // the main window shows the Hotkeys option
    bool editorAvailable = false;               // an editor can take a macro
};

class HotkeyList {
public:
    HotkeyList(HotkeyListView &view, HotkeyListLinks links);

    // Fills the rows and the controls; counts the window among the open child windows.
    void Form_Load();
    void Form_Unload();
    void chkHotkeyEnable_MouseDown();
    void cmdAll_Click();
    void cmdClear_Click();
    void cmdReverse_Click();
    void cmdSave_Click();
    void cmdRun_Click();
    void cmdEdit_Click();

    // The editor was asked for (Edit, or Yes to editing a macro with errors).
    bool editRequested() const { return m_editRequested; }

private:
    bool running() const { return m_links.running && m_links.running(); }
    // The checks before the popup: the macro has actions, is enabled or the user goes on
    // anyway, and the checker finds nothing; false when the run is off.
    bool checkMacroToRun(int number);
    // Minimises if asked, waits, and runs the macro under the Stop caption.
    void runMacro(int number, double wait, bool minimise);

    HotkeyListView &m_view;
    HotkeyListLinks m_links;
    bool m_editRequested = false;
};

} // namespace hotkeys
