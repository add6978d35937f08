#include "ui/frm_find.h"

#include "search/find_replace.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"
#include "shell/on_top_message.h"
#include "ui/document_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

namespace ui {

namespace {

const char *const kSameTexts = "Find & Replace text must be different.";
const char *const kReplaceTitle = "Find & Replace";

class TextEditTarget : public search::FindTarget {
public:
    explicit TextEditTarget(QTextEdit *box) : m_box(box) {}
    QString text() const override { return m_box->toPlainText(); }
    int selStart() const override { return m_box->textCursor().selectionStart(); }
    int selLength() const override
    {
        const QTextCursor cursor = m_box->textCursor();
        return cursor.selectionEnd() - cursor.selectionStart();
    }
    QString selText() const override
    {
        QString text = m_box->textCursor().selectedText();
        text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
        text.replace(QChar::LineSeparator, QLatin1Char('\n'));
        return text;
    }
    void select(int start, int length) override { SelectInBox(m_box, start, length); }
    void setSelText(const QString &text) override
    {
        QTextCursor cursor = m_box->textCursor();
        cursor.insertText(text);
        m_box->setTextCursor(cursor);
    }

private:
    QTextEdit *m_box;
};

QPushButton *button(QWidget *parent, const char *name, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setAutoDefault(false);
    return b;
}

QComboBox *textCombo(QWidget *parent, const char *name)
{
    auto *combo = new QComboBox(parent);
    combo->setObjectName(QLatin1String(name));
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);  // rows are added by the handlers
    combo->setMinimumContentsLength(30);
    return combo;
}

} // namespace

std::unique_ptr<search::FindTarget> MakeFindTarget(QTextEdit *box) { return std::make_unique<TextEditTarget>(box); }

frmFind::frmFind(QTextEdit *txtSpeech, QWidget *parent)
    : QDialog(parent), m_box(txtSpeech), m_target(MakeFindTarget(txtSpeech))
{
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Sonamark - Find Text"));
    setModal(false);

    cmbFind = textCombo(this, "cmbFind");
    cmbReplace = textCombo(this, "cmbReplace");
    cmbDirection = new QComboBox(this);
    cmbDirection->setObjectName(QStringLiteral("cmbDirection"));
    cmbDirection->addItems({QStringLiteral("All"), QStringLiteral("Down"), QStringLiteral("Up")});
    cmbDirection->setCurrentIndex(0);
    chkMatchCase = new QCheckBox(QStringLiteral("&Match Case"), this);
    chkMatchCase->setObjectName(QStringLiteral("chkMatchCase"));
    chkWholeWord = new QCheckBox(QStringLiteral("Wh&ole Word"), this);
    chkWholeWord->setObjectName(QStringLiteral("chkWholeWord"));
    cmdFindNext = button(this, "cmdFindNext", QStringLiteral("Find &Next"));
    cmdReplace = button(this, "cmdReplace", QStringLiteral("&Replace"));
    cmdReplaceAll = button(this, "cmdReplaceAll", QStringLiteral("Replace &All"));
    cmdCancel = button(this, "cmdCancel", QStringLiteral("Cancel"));

    auto *grid = new QGridLayout;
    const auto label = [this, grid](const QString &caption, QWidget *buddy, int row) {
        auto *l = new QLabel(caption, this);
        l->setBuddy(buddy);
        grid->addWidget(l, row, 0);
        grid->addWidget(buddy, row, 1);
    };
    label(QStringLiteral("&Find What"), cmbFind, 0);
    label(QStringLiteral("Replace &With"), cmbReplace, 1);
    label(QStringLiteral("&Direction"), cmbDirection, 2);
    grid->addWidget(chkMatchCase, 3, 1);
    grid->addWidget(chkWholeWord, 4, 1);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {cmdFindNext, cmdReplace, cmdReplaceAll, cmdCancel})
        buttons->addWidget(b);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(grid, 1);
    layout->addLayout(buttons);

    connect(cmdFindNext, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmFind::Sub cmdFindNext_Click", [this] { cmdFindNext_Click(); }); });
    connect(cmdReplace, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmFind::Sub cmdReplace_Click", [this] { cmdReplace_Click(); }); });
    connect(cmdReplaceAll, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmFind::Sub cmdReplaceAll_Click", [this] { cmdReplaceAll_Click(); }); });
    connect(cmdCancel, &QPushButton::clicked, this,
            [this] { shell::Guarded("(Form) frmFind::Sub cmdCancel_Click", [this] { cmdCancel_Click(); }); });
    cmbFind->lineEdit()->installEventFilter(this);
    cmbReplace->lineEdit()->installEventFilter(this);
    search::findState().FindOpen = true;
}

frmFind::~frmFind() { search::findState().FindOpen = false; }

bool frmFind::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (watched == cmbFind->lineEdit())
                shell::Guarded("(Form) frmFind::Sub cmbFind_KeyPress", [this] { cmdFindNext_Click(); });
            else
                shell::Guarded("(Form) frmFind::Sub cmbReplace_KeyPress", [this] { cmdReplace_Click(); });
            return true;  // Enter is swallowed
        }
    }
    return QDialog::eventFilter(watched, event);
}

int frmFind::options() const { return search::FindOptions(chkWholeWord->isChecked(), chkMatchCase->isChecked()); }

QString frmFind::direction() const { return cmbDirection->currentText(); }

void frmFind::rememberRow(QComboBox *combo, const QString &text)
{
    if (combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        combo->addItem(text);
}

int frmFind::FindText()
{
    const QString what = cmbFind->currentText();
    if (what.isEmpty())
        return -1;
    search::findState().FindText = what;
    rememberRow(cmbFind, what);
    return search::FindTextFrom(*m_target, what, search::DirectionOf(direction()), options());
}

void frmFind::cmdFindNext_Click()
{
    if (cmbFind->currentText().trimmed().isEmpty())
        return;
    const int hit = FindText();
    if (hit > -1)
        m_target->select(hit, int(search::findState().FindText.size()));
    else
        shell::MsgBoxOT(QLatin1String(search::kStringNotFound), 0, QStringLiteral("Find String"));
}

void frmFind::cmdReplace_Click()
{
    if (cmbFind->currentText().trimmed().isEmpty())
        return;
    if (cmbFind->currentText() == cmbReplace->currentText()) {
        shell::MsgBoxOT(QLatin1String(kSameTexts), 0, QLatin1String(kReplaceTitle));
        return;
    }
    const QString replacement = cmbReplace->currentText();
    rememberRow(cmbReplace, replacement);
    const bool replaced = search::ReplaceSelected(*m_target, search::findState().FindText, replacement);
    const int hit = FindText();
    if (hit == -1 && !replaced)
        shell::MsgBoxOT(QLatin1String(search::kStringNotFound), 0, QStringLiteral("Find String"));
}

void frmFind::cmdReplaceAll_Click()
{
    if (cmbFind->currentText().trimmed().isEmpty())
        return;
    if (cmbFind->currentText() == cmbReplace->currentText()) {
        shell::MsgBoxOT(QLatin1String(kSameTexts), 0, QLatin1String(kReplaceTitle));
        return;
    }
    shell::MsgBoxOT(QStringLiteral("Replace all text?"), 1, QStringLiteral("Replace All"));
    if (shell::app().MsgResult != shell::MsgYes)
        return;
    const QString replacement = cmbReplace->currentText();
    const QString what = cmbFind->currentText();
    rememberRow(cmbReplace, replacement);
    rememberRow(cmbFind, what);
    search::findState().FindText = what;
    const int count = search::ReplaceAll(*m_target, what, replacement, search::DirectionOf(direction()), options());
    shell::MsgBoxOT(search::ReplaceAllReport(count), 0, QLatin1String(kReplaceTitle));
}

void frmFind::cmdCancel_Click() { hide(); }

void FindNextText(QTextEdit *txtSpeech, const frmFind *dialog)
{
    const QString what = search::findState().FindText;
    if (what.trimmed().isEmpty())
        return;
    const std::unique_ptr<search::FindTarget> target = MakeFindTarget(txtSpeech);
    const search::FindDirection direction =
        dialog ? search::DirectionOf(dialog->direction()) : search::FindDirection::All;
    const int hit = search::FindTextFrom(*target, what, direction, dialog ? dialog->options() : 0);
    if (hit > -1)
        target->select(hit, int(what.size()));
    else
        shell::MsgBoxOT(QLatin1String(search::kStringNotFound), 0, QStringLiteral("No String"));
}

} // namespace ui
