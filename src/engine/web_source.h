#pragma once
// [WEBSOURCE URL Src]: fetches a web page through the WebFetch port and puts its text
// into a variable, or into the file that the variable names.
#include "platform/web_fetch.h"

#include <QString>
#include <QUrl>

namespace engine {

inline constexpr double kWebFetchLimitSeconds = 59.0;  // no text by then: "Timed Out"
inline constexpr double kWebFetchPollSeconds = 1.0;    // Delay between looks at the fetch

// What the variable gets instead of a page.
inline constexpr const char *kWebTimedOut = "Timed Out";
inline constexpr const char *kWebFileError = "File Error";
inline constexpr const char *kWebInvalidUrl = "Invalid URL";  // not an http or https address

// Runs line (1-based) of Actions. The text goes into the result variable, unless the
// variable's present value is a file path in an existing folder: then into that file.
// Returns "" (also after a time-out), "User Abort" when the abort latch was set during
// the fetch (the latch is cleared), or the operand message.
QString DoWEBSOURCE(int line);

// The address the statement fetches: the operand as a user would type it ("example.com"
// is http://example.com). Invalid unless its scheme is http or https and it has a host.
QUrl WebSourceUrl(const QString &operand);

// The text of a completed response, as the statement takes it: a Content-Type that
// contains "text/" (any case) gives the body decoded by its charset (UTF-8 when none is
// declared); any other content type gives "", as if nothing had come.
QString WebResponseText(const platform::WebResponse &response);

} // namespace engine
