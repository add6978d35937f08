#include "ui/recording_window.h"

#include "macro/macro_text.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_macro_popup.h"
#include "ui/frm_sonamark.h"
#include "ui/subsystem_calls.h"

#include <QTextCursor>
#include <QTextEdit>

namespace ui {

QString MainRecordingWindow::text() const
{
    // The text box keeps paragraphs; the macro text has CR LF line ends.
    QString text = m_window->txtSpeech->toPlainText();
    text.replace(QLatin1Char('\n'), macro::kCrLf);
    return text;
}

void MainRecordingWindow::setText(const QString &text)
{
    QString shown = text;
    shown.replace(macro::kCrLf, QStringLiteral("\n"));
    m_window->txtSpeech->setPlainText(shown);
    m_window->txtSpeech->moveCursor(QTextCursor::End);
}

QString MainRecordingWindow::caption() const { return m_window->windowTitle(); }

void MainRecordingWindow::setCaption(const QString &caption) { m_window->setWindowTitle(caption); }

void MainRecordingWindow::setStatusText(const QString &text) { m_window->setStatusText(text); }

bool MainRecordingWindow::askToRecord(bool &includeMouse) { return frmMacroPopup::Ask(includeMouse); }

void MainRecordingWindow::stopMonitoring() { StopClipboardMonitor(m_window); }

void MainRecordingWindow::openEditor(const QString &code) { EditRecordedMacro(code); }

} // namespace ui
