#pragma once
// frmFind ("Sonamark - Find Text"): the modeless find-and-replace dialog on txtSpeech.
#include <QDialog>
#include <memory>

class QCheckBox;
class QComboBox;
class QPushButton;
class QTextEdit;

namespace search {
class FindTarget;
}

namespace ui {

class frmFind : public QDialog {
    Q_OBJECT
public:
    explicit frmFind(QTextEdit *txtSpeech, QWidget *parent = nullptr);
    ~frmFind() override;

    // frmFind.FindText: takes cmbFind's text as FindText and answers the hit or -1.
    int FindText();
    // The direction and options the dialog stands at (for the Edit menu's Find Next).
    int options() const;
    QString direction() const;

    void cmdFindNext_Click();
    void cmdReplace_Click();
    void cmdReplaceAll_Click();
    void cmdCancel_Click();

    QComboBox *cmbFind = nullptr;
    QComboBox *cmbReplace = nullptr;
    QComboBox *cmbDirection = nullptr;
    QCheckBox *chkMatchCase = nullptr;
    QCheckBox *chkWholeWord = nullptr;
    QPushButton *cmdFindNext = nullptr;
    QPushButton *cmdReplace = nullptr;
    QPushButton *cmdReplaceAll = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rememberRow(QComboBox *combo, const QString &text);

    QTextEdit *m_box;
    std::unique_ptr<search::FindTarget> m_target;
};

// The find target over a QTextEdit: plain-text positions, "\n" between paragraphs.
std::unique_ptr<search::FindTarget> MakeFindTarget(QTextEdit *box);

// mnuFormatFindNext_Click: searches on from behind the caret for FindText, with the
// direction and options of the dialog when it has been loaded; "String not found" when
// there is no hit.
void FindNextText(QTextEdit *txtSpeech, const frmFind *dialog);

} // namespace ui
