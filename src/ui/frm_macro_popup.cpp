#include "ui/frm_macro_popup.h"

#include "shell/app_state.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

frmMacroPopup::frmMacroPopup(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmMacroPopup"));
    setWindowTitle(QStringLiteral("Make Hotkeys Macro"));
    lblPopup = new QLabel(QStringLiteral("Continue?"), this);
    lblPopup->setObjectName(QStringLiteral("lblPopup"));
    chkMouseEvents = new QCheckBox(QStringLiteral("Include Mouse Events"), this);
    chkMouseEvents->setObjectName(QStringLiteral("chkMouseEvents"));
    cmdYes = new QPushButton(QStringLiteral("Yes"), this);
    cmdYes->setObjectName(QStringLiteral("cmdYes"));
    cmdNo = new QPushButton(QStringLiteral("No"), this);
    cmdNo->setObjectName(QStringLiteral("cmdNo"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdYes);
    buttons->addWidget(cmdNo);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblPopup);
    layout->addWidget(chkMouseEvents);
    layout->addLayout(buttons);
    connect(cmdYes, &QPushButton::clicked, this, &frmMacroPopup::cmdYes_Click);
    connect(cmdNo, &QPushButton::clicked, this, &QDialog::reject);
    cmdYes->setDefault(true);

    // Form_Load: mouse events on, not continuing until Yes.
    ++shell::app().ChildFormDepth;
    IncludeMouse = true;
    Continue = false;
    chkMouseEvents->setChecked(IncludeMouse);
}

frmMacroPopup::~frmMacroPopup() { --shell::app().ChildFormDepth; }

void frmMacroPopup::cmdYes_Click()
{
    Continue = true;
    IncludeMouse = chkMouseEvents->isChecked();
    accept();
}

bool frmMacroPopup::Ask(bool &includeMouse)
{
    frmMacroPopup popup;
    popup.exec();
    includeMouse = popup.IncludeMouse;
    return popup.Continue;
}

} // namespace ui
