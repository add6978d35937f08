#pragma once
// The set of platform implementations for running without a display (sonamark-cli):
// keys and messages as text, a clipboard in memory, failures reported on a stream,
// and the real web fetch.
#include "platform/error_window.h"
#include "platform/clipboard.h"
#include "platform/headless/headless_input.h"
#include "platform/headless/headless_key_sender.h"
#include "platform/headless/headless_messages.h"
#include "platform/headless/headless_text_window.h"
#include "platform/hunspell/hunspell_checker.h"
#include "platform/qt/qt_web_fetch.h"
#include "platform/services.h"

namespace platform::headless {

class HeadlessErrorWindow : public ErrorWindow {
public:
    explicit HeadlessErrorWindow(QTextStream &out) : m_out(out) {}
    // Writes the report and continues.
    Choice showError(const QString &errorText) override;
    int failures = 0;  // reports written so far

private:
    QTextStream &m_out;
};

class MemoryClipboard : public Clipboard {
public:
    QString content;
    PicturePtr pictureContent;
    QString text() override { return content; }
    void setText(const QString &text) override { content = text; pictureContent.reset(); }
    void clear() override { content.clear(); pictureContent.reset(); }
    PicturePtr picture() override { return pictureContent; }
    void setPicture(const PicturePtr &picture) override { pictureContent = picture; content.clear(); }
};

// Installs the headless set for its lifetime; diagnostics go to diag.
class HeadlessServices {
public:
    explicit HeadlessServices(QTextStream &diag);
    ~HeadlessServices();
    HeadlessServices(const HeadlessServices &) = delete;
    HeadlessServices &operator=(const HeadlessServices &) = delete;

    HeadlessMessageWindow messages;
    HeadlessKeySender keys;
    HeadlessTextWindow textWindow;
    HeadlessErrorWindow errors;
    MemoryClipboard clipboard;
    HeadlessMouseSender mouse;
    HeadlessWindowFinder windows;
    HeadlessPrompts prompts;
    HeadlessDesktop desktop;
    QtWebFetch web;  // real fetches: [WEBSOURCE] works from the command line too
    HunspellChecker spell;  // the system's dictionaries (the spell window needs a display)

private:
    Services m_previous;
};

} // namespace platform::headless
