#include "hotkeys/com_diag.h"

#include "hotkeys/dialog_string.h"

namespace hotkeys {

namespace {

struct TypeFlags {
    const char *type;
    QStringList names;
};

// ORDER: the flags of each type as the list shows them.
const QList<TypeFlags> &typeFlags()
{
    static const QList<TypeFlags> table{
        {"Folder", {}},
        {"Open",
         {"cdlOFNAllowMultiselect", "cdlOFNCreatePrompt", "cdlOFNExplorer", "cdlOFNExtensionDifferent",
          "cdlOFNFileMustExist", "cdlOFNHelpButton", "cdlOFNHideReadOnly", "cdlOFNLongNames", "cdlOFNNoChangeDir",
          "cdlOFNNoDereferenceLinks", "cdlOFNNoLongNames", "cdlOFNNoReadOnlyReturn", "cdlOFNNoValidate",
          "cdlOFNOverwritePrompt", "cdlOFNPathMustExist", "cdlOFNReadOnly", "cdlOFNShareAware"}},
        {"Save", {}},  // the flags of Open
        {"Color", {"cdlCCFullOpen", "cdlCCShowHelp", "cdlCCPreventFullOpen", "cdlCCRGBInit"}},
        {"Font",
         {"cdlCFANSIOnly", "cdlCFApply", "cdlCFBoth", "cdlCFEffects", "cdlCFFixedPitchOnly", "cdlCFForceFontExist",
          "cdlCFHelpButton", "cdlCFLimitSize", "cdlCFNoFaceSel", "cdlCFNoSimulations", "cdlCFNoSizeSel",
          "cdlCFNoStyleSel", "cdlCFNoVectorFonts", "cdlCFPrinterFonts", "cdlCFScalableOnly", "cdlCFScreenFonts",
          "cdlCFTTOnly", "cdlCFWYSIWYG"}},
        {"Print",
         {"cdlPDAllPages", "cdlPDCollate", "cdlPDDisablePrintToFile", "cdlPDHelpButton", "cdlPDHidePrintToFile",
          "cdlPDNoPageNums", "cdlPDNoSelection", "cdlPDNoWarning", "cdlPDPageNums", "cdlPDPrintSetup",
          "cdlPDPrintToFile", "cdlPDReturnDC", "cdlPDReturnDefault", "cdlPDReturnIC", "cdlPDSelection",
          "cdlPDUseDevModeCopies"}},
        {"Help",
         {"cdlHelpCommandHelp", "cdlHelpContents", "cdlHelpContext", "cdlHelpContextPopup", "cdlHelpForceFile",
          "cdlHelpHelpOnHelp", "cdlHelpIndex", "cdlHelpKey", "cdlHelpPartialKey", "cdlHelpQuit",
          "cdlHelpSetContents", "cdlHelpSetIndex"}},
    };
    return table;
}

// The flag name prefixes, longest first where one begins another.
const char *const kPrefixes[] = {"cdlOFN", "cdlHelp", "cdlCC", "cdlCF", "cdlPD"};

const QString kReadOnly = QStringLiteral("ReadOnly");

} // namespace

QStringList ComDiagTypes()
{
    QStringList types;
    for (const TypeFlags &t : typeFlags())
        types << QLatin1String(t.type);
    return types;
}

QList<ComDiagFlag> ComDiagFlags(const QString &type)
{
    QList<ComDiagFlag> flags{{QString(), QString()}};
    const QString wanted = type.compare(QLatin1String("Save"), Qt::CaseInsensitive) == 0 ? QStringLiteral("Open") : type;
    for (const TypeFlags &t : typeFlags()) {
        if (wanted.compare(QLatin1String(t.type), Qt::CaseInsensitive) != 0)
            continue;
        for (const QString &name : t.names)
            flags.append({FlagCaption(name), name});
    }
    return flags;
}

QString FlagCaption(const QString &name)
{
    QString rest = name;
    for (const char *prefix : kPrefixes)
        if (rest.startsWith(QLatin1String(prefix))) {
            rest = rest.mid(int(qstrlen(prefix)));
            break;
        }
    // A blank goes before a capital that follows a small letter ("HideRead"), and before
    // the last capital of a run that a small letter follows ("ANSIOnly").
    QString words;
    for (int i = 0; i < rest.size(); ++i) {
        const QChar c = rest.at(i);
        if (i > 0 && c.isUpper()) {
            const bool afterSmall = rest.at(i - 1).isLower();
            const bool endsRun = rest.at(i - 1).isUpper() && i + 1 < rest.size() && rest.at(i + 1).isLower();
            if (afterSmall || endsRun)
                words += QLatin1Char(' ');
        }
        words += c;
    }
    return words.replace(QStringLiteral("Read Only"), kReadOnly);
}

QString AddComDiagFlag(ComDiagFields &fields, const QString &name)
{
    if (name.isEmpty())
        return {};
    if (fields.flags.contains(name))
        return QStringLiteral("The flag ") + FlagCaption(name) + QStringLiteral(" is already in the list.");
    if (fields.flags.size() >= kMaxDialogFlags)
        return QStringLiteral("A dialog takes at most %1 flags: with more, none of them takes effect.")
            .arg(kMaxDialogFlags);
    fields.flags << name;
    return {};
}

QString CheckComDiag(const ComDiagFields &fields)
{
    if (fields.type.isEmpty())
        return QStringLiteral("Choose a dialog type.");
    const struct {
        const QString &text;
        const char *label;
    } parts[] = {{fields.title, "Dialog Title"}, {fields.path, "Default Path"}, {fields.extension, "Def File Ext"}};
    for (const auto &part : parts)
        if (part.text.contains(QLatin1Char('+')) || part.text.contains(QLatin1Char('"')))
            return QStringLiteral("The ") + QLatin1String(part.label)
                   + QStringLiteral(" cannot hold a plus sign (+) or a double quote (\").");
    return {};
}

QString BuildDialogString(const ComDiagFields &fields)
{
    QString text = fields.shortPath ? QStringLiteral("dialgs+") : QStringLiteral("dialog+");
    text += fields.type + QLatin1Char('+') + fields.title + QLatin1Char('+') + fields.path + QLatin1Char('+')
            + fields.extension + QLatin1Char('+');
    text += fields.flags.join(QLatin1Char('+'));
    return text;
}

QString ComDiagStatement(const QString &dialogString, const QString &variable)
{
    return QStringLiteral("[USERINPUT \"") + dialogString + QStringLiteral("\" ") + variable + QLatin1Char(']');
}

} // namespace hotkeys
