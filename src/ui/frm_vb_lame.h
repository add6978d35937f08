#pragma once
// frmVBLame ("Sonamark - Read To MP3"): reads the main window's text into a WAV or MP3
// file. The decisions are audio::ReadToFileDialog's; this window holds the controls.
#include "audio/read_to_file_dialog.h"

#include <QDialog>
#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace ui {

class frmVBLame : public QDialog, private audio::ReadToFileView {
    Q_OBJECT
public:
    // voiceRow: the main window's List1 row, selecting row 0 there when none is selected.
    frmVBLame(QWidget *parent, std::function<int()> voiceRow);
    ~frmVBLame() override;

    // Called by the file picker and by the macro statement before the dialog is shown.
    void SettxtOutputMp3File(const QString &name) { m_logic.SettxtOutputMp3File(name); }
    audio::ReadToFileDialog &logic() { return m_logic; }

    QLabel *lblMp3File = nullptr;
    QLineEdit *txtOutputMp3File = nullptr;
    QPushButton *cmdFile = nullptr;
    QLabel *lblPreset = nullptr;
    QComboBox *cboOption0 = nullptr;  // cboOption(0): speech formats
    QComboBox *cboOption1 = nullptr;  // cboOption(1): MP3 qualities
    QComboBox *cmbBitrate = nullptr;
    QPushButton *cmdEncode = nullptr;
    QPushButton *cmdCancel = nullptr;
    QProgressBar *m_cProgress = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;  // Esc goes the way of the window's close button

private:
    QComboBox *list(audio::ReadToFileList which) const;
    void cmdFile_Click();

    // ReadToFileView
    QString outputText() const override;
    void setOutputText(const QString &text) override;
    QString outputTag() const override { return m_outputTag; }
    void setOutputTag(const QString &tag) override { m_outputTag = tag; }
    void selectAndFocusOutput() override;
    void fillList(audio::ReadToFileList which, const QStringList &rows) override;
    int listIndex(audio::ReadToFileList which) const override;
    void setListIndex(audio::ReadToFileList which, int row) override;
    void setSpeechFormatVisible(bool visible) override;
    QString encodeCaption() const override;
    void setEncodeCaption(const QString &caption) override;
    void setEncodeEnabled(bool enabled) override;
    void setProgress(int percent) override;
    void setProgressVisible(bool visible) override;
    void doEvents() override;
    void unload() override;
    QString speechText() const override;
    void setSpeechText(const QString &text) override;
    int voiceRow() override { return m_voiceRow ? m_voiceRow() : 0; }

    audio::ReadToFileDialog m_logic;
    std::function<int()> m_voiceRow;
    QString m_outputTag;  // txtOutputMp3File.Tag
    bool m_unloading = false;
};

} // namespace ui
