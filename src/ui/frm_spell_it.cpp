#include "ui/frm_spell_it.h"

#include "shell/failure_report.h"
#include "spell/spell_check.h"

#include <QApplication>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace ui {

namespace {

constexpr int kTimer1IntervalMs = 50;  // lets the window appear before the first walk
const char *const kDictionaryCaption = "Dictionary: ";

QPushButton *button(QWidget *parent, const char *name, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setAutoDefault(false);
    return b;
}

// The walk's text as rtfSpell holds it: every line end one character.
QString Shown(const QString &text)
{
    QString shown = text;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return shown;
}

template <typename F>
void guarded(const char *source, F handler)
{
    shell::Guarded(source, [&] { handler(); });
}

} // namespace

frmSpellIt::frmSpellIt(QWidget *parent) : QDialog(parent), m_logic(*this)
{
    setObjectName(QStringLiteral("frmSpellIt"));
    setWindowTitle(spell::kSpellCheckTitle);
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::ApplicationModal);

    rtfSpell = new QPlainTextEdit(this);
    rtfSpell->setObjectName(QStringLiteral("rtfSpell"));
    rtfSpell->setReadOnly(true);
    rtfSpell->setUndoRedoEnabled(false);
    rtfSpell->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtSpell = new QLineEdit(this);
    txtSpell->setObjectName(QStringLiteral("txtSpell"));
    lstCorrect = new QListWidget(this);
    lstCorrect->setObjectName(QStringLiteral("lstCorrect"));
    lblFind = new QLabel(this);
    lblFind->setObjectName(QStringLiteral("lblFind"));
    lblFind->setTextFormat(Qt::PlainText);
    lblDictionary = new QLabel(this);
    lblDictionary->setObjectName(QStringLiteral("lblDictionary"));
    cmdChange = button(this, "cmdChange", QStringLiteral("Change"));
    cmdIgnore = button(this, "cmdIgnore", QStringLiteral("Ignore"));
    cmdCancel = button(this, "cmdCancel", QStringLiteral("&Cancel"));
    cmdStart = button(this, "cmdStart", QStringLiteral("Start"));
    Timer1 = new QTimer(this);
    Timer1->setSingleShot(true);
    Timer1->setInterval(kTimer1IntervalMs);

    auto *grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Not In Dictionary"), this), 0, 0);
    grid->addWidget(lblFind, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Change To"), this), 1, 0);
    grid->addWidget(txtSpell, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Suggestions"), this), 2, 0, Qt::AlignTop);
    grid->addWidget(lstCorrect, 2, 1);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {cmdChange, cmdIgnore, cmdStart, cmdCancel})
        buttons->addWidget(b);
    buttons->addStretch();
    auto *choices = new QHBoxLayout;
    choices->addLayout(grid, 1);
    choices->addLayout(buttons);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(rtfSpell, 1);
    layout->addLayout(choices);
    layout->addWidget(lblDictionary);
    resize(520, 420);
    applyEnabled();

    connect(Timer1, &QTimer::timeout, this,
            [this] { guarded("(Form) frmSpellit::Sub Timer1_Timer", [this] { m_logic.Timer1_Timer(); }); });
    connect(cmdChange, &QPushButton::clicked, this,
            [this] { guarded("(Form) frmSpellit::Sub cmdChange_Click", [this] { m_logic.cmdChange_Click(); }); });
    connect(cmdIgnore, &QPushButton::clicked, this,
            [this] { guarded("(Form) frmSpellit::Sub cmdIgnore_Click", [this] { m_logic.cmdIgnore_Click(); }); });
    connect(cmdStart, &QPushButton::clicked, this,
            [this] { guarded("(Form) frmSpellit::Sub cmdStart_Click", [this] { m_logic.cmdStart_Click(); }); });
    connect(cmdCancel, &QPushButton::clicked, this,
            [this] { guarded("(Form) frmSpellit::Sub cmdCancel_Click", [this] { m_logic.cmdCancel_Click(); }); });
    auto rowClicked = [this](int row) {
        guarded("(Form) frmSpellit::Sub lstCorrect_Click", [&] { m_logic.lstCorrect_Click(row); });
    };
    connect(lstCorrect, &QListWidget::currentRowChanged, this, rowClicked);
    connect(lstCorrect, &QListWidget::itemClicked, this,
            [this, rowClicked](QListWidgetItem *item) { rowClicked(lstCorrect->row(item)); });
    connect(lstCorrect, &QListWidget::itemDoubleClicked, this, [this] {
        guarded("(Form) frmSpellit::Sub lstCorrect_DblClick", [this] { m_logic.cmdChange_Click(); });
    });
    connect(txtSpell, &QLineEdit::textEdited, this, [this](const QString &text) {
        guarded("(Form) frmSpellit::Sub txtSpell_Change", [&] { m_logic.txtSpell_Change(text); });
    });
}

frmSpellIt::~frmSpellIt()
{
    setBusy(false);
    if (!m_unloaded) {
        m_unloaded = true;
        m_logic.Form_Unload();
    }
}

void frmSpellIt::showModal()
{
    guarded("(Form) frmSpellit::Sub Form_Load", [this] { m_logic.Form_Load(); });
    if (m_unloaded)
        return;
    // CenterForm.
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    exec();
}

void frmSpellIt::showText(const QString &text)
{
    indexLineEnds(text);
    rtfSpell->setPlainText(Shown(text));
}

void frmSpellIt::indexLineEnds(const QString &text)
{
    m_crlf.clear();
    for (qsizetype i = text.indexOf(QLatin1String("\r\n")); i >= 0; i = text.indexOf(QLatin1String("\r\n"), i + 2))
        m_crlf.push_back(i);
}

qsizetype frmSpellIt::shownPosition(qsizetype position) const
{
    return position - (std::lower_bound(m_crlf.begin(), m_crlf.end(), position) - m_crlf.begin());
}

void frmSpellIt::replaceText(qsizetype start, qsizetype length, const QString &with)
{
    QTextCursor cursor(rtfSpell->document());
    cursor.setPosition(int(shownPosition(start)));
    cursor.setPosition(int(shownPosition(start + length)), QTextCursor::KeepAnchor);
    cursor.insertText(Shown(with));
    indexLineEnds(m_logic.text());
}

void frmSpellIt::showSelection(qsizetype selStart, qsizetype selLength)
{
    QTextCursor cursor(rtfSpell->document());
    const int end = int(shownPosition(selStart + selLength));
    cursor.setPosition(int(shownPosition(selStart)));
    cursor.setPosition(qMin(end, rtfSpell->document()->characterCount() - 1), QTextCursor::KeepAnchor);
    rtfSpell->setTextCursor(cursor);
    rtfSpell->ensureCursorVisible();
}

void frmSpellIt::setFound(const QString &word) { lblFind->setText(word); }

void frmSpellIt::clearSuggestions()
{
    const QSignalBlocker block(lstCorrect);
    lstCorrect->clear();
}

void frmSpellIt::addSuggestion(const QString &row)
{
    // One line a row: a line end inside a suggestion shows as a return sign.
    QString shown = Shown(row);
    shown.replace(QLatin1Char('\n'), QStringLiteral(" \u21b5 "));
    const QSignalBlocker block(lstCorrect);
    lstCorrect->addItem(shown);
}

void frmSpellIt::setSuggestionsEnabled(bool enabled) { want(List, enabled); }

void frmSpellIt::selectSuggestion(int row)
{
    const QSignalBlocker block(lstCorrect);
    lstCorrect->setCurrentRow(row);
}

void frmSpellIt::setChangeTo(const QString &text) { txtSpell->setText(text); }

void frmSpellIt::selectChangeTo()
{
    txtSpell->selectAll();
    txtSpell->setFocus();
}

void frmSpellIt::setChangeEnabled(bool enabled) { want(Change, enabled); }
void frmSpellIt::setIgnoreEnabled(bool enabled) { want(Ignore, enabled); }
void frmSpellIt::setStartEnabled(bool enabled) { want(Start, enabled); }

void frmSpellIt::setDictionary(const QString &name)
{
    lblDictionary->setText(QLatin1String(kDictionaryCaption) + name);
}

void frmSpellIt::want(Control control, bool enabled)
{
    m_wanted[control] = enabled;
    applyEnabled();
}

void frmSpellIt::applyEnabled()
{
    cmdChange->setEnabled(m_wanted[Change] && !m_busy);
    cmdIgnore->setEnabled(m_wanted[Ignore] && !m_busy);
    cmdStart->setEnabled(m_wanted[Start] && !m_busy);
    lstCorrect->setEnabled(m_wanted[List] && !m_busy);
}

void frmSpellIt::setBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QApplication::restoreOverrideCursor();
    applyEnabled();
}

void frmSpellIt::startTimer1() { Timer1->start(); }

void frmSpellIt::processEvents() { QApplication::processEvents(); }

void frmSpellIt::unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    Timer1->stop();
    m_logic.Form_Unload();
    QDialog::done(QDialog::Rejected);
}

void frmSpellIt::reject()
{
    guarded("(Form) frmSpellit::Sub cmdCancel_Click", [this] { m_logic.cmdCancel_Click(); });
}

void InstallSpellWindow()
{
    spell::SetSpellWindowOpener([] {
        frmSpellIt window;
        window.showModal();
    });
}

} // namespace ui
