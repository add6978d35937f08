#pragma once
// frmExceptions: edits the pronunciation exceptions, and lets the user try a word and its
// change out by ear.
#include <QDialog>

class QComboBox;
class QPushButton;

namespace ui {

class frmExceptions : public QDialog {
    Q_OBJECT
public:
    // voiceRow: the main window's chosen voice row (List1), used to speak the words.
    frmExceptions(QWidget *parent, int voiceRow);
    ~frmExceptions() override;

    // Presets cmbWords to a word (the selected text of "Add New Exception").
    void presetWord(const QString &word);

    QComboBox *cmbWords = nullptr;
    QComboBox *cmbChanges = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdQuit = nullptr;
    QPushButton *cmdSpeakWord = nullptr;
    QPushButton *cmdSpeakChange = nullptr;

private:
    void fillLists();
    void cmdApply_Click();
    void cmdDelete_Click();

    int m_voiceRow;
};

} // namespace ui
