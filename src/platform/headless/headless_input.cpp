#include "platform/headless/headless_input.h"

#include <QProcess>

#include <cmath>

namespace platform::headless {

namespace {

const char *eventName(int flags)
{
    switch (flags) {
    case mouse_event::Move:
        return "MOVE";
    case mouse_event::LeftDown:
        return "LEFTDOWN";
    case mouse_event::LeftUp:
        return "LEFTUP";
    case mouse_event::RightDown:
        return "RIGHTDOWN";
    case mouse_event::RightUp:
        return "RIGHTUP";
    default:
        return "OTHER";
    }
}

int toPixels(int absolute, int extent)
{
    return int(std::lround(absolute * double(extent) / mouse_event::kAbsoluteRange));
}

} // namespace

void HeadlessMouseSender::mouseEvent(int flags, int absX, int absY)
{
    m_out << "MOUSE " << eventName(flags) << ' ' << toPixels(absX, kWidth) << ' ' << toPixels(absY, kHeight)
          << Qt::endl;
}

bool HeadlessPrompts::inputBox(const QString &title, const QString &prompt, QString &)
{
    m_out << "INPUT " << title << ": " << prompt << Qt::endl;
    return false;
}

bool HeadlessPrompts::editText(QString &)
{
    m_out << "INPUT TEXTBOX" << Qt::endl;
    return false;
}

bool HeadlessDesktop::openUrl(const QString &url)
{
    return QProcess::startDetached(QStringLiteral("xdg-open"), {url});
}

bool HeadlessDesktop::startDetached(const QString &program, const QStringList &args, const QString &workDir)
{
    return QProcess::startDetached(program, args, workDir);
}

bool HeadlessDesktop::runAndWait(const QString &program, const QStringList &args, const QString &workDir)
{
    QProcess process;
    process.setWorkingDirectory(workDir);
    process.start(program, args);
    if (!process.waitForStarted())
        return false;
    process.waitForFinished(-1);
    return true;
}

} // namespace platform::headless
