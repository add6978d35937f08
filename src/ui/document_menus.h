#pragma once
// The main window's document and exceptions commands: the File entries Open, Save,
// Save As.., Page Setup and Print, the Exceptions menu, the Paste and Clear buttons, and
// the change event of txtSpeech.
#include <QObject>
#include <functional>

class QAction;
class QMenu;
class QPushButton;
class QTextEdit;
class QWidget;

namespace ui {

class DocumentBox;

class DocumentMenus : public QObject {
    Q_OBJECT
public:
    // voiceRow gives the main window's chosen voice row, for the exceptions dialog.
    DocumentMenus(QWidget *window, QTextEdit *txtSpeech, std::function<int()> voiceRow);
    ~DocumentMenus() override;

    void addOpenSave(QMenu *file);      // Open, Save, Save As..
    void addPrinting(QMenu *file);      // Page Setup, Print
    void addExceptionsMenu(QMenu *menu);

    DocumentBox *box() const { return m_box; }
    QAction *mnuExceptionsTog = nullptr;
    QPushButton *cmdPaste = nullptr;
    QPushButton *cmdClear = nullptr;

private:
    void mnuExceptionsNew_Click();

    QWidget *m_window;
    DocumentBox *m_box;
    std::function<int()> m_voiceRow;
};

} // namespace ui
