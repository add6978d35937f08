#include "hotkeys/dialog_string.h"

#include "platform/services.h"
#include "shell/file_util.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace hotkeys {

namespace {

constexpr int kMarkerLength = 7;

// The published values of the common dialog flags, by name.
const QHash<QString, qint32> &flagValues()
{
    static const QHash<QString, qint32> values{
        // Open and Save
        {QStringLiteral("cdlOFNReadOnly"), 0x1},
        {QStringLiteral("cdlOFNOverwritePrompt"), 0x2},
        {QStringLiteral("cdlOFNHideReadOnly"), 0x4},
        {QStringLiteral("cdlOFNNoChangeDir"), 0x8},
        {QStringLiteral("cdlOFNHelpButton"), 0x10},
        {QStringLiteral("cdlOFNNoValidate"), 0x100},
        {QStringLiteral("cdlOFNAllowMultiselect"), 0x200},
        {QStringLiteral("cdlOFNExtensionDifferent"), 0x400},
        {QStringLiteral("cdlOFNPathMustExist"), 0x800},
        {QStringLiteral("cdlOFNFileMustExist"), 0x1000},
        {QStringLiteral("cdlOFNCreatePrompt"), 0x2000},
        {QStringLiteral("cdlOFNShareAware"), 0x4000},
        {QStringLiteral("cdlOFNNoReadOnlyReturn"), 0x8000},
        {QStringLiteral("cdlOFNNoLongNames"), 0x40000},
        {QStringLiteral("cdlOFNExplorer"), 0x80000},
        {QStringLiteral("cdlOFNNoDereferenceLinks"), 0x100000},
        {QStringLiteral("cdlOFNLongNames"), 0x200000},
        // Color
        {QStringLiteral("cdlCCRGBInit"), 0x1},
        {QStringLiteral("cdlCCFullOpen"), 0x2},
        {QStringLiteral("cdlCCPreventFullOpen"), 0x4},
        {QStringLiteral("cdlCCShowHelp"), 0x8},
        // Font
        {QStringLiteral("cdlCFScreenFonts"), 0x1},
        {QStringLiteral("cdlCFPrinterFonts"), 0x2},
        {QStringLiteral("cdlCFBoth"), 0x3},
        {QStringLiteral("cdlCFHelpButton"), 0x4},
        {QStringLiteral("cdlCFEffects"), 0x100},
        {QStringLiteral("cdlCFApply"), 0x200},
        {QStringLiteral("cdlCFANSIOnly"), 0x400},
        {QStringLiteral("cdlCFNoVectorFonts"), 0x800},
        {QStringLiteral("cdlCFNoSimulations"), 0x1000},
        {QStringLiteral("cdlCFLimitSize"), 0x2000},
        {QStringLiteral("cdlCFFixedPitchOnly"), 0x4000},
        {QStringLiteral("cdlCFWYSIWYG"), 0x8000},
        {QStringLiteral("cdlCFForceFontExist"), 0x10000},
        {QStringLiteral("cdlCFScalableOnly"), 0x20000},
        {QStringLiteral("cdlCFTTOnly"), 0x40000},
        {QStringLiteral("cdlCFNoFaceSel"), 0x80000},
        {QStringLiteral("cdlCFNoStyleSel"), 0x100000},
        {QStringLiteral("cdlCFNoSizeSel"), 0x200000},
        // Print
        {QStringLiteral("cdlPDAllPages"), 0x0},
        {QStringLiteral("cdlPDSelection"), 0x1},
        {QStringLiteral("cdlPDPageNums"), 0x2},
        {QStringLiteral("cdlPDNoSelection"), 0x4},
        {QStringLiteral("cdlPDNoPageNums"), 0x8},
        {QStringLiteral("cdlPDCollate"), 0x10},
        {QStringLiteral("cdlPDPrintToFile"), 0x20},
        {QStringLiteral("cdlPDPrintSetup"), 0x40},
        {QStringLiteral("cdlPDNoWarning"), 0x80},
        {QStringLiteral("cdlPDReturnDC"), 0x100},
        {QStringLiteral("cdlPDReturnIC"), 0x200},
        {QStringLiteral("cdlPDReturnDefault"), 0x400},
        {QStringLiteral("cdlPDHelpButton"), 0x800},
        {QStringLiteral("cdlPDUseDevModeCopies"), 0x40000},
        {QStringLiteral("cdlPDDisablePrintToFile"), 0x80000},
        {QStringLiteral("cdlPDHidePrintToFile"), 0x100000},
        // Help
        {QStringLiteral("cdlHelpContext"), 0x1},
        {QStringLiteral("cdlHelpQuit"), 0x2},
        {QStringLiteral("cdlHelpContents"), 0x3},
        {QStringLiteral("cdlHelpIndex"), 0x3},
        {QStringLiteral("cdlHelpHelpOnHelp"), 0x4},
        {QStringLiteral("cdlHelpSetContents"), 0x5},
        {QStringLiteral("cdlHelpSetIndex"), 0x5},
        {QStringLiteral("cdlHelpContextPopup"), 0x8},
        {QStringLiteral("cdlHelpForceFile"), 0x9},
        {QStringLiteral("cdlHelpKey"), 0x101},
        {QStringLiteral("cdlHelpCommandHelp"), 0x102},
        {QStringLiteral("cdlHelpPartialKey"), 0x105},
    };
    return values;
}

bool kindOf(const QString &type, platform::CommonDialog::Kind &kind)
{
    static const QHash<QString, platform::CommonDialog::Kind> kinds{
        {QStringLiteral("FOLDER"), platform::CommonDialog::Folder}, {QStringLiteral("OPEN"), platform::CommonDialog::Open},
        {QStringLiteral("SAVE"), platform::CommonDialog::Save},     {QStringLiteral("COLOR"), platform::CommonDialog::Color},
        {QStringLiteral("FONT"), platform::CommonDialog::Font},     {QStringLiteral("PRINT"), platform::CommonDialog::Print},
        {QStringLiteral("HELP"), platform::CommonDialog::Help}};
    const auto it = kinds.constFind(type.trimmed().toUpper());
    if (it == kinds.constEnd())
        return false;
    kind = *it;
    return true;
}

} // namespace

bool IsDialogString(const QString &title)
{
    return title.startsWith(QLatin1String("dialog+"), Qt::CaseInsensitive)
           || title.startsWith(QLatin1String("dialgs+"), Qt::CaseInsensitive);
}

bool WantsShortPath(const QString &title) { return title.startsWith(QLatin1String("dialgs+"), Qt::CaseInsensitive); }

void ParseDialog(const QString &text, QString &type, QString &title, QString &path, QString &extension,
                 QList<qint32> &flags, qint16 &flagCount)
{
    type.clear();
    title.clear();
    path.clear();
    extension.clear();
    flags.clear();
    flagCount = 0;
    // "+" + the fields + "+": each field stands between two separators.
    const QStringList fields = (QLatin1Char('+') + text.mid(kMarkerLength) + QLatin1Char('+')).split(QLatin1Char('+'));
    // fields[0] is the empty text before the first separator, the last the one after the last.
    for (qsizetype i = 1; i + 1 < fields.size() && i - 1 <= kLastDialogField; ++i) {
        const QString &field = fields.at(i);
        switch (i - 1) {
        case 0: type = field; break;
        case 1: title = field; break;
        case 2: path = field; break;
        case 3: extension = field.toUpper(); break;
        default:
            if (const qint32 value = GetCDL(field); !field.isEmpty() && value != 0) {
                flags << value;
                ++flagCount;
            }
        }
    }
}

qint32 GetCDL(const QString &name) { return flagValues().value(name.trimmed(), 0); }

QString LaunchDialog(QString &text)
{
    QString type, title, path, extension;
    QList<qint32> flags;
    qint16 count = 0;
    ParseDialog(text, type, title, path, extension, flags, count);
    platform::CommonDialog dialog;
    if (type.isEmpty() || !kindOf(type, dialog.kind)) {
        text.clear();
        return {};
    }
    dialog.title = title;
    dialog.extension = extension;
    if (dialog.kind == platform::CommonDialog::Folder)
        dialog.startPath = !path.trimmed().isEmpty() && shell::FolderExists(path) ? path : QDir::currentPath();
    else
        dialog.startPath = path;
    // Up to ten flags take effect; with more, none does.
    if (count <= kMaxDialogFlags)
        for (const qint32 flag : std::as_const(flags))
            dialog.flags |= flag;
    platform::Prompts *prompts = platform::services().prompts;
    QString result;
    if (!prompts || !prompts->commonDialog(dialog, result))
        return {};
    return result;
}

QString GetShortPath(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : canonical;
}

} // namespace hotkeys
