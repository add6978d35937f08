#pragma once
// frmText without a display: keeps every text it was asked to show, in order.
#include "platform/text_window.h"

#include <QList>

namespace platform::headless {

class HeadlessTextWindow : public TextWindow {
public:
    struct Shown {
        QString caption;
        QString text;
    };
    QList<Shown> shown;
    void showText(const QString &caption, const QString &text) override { shown << Shown{caption, text}; }
    // Nobody is there to close it: it is kept like any other text.
    void showModal(const QString &caption, const QString &text) override { shown << Shown{caption, text}; }
};

} // namespace platform::headless
