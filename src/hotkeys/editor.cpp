#include "hotkeys/editor.h"

#include "hotkeys/editor_commands.h"

#include "hotkeys/file_history.h"
#include "hotkeys/formatter.h"
#include "hotkeys/good_hotkey.h"
#include "hotkeys/hotkey_sort.h"
#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "macro/macro_text.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/delay.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcEditor, "sonamark.editor", QtWarningMsg)

namespace hotkeys {

namespace {

constexpr int kCaptionPathChars = 35;
constexpr int kStatusPathChars = 60;
constexpr double kMaxRunDelaySeconds = 3600;
const QString kRunCaption = QStringLiteral("&Run");
const QString kStopCaption = QStringLiteral("&Stop");
const QString kRunTitle = QStringLiteral("Run Macro");
const QString kSaveHotkeyTitle = QStringLiteral("Save Hotkey");
const QString kChangeTitle = QStringLiteral("Change Hotkey");
const QString kErrorsFound = QStringLiteral("There were errors found in the code.");
const QString kUnableToSave = QStringLiteral("Unable to save hotkey file.");
const QString kNotAHotkeysFile = QStringLiteral("This is not a Hotkeys file");

int Answer() { return shell::app().MsgResult; }

bool Ask(const QString &text, int type, const QString &title)
{
    shell::MsgBoxOT(text, type, title);
    return Answer() == shell::MsgYes;
}

QString Quoted(const QString &text) { return QLatin1Char('"') + text + QLatin1Char('"'); }

QString Number(int index) { return QString::number(index + 1); }

// One field of every macro of the table, in its order.
QStringList FieldOfTable(QString Hotkey::*field)
{
    QStringList values;
    const HotkeyTable &t = table();
    for (int i = 0; i < t.HotkeyCount; ++i)
        values << t.Hotkeys[size_t(i)].*field;
    return values;
}

QStringList KeysOfTable() { return FieldOfTable(&Hotkey::Keys); }

QStringList DescriptionsOfTable() { return FieldOfTable(&Hotkey::Description); }

QString LimitMessage()
{
    return QStringLiteral("A Hotkeys file holds at most %1 macros. Remove one before adding another.").arg(kMaxHotkeys);
}

// A code box with nothing but line ends and blanks has no actions.
bool NoActions(const QString &code)
{
    for (const QChar c : code)
        if (c != QLatin1Char(' ') && c != QLatin1Char('\r') && c != QLatin1Char('\n') && c != QLatin1Char('\t'))
            return false;
    return true;
}

// Why a file cannot be written, for the line under "Unable to save hotkey file.".
QString WriteFailureReason(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isWritable())
        return QStringLiteral("The file ") + path
               + QStringLiteral(" is read-only. The changes are kept here: use File, Save As to keep them in another file.");
    if (!QFileInfo(info.absolutePath()).isWritable())
        return QStringLiteral("The folder of ") + path
               + QStringLiteral(" can not be written to. The changes are kept here: use File, Save As to keep them in "
                                "another file.");
    return QStringLiteral("The changes are kept here: use File, Save As to keep them in another file.");
}

} // namespace

QList<int> UntidiedLines(const QString &text, const QList<int> &tidiedLines)
{
    QList<int> nonEmpty;  // 1-based numbers of the lines that tidying keeps
    const QStringList lines = QString(text).replace(macro::kCrLf, QStringLiteral("\n")).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i)
        if (!lines[i].isEmpty())
            nonEmpty << i + 1;
    QList<int> out;
    for (const int line : tidiedLines)
        if (line >= 1 && line <= nonEmpty.size())
            out << nonEmpty[line - 1];
    return out;
}

HotkeyEditor::HotkeyEditor(HotkeyEditorView &view, HotkeyEditorLinks links) : m_view(view), m_links(std::move(links)) {}

void HotkeyEditor::Form_Load()
{
    ++shell::app().ChildFormDepth;
    m_history = ReadFileHistory();
    m_view.setHistory(m_history);
    m_view.setRunCaption(kRunCaption, kEditorRunTip);
    LoadHotkeys();
    TakeStamp();
}

bool HotkeyEditor::Form_Unload()
{
    HotkeyTable &t = table();
    if (t.HotkeysDirty) {
        shell::MsgBoxOT(QStringLiteral("Save changes to hotkey first?"), 2, SaveTitle());
        if (Answer() == shell::MsgCancel)
            return false;
        if (Answer() == shell::MsgYes) {
            cmdAdd_Click();
            if (!m_saved && !Ask(QStringLiteral("The hotkey changes were not saved. Quit anyway?"), 1,
                                 QStringLiteral("Save Hotkey")))
                return false;
        }
    }
    t.HotkeysDirty = false;
    WriteFileHistory(m_history);
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
    return true;
}

void HotkeyEditor::LoadHotkeys()
{
    HotkeyTable &t = table();
    if (m_newEntry) {
        m_view.showNewEntry(false);
        m_newEntry = false;
    }
    m_view.setNavigationEnabled(true);
    m_view.setLists(KeysOfTable(), DescriptionsOfTable());
    if (t.HotkeyCount > 0) {
        if (t.CurrentHotkeyIndex < 0)
            t.CurrentHotkeyIndex = 0;
        if (t.CurrentHotkeyIndex >= t.HotkeyCount)
            t.CurrentHotkeyIndex = t.HotkeyCount - 1;
        const Hotkey &hotkey = t.Hotkeys[size_t(t.CurrentHotkeyIndex)];
        m_view.setListIndex(t.CurrentHotkeyIndex);
        m_view.setCode(hotkey.Code);
        m_view.setEnableChecked(hotkey.Active);
        m_view.setNumberLabel(QStringLiteral("Hotkey ") + Number(t.CurrentHotkeyIndex));
        QString tidied = hotkey.Code;
        const QString report = HotkeyStatus(tidied);
        m_view.colourErrorLines(UntidiedLines(hotkey.Code, ErrorLines()));
        const QString n = Number(t.CurrentHotkeyIndex);
        if (report.isEmpty())
            m_view.setStatus(QStringLiteral("Hotkey ") + n + QStringLiteral(" has no errors."));
        else if (ErrorLineCount() == 1)
            m_view.setStatus(QStringLiteral("Hotkey ") + n + QStringLiteral(" has 1 line with an error."));
        else
            m_view.setStatus(QStringLiteral("Hotkey %1 has %2 lines with errors.").arg(n).arg(ErrorLineCount()));
    } else {
        t.CurrentHotkeyIndex = -1;
        m_view.setListIndex(-1);
        m_view.setCode(QString());
        m_view.colourErrorLines({});
        m_view.setEnableChecked(false);
        m_view.setNumberLabel(QStringLiteral("Hotkey "));
    }
    if (!t.HotkeysFileName.isEmpty()) {
        m_history = UpdateFileHistory(m_history, t.HotkeysFileName);
        m_view.setHistory(m_history);
    }
    ShowCaption();
    t.HotkeysDirty = false;
    m_shown = t.CurrentHotkeyIndex;
}

void HotkeyEditor::RestoreCurrent() { table().CurrentHotkeyIndex = m_shown; }

QString HotkeyEditor::PrintHotkeyText() const
{
    const HotkeyTable &t = table();
    const bool stored = m_shown >= 0 && m_shown < t.HotkeyCount;
    if (!m_newEntry && !stored) {
        shell::MsgBoxOT(QStringLiteral("No hotkey to print."), 0, kPrintTitle);
        return {};
    }
    Hotkey shown;
    shown.Keys = m_view.keysText();
    shown.Description = m_view.descriptionText();
    shown.Code = m_view.code();
    shown.Active = m_view.enableChecked();
    return HotkeyPrintText(m_newEntry ? t.HotkeyCount + 1 : m_shown + 1, shown);
}

QString HotkeyEditor::PrintAllText() const
{
    if (table().HotkeyCount == 0) {
        shell::MsgBoxOT(QStringLiteral("No hotkeys to print."), 0, kPrintTitle);
        return {};
    }
    return AllHotkeysPrintText(table());
}

void HotkeyEditor::mnuFileIcon_Click(const QString &folder, const QString &launchProgram)
{
    if (!SaveHKChanges())
        return;
    const HotkeyTable &t = table();
    if (m_newEntry || m_shown < 0 || m_shown >= t.HotkeyCount) {
        shell::MsgBoxOT(m_newEntry ? QStringLiteral("Save this macro before making a desktop icon for it.")
                                   : QStringLiteral("There is no macro to make a desktop icon for."),
                        0, kIconTitle);
        return;
    }
    const QString description = t.Hotkeys[size_t(m_shown)].Description;
    if (description.trimmed().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("A macro needs a description to have a desktop icon."), 0, kIconTitle);
        return;
    }
    const QString path = QDir(folder).filePath(MacroLauncherFileName(description));
    if (QFileInfo::exists(path)
        && !Ask(QStringLiteral("A desktop icon for macro ") + Quoted(description)
                    + QStringLiteral(" already exists. Replace it?"),
                1, kIconTitle))
        return;
    const QString error = WriteMacroLauncher(folder, launchProgram, description);
    if (!error.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("The desktop icon could not be made: ") + error, 0, kIconTitle);
        return;
    }
    m_view.setStatus(QStringLiteral("Desktop icon made: ") + path);
}

void HotkeyEditor::RefreshEnabled()
{
    const HotkeyTable &t = table();
    if (m_newEntry || m_shown < 0 || m_shown >= t.HotkeyCount)
        return;
    m_view.setEnableChecked(t.Hotkeys[size_t(m_shown)].Active);
}

void HotkeyEditor::ShowCaption()
{
    const HotkeyTable &t = table();
    QString caption = QStringLiteral("Hotkeys - ") + QString::number(t.HotkeyCount) + QStringLiteral(" hotkeys defined. ");
    if (t.HotkeysFileName.isEmpty())
        caption += QStringLiteral("No hotkeys file has been defined.");
    else
        caption += shell::CondensedPath(t.HotkeysFileName, kCaptionPathChars);
    m_view.setCaption(caption);
}

QString HotkeyEditor::Label() const { return m_view.keysText(); }

QString HotkeyEditor::SaveTitle() const { return QStringLiteral("Save ") + Quoted(Label()); }

void HotkeyEditor::RefreshHotkey()
{
    HotkeyTable &t = table();
    if (t.CurrentHotkeyIndex < 0 || t.CurrentHotkeyIndex >= t.HotkeyCount)
        return;
    const Hotkey &hotkey = t.Hotkeys[size_t(t.CurrentHotkeyIndex)];
    m_view.setListIndex(t.CurrentHotkeyIndex);
    m_view.setCode(hotkey.Code);
    m_view.setEnableChecked(hotkey.Active);
    m_view.setNumberLabel(QStringLiteral("Hotkey ") + Number(t.CurrentHotkeyIndex));
    QString tidied = hotkey.Code;
    HotkeyStatus(tidied);
    m_view.colourErrorLines(UntidiedLines(hotkey.Code, ErrorLines()));
    m_view.setStatus(QStringLiteral("Viewing hotkey ") + Number(t.CurrentHotkeyIndex));
    t.HotkeysDirty = false;
    m_shown = t.CurrentHotkeyIndex;
}

bool HotkeyEditor::SaveHKChanges()
{
    HotkeyTable &t = table();
    if (!t.HotkeysDirty)
        return true;
    shell::MsgBoxOT(QStringLiteral("Save changes to the current hotkey first?"), 2, SaveTitle());
    if (Answer() == shell::MsgCancel)
        return false;
    if (Answer() == shell::MsgNo)
        return true;
    cmdAdd_Click();
    if (m_saved) {
        t.HotkeysDirty = false;
        m_view.setStatus(QStringLiteral("Saved ") + shell::CondensedPath(t.HotkeysFileName, kStatusPathChars));
        return true;
    }
    return Ask(QStringLiteral("The hotkey was not saved. Continue?"), 1, SaveTitle());
}

bool HotkeyEditor::WriteTable()
{
    HotkeyTable &t = table();
    UpdateHookPlan();
    if (ChangedOnDisk()) {
        shell::MsgBoxOT(QStringLiteral("The Hotkeys file ") + t.HotkeysFileName
                            + QStringLiteral(" has been changed by another program since it was loaded. "
                                             "Write the macros shown here over it?"),
                        1, QStringLiteral("Hotkeys File Changed"));
        if (Answer() != shell::MsgYes) {
            m_fileBehind = true;
            m_view.setStatus(QStringLiteral("The Hotkeys file was not written: it was changed by another program."));
            return false;
        }
    }
    if (UpdateHotkeyWordsFile()) {
        m_fileBehind = false;
        TakeStamp();
        return true;
    }
    m_fileBehind = true;
    t.HotkeysDirty = true;
    qCWarning(lcEditor) << "cannot write" << t.HotkeysFileName;
    shell::MsgBoxOT(kUnableToSave + macro::kCrLf + macro::kCrLf + WriteFailureReason(t.HotkeysFileName), 0,
                    kSaveHotkeyTitle);
    return false;
}

bool HotkeyEditor::MakeNewFile()
{
    QString folder;
    if (!m_view.askFolder(QStringLiteral("Select Folder For New Hotkey File"), folder) || folder.isEmpty())
        return false;
    QString name;
    if (!m_view.askText(QStringLiteral("New File"), QStringLiteral("Enter the file name: e.g. MYHOTKEYS.TXT"),
                        QStringLiteral("HKFile.TXT"), name))
        return false;
    name = name.trimmed();
    if (name.isEmpty())
        return false;
    if (!name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive))
        name += QStringLiteral(".TXT");
    table().HotkeysFileName = QDir(folder).filePath(name);
    m_stamp = FileStamp();
    return true;
}

bool HotkeyEditor::DuplicateQuestions(const QString &keys, const QString &description, int skip)
{
    const HotkeyTable &t = table();
    for (int i = 0; i < t.HotkeyCount; ++i) {
        const Hotkey &other = t.Hotkeys[size_t(i)];
        if (i != skip && other.Active && other.Keys.compare(keys, Qt::CaseInsensitive) == 0) {
            if (!Ask(QStringLiteral("This will create a duplicate hotkey for macro ") + Quoted(other.Description)
                         + QStringLiteral(". Only the 1st enabled hotkey will be available. Continue?"),
                     1, QStringLiteral("Duplicate Hotkey")))
                return false;
            break;
        }
    }
    for (int i = 0; i < t.HotkeyCount; ++i) {
        const Hotkey &other = t.Hotkeys[size_t(i)];
        if (i != skip && other.Description.compare(description, Qt::CaseInsensitive) == 0) {
            if (!Ask(QStringLiteral("This will create hotkeys with duplicate descriptions for macro ")
                         + Quoted(other.Description) + QStringLiteral(". Continue?"),
                     1, QStringLiteral("Duplicate Hotkey")))
                return false;
            break;
        }
    }
    return true;
}

void HotkeyEditor::cmdAdd_Click()
{
    m_saved = false;
    HotkeyTable &t = table();
    if (t.HotkeysFileName.trimmed().isEmpty() && !MakeNewFile())
        return;
    QString keys = m_view.keysText().trimmed();
    const QString description = m_view.descriptionText().trimmed();
    const QString code = m_view.code();
    if (keys.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("You must define your hotkey."), 0, QStringLiteral("Hotkey Missing"));
        return;
    }
    if (description.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("You must have a description for your macro."), 0,
                        QStringLiteral("Description Missing"));
        return;
    }
    if (NoActions(code)) {
        shell::MsgBoxOT(QStringLiteral("There are no actions for your hotkey to perform."), 0,
                        QStringLiteral("No Actions"));
        return;
    }
    // The file's fields stand between double quotes and cannot hold one.
    if (keys.contains(QLatin1Char('"')) || description.contains(QLatin1Char('"'))) {
        shell::MsgBoxOT(QStringLiteral("The hotkey and its description can not contain a double quote (\")."), 0,
                        kSaveHotkeyTitle);
        return;
    }
    if (!GoodHotkey(keys)) {
        shell::MsgBoxOT(QStringLiteral("Your hotkey is invalid."), 0, kSaveHotkeyTitle);
        return;
    }
    m_view.setKeysText(keys);

    QString tidied = code;
    const QString report = HotkeyStatus(tidied);
    m_view.colourErrorLines(UntidiedLines(code, ErrorLines()));
    if (!report.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("There were errors found in the code. View the errors instead?"), 2,
                        SaveTitle());
        if (Answer() == shell::MsgCancel) {
            m_view.setStatus(kErrorsFound);
            return;
        }
        if (Answer() == shell::MsgYes) {
            mnuFormatCheckCode_Click();
            return;
        }
    }
    const bool active = m_view.enableChecked();
    const bool isNew = m_newEntry || t.CurrentHotkeyIndex < 0 || t.CurrentHotkeyIndex >= t.HotkeyCount;
    const int index = isNew ? t.HotkeyCount : t.CurrentHotkeyIndex;
    const Hotkey edited{active, keys, description, code};

    if (!isNew) {
        const Hotkey &stored = t.Hotkeys[size_t(index)];
        if (stored.Active == active && stored.Keys == keys && stored.Description == description
            && stored.Code == code) {
            if (m_fileBehind) {  // the table has it; the file did not take it last time
                if (WriteTable()) {
                    m_saved = true;
                    t.HotkeysDirty = false;
                    m_view.setStatus(QStringLiteral("Hotkey ") + Number(index) + QStringLiteral(" has been saved."));
                }
                return;
            }
            shell::MsgBoxOT(QStringLiteral("No changes to save."), 0, QStringLiteral("No Changes"));
            if (report.isEmpty())
                m_view.setStatus(QStringLiteral("There were no errors found in the code."));
            t.HotkeysDirty = false;
            m_saved = true;
            return;
        }
    }
    for (int i = 0; i < t.HotkeyCount; ++i) {
        const Hotkey &other = t.Hotkeys[size_t(i)];
        if (i != index && other.Keys == keys && other.Description == description && other.Code == code
            && other.Active == active) {
            shell::MsgBoxOT(QStringLiteral("This macro is a duplicate of macro ") + Quoted(other.Description)
                                + QStringLiteral(". It must be modified to be saved."),
                            0, kSaveHotkeyTitle);
            return;
        }
    }

    const QString n = Number(index);
    if (isNew) {
        if (t.HotkeyCount >= kMaxHotkeys) {
            shell::MsgBoxOT(LimitMessage(), 0, kSaveHotkeyTitle);
            return;
        }
        if (!DuplicateQuestions(keys, description, -1))
            return;
        t.Hotkeys[size_t(index)] = edited;
        t.HotkeyCount += 1;
        t.CurrentHotkeyIndex = index;
        m_shown = index;
        m_view.showNewEntry(false);
        m_newEntry = false;
        m_view.setNavigationEnabled(true);
        m_view.setLists(KeysOfTable(), DescriptionsOfTable());
        m_view.setListIndex(index);
        m_view.setNumberLabel(QStringLiteral("Hotkey ") + n);
        m_saved = WriteTable();
        m_view.setStatus(QStringLiteral("Hotkey ") + n
                         + (m_saved ? QStringLiteral(" has been added.") : QStringLiteral(" has not been added.")));
        ShowCaption();
    } else {
        Hotkey &stored = t.Hotkeys[size_t(index)];
        const QString oldName = stored.Description;
        const bool keysChanged = stored.Keys != keys;
        const bool nameChanged = stored.Description != description;
        QString done, notDone;
        if (!keysChanged && !nameChanged) {
            done = QStringLiteral(" has been updated.");
            notDone = QStringLiteral(" has not been updated.");
        } else if (!keysChanged) {
            if (!Ask(QStringLiteral("Are you sure you want to change the hotkey description for macro ") + Quoted(oldName)
                         + QLatin1Char('?'),
                     1, kChangeTitle))
                return;
            done = QStringLiteral(" has been modified.");
            notDone = QStringLiteral(" could not be modified.");
        } else {
            if (!DuplicateQuestions(keys, description, index))
                return;
            if (!Ask(QStringLiteral("Are you sure you want to change the hotkey for macro ") + Quoted(oldName)
                         + QLatin1Char('?'),
                     1, kChangeTitle))
                return;
            done = QStringLiteral(" has been saved.");
            notDone = QStringLiteral(" has not been saved.");
        }
        stored = edited;
        if (keysChanged || nameChanged) {
            m_view.setLists(KeysOfTable(), DescriptionsOfTable());
            m_view.setListIndex(index);
        }
        m_saved = WriteTable();
        m_view.setStatus(QStringLiteral("Hotkey ") + n + (m_saved ? done : notDone));
    }
    if (m_saved)
        t.HotkeysDirty = false;
}

void HotkeyEditor::cmdRemove_Click()
{
    HotkeyTable &t = table();
    if (t.HotkeyCount == 0) {
        shell::MsgBoxOT(QStringLiteral("No hotkeys to remove."), 0, QStringLiteral("Delete Hotkey"));
        return;
    }
    if (m_newEntry) {  // an unsaved new macro: nothing of the table goes
        LoadHotkeys();
        return;
    }
    if (!Ask(QStringLiteral("Are you sure you want to delete this hotkey?"), 1,
             QStringLiteral("Delete ") + Quoted(Label())))
        return;
    const int index = std::clamp(t.CurrentHotkeyIndex, 0, t.HotkeyCount - 1);
    const int countBefore = t.HotkeyCount;
    const Hotkey removed = t.Hotkeys[size_t(index)];
    for (int i = index; i < t.HotkeyCount - 1; ++i)
        t.Hotkeys[size_t(i)] = t.Hotkeys[size_t(i + 1)];
    t.Hotkeys[size_t(t.HotkeyCount - 1)] = Hotkey();
    t.HotkeyCount -= 1;
    if (t.CurrentHotkeyIndex >= t.HotkeyCount)
        t.CurrentHotkeyIndex = t.HotkeyCount - 1;
    const bool written = WriteTable();
    if (!written && countBefore == 1) {  // the only macro stays, as the file still has it
        t.Hotkeys[0] = removed;
        t.HotkeyCount = 1;
        t.CurrentHotkeyIndex = 0;
        UpdateHookPlan();
    }
    LoadHotkeys();
    if (written) {
        m_view.setStatus(QStringLiteral("Hotkey ") + Number(index) + QStringLiteral(" has been removed."));
    } else {
        m_view.setStatus(QStringLiteral("Hotkey ") + Number(index) + QStringLiteral(" could not be removed."));
        m_fileBehind = countBefore != 1;
    }
}

void HotkeyEditor::cmdNew_Click()
{
    if (table().HotkeyCount >= kMaxHotkeys) {
        shell::MsgBoxOT(LimitMessage(), 0, QStringLiteral("New Macro"));
        return;
    }
    if (!SaveHKChanges())
        return;
    shell::MsgBoxOT(QStringLiteral("Would you like to record a new macro (Yes) or create a blank macro (No)?"), 2,
                    QStringLiteral("New Macro"));
    if (Answer() == shell::MsgCancel)
        return;
    if (Answer() == shell::MsgYes)
        RecordNewMacro();
    else
        Blank_Macro();
}

void HotkeyEditor::Blank_Macro()
{
    HotkeyTable &t = table();
    m_view.showNewEntry(true);
    m_newEntry = true;
    m_view.setCode(QString());
    m_view.colourErrorLines({});
    m_view.setEnableChecked(true);
    t.CurrentHotkeyIndex = t.HotkeyCount;
    m_shown = t.CurrentHotkeyIndex;
    m_view.setNumberLabel(QStringLiteral("Hotkey ") + Number(t.HotkeyCount));
    m_view.setStatus(QStringLiteral("Create new hotkey."));
    m_view.setNavigationEnabled(false);
    t.HotkeysDirty = false;
}

void HotkeyEditor::RecordNewMacro()
{
    if (!m_links.startRecording)
        return;
    m_view.setRecordingHidden(true);
    if (!m_links.startRecording())
        m_view.setRecordingHidden(false);
}

void HotkeyEditor::NewRecordedMacro(const QString &code)
{
    if (table().HotkeyCount >= kMaxHotkeys) {
        shell::MsgBoxOT(LimitMessage(), 0, QStringLiteral("New Macro"));
        return;
    }
    Blank_Macro();
    m_view.setCode(code);
    QString tidied = code;
    HotkeyStatus(tidied);
    m_view.colourErrorLines(UntidiedLines(code, ErrorLines()));
    table().HotkeysDirty = !NoActions(code);
}

void HotkeyEditor::cmdRun_Click()
{
    HotkeyTable &t = table();
    const bool running = m_links.running && m_links.running();
    if (m_view.runCaption() == kStopCaption) {
        if (running && m_links.stop)
            m_links.stop();
        m_view.setRunCaption(kRunCaption, kEditorRunTip);
        return;
    }
    if (running) {
        shell::MsgBoxOT(QStringLiteral("A macro is already running"), 0, kRunTitle);
        return;
    }
    if (m_newEntry || t.CurrentHotkeyIndex >= t.HotkeyCount) {
        if (!t.HotkeysDirty && NoActions(m_view.code())) {
            shell::MsgBoxOT(QStringLiteral("There are no actions to run."), 0, kRunTitle);
            return;
        }
        while (m_newEntry) {
            if (t.HotkeysDirty || !NoActions(m_view.code())) {
                t.HotkeysDirty = true;
                SaveHKChanges();
            }
            if (!m_newEntry)
                break;
            if (Ask(QStringLiteral("This macro must be saved before running. Quit?"), 1, kRunTitle))
                return;
        }
    }
    const int index = t.CurrentHotkeyIndex;
    if (index < 0 || index >= t.HotkeyCount) {
        shell::MsgBoxOT(QStringLiteral("Select a macro to run."), 0, kRunTitle);
        return;
    }
    if (!m_view.enableChecked()) {
        shell::MsgBoxOT(QStringLiteral("This macro is disabled. Enable it?"), 2, kRunTitle);
        if (Answer() == shell::MsgCancel)
            return;
        if (Answer() == shell::MsgYes)
            m_view.setEnableChecked(true);
        if (Answer() == shell::MsgYes && !t.HotkeysDirty) {
            t.Hotkeys[size_t(index)].Active = true;
            WriteTable();
        }
    }
    if (!SaveHKChanges())
        return;
    QString tidied = m_view.code();
    if (!HotkeyStatus(tidied).isEmpty()) {
        m_view.colourErrorLines(UntidiedLines(m_view.code(), ErrorLines()));
        shell::MsgBoxOT(QStringLiteral("There were errors found in the code. View the errors instead?"), 2,
                        QStringLiteral("Save ") + Quoted(t.Hotkeys[size_t(index)].Description));
        if (Answer() == shell::MsgCancel) {
            m_view.setStatus(kErrorsFound);
            return;
        }
        if (Answer() == shell::MsgYes) {
            mnuFormatCheckCode_Click();
            return;
        }
    }
    double wait = 0;
    bool hide = false;
    for (;;) {
        if (!m_view.askRunOptions(wait, hide))
            return;
        if (wait <= kMaxRunDelaySeconds)
            break;
        shell::MsgBoxOT(QStringLiteral("You can only wait 3600 secs before running a macro. Use the [WAIT Secs] "
                                       "command for wait times longer"),
                        0, kRunTitle);
    }
    // The popup serves events: a hotkey may have started a macro meanwhile.
    if (m_links.running && m_links.running()) {
        shell::MsgBoxOT(QStringLiteral("A macro is already running"), 0, kRunTitle);
        return;
    }
    m_view.prepareRun(hide);
    const auto restore = [this] {
        m_view.setRunCaption(kRunCaption, kEditorRunTip);
        m_view.finishRun();
    };
    QString result;
    try {
        shell::Delay(std::max(0.0, wait));
        if (m_links.run) {
            m_view.setRunCaption(kStopCaption, kEditorStopTip);
            result = m_links.run(index + 1);
        }
    } catch (...) {
        restore();
        throw;
    }
    restore();
    if (!result.isEmpty())
        shell::MsgBoxOT(result, 0, QStringLiteral("Error Status"));
}

void HotkeyEditor::cmdBack_Click()
{
    const HotkeyTable &t = table();
    if (t.HotkeyCount == 0 || t.CurrentHotkeyIndex <= 0)
        return;
    Move2Hotkey(t.CurrentHotkeyIndex - 1);
}

void HotkeyEditor::cmdForward_Click()
{
    const HotkeyTable &t = table();
    if (t.HotkeyCount == 0 || t.CurrentHotkeyIndex >= t.HotkeyCount - 1)
        return;
    Move2Hotkey(t.CurrentHotkeyIndex + 1);
}

void HotkeyEditor::Move2Hotkey(int row)
{
    HotkeyTable &t = table();
    if (row < 0 || row >= t.HotkeyCount)
        return;
    if (row == t.CurrentHotkeyIndex && !t.HotkeysDirty) {
        m_view.setListIndex(row);
        return;
    }
    if (!SaveHKChanges()) {
        // Stay: the combos show the macro still being edited.
        const QString keys = m_view.keysText();
        m_view.setListIndex(t.CurrentHotkeyIndex);
        m_view.setKeysText(keys);
        return;
    }
    t.CurrentHotkeyIndex = row;
    RefreshHotkey();
}

void HotkeyEditor::chkHotkeyEnable_Click() { table().HotkeysDirty = true; }

void HotkeyEditor::fieldsEdited() { table().HotkeysDirty = true; }

void HotkeyEditor::mnuFormatCheckCode_Click()
{
    const HotkeyTable &t = table();
    const QString code = m_view.code();
    QString tidied = code;
    const QString report = HotkeyStatus(tidied);
    const QList<int> errorLines = ErrorLines();
    m_view.colourErrorLines(UntidiedLines(code, errorLines));
    const QString n = QString::number(std::max(0, t.CurrentHotkeyIndex) + 1);
    if (errorLines.size() == 1)
        m_view.setStatus(QStringLiteral("Hotkey ") + n + QStringLiteral(" has 1 line with an error."));
    else if (!errorLines.isEmpty())
        m_view.setStatus(QStringLiteral("Hotkey %1 has %2 lines with errors.").arg(n).arg(errorLines.size()));
    else
        m_view.setStatus(QStringLiteral("Hotkey ") + n + QStringLiteral(" has no errors."));
    if (report.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No errors were found in the code"), 0, QStringLiteral("Check Code Errors"));
        return;
    }
    const QString text = CheckCodeReport(Label(), report, tidied);
    // The numbered macro closes the report: its line k is this many lines further down.
    const int numberedFrom = int(text.left(text.size() - AddNumbers(tidied).size() - 2).count(macro::kCrLf));
    QList<int> red;
    for (const int line : errorLines)
        red << numberedFrom + line;
    m_view.showReport(text, red);
}

void HotkeyEditor::mnuFormatCode_Click()
{
    const QString code = m_view.code();
    QString tidied = code;
    const QString report = HotkeyStatus(tidied);
    m_view.colourErrorLines(UntidiedLines(code, ErrorLines()));
    bool indent = false;
    if (!report.isEmpty()) {
        shell::MsgBoxOT(report + macro::kCrLf + macro::kCrLf + QStringLiteral("Format the code?"), 1,
                        QStringLiteral("Format Code"));
        indent = Answer() != shell::MsgNo;
    } else {
        indent = Ask(QStringLiteral("Format the code?"), 1, QStringLiteral("Format Code"));
    }
    if (!indent)
        return;
    IndentActions(tidied);
    if (tidied == code)
        return;
    m_view.setCode(tidied);
    QString check = tidied;
    HotkeyStatus(check);
    m_view.colourErrorLines(UntidiedLines(tidied, ErrorLines()));
    table().HotkeysDirty = true;
}

void HotkeyEditor::mnuFileNew_Click()
{
    if (!SaveHKChanges())
        return;
    HotkeyTable &t = table();
    const QString previous = t.HotkeysFileName;
    const FileStamp previousStamp = m_stamp;
    t.HotkeysFileName.clear();
    if (!MakeNewFile()) {
        t.HotkeysFileName = previous;
        m_stamp = previousStamp;
        return;
    }
    const QString fresh = t.HotkeysFileName;
    const int count = t.HotkeyCount;
    t.HotkeyCount = 0;
    t.CurrentHotkeyIndex = -1;
    if (!UpdateHotkeyWordsFile()) {
        t.HotkeyCount = count;
        t.HotkeysFileName = previous;
        m_stamp = previousStamp;
        shell::MsgBoxOT(QStringLiteral("New file not created."), 0, QStringLiteral("New File"));
        return;
    }
    for (int i = 0; i < count; ++i)
        t.Hotkeys[size_t(i)] = Hotkey();
    t.HotkeysFileName = fresh;
    TakeStamp();
    m_fileBehind = false;
    UpdateHookPlan();
    LoadHotkeys();
    m_view.setStatus(QStringLiteral("Created ") + shell::CondensedPath(fresh, kStatusPathChars));
}

void HotkeyEditor::LoadFile(const QString &path)
{
    HotkeyTable &t = table();
    const QString previous = t.HotkeysFileName;
    t.HotkeysFileName = path;
    const QString result = GetHotKeys();
    if (!result.isEmpty())
        shell::MsgBoxOT(result, 0, QStringLiteral("File Error"));
    if (result == kNotAHotkeysFile) {
        t.HotkeysFileName = previous;
        return;
    }
    t.CurrentHotkeyIndex = t.HotkeyCount > 0 ? 0 : -1;
    m_fileBehind = false;
    TakeStamp();
    UpdateHookPlan();
    LoadHotkeys();
    t.HotkeysDirty = false;
    if (result.isEmpty())
        m_view.setStatus(QStringLiteral("Loaded ") + shell::CondensedPath(path, kStatusPathChars));
}

void HotkeyEditor::mnuFileOpen_Click()
{
    if (!SaveHKChanges())
        return;
    QString path;
    if (!m_view.askOpenFile(QStringLiteral("Open a Hotkeys File"), kHotkeyFileFilter, path) || path.isEmpty())
        return;
    if (!path.toLower().endsWith(QStringLiteral(".txt"))) {
        shell::MsgBoxOT(QStringLiteral("The Hotkeys file must have the .txt file extension"), 0,
                        QStringLiteral("Open Hotkeys File"));
        return;
    }
    LoadFile(path);
}

void HotkeyEditor::mnuFileMRU_Click(int item)
{
    if (item < 0 || item >= m_history.size())
        return;
    QString path = m_history[item];
    if (!path.contains(QLatin1Char('/')))
        path = QDir::current().filePath(path);
    if (!shell::FileExists(path)) {
        shell::MsgBoxOT(QStringLiteral("Warning file ") + path + QStringLiteral(" has been moved. Can't load."), 0,
                        QStringLiteral("File Missing"));
        return;
    }
    if (path == table().HotkeysFileName && !table().HotkeysDirty) {
        shell::MsgBoxOT(QStringLiteral("This file is already open."), 0, QStringLiteral("Open File"));
        return;
    }
    if (!path.toLower().endsWith(QStringLiteral(".txt"))) {
        const QString base = QFileInfo(path).path() + QLatin1Char('/') + QFileInfo(path).completeBaseName();
        if (shell::FileExists(base + QStringLiteral(".txt"))) {
            if (!Ask(QStringLiteral("File ") + base + QStringLiteral(".txt exists. Load it instead?"), 1,
                     QStringLiteral("Load File")))
                return;
            path = base + QStringLiteral(".txt");
        } else {
            shell::MsgBoxOT(QStringLiteral("Can only load .txt files."), 0, QStringLiteral("Load File Error"));
            return;
        }
    }
    if (!SaveHKChanges())
        return;
    LoadFile(path);
}

void HotkeyEditor::mnuFileSaveAs_Click(bool asDefault)
{
    HotkeyTable &t = table();
    QString path;
    for (;;) {
        if (!m_view.askSaveFile(QStringLiteral("Save Hotkeys File As.."), kHotkeyFileFilter, path) || path.isEmpty())
            return;
        if (!path.toLower().endsWith(QStringLiteral(".txt")))
            path += QStringLiteral(".txt");
        if (!QFileInfo::exists(path) || path == t.HotkeysFileName)
            break;
        shell::MsgBoxOT(QStringLiteral("Hotkey file ") + path + QStringLiteral(" already exists. Overwrite it?"), 2,
                        QStringLiteral("Save Hotkey File"));
        if (Answer() == shell::MsgCancel)
            return;
        if (Answer() == shell::MsgYes)
            break;
    }
    const QString previous = t.HotkeysFileName;
    const FileStamp previousStamp = m_stamp;
    t.HotkeysFileName = path;
    m_stamp = FileStamp();
    if (!UpdateHotkeyWordsFile()) {
        shell::MsgBoxOT(kUnableToSave + macro::kCrLf + macro::kCrLf + WriteFailureReason(path), 0,
                        QStringLiteral("Save Hotkey File"));
        t.HotkeysFileName = previous;
        m_stamp = previousStamp;
        return;
    }
    m_fileBehind = false;
    TakeStamp();
    m_history = UpdateFileHistory(m_history, path);
    m_view.setHistory(m_history);
    ShowCaption();
    if (asDefault) {
        shell::settings().HotkeysFileOpt = path;
        shell::WriteFileOpts();
    }
    m_view.setStatus(QStringLiteral("Saved As ") + shell::CondensedPath(path, kStatusPathChars));
}

void HotkeyEditor::mnuFileSort_Click()
{
    HotkeyTable &t = table();
    const QString title = QStringLiteral("Sort Hotkeys");
    if (t.HotkeyCount == 0) {
        shell::MsgBoxOT(QStringLiteral("No Hotkeys to sort."), 0, title);
        return;
    }
    if (!Ask(QStringLiteral("Sort the Hotkeys by description?"), 1, title))
        return;
    if (!SaveHKChanges())
        return;
    bool warned = false;
    const QString statement = QStringLiteral("[HOTKEY ");
    for (int i = 0; i < t.HotkeyCount; ++i) {
        const QString &code = t.Hotkeys[size_t(i)].Code;
        for (qsizetype at = code.indexOf(statement, 0, Qt::CaseInsensitive); at >= 0;
             at = code.indexOf(statement, at + 1, Qt::CaseInsensitive)) {
            const qsizetype close = code.indexOf(QLatin1Char(']'), at);
            const qsizetype lineEnd = code.indexOf(QLatin1Char('\r'), at);
            if (close < 0 || (lineEnd >= 0 && lineEnd < close)) {
                shell::MsgBoxOT(QStringLiteral("Cannot sort the Hotkeys because of an invalid [HOTKEY n] statement."),
                                0, title);
                return;
            }
            const QString operand = code.mid(at + statement.size(), close - at - statement.size()).trimmed();
            if (operand.startsWith(QLatin1Char('"')))
                continue;  // by name: sorting does not change it
            bool isNumber = false;
            const int number = operand.toInt(&isNumber);
            if (isNumber) {
                if (number < 1 || number > t.HotkeyCount)
                    shell::MsgBoxOT(
                        QStringLiteral("Cannot sort the Hotkeys because of an invalid [HOTKEY n] number reference."), 0,
                        title);
                else
                    shell::MsgBoxOT(QStringLiteral("Cannot sort the Hotkeys because a [HOTKEY n] is referenced by number."),
                                    0, title);
                return;
            }
            if (!warned) {
                if (!Ask(QStringLiteral("WARNING a [HOTKEY n] statement references a hotkey with a variable of unknown "
                                        "type. Sorting the Hotkeys will change their reference numbers. Continue?"),
                         1, title))
                    return;
                warned = true;
            }
        }
    }
    const QString current = t.CurrentHotkeyIndex >= 0 && t.CurrentHotkeyIndex < t.HotkeyCount
                                ? t.Hotkeys[size_t(t.CurrentHotkeyIndex)].Description
                                : QString();
    SortHotkeys(current);
    m_fileBehind = true;
    UpdateHookPlan();
    LoadHotkeys();
    shell::MsgBoxOT(QStringLiteral("Use \"Save As\" to make the changes permanent"), 0, title);
}

int HotkeyEditor::insertIndent(int caret, const QString &pasted) const
{
    return GetActionIndent(m_view.code(), caret, pasted);
}

void HotkeyEditor::TakeStamp()
{
    const QString name = table().HotkeysFileName;
    m_stamp = FileStamp();
    if (name.isEmpty())
        return;
    const QFileInfo info(name);
    m_stamp.exists = info.exists();
    if (!m_stamp.exists)
        return;
    m_stamp.size = info.size();
    m_stamp.modified = info.lastModified();
    QFile file(name);
    if (file.open(QIODevice::ReadOnly))
        m_stamp.hash = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1);
}

bool HotkeyEditor::ChangedOnDisk()
{
    const QString name = table().HotkeysFileName;
    if (name.isEmpty() || !m_stamp.exists)
        return false;
    const QFileInfo info(name);
    if (!info.exists())
        return false;  // gone: the next save makes it again
    if (info.size() == m_stamp.size && info.lastModified() == m_stamp.modified)
        return false;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    // Touched but the same, or written by this program (the hotkey list's Apply).
    if (QCryptographicHash::hash(bytes, QCryptographicHash::Sha1) == m_stamp.hash || bytes == FormatHotkeysFile()) {
        TakeStamp();
        return false;
    }
    return true;
}

void HotkeyEditor::CheckFileOnDisk()
{
    if (m_askingReload || !ChangedOnDisk())
        return;
    m_askingReload = true;
    HotkeyTable &t = table();
    const QString name = t.HotkeysFileName;
    shell::MsgBoxOT(QStringLiteral("The Hotkeys file ") + name
                        + QStringLiteral(" has been changed by another program.\r\n\r\n"
                                         "Load it again (Yes)? Changes made here and not saved are then lost.\r\n"
                                         "Keep the macros shown here (No)? The next save writes them over the file."),
                    1, QStringLiteral("Hotkeys File Changed"));
    const bool reload = Answer() == shell::MsgYes;
    m_askingReload = false;
    if (!reload) {
        TakeStamp();  // asked once for this change
        m_fileBehind = true;
        return;
    }
    const int current = t.CurrentHotkeyIndex;
    LoadFile(name);
    if (current >= 0 && current < t.HotkeyCount) {
        t.CurrentHotkeyIndex = current;
        RefreshHotkey();
    }
}

} // namespace hotkeys
