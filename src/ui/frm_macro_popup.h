#pragma once
// frmMacroPopup: the question before a macro is recorded, with the choice of mouse events.
#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

namespace ui {

class frmMacroPopup : public QDialog {
    Q_OBJECT
public:
    explicit frmMacroPopup(QWidget *parent = nullptr);
    ~frmMacroPopup() override;

    // Shows the question modally: true for Yes, with includeMouse from the check box.
    static bool Ask(bool &includeMouse);

    QLabel *lblPopup = nullptr;
    QPushButton *cmdYes = nullptr;
    QPushButton *cmdNo = nullptr;
    QCheckBox *chkMouseEvents = nullptr;
    bool Continue = false;       // Yes was chosen
    bool IncludeMouse = true;    // taken from the check box by Yes

private:
    void cmdYes_Click();
};

} // namespace ui
