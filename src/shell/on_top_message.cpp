#include "shell/on_top_message.h"

#include "platform/services.h"
#include "shell/app_state.h"

#include <QCoreApplication>
#include <QThread>
#include <QTime>

namespace shell {

namespace {

int g_msgAlign = 2;
ClockFn g_clock;

constexpr double kSecondsPerDay = 86400;
constexpr int kWaitSliceMs = 10;  // pause between event pumps while a timed message waits

} // namespace

void SetMsgAlign(int align) { g_msgAlign = align; }

void SetMsgResult(int result) { app().MsgResult = result; }

int DefaultAnswer(int type)
{
    switch (type) {
    case 1: return MsgNo;
    case 2: return MsgCancel;
    default: return MsgOk;
    }
}

QString ShownMessageText(const QString &text)
{
    QString shown = text.left(kMsgMaxChars);
    if (!shown.endsWith(QLatin1Char('\n')) && !shown.endsWith(QLatin1Char('\r')))
        shown += QStringLiteral("\r\n");
    return shown;
}

void SetMessageClock(ClockFn clock) { g_clock = std::move(clock); }

double SecondsSinceMidnight()
{
    if (g_clock)
        return g_clock();
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void MsgBoxOT(const QString &text, int type, const QString &title, double timeout)
{
    AppState &state = app();
    state.MsgResult = MsgNone;
    if (text.trimmed().isEmpty())
        return;

    platform::MessageSpec request;
    request.text = ShownMessageText(text);
    request.title = title;
    request.type = type;
    request.align = g_msgAlign;
    g_msgAlign = 2;

    platform::MessageWindow *window = platform::services().messages;
    if (!window)
        return;

    if (timeout <= 0) {
        request.timeout = 0;
        const int answer = window->showModal(request);
        if (state.MsgResult == MsgNone)
            state.MsgResult = answer;
        return;
    }

    request.timeout = timeout;
    const double start = SecondsSinceMidnight();
    const double deadline = start + timeout + 1;
    window->answered = SetMsgResult;
    window->showModeless(request);
    while (state.MsgResult == MsgNone) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kWaitSliceMs);
        if (state.MsgResult != MsgNone)
            break;
        double now = SecondsSinceMidnight();
        if (now < start)
            now += kSecondsPerDay;  // the clock passed midnight
        if (now >= deadline)
            break;
        QThread::msleep(kWaitSliceMs);
    }
    if (state.MsgResult == MsgNone)
        window->unload();
    if (state.MsgResult == MsgNone)
        state.MsgResult = DefaultAnswer(type);
}

int GetNumLines(const QString &text, int width, const std::function<int(const QString &)> &measure)
{
    if (width <= 0)
        width = 1;
    int count = 0;
    auto countStretch = [&](const QString &stretch) {
        count += stretch.isEmpty() ? 1 : measure(stretch) / width + 1;
    };
    QString stretch;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        // Only a carriage return breaks a line; line feeds are skipped.
        if (c == QLatin1Char('\r')) {
            countStretch(stretch);
            stretch.clear();
        } else if (c != QLatin1Char('\n')) {
            stretch += c;
        }
    }
    if (!stretch.isEmpty())
        countStretch(stretch);
    return count;
}

int ChooseMessageLayout(int windowWidth, int lines)
{
    if (windowWidth <= kMsgWideWindow) {
        if (lines > 5 && lines < 12)
            return 2;
        if (lines >= 12)
            return 3;
        if (lines < 4)
            return 4;
        return 0;
    }
    return lines < 6 ? 1 : 3;
}

} // namespace shell
