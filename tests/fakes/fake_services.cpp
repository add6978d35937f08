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

int FakeMessageWindow::showModal(const platform::MessageSpec &spec)
{
    shown << spec;
    return nextAnswer(spec.type);
}

void FakeMessageWindow::showModeless(const platform::MessageSpec &spec)
{
    shown << spec;
    m_openType = spec.type;
    if (!answers.empty())
        shell::SetMsgResult(nextAnswer(spec.type));
}

void FakeMessageWindow::unload()
{
    ++unloads;
    if (m_openType >= 0)
        shell::SetMsgResult(shell::DefaultAnswer(m_openType));
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
    m_previous = platform::install(set);
}

FakeServices::~FakeServices() { platform::install(m_previous); }

} // namespace fakes
