#pragma once
// frmPopup: a small borderless notice for a moment's feedback.
#include <QWidget>

class QLabel;

namespace ui {

class frmPopup : public QWidget {
    Q_OBJECT
public:
    explicit frmPopup(const QString &text, QWidget *parent = nullptr);
    QLabel *lblPopup = nullptr;
    QLabel *Image1 = nullptr;
};

} // namespace ui
