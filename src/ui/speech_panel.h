#pragma once
// The main window's speech controls (List1, the three sliders, cmdTalk, cmdPause,
// cmdStop, Timer2) and the window as the speech logic sees it.
#include "reader/speech_view.h"

#include <QWidget>

class QAction;
class QLabel;
class QListWidget;
class QPushButton;
class QSlider;
class QTextEdit;
class QTimer;

namespace ui {

class frmSonamark;

class SpeechPanel : public QWidget, public reader::SpeechView {
    Q_OBJECT
public:
    SpeechPanel(frmSonamark *window, QTextEdit *txtSpeech, QLabel *panel2);

    QListWidget *List1 = nullptr;
    QSlider *VolumeSldr = nullptr;
    QSlider *RateSldr = nullptr;
    QSlider *PitchSldr = nullptr;
    QPushButton *cmdTalk = nullptr;
    QPushButton *cmdPause = nullptr;
    QPushButton *cmdStop = nullptr;
    QTimer *Timer2 = nullptr;
    // The tray menu's entries; set by the window once its menu exists.
    QAction *mnuTalk = nullptr;
    QAction *mnuPause = nullptr;
    QAction *mnuStop = nullptr;

    void clearVoiceList() override;
    void addVoiceRow(const QString &name) override;
    int voiceRowCount() const override;
    QString voiceRow(int row) const override;
    int listIndex() const override;
    void setListIndex(int row) override;
    void setVoiceTip(const QString &tip) override;
    void setVolumeSlider(int value) override;
    void setVolumeTip(const QString &tip) override;
    void setRateSlider(int value) override;
    void setRateTip(const QString &tip) override;
    void setPitchSlider(int value) override;
    void setPitchTip(const QString &tip) override;
    QString text() const override;
    QString selectedText() const override;
    int selStart() const override;
    void setText(const QString &text) override;
    void select(int start, int length) override;
    int currentLine() const override;
    int currentColumn() const override;
    void applyDefaultFormat() override;
    // The font that Reset_txtSpeech gives a new text (Form_Load sets it from FontSizeOpt).
    void setDefaultFont(const QFont &font) { m_defaultFont = font; }
    void setCaption(const QString &caption) override;
    void setStatusText(const QString &text) override;
    void setPanel2(const QString &text) override;
    void setTimer2Enabled(bool enabled) override;
    bool exceptionsOn() const override;
    void applyExceptions() override;
    void saveFile() override;
    QString cmdPauseCaption() const override;
    QString mnuPauseCaption() const override;
    void setPauseCaptions(const QString &caption) override;
    QString mnuTalkCaption() const override;
    bool mnuPauseVisible() const override;
    bool mnuStopVisible() const override;
    QString clipToggleCaption() const override;
    QString firstClipRow() const override;
    void restorePopUp() override;
    void restorePopUp2() override;

    // Connects the tray entries to their handlers.
    void connectTrayEntries(QAction *talk, QAction *pause, QAction *stop);

private:
    frmSonamark *m_window;
    QTextEdit *m_text;
    QLabel *m_panel2;
    QFont m_defaultFont;
};

} // namespace ui
