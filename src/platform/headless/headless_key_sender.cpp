#include "platform/headless/headless_key_sender.h"

namespace platform::headless {

void HeadlessKeySender::sendKeys(const QString &notation) { m_out << "SENDKEYS " << notation << Qt::endl; }

void HeadlessKeySender::pressKey(int virtualKey) { m_out << "KEY " << virtualKey << Qt::endl; }

} // namespace platform::headless
