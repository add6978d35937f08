#include "ui/frm_run_macro_popup.h"

#include "macro/numbers.h"
#include "shell/app_state.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

frmRunMacroPopup::frmRunMacroPopup(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmRunMacroPopup"));
    setWindowTitle(QStringLiteral("Run Macro"));
    lblNote = new QLabel(QStringLiteral("Before a macro runs, the focus must be on the application it is meant "
                                        "for. Give yourself the time to click into it, or minimize this window."),
                         this);
    lblNote->setObjectName(QStringLiteral("lblNote"));
    lblNote->setWordWrap(true);
    lblWait = new QLabel(QStringLiteral("Seconds to wait before running:"), this);
    txtWait = new QLineEdit(this);
    txtWait->setObjectName(QStringLiteral("txtWait"));
    lblWait->setBuddy(txtWait);
    chkMinimize = new QCheckBox(QStringLiteral("Minimize this window"), this);
    chkMinimize->setObjectName(QStringLiteral("chkMinimize"));
    cmdYes = new QPushButton(QStringLiteral("Continue"), this);
    cmdYes->setObjectName(QStringLiteral("cmdYes"));
    cmdNo = new QPushButton(QStringLiteral("Quit"), this);
    cmdNo->setObjectName(QStringLiteral("cmdNo"));

    auto *wait = new QHBoxLayout;
    wait->addWidget(lblWait);
    wait->addWidget(txtWait);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdYes);
    buttons->addWidget(cmdNo);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblNote);
    layout->addLayout(wait);
    layout->addWidget(chkMinimize);
    layout->addLayout(buttons);
    connect(cmdYes, &QPushButton::clicked, this, &frmRunMacroPopup::cmdYes_Click);
    connect(cmdNo, &QPushButton::clicked, this, &QDialog::reject);
    cmdYes->setDefault(true);
    setMinimumWidth(360);

    // Form_Load: nothing chosen until Continue.
    ++shell::app().ChildFormDepth;
    Continue = false;
    Minimize = false;
    WaitSeconds = 0;
    txtWait->setText(QStringLiteral("0"));
    txtWait->selectAll();
}

frmRunMacroPopup::~frmRunMacroPopup()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmRunMacroPopup::cmdYes_Click()
{
    Continue = true;
    Minimize = chkMinimize->isChecked();
    WaitSeconds = macro::Val1(txtWait->text());
    accept();
}

bool frmRunMacroPopup::Ask(double &waitSeconds, bool &minimise)
{
    frmRunMacroPopup popup;
    popup.exec();
    waitSeconds = popup.WaitSeconds;
    minimise = popup.Minimize;
    return popup.Continue;
}

} // namespace ui
