#pragma once
// The web fetch on QNetworkAccessManager, run on a thread of its own.
//
// [WEBSOURCE] waits in shell::Delay, which sleeps the GUI thread without pumping its
// events. A network manager living on the GUI thread would then only move on in the
// short DoEvents between the one-second sleeps: every redirect hop and every burst of
// data would cost a second. The manager therefore lives on its own thread with its own
// event loop, and the finished response is handed over under a lock, for the GUI
// thread to take when it looks. The thread starts with the first fetch.
#include "platform/web_fetch.h"

#include <QMutex>
#include <QThread>
#include <optional>

namespace platform {

class FetchWorker;

class QtWebFetch : public WebFetch {
public:
    QtWebFetch();
    ~QtWebFetch() override;
    QtWebFetch(const QtWebFetch &) = delete;
    QtWebFetch &operator=(const QtWebFetch &) = delete;

    void start(const QUrl &url) override;
    void cancel() override;
    bool takeResponse(WebResponse &response) override;

    // Network thread: the response of fetch number `fetch`, kept if it is still wanted.
    void deliver(quint64 fetch, const WebResponse &response);

private:
    QThread m_thread;
    FetchWorker *m_worker = nullptr;  // lives on m_thread; deleted when it ends

    QMutex m_mutex;                   // guards the three below
    quint64 m_lastFetch = 0;          // number given to the latest start
    quint64 m_wanted = 0;             // fetch whose response is wanted, 0 after cancel
    std::optional<WebResponse> m_response;
};

} // namespace platform
