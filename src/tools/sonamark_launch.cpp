// sonamark-launch NAME [SECONDS]: asks the running Sonamark to run the macro NAME,
// SECONDS later. The request travels as the clipboard command "/", U+00E0, " ", NAME
// and the optional wait; a macro name with blanks is written with "$" for each blank.
#include "clipboard_hold.h"

#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    if (RunAsClipboardHolder(argc, argv))
        return 0;
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    QTextStream err(stderr);
    if (args.isEmpty() || args.size() > 2 || args.first().isEmpty()) {
        err << "Usage: sonamark-launch NAME [SECONDS]\n"
               "Runs the Sonamark macro NAME (write each blank of the name as \"$\"),\n"
               "after SECONDS seconds when given.\n";
        return 2;
    }
    QString command = QStringLiteral("/\u00e0 ") + args.at(0);
    if (args.size() == 2)
        command += QLatin1Char(' ') + args.at(1);
    if (!HandOverClipboard(command)) {
        err << "sonamark-launch: could not put the command on the clipboard\n";
        return 1;
    }
    return 0;
}
