#pragma once
// frmRunMacroPopup: asked before a macro is started by hand, for the seconds to wait and
// whether to minimise first.
#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class frmRunMacroPopup : public QDialog {
    Q_OBJECT
public:
    explicit frmRunMacroPopup(QWidget *parent = nullptr);
    ~frmRunMacroPopup() override;

    // Shows the question modally: true for Continue, with the delay as typed and the
    // minimise choice.
    static bool Ask(double &waitSeconds, bool &minimise);

    QLabel *lblNote = nullptr;
    QLabel *lblWait = nullptr;
    QLineEdit *txtWait = nullptr;
    QCheckBox *chkMinimize = nullptr;
    QPushButton *cmdYes = nullptr;
    QPushButton *cmdNo = nullptr;
    bool Continue = false;
    bool Minimize = false;
    double WaitSeconds = 0;

private:
    void cmdYes_Click();
};

} // namespace ui
