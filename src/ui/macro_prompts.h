#pragma once
// The questions a running macro asks: the input box titled "Hotkeys" and frmText as a
// multi-line entry.
#include "platform/prompts.h"

namespace ui {

class MacroPrompts : public platform::Prompts {
public:
    bool inputBox(const QString &title, const QString &prompt, QString &reply) override;
    bool editText(QString &text) override;
    bool commonDialog(const platform::CommonDialog &dialog, QString &result) override;
};

} // namespace ui
