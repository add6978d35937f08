#include "engine/composition.h"

#include "engine/run_hooks.h"
#include "engine/run_state.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"
#include "shell/failure_report.h"

#include <QLoggingCategory>
#include <cmath>
#include <map>
#include <vector>

Q_LOGGING_CATEGORY(lcComposition, "sonamark.engine.composition", QtWarningMsg)

namespace engine {

namespace {

const QLatin1String kHotkeyWord("[HOTKEY ");

bool beginsWithHotkey(const QString &text)
{
    return text.size() >= kHotkeyWord.size()
           && QStringView(text).left(kHotkeyWord.size()).compare(kHotkeyWord, Qt::CaseInsensitive) == 0;
}

// The lines of a macro as ParseMacroActions cuts them: "" or its message.
QString cutMacro(int macroIndex, macro::ActionList &lines)
{
    if (!macro::CutMacroLines(hotkeys::table().at(macroIndex).Code, lines))
        return QStringLiteral("No macro actions to parse");
    if (lines.isEmpty())
        return QStringLiteral("No macro lines to insert.");
    return {};
}

QString fatalAt(const QString &message, int line)
{
    return QStringLiteral("FATAL ERROR ") + message + QStringLiteral(" referenced in line ")
           + QString::number(line);
}

QString cannotFind(int line)
{
    return QStringLiteral("FATAL ERROR Cannot find macro referenced in line ") + QString::number(line);
}

} // namespace

QString ParseActions(int index)
{
    shell::Routine routine("(Module) modHotkeys::Function ParseActions");
    MacroRunState &s = runState();
    if (!macro::CutMacroLines(hotkeys::table().at(index).Code, s.Actions))
        return QStringLiteral("No actions to parse");
    return {};
}

QString GetAllActions()
{
    QString text;
    for (const macro::ActionLine &a : std::as_const(runState().Actions))
        text += a.Text + macro::kCrLf;
    return text;
}

bool IsHOTKEYcommand()
{
    for (const macro::ActionLine &a : std::as_const(runState().Actions))
        if (beginsWithHotkey(a.Text))
            return true;
    return false;
}

// Each expansion replaces line i by the included lines and scans again from line i.
// Lines before the scan position never change again, so they are moved to `done` as
// the scan passes them, and the lines still to scan are kept as a stack of ranges
// (the included macro on top of the rest of the list it was included into). This
// gives the same lines, line numbers and scan count as copying the tail of Actions
// at every inclusion, without the quadratic copying.
//
// A macro that comes back to itself (a range of it is still pending when it is included
// again) expands without end: what the scan did from the first inclusion of it to the
// second depends only on the macros' lines, so it does the same again and again, with no
// message on the way, until the scan limit is passed. The scan gives the limit's message
// at once when it sees that.
QString InsertHOTKEYcode()
{
    shell::Routine routine("(Module) modHotkeys::Function InsertHOTKEYcode");
    struct Range {
        const macro::ActionList *lines;
        qsizetype from;
        qsizetype to;
        int macroIndex;  // 0 for the list being composed
    };
    MacroRunState &s = runState();
    const macro::ActionList original = s.Actions;
    std::map<int, macro::ActionList> included;  // macro number -> its lines
    std::vector<Range> pending{{&original, 0, original.size(), 0}};
    macro::ActionList done;
    done.reserve(original.size());
    qint64 scanned = 0;
    const auto tooManyLines = [&] {
        s.Actions = done;
        return QStringLiteral("FATAL ERROR Too many lines of macro code");
    };

    while (!pending.empty()) {
        Range &range = pending.back();
        if (range.from >= range.to) {
            pending.pop_back();
            continue;
        }
        const macro::ActionLine &line = (*range.lines)[range.from];
        if (++scanned > kMaxCompositionLines)
            return tooManyLines();
        if (!beginsWithHotkey(line.Text)) {
            done << line;
            ++range.from;
            continue;
        }
        const int i = static_cast<int>(done.size()) + 1;
        const int macroIndex = MacroIndexOfText(line.Text);
        if (macroIndex == 0) {
            s.Actions = done;
            return cannotFind(i);
        }
        auto found = included.find(macroIndex);
        if (found == included.end()) {
            macro::ActionList lines;
            const QString message = cutMacro(macroIndex, lines);
            if (!message.isEmpty()) {
                s.Actions = done;
                return fatalAt(message, i);
            }
            found = included.emplace(macroIndex, std::move(lines)).first;
        }
        ++range.from;  // the [HOTKEY n] line itself is replaced
        for (const Range &open : pending)
            if (open.macroIndex == macroIndex)
                return tooManyLines();
        pending.push_back({&found->second, 0, found->second.size(), macroIndex});
    }
    s.Actions = done;
    qCDebug(lcComposition) << "composed" << done.size() << "lines," << scanned << "scanned";
    return {};
}

QString ReplaceIntoMacro(int line, int macroIndex)
{
    if (!beginsWithHotkey(runState().action(line).Text))
        return QStringLiteral("Hotkey not found");
    return ParseMacroActions(line, macroIndex);
}

QString ParseMacroActions(int line, int macroIndex)
{
    macro::ActionList MacroActions;
    const QString message = cutMacro(macroIndex, MacroActions);
    if (!message.isEmpty())
        return message;
    macro::ActionList &actions = runState().Actions;
    actions.removeAt(line - 1);
    for (qsizetype k = 0; k < MacroActions.size(); ++k)
        actions.insert(line - 1 + k, MacroActions[k]);
    return {};
}

int GetMacroIndex(int line) { return MacroIndexOfText(runState().action(line).Text); }

int MacroIndexOfText(const QString &text)
{
    const hotkeys::HotkeyTable &t = hotkeys::table();
    const int quote = macro::InStr(text, QStringLiteral("\""));
    if (quote == 0) {
        const int blank = macro::InStr(text, QStringLiteral(" "));
        if (blank == 0)
            return 0;
        const QString name = macro::Mid(text, blank + 1, macro::Len(text) - blank - 1);
        if (name.isEmpty())
            return 0;
        // Numbers are compared as read, before they become an index: a huge or negative
        // number names no macro.
        const auto index = [&t](double value) {
            value = std::trunc(value);
            return value >= 1 && value <= t.HotkeyCount ? static_cast<int>(value) : 0;
        };
        const double number = macro::Val1(name);
        if (std::trunc(number) != 0)
            return index(number);
        if (!macro::AllLetters(name, QString()).isEmpty())
            return 0;
        double value = 0;
        if (!NumberVariableValue(name, value))
            return 0;
        return index(value);
    }
    const int last = macro::Len(text);
    if (macro::CharAt(text, last - 1) != QLatin1Char('"'))
        return 0;
    const QString name = macro::Mid(text, quote + 1, last - 1 - quote - 1);
    for (int n = 1; n <= t.HotkeyCount; ++n) {
        const hotkeys::Hotkey &h = t.at(n);
        if (h.Keys.compare(name, Qt::CaseInsensitive) == 0
            || h.Description.compare(name, Qt::CaseInsensitive) == 0)
            return n;
    }
    return 0;
}

QString DoMACRO(int &line)
{
    const int macroIndex = GetMacroIndex(line);
    if (macroIndex == 0)
        return cannotFind(line);
    const QString message = ReplaceIntoMacro(line, macroIndex);
    if (!message.isEmpty())
        return fatalAt(message, line);
    MacroRunState &s = runState();
    s.NextLine = line;
    s.LastLine = s.ActionCount();
    return QStringLiteral("GoTo 1");
}

} // namespace engine
