#pragma once
// The questions a statement wizard asks. The editor window answers them with dialogs;
// tests answer them from a script. A wizard itself never runs anything: it only builds
// statement text from the answers.
#include <QPoint>
#include <QSize>
#include <QString>

namespace hotkeys {

// Answers of WizardAsker::message, as shell::MsgBoxOT gives them.
enum WizardAnswer { WizardYes = 1, WizardNo = -1, WizardCancel = -2, WizardOk = -3 };

class WizardAsker {
public:
    virtual ~WizardAsker() = default;

    // A message box. type: 0 OK, 1 OK and Cancel, 3 Yes, No and Cancel, 4 Yes and No.
    // Returns one of WizardAnswer.
    virtual int message(const QString &text, int type, const QString &title) = 0;

    // The input box, reply starting as defaultText. False on Cancel.
    virtual bool input(const QString &title, const QString &prompt, QString &reply,
                       const QString &defaultText = QString()) = 0;

    // The file dialog. filter: "Caption (*.x)|*.x" pairs joined by "|". save picks a name
    // to write (defaultExtension added when the name has none). False on Cancel.
    virtual bool file(const QString &title, const QString &filter, bool save, QString &path,
                      const QString &defaultExtension = QString()) = 0;

    // The folder picker. False on Cancel.
    virtual bool folder(const QString &title, QString &path) = 0;

    // Waits for one left click anywhere on the screen while a small window titled title
    // says what to click. False when the mouse cannot be hooked (hooked is then false)
    // or the user pressed Esc.
    virtual bool point(const QString &title, QPoint &at, bool &hooked) = 0;

    // Like point, and answers the class name of the window clicked.
    virtual bool windowClass(const QString &title, QString &className, bool &hooked) = 0;

    // frmPicDate: a date and a time. future: refuse a moment in the past. date as
    // "dd/MMMM/yyyy", time as "h:m:s AM". False on Cancel.
    virtual bool dateTime(bool future, QString &date, QString &time) = 0;

    // The screen's size in pixels, for the limits of mouse positions.
    virtual QSize screen() = 0;

    // Shows the help for a statement (its first word, "[COPYFILE ").
    virtual void help(const QString &statement) = 0;
};

} // namespace hotkeys
