#include "ui/frm_aot_msg.h"

#include "shell/on_top_message.h"
#include "ui/frm_popup.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace ui {

namespace {
constexpr int kTickMs = 1000;
constexpr int kLabelPointSize = 10;
constexpr int kSmallPointSize = 8;
constexpr int kLabelBaseWidth = shell::kMsgWideWindow - 30;

Qt::Alignment alignmentOf(int align)
{
    switch (align) {
    case 0: return Qt::AlignLeft | Qt::AlignVCenter;
    case 1: return Qt::AlignRight | Qt::AlignVCenter;
    default: return Qt::AlignHCenter | Qt::AlignVCenter;
    }
}
} // namespace

frmAOTMsg::frmAOTMsg(const platform::MessageSpec &request, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
    , m_type(request.type)
{
    setObjectName(QStringLiteral("frmAOTMsg"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(request.title);

    lblPopup = new QLabel(this);
    lblPopup->setObjectName(QStringLiteral("lblPopup"));
    lblPopup->setWordWrap(true);
    lblPopup->setTextFormat(Qt::PlainText);
    lblPopup->setTextInteractionFlags(Qt::TextSelectableByMouse);
    cmdOk = new QPushButton(tr("&Ok"), this);
    cmdYes = new QPushButton(tr("&Yes"), this);
    cmdNo = new QPushButton(tr("&No"), this);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdYes->setObjectName(QStringLiteral("cmdYes"));
    cmdNo->setObjectName(QStringLiteral("cmdNo"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    Shape1 = new QFrame(this);
    Shape1->setFrameShape(QFrame::Box);
    lbCountDown = new QLabel(Shape1);
    lbCountDown->setObjectName(QStringLiteral("lbCountDown"));
    auto *shapeLayout = new QHBoxLayout(Shape1);
    shapeLayout->setContentsMargins(6, 2, 6, 2);
    shapeLayout->addWidget(lbCountDown);
    Timer1 = new QTimer(this);
    Timer1->setInterval(kTickMs);

    connect(cmdOk, &QPushButton::clicked, this, [this] { answer(shell::MsgOk); });
    connect(cmdYes, &QPushButton::clicked, this, [this] { answer(shell::MsgYes); });
    connect(cmdNo, &QPushButton::clicked, this, [this] { answer(shell::MsgNo); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { answer(shell::MsgCancel); });
    connect(Timer1, &QTimer::timeout, this, &frmAOTMsg::Timer1_Timer);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(Shape1);
    buttons->addStretch();
    buttons->addWidget(cmdYes);
    buttons->addWidget(cmdNo);
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblPopup, 1);
    layout->addLayout(buttons);

    // Form_Load
    m_counter = static_cast<int>(request.timeout);
    lblPopup->setAlignment(alignmentOf(request.align));
    shell::SetMsgResult(shell::MsgNone);
    cmdOk->setVisible(request.type == 0);
    cmdYes->setVisible(request.type != 0);
    cmdNo->setVisible(request.type != 0);
    cmdCancel->setVisible(request.type == 2);
    (request.type == 0 ? cmdOk : cmdYes)->setDefault(true);
    applyLayout(request);
    QString text = request.text;
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);  // the trailing break only makes room in the measure
    lblPopup->setText(text);
    adjustSize();
    if (m_counter >= 1) {
        lbCountDown->setText(QString::number(m_counter));
        Shape1->setVisible(m_counter < 100);
        Timer1->start();
    } else {
        Shape1->hide();
    }
}

void frmAOTMsg::applyLayout(const platform::MessageSpec &request)
{
    QFont font = lblPopup->font();
    font.setPointSize(kLabelPointSize);
    lblPopup->setFont(font);
    int labelWidth = kLabelBaseWidth;
    auto lineCount = [&] {
        const QFontMetrics metrics(lblPopup->font());
        return shell::GetNumLines(request.text, labelWidth,
                                  [&](const QString &s) { return metrics.horizontalAdvance(s); }) + 1;
    };
    // The window's own width before the text is in: the label's base width or the
    // buttons that this type shows, whichever is wider.
    const int windowWidth = qMax(sizeHint().width(), kLabelBaseWidth);
    m_layout = shell::ChooseMessageLayout(windowWidth, lineCount());
    switch (m_layout) {
    case 1:
        labelWidth += shell::kMsgWidthStep;
        break;
    case 3:
        lblPopup->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        labelWidth += shell::kMsgWidthStep;
        font.setPointSize(kSmallPointSize);
        lblPopup->setFont(font);
        break;
    case 4:
        labelWidth -= shell::kMsgWidthStep;
        break;
    default:
        break;
    }
    // Every line must be visible: let the label take the height its text needs, up to
    // most of the screen (the 2000-character cut keeps that bounded).
    lblPopup->setMinimumWidth(labelWidth);
    const QRect available = screen() ? screen()->availableGeometry() : QRect(0, 0, 1024, 768);
    QLabel probe;
    probe.setFont(lblPopup->font());
    probe.setWordWrap(true);
    probe.setText(request.text.trimmed());
    if (probe.heightForWidth(labelWidth) > available.height() * 3 / 4)
        lblPopup->setMinimumWidth(qMin(available.width() * 3 / 4, labelWidth * 3));
}

void frmAOTMsg::Timer1_Timer()
{
    --m_counter;
    lbCountDown->setText(QString::number(m_counter));
    Shape1->setVisible(m_counter < 100);
    if (m_counter <= 0)
        answer(shell::MsgNo);
}

void frmAOTMsg::answer(int result)
{
    m_answered = true;
    Timer1->stop();
    shell::SetMsgResult(result);
    done(result == shell::MsgYes || result == shell::MsgOk ? Accepted : Rejected);
}

void frmAOTMsg::reject()
{
    // Escape or the window's close button: the unanswered default.
    if (!m_answered)
        answer(shell::DefaultAnswer(m_type));
}

void frmAOTMsg::closeEvent(QCloseEvent *event)
{
    if (!m_answered) {
        m_answered = true;
        Timer1->stop();
        shell::SetMsgResult(shell::DefaultAnswer(m_type));
    }
    event->accept();
}

MessageWindows::~MessageWindows()
{
    delete m_open.data();
    delete m_popup.data();
}

int MessageWindows::showModal(const platform::MessageSpec &request)
{
    auto *window = new frmAOTMsg(request);
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->exec();
    delete window;
    return 0;  // the window has set the answer
}

void MessageWindows::showModeless(const platform::MessageSpec &request)
{
    unload();
    m_open = new frmAOTMsg(request);
    m_open->show();
    m_open->raise();
    m_open->activateWindow();
}

void MessageWindows::unload()
{
    if (m_open)
        m_open->close();
}

void MessageWindows::showPopup(const QString &text)
{
    hidePopup();
    m_popup = new frmPopup(text);
    m_popup->show();
}

void MessageWindows::hidePopup()
{
    if (m_popup)
        m_popup->close();
}

} // namespace ui
