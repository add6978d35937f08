#pragma once
// frmAOTMsg: the always-on-top message window, with an optional count-down.
#include "platform/message_window.h"

#include <QDialog>
#include <QPointer>

class QLabel;
class QPushButton;
class QTimer;
class QFrame;

namespace ui {

class frmAOTMsg : public QDialog {
    Q_OBJECT
public:
    explicit frmAOTMsg(const platform::MessageSpec &request, QWidget *parent = nullptr);
    int counter() const { return m_counter; }
    QLabel *lblPopup = nullptr;
    QLabel *lbCountDown = nullptr;
    QPushButton *cmdOk = nullptr;
    QPushButton *cmdYes = nullptr;
    QPushButton *cmdNo = nullptr;
    QPushButton *cmdCancel = nullptr;
    QFrame *Shape1 = nullptr;
    QTimer *Timer1 = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void answer(int result);
    void Timer1_Timer();
    void applyLayout(const platform::MessageSpec &request);
    int m_type = 0;
    int m_counter = 0;
    bool m_answered = false;
};

// The MessageWindow port on frmAOTMsg and frmPopup.
class MessageWindows : public platform::MessageWindow {
public:
    ~MessageWindows() override;
    int showModal(const platform::MessageSpec &request) override;
    void showModeless(const platform::MessageSpec &request) override;
    void unload() override;
    void showPopup(const QString &text) override;
    void hidePopup() override;
private:
    QPointer<frmAOTMsg> m_open;
    QPointer<QWidget> m_popup;
};

} // namespace ui
