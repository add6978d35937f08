#pragma once
// Entries of the Help menu that show a shipped text or open the web site. Shipped help
// files are looked for in "help" beside the program, then in share/sonamark/help under
// the program's prefix.
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

// Starts the user's browser with url. With no program to open URLs: "Missing Internet
// Explorer. Launch the following URL in your browser:" and the url, titled "Missing IE".
// When it cannot be started: "Could not launch
// Internet Explorer. Visit the following link in your browser:" and the url, titled
// "Can't Start IE".
void LaunchSonamarkWebSite(const QString &url);

} // namespace reader
