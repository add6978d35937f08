#include "ui/frm_exceptions.h"

#include "reader/exceptions_editor.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace ui {

namespace {

QComboBox *wordList(QWidget *parent, const char *name)
{
    auto *combo = new QComboBox(parent);
    combo->setObjectName(QLatin1String(name));
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);  // typing does not add rows
    combo->setMinimumWidth(220);
    return combo;
}

QPushButton *button(QWidget *parent, const char *name, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setAutoDefault(false);
    return b;
}

} // namespace

frmExceptions::frmExceptions(QWidget *parent, int voiceRow) : QDialog(parent), m_voiceRow(voiceRow)
{
    setObjectName(QStringLiteral("frmExceptions"));
    setWindowTitle(QLatin1String(reader::kExceptionsTitle));
    ++shell::app().ChildFormDepth;

    cmbWords = wordList(this, "cmbWords");
    cmbChanges = wordList(this, "cmbChanges");
    cmdApply = button(this, "cmdApply", QStringLiteral("&Apply"));
    cmdDelete = button(this, "cmdDelete", QStringLiteral("&Delete"));
    cmdQuit = button(this, "cmdQuit", QStringLiteral("&Quit"));
    cmdSpeakWord = button(this, "cmdSpeakWord", QStringLiteral("Speak"));
    cmdSpeakChange = button(this, "cmdSpeakChange", QStringLiteral("Speak"));
    cmdSpeakWord->setToolTip(QStringLiteral("Hear the word as it stands"));
    cmdSpeakChange->setToolTip(QStringLiteral("Hear the changed word"));

    auto *grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Word to Change"), this), 0, 0);
    grid->addWidget(cmbWords, 1, 0);
    grid->addWidget(cmdSpeakWord, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Change Word To"), this), 2, 0);
    grid->addWidget(cmbChanges, 3, 0);
    grid->addWidget(cmdSpeakChange, 3, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdApply);
    buttons->addWidget(cmdDelete);
    buttons->addStretch();
    buttons->addWidget(cmdQuit);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    fillLists();

    // Row i of each list belongs together: choosing one chooses the other.
    connect(cmbWords, &QComboBox::activated, this, [this](int row) { cmbChanges->setCurrentIndex(row); });
    connect(cmbChanges, &QComboBox::activated, this, [this](int row) { cmbWords->setCurrentIndex(row); });
    connect(cmdApply, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmExceptions::Sub cmdApply_Click", [this] { cmdApply_Click(); }); });
    connect(cmdDelete, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmExceptions::Sub cmdDelete_Click", [this] { cmdDelete_Click(); }); });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSpeakWord, &QPushButton::clicked, this, [this] {
        shell::Guarded("(Form) frmExceptions::Sub cmdSpeakWord_Click",
                       [this] { reader::SpeakTrial(cmbWords->currentText(), m_voiceRow); });
    });
    connect(cmdSpeakChange, &QPushButton::clicked, this, [this] {
        shell::Guarded("(Form) frmExceptions::Sub cmdSpeakChange_Click",
                       [this] { reader::SpeakTrial(cmbChanges->currentText(), m_voiceRow); });
    });
}

frmExceptions::~frmExceptions() { --shell::app().ChildFormDepth; }

void frmExceptions::fillLists()
{
    const reader::ExceptionLists lists = reader::BuildExceptionLists();
    cmbWords->clear();
    cmbChanges->clear();
    cmbWords->addItems(lists.words);
    cmbChanges->addItems(lists.changes);
    cmbWords->setCurrentIndex(-1);
    cmbChanges->setCurrentIndex(-1);
}

void frmExceptions::presetWord(const QString &word) { cmbWords->setEditText(word); }

void frmExceptions::cmdApply_Click()
{
    const QString word = cmbWords->currentText();
    const QString change = cmbChanges->currentText();
    const int row = reader::ApplyException(word, change);
    if (row < 0)
        return;
    fillLists();
    cmbWords->setCurrentIndex(row);
    cmbChanges->setCurrentIndex(row);
}

void frmExceptions::cmdDelete_Click()
{
    if (cmbWords->count() == 0)
        return;
    // A row counts as selected only while the box shows it.
    int row = cmbWords->currentIndex();
    if (row >= 0 && cmbWords->itemText(row) != cmbWords->currentText())
        row = -1;
    if (!reader::DeleteException(row))
        return;
    fillLists();
}

} // namespace ui
