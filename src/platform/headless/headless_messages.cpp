#include "platform/headless/headless_messages.h"

namespace platform::headless {

int HeadlessMessageWindow::nextAnswer(const MessageSpec &request)
{
    shown << request;
    if (echo) {
        QString text = request.text.trimmed();
        text.replace(QLatin1String("\r\n"), QLatin1String(" | "));
        *echo << "MESSAGE " << request.title << ": " << text << Qt::endl;
    }
    if (answers.empty())
        return kDefaultAnswer;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

int HeadlessMessageWindow::showModal(const MessageSpec &request) { return nextAnswer(request); }

void HeadlessMessageWindow::showModeless(const MessageSpec &request)
{
    m_modelessOpen = true;
    const int answer = nextAnswer(request);
    if (answered)
        answered(answer);
}

void HeadlessMessageWindow::unload()
{
    if (m_modelessOpen && answered)
        answered(kDefaultAnswer);
    m_modelessOpen = false;
}

void HeadlessMessageWindow::showPopup(const QString &text)
{
    if (echo)
        *echo << "POPUP " << text << Qt::endl;
}

} // namespace platform::headless
