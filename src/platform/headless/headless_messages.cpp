#include "platform/headless/headless_messages.h"

#include "shell/on_top_message.h"

namespace platform::headless {

int HeadlessMessageWindow::nextAnswer(const MessageSpec &spec)
{
    shown << spec;
    if (echo) {
        QString text = spec.text.trimmed();
        text.replace(QLatin1String("\r\n"), QLatin1String(" | "));
        *echo << "MESSAGE " << spec.title << ": " << text << Qt::endl;
    }
    if (answers.empty())
        return kDefaultAnswer;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

int HeadlessMessageWindow::showModal(const MessageSpec &spec) { return nextAnswer(spec); }

void HeadlessMessageWindow::showModeless(const MessageSpec &spec)
{
    m_modelessOpen = true;
    shell::SetMsgResult(nextAnswer(spec));
}

void HeadlessMessageWindow::unload()
{
    if (m_modelessOpen)
        shell::SetMsgResult(kDefaultAnswer);
    m_modelessOpen = false;
}

void HeadlessMessageWindow::showPopup(const QString &text)
{
    if (echo)
        *echo << "POPUP " << text << Qt::endl;
}

} // namespace platform::headless
