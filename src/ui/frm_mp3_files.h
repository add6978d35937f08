#pragma once
// frmMP3Files: reads the chosen text documents into MP3 files, one beside each document.
// The decisions are audio::BatchConversion's; this window holds the controls.
#include "audio/batch_conversion.h"

#include <QDialog>
#include <functional>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace ui {

class frmMP3Files : public QDialog, private audio::BatchView {
    Q_OBJECT
public:
    // voiceRow: the main window's List1 row, selecting row 0 there when none is selected.
    // fileFinder shows frmFindFiles modally (the "Select Text Files" face).
    frmMP3Files(QWidget *parent, std::function<int()> voiceRow, std::function<void()> fileFinder);
    ~frmMP3Files() override;

    audio::BatchConversion &logic() { return m_logic; }

    QLabel *lblMp3File = nullptr;
    QComboBox *txtOutputMp3File = nullptr;
    QPushButton *cmdFile = nullptr;
    QLabel *lblPreset = nullptr;
    QComboBox *cboOption = nullptr;
    QComboBox *cmbBitrate = nullptr;
    QPushButton *cmdEncode = nullptr;
    QPushButton *cmdCancel = nullptr;
    QProgressBar *m_cProgress = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    // BatchView
    void setCaption(const QString &caption) override;
    void fillFiles(const QStringList &rows) override;
    void setFilesText(const QString &text) override;
    void fillQualities(const QStringList &rows) override;
    void fillBitRates(const QStringList &rows) override;
    int qualityIndex() const override;
    void setQualityIndex(int row) override;
    int bitRateIndex() const override;
    void setBitRateIndex(int row) override;
    QString encodeCaption() const override;
    void setEncodeCaption(const QString &caption) override;
    void setProgress(int percent) override;
    void doEvents() override;
    void unload() override;
    void showFileFinder() override;
    int voiceRow() override { return m_voiceRow ? m_voiceRow() : 0; }

    audio::BatchConversion m_logic;
    std::function<int()> m_voiceRow;
    std::function<void()> m_fileFinder;
    bool m_unloaded = false;
};

} // namespace ui
