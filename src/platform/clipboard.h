#pragma once
// Port: the system clipboard (text part).
#include <QString>

namespace platform {

class Clipboard {
public:
    virtual ~Clipboard() = default;
    // The clipboard's text, or "" when there is none (or the owner did not answer in time).
    virtual QString text() = 0;
    virtual void setText(const QString &text) = 0;
    virtual void clear() = 0;
};

} // namespace platform
