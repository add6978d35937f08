#include "ui/frm_vb_lame.h"

#include "reader/text_box.h"
#include "shell/failure_report.h"
#include "ui/form_controls.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

namespace ui {

namespace {

constexpr int kOutputBoxWidth = 360;

} // namespace

frmVBLame::frmVBLame(QWidget *parent, std::function<int()> voiceRow)
    : QDialog(parent), m_logic(*this), m_voiceRow(std::move(voiceRow))
{
    setObjectName(QStringLiteral("frmVBLame"));
    setWindowTitle(QLatin1String(audio::kReadToFileTitle));

    lblMp3File = new QLabel(QStringLiteral("Output File"), this);
    txtOutputMp3File = new QLineEdit(this);
    txtOutputMp3File->setObjectName(QStringLiteral("txtOutputMp3File"));
    txtOutputMp3File->setMinimumWidth(kOutputBoxWidth);
    cmdFile = FormButton(this, "cmdFile", QStringLiteral("..."), QStringLiteral("Set output file"));
    lblPreset = new QLabel(QStringLiteral("Sound Quality"), this);
    cboOption0 = DropDown(this, "cboOption0");
    cboOption1 = DropDown(this, "cboOption1");
    cmbBitrate = DropDown(this, "cmbBitrate");
    cmdEncode = FormButton(this, "cmdEncode", QLatin1String(audio::kEncodeCaption), QStringLiteral("Save speech to a sound file"));
    cmdCancel = FormButton(this, "cmdCancel", QStringLiteral("&Close"), QStringLiteral("Cancel Read To File"));
    m_cProgress = new QProgressBar(this);
    m_cProgress->setObjectName(QStringLiteral("m_cProgress"));
    m_cProgress->setRange(0, 100);
    m_cProgress->setVisible(false);

    auto *grid = new QGridLayout;
    grid->addWidget(lblMp3File, 0, 0);
    grid->addWidget(txtOutputMp3File, 1, 0, 1, 2);
    grid->addWidget(cmdFile, 1, 2);
    grid->addWidget(lblPreset, 2, 0);
    // The two quality lists lie over each other; one is shown at a time.
    grid->addWidget(cboOption0, 3, 0);
    grid->addWidget(cboOption1, 3, 0);
    grid->addWidget(cmbBitrate, 3, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdEncode);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(m_cProgress);
    layout->addLayout(buttons);

    connect(txtOutputMp3File, &QLineEdit::textChanged, this, [this] { m_logic.txtOutputMp3File_Change(); });
    connect(cboOption1, &QComboBox::currentIndexChanged, this, [this] { m_logic.cboOption_Click(1); });
    connect(cboOption0, &QComboBox::currentIndexChanged, this, [this] { m_logic.cboOption_Click(0); });
    connect(cmdFile, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmVBLame::Sub cmdFile_Click", [this] { cmdFile_Click(); }); });
    connect(cmdEncode, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmVBLame::Sub cmdEncode_Click", [this] { m_logic.cmdEncode_Click(); }); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { m_logic.cmdCancel_Click(); });

    m_logic.Form_Load();
}

frmVBLame::~frmVBLame()
{
    if (!m_unloading)
        m_logic.Form_Unload();
}

void frmVBLame::closeEvent(QCloseEvent *event)
{
    if (!m_unloading && !m_logic.Form_Unload()) {
        event->ignore();
        return;
    }
    m_unloading = true;
    QDialog::closeEvent(event);
}

void frmVBLame::reject()
{
    if (m_unloading)
        QDialog::reject();
    else
        close();
}

void frmVBLame::cmdFile_Click()
{
    const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Save to a WAV or MP3 File"), QString(),
                                                      QStringLiteral("WAV/MP3 Files (*.mp3 *.wav)"));
    m_logic.cmdFile_Click(name);
}

QComboBox *frmVBLame::list(audio::ReadToFileList which) const
{
    return which == audio::kSpeechFormatList ? cboOption0 : which == audio::kQualityList ? cboOption1 : cmbBitrate;
}

QString frmVBLame::outputText() const { return txtOutputMp3File->text(); }

void frmVBLame::setOutputText(const QString &text)
{
    if (txtOutputMp3File->text() == text)
        m_logic.txtOutputMp3File_Change();  // the assignment raises the change event all the same
    txtOutputMp3File->setText(text);
}

void frmVBLame::selectAndFocusOutput()
{
    txtOutputMp3File->selectAll();
    txtOutputMp3File->setFocus();
}

void frmVBLame::fillList(audio::ReadToFileList which, const QStringList &rows)
{
    QComboBox *combo = list(which);
    const QSignalBlocker quiet(combo);
    combo->clear();
    combo->addItems(rows);
    combo->setCurrentIndex(-1);
}

int frmVBLame::listIndex(audio::ReadToFileList which) const { return list(which)->currentIndex(); }

void frmVBLame::setListIndex(audio::ReadToFileList which, int row)
{
    list(which)->setCurrentIndex(row < list(which)->count() ? row : -1);
}

void frmVBLame::setSpeechFormatVisible(bool visible)
{
    cboOption0->setVisible(visible);
    cboOption1->setVisible(!visible);
    cmbBitrate->setVisible(!visible);
}

QString frmVBLame::encodeCaption() const { return cmdEncode->text(); }

void frmVBLame::setEncodeCaption(const QString &caption) { cmdEncode->setText(caption); }

void frmVBLame::setEncodeEnabled(bool enabled) { cmdEncode->setEnabled(enabled); }

void frmVBLame::setProgress(int percent) { m_cProgress->setValue(percent); }

void frmVBLame::setProgressVisible(bool visible) { m_cProgress->setVisible(visible); }

void frmVBLame::doEvents() { QCoreApplication::processEvents(); }

void frmVBLame::unload() { close(); }

QString frmVBLame::speechText() const
{
    const reader::TextBox *box = reader::textBox();
    return box ? box->text() : QString();
}

void frmVBLame::setSpeechText(const QString &text)
{
    if (reader::TextBox *box = reader::textBox())
        box->rewriteText(text);
}

} // namespace ui
