#pragma once
// The message window without a display: answers come from a list given in advance.
#include "platform/message_window.h"

#include <QList>
#include <QTextStream>
#include <deque>

namespace platform::headless {

class HeadlessMessageWindow : public MessageWindow {
public:
    // The answer when the list is used up: what a timed-out box answers (No).
    static constexpr int kDefaultAnswer = -1;

    std::deque<int> answers;     // 1 Yes, -1 No, -2 Cancel, -3 OK, used in order
    QList<MessageSpec> shown;    // every message, in order
    QTextStream *echo = nullptr; // when set, each message is written here as one line

    int showModal(const MessageSpec &request) override;
    void showModeless(const MessageSpec &request) override;
    void unload() override;
    void showPopup(const QString &text) override;
    void hidePopup() override {}

private:
    int nextAnswer(const MessageSpec &request);
    bool m_modelessOpen = false;
};

} // namespace platform::headless
