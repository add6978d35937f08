#include "cli/check_command.h"

#include "cli/macro_selection.h"
#include "cli/run_command.h"
#include "hotkeys/formatter.h"
#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "macro/tidyup.h"
#include "platform/services.h"
#include "platform/x11/x11_mouse_sender.h"

#include <optional>

namespace cli {

namespace {

const QString kCrLf = QStringLiteral("\r\n");

struct MacroOptions {
    MacroChoice choice;
    bool all = false;    // check: every macro
    bool write = false;  // format: store the result
    bool help = false;
};

// "" when the options make sense; allowAll and allowWrite say which flags the command has.
QString parse(const QStringList &args, MacroOptions &o, bool allowAll, bool allowWrite)
{
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            o.help = true;
            return {};
        }
        if (allowAll && arg == QLatin1String("--all")) {
            o.all = true;
            continue;
        }
        if (allowWrite && arg == QLatin1String("--write")) {
            o.write = true;
            continue;
        }
        QString problem;
        if (!TakeMacroOption(args, i, o.choice, problem))
            return QStringLiteral("unknown argument '%1'").arg(arg);
        if (!problem.isEmpty())
            return problem;
    }
    if (o.choice.hotkeysFile.isEmpty())
        return QStringLiteral("--hotkeys FILE is required");
    if (int(o.choice.hasName) + int(o.choice.number.has_value()) + int(o.all) != 1)
        return allowAll ? QStringLiteral("give exactly one of --macro NAME, --number N and --all")
                        : QStringLiteral("give exactly one of --macro NAME and --number N");
    return {};
}

int usage(const QString &problem, const QString &text, QTextStream &err)
{
    err << "sonamark-cli: " << problem << "\n\n" << text;
    return kExitUsage;
}

// The checker measures mouse positions against the screen of the display when there is
// one, and against its default width when not.
class DisplayScreen {
public:
    DisplayScreen()
    {
        platform::Services set = platform::services();
        if (m_screen.available())
            set.mouse = &m_screen;
        m_previous = platform::install(set);
    }
    ~DisplayScreen() { platform::install(m_previous); }
    DisplayScreen(const DisplayScreen &) = delete;
    DisplayScreen &operator=(const DisplayScreen &) = delete;

private:
    platform::x11::X11MouseSender m_screen;
    platform::Services m_previous;
};

} // namespace

QString CheckUsageText()
{
    return QStringLiteral(
        "Usage: sonamark-cli check --hotkeys FILE (--macro NAME | --number N | --all)\n"
        "\n"
        "Checks macros as the editor does before they run. With --macro or --number the\n"
        "error report is printed as it stands (nothing when the macro is clean); with --all\n"
        "the Check Code report of each macro that has errors, one after another.\n"
        "Mouse positions are checked against the width of the X display's screen, or\n"
        "against 1920 pixels when there is no display.\n"
        "Exit status: 0 no errors, 1 errors found, 2 bad arguments or file.\n");
}

QString FormatUsageText()
{
    return QStringLiteral(
        "Usage: sonamark-cli format --hotkeys FILE (--macro NAME | --number N) [--write]\n"
        "\n"
        "Prints the macro tidied and indented as Format Code makes it; --write stores it\n"
        "back into the Hotkeys file (atomically).\n"
        "Exit status: 0 unchanged, 1 changed, 2 bad arguments, file or write.\n");
}

int RunCheck(const QStringList &args, QTextStream &out, QTextStream &err)
{
    MacroOptions o;
    const QString problem = parse(args, o, true, false);
    if (o.help) {
        out << CheckUsageText();
        return kExitClean;
    }
    if (!problem.isEmpty())
        return usage(problem, CheckUsageText(), err);
    if (!LoadHotkeysFile(o.choice.hotkeysFile, err))
        return kExitUsage;
    const DisplayScreen screen;
    const hotkeys::HotkeyTable &table = hotkeys::table();
    if (!o.all) {
        const int number = SelectMacro(o.choice.hotkeysFile, o.choice.macroName, o.choice.number, err);
        if (number == 0)
            return kExitUsage;
        QString code = table.at(number).Code;
        const QString report = hotkeys::HotkeyStatus(code);
        if (!report.isEmpty())
            out << report << kCrLf;
        return report.isEmpty() ? kExitClean : kExitReported;
    }
    bool errors = false;
    for (int n = 1; n <= table.HotkeyCount; ++n) {
        QString code = table.at(n).Code;
        const QString report = hotkeys::HotkeyStatus(code);
        if (report.isEmpty())
            continue;
        errors = true;
        out << hotkeys::CheckCodeReport(table.at(n).Description, report, code);
    }
    return errors ? kExitReported : kExitClean;
}

int RunFormat(const QStringList &args, QTextStream &out, QTextStream &err)
{
    MacroOptions o;
    const QString problem = parse(args, o, false, true);
    if (o.help) {
        out << FormatUsageText();
        return kExitClean;
    }
    if (!problem.isEmpty())
        return usage(problem, FormatUsageText(), err);
    if (!LoadHotkeysFile(o.choice.hotkeysFile, err))
        return kExitUsage;
    const int number = SelectMacro(o.choice.hotkeysFile, o.choice.macroName, o.choice.number, err);
    if (number == 0)
        return kExitUsage;
    hotkeys::Hotkey &hotkey = hotkeys::table().at(number);
    QString code = hotkey.Code;
    macro::TidyupCode(code);
    hotkeys::IndentActions(code);
    while (code.endsWith(kCrLf))
        code.chop(2);
    out << code << kCrLf;
    QString stored = hotkey.Code;
    while (stored.endsWith(kCrLf))
        stored.chop(2);
    const bool changed = code != stored;
    if (changed && o.write) {
        hotkey.Code = code;
        if (!hotkeys::UpdateHotkeyWordsFile()) {
            err << "sonamark-cli: " << o.choice.hotkeysFile << " could not be written" << Qt::endl;
            return kExitUsage;
        }
    }
    return changed ? kExitReported : kExitClean;
}

} // namespace cli
