#include "fakes/fake_services.h"

#include "shell/on_top_message.h"

namespace fakes {

int FakeMessageWindow::nextAnswer(int type)
{
    if (answers.empty())
        return shell::DefaultAnswer(type);
    const int a = answers.front();
    answers.pop_front();
    return a;
}

int FakeMessageWindow::showModal(const platform::MessageSpec &request)
{
    shown << request;
    return nextAnswer(request.type);
}

void FakeMessageWindow::showModeless(const platform::MessageSpec &request)
{
    shown << request;
    m_openType = request.type;
    if (!answers.empty() && answered)
        answered(nextAnswer(request.type));
}

void FakeMessageWindow::unload()
{
    ++unloads;
    if (m_openType >= 0 && answered)
        answered(shell::DefaultAnswer(m_openType));
    m_openType = -1;
}

void FakeMessageWindow::showPopup(const QString &text)
{
    popups << text;
    popupVisible = true;
}

void FakeMessageWindow::hidePopup() { popupVisible = false; }

platform::ErrorWindow::Choice FakeErrorWindow::showError(const QString &errorText)
{
    reports << errorText;
    return answer;
}

bool FakeTrayIcon::addIcon(platform::TrayPicture p, const QString &t)
{
    picture = p;
    tip = t;
    shown = true;
    return true;
}

QList<qint64> FakeProcesses::pidsNamed(const QString &name) const
{
    QList<qint64> pids;
    for (auto it = running.cbegin(); it != running.cend(); ++it)
        if (it.value().compare(name, Qt::CaseInsensitive) == 0)
            pids << it.key();
    return pids;
}

bool FakeProcesses::terminate(qint64 pid)
{
    terminated << pid;
    running.remove(pid);
    return true;
}

bool FakeDesktop::startDetached(const QString &program, const QStringList &args, const QString &)
{
    started << (QStringList{program} + args).join(QLatin1Char(' '));
    return canStart;
}

bool FakeDesktop::runAndWait(const QString &program, const QStringList &args, const QString &)
{
    started << (QStringList{program} + args).join(QLatin1Char(' '));
    if (canStart && whileRunning)
        whileRunning();
    return canStart;
}

void FakeSpeechEngine::setVoice(int index)
{
    chosenVoice = index;
    calls << QStringLiteral("voice %1").arg(index);
}

void FakeSpeechEngine::setVolume(int v)
{
    vol = qBound(0, v, 100);
    calls << QStringLiteral("volume %1").arg(v);
}

void FakeSpeechEngine::setRate(int r)
{
    rt = qBound(-10, r, 10);
    calls << QStringLiteral("rate %1").arg(r);
}

void FakeSpeechEngine::speak(const QString &text, int flags)
{
    calls << QStringLiteral("speak %1 %2").arg(flags).arg(text);
    if (flags == platform::kSpeakPurgeBeforeSpeak && text.isEmpty()) {
        state.RunningState = platform::kRunningDone;
        return;
    }
    lastSpoken = text;
    state.RunningState = platform::kRunningSpeaking;
}

void FakeSpeechEngine::pause()
{
    calls << QStringLiteral("pause");
    state.RunningState = platform::kRunningPaused;
}

void FakeSpeechEngine::resume()
{
    calls << QStringLiteral("resume");
    if (state.RunningState == platform::kRunningPaused)
        state.RunningState = platform::kRunningSpeaking;
}

void FakeSpeechEngine::startStream()
{
    state.RunningState = platform::kRunningSpeaking;
    if (onStartStream)
        onStartStream();
}

void FakeSpeechEngine::word(int position, int length)
{
    state.InputWordPosition = position;
    if (onWord)
        onWord(position, length);
}

void FakeSpeechEngine::endStream()
{
    state.RunningState = platform::kRunningDone;
    if (onEndStream)
        onEndStream();
}

FakeServices::FakeServices()
{
    platform::Services set;
    set.messages = &messages;
    set.errors = &errors;
    set.tray = &tray;
    set.processes = &processes;
    set.clipboard = &clipboard;
    set.desktop = &desktop;
    set.keys = &keys;
    set.textWindow = &textWindow;
    set.readerText = &readerText;
    set.speech = &speech;
    set.inputHooks = &inputHooks;
    set.mouse = &mouse;
    set.windows = &windows;
    set.prompts = &prompts;
    set.web = &web;
    m_previous = platform::install(set);
}

FakeServices::~FakeServices() { platform::install(m_previous); }

} // namespace fakes
