#pragma once
// The reader statements: macros drive the clipboard monitor, the spell checker, Read To
// File, printing, the clipboard and the clip store, and the hotkey list. None of their
// messages is fatal.
#include <QString>
#include <functional>

namespace engine {

QString DoCLIP(int line);
QString DoSPELLCHECKMODE(int line);
QString DoSPELLCHECK(int line);
QString DoMAKEMP3(int line);
QString DoPRINTSELECTED(int line);
QString DoPRINT(int line);
QString DoGETCLIP(int line);
QString DoSETCLIP(int line);
QString DoLOADCLIP(int line);
QString DoSAVECLIP(int line);
QString DoGETMULTICLIP(int line);
QString DoSETMULTICLIP(int line);
QString DoLISTHOTKEYS(int line);

// Seconds the foreground program is given to answer the copy of [SPELLCHECK] and
// [PRINTSELECTED].
inline constexpr double kCopyWaitSeconds = 1.5;

// The windows these statements open, which the desktop program installs. Unset members
// make their statements say that they need the desktop program.
struct ReaderWindows {
    // frmVBLame, modal, on the reader's text, with its output name set to target.
    std::function<void(const QString &target)> readToFile;
    // frmHotkeyList, modal.
    std::function<void()> hotkeyList;
};
void SetReaderWindows(ReaderWindows windows);

} // namespace engine
