#pragma once
// Key injection without a display: each delivery becomes one line of text,
// "SENDKEYS <notation>" or "KEY <code>".
#include "platform/key_sender.h"

#include <QTextStream>

namespace platform::headless {

class HeadlessKeySender : public KeySender {
public:
    explicit HeadlessKeySender(QTextStream &out) : m_out(out) {}
    void sendKeys(const QString &notation) override;
    void pressKey(int virtualKey) override;

private:
    QTextStream &m_out;
};

} // namespace platform::headless
