#include "platform/qt/qt_web_fetch.h"

#include <QLoggingCategory>
#include <QMutexLocker>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>

namespace platform {

namespace {

Q_LOGGING_CATEGORY(lcWebFetch, "sonamark.web", QtWarningMsg)

constexpr int kMaxRedirects = 10;                    // hops followed before the fetch fails
constexpr qint64 kMaxBodyBytes = 32LL * 1024 * 1024;  // a longer body is abandoned

QByteArray userAgent()
{
    return QByteArrayLiteral("Sonamark/") + QByteArray::number(SONAMARK_VERSION_MAJOR) + '.'
           + QByteArray::number(SONAMARK_VERSION_MINOR);
}

// True when the server answered the request: a status came in and the reply ended
// without a network-level fault. HTTP error statuses (404, 500...) count: their body
// is the answer, as a browser would show it. Redirects that could not be followed
// (too many, or from https to http) are network-level faults and count as no answer.
bool serverAnswered(QNetworkReply *reply)
{
    if (!reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        return false;
    const QNetworkReply::NetworkError error = reply->error();
    return error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied;
}

} // namespace

// The network side; every member runs on the fetch thread.
class FetchWorker : public QObject {
public:
    explicit FetchWorker(QtWebFetch *owner) : m_owner(owner) {}

    void fetch(const QUrl &url, quint64 number)
    {
        dropReply();
        if (!m_manager)
            m_manager = new QNetworkAccessManager(this);
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
        request.setMaximumRedirectsAllowed(kMaxRedirects);
        request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
        m_number = number;
        m_body.clear();
        m_reply = m_manager->get(request);
        connect(m_reply, &QNetworkReply::readyRead, this, [this] { readBody(); });
        connect(m_reply, &QNetworkReply::finished, this, [this] { finished(); });
        qCDebug(lcWebFetch) << "fetch" << number << url.toDisplayString();
    }

    // Stops the reply under way without a response.
    void dropReply()
    {
        if (!m_reply)
            return;
        disconnect(m_reply, nullptr, this, nullptr);  // abort() emits finished at once
        m_reply->abort();
        m_reply->deleteLater();
        m_reply = nullptr;
        m_body.clear();
    }

private:
    void readBody()
    {
        if (m_body.size() + m_reply->bytesAvailable() > kMaxBodyBytes) {
            qCWarning(lcWebFetch) << "fetch" << m_number << "abandoned: body beyond" << kMaxBodyBytes << "bytes";
            dropReply();
            return;
        }
        m_body += m_reply->readAll();
    }

    void finished()
    {
        readBody();
        if (!m_reply)
            return;
        QNetworkReply *reply = m_reply;
        m_reply = nullptr;
        reply->deleteLater();
        if (!serverAnswered(reply)) {
            qCInfo(lcWebFetch) << "fetch" << m_number << "failed:" << reply->errorString();
            m_body.clear();
            return;
        }
        WebResponse response;
        response.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        response.contentType = reply->rawHeader("Content-Type");
        response.body = std::exchange(m_body, {});
        qCDebug(lcWebFetch) << "fetch" << m_number << "complete:" << response.status << response.contentType
                            << response.body.size() << "bytes";
        m_owner->deliver(m_number, response);
    }

    QtWebFetch *m_owner;
    QNetworkAccessManager *m_manager = nullptr;  // made on the fetch thread, on first use
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    quint64 m_number = 0;
};

QtWebFetch::QtWebFetch() { m_thread.setObjectName(QStringLiteral("web fetch")); }

QtWebFetch::~QtWebFetch()
{
    if (!m_thread.isRunning())
        return;
    // The worker, its manager and any reply are deleted on the fetch thread as it ends.
    m_thread.quit();
    m_thread.wait();
}

void QtWebFetch::start(const QUrl &url)
{
    if (!m_worker) {
        m_worker = new FetchWorker(this);
        m_worker->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
        m_thread.start();
    }
    quint64 number = 0;
    {
        const QMutexLocker lock(&m_mutex);
        number = ++m_lastFetch;
        m_wanted = number;
        m_response.reset();
    }
    FetchWorker *worker = m_worker;
    QMetaObject::invokeMethod(worker, [worker, url, number] { worker->fetch(url, number); }, Qt::QueuedConnection);
}

void QtWebFetch::cancel()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_wanted = 0;
        m_response.reset();
    }
    if (!m_worker)
        return;
    FetchWorker *worker = m_worker;
    QMetaObject::invokeMethod(worker, [worker] { worker->dropReply(); }, Qt::QueuedConnection);
}

bool QtWebFetch::takeResponse(WebResponse &response)
{
    const QMutexLocker lock(&m_mutex);
    if (!m_response)
        return false;
    response = std::move(*m_response);
    m_response.reset();
    return true;
}

void QtWebFetch::deliver(quint64 fetch, const WebResponse &response)
{
    const QMutexLocker lock(&m_mutex);
    if (fetch == m_wanted)
        m_response = response;
}

} // namespace platform
