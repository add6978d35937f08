#pragma once
// A WizardAsker that plays a script: each question must be the next one expected, with
// its title and text, and gets the scripted answer. Any other question fails the test
// and is answered with Cancel, so a wizard that strays ends at once.
#include "hotkeys/wizard_asker.h"

#include <QList>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

namespace wizard_script {

enum class Kind { Message, Input, File, Folder, Point, WindowClass, DateTime };

struct Question {
    Kind kind;
    QString title;    // message/input/file/folder/point/class title
    QString text;     // message text, input prompt, file filter; for DateTime "future" or "past"
    int type = -1;    // message type; -1: not checked
    int answer = hotkeys::WizardOk;  // message answer; other kinds: 1 answered, 0 cancel, -1 mouse not hooked
    QString reply;    // input reply, path, "x,y", class name, "date|time"
    QString defaultText;  // input: the default expected, when checkDefault
    bool checkDefault = false;
};

inline Question Ask(const QString &title, const QString &text, int answer, int type = 3)
{
    return {Kind::Message, title, text, type, answer, {}, {}, false};
}
inline Question Note(const QString &title, const QString &text) { return Ask(title, text, hotkeys::WizardOk, 0); }
inline Question Continue(const QString &title, const QString &text, int answer) { return Ask(title, text, answer, 4); }
inline Question Input(const QString &title, const QString &prompt, const QString &reply)
{
    return {Kind::Input, title, prompt, -1, 1, reply, {}, false};
}
inline Question InputWithDefault(const QString &title, const QString &prompt, const QString &defaultText,
                                 const QString &reply)
{
    return {Kind::Input, title, prompt, -1, 1, reply, defaultText, true};
}
inline Question File(const QString &title, const QString &filter, const QString &path)
{
    return {Kind::File, title, filter, -1, 1, path, {}, false};
}
inline Question Folder(const QString &title, const QString &path) { return {Kind::Folder, title, {}, -1, 1, path, {}, false}; }
inline Question Point(const QString &title, int x, int y)
{
    return {Kind::Point, title, {}, -1, 1, QStringLiteral("%1,%2").arg(x).arg(y), {}, false};
}
inline Question Unhooked(const QString &title) { return {Kind::Point, title, {}, -1, -1, {}, {}, false}; }
inline Question Class(const QString &title, const QString &name) { return {Kind::WindowClass, title, {}, -1, 1, name, {}, false}; }
inline Question ClassUnhooked(const QString &title) { return {Kind::WindowClass, title, {}, -1, -1, {}, {}, false}; }
inline Question Date(bool future, const QString &date, const QString &time)
{
    return {Kind::DateTime, {}, future ? QStringLiteral("future") : QStringLiteral("past"), -1, 1, date + QLatin1Char('|') + time,
            {}, false};
}

// The same question, answered with Cancel (or Esc, or No for a Yes/No box).
inline Question Cancelled(Question q)
{
    if (q.kind == Kind::Message)
        q.answer = q.type == 4 ? hotkeys::WizardNo : hotkeys::WizardCancel;
    else
        q.answer = 0;
    return q;
}
// True when the question can be cancelled (a note has only OK).
inline bool Cancellable(const Question &q) { return !(q.kind == Kind::Message && q.type == 0); }

class ScriptedAsker : public hotkeys::WizardAsker {
public:
    explicit ScriptedAsker(QList<Question> script, QSize screenSize = QSize(1920, 1080))
        : m_script(std::move(script)), m_screen(screenSize) {}

    int message(const QString &text, int type, const QString &title) override
    {
        const Question *q = next(Kind::Message, title, text);
        if (!q)
            return hotkeys::WizardCancel;
        if (q->type >= 0) {
            EXPECT_EQ(type, q->type) << "message type of " << text.toStdString();
        }
        return q->answer;
    }
    bool input(const QString &title, const QString &prompt, QString &reply, const QString &defaultText) override
    {
        const Question *q = next(Kind::Input, title, prompt);
        if (!q || q->answer != 1)
            return false;
        if (q->checkDefault) {
            EXPECT_EQ(defaultText, q->defaultText) << "default of " << prompt.toStdString();
        }
        reply = q->reply;
        return true;
    }
    bool file(const QString &title, const QString &filter, bool, QString &path, const QString &) override
    {
        const Question *q = next(Kind::File, title, filter);
        if (!q || q->answer != 1)
            return false;
        path = q->reply;
        return true;
    }
    bool folder(const QString &title, QString &path) override
    {
        const Question *q = next(Kind::Folder, title, {});
        if (!q || q->answer != 1)
            return false;
        path = q->reply;
        return true;
    }
    bool point(const QString &title, QPoint &at, bool &hooked) override
    {
        const Question *q = next(Kind::Point, title, {});
        hooked = !q || q->answer != -1;
        if (!q || q->answer != 1)
            return false;
        const QStringList xy = q->reply.split(QLatin1Char(','));
        at = QPoint(xy.at(0).toInt(), xy.at(1).toInt());
        return true;
    }
    bool windowClass(const QString &title, QString &className, bool &hooked) override
    {
        const Question *q = next(Kind::WindowClass, title, {});
        hooked = !q || q->answer != -1;
        if (!q || q->answer != 1)
            return false;
        className = q->reply;
        return true;
    }
    bool dateTime(bool future, QString &date, QString &time) override
    {
        const Question *q = next(Kind::DateTime, {}, future ? QStringLiteral("future") : QStringLiteral("past"));
        if (!q || q->answer != 1)
            return false;
        date = q->reply.section(QLatin1Char('|'), 0, 0);
        time = q->reply.section(QLatin1Char('|'), 1);
        return true;
    }
    QSize screen() override { return m_screen; }
    void help(const QString &statement) override { helped << statement; }

    bool finished() const { return m_next == m_script.size(); }
    QStringList helped;
    int asked() const { return m_asked; }

private:
    const Question *next(Kind kind, const QString &title, const QString &text)
    {
        ++m_asked;
        if (m_next >= m_script.size()) {
            ADD_FAILURE() << "unexpected question: " << title.toStdString() << " / " << text.toStdString();
            return nullptr;
        }
        const Question &q = m_script.at(m_next++);
        if (q.kind != kind || q.title != title || q.text != text) {
            ADD_FAILURE() << "question " << m_next << " expected: " << q.title.toStdString() << " / "
                          << q.text.toStdString() << "\n  but asked: " << title.toStdString() << " / " << text.toStdString();
            m_next = int(m_script.size());  // the rest of the script no longer fits
            return nullptr;
        }
        return &q;
    }

    QList<Question> m_script;
    QSize m_screen;
    int m_next = 0;
    int m_asked = 0;
};

} // namespace wizard_script
