#include "hotkeys/hotkey_list.h"

#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/input_hooks.h"
#include "macro/macro_text.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <algorithm>

namespace hotkeys {

namespace {

constexpr int kCaptionPathChars = 60;  // CondensedPath width in the Apply messages
const QString kRunTitle = QStringLiteral("Run Macro");
const QString kSaveTitle = QStringLiteral("Save Hotkeys");

bool HotkeysOn() { return shell::settings().HotkeysEnabledOpt == QLatin1String("1"); }

} // namespace

int KeyColumnWidth(const HotkeyTable &table)
{
    int longest = 0;
    for (int i = 0; i < table.HotkeyCount; ++i)
        longest = std::max(longest, int(table.Hotkeys[size_t(i)].Keys.size()));
    return std::max(longest + kListKeyGap, kListMinKeyWidth);
}

QString HotkeyListRow(int number, const Hotkey &hotkey, int keyWidth, int descriptionWidth)
{
    QString description = hotkey.Description;
    if (description.size() > descriptionWidth)
        description = description.left(std::max(0, descriptionWidth - 2)) + QStringLiteral("..");
    return (QString::number(number) + QLatin1Char(')')).leftJustified(kListNumberWidth)
           + hotkey.Keys.leftJustified(keyWidth) + description;
}

QString HotkeyListCaption(const QString &fileName)
{
    return QStringLiteral("Hotkeys : ") + fileName.mid(fileName.lastIndexOf(QLatin1Char('/')) + 1);
}

HotkeyList::HotkeyList(HotkeyListView &view, HotkeyListLinks links) : m_view(view), m_links(std::move(links)) {}

void HotkeyList::Form_Load()
{
    ++shell::app().ChildFormDepth;
    const HotkeyTable &t = table();
    const int keyWidth = KeyColumnWidth(t);
    m_view.clearRows();
    for (int number = 1; number <= t.HotkeyCount; ++number)
        m_view.addRow(HotkeyListRow(number, t.at(number), keyWidth), t.at(number).Active);
    m_view.setHotkeysEnabledBox(HotkeysOn());
    m_view.setRunCaption(kRunCaption, kRunTip);
    m_view.setRunEnabled(!running());
    m_view.setCaption(HotkeyListCaption(t.HotkeysFileName));
}

void HotkeyList::Form_Unload()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void HotkeyList::chkHotkeyEnable_MouseDown()
{
    shell::settings().HotkeysEnabledOpt = HotkeysOn() ? QStringLiteral("0") : QStringLiteral("1");
    UpdateHookPlan();
    if (m_links.hotkeysEnabledShown)
        m_links.hotkeysEnabledShown();
    shell::app().OptionsDirty = true;
    m_view.setHotkeysEnabledBox(HotkeysOn());
}

void HotkeyList::cmdAll_Click()
{
    for (int row = 0; row < m_view.rowCount(); ++row)
        if (!m_view.isChecked(row))
            m_view.setChecked(row, true);
}

void HotkeyList::cmdClear_Click()
{
    for (int row = 0; row < m_view.rowCount(); ++row)
        if (m_view.isChecked(row))
            m_view.setChecked(row, false);
}

void HotkeyList::cmdReverse_Click()
{
    for (int row = 0; row < m_view.rowCount(); ++row)
        m_view.setChecked(row, !m_view.isChecked(row));
}

void HotkeyList::cmdSave_Click()
{
    HotkeyTable &t = table();
    const int rows = std::min(m_view.rowCount(), t.HotkeyCount);
    int changes = 0;
    for (int row = 0; row < rows; ++row) {
        Hotkey &hotkey = t.at(row + 1);
        const bool checked = m_view.isChecked(row);
        if (hotkey.Active != checked) {
            hotkey.Active = checked;
            ++changes;
        }
    }
    if (changes == 0) {
        shell::MsgBoxOT(QStringLiteral("No changes to apply"), 0, kSaveTitle);
        return;
    }
    // Changes made elsewhere and not saved yet (an open editor's) stay marked unsaved:
    // writing the flags does not save them.
    const bool unsavedBefore = t.HotkeysDirty;
    t.HotkeysDirty = true;
    UpdateHookPlan();
    const QString where = shell::CondensedPath(t.HotkeysFileName, kCaptionPathChars);
    const bool saved = UpdateHotkeyWordsFile();
    t.HotkeysDirty = t.HotkeysDirty || unsavedBefore;
    if (saved)
        shell::MsgBoxOT(QStringLiteral("Changes saved to file ") + where, 0, kSaveTitle);
    else
        shell::MsgBoxOT(QStringLiteral("Error saving changes to file ") + where, 0, kSaveTitle);
}

void HotkeyList::cmdRun_Click()
{
    if (m_view.runCaption() == kStopCaption && running()) {
        if (m_links.stop)
            m_links.stop();
        m_view.setRunCaption(kRunCaption, kRunTip);
        return;
    }
    const int number = m_view.selectedRow() + 1;
    if (number < 1 || number > table().HotkeyCount) {
        shell::MsgBoxOT(QStringLiteral("Select a macro to run"), 0, kRunTitle);
        return;
    }
    if (!checkMacroToRun(number))
        return;
    double wait = 0;
    bool minimise = false;
    if (!m_view.askRunOptions(wait, minimise))
        return;
    if (wait > kMaxRunDelaySeconds) {
        shell::MsgBoxOT(QStringLiteral("You can only wait 3600 secs before running a macro. Use the [WAIT Secs] "
                                       "command for wait times longer"),
                        0, kRunTitle);
        return;
    }
    // The popup serves events: a hotkey may have started a macro meanwhile.
    if (running()) {
        shell::MsgBoxOT(QStringLiteral("A macro is already running"), 0, kRunTitle);
        return;
    }
    runMacro(number, std::max(0.0, wait), minimise);
}

bool HotkeyList::checkMacroToRun(int number)
{
    HotkeyTable &t = table();
    Hotkey &hotkey = t.at(number);
    if (hotkey.Code.isEmpty() || hotkey.Code == macro::kCrLf) {
        shell::MsgBoxOT(QStringLiteral("No actions in this macro to run"), 0, kRunTitle);
        return false;
    }
    if (!hotkey.Active) {
        shell::MsgBoxOT(QStringLiteral("This macro is disabled. Enable it?"), 2, kRunTitle);
        if (shell::app().MsgResult == shell::MsgCancel)
            return false;
        if (shell::app().MsgResult == shell::MsgYes) {
            hotkey.Active = true;
            t.HotkeysDirty = true;
            m_view.setChecked(number - 1, true);
            UpdateHookPlan();
        }
    }
    QString tidied = hotkey.Code;
    const QString report = HotkeyStatus(tidied);
    if (report.isEmpty())
        return true;
    const QString title = QStringLiteral("Run Hotkey ") + hotkey.Keys + QLatin1Char(' ') + hotkey.Description;
    shell::MsgBoxOT(QStringLiteral("There were errors found in the code. Edit this macro instead?"), 2, title);
    const int answer = shell::app().MsgResult;
    if (answer == shell::MsgCancel)
        return false;
    if (answer == shell::MsgYes && m_links.editorAvailable) {
        cmdEdit_Click();
        return false;
    }
    // No, or Yes with no editor to go to: the checker's report, modal as the list is.
    if (platform::TextWindow *window = platform::services().textWindow)
        window->showModal(title, CheckCodeReport(hotkey.Description, report, tidied));
    return false;
}

void HotkeyList::runMacro(int number, double wait, bool minimise)
{
    m_view.prepareRun(minimise);
    // The button reads Run again and the window comes back also after a failed run.
    const auto restore = [this] {
        m_view.setRunCaption(kRunCaption, kRunTip);
        m_view.finishRun();
    };
    QString result;
    try {
        shell::Delay(wait);
        if (m_links.run) {
            m_view.setRunCaption(kStopCaption, kStopTip);
            result = m_links.run(number);
        }
    } catch (...) {
        restore();
        throw;
    }
    restore();
    if (!result.isEmpty())
        shell::MsgBoxOT(result, 0, QStringLiteral("Error Status"));
}

void HotkeyList::cmdEdit_Click()
{
    if (!m_links.editorAvailable)
        return;
    HotkeyTable &t = table();
    t.CurrentHotkeyIndex = t.HotkeyCount == 0 ? -1 : m_view.selectedRow();
    m_editRequested = true;
    m_view.closeForEditor();
}

} // namespace hotkeys
