#pragma once
// Entries of the Help menu that show a shipped text or open the web site. Shipped help
// files are looked for in the "help" folder of each shared data folder
// (shell::SharedDataFolders).
#include <QString>
#include <QStringList>

namespace reader {

inline const QString kXmlTutorialFile = QStringLiteral("XML_Tutorial.rtf");
inline const QString kXmlSupportCaption = QStringLiteral("XML Support");
inline const QString kWebSiteUrl = QStringLiteral("https://sonamark.org/");

// The folders shipped help files may be in, in the order they are tried, for a program
// in programFolder (with a trailing "/").
QStringList HelpFolders(const QString &programFolder);

// Shows the rich text file name, taken from the first of folders that holds it, as plain
// text in the text window under caption. A file in none of them, or one that does not
// read as rich text, gives "File " + name + " could not be accessed." titled "File Error".
void ShowHelpFile(const QString &name, const QString &caption, const QStringList &folders);

// Help > XML Support: the XML tutorial.
void mnuHelpXML_Click();

// The statement reference of the macro language, and the help on dialog strings of
// [USERINPUT Title Var], both shown in the text window.
inline const QString kHotkeysHelpFile = QStringLiteral("Hotkeys.rtf");
inline const QString kHotkeysHelpCaption = QStringLiteral("Hotkeys Help");
inline const QString kCommonDialogHelpFile = QStringLiteral("CommonDialog.rtf");
inline const QString kCommonDialogHelpCaption = QStringLiteral("Common Dialog Help");

// The part of the reference's plain text about one statement, given by its first word as
// the wizards name it ("[COPYFILE ", "[VAR=", "[SPELLCHECK]", in any case): from the
// line that holds the statement's form, at the start of the line, up to the next such
// line or group title ("== ... =="). Empty when the statement is not in the text.
QString StatementHelpText(const QString &plainText, const QString &statement);

// Shows the help for one statement from Hotkeys.rtf, or the whole reference when
// statement is empty or not found. A missing file is told as by ShowHelpFile.
void HelpHotkeys(const QString &statement);

// The Help button of frmComDiag: CommonDialog.rtf.
void ShowCommonDialogHelp();

// Starts the user's browser with url. With no program to open URLs: "Missing Internet
// Explorer. Launch the following URL in your browser:" and the url, titled "Missing IE".
// When it cannot be started: "Could not launch
// Internet Explorer. Visit the following link in your browser:" and the url, titled
// "Can't Start IE".
void LaunchSonamarkWebSite(const QString &url);

} // namespace reader
