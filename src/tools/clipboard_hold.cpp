#include "clipboard_hold.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <cstring>

namespace {
constexpr const char *kHoldSwitch = "--hold-clipboard";
constexpr int kHoldMs = 60000;        // longest time the holder keeps the clipboard
constexpr int kHandOverWaitMs = 5000; // longest wait for the holder to take it
constexpr int kPollMs = 20;
} // namespace

bool RunAsClipboardHolder(int argc, char **argv)
{
    if (argc != 3 || std::strcmp(argv[1], kHoldSwitch) != 0)
        return false;
    QGuiApplication app(argc, argv);
    const QString text = QString::fromUtf8(argv[2]);
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setText(text);
    // Ends when someone else owns the clipboard, or after kHoldMs.
    QObject::connect(clipboard, &QClipboard::changed, &app, [clipboard](QClipboard::Mode mode) {
        if (mode == QClipboard::Clipboard && !clipboard->ownsClipboard())
            QCoreApplication::quit();
    });
    QTimer::singleShot(kHoldMs, &app, &QCoreApplication::quit);
    QGuiApplication::exec();
    return true;
}

bool HandOverClipboard(const QString &text)
{
    // The holder outlives this process: it must not keep our output streams open.
    QProcess holder;
    holder.setProgram(QCoreApplication::applicationFilePath());
    holder.setArguments({QLatin1String(kHoldSwitch), text});
    holder.setStandardInputFile(QProcess::nullDevice());
    holder.setStandardOutputFile(QProcess::nullDevice());
    holder.setStandardErrorFile(QProcess::nullDevice());
    if (!holder.startDetached())
        return false;
    QClipboard *clipboard = QGuiApplication::clipboard();
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kHandOverWaitMs) {
        QCoreApplication::processEvents();
        if (clipboard->text() == text)
            return true;
        QThread::msleep(kPollMs);
    }
    return false;
}
