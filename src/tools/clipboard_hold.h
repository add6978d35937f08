#pragma once
// On X11 the clipboard's content lives in the process that owns it. A helper program
// that hands a text to another program through the clipboard and then ends would take
// the text with it. HandOverClipboard starts a copy of the calling program that takes
// the clipboard and keeps it until another program takes ownership (or a time passes),
// and returns once the text is on the clipboard.
#include <QString>

// Call first thing in main(): when the process was started as the holder, holds the
// clipboard and returns true (main should return 0); otherwise returns false.
bool RunAsClipboardHolder(int argc, char **argv);
// Puts text on the clipboard through a detached holder process. False on failure.
bool HandOverClipboard(const QString &text);
