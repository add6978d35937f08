#include "cli/run_command.h"

#include "cli/check_command.h"
#include "cli/macro_selection.h"
#include "cli/spell_command.h"

#include "engine/run_timer.h"
#include "hotkeys/hotkeys_table.h"
#include "platform/headless/headless_services.h"
#include "platform/linux/xclip_clipboard.h"
#include "reader/box_reader_text.h"
#include "reader/memory_text_box.h"
#include "reader/text_box.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"

#include <QScopeGuard>
#include <optional>

namespace cli {

namespace {

struct RunOptions {
    MacroChoice choice;
    std::deque<int> answers;
    bool showMessages = false;
};

std::optional<int> parseAnswer(const QString &word)
{
    const QString w = word.toLower();
    if (w == QLatin1String("yes"))
        return 1;
    if (w == QLatin1String("no"))
        return -1;
    if (w == QLatin1String("cancel"))
        return -2;
    if (w == QLatin1String("ok"))
        return -3;
    return std::nullopt;
}

// "" when the options are complete, otherwise what is wrong.
QString parseRunOptions(const QStringList &args, RunOptions &o)
{
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        if (arg == QLatin1String("--show-messages")) {
            o.showMessages = true;
            continue;
        }
        QString problem;
        if (TakeMacroOption(args, i, o.choice, problem)) {
            if (!problem.isEmpty())
                return problem;
            continue;
        }
        if (arg != QLatin1String("--answer"))
            return QStringLiteral("unknown argument '%1'").arg(arg);
        if (i + 1 >= args.size())
            return QStringLiteral("%1 needs a value").arg(arg);
        const QString value = args.at(++i);
        const std::optional<int> answer = parseAnswer(value);
        if (!answer)
            return QStringLiteral("--answer takes yes, no, cancel or ok, not '%1'").arg(value);
        o.answers.push_back(*answer);
    }
    if (o.choice.hotkeysFile.isEmpty())
        return QStringLiteral("--hotkeys FILE is required");
    if (o.choice.hasName == o.choice.number.has_value())
        return QStringLiteral("give exactly one of --macro NAME and --number N");
    return {};
}

int runMacro(const RunOptions &o, QTextStream &out, QTextStream &err)
{
    if (!LoadHotkeysFile(o.choice.hotkeysFile, err))
        return kExitUsage;
    const int number = SelectMacro(o.choice.hotkeysFile, o.choice.macroName, o.choice.number, err);
    if (number == 0)
        return kExitUsage;
    const hotkeys::HotkeyTable &table = hotkeys::table();
    if (!table.at(number).Active)
        err << "sonamark-cli: macro " << number << " \"" << table.at(number).Description
            << "\" is disabled; nothing runs" << Qt::endl;

    platform::headless::HeadlessServices services(err);
    services.messages.answers = o.answers;
    if (o.showMessages)
        services.messages.echo = &err;
    // The reader's text lives in memory: [LOADFILE], [SAVEFILE] and SONAMARKTEXT work on
    // it. The clipboard is the X clipboard when there is a display, else there is none.
    reader::MemoryTextBox box;
    reader::SetTextBox(&box);
    const auto noBox = qScopeGuard([] { reader::SetTextBox(nullptr); });
    reader::BoxReaderText readerText;
    platform::services().readerText = &readerText;
    platform::XclipClipboard xclip;
    platform::services().clipboard = platform::XclipClipboard::available() ? &xclip : nullptr;

    shell::app().PendingHotkey = number;
    shell::Guarded("(Form) frmSonamark::Sub RunTimer_Timer", [] { engine::RunTimer_Timer(); });

    for (const auto &shown : std::as_const(services.textWindow.shown)) {
        out << shown.text;
        if (!shown.text.endsWith(QLatin1String("\r\n")))
            out << "\r\n";
    }
    out.flush();
    if (services.errors.failures > 0)
        return kExitFailure;
    return services.textWindow.shown.isEmpty() ? kExitClean : kExitReported;
}

} // namespace

const QList<CliCommand> &CliCommands()
{
    static const QList<CliCommand> commands{
        {"run", "runs a macro of a Hotkeys file"},
        {"check", "checks macros and prints their error reports"},
        {"format", "prints a macro tidied and indented, or stores it back"},
        {"voices", "lists the installed voices"},
        {"speak", "speaks a text"},
        {"to-file", "reads a text file into a WAV or MP3 file"},
        {"batch", "reads documents into MP3 files beside them, several at once"},
        {"find", "lists the files below a folder that match a pattern"},
        {"spell", "lists the words of a text that the dictionary does not know"},
        {"doctor", "checks what Sonamark needs on this machine and how to fix what is missing"},
    };
    return commands;
}

QString UsageText()
{
    QString text = QStringLiteral("Usage: sonamark-cli COMMAND ...   (sonamark-cli COMMAND --help for each)\n");
    for (const CliCommand &c : CliCommands())
        text += QStringLiteral("  %1%2\n").arg(QLatin1String(c.name), -10).arg(QLatin1String(c.summary));
    text += QStringLiteral(
        "\n"
        "sonamark-cli is the headless front end of Sonamark: it runs and checks the macros of a\n"
        "Hotkeys file, reads text aloud or into sound files, finds files and checks spelling,\n"
        "without the resident program and without a display.\n"
        "  sonamark-cli --help           this text\n"
        "  sonamark-cli help COMMAND     the same as sonamark-cli COMMAND --help\n"
        "  sonamark-cli --help-man [FILE]  the manual page (roff) on standard output or in FILE\n");
    return text;
}

QString RunUsageText()
{
    return QStringLiteral(
        "Usage: sonamark-cli run --hotkeys FILE (--macro NAME | --number N)\n"
        "                        [--answer yes|no|cancel|ok]... [--show-messages]\n"
        "\n"
        "Runs one macro of a Hotkeys file without a display. The run-time report and the\n"
        "result report are printed on standard output as the report windows show them.\n"
        "Keystrokes are printed on standard error, one delivery a line: \"SENDKEYS <text>\"\n"
        "or \"KEY <code>\". Questions take the --answer values in order, then No;\n"
        "--show-messages prints each message box on standard error as well.\n"
        "File statements work on real files (relative paths from the current folder); the\n"
        "reader's text is kept in memory; [GETCLIP] and [SETCLIP] use the X clipboard\n"
        "through xclip when there is a display. Statements that open windows say that\n"
        "they need the desktop program.\n"
        "Exit status: 0 no report, 1 a report was printed, 2 bad arguments or file,\n"
        "3 an internal failure was reported (\"FAILURE ...\" on standard error).\n");
}

int RunCli(const QStringList &args, QTextStream &out, QTextStream &err)
{
    if (args.isEmpty() || args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h")) {
        (args.isEmpty() ? err : out) << UsageText();
        return args.isEmpty() ? kExitUsage : kExitClean;
    }
    if (args.first() == QLatin1String("check"))
        return RunCheck(args.mid(1), out, err);
    if (args.first() == QLatin1String("format"))
        return RunFormat(args.mid(1), out, err);
    if (args.first() == QLatin1String("spell"))
        return RunSpell(args.mid(1), out, err);
    if (args.first() != QLatin1String("run")) {
        err << "sonamark-cli: unknown command '" << args.first() << "'\n\n" << UsageText();
        return kExitUsage;
    }
    if (args.size() > 1 && (args.at(1) == QLatin1String("--help") || args.at(1) == QLatin1String("-h"))) {
        out << RunUsageText();
        return kExitClean;
    }
    RunOptions options;
    const QString problem = parseRunOptions(args, options);
    if (!problem.isEmpty()) {
        err << "sonamark-cli: " << problem << "\n\n" << RunUsageText();
        return kExitUsage;
    }
    return runMacro(options, out, err);
}

} // namespace cli
