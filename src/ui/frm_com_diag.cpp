#include "ui/frm_com_diag.h"

#include "macro/variables.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/form_controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

const QString kDefaultVariable = QStringLiteral("INVAR");
const QString kVariableTitle = QStringLiteral("USERINPUT");
constexpr int kFieldWidth = 320;

QLineEdit *Field(QWidget *parent, const char *name)
{
    auto *field = new QLineEdit(parent);
    field->setObjectName(QLatin1String(name));
    field->setMinimumWidth(kFieldWidth);
    return field;
}

} // namespace

frmComDiag::frmComDiag(std::function<void()> showHelp, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint), m_showHelp(std::move(showHelp))
{
    setObjectName(QStringLiteral("frmComDiag"));
    setWindowTitle(QLatin1String(hotkeys::kComDiagCaption));

    cmbDialogType = DropDown(this, "cmbDialogType");
    cmbDialogType->addItems(hotkeys::ComDiagTypes());
    txtTitle = Field(this, "txtTitle");
    txtFolder = Field(this, "txtFolder");
    cmdFile = FormButton(this, "cmdFile", QStringLiteral("..."), QStringLiteral("Browse for folder"));
    cmdFile->setFixedWidth(cmdFile->fontMetrics().horizontalAdvance(QStringLiteral("....")) + 16);
    txtFileExt = Field(this, "txtFileExt");
    txtFileExt->setMinimumWidth(0);
    txtFileExt->setMaximumWidth(80);
    cmbFlags = DropDown(this, "cmbFlags");
    cmdAddFlag = FormButton(this, "cmdAddFlag", QStringLiteral("A&dd"), QStringLiteral("Add the flag to the dialog"));
    lblFlags = new QLabel(this);
    lblFlags->setObjectName(QStringLiteral("lblFlags"));
    lblFlags->setWordWrap(true);
    txtVariable = Field(this, "txtVariable");
    txtVariable->setMinimumWidth(0);
    txtVariable->setMaximumWidth(160);
    txtVariable->setText(kDefaultVariable);
    chkShortPath = new QCheckBox(QStringLiteral("Return short path names"), this);
    chkShortPath->setObjectName(QStringLiteral("chkShortPath"));
    cmdApply = FormButton(this, "cmdApply", QStringLiteral("&Make [USERINPUT] Dialog Command Line"),
                          QStringLiteral("Build the dialog output string"));
    txtOutput = Field(this, "txtOutput");
    txtOutput->setReadOnly(true);
    cmdClose = FormButton(this, "cmdClose", QStringLiteral("&Apply"), QStringLiteral("Apply changes and close this form"));
    cmdCancel = FormButton(this, "cmdCancel", QStringLiteral("&Cancel"),
                           QStringLiteral("Do not apply changes & close this form"));
    cmdHelp = FormButton(this, "cmdHelp", QStringLiteral("&Help"), QStringLiteral("Common Dialog Help"));

    auto *grid = new QGridLayout;
    int row = 0;
    const auto label = [this, grid, &row](const char *text, QWidget *buddy) {
        auto *l = new QLabel(QLatin1String(text), this);
        l->setBuddy(buddy);
        grid->addWidget(l, row, 0);
    };
    label("Dialog &Type", cmbDialogType);
    grid->addWidget(cmbDialogType, row++, 1, Qt::AlignLeft);
    label("Dialog T&itle", txtTitle);
    grid->addWidget(txtTitle, row++, 1, 1, 2);
    label("Default &Path", txtFolder);
    grid->addWidget(txtFolder, row, 1);
    grid->addWidget(cmdFile, row++, 2);
    label("Def File &Ext", txtFileExt);
    grid->addWidget(txtFileExt, row++, 1, Qt::AlignLeft);
    label("&Flags", cmbFlags);
    auto *flagRow = new QHBoxLayout;
    flagRow->addWidget(cmbFlags, 1);
    flagRow->addWidget(cmdAddFlag);
    grid->addLayout(flagRow, row++, 1, 1, 2);
    grid->addWidget(lblFlags, row++, 1, 1, 2);
    label("&Variable", txtVariable);
    grid->addWidget(txtVariable, row++, 1, Qt::AlignLeft);
    grid->addWidget(chkShortPath, row++, 1, 1, 2);
    grid->setColumnStretch(1, 1);

    auto *make = new QHBoxLayout;
    make->addWidget(cmdApply);
    make->addStretch();
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdHelp);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(make);
    layout->addWidget(txtOutput);
    layout->addSpacing(6);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmbDialogType, qOverload<int>(&QComboBox::currentIndexChanged), this, &frmComDiag::cmbDialogType_Click);
    connect(cmdAddFlag, &QPushButton::clicked, this, &frmComDiag::cmdAddFlag_Click);
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &frmComDiag::cmdClose_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [this] {
        if (m_showHelp)
            m_showHelp();
    });
    connect(cmdFile, &QPushButton::clicked, this, [this] {
        const QString start = txtFolder->text().trimmed().isEmpty() ? QDir::currentPath() : txtFolder->text();
        const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("Default Path"), start);
        if (!folder.isEmpty())
            txtFolder->setText(QDir::toNativeSeparators(folder));
    });

    ++shell::app().ChildFormDepth;
    cmbDialogType->setCurrentIndex(int(hotkeys::ComDiagTypes().indexOf(QStringLiteral("Open"))));
    cmbDialogType_Click();
}

frmComDiag::~frmComDiag()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

hotkeys::ComDiagFields frmComDiag::fields() const
{
    hotkeys::ComDiagFields f;
    f.type = cmbDialogType->currentText();
    f.title = txtTitle->text();
    f.path = txtFolder->text();
    f.extension = txtFileExt->text();
    f.flags = m_flags;
    f.shortPath = chkShortPath->isChecked();
    return f;
}

void frmComDiag::showFlags()
{
    QStringList captions;
    for (const QString &name : m_flags)
        captions << hotkeys::FlagCaption(name);
    lblFlags->setText(captions.isEmpty() ? QStringLiteral("No flags added.") : captions.join(QStringLiteral(", ")));
}

void frmComDiag::cmbDialogType_Click()
{
    // The flags belong to a type: another type starts with none.
    m_flags.clear();
    cmbFlags->clear();
    for (const hotkeys::ComDiagFlag &flag : hotkeys::ComDiagFlags(cmbDialogType->currentText()))
        cmbFlags->addItem(flag.caption, flag.name);
    const bool hasFlags = cmbFlags->count() > 1;
    cmbFlags->setEnabled(hasFlags);
    cmdAddFlag->setEnabled(hasFlags);
    txtFileExt->setEnabled(hasFlags && cmbDialogType->currentText() != QLatin1String("Help"));
    showFlags();
    txtOutput->clear();
}

void frmComDiag::cmdAddFlag_Click()
{
    hotkeys::ComDiagFields f = fields();
    const QString refused = hotkeys::AddComDiagFlag(f, cmbFlags->currentData().toString());
    if (!refused.isEmpty()) {
        shell::MsgBoxOT(refused, 0, QLatin1String(hotkeys::kComDiagCaption));
        return;
    }
    m_flags = f.flags;
    showFlags();
}

bool frmComDiag::cmdApply_Click()
{
    const hotkeys::ComDiagFields f = fields();
    const QString wrong = hotkeys::CheckComDiag(f);
    if (!wrong.isEmpty()) {
        shell::MsgBoxOT(wrong, 0, QLatin1String(hotkeys::kComDiagCaption));
        return false;
    }
    txtOutput->setText(hotkeys::BuildDialogString(f));
    return true;
}

void frmComDiag::cmdClose_Click()
{
    if (!cmdApply_Click())
        return;
    const QString variable = txtVariable->text().trimmed();
    QString wrong = variable.isEmpty() ? QStringLiteral("Enter a variable to hold the input, e.g. INVAR")
                                       : macro::AllLetters(variable, QString());
    if (!wrong.isEmpty()) {
        shell::MsgBoxOT(variable.isEmpty() ? wrong : wrong + QStringLiteral(". Try again."), 0, kVariableTitle);
        txtVariable->setFocus();
        return;
    }
    Statement = hotkeys::ComDiagStatement(txtOutput->text(), variable);
    accept();
}

bool frmComDiag::Ask(QWidget *parent, const std::function<void()> &showHelp, QString &statement)
{
    frmComDiag window(showHelp, parent);
    if (window.exec() != QDialog::Accepted)
        return false;
    statement = window.Statement;
    return true;
}

} // namespace ui
