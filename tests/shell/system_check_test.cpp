// The system check's decisions and words, on probes that answer from a script.
#include "fakes/fake_services.h"
#include "shell/system_check.h"

#include <QMap>
#include <gtest/gtest.h>

using shell::CheckStatus;

namespace {

// A machine where everything works, unless a test says otherwise.
struct ScriptedProbes : platform::SystemProbes {
    QMap<QByteArray, QString> env{{"DISPLAY", ":5"}, {"XDG_SESSION_TYPE", "x11"}};
    bool display = true, xtest = true, tray = true, antiword = true;
    platform::XInputVersion xi{2, 4};
    platform::AudioProbe audio{true, QStringLiteral("Null Output"), true, {}};
    QStringList voiceList{QStringLiteral("English (Great Britain)"), QStringLiteral("German")};
    QStringList dicts{QStringLiteral("en_US"), QStringLiteral("de_DE")};
    platform::FolderProbe folder{QStringLiteral("/home/u/.local/share/sonamark/"), true};
    QStringList asked;  // X questions asked, in order

    QString environment(const char *name) override { return env.value(name); }
    bool displayReachable() override { return display; }
    bool hasXTest() override { asked << "xtest"; return xtest; }
    platform::XInputVersion xinputVersion() override { asked << "xi"; return xi; }
    bool trayHostPresent() override { asked << "tray"; return tray; }
    platform::AudioProbe playTestTone() override { return audio; }
    QStringList voices() override { return voiceList; }
    QStringList dictionaries() override { return dicts; }
    bool antiwordInstalled() override { return antiword; }
    platform::FolderProbe dataFolder() override { return folder; }
};

const shell::CheckResult &find(const shell::SystemCheckReport &report, const QString &subject)
{
    for (const shell::CheckResult &r : report.results)
        if (r.subject == subject)
            return r;
    static const shell::CheckResult none{QStringLiteral("(missing)"), CheckStatus::NotChecked, {}, {}};
    ADD_FAILURE() << "no check named " << subject.toStdString();
    return none;
}

} // namespace

TEST(SystemCheck, AWorkingMachinePassesEveryCheckInOrder)
{
    ScriptedProbes probes;
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    QStringList subjects;
    for (const shell::CheckResult &r : report.results) {
        subjects << r.subject;
        EXPECT_EQ(r.status, CheckStatus::Ok) << r.subject.toStdString() << ": " << r.finding.toStdString();
        EXPECT_TRUE(r.fix.isEmpty()) << r.subject.toStdString();
    }
    EXPECT_EQ(subjects, (QStringList{"X display", "Global hotkeys", "Notification area", "Session", "Audio output",
                                     "Voices", "Spelling dictionaries", ".doc files", "Data folder"}));
    EXPECT_TRUE(report.usable());
    EXPECT_EQ(shell::SystemCheckExitCode(report), 0);
    const QString text = shell::SystemCheckText(report);
    EXPECT_TRUE(text.startsWith("Sonamark system check\n\n"));
    EXPECT_TRUE(text.contains("[ok]          X display: The X display :5 can be opened.\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("Audio output: A test tone played on Null Output.\n"));
    EXPECT_TRUE(text.contains("Voices: espeak-ng offers 2 voices.\n"));
    EXPECT_TRUE(text.contains("Spelling dictionaries: Hunspell dictionaries: de_DE, en_US.\n"));
    EXPECT_TRUE(text.contains("Data folder: /home/u/.local/share/sonamark/ can be written.\n"));
    EXPECT_TRUE(text.endsWith("\nEverything Sonamark needs is in place.\n"));
    EXPECT_FALSE(text.contains("Fix:"));
}

TEST(SystemCheck, WithoutDisplayTheXChecksAreNotAskedAndTheDisplayLineCarriesTheFix)
{
    ScriptedProbes probes;
    probes.env.remove("DISPLAY");
    probes.display = false;
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    EXPECT_TRUE(probes.asked.isEmpty()) << probes.asked.join(',').toStdString();
    const shell::CheckResult &display = find(report, "X display");
    EXPECT_EQ(display.status, CheckStatus::Problem);
    EXPECT_TRUE(display.finding.contains("DISPLAY is not set"));
    EXPECT_TRUE(display.fix.contains("DISPLAY=:0"));
    EXPECT_EQ(find(report, "Global hotkeys").status, CheckStatus::NotChecked);
    EXPECT_EQ(find(report, "Notification area").status, CheckStatus::NotChecked);
    EXPECT_EQ(find(report, "Session").status, CheckStatus::NotChecked);
    // The checks that need no display still run.
    EXPECT_EQ(find(report, "Audio output").status, CheckStatus::Ok);
    EXPECT_EQ(find(report, "Data folder").status, CheckStatus::Ok);
    EXPECT_EQ(shell::SystemCheckExitCode(report), 1);
    const QString text = shell::SystemCheckText(report);
    EXPECT_TRUE(text.contains("[PROBLEM]     X display: No X display: DISPLAY is not set."));
    EXPECT_TRUE(text.contains("\n              Fix: Start Sonamark from inside your desktop session"));
    EXPECT_TRUE(text.contains("[not checked] Global hotkeys: Not checked without an X display.\n"));
    EXPECT_TRUE(text.endsWith("\n1 problem to fix before Sonamark can work fully.\n"));
}

TEST(SystemCheck, ADisplayThatCannotBeOpenedIsNamed)
{
    ScriptedProbes probes;
    probes.display = false;
    const shell::CheckResult display = shell::RunSystemCheck(probes).results.first();
    EXPECT_EQ(display.status, CheckStatus::Problem);
    EXPECT_EQ(display.finding, "The X display :5 (from DISPLAY) cannot be opened.");
    EXPECT_TRUE(display.fix.contains("XAUTHORITY"));
}

TEST(SystemCheck, MissingExtensionsAreNamedWithTheVersionFound)
{
    const struct {
        bool xtest;
        platform::XInputVersion xi;
        const char *lacks;
    } rows[] = {
        {false, {2, 4}, "lacks the XTest extension:"},
        {true, {2, 1}, "lacks XInput 2.2 (it has 2.1):"},
        {true, {0, 0}, "lacks XInput 2.2 (it has no XInput 2):"},
        {false, {1, 5}, "lacks the XTest extension and XInput 2.2 (it has 1.5):"},
    };
    for (const auto &row : rows) {
        ScriptedProbes probes;
        probes.xtest = row.xtest;
        probes.xi = row.xi;
        const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
        const shell::CheckResult &hotkeys = find(report, "Global hotkeys");
        EXPECT_EQ(hotkeys.status, CheckStatus::Problem) << row.lacks;
        EXPECT_TRUE(hotkeys.finding.contains(QLatin1String(row.lacks))) << hotkeys.finding.toStdString();
        EXPECT_FALSE(hotkeys.fix.isEmpty());
        EXPECT_EQ(shell::SystemCheckExitCode(report), 1);
    }
    ScriptedProbes newer;
    newer.xi = {3, 0};
    EXPECT_EQ(find(shell::RunSystemCheck(newer), "Global hotkeys").status, CheckStatus::Ok);
}

TEST(SystemCheck, NoTrayHostIsAProblemNamingTheSelection)
{
    ScriptedProbes probes;
    probes.tray = false;
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    const shell::CheckResult &tray = find(report, "Notification area");
    EXPECT_EQ(tray.status, CheckStatus::Problem);
    EXPECT_TRUE(tray.finding.contains("_NET_SYSTEM_TRAY_S0"));
    EXPECT_TRUE(tray.fix.contains("trayer"));
    EXPECT_FALSE(report.usable());
}

TEST(SystemCheck, WaylandIsANoteThatDoesNotFail)
{
    for (const auto &[name, value] : {std::pair{"WAYLAND_DISPLAY", "wayland-0"}, std::pair{"XDG_SESSION_TYPE", "Wayland"}}) {
        ScriptedProbes probes;
        probes.env[name] = QString::fromLatin1(value);
        const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
        const shell::CheckResult &session = find(report, "Session");
        EXPECT_EQ(session.status, CheckStatus::Note) << name;
        EXPECT_TRUE(session.finding.contains("XWayland")) << name;
        EXPECT_TRUE(session.fix.contains("X11 (Xorg) session"));
        EXPECT_EQ(shell::SystemCheckExitCode(report), 0) << name;
        EXPECT_TRUE(shell::SystemCheckText(report).endsWith("in place (see the 1 note above).\n"));
    }
    // Wayland without XWayland: the display's fix says to turn XWayland on.
    ScriptedProbes bare;
    bare.env = {{"WAYLAND_DISPLAY", "wayland-0"}};
    bare.display = false;
    EXPECT_TRUE(shell::RunSystemCheck(bare).results.first().fix.contains("XWayland"));
}

TEST(SystemCheck, AudioWithoutDeviceOrWithoutToneFails)
{
    ScriptedProbes none;
    none.audio = {};
    const shell::CheckResult a = find(shell::RunSystemCheck(none), "Audio output");
    EXPECT_EQ(a.status, CheckStatus::Problem);
    EXPECT_EQ(a.finding, "No audio output was found: speech cannot be heard.");
    EXPECT_TRUE(a.fix.contains("PulseAudio or PipeWire"));

    ScriptedProbes silent;
    silent.audio = {true, QStringLiteral("Speakers"), false, QStringLiteral("the device took nothing")};
    const shell::CheckResult b = find(shell::RunSystemCheck(silent), "Audio output");
    EXPECT_EQ(b.status, CheckStatus::Problem);
    EXPECT_EQ(b.finding, "A test tone could not be played on Speakers: the device took nothing.");
    silent.audio.deviceName.clear();
    silent.audio.problem.clear();
    EXPECT_EQ(find(shell::RunSystemCheck(silent), "Audio output").finding,
              "A test tone could not be played on the default output.");
}

TEST(SystemCheck, MissingVoicesDictionariesOrDataFolderFailWithTheirPackage)
{
    ScriptedProbes probes;
    probes.voiceList.clear();
    probes.dicts.clear();
    probes.folder.writable = false;
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    EXPECT_EQ(find(report, "Voices").status, CheckStatus::Problem);
    EXPECT_TRUE(find(report, "Voices").fix.contains("espeak-ng-data"));
    EXPECT_EQ(find(report, "Spelling dictionaries").status, CheckStatus::Problem);
    EXPECT_TRUE(find(report, "Spelling dictionaries").fix.contains("hunspell-en-us"));
    EXPECT_EQ(find(report, "Data folder").status, CheckStatus::Problem);
    EXPECT_TRUE(find(report, "Data folder").finding.startsWith("/home/u/.local/share/sonamark/ cannot be"));
    EXPECT_TRUE(find(report, "Data folder").fix.contains("SONAMARK_HOME"));
    EXPECT_EQ(report.count(CheckStatus::Problem), 3);
    EXPECT_TRUE(shell::SystemCheckText(report).endsWith("\n3 problems to fix before Sonamark can work fully.\n"));

    ScriptedProbes one;
    one.voiceList = {QStringLiteral("English")};
    EXPECT_EQ(find(shell::RunSystemCheck(one), "Voices").finding, "espeak-ng offers 1 voice.");
}

TEST(SystemCheck, NoAntiwordIsOnlyANote)
{
    ScriptedProbes probes;
    probes.antiword = false;
    const shell::SystemCheckReport report = shell::RunSystemCheck(probes);
    const shell::CheckResult &doc = find(report, ".doc files");
    EXPECT_EQ(doc.status, CheckStatus::Note);
    EXPECT_TRUE(doc.fix.contains("apt-get install antiword"));
    EXPECT_EQ(shell::SystemCheckExitCode(report), 0);
    EXPECT_TRUE(shell::SystemCheckText(report).contains("[note]        .doc files: antiword is not installed"));
}

TEST(SystemCheck, TheStartupHintPointsWhereTheUserCanGo)
{
    EXPECT_TRUE(shell::SystemCheckHint(true).contains("Help > System Check..."));
    EXPECT_TRUE(shell::SystemCheckHint(false).contains("sonamark-cli doctor"));
    EXPECT_FALSE(shell::SystemCheckHint(false).contains("Help >"));  // the program is gone by then
}

TEST(SystemCheck, TheMenuEntryShowsTheReportInTheTextWindow)
{
    fakes::FakeServices fx;
    ScriptedProbes probes;
    probes.tray = false;
    shell::ShowSystemCheck(probes);
    EXPECT_EQ(fx.textWindow.shows, 1);
    EXPECT_EQ(fx.textWindow.modalShows, 0);  // the program goes on while it is read
    EXPECT_EQ(fx.textWindow.caption, "System Check");
    EXPECT_EQ(fx.textWindow.text, shell::SystemCheckText(shell::RunSystemCheck(probes)));
    EXPECT_TRUE(fx.textWindow.text.contains("[PROBLEM]     Notification area: No tray host"));
}

TEST(SystemCheck, LongLinesAreBrokenAtBlanksUnderTheirColumn)
{
    ScriptedProbes probes;
    probes.env.remove("DISPLAY");
    probes.display = false;
    probes.dicts = {QStringLiteral("de_AT"), QStringLiteral("de_BE"), QStringLiteral("de_CH"), QStringLiteral("de_DE"),
                    QStringLiteral("de_LU"), QStringLiteral("en_AU"), QStringLiteral("en_GB"), QStringLiteral("en_US")};
    probes.folder.path = QStringLiteral("/home/u/") + QString(90, QLatin1Char('x')) + QStringLiteral("/");
    const QString text = shell::SystemCheckText(shell::RunSystemCheck(probes));
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.contains(probes.folder.path))
            continue;  // a word longer than a line stands alone
        EXPECT_LE(line.size(), 78) << line.toStdString();
    }
    // A finding goes on under the subject's column, a fix under its own text.
    const QString expected =
        "[ok]          Spelling dictionaries: Hunspell dictionaries: de_AT, de_BE,\n"
        "              de_CH, de_DE, de_LU, en_AU, en_GB, en_US.\n";
    EXPECT_TRUE(text.contains(expected)) << text.toStdString();
    EXPECT_TRUE(text.contains("              Fix: Start Sonamark from inside your desktop session, or set\n"
                              "                   DISPLAY to your display (for example DISPLAY=:0).\n"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("[ok]          Data folder:\n              " + probes.folder.path + "\n              can be written.\n"))
        << text.toStdString();
}
