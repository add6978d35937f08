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
    int layout() const { return m_layout; }  // the layout chosen for the text, 0 to 4
    QLabel *lblPopup = nullptr;
    QLabel *lbCountDown = nullptr;
    QPushButton *cmdOk = nullptr;
    QPushButton *cmdYes = nullptr;
    QPushButton *cmdNo = nullptr;
    QPushButton *cmdCancel = nullptr;
    QFrame *Shape1 = nullptr;
    QTimer *Timer1 = nullptr;
    // One second of the count-down: the counter falls and shows; at 0 the answer is No.
    void Timer1_Timer();

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void answer(int result);
    void applyLayout(const platform::MessageSpec &request);
    int m_type = 0;
    int m_counter = 0;
    int m_layout = 0;
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
