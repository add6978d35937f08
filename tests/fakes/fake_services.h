#pragma once
// Fakes of the platform ports: they record what the logic asked for and answer from a
// script. FakeServices installs all of them for the life of a test.
#include "fakes/fake_input_hooks.h"
#include "platform/services.h"

#include <QList>
#include <QMap>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace fakes {

class FakeMessageWindow : public platform::MessageWindow {
public:
    QList<platform::MessageSpec> shown;   // every message, in order
    std::deque<int> answers;              // answers to give, in order
    QStringList popups;
    bool popupVisible = false;
    int unloads = 0;

    int showModal(const platform::MessageSpec &request) override;
    void showModeless(const platform::MessageSpec &request) override;
    void unload() override;
    void showPopup(const QString &text) override;
    void hidePopup() override;
private:
    int nextAnswer(int type);
    int m_openType = -1;
};

class FakeErrorWindow : public platform::ErrorWindow {
public:
    QStringList reports;
    Choice answer = Choice::Continue;
    Choice showError(const QString &errorText) override;
};

class FakeTrayIcon : public platform::TrayIcon {
public:
    bool available = true;
    bool shown = false;
    platform::TrayPicture picture = platform::TrayPicture::Idle;
    QString tip;
    bool exists() const override { return available; }
    bool addIcon(platform::TrayPicture p, const QString &t) override;
    void changeIcon(platform::TrayPicture p) override { picture = p; }
    void changeTip(const QString &t) override { tip = t; }
    void deleteIcon() override { shown = false; }
    bool isShown() const override { return shown; }
};

class FakeProcesses : public platform::Processes {
public:
    QMap<qint64, QString> running;  // pid -> name
    QList<qint64> terminated;
    qint64 self = 1000;
    QList<qint64> pidsNamed(const QString &name) const override;
    bool terminate(qint64 pid) override;
    qint64 selfPid() const override { return self; }
    QString nameOf(qint64 pid) const override { return running.value(pid); }
};

// A picture of plain pixels, row by row.
class FakePicture : public platform::Picture {
public:
    FakePicture(int w, int h, quint32 fill = 0xff000000u) : m_w(w), m_h(h), m_pixels(qMax(0, w * h), fill) {}
    int width() const override { return m_w; }
    int height() const override { return m_h; }
    quint32 pixel(int x, int y) const override
    {
        return x >= 0 && y >= 0 && x < m_w && y < m_h ? m_pixels[size_t(y * m_w + x)] : 0;
    }
    void setPixel(int x, int y, quint32 value) { m_pixels[size_t(y * m_w + x)] = value; }
private:
    int m_w, m_h;
    std::vector<quint32> m_pixels;
};

// Holds either a text or a picture, as the real clipboard does. Every call is counted.
class FakeClipboard : public platform::Clipboard {
public:
    QString content;
    platform::PicturePtr pictureContent;
    int reads = 0;         // text reads
    int pictureReads = 0;
    int clears = 0;
    QStringList written;   // every text given to setText, in order
    QString text() override { ++reads; return content; }
    void setText(const QString &t) override { content = t; pictureContent.reset(); written << t; }
    void clear() override { content.clear(); pictureContent.reset(); ++clears; }
    platform::PicturePtr picture() override { ++pictureReads; return pictureContent; }
    void setPicture(const platform::PicturePtr &p) override { pictureContent = p; content.clear(); }
};

class FakeDesktop : public platform::Desktop {
public:
    QStringList opened;     // URLs
    QStringList started;    // "program arg1 arg2"
    bool canStart = true;
    bool canOpen = true;  // what openUrl answers
    std::function<void()> whileRunning;  // runs inside runAndWait
    bool openUrl(const QString &url) override { opened << url; return canOpen; }
    bool startDetached(const QString &program, const QStringList &args, const QString &) override;
    bool runAndWait(const QString &program, const QStringList &args, const QString &) override;
};

class FakeKeySender : public platform::KeySender {
public:
    QStringList sent;  // "SENDKEYS <text>" or "KEY <code>", in order
    // Called after each delivery is recorded, with its line; a test can abort the
    // macro from here or throw to stand for a failing delivery.
    std::function<void(const QString &)> onDeliver;
    void sendKeys(const QString &notation) override { deliver(QStringLiteral("SENDKEYS ") + notation); }
    void pressKey(int virtualKey) override { deliver(QStringLiteral("KEY %1").arg(virtualKey)); }
private:
    void deliver(const QString &line)
    {
        sent << line;
        if (onDeliver)
            onDeliver(line);
    }
};

// Records each mouse event as "<flags> <absX> <absY>" (flags in hex).
class FakeMouseSender : public platform::MouseSender {
public:
    QSize screen{1920, 1080};
    QStringList events;
    QSize screenSize() const override { return screen; }
    void mouseEvent(int flags, int absX, int absY) override
    {
        events << QStringLiteral("%1 %2 %3").arg(flags, 0, 16).arg(absX).arg(absY);
    }
};

class FakeWindowFinder : public platform::WindowFinder {
public:
    QStringList classes;    // windows that exist, by class
    QStringList activated;  // classes asked for, in order
    bool activateWindowOfClass(const QString &className) override
    {
        activated << className;
        return classes.contains(className);
    }
    QString classUnderPoints;  // what classAt answers anywhere
    QList<QPoint> classAsked;  // points asked for, in order
    QString classAt(int x, int y) override
    {
        classAsked << QPoint(x, y);
        return classUnderPoints;
    }
};

// Answers the questions from a script; a missing answer is Cancel.
class FakePrompts : public platform::Prompts {
public:
    QStringList asked;             // "input <title>|<prompt>" or "edit <text>"
    std::deque<QString> replies;   // replies in order; none left: Cancel
    bool inputBox(const QString &title, const QString &prompt, QString &reply) override
    {
        asked << QStringLiteral("input ") + title + QLatin1Char('|') + prompt;
        return take(reply);
    }
    bool editText(QString &text) override
    {
        asked << QStringLiteral("edit ") + text;
        return take(text);
    }
    // "dialog <kind> <title>|<start>|<extension>|<flags in hex>"
    bool commonDialog(const platform::CommonDialog &d, QString &result) override
    {
        asked << QStringLiteral("dialog %1 %2|%3|%4|%5")
                     .arg(int(d.kind))
                     .arg(d.title, d.startPath, d.extension, QString::number(d.flags, 16));
        return take(result);
    }
private:
    bool take(QString &into)
    {
        if (replies.empty())
            return false;
        into = replies.front();
        replies.pop_front();
        return true;
    }
};

// Answers a fetch with a scripted response at a given look; records starts and cancels.
class FakeWebFetch : public platform::WebFetch {
public:
    QList<QUrl> started;
    int cancels = 0;
    int looks = 0;                                  // takeResponse calls since the last start
    std::optional<platform::WebResponse> response;  // none: the fetch never completes
    int deliverAtLook = 1;
    std::function<void(int look)> onLook;           // runs at each look, before the answer
    void start(const QUrl &url) override
    {
        started << url;
        looks = 0;
        m_cancelled = false;
    }
    void cancel() override
    {
        ++cancels;
        m_cancelled = true;
    }
    bool takeResponse(platform::WebResponse &out) override
    {
        ++looks;
        if (onLook)
            onLook(looks);
        if (m_cancelled || !response || looks != deliverAtLook)
            return false;
        out = *response;
        return true;
    }
private:
    bool m_cancelled = false;
};

class FakeTextWindow : public platform::TextWindow {
public:
    QString caption;
    QString text;
    int shows = 0;       // texts shown either way
    int modalShows = 0;  // of them, shown modally
    std::function<void()> whileModal;  // runs while a modal window is open
    void showText(const QString &c, const QString &t) override { caption = c; text = t; ++shows; }
    void showModal(const QString &c, const QString &t) override
    {
        showText(c, t);
        ++modalShows;
        if (whileModal)
            whileModal();
    }
};

class FakeReaderText : public platform::ReaderText {
public:
    QString content;       // the reader's text box
    QStringList written;   // every text given to setText, in order
    QString text() override { return content; }
    void setText(const QString &t) override { content = t; written << t; }
};

// Records every engine call as a line ("speak 9 <text>", "pause", "voice 1"...) and lets
// the test raise the events and set the running state.
class FakeSpeechEngine : public platform::SpeechEngine {
public:
    QStringList voiceList{QStringLiteral("Voice A"), QStringLiteral("Voice B")};
    QStringList calls;
    int chosenVoice = -1;
    int vol = 100;
    int rt = 0;
    platform::SpeechStatus state;
    QString lastSpoken;

    QStringList voices() override { return voiceList; }
    void setVoice(int index) override;
    int volume() const override { return vol; }
    void setVolume(int v) override;
    int rate() const override { return rt; }
    void setRate(int r) override;
    void speak(const QString &text, int flags) override;
    void pause() override;
    void resume() override;
    platform::SpeechStatus status() const override { return state; }
    void setAudioOutputStream(platform::AudioOutputStream *stream) override
    {
        calls << (stream ? QStringLiteral("stream") : QStringLiteral("device"));
    }
    bool waitUntilDone(int) override { return state.RunningState == platform::kRunningDone; }

    // Event raisers, as the engine would call them.
    void startStream();
    void word(int position, int length);
    void endStream();
};

struct FakeServices {
    FakeMessageWindow messages;
    FakeErrorWindow errors;
    FakeTrayIcon tray;
    FakeProcesses processes;
    FakeClipboard clipboard;
    FakeDesktop desktop;
    FakeKeySender keys;
    FakeTextWindow textWindow;
    FakeReaderText readerText;
    FakeSpeechEngine speech;
    FakeInputHooks inputHooks;
    FakeMouseSender mouse;
    FakeWindowFinder windows;
    FakePrompts prompts;
    FakeWebFetch web;

    FakeServices();
    ~FakeServices();
    FakeServices(const FakeServices &) = delete;
    FakeServices &operator=(const FakeServices &) = delete;
private:
    platform::Services m_previous;
};

} // namespace fakes
