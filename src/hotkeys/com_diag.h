#pragma once
// frmComDiag, "User Input - Common Dialog Control": the wizard that writes a dialog
// string ("dialog+Type+Title+Path+Ext+Flags...") as the title of a [USERINPUT Title Var]
// statement. The window holds the fields; what they may hold and what they make is here.
#include <QString>
#include <QStringList>

namespace hotkeys {

inline constexpr const char *kComDiagCaption = "User Input - Common Dialog Control";

// The dialog types in the order the type list shows them.
QStringList ComDiagTypes();

// One entry of the flag list: the words the list shows and the flag's name.
struct ComDiagFlag {
    QString caption;  // "Allow Multiselect"
    QString name;     // "cdlOFNAllowMultiselect"
};
// InitFlags for one type: its flags, after an empty first entry. A type with no flags
// (Folder, or an unknown one) has the empty entry alone.
QList<ComDiagFlag> ComDiagFlags(const QString &type);
// A flag's name as words: the prefix dropped, a blank between words ("cdlOFNHideReadOnly"
// is "Hide ReadOnly", "cdlCFANSIOnly" is "ANSI Only").
QString FlagCaption(const QString &name);

struct ComDiagFields {
    QString type;       // "Open", ...
    QString title;
    QString path;
    QString extension;
    QStringList flags;  // names, in the order added
    bool shortPath = false;  // chkShortPath: "dialgs+" in place of "dialog+"
};

// cmdAddFlag_Click: "" when the flag was added to fields.flags, else why not. An empty
// name adds nothing and says nothing; a flag already there is not added twice; a flag
// past the tenth is refused, since with more than ten none would take effect.
QString AddComDiagFlag(ComDiagFields &fields, const QString &name);

// "" when the fields make a dialog string the statement can read back, else the message:
// a field may hold neither "+" (the separator) nor a double quote (the statement's
// quotes).
QString CheckComDiag(const ComDiagFields &fields);
// cmdApply_Click: marker, type, "+", title, "+", path, "+", extension, "+", then the
// flags separated by "+".
QString BuildDialogString(const ComDiagFields &fields);
// The statement pasted into the editor: [USERINPUT "string" variable].
QString ComDiagStatement(const QString &dialogString, const QString &variable);

} // namespace hotkeys
