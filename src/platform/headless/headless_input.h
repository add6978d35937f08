#pragma once
// The rest of a macro's reach without a display: mouse events written as lines, no
// windows to find, questions answered with Cancel, and programs started for real.
#include "platform/desktop.h"
#include "platform/mouse_sender.h"
#include "platform/prompts.h"
#include "platform/window_finder.h"

#include <QTextStream>

namespace platform::headless {

// Each event becomes "MOUSE <event> <x> <y>" in pixels of a nominal screen.
class HeadlessMouseSender : public MouseSender {
public:
    static constexpr int kWidth = 1920;  // the nominal screen a headless run clicks on
    static constexpr int kHeight = 1080;
    explicit HeadlessMouseSender(QTextStream &out) : m_out(out) {}
    QSize screenSize() const override { return {kWidth, kHeight}; }
    void mouseEvent(int flags, int absX, int absY) override;

private:
    QTextStream &m_out;
};

// There are no windows: every search answers that the class was not found.
class HeadlessWindowFinder : public WindowFinder {
public:
    bool activateWindowOfClass(const QString &) override { return false; }
};

// Nobody is there to answer: each question is written as a line and cancelled.
class HeadlessPrompts : public Prompts {
public:
    explicit HeadlessPrompts(QTextStream &out) : m_out(out) {}
    bool inputBox(const QString &title, const QString &prompt, QString &reply) override;
    bool editText(QString &text) override;

private:
    QTextStream &m_out;
};

// Programs are started detached; addresses and documents go to xdg-open.
class HeadlessDesktop : public Desktop {
public:
    bool openUrl(const QString &url) override;
    bool startDetached(const QString &program, const QStringList &args, const QString &workDir) override;
    bool runAndWait(const QString &program, const QStringList &args, const QString &workDir) override;
};

} // namespace platform::headless
