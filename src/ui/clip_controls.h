#pragma once
// The main window's clipboard controls: the monitor toggle cmdClipToggle, Timer1 and
// Timer5, the clip rows of the "&Clipboard" menu and of the tray menu, and the window
// as the clipboard monitor and the clip store see it.
#include "reader/clip_view.h"

#include <QObject>
#include <array>

class QAction;
class QMenu;
class QPushButton;
class QTimer;
class QWidget;

namespace ui {

class frmSonamark;

class ClipControls : public QObject, public reader::ClipView {
    Q_OBJECT
public:
    ClipControls(frmSonamark *window, QWidget *buttonParent);

    QPushButton *cmdClipToggle = nullptr;
    QTimer *Timer1 = nullptr;  // monitoring, every 100 ms
    QTimer *Timer5 = nullptr;  // picture clips, every second

    // Adds the clip rows to the "&Clipboard" menu, with "Enable Picture Clips" and
    // "Clear All Clips".
    void addClipboardMenu(QMenu *menu);
    // Adds the tray menu's clip rows, between Options and Cancel.
    void addTrayRows(QMenu *tray);
    void stopTimers();

    void setClipRow(int row, const QString &caption, bool visible) override;
    void setClipCountRow(const QString &caption, bool visible) override;
    void setPicRow(int row, const QString &caption, bool visible) override;
    void setPicCountRow(const QString &caption, bool visible) override;
    bool picsEnabled() const override;
    void setPicsEnabled(bool checked) override;
    void setTrayEntryVisible(reader::TrayEntry entry, bool visible) override;
    void setTrayEntryEnabled(reader::TrayEntry entry, bool enabled) override;
    void setTrayCaption(reader::TrayEntry entry, const QString &caption) override;
    void popTrayMenu() override;
    QString clipToggleCaption() const override;
    void setClipToggle(const QString &caption, const QString &tip) override;
    void setTimer1Enabled(bool enabled) override;
    void setTimer3Enabled(bool enabled) override;
    void setTimer5Enabled(bool enabled) override;
    void setPasteClearEnabled(bool enabled) override;
    bool spellClipMode() const override;
    void setSpellClipMode(bool checked) override;
    void spellCheckClip(const QString &text) override;
    void setStatusText(const QString &text) override;
    void setPanel1(const QString &text) override;
    void resetClipFont() override;
    void setSpeechText(const QString &text) override;
    void talk() override;
    void clearExceptionsMade() override;
    void processEvents() override;

private:
    QAction *trayAction(reader::TrayEntry entry) const;
    // Both menus' visible clip rows go to the "sonamark.clips.menu" log, once per burst
    // of changes.
    void logMenusSoon();

    frmSonamark *m_window;
    QMenu *m_tray = nullptr;
    QMenu *m_clipboardMenu = nullptr;
    QAction *mnuSeparator2 = nullptr;
    QAction *mnuClipStored = nullptr;
    std::array<QAction *, 5> mnuClipMRU{};
    QAction *mnuClipPicStored = nullptr;
    std::array<QAction *, 5> mnuClipPicMRU{};
    QAction *Separator3 = nullptr;
    QAction *mnuClipboardStored = nullptr;
    std::array<QAction *, 5> mnuClipboardMRU{};
    QAction *mnuClipboardPicStored = nullptr;
    std::array<QAction *, 5> mnuClipboardPicMRU{};
    QAction *mnuClipboardbar = nullptr;
    QAction *mnuClipboardEnablePics = nullptr;
    QTimer *m_logTimer = nullptr;
};

} // namespace ui
