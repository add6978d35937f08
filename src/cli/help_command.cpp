#include "cli/help_command.h"

#include "cli/batch_command.h"
#include "cli/check_command.h"
#include "cli/doctor_command.h"
#include "cli/doctor_command.h"
#include "cli/find_command.h"
#include "cli/run_command.h"
#include "cli/spell_command.h"
#include "cli/to_file_command.h"
#include "help_reference.h"

#include <QSaveFile>

namespace cli {

namespace {

constexpr int kExitHelp = 0;
constexpr int kExitBadHelp = 2;

bool isHelpFlag(const QString &arg) { return arg == QLatin1String("--help") || arg == QLatin1String("-h"); }

QString voicesUsage()
{
    return QStringLiteral(
        "Usage: sonamark-cli voices\n"
        "\n"
        "Lists the voices of the speech engine (espeak-ng) as the reader's voice list shows\n"
        "them, one a line. Any of them can be given to speak, to-file and batch as --voice.\n"
        "Exit status: 0 listed, 1 the speech engine could not be started.\n");
}

QString speakUsage()
{
    return QStringLiteral(
        "Usage: sonamark-cli speak [--voice V] [--rate R] [--volume N] [--pitch P] TEXT|-\n"
        "\n"
        "Speaks TEXT (or standard input for -) on the default sound output and returns when\n"
        "the speech has ended. A text in XML is spoken with its speech mark-up; any other\n"
        "text is wrapped in the pitch mark of --pitch.\n"
        "  --voice V       a voice as `sonamark-cli voices` lists it\n"
        "  --rate R        -10 .. 10 (0)            --volume N   0 .. 100 (100)\n"
        "  --pitch P       -10 .. 10 (0)\n"
        "Exit status: 0 spoken, 1 the speech engine could not be started, 2 bad arguments.\n");
}

QString roffNoFill(const QString &text)
{
    QString body = help::RoffEscaped(text);
    while (body.endsWith(QLatin1Char('\n')))
        body.chop(1);
    return QStringLiteral(".nf\n") + body + QStringLiteral("\n.fi\n");
}

} // namespace

std::optional<QString> CommandUsageText(const QString &command)
{
    if (command == QLatin1String("run"))
        return RunUsageText();
    if (command == QLatin1String("check"))
        return CheckUsageText();
    if (command == QLatin1String("format"))
        return FormatUsageText();
    if (command == QLatin1String("voices"))
        return voicesUsage();
    if (command == QLatin1String("speak"))
        return speakUsage();
    if (command == QLatin1String(kToFileCommand))
        return ToFileUsageText();
    if (command == QLatin1String(kBatchCommand))
        return BatchUsageText();
    if (command == QLatin1String("find"))
        return FindUsageText();
    if (command == QLatin1String("spell"))
        return SpellUsageText();
    if (command == QLatin1String(kDoctorCommand))
        return DoctorUsageText();
    return std::nullopt;
}

QString CliManPage()
{
    QString roff = QStringLiteral(
        ".TH SONAMARK\\-CLI 1 \"\" \"Sonamark %1.%2.%3\" \"User Commands\"\n"
        ".SH NAME\n"
        "sonamark\\-cli \\- run and check Sonamark macros, read text into sound files, find files\n"
        "and check spelling without a display\n"
        ".SH SYNOPSIS\n"
        ".B sonamark\\-cli\n"
        ".I COMMAND\n"
        "[\\fIOPTION\\fR]... [\\fIARGUMENT\\fR]...\n"
        ".br\n"
        ".B sonamark\\-cli\n"
        ".I COMMAND\n"
        ".B \\-\\-help\n"
        ".br\n"
        ".B sonamark\\-cli \\-\\-help\n"
        ".SH DESCRIPTION\n"
        "\\fBsonamark\\-cli\\fR is the headless front end of \\fBsonamark\\fR(1). It works on the same\n"
        "files as the resident program: Hotkeys files of macros, documents (.txt, .rtf,\n"
        "\\&.xml and .doc files), and the pronunciation exceptions of the data folder.\n"
        ".PP\n"
        "The commands are:\n")
                       .arg(SONAMARK_VERSION_MAJOR)
                       .arg(SONAMARK_VERSION_MINOR)
                       .arg(SONAMARK_VERSION_PATCH);
    for (const CliCommand &c : CliCommands())
        roff += QStringLiteral(".TP\n.B %1\n%2\n").arg(help::RoffEscaped(QLatin1String(c.name)),
                                                        help::RoffEscaped(QLatin1String(c.summary)));
    roff += QStringLiteral(".SH COMMANDS\n");
    for (const CliCommand &c : CliCommands()) {
        roff += QStringLiteral(".SS %1\n").arg(help::RoffEscaped(QLatin1String(c.name)));
        roff += roffNoFill(CommandUsageText(QLatin1String(c.name)).value_or(QString()));
    }
    roff += QStringLiteral(
        ".SH ENVIRONMENT\n"
        ".TP\n.B SONAMARK_HOME\n"
        "The data folder (options.def, Hotkeys.txt, exceptions.txt, ...). Without it the\n"
        "folder is \\fI$XDG_DATA_HOME/sonamark\\fR, normally \\fI~/.local/share/sonamark\\fR.\n"
        ".TP\n.B DICPATH\n"
        "Folders searched for Hunspell dictionaries before \\fI/usr/share/hunspell\\fR.\n"
        ".TP\n.B DISPLAY\n"
        "With a display, \\fB[GETCLIP]\\fR and \\fB[SETCLIP]\\fR use its clipboard and mouse positions\n"
        "are checked against its screen.\n"
        ".TP\n.B QT_LOGGING_RULES\n"
        "\\fBsonamark.*=true\\fR shows what each part of the program is doing.\n"
        ".SH SEE ALSO\n"
        ".BR sonamark (1)\n");
    return roff;
}

std::optional<int> RunHelp(const QStringList &args, QTextStream &out, QTextStream &err)
{
    if (args.isEmpty())
        return std::nullopt;
    const QString &first = args.first();
    if (first == QLatin1String("--help-man")) {
        const QByteArray page = CliManPage().toUtf8();
        if (args.size() < 2) {
            out << page;
            return kExitHelp;
        }
        QSaveFile file(args.at(1));
        if (!file.open(QIODevice::WriteOnly) || file.write(page) != page.size() || !file.commit()) {
            err << "sonamark-cli: cannot write " << args.at(1) << "\n";
            return kExitBadHelp;
        }
        return kExitHelp;
    }
    if (isHelpFlag(first) || (first == QLatin1String("help") && args.size() == 1)) {
        out << UsageText();
        return kExitHelp;
    }
    QString command;
    if (first == QLatin1String("help"))
        command = args.at(1);
    else if (args.size() > 1 && isHelpFlag(args.at(1)))
        command = first;
    else
        return std::nullopt;
    if (const std::optional<QString> text = CommandUsageText(command)) {
        out << *text;
        return kExitHelp;
    }
    err << "sonamark-cli: unknown command '" << command << "'\n\n" << UsageText();
    return kExitBadHelp;
}

} // namespace cli
