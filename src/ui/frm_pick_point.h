#pragma once
// The small always-on-top window of the mouse pick-up wizards ("Define Left Click"...):
// it asks for one click anywhere on the screen and takes its point through the mouse
// hook's point capture, which keeps the click from the window under it. Esc or Cancel
// ends it without a point.
#include <QDialog>
#include <QPoint>

class QLabel;
class QPushButton;
class QTimer;

namespace ui {

class frmPickPoint : public QDialog {
    Q_OBJECT
public:
    explicit frmPickPoint(const QString &title, QWidget *parent = nullptr);
    ~frmPickPoint() override;

    // Shows the window modally until a click or Esc: true with the screen point clicked.
    // hooked is false (and the answer too) when the mouse hook cannot be had.
    static bool Pick(QWidget *parent, const QString &title, QPoint &at, bool &hooked);

    QLabel *lblPrompt = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPoint Point;  // the point taken

protected:
    void showEvent(QShowEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void beginCapture();
    void endCapture();
    void excludeSelf();
    void poll();

    QTimer *m_poll = nullptr;
    bool m_capturing = false;
};

} // namespace ui
