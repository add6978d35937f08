#include "ui/frm_display_error.h"

#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace ui {

frmDisplayError::frmDisplayError(const QString &errorText, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmDisplayError"));
    setWindowTitle(QStringLiteral("Sonamark - Error Condition Encountered"));
    ++shell::app().ChildFormDepth;

    Image1 = new QLabel(this);
    Image1->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(48, 48));
    lblErrorStr = new QLabel(errorText, this);
    lblErrorStr->setObjectName(QStringLiteral("lblErrorStr"));
    lblErrorStr->setTextFormat(Qt::PlainText);
    lblErrorStr->setWordWrap(true);
    lblErrorStr->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblErrorStr->setMinimumWidth(380);
    cmdContinue = new QPushButton(QStringLiteral("&Continue"), this);
    cmdQuit = new QPushButton(QStringLiteral("&Quit Sonamark"), this);
    cmdErrorReport = new QPushButton(QStringLiteral("&Please Send Error Report!"), this);
    cmdContinue->setObjectName(QStringLiteral("cmdContinue"));
    cmdQuit->setObjectName(QStringLiteral("cmdQuit"));
    cmdErrorReport->setObjectName(QStringLiteral("cmdErrorReport"));
    cmdContinue->setDefault(true);

    connect(cmdContinue, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdQuit, &QPushButton::clicked, this, [this] {
        m_quit = true;
        reject();
    });
    connect(cmdErrorReport, &QPushButton::clicked, this, &frmDisplayError::cmdErrorReport_Click);

    auto *top = new QHBoxLayout;
    top->addWidget(Image1, 0, Qt::AlignTop);
    top->addWidget(lblErrorStr, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdContinue);
    buttons->addWidget(cmdQuit);
    buttons->addWidget(cmdErrorReport);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
}

frmDisplayError::~frmDisplayError()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmDisplayError::cmdErrorReport_Click()
{
    if (platform::Desktop *desktop = platform::services().desktop)
        desktop->openUrl(shell::ErrorReportUrl(lblErrorStr->text()));
}

platform::ErrorWindow::Choice ErrorWindows::showError(const QString &errorText)
{
    frmDisplayError window(errorText);
    window.exec();
    return window.quitChosen() ? Choice::Quit : Choice::Continue;
}

} // namespace ui
