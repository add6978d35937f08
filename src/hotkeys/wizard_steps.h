#pragma once
// The questions the statement wizards share. Each step answers false when the wizard is to
// end with nothing pasted: Cancel, an empty answer, or No to a ". Continue?".
#include "hotkeys/wizard_asker.h"
#include "hotkeys/wizards.h"

#include <QString>
#include <functional>

namespace hotkeys::wizard {

// Message box types of WizardAsker::message.
inline constexpr int kOk = 0;
inline constexpr int kYesNoCancel = 3;
inline constexpr int kYesNo = 4;

// Judges a typed answer: "" to take it, else the refusal shown before the question comes back.
using Validator = std::function<QString(const QString &answer)>;

// The statement word of a command code, as help looks it up: "[COPYFILE ".
QString helpWord(int command);

// With the help switch on: shows the statement's help and answers true (the wizard ends).
bool ShowsHelp(WizardAsker &ask, const WizardContext &context, const QString &statement);

// message + ". Try again." (a message that already ends in "." gets " Try again.").
QString TryAgain(const QString &message);

// A Yes/No/Cancel question: WizardYes, WizardNo, or WizardCancel for any other answer.
int AskChoice(WizardAsker &ask, const QString &text, const QString &title);

// The input box until the validator takes the trimmed answer.
bool AskValue(WizardAsker &ask, const QString &title, const QString &prompt, const Validator &valid,
              QString &answer, const QString &defaultText = QString());
// A variable name: AllLetters with caption judges it.
bool AskName(WizardAsker &ask, const QString &title, const QString &prompt, QString &name,
             const QString &defaultText = QString(), const QString &caption = QString());
// Typed text taken as a double-quoted literal (answer is the literal, quotes included).
// A text holding a double quote is refused: a literal cannot hold one.
bool AskLiteral(WizardAsker &ask, const QString &title, const QString &prompt, QString &literal,
                const QString &defaultText = QString());
// AskLiteral and AskName as operand steps of AskStringOrVariable.
std::function<bool(QString &)> Typed(WizardAsker &ask, const QString &title, const QString &prompt);
std::function<bool(QString &)> Named(WizardAsker &ask, const QString &title, const QString &prompt,
                                     const QString &defaultText = QString());
// The file dialog; the name comes back in double quotes. A name whose extension is none
// of accepted gets appendExtension.
bool AskFile(WizardAsker &ask, const QString &title, const QString &filter, bool save, QString &literal,
             const QString &appendExtension = QString(), const QStringList &accepted = QStringList());
// The folder picker; the folder comes back in double quotes.
bool AskFolder(WizardAsker &ask, const QString &title, QString &literal);

// "Is the <what> a string (Yes) or a variable (No)?" under title, then the matching step.
bool AskStringOrVariable(WizardAsker &ask, const QString &what, const QString &title,
                         const std::function<bool(QString &)> &asString,
                         const std::function<bool(QString &)> &asVariable, QString &operand);

// True for digits with at most one ".", no sign: "3", "0.5", ".2".
bool IsPlainNumber(const QString &text);
// A validator for a number in [low, high] or a variable name. tooLow/tooHigh are the
// refusals of numbers out of range; invalid that of text that is neither a number nor a
// name (empty: the AllLetters message with caption).
Validator NumberOrName(double low, double high, const QString &outOfRange, const QString &caption = QString(),
                       const QString &invalid = QString());
// A validator for a plain number in [low, high] only.
Validator NumberOnly(double low, double high, const QString &outOfRange);

// The statement checker of statement code number on a line alone ("" when good); the
// conditions of [IF], [CANCEL IF] and [LOOP] by their condition checkers.
QString CheckStatement(int number, const QString &line);
// CheckStatement, and on a fault "<fault>. Continue?" (Yes/No) under title: true to paste.
bool CheckedOrAccepted(WizardAsker &ask, int number, const QString &line, const QString &title);

// A wizard of one file operand: "[WORD Filename]".
struct FileStatement {
    int number;               // statement code
    QString word;             // "LOADCLIP"
    QString dialogTitle;      // "Load File"
    QString filter;           // "File (*.*)|*.*"
    bool save = false;
    QString appendExtension;  // added to a picked name whose extension is none of accepted
    QStringList accepted;
};
QStringList FileStatementWizard(WizardAsker &ask, const WizardContext &context, const FileStatement &form);

// Statement text helpers.
QString Statement(const QString &word, const QStringList &operands);  // "[WORD a b]"
QString Quoted(const QString &text);

} // namespace hotkeys::wizard
