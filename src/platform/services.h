#pragma once
// The registry of platform implementations in force. The program installs the real ones
// at start-up, sonamark-cli the headless ones, tests their fakes. Logic code reaches the
// outside world only through these.
#include "platform/batch_helper.h"
#include "platform/clipboard.h"
#include "platform/desktop.h"
#include "platform/error_window.h"
#include "platform/input_hooks.h"
#include "platform/key_sender.h"
#include "platform/message_window.h"
#include "platform/mouse_sender.h"
#include "platform/processes.h"
#include "platform/prompts.h"
#include "platform/reader_text.h"
#include "platform/speech_engine.h"
#include "platform/spell_checker.h"
#include "platform/text_window.h"
#include "platform/tray_icon.h"
#include "platform/web_fetch.h"
#include "platform/window_finder.h"
#include "platform/word_files.h"

namespace platform {

struct Services {
    MessageWindow *messages = nullptr;
    ErrorWindow *errors = nullptr;
    TrayIcon *tray = nullptr;
    Processes *processes = nullptr;
    Clipboard *clipboard = nullptr;
    Desktop *desktop = nullptr;
    KeySender *keys = nullptr;
    TextWindow *textWindow = nullptr;
    ReaderText *readerText = nullptr;
    SpeechEngine *speech = nullptr;
    InputHooks *inputHooks = nullptr;
    WordFiles *wordFiles = nullptr;  // .doc text; none: treated as not installed
    MouseSender *mouse = nullptr;
    WindowFinder *windows = nullptr;
    Prompts *prompts = nullptr;
    WebFetch *web = nullptr;  // [WEBSOURCE]
    SpellChecker *spell = nullptr;  // the spelling dictionary; none: no spell check
    BatchHelper *batchHelper = nullptr;  // none: the batch window reads one document at a time
};

// The current set. Pointers are owned by whoever installed them and must outlive use.
Services &services();
// Replaces the whole set and returns the previous one.
Services install(const Services &set);

} // namespace platform
