#pragma once
// Port: the questions a macro asks the user for text.
#include <QString>
#include <QtGlobal>

namespace platform {

// A common dialog that a macro opens through [USERINPUT "dialog+..." Var].
struct CommonDialog {
    enum Kind { Folder, Open, Save, Color, Font, Print, Help };
    Kind kind = Open;
    QString title;      // the dialog's own title when empty
    QString startPath;  // the folder or file it starts at
    QString extension;  // "TXT": the filter "Files (*.TXT)"; empty: all files
    qint32 flags = 0;   // the common dialog flag values, ORed
};

class Prompts {
public:
    virtual ~Prompts() = default;
    // The plain input box: prompt under title, one line. False on Cancel.
    virtual bool inputBox(const QString &title, const QString &prompt, QString &reply) = 0;
    // frmText as a modal multi-line entry, starting with text. False on Cancel.
    virtual bool editText(QString &text) = 0;
    // Shows a common dialog. False on Cancel (and where there are no dialogs). result: the
    // chosen path (several, with multi-selection, one a line joined by CR LF), the colour as
    // "#rrggbb", the font's family, the printer's name.
    virtual bool commonDialog(const CommonDialog &dialog, QString &result)
    {
        Q_UNUSED(dialog);
        result.clear();
        return false;
    }
};

} // namespace platform
