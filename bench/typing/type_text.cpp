// type_text FILE: types the UTF-8 text of FILE, as it stands, into the focused window
// through X11KeySender, in one sendKeys call. The driver of typing_bench.sh.
#include "platform/x11/x11_key_sender.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: type_text FILE\n");
        return 2;
    }
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "type_text: cannot read %s\n", argv[1]);
        return 1;
    }
    QString notation;
    for (QChar c : QString::fromUtf8(file.readAll()))
        notation += QStringLiteral("+^%~(){}").contains(c) ? QStringLiteral("{%1}").arg(c) : QString(c);
    platform::x11::X11KeySender keys;
    if (!keys.available())
        return 1;
    keys.sendKeys(notation);
    return 0;
}
