#include "ui/frm_hotkey_list.h"

#include "engine/interpreter.h"
#include "engine/run_state.h"
#include "shell/failure_report.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_run_macro_popup.h"
#include "ui/hotkey_menus.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTimer>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr int kFocusDelayMs = 100;  // Timer1: the focus goes to Quit once the window is up
constexpr int kVisibleRows = 16;
const QString kEditTip = QStringLiteral("Close this form and open the Hotkeys Editor");
const QString kNoEditorTip = QStringLiteral("The Hotkeys Editor is not available yet");

std::function<void()> g_editor;

QPushButton *Button(QWidget *parent, const char *name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

} // namespace

frmHotkeyList::frmHotkeyList(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmHotkeyList"));
    setWindowTitle(QStringLiteral("Hotkey List"));
    setModal(true);
    buildControls();

    hotkeys::HotkeyListLinks links;
    links.running = [] { return engine::runState().MacroRunning; };
    links.stop = engine::RequestAbort;
    links.run = engine::RunMacro;
    links.hotkeysEnabledShown = ShowHotkeysEnabled;
    links.editorAvailable = bool(g_editor);
    m_list = std::make_unique<hotkeys::HotkeyList>(static_cast<hotkeys::HotkeyListView &>(*this), std::move(links));
    connectControls();
    if (!g_editor) {
        cmdEdit->setEnabled(false);
        cmdEdit->setToolTip(kNoEditorTip);
    }
    shell::Guarded("(Form) frmHotkeyList::Sub Form_Load", [this] { m_list->Form_Load(); });
    Timer1->start();
}

frmHotkeyList::~frmHotkeyList() { m_list->Form_Unload(); }

bool frmHotkeyList::editRequested() const { return m_list->editRequested(); }

void frmHotkeyList::buildControls()
{
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    lblHeader = new QLabel(hotkeys::kListHeader, this);
    lblHeader->setObjectName(QStringLiteral("lblHeader"));
    lblHeader->setFont(fixed);
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setFont(fixed);
    List1->setSelectionMode(QAbstractItemView::SingleSelection);
    List1->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // Room for a whole row beside the check marks and the scroll bar.
    const QFontMetrics metrics(fixed);
    const int rowChars = hotkeys::kListNumberWidth + hotkeys::kListMinKeyWidth + hotkeys::kListDescriptionWidth + 2;
    const int extra = style()->pixelMetric(QStyle::PM_IndicatorWidth) + style()->pixelMetric(QStyle::PM_ScrollBarExtent)
                      + 8 * List1->frameWidth() + 16;
    List1->setMinimumWidth(metrics.horizontalAdvance(QString(rowChars, QLatin1Char('M'))) + extra);
    List1->setMinimumHeight(metrics.lineSpacing() * kVisibleRows);
    chkHotkeyEnable = new QCheckBox(QStringLiteral("Enable HotKeys"), this);
    chkHotkeyEnable->setObjectName(QStringLiteral("chkHotkeyEnable"));

    cmdAll = Button(this, "cmdAll", QStringLiteral("E&nable All"), QStringLiteral("Enable all the Hotkeys"));
    cmdClear = Button(this, "cmdClear", QStringLiteral("&Disable All"), QStringLiteral("Disable all the Hotkeys"));
    cmdReverse = Button(this, "cmdReverse", QStringLiteral("Re&verse All"),
                        QStringLiteral("Reverse Enabled/Disabled Hotkeys"));
    cmdSave = Button(this, "cmdSave", QStringLiteral("&Apply"), QStringLiteral("Apply changes to Enabled status"));
    cmdRun = Button(this, "cmdRun", hotkeys::kRunCaption, hotkeys::kRunTip);
    cmdEdit = Button(this, "cmdEdit", QStringLiteral("&Edit"), kEditTip);
    cmdQuit = Button(this, "cmdQuit", QStringLiteral("&Quit"), QStringLiteral("Close this form"));

    dumFocus = new QWidget(this);
    dumFocus->setObjectName(QStringLiteral("dumFocus"));
    dumFocus->setFocusPolicy(Qt::StrongFocus);
    dumFocus->setFixedSize(1, 1);
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(kFocusDelayMs);

    auto *left = new QVBoxLayout;
    left->setSpacing(2);
    left->addWidget(lblHeader);
    left->addWidget(List1, 1);
    left->addSpacing(4);
    left->addWidget(chkHotkeyEnable);
    auto *right = new QVBoxLayout;
    for (QPushButton *button : {cmdAll, cmdClear, cmdReverse, cmdSave})
        right->addWidget(button);
    right->addSpacing(12);
    for (QPushButton *button : {cmdRun, cmdEdit})
        right->addWidget(button);
    right->addStretch();
    right->addWidget(cmdQuit);
    right->addWidget(dumFocus);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(right);
}

void frmHotkeyList::connectControls()
{
    const auto guarded = [this](const char *source, void (hotkeys::HotkeyList::*handler)()) {
        return [this, source, handler] { shell::Guarded(source, [this, handler] { (m_list.get()->*handler)(); }); };
    };
    connect(chkHotkeyEnable, &QCheckBox::clicked, this,
            guarded("(Form) frmHotkeyList::Sub chkHotkeyEnable_MouseDown",
                    &hotkeys::HotkeyList::chkHotkeyEnable_MouseDown));
    connect(cmdAll, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdAll_Click", &hotkeys::HotkeyList::cmdAll_Click));
    connect(cmdClear, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdClear_Click", &hotkeys::HotkeyList::cmdClear_Click));
    connect(cmdReverse, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdReverse_Click", &hotkeys::HotkeyList::cmdReverse_Click));
    connect(cmdSave, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdSave_Click", &hotkeys::HotkeyList::cmdSave_Click));
    // A button of a dialog takes Enter as a click while it has the focus.
    connect(cmdRun, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdRun_Click", &hotkeys::HotkeyList::cmdRun_Click));
    connect(cmdEdit, &QPushButton::clicked, this,
            guarded("(Form) frmHotkeyList::Sub cmdEdit_Click", &hotkeys::HotkeyList::cmdEdit_Click));
    // Apply and Run (which may enable a macro) change stored flags the open editor shows.
    for (QPushButton *button : {cmdSave, cmdRun})
        connect(button, &QPushButton::clicked, this, [] {
            if (frmHotkeys *editor = hotkeyEditor())
                editor->editor().RefreshEnabled();
        });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
    connect(Timer1, &QTimer::timeout, this, [this] {
        cmdQuit->setFocus();
        Timer1->stop();
    });
}

void frmHotkeyList::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    alignHeader();
}

void frmHotkeyList::alignHeader()
{
    QStyleOptionViewItem option;
    option.initFrom(List1->viewport());
    option.font = List1->font();
    option.fontMetrics = QFontMetrics(List1->font());
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    option.rect = QRect(0, 0, List1->viewport()->width(), option.fontMetrics.height() + 4);
    option.text = hotkeys::kListHeader;
    const QRect text = List1->style()->subElementRect(QStyle::SE_ItemViewItemText, &option, List1);
    const int margin = List1->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, List1) + 1;
    const int textX = List1->viewport()->mapTo(this, QPoint(text.left() + margin, 0)).x();
    const int labelX = lblHeader->mapTo(this, QPoint(0, 0)).x() + lblHeader->contentsMargins().left();
    lblHeader->setIndent(qMax(0, textX - labelX));
}

void frmHotkeyList::clearRows() { List1->clear(); }

void frmHotkeyList::addRow(const QString &text, bool checked)
{
    auto *item = new QListWidgetItem(text, List1);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

int frmHotkeyList::rowCount() const { return List1->count(); }

bool frmHotkeyList::isChecked(int row) const { return List1->item(row)->checkState() == Qt::Checked; }

void frmHotkeyList::setChecked(int row, bool checked)
{
    List1->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

int frmHotkeyList::selectedRow() const
{
    const QList<QListWidgetItem *> selected = List1->selectedItems();
    return selected.isEmpty() ? -1 : List1->row(selected.first());
}

void frmHotkeyList::setCaption(const QString &caption) { setWindowTitle(caption); }

void frmHotkeyList::setHotkeysEnabledBox(bool on) { chkHotkeyEnable->setChecked(on); }

void frmHotkeyList::setRunEnabled(bool enabled) { cmdRun->setEnabled(enabled); }

QString frmHotkeyList::runCaption() const { return cmdRun->text(); }

void frmHotkeyList::setRunCaption(const QString &caption, const QString &toolTip)
{
    cmdRun->setText(caption);
    cmdRun->setToolTip(toolTip);
}

bool frmHotkeyList::askRunOptions(double &waitSeconds, bool &minimise)
{
    return frmRunMacroPopup::Ask(waitSeconds, minimise);
}

void frmHotkeyList::prepareRun(bool minimise)
{
    dumFocus->setFocus();
    if (minimise) {
        showMinimized();
        m_minimisedForRun = true;
    }
    QCoreApplication::processEvents();
}

void frmHotkeyList::finishRun()
{
    // Quit may have closed the window while the macro ran: it stays closed.
    if (m_minimisedForRun && isVisible()) {
        showNormal();
        raise();
        activateWindow();
    }
    m_minimisedForRun = false;
}

void frmHotkeyList::closeForEditor() { accept(); }

void ShowHotkeyList(QWidget *parent)
{
    bool edit = false;
    {
        frmHotkeyList list(parent);
        list.exec();
        edit = list.editRequested();
    }  // unloaded before the editor comes up
    if (edit && g_editor)
        g_editor();
}

void SetHotkeyEditorOpener(std::function<void()> open) { g_editor = std::move(open); }

} // namespace ui
