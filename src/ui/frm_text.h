#pragma once
// frmText: a window that shows a long text, such as the run-time report of a macro.
#include "platform/text_window.h"

#include <QDialog>
#include <QPointer>

class QPlainTextEdit;

namespace ui {

class frmText : public QDialog {
    Q_OBJECT
public:
    explicit frmText(QWidget *parent = nullptr);
    ~frmText() override;
    void setContent(const QString &caption, const QString &text);
    QPlainTextEdit *txtText = nullptr;
};

class TextWindows : public platform::TextWindow {
public:
    ~TextWindows() override;
    void showText(const QString &caption, const QString &text) override;
    void showModal(const QString &caption, const QString &text) override;
private:
    QPointer<frmText> m_window;
};

} // namespace ui
