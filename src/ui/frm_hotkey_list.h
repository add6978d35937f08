#pragma once
// frmHotkeyList: the Hotkey List, the small control panel of the macros of the current
// Hotkeys file. The decisions are hotkeys::HotkeyList's; this window shows its rows.
#include "hotkeys/hotkey_list.h"

#include <QDialog>
#include <functional>
#include <memory>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTimer;

namespace ui {

class frmHotkeyList : public QDialog, private hotkeys::HotkeyListView {
    Q_OBJECT
public:
    explicit frmHotkeyList(QWidget *parent = nullptr);
    ~frmHotkeyList() override;

    // Edit was chosen: the editor is to open on table().CurrentHotkeyIndex.
    bool editRequested() const;

    QListWidget *List1 = nullptr;
    QLabel *lblHeader = nullptr;
    QCheckBox *chkHotkeyEnable = nullptr;
    QPushButton *cmdAll = nullptr;
    QPushButton *cmdClear = nullptr;
    QPushButton *cmdReverse = nullptr;
    QPushButton *cmdSave = nullptr;
    QPushButton *cmdRun = nullptr;
    QPushButton *cmdEdit = nullptr;
    QPushButton *cmdQuit = nullptr;
    QTimer *Timer1 = nullptr;      // places the focus once the window is up
    QWidget *dumFocus = nullptr;   // takes the focus while a macro runs

protected:
    void showEvent(QShowEvent *event) override;

private:
    // hotkeys::HotkeyListView
    void clearRows() override;
    void addRow(const QString &text, bool checked) override;
    int rowCount() const override;
    bool isChecked(int row) const override;
    void setChecked(int row, bool checked) override;
    int selectedRow() const override;
    void setCaption(const QString &caption) override;
    void setHotkeysEnabledBox(bool on) override;
    void setRunEnabled(bool enabled) override;
    QString runCaption() const override;
    void setRunCaption(const QString &caption, const QString &toolTip) override;
    bool askRunOptions(double &waitSeconds, bool &minimise) override;
    void prepareRun(bool minimise) override;
    void finishRun() override;
    void closeForEditor() override;

    void buildControls();
    void connectControls();
    // Indents the heading to where the rows' text begins, past the check marks.
    void alignHeader();

    std::unique_ptr<hotkeys::HotkeyList> m_list;
    bool m_minimisedForRun = false;
};

// Opens the Hotkey List modally; when the user chose Edit, the installed editor opens
// once the list has closed.
void ShowHotkeyList(QWidget *parent);

// The Hotkeys editor, which opens on table().CurrentHotkeyIndex. Until one is installed
// the list's Edit button is disabled. nullptr removes it.
void SetHotkeyEditorOpener(std::function<void()> open);

} // namespace ui
