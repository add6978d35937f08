#pragma once
// The start-up sequence of the program (Sub Main) and the first-run help.
#include <QStringList>
#include <functional>

namespace shell {

// The steps of start-up that belong to other subsystems or to the windows. Each is
// called at its place in the sequence; an unset step is skipped.
struct StartupSteps {
    std::function<void()> resetMacroRunner;    // last macro error "", current line -1
    std::function<bool()> probeDictionary;     // true when spell checking can work
    std::function<void()> getExceptions;       // load the pronunciation exceptions
    std::function<void()> loadMainWindow;      // creates frmSonamark (runs its Form_Load)
    std::function<bool()> mainWindowAlive;     // false when Form_Load gave up
    std::function<void()> enableCollectTimers; // Timer3, and Timer5 when picture clips are on
    std::function<void()> setLanguageTables;   // SetCommands, SetNonPrint
    std::function<void()> processEvents;       // let events run
};

// Exit: the user or a running instance ended start-up; Fail: the program cannot run.
enum class StartupResult { Run, Exit, Fail };

// Runs start-up; args are the command-line arguments without the program name.
StartupResult SubMain(const QStringList &args, const StartupSteps &steps);

// True when exactly "/h" was given.
bool IsStartHidden(const QStringList &args);

inline constexpr const char *kFirstRunFlagFile = "ShowInstructions.flg";
inline constexpr const char *kHelpProgram = "sonamark-help";

// Reads (or on first run creates) "ShowInstructions.flg"; true when help should show.
bool ShowInstructions();
// Starts the help viewer on app().HelpPage and waits for it; true when a first-run
// viewer asked to quit the program (clipboard text "QuitMe").
bool LaunchInstructions();
// Folder holding the helper programs (the folder of the running program).
QString ProgramFolder();

} // namespace shell
