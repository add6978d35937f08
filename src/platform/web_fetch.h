#pragma once
// Port: fetching one web address in the background, polled for its response and
// cancellable at any time.
#include <QByteArray>
#include <QUrl>

namespace platform {

// A response the server has completed: its status line and headers arrived and the
// body was read to the end. An HTTP error status (404, 500) with a body is a complete
// response like any other; a connection that failed or was cut short is none.
struct WebResponse {
    int status = 0;           // HTTP status code
    QByteArray contentType;   // the Content-Type header as sent, "" when absent
    QByteArray body;
};

class WebFetch {
public:
    virtual ~WebFetch() = default;
    // Starts fetching url (http or https) and returns at once. A fetch still under way
    // is dropped: only the latest one can deliver.
    virtual void start(const QUrl &url) = 0;
    // Stops the fetch under way, if any; it never delivers. Safe to call at any time.
    virtual void cancel() = 0;
    // True once, with the response, when the latest fetch has completed; false while it
    // is under way, after it failed, and after cancel.
    virtual bool takeResponse(WebResponse &response) = 0;
};

} // namespace platform
