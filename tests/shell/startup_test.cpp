#include "shell_fixture.h"

#include "shell/delay.h"
#include "shell/instance.h"
#include "shell/on_top_message.h"
#include "shell/quit.h"
#include "shell/settings.h"
#include "shell/startup.h"

#include <QDir>
#include <QFile>

using shell::app;

class StartupTest : public ShellTest {
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        qputenv("SONAMARK_HOME", dir.path().toUtf8());
        shell::SetDelaySleeper([](int) {});
    }
    void TearDown() override
    {
        qunsetenv("SONAMARK_HOME");
        shell::SetDelaySleeper(nullptr);
    }

    shell::StartupSteps steps()
    {
        shell::StartupSteps s;
        s.probeDictionary = [] { return true; };
        s.loadMainWindow = [this] { order << "load"; };
        s.enableCollectTimers = [this] { order << "timers"; };
        s.getExceptions = [this] { order << "exceptions"; };
        s.setLanguageTables = [this] { order << "tables"; };
        return s;
    }
    QStringList order;
};

TEST_F(StartupTest, OnlyExactSlashHHides)
{
    EXPECT_TRUE(shell::IsStartHidden({"/h"}));
    EXPECT_FALSE(shell::IsStartHidden({"/h "}));
    EXPECT_FALSE(shell::IsStartHidden({"/H"}));
    EXPECT_FALSE(shell::IsStartHidden({"/h", "x"}));
    EXPECT_FALSE(shell::IsStartHidden({}));
}

TEST_F(StartupTest, FirstRunWritesFlagLaunchesHelpAndGreets)
{
    ASSERT_EQ(shell::SubMain({}, steps()), shell::StartupResult::Run);
    EXPECT_EQ(order, (QStringList{"exceptions", "load", "timers", "tables"}));
    EXPECT_TRUE(QFile::exists(path("ShowInstructions.flg")));
    EXPECT_TRUE(QFile::exists(path("options.def")));
    EXPECT_EQ(fx.messages.popups, QStringList{"Right click    for menu"});
    EXPECT_FALSE(fx.messages.popupVisible);
    EXPECT_FALSE(app().StartingUp);
    // No viewer beside the test program: the missing-help message, nothing started.
    ASSERT_FALSE(fx.messages.shown.isEmpty());
    EXPECT_EQ(fx.messages.shown[0].text, "Missing Instructions file. No help available.\r\n");
    EXPECT_EQ(app().ChildFormDepth, 0);
}

TEST_F(StartupTest, HiddenStartShowsNoWarningsHelpOrGreeting)
{
    auto s = steps();
    s.probeDictionary = [] { return false; };
    ASSERT_EQ(shell::SubMain({"/h"}, s), shell::StartupResult::Run);
    EXPECT_TRUE(app().StartHidden);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_TRUE(fx.messages.popups.isEmpty());
}

TEST_F(StartupTest, MissingDictionaryWarnsWhenVisible)
{
    auto s = steps();
    s.probeDictionary = [] { return false; };
    QFile flag(path("ShowInstructions.flg"));
    ASSERT_TRUE(flag.open(QIODevice::WriteOnly));
    flag.write("0\r\n");
    flag.close();
    shell::SubMain({}, s);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, "Dictionary Missing");
    EXPECT_FALSE(app().WordInstalled);
}

TEST_F(StartupTest, AlreadyRunningNoEndsThisInstance)
{
    fx.processes.running = {{42, "sonamark"}, {fx.processes.self, "sonamark"}};
    fx.messages.answers = {shell::MsgNo};
    EXPECT_EQ(shell::SubMain({}, steps()), shell::StartupResult::Exit);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, "Already Running");
    EXPECT_EQ(fx.messages.shown[0].text,
              "Sonamark appears to be already running. Would you like to restart the program?\r\n");
    EXPECT_TRUE(fx.processes.terminated.isEmpty());
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(StartupTest, AlreadyRunningYesTerminatesOthersFirstThenItself)
{
    fx.processes.running = {{42, "Sonamark"}, {43, "sonamark"}, {fx.processes.self, "sonamark"},
                            {44, "sonamark-cli"}};
    EXPECT_TRUE(shell::TerminateEXE(QStringLiteral("sonamark")));
    EXPECT_EQ(fx.processes.terminated, (QList<qint64>{42, 43, fx.processes.self}));
    EXPECT_TRUE(fx.processes.running.contains(44));
}

TEST_F(StartupTest, LockFileOfALiveInstanceCounts)
{
    fx.processes.running = {{77, "sonamark"}};
    EXPECT_TRUE(shell::PreviousInstanceRunning(app().AppFolder));
    fx.processes.running = {{fx.processes.self, "sonamark"}};
    EXPECT_FALSE(shell::PreviousInstanceRunning(app().AppFolder));
    shell::WriteLockFile(app().AppFolder);
    EXPECT_FALSE(shell::PreviousInstanceRunning(app().AppFolder));  // our own record
}

TEST_F(StartupTest, FirstRunHelpCanEndTheProgram)
{
    fx.clipboard.content = QStringLiteral("QuitMe");
    app().HelpFirstRun = true;
    // LaunchInstructions needs the viewer beside the program; without it, no quit.
    EXPECT_FALSE(shell::LaunchInstructions());
    EXPECT_EQ(app().ChildFormDepth, 0);
}

TEST_F(StartupTest, QuitDialogue)
{
    fx.messages.answers = {shell::MsgNo};
    EXPECT_FALSE(shell::ConfirmQuit({}));
    EXPECT_EQ(fx.messages.shown.last().title, "End Program");

    app().OptionsDirty = true;
    app().TextDirty = true;
    bool saved = false;
    fx.messages.answers = {shell::MsgCancel};
    EXPECT_FALSE(shell::ConfirmQuit([&] { saved = true; }));
    EXPECT_EQ(fx.messages.shown.last().text, "Save changes to the current file before quitting?\r\n");
    fx.messages.answers = {shell::MsgYes};
    EXPECT_TRUE(shell::ConfirmQuit([&] { saved = true; }));
    EXPECT_TRUE(saved);
    EXPECT_FALSE(app().OptionsDirty);
    EXPECT_TRUE(QFile::exists(path("options.def")));
}

TEST_F(StartupTest, StartupEntryIsAddedAndRemoved)
{
    qputenv("XDG_CONFIG_HOME", dir.path().toUtf8());
    const QString entry = dir.path() + "/autostart/sonamark.desktop";
    fx.messages.answers = {shell::MsgYes};
    shell::ToggleStartupEntry(QStringLiteral("/opt/s/sonamark"));
    ASSERT_TRUE(QFile::exists(entry));
    QFile f(entry);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().contains("Exec=/opt/s/sonamark /h\n"));
    fx.messages.answers = {shell::MsgYes};
    shell::ToggleStartupEntry(QStringLiteral("/opt/s/sonamark"));
    EXPECT_EQ(fx.messages.shown.last().title, "Remove From Startup");
    EXPECT_FALSE(QFile::exists(entry));
    qunsetenv("XDG_CONFIG_HOME");
}

TEST_F(StartupTest, DesktopIconHandsTheProgramADroppedFile)
{
    const QByteArray home = qgetenv("HOME"), config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", dir.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", (dir.path() + "/config").toUtf8());  // no user-dirs.dirs: ~/Desktop
    shell::AddDesktopEntry(QStringLiteral("/opt/s/sonamark"));
    qputenv("HOME", home);
    if (config.isEmpty())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", config);
    QFile f(dir.path() + "/Desktop/sonamark.desktop");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().contains("Exec=/opt/s/sonamark %f\n"));
    EXPECT_TRUE(f.permissions() & QFile::ExeOwner);
}

TEST_F(StartupTest, UnusableDataFolderIsNamedAndStopsStartUp)
{
    qputenv("SONAMARK_HOME", "/dev/null/sonamark");
    EXPECT_EQ(shell::SubMain({"/h"}, steps()), shell::StartupResult::Fail);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_TRUE(fx.messages.shown[0].text.contains("/dev/null/sonamark/"));
    EXPECT_EQ(fx.messages.shown[0].title, "Fatal Error");
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(StartupTest, RelativeDataFolderIsMadeAbsoluteOnce)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    qputenv("SONAMARK_HOME", "relhome");
    EXPECT_EQ(shell::SubMain({"/h"}, steps()), shell::StartupResult::Run);
    QDir::setCurrent(before);
    EXPECT_EQ(app().AppFolder, dir.path() + "/relhome/");
    // The saved Hotkeys path stays inside the folder however often the program starts.
    EXPECT_EQ(shell::settings().HotkeysFileOpt, dir.path() + "/relhome/Hotkeys.txt");
}

TEST_F(StartupTest, DataFolderWithDoubleQuoteIsRefused)
{
    qputenv("SONAMARK_HOME", (dir.path() + "/say \"hi\"").toUtf8());
    EXPECT_EQ(shell::SubMain({"/h"}, steps()), shell::StartupResult::Fail);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, "Fatal Error");
    EXPECT_TRUE(fx.messages.shown[0].text.contains("double quote"));
    EXPECT_TRUE(order.isEmpty());
}
