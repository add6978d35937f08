#include "shell/system_check.h"

#include "platform/services.h"

namespace shell {

namespace {

using platform::SystemProbes;

constexpr int kTagWidth = 13;   // "[not checked]"
constexpr int kLineWidth = 78;  // fits a terminal and the text window

CheckResult ok(const QString &subject, const QString &finding) { return {subject, CheckStatus::Ok, finding, {}}; }

CheckResult notChecked(const QString &subject)
{
    return {subject, CheckStatus::NotChecked, QStringLiteral("Not checked without an X display."), {}};
}

bool isWaylandSession(SystemProbes &probes)
{
    return !probes.environment("WAYLAND_DISPLAY").isEmpty()
        || probes.environment("XDG_SESSION_TYPE").compare(QLatin1String("wayland"), Qt::CaseInsensitive) == 0;
}

CheckResult checkDisplay(SystemProbes &probes, bool reachable, bool wayland)
{
    const QString subject = QStringLiteral("X display");
    const QString display = probes.environment("DISPLAY");
    if (reachable)
        return ok(subject, QStringLiteral("The X display %1 can be opened.").arg(display));
    if (display.isEmpty()) {
        return {subject, CheckStatus::Problem,
                QStringLiteral("No X display: DISPLAY is not set. Sonamark needs one for its tray icon, "
                               "windows and hotkeys."),
                wayland ? QStringLiteral("Turn on XWayland in your desktop's settings (Sonamark runs through it), "
                                         "then start Sonamark from that session.")
                        : QStringLiteral("Start Sonamark from inside your desktop session, or set DISPLAY to "
                                         "your display (for example DISPLAY=:0).")};
    }
    return {subject, CheckStatus::Problem,
            QStringLiteral("The X display %1 (from DISPLAY) cannot be opened.").arg(display),
            QStringLiteral("Check that the X server on %1 is running and that you may use it: XAUTHORITY must "
                           "point at your session's cookie (or allow your user with xhost).")
                .arg(display)};
}

CheckResult checkHotkeyExtensions(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Global hotkeys");
    const bool xtest = probes.hasXTest();
    const platform::XInputVersion xi = probes.xinputVersion();
    const bool xiOk = xi.major * 100 + xi.minor >= kNeededXiMajor * 100 + kNeededXiMinor;
    if (xtest && xiOk)
        return ok(subject, QStringLiteral("XTest and XInput 2.2 are present: hotkeys, Esc and macro "
                                          "recording can work."));
    QStringList missing;
    if (!xtest)
        missing << QStringLiteral("the XTest extension");
    if (!xiOk) {
        missing << (xi.major == 0 ? QStringLiteral("XInput 2.2 (it has no XInput 2)")
                                  : QStringLiteral("XInput 2.2 (it has %1.%2)").arg(xi.major).arg(xi.minor));
    }
    return {subject, CheckStatus::Problem,
            QStringLiteral("The X server lacks %1: Sonamark runs without global hotkeys, Esc and macro "
                           "recording.")
                .arg(missing.join(QStringLiteral(" and "))),
            QStringLiteral("Use an X server that has both (every current Xorg, Xvfb and XWayland does), and "
                           "check that no \"Extensions\" section of the X configuration turns them off.")};
}

CheckResult checkTray(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Notification area");
    if (probes.trayHostPresent())
        return ok(subject, QStringLiteral("A tray host is present (it owns _NET_SYSTEM_TRAY_S0)."));
    return {subject, CheckStatus::Problem,
            QStringLiteral("No tray host: nobody owns _NET_SYSTEM_TRAY_S0. Sonamark lives in the "
                           "notification area and stops without one."),
            QStringLiteral("Add a notification area (system tray) to your panel, or start a tray host such "
                           "as trayer or stalonetray. On GNOME, turn on the AppIndicator extension.")};
}

CheckResult checkSession(bool wayland, bool displayReachable)
{
    const QString subject = QStringLiteral("Session");
    if (wayland) {
        return {subject, CheckStatus::Note,
                QStringLiteral("This is a Wayland session: Sonamark works through XWayland, so hotkeys only "
                               "see keys typed into X11 (XWayland) windows, and keystrokes only reach those."),
                QStringLiteral("For hotkeys in every window, log in to an X11 (Xorg) session instead.")};
    }
    if (!displayReachable)
        return notChecked(subject);
    return ok(subject, QStringLiteral("An X11 session: hotkeys see keys typed into every window."));
}

CheckResult checkAudio(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Audio output");
    const platform::AudioProbe audio = probes.playTestTone();
    const QString fix = QStringLiteral("Start PulseAudio or PipeWire (with pipewire-pulse) in your session, "
                                       "and check in the sound settings (or pavucontrol) that an output is "
                                       "chosen and not muted.");
    if (!audio.device)
        return {subject, CheckStatus::Problem,
                QStringLiteral("No audio output was found: speech cannot be heard."), fix};
    const QString name = audio.deviceName.isEmpty() ? QStringLiteral("the default output") : audio.deviceName;
    if (!audio.tonePlayed) {
        QString finding = QStringLiteral("A test tone could not be played on %1").arg(name);
        finding += audio.problem.isEmpty() ? QStringLiteral(".") : QStringLiteral(": %1.").arg(audio.problem);
        return {subject, CheckStatus::Problem, finding, fix};
    }
    return ok(subject, QStringLiteral("A test tone played on %1.").arg(name));
}

CheckResult checkVoices(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Voices");
    const qsizetype count = probes.voices().size();
    if (count == 0)
        return {subject, CheckStatus::Problem,
                QStringLiteral("espeak-ng found no voices: nothing can be spoken."),
                QStringLiteral("Install the voices: sudo apt-get install espeak-ng-data")};
    return ok(subject, count == 1 ? QStringLiteral("espeak-ng offers 1 voice.")
                                  : QStringLiteral("espeak-ng offers %1 voices.").arg(count));
}

CheckResult checkDictionaries(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Spelling dictionaries");
    QStringList found = probes.dictionaries();
    if (found.isEmpty())
        return {subject, CheckStatus::Problem,
                QStringLiteral("No Hunspell dictionary was found (in $DICPATH or /usr/share/hunspell): Spell "
                               "Check is unavailable."),
                QStringLiteral("Install one for your language, for example: sudo apt-get install hunspell-en-us")};
    found.sort();
    return ok(subject, QStringLiteral("Hunspell dictionaries: %1.").arg(found.join(QStringLiteral(", "))));
}

CheckResult checkWordFiles(SystemProbes &probes)
{
    const QString subject = QStringLiteral(".doc files");
    if (probes.antiwordInstalled())
        return ok(subject, QStringLiteral("antiword is installed: .doc files can be opened and read aloud."));
    return {subject, CheckStatus::Note,
            QStringLiteral("antiword is not installed: .doc files cannot be opened (.txt, .rtf and .xml can)."),
            QStringLiteral("To open .doc files: sudo apt-get install antiword")};
}

CheckResult checkDataFolder(SystemProbes &probes)
{
    const QString subject = QStringLiteral("Data folder");
    const platform::FolderProbe folder = probes.dataFolder();
    if (folder.writable)
        return ok(subject, QStringLiteral("%1 can be written.").arg(folder.path));
    return {subject, CheckStatus::Problem,
            QStringLiteral("%1 cannot be created or written: settings, hotkeys and exceptions cannot be saved.")
                .arg(folder.path),
            QStringLiteral("Check the folder's owner, permissions and free space, or set SONAMARK_HOME to a "
                           "folder you can write.")};
}

QString tag(CheckStatus status)
{
    switch (status) {
    case CheckStatus::Ok:
        return QStringLiteral("[ok]");
    case CheckStatus::Note:
        return QStringLiteral("[note]");
    case CheckStatus::Problem:
        return QStringLiteral("[PROBLEM]");
    case CheckStatus::NotChecked:
        return QStringLiteral("[not checked]");
    }
    return {};
}

// text broken at blanks into lines of at most kLineWidth characters (a longer word stands
// alone), the first led by lead, the others by continuation.
QString wrapped(const QString &lead, const QString &text, const QString &continuation)
{
    QString out = lead;
    int column = int(lead.size());
    bool lineEmpty = true;
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (!lineEmpty && column + 1 + word.size() > kLineWidth) {
            out += QLatin1Char('\n') + continuation;
            column = int(continuation.size());
            lineEmpty = true;
        }
        if (!lineEmpty) {
            out += QLatin1Char(' ');
            ++column;
        }
        out += word;
        column += int(word.size());
        lineEmpty = false;
    }
    return out + QLatin1Char('\n');
}

QString plural(int n, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(n).arg(QLatin1String(n == 1 ? one : many));
}

} // namespace

int SystemCheckReport::count(CheckStatus status) const
{
    int n = 0;
    for (const CheckResult &result : results)
        n += result.status == status ? 1 : 0;
    return n;
}

SystemCheckReport RunSystemCheck(platform::SystemProbes &probes)
{
    SystemCheckReport report;
    QList<CheckResult> &r = report.results;
    const bool wayland = isWaylandSession(probes);
    const bool display = probes.displayReachable();
    r << checkDisplay(probes, display, wayland);
    r << (display ? checkHotkeyExtensions(probes) : notChecked(QStringLiteral("Global hotkeys")));
    r << (display ? checkTray(probes) : notChecked(QStringLiteral("Notification area")));
    r << checkSession(wayland, display);
    r << checkAudio(probes);
    r << checkVoices(probes);
    r << checkDictionaries(probes);
    r << checkWordFiles(probes);
    r << checkDataFolder(probes);
    return report;
}

QString SystemCheckText(const SystemCheckReport &report)
{
    QString text = QStringLiteral("Sonamark system check\n\n");
    const QString indent(kTagWidth + 1, QLatin1Char(' '));
    const QString fixLead = indent + QStringLiteral("Fix: ");
    const QString fixIndent(fixLead.size(), QLatin1Char(' '));
    for (const CheckResult &result : report.results) {
        text += wrapped(tag(result.status).leftJustified(kTagWidth + 1), result.subject + QStringLiteral(": ") + result.finding,
                        indent);
        if (!result.fix.isEmpty())
            text += wrapped(fixLead, result.fix, fixIndent);
    }
    text += QLatin1Char('\n');
    const int problems = report.count(CheckStatus::Problem);
    const int notes = report.count(CheckStatus::Note);
    if (problems == 0) {
        text += notes == 0 ? QStringLiteral("Everything Sonamark needs is in place.\n")
                           : QStringLiteral("Everything Sonamark needs is in place (see the %1 above).\n")
                                 .arg(plural(notes, "note", "notes"));
    } else {
        text += QStringLiteral("%1 to fix before Sonamark can work fully.\n")
                    .arg(plural(problems, "problem", "problems"));
    }
    return text;
}

int SystemCheckExitCode(const SystemCheckReport &report) { return report.usable() ? 0 : 1; }

void ShowSystemCheck(platform::SystemProbes &probes)
{
    const QString text = SystemCheckText(RunSystemCheck(probes));
    if (platform::TextWindow *window = platform::services().textWindow)
        window->showText(kSystemCheckCaption, text);
}

QString SystemCheckHint(bool programGoesOn)
{
    return programGoesOn ? QStringLiteral("Help > System Check... shows what is missing and how to fix it.")
                         : QStringLiteral("The command \"sonamark-cli doctor\" shows what is missing and how to "
                                          "fix it.");
}

} // namespace shell
