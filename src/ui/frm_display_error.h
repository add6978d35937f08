#pragma once
// frmDisplayError: shows a failure report with Continue, Quit and the mail report.
#include "platform/error_window.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace ui {

class frmDisplayError : public QDialog {
    Q_OBJECT
public:
    explicit frmDisplayError(const QString &errorText, QWidget *parent = nullptr);
    ~frmDisplayError() override;
    bool quitChosen() const { return m_quit; }
    QLabel *lblErrorStr = nullptr;
    QLabel *Image1 = nullptr;
    QPushButton *cmdContinue = nullptr;
    QPushButton *cmdQuit = nullptr;
    QPushButton *cmdErrorReport = nullptr;

private:
    void cmdErrorReport_Click();
    bool m_quit = false;
};

class ErrorWindows : public platform::ErrorWindow {
public:
    Choice showError(const QString &errorText) override;
};

} // namespace ui
