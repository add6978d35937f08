#pragma once
// The ways into the spell checker: the main window's "&Spell Check", the clipboard's
// spell face (SpellClipMode), the tray's "Spell Check" entry and macros.
#include <QString>
#include <functional>

namespace spell {

// Longest text the spell window takes; longer ones are refused with a message.
inline constexpr qsizetype kMaxWindowText = 5'000'000;

inline const QString kNoDictionaryText = QStringLiteral(
    "WARNING no spelling dictionary has been installed on this PC. The Spell Check feature is unavailable.");
inline const QString kNoDictionaryTitle = QStringLiteral("Dictionary Missing");
inline const QString kSpellCheckTitle = QStringLiteral("Spell Check");

// True when a dictionary can be used: the spell checker port is installed and has one.
bool SpellCheckAvailable();

// Makes the checker use the dictionary of the reader's voice's language, else of the
// system's locale, else American English. Its language code, or "" with *error saying
// why no dictionary could be loaded.
QString UseChosenDictionary(QString *error);

// Shows frmSpellIt modally on top for SpellText and SpellCommit; the program installs
// it at start-up. Without one (no display) the spell check cannot run.
using SpellWindowOpener = std::function<void()>;
void SetSpellWindowOpener(SpellWindowOpener opener);

// Checks text in the spell window: commitToReader puts the result into txtSpeech,
// otherwise it goes to the clipboard. "" when the window ran (whatever the user chose);
// otherwise why it could not run (no dictionary, no window, a text too long).
QString SpellCheck_OnTop(const QString &text, bool commitToReader);

// The main window's "&Spell Check": the selection of txtSpeech, else all of its text;
// the result goes back in its place.
void mnuSpellCheck_Click();
// The clipboard monitor's spell face: a monitored text is checked and the result goes
// back onto the clipboard.
void SpellCheckClip(const QString &text);

// The tray's "Spell Check" entry: flips SpellClipMode (the entry's check). While the
// clipboard is monitored the tray picture follows it.
void mnuPUSpellCheck_Click();
// Sets SpellClipMode through mnuPUSpellCheck_Click when it differs from on.
void SetSpellClipMode(bool on);
// The check of the tray's "Spell Check" entry.
bool SpellClipMode();

} // namespace spell
