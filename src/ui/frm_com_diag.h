#pragma once
// frmComDiag, "User Input - Common Dialog Control": writes the dialog string of a
// [USERINPUT Title Var] statement that opens a file, folder, colour, font, print or help
// dialog. Its decisions are in hotkeys/com_diag.
#include "hotkeys/com_diag.h"

#include <QDialog>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class frmComDiag : public QDialog {
    Q_OBJECT
public:
    // showHelp: what Help does.
    explicit frmComDiag(std::function<void()> showHelp, QWidget *parent = nullptr);
    ~frmComDiag() override;

    // Shows the window modally: true on Apply, with the statement to paste.
    static bool Ask(QWidget *parent, const std::function<void()> &showHelp, QString &statement);

    QComboBox *cmbDialogType = nullptr;
    QLineEdit *txtTitle = nullptr;
    QLineEdit *txtFolder = nullptr;
    QPushButton *cmdFile = nullptr;
    QLineEdit *txtFileExt = nullptr;
    QComboBox *cmbFlags = nullptr;
    QPushButton *cmdAddFlag = nullptr;
    QLabel *lblFlags = nullptr;  // the flags added so far
    QLineEdit *txtVariable = nullptr;
    QCheckBox *chkShortPath = nullptr;
    QPushButton *cmdApply = nullptr;
    QLineEdit *txtOutput = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdHelp = nullptr;

    QString Statement;  // set by cmdClose

    void cmbDialogType_Click();
    void cmdAddFlag_Click();
    // Builds the string into txtOutput; false (with the reason shown) when the fields
    // cannot make one.
    bool cmdApply_Click();
    void cmdClose_Click();

private:
    hotkeys::ComDiagFields fields() const;
    void showFlags();

    QStringList m_flags;  // the flags added, by name (the output's tag)
    std::function<void()> m_showHelp;
};

} // namespace ui
