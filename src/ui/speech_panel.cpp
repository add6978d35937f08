#include "ui/speech_panel.h"

#include "reader/clipboard_monitor.h"
#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "reader/tray_menu_forms.h"
#include "shell/failure_report.h"
#include "ui/clip_controls.h"
#include "ui/frm_sonamark.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QSignalBlocker>
#include <QTimer>

namespace ui {

namespace {

QSlider *slider(QWidget *parent, const char *name, int low, int high)
{
    auto *s = new QSlider(Qt::Horizontal, parent);
    s->setObjectName(QLatin1String(name));
    s->setRange(low, high);
    return s;
}

// Runs a speech handler under the UI guard with its routine's identity.
template <typename F>
void guarded(const char *source, F handler)
{
    shell::Guarded(source, [&] { handler(); });
}

} // namespace

SpeechPanel::SpeechPanel(frmSonamark *window, QTextEdit *txtSpeech, QLabel *panel2)
    : QWidget(window), m_window(window), m_text(txtSpeech), m_panel2(panel2)
{
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setMaximumHeight(90);
    VolumeSldr = slider(this, "VolumeSldr", 1, 100);
    RateSldr = slider(this, "RateSldr", -10, 10);
    PitchSldr = slider(this, "PitchSldr", -10, 10);
    cmdTalk = new QPushButton(QStringLiteral("Talk"), this);
    cmdPause = new QPushButton(QStringLiteral("Pause"), this);
    cmdStop = new QPushButton(QStringLiteral("Stop"), this);
    cmdTalk->setObjectName(QStringLiteral("cmdTalk"));
    cmdPause->setObjectName(QStringLiteral("cmdPause"));
    cmdStop->setObjectName(QStringLiteral("cmdStop"));
    Timer2 = new QTimer(this);
    Timer2->setInterval(reader::kTimer2IntervalMs);

    auto *grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Volume"), this), 0, 0);
    grid->addWidget(VolumeSldr, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Rate"), this), 1, 0);
    grid->addWidget(RateSldr, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Pitch"), this), 2, 0);
    grid->addWidget(PitchSldr, 2, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdTalk);
    buttons->addWidget(cmdPause);
    buttons->addWidget(cmdStop);
    grid->addLayout(buttons, 3, 0, 1, 2);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(List1, 1);
    layout->addLayout(grid, 2);

    connect(cmdTalk, &QPushButton::clicked, this,
            [] { guarded("(Form) frmSonamark::Sub cmdTalk_Click", reader::cmdTalk_Click); });
    connect(cmdPause, &QPushButton::clicked, this,
            [] { guarded("(Form) frmSonamark::Sub cmdPause_Click", reader::cmdPause_Click); });
    connect(cmdStop, &QPushButton::clicked, this,
            [] { guarded("(Form) frmSonamark::Sub cmdStop_Click", reader::cmdStop_Click); });
    // Every way of changing the list and the sliders acts at once: mouse, keyboard,
    // wheel and track clicks. The program's own settings of them are not changes.
    connect(List1, &QListWidget::currentRowChanged, this, [](int row) {
        if (row >= 0)
            guarded("(Form) frmSonamark::Sub List1_Click", reader::List1_Click);
    });
    connect(VolumeSldr, &QSlider::valueChanged, this, [](int value) {
        guarded("(Form) frmSonamark::Sub VolumeSldr_Scroll", [value] { reader::VolumeSldr_Scroll(value); });
    });
    connect(RateSldr, &QSlider::valueChanged, this, [](int value) {
        guarded("(Form) frmSonamark::Sub RateSldr_Scroll", [value] { reader::RateSldr_Scroll(value); });
    });
    connect(PitchSldr, &QSlider::valueChanged, this, [](int value) {
        guarded("(Form) frmSonamark::Sub PitchSldr_Scroll", [value] { reader::PitchSldr_Scroll(value); });
    });
    connect(Timer2, &QTimer::timeout, this, [] {
        // Polling: a failing tick is ignored, the next one is the retry.
        try {
            reader::Timer2_Timer();
        } catch (...) {
        }
    });
    m_defaultFont = m_text->font();
}

void SpeechPanel::connectTrayEntries(QAction *talk, QAction *pause, QAction *stop)
{
    mnuTalk = talk;
    mnuPause = pause;
    mnuStop = stop;
    for (QAction *a : {talk, pause, stop})
        a->setEnabled(true);
    connect(talk, &QAction::triggered, this,
            [] { guarded("(Form) frmSonamark::Sub mnuTalk_Click", reader::mnuTalk_Click); });
    connect(pause, &QAction::triggered, this,
            [] { guarded("(Form) frmSonamark::Sub mnuPause_Click", reader::mnuPause_Click); });
    connect(stop, &QAction::triggered, this,
            [] { guarded("(Form) frmSonamark::Sub mnuStop_Click", reader::mnuStop_Click); });
}

void SpeechPanel::clearVoiceList() { List1->clear(); }
void SpeechPanel::addVoiceRow(const QString &name) { List1->addItem(name); }
int SpeechPanel::voiceRowCount() const { return List1->count(); }
QString SpeechPanel::voiceRow(int row) const
{
    const QListWidgetItem *item = List1->item(row);
    return item ? item->text() : QString();
}
int SpeechPanel::listIndex() const { return List1->currentRow(); }
void SpeechPanel::setListIndex(int row)
{
    const QSignalBlocker quiet(List1);
    List1->setCurrentRow(row);
}
void SpeechPanel::setVoiceTip(const QString &tip) { List1->setToolTip(tip); }
void SpeechPanel::setVolumeSlider(int value)
{
    const QSignalBlocker quiet(VolumeSldr);
    VolumeSldr->setValue(value);
}
void SpeechPanel::setVolumeTip(const QString &tip) { VolumeSldr->setToolTip(tip); }
void SpeechPanel::setRateSlider(int value)
{
    const QSignalBlocker quiet(RateSldr);
    RateSldr->setValue(value);
}
void SpeechPanel::setRateTip(const QString &tip) { RateSldr->setToolTip(tip); }
void SpeechPanel::setPitchSlider(int value)
{
    const QSignalBlocker quiet(PitchSldr);
    PitchSldr->setValue(value);
}
void SpeechPanel::setPitchTip(const QString &tip) { PitchSldr->setToolTip(tip); }

QString SpeechPanel::text() const { return m_text->toPlainText(); }
QString SpeechPanel::selectedText() const
{
    return m_text->textCursor().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}
int SpeechPanel::selStart() const { return m_text->textCursor().selectionStart(); }
void SpeechPanel::setText(const QString &text) { m_text->setPlainText(text); }

void SpeechPanel::select(int start, int length)
{
    QTextCursor cursor = m_text->textCursor();
    const int end = qBound(0, start + length, m_text->document()->characterCount() - 1);
    cursor.setPosition(qBound(0, start, end));
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    m_text->setTextCursor(cursor);
    m_text->ensureCursorVisible();
}

int SpeechPanel::currentLine() const { return m_text->textCursor().blockNumber() + 1; }
int SpeechPanel::currentColumn() const { return m_text->textCursor().positionInBlock() + 1; }

void SpeechPanel::applyDefaultFormat()
{
    QTextCursor cursor(m_text->document());
    cursor.select(QTextCursor::Document);
    QTextCharFormat format;
    format.setFont(m_defaultFont);
    cursor.setCharFormat(format);
    cursor.setBlockFormat(QTextBlockFormat());
    cursor.setPosition(0);
    m_text->setTextCursor(cursor);
}

void SpeechPanel::setCaption(const QString &caption) { m_window->setWindowTitle(caption); }
void SpeechPanel::setStatusText(const QString &text) { m_window->setStatusText(text); }
void SpeechPanel::setPanel2(const QString &text) { m_panel2->setText(text); }

void SpeechPanel::setTimer2Enabled(bool enabled)
{
    if (enabled)
        Timer2->start();
    else
        Timer2->stop();
}

bool SpeechPanel::exceptionsOn() const { return reader::exceptionsState().ExceptionsOn; }
void SpeechPanel::applyExceptions() { reader::mnuExceptionsApply_Click(); }
void SpeechPanel::saveFile() { reader::mnuFileSave_Click(); }

QString SpeechPanel::cmdPauseCaption() const { return cmdPause->text(); }
QString SpeechPanel::mnuPauseCaption() const { return mnuPause ? mnuPause->text() : cmdPause->text(); }
void SpeechPanel::setPauseCaptions(const QString &caption)
{
    cmdPause->setText(caption);
    if (mnuPause)
        mnuPause->setText(caption);
}
QString SpeechPanel::mnuTalkCaption() const { return mnuTalk ? mnuTalk->text() : QStringLiteral("Talk"); }
bool SpeechPanel::mnuPauseVisible() const { return mnuPause && mnuPause->isVisible(); }
bool SpeechPanel::mnuStopVisible() const { return mnuStop && mnuStop->isVisible(); }
QString SpeechPanel::clipToggleCaption() const { return m_window->clipControls->clipToggleCaption(); }
// In the shortened tray menu the first row offers the text set aside by the tray's switch.
QString SpeechPanel::firstClipRow() const { return reader::monitor().TrayClipText; }
void SpeechPanel::restorePopUp() { reader::RestorePopUp(); }
void SpeechPanel::restorePopUp2() { reader::RestorePopUp2(); }

} // namespace ui
