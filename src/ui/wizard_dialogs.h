#pragma once
// The statement wizards' questions answered by the program's dialogs: the message box,
// an input box, the file and folder dialogs, the mouse pick-up window and frmPicDate.
#include "hotkeys/wizard_asker.h"

#include <QPointer>
#include <QWidget>
#include <functional>

namespace ui {

// A wizard filter, "Caption (*.x)|*.x" pairs joined by "|", as a file dialog's filter:
// the captions, ";;" between them ("Text (*.txt;*.rtf)" keeps its patterns).
QString QtFileFilter(const QString &filter);

class WizardDialogs : public hotkeys::WizardAsker {
public:
    // parent: the window the dialogs belong to. showHelp: the statements' help.
    WizardDialogs(QWidget *parent, std::function<void()> showHelp);

    int message(const QString &text, int type, const QString &title) override;
    bool input(const QString &title, const QString &prompt, QString &reply,
               const QString &defaultText = QString()) override;
    bool file(const QString &title, const QString &filter, bool save, QString &path,
              const QString &defaultExtension = QString()) override;
    bool folder(const QString &title, QString &path) override;
    bool point(const QString &title, QPoint &at, bool &hooked) override;
    bool windowClass(const QString &title, QString &className, bool &hooked) override;
    bool dateTime(bool future, QString &date, QString &time) override;
    QSize screen() override;
    void help(const QString &statement) override;

private:
    QPointer<QWidget> m_parent;
    std::function<void()> m_showHelp;
    QString m_folder;  // where the last file or folder was picked
};

} // namespace ui
