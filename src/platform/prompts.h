#pragma once
// Port: the questions a macro asks the user for text.
#include <QString>

namespace platform {

class Prompts {
public:
    virtual ~Prompts() = default;
    // The plain input box: prompt under title, one line. False on Cancel.
    virtual bool inputBox(const QString &title, const QString &prompt, QString &reply) = 0;
    // frmText as a modal multi-line entry, starting with text. False on Cancel.
    virtual bool editText(QString &text) = 0;
};

} // namespace platform
