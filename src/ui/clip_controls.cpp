#include "ui/clip_controls.h"

#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "reader/tray_menu_forms.h"
#include "shell/failure_report.h"
#include "shell/settings.h"
#include "spell/spell_check.h"
#include "ui/frm_sonamark.h"
#include "ui/speech_panel.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLoggingCategory>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>

Q_LOGGING_CATEGORY(lcClipMenus, "sonamark.clips.menu", QtWarningMsg)

namespace ui {

namespace {

template <typename F>
void guarded(const char *source, F handler)
{
    shell::Guarded(source, [&] { handler(); });
}

QAction *hiddenRow(QMenu *menu, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setVisible(false);
    return action;
}

QStringList visibleRows(const QMenu *menu)
{
    QStringList rows;
    if (!menu)
        return rows;
    for (const QAction *a : menu->actions())
        if (a->isVisible() && !a->isSeparator() && !a->menu())
            rows << a->text();
    return rows;
}

} // namespace

ClipControls::ClipControls(frmSonamark *window, QWidget *buttonParent) : QObject(window), m_window(window)
{
    cmdClipToggle = new QPushButton(reader::kClipOff, buttonParent);
    cmdClipToggle->setObjectName(QStringLiteral("cmdClipToggle"));
    cmdClipToggle->setToolTip(QStringLiteral("Not monitoring the Clipboard"));
    connect(cmdClipToggle, &QPushButton::clicked, this,
            [] { guarded("(Form) frmSonamark::Sub cmdClipToggle_Click", reader::cmdClipToggle_Click); });

    Timer1 = new QTimer(this);
    Timer1->setInterval(reader::kTimer1IntervalMs);
    connect(Timer1, &QTimer::timeout, this,
            [] { guarded("(Form) frmSonamark::Sub Timer1_Timer", reader::Timer1_Timer); });
    Timer5 = new QTimer(this);
    Timer5->setInterval(reader::kTimer5IntervalMs);
    // Timer5 ignores its failures (inside Timer5_Timer).
    connect(Timer5, &QTimer::timeout, this, [] { reader::Timer5_Timer(); });

    m_logTimer = new QTimer(this);
    m_logTimer->setSingleShot(true);
    m_logTimer->setInterval(0);
    connect(m_logTimer, &QTimer::timeout, this, [this] {
        qCInfo(lcClipMenus).noquote() << "tray:" << visibleRows(m_tray).join(QStringLiteral(" | "));
        qCInfo(lcClipMenus).noquote() << "clipboard:" << visibleRows(m_clipboardMenu).join(QStringLiteral(" | "));
    });
}

void ClipControls::addClipboardMenu(QMenu *menu)
{
    m_clipboardMenu = menu;
    mnuClipboardStored = hiddenRow(menu, reader::ClipCountCaption(0));
    for (int i = 0; i < reader::kMaxClips; ++i) {
        mnuClipboardMRU[size_t(i)] = hiddenRow(menu, QString());
        connect(mnuClipboardMRU[size_t(i)], &QAction::triggered, this, [i] {
            guarded("(Form) frmSonamark::Sub mnuClipboardMRU_Click", [i] { reader::mnuClipboardMRU_Click(i); });
        });
    }
    mnuClipboardPicStored = hiddenRow(menu, reader::PicCountCaption(0));
    for (int i = 0; i < reader::kMaxClips; ++i) {
        mnuClipboardPicMRU[size_t(i)] = hiddenRow(menu, QString());
        connect(mnuClipboardPicMRU[size_t(i)], &QAction::triggered, this, [i] {
            guarded("(Form) frmSonamark::Sub mnuClipboardPicMRU_Click", [i] { reader::mnuClipboardPicMRU_Click(i); });
        });
    }
    mnuClipboardbar = menu->addSeparator();
    mnuClipboardbar->setVisible(false);
    mnuClipboardEnablePics = menu->addAction(QStringLiteral("Enable Picture Clips"));
    mnuClipboardEnablePics->setCheckable(true);
    connect(mnuClipboardEnablePics, &QAction::triggered, this, [this](bool checked) {
        // The handler flips the check itself.
        mnuClipboardEnablePics->setChecked(!checked);
        guarded("(Form) frmSonamark::Sub mnuClipboardEnablePics_Click",
                [] { reader::mnuClipboardEnablePics_Click(reader::monitor().Monitoring); });
    });
    connect(menu->addAction(QStringLiteral("Clear All Clips")), &QAction::triggered, this, [] {
        guarded("(Form) frmSonamark::Sub mnuClipboardClearMultiClips_Click",
                reader::mnuClipboardClearMultiClips_Click);
    });
}

void ClipControls::addTrayRows(QMenu *tray)
{
    m_tray = tray;
    mnuSeparator2 = tray->addSeparator();
    mnuSeparator2->setVisible(false);
    mnuClipStored = hiddenRow(tray, reader::ClipCountCaption(0));
    for (int i = 0; i < reader::kMaxClips; ++i) {
        mnuClipMRU[size_t(i)] = hiddenRow(tray, QString());
        connect(mnuClipMRU[size_t(i)], &QAction::triggered, this, [i] {
            guarded("(Form) frmSonamark::Sub mnuClipMRU_Click",
                    [i] { reader::mnuClipMRU_Click(i, reader::monitor().Monitoring); });
        });
    }
    mnuClipPicStored = hiddenRow(tray, reader::PicCountCaption(0));
    for (int i = 0; i < reader::kMaxClips; ++i) {
        mnuClipPicMRU[size_t(i)] = hiddenRow(tray, QString());
        connect(mnuClipPicMRU[size_t(i)], &QAction::triggered, this, [i] {
            guarded("(Form) frmSonamark::Sub mnuClipPicMRU_Click",
                    [i] { reader::mnuClipPicMRU_Click(i, reader::monitor().Monitoring); });
        });
    }
    Separator3 = tray->addSeparator();
    // A shortened form that closes without a choice gives way to the normal form. The
    // chosen entry's handler runs before this.
    connect(tray, &QMenu::aboutToHide, this,
            [] { QTimer::singleShot(0, [] { reader::RestoreTrayMenu(); }); });
}

void ClipControls::stopTimers()
{
    Timer1->stop();
    Timer5->stop();
}

void ClipControls::setClipRow(int row, const QString &caption, bool visible)
{
    for (QAction *a : {mnuClipMRU.at(size_t(row)), mnuClipboardMRU.at(size_t(row))}) {
        if (!a)
            continue;
        a->setText(caption);
        a->setVisible(visible);
    }
    logMenusSoon();
}

void ClipControls::setClipCountRow(const QString &caption, bool visible)
{
    if (mnuClipStored) {
        mnuClipStored->setText(caption);
        mnuClipStored->setVisible(visible);
    }
    if (mnuClipboardStored) {
        mnuClipboardStored->setText(caption);
        mnuClipboardStored->setVisible(visible);
    }
    logMenusSoon();
}

void ClipControls::setPicRow(int row, const QString &caption, bool visible)
{
    for (QAction *a : {mnuClipPicMRU.at(size_t(row)), mnuClipboardPicMRU.at(size_t(row))}) {
        if (!a)
            continue;
        a->setText(caption);
        a->setVisible(visible);
    }
    logMenusSoon();
}

void ClipControls::setPicCountRow(const QString &caption, bool visible)
{
    for (QAction *a : {mnuClipPicStored, mnuClipboardPicStored}) {
        if (!a)
            continue;
        a->setText(caption);
        a->setVisible(visible);
    }
    logMenusSoon();
}

bool ClipControls::picsEnabled() const { return mnuClipboardEnablePics && mnuClipboardEnablePics->isChecked(); }

void ClipControls::setPicsEnabled(bool checked)
{
    if (mnuClipboardEnablePics)
        mnuClipboardEnablePics->setChecked(checked);
}

QAction *ClipControls::trayAction(reader::TrayEntry entry) const
{
    using reader::TrayEntry;
    switch (entry) {
    case TrayEntry::Talk: return m_window->mnuTalk;
    case TrayEntry::Pause: return m_window->mnuPause;
    case TrayEntry::Stop: return m_window->mnuStop;
    case TrayEntry::SeparatorSC: return m_window->mnuSeparatorSC;
    case TrayEntry::PUSpellCheck: return m_window->mnuPUSpellCheck;
    case TrayEntry::Separator1: return m_window->mnuSeparator1;
    case TrayEntry::Options: return m_window->mnuOptions;
    case TrayEntry::Separator2: return mnuSeparator2;
    case TrayEntry::ClipboardBar: return mnuClipboardbar;
    case TrayEntry::ClipStored: return mnuClipStored;
    case TrayEntry::Separator3: return Separator3;
    case TrayEntry::Cancel: return m_window->mnuCancel;
    case TrayEntry::SeparatorEnd: return m_window->mnuSeparator3;
    case TrayEntry::Close: return m_window->mnuClose;
    }
    return nullptr;
}

void ClipControls::setTrayEntryVisible(reader::TrayEntry entry, bool visible)
{
    if (QAction *a = trayAction(entry))
        a->setVisible(visible);
}

void ClipControls::setTrayEntryEnabled(reader::TrayEntry entry, bool enabled)
{
    if (QAction *a = trayAction(entry))
        a->setEnabled(enabled);
}

void ClipControls::setTrayCaption(reader::TrayEntry entry, const QString &caption)
{
    if (QAction *a = trayAction(entry))
        a->setText(caption);
}

void ClipControls::popTrayMenu() { m_window->popTrayMenu(); }

QString ClipControls::clipToggleCaption() const { return cmdClipToggle->text(); }

void ClipControls::setClipToggle(const QString &caption, const QString &tip)
{
    cmdClipToggle->setText(caption);
    cmdClipToggle->setToolTip(tip);
}

void ClipControls::setTimer1Enabled(bool enabled) { enabled ? Timer1->start() : Timer1->stop(); }
void ClipControls::setTimer3Enabled(bool enabled) { enabled ? m_window->Timer3->start() : m_window->Timer3->stop(); }
void ClipControls::setTimer5Enabled(bool enabled) { enabled ? Timer5->start() : Timer5->stop(); }

void ClipControls::setPasteClearEnabled(bool enabled)
{
    // The document buttons, where this build has them.
    for (const char *name : {"cmdPaste", "cmdClear"})
        if (auto *button = m_window->findChild<QPushButton *>(QLatin1String(name)))
            button->setEnabled(enabled);
}

bool ClipControls::spellClipMode() const { return m_window->mnuPUSpellCheck && m_window->mnuPUSpellCheck->isChecked(); }

void ClipControls::setSpellClipMode(bool checked)
{
    if (m_window->mnuPUSpellCheck)
        m_window->mnuPUSpellCheck->setChecked(checked);
}

void ClipControls::spellCheckClip(const QString &text) { spell::SpellCheckClip(text); }

void ClipControls::setStatusText(const QString &text) { m_window->setStatusText(text); }
void ClipControls::setPanel1(const QString &text) { m_window->sbStatusPanel1->setText(text); }

void ClipControls::resetClipFont()
{
    QFont font(QStringLiteral("MS Sans Serif"));
    font.setPointSizeF(qMax(1.0, shell::Val(shell::settings().FontSizeOpt)));
    m_window->txtSpeech->setFont(font);
}

void ClipControls::setSpeechText(const QString &text)
{
    m_window->speechPanel->setText(text);
    if (platform::services().speech)
        reader::Reset_txtSpeech();
}

void ClipControls::talk()
{
    if (platform::services().speech)
        reader::cmdTalk_Click();
}

void ClipControls::clearExceptionsMade() { reader::exceptionsState().ExceptionsMade = false; }
void ClipControls::processEvents() { QApplication::processEvents(); }

void ClipControls::logMenusSoon()
{
    if (lcClipMenus().isInfoEnabled())
        m_logTimer->start();
}

} // namespace ui
