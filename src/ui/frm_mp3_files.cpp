#include "ui/frm_mp3_files.h"

#include "audio/read_to_file_dialog.h"
#include "audio/read_to_file_vars.h"
#include "shell/failure_report.h"
#include "ui/form_controls.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>

namespace ui {

namespace {

constexpr int kFilesBoxWidth = 420;

} // namespace

frmMP3Files::frmMP3Files(QWidget *parent, std::function<int()> voiceRow, std::function<void()> fileFinder)
    : QDialog(parent), m_logic(*this), m_voiceRow(std::move(voiceRow)), m_fileFinder(std::move(fileFinder))
{
    setObjectName(QStringLiteral("frmMP3Files"));
    lblMp3File = new QLabel(QStringLiteral("Convert Files"), this);
    txtOutputMp3File = DropDown(this, "txtOutputMp3File");
    txtOutputMp3File->setEditable(true);
    txtOutputMp3File->setMinimumWidth(kFilesBoxWidth);
    cmdFile = FormButton(this, "cmdFile", QStringLiteral("..."), QStringLiteral("Browse For Input Files"));
    lblPreset = new QLabel(QStringLiteral("Sound Quality"), this);
    cboOption = DropDown(this, "cboOption");
    cmbBitrate = DropDown(this, "cmbBitrate");
    cmdEncode = FormButton(this, "cmdEncode", QLatin1String(audio::kBatchEncodeCaption),
                       QStringLiteral("Save speech to sound files"));
    cmdCancel = FormButton(this, "cmdCancel", QStringLiteral("&Close"), QString());
    m_cProgress = new QProgressBar(this);
    m_cProgress->setObjectName(QStringLiteral("m_cProgress"));
    m_cProgress->setRange(0, 100);
    m_cProgress->setValue(0);

    auto *grid = new QGridLayout;
    grid->addWidget(lblMp3File, 0, 0);
    grid->addWidget(txtOutputMp3File, 1, 0, 1, 2);
    grid->addWidget(cmdFile, 1, 2);
    grid->addWidget(lblPreset, 2, 0);
    grid->addWidget(cboOption, 3, 0);
    grid->addWidget(cmbBitrate, 3, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdEncode);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(m_cProgress);
    layout->addLayout(buttons);

    connect(cboOption, &QComboBox::currentIndexChanged, this, [this] { m_logic.cboOption_Click(); });
    connect(cmdFile, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmMP3Files::Sub cmdFile_Click", [this] { m_logic.cmdFile_Click(); }); });
    connect(cmdEncode, &QPushButton::clicked, this, [this] {
        shell::Guarded("(Form) frmMP3Files::Sub cmdEncode_Click", [this] { m_logic.cmdEncode_Click(); });
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { m_logic.cmdCancel_Click(); });

    m_logic.Form_Load();
}

frmMP3Files::~frmMP3Files()
{
    if (!m_unloaded)
        m_logic.Form_Unload();
}

void frmMP3Files::closeEvent(QCloseEvent *event)
{
    if (encodeCaption() == QLatin1String(audio::kCancelCaption)) {
        // A run is under way: closing asks it to stop, as Cancel does; the window stays
        // until the run has ended.
        m_logic.cmdEncode_Click();
        event->ignore();
        return;
    }
    if (!m_unloaded) {
        m_unloaded = true;
        m_logic.Form_Unload();
    }
    QDialog::closeEvent(event);
}

void frmMP3Files::reject() { close(); }

void frmMP3Files::setCaption(const QString &caption) { setWindowTitle(caption); }

void frmMP3Files::fillFiles(const QStringList &rows)
{
    txtOutputMp3File->clear();
    txtOutputMp3File->addItems(rows);
    txtOutputMp3File->setCurrentIndex(rows.isEmpty() ? -1 : 0);
}

void frmMP3Files::setFilesText(const QString &text) { txtOutputMp3File->setEditText(text); }

void frmMP3Files::fillQualities(const QStringList &rows)
{
    const QSignalBlocker quiet(cboOption);
    cboOption->clear();
    cboOption->addItems(rows);
    cboOption->setCurrentIndex(-1);
}

void frmMP3Files::fillBitRates(const QStringList &rows)
{
    cmbBitrate->clear();
    cmbBitrate->addItems(rows);
    cmbBitrate->setCurrentIndex(-1);
}

int frmMP3Files::qualityIndex() const { return cboOption->currentIndex(); }

void frmMP3Files::setQualityIndex(int row) { cboOption->setCurrentIndex(row < cboOption->count() ? row : -1); }

int frmMP3Files::bitRateIndex() const { return cmbBitrate->currentIndex(); }

void frmMP3Files::setBitRateIndex(int row) { cmbBitrate->setCurrentIndex(row < cmbBitrate->count() ? row : -1); }

QString frmMP3Files::encodeCaption() const { return cmdEncode->text(); }

void frmMP3Files::setEncodeCaption(const QString &caption) { cmdEncode->setText(caption); }

void frmMP3Files::setProgress(int percent) { m_cProgress->setValue(percent); }

void frmMP3Files::doEvents() { QCoreApplication::processEvents(); }

void frmMP3Files::unload() { close(); }

void frmMP3Files::showFileFinder()
{
    if (m_fileFinder)
        m_fileFinder();
}

} // namespace ui
