#include "ui/frm_pick_point.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "platform/services.h"
#include "shell/app_state.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLoggingCategory>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

Q_LOGGING_CATEGORY(lcPickPoint, "sonamark.pickpoint", QtWarningMsg)

namespace ui {

namespace {

constexpr int kPollMs = 25;       // how often the hook state is looked at for the click
constexpr int kTopMargin = 40;    // pixels between the screen's top and the window

} // namespace

frmPickPoint::frmPickPoint(const QString &title, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmPickPoint"));
    setWindowTitle(title);
    lblPrompt = new QLabel(QStringLiteral("Click the point on the screen (Esc cancels)"), this);
    lblPrompt->setObjectName(QStringLiteral("lblPrompt"));
    QFont bold = lblPrompt->font();
    bold.setBold(true);
    lblPrompt->setFont(bold);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblPrompt);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    m_poll = new QTimer(this);
    m_poll->setInterval(kPollMs);
    connect(m_poll, &QTimer::timeout, this, &frmPickPoint::poll);
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        adjustSize();
        move(area.center().x() - width() / 2, area.top() + kTopMargin);
    }
    ++shell::app().ChildFormDepth;
}

frmPickPoint::~frmPickPoint()
{
    endCapture();
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmPickPoint::beginCapture()
{
    hotkeys::HookState &h = hotkeys::hookState();
    h.MousePointCapture = true;
    h.ClickX = hotkeys::kNoClick;
    h.ClickY = hotkeys::kNoClick;
    m_capturing = true;
    excludeSelf();
    m_poll->start();
    qCDebug(lcPickPoint) << windowTitle() << "waits for a click outside" << h.PointCaptureExcluded;
}

void frmPickPoint::endCapture()
{
    if (!m_capturing)
        return;
    m_capturing = false;
    m_poll->stop();
    hotkeys::HookState &h = hotkeys::hookState();
    h.MousePointCapture = false;
    h.PointCaptureExcluded = QRect();
    hotkeys::UpdateHookPlan();
}

void frmPickPoint::excludeSelf()
{
    if (!m_capturing)
        return;
    hotkeys::hookState().PointCaptureExcluded = frameGeometry();
    hotkeys::UpdateHookPlan();
}

void frmPickPoint::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    activateWindow();
    excludeSelf();
}

void frmPickPoint::moveEvent(QMoveEvent *event)
{
    QDialog::moveEvent(event);
    excludeSelf();
}

void frmPickPoint::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    excludeSelf();
}

void frmPickPoint::poll()
{
    const hotkeys::HookState &h = hotkeys::hookState();
    if (!m_capturing || h.ClickX == hotkeys::kNoClick)
        return;
    Point = QPoint(qRound(h.ClickX), qRound(h.ClickY));
    qCDebug(lcPickPoint) << windowTitle() << "took" << Point;
    endCapture();
    accept();
}

bool frmPickPoint::Pick(QWidget *parent, const QString &title, QPoint &at, bool &hooked)
{
    const bool wasHooked = hotkeys::hookState().MouseHooked;
    hooked = wasHooked || hotkeys::HookMouse();
    if (!hooked)
        return false;
    bool taken = false;
    {
        frmPickPoint window(title, parent);
        // The button that chose this wizard (or gave the last point) may still be on its
        // way up: the capture starts once the mouse has settled, so that it is not taken.
        QPointer<frmPickPoint> alive(&window);
        QTimer::singleShot(0, &window, [alive] {
            platform::InputHooks *hooks = platform::services().inputHooks;
            if (!hooks) {
                alive->beginCapture();
                return;
            }
            hooks->whenInputSettled([alive] {
                if (alive && alive->isVisible())
                    alive->beginCapture();
            });
        });
        taken = window.exec() == QDialog::Accepted;
        if (taken)
            at = window.Point;
    }
    if (!wasHooked)
        hotkeys::UnhookMouse();
    return taken;
}

} // namespace ui
