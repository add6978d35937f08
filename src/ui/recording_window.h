#pragma once
// The main window as the macro recorder sees it: txtSpeech, caption, status, the
// recording question, and where a finished recording goes.
#include "hotkeys/macro_recording.h"

namespace ui {

class frmSonamark;

class MainRecordingWindow : public hotkeys::RecordingWindow {
public:
    explicit MainRecordingWindow(frmSonamark *window) : m_window(window) {}
    QString text() const override;
    void setText(const QString &text) override;
    QString caption() const override;
    void setCaption(const QString &caption) override;
    void setStatusText(const QString &text) override;
    bool askToRecord(bool &includeMouse) override;
    void stopMonitoring() override;
    // The Hotkeys editor opens on a new macro with the recorded code.
    void openEditor(const QString &code) override;

private:
    frmSonamark *m_window;
};

} // namespace ui
