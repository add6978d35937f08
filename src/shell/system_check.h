#pragma once
// The system check ("sonamark-cli doctor", Help > System Check...): asks the probes what
// this machine offers and says, in plain words, what works, what does not, and how to
// fix it. The probes only gather facts; every decision and every word is made here.
#include "platform/system_probes.h"

#include <QList>
#include <QString>

namespace shell {

enum class CheckStatus {
    Ok,          // works
    Note,        // works with a limit the user should know about; not a failure
    Problem,     // something the user needs does not work
    NotChecked,  // could not be asked (another problem stands in the way)
};

struct CheckResult {
    QString subject;  // "X display", "Audio output", ...
    CheckStatus status = CheckStatus::Ok;
    QString finding;  // what was found, a sentence
    QString fix;      // what to do about it; "" when nothing is to be done
};

struct SystemCheckReport {
    QList<CheckResult> results;  // in the order the checks run
    int count(CheckStatus status) const;
    // True when nothing the user needs is missing (notes allowed).
    bool usable() const { return count(CheckStatus::Problem) == 0; }
};

inline const QString kSystemCheckCaption = QStringLiteral("System Check");
// Oldest XInput the global hooks work with.
inline constexpr int kNeededXiMajor = 2;
inline constexpr int kNeededXiMinor = 2;

// Runs every check, in order: X display, global hotkeys (XTest, XInput 2.2), notification
// area, session type, audio output, voices, spelling dictionaries, .doc files, data
// folder. Checks that need the X display are not asked without one.
SystemCheckReport RunSystemCheck(platform::SystemProbes &probes);

// The report as text, one check a block, lines ending in "\n" and broken at 78 characters,
// with a closing verdict.
QString SystemCheckText(const SystemCheckReport &report);

// Exit status of "sonamark-cli doctor": 0 when usable, 1 otherwise.
int SystemCheckExitCode(const SystemCheckReport &report);

// Help > System Check...: runs the check and shows the report in the text window under
// kSystemCheckCaption.
void ShowSystemCheck(platform::SystemProbes &probes);

// The sentence added to a start-up message about a missing piece: where to find the
// check. programGoesOn: the program keeps running (its Help menu is reachable).
QString SystemCheckHint(bool programGoesOn);

} // namespace shell
