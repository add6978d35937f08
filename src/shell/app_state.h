#pragma once
// Process-wide state of the application shell, owned by the start-up module.
#include <QString>

namespace shell {

struct AppState {
    bool StartingUp = true;       // true until the exceptions load in Sub Main
    bool StartHidden = false;     // command line is exactly "/h"
    QString AppFolder;            // data folder, always with a trailing "/"
    bool WordInstalled = false;   // a spelling dictionary is installed
    QString CurrentFile;          // file shown in the text box
    bool TextDirty = false;       // text box differs from CurrentFile
    bool OptionsDirty = false;    // settings differ from "options.def"
    int SpeechState = 2;          // 0 while a stream is spoken, 2 when none
    int MsgResult = 0;            // answer of the last MsgBoxOT
    int ChildFormDepth = 0;       // child windows open; tray clicks ignored while above 0
    int PendingHotkey = 0;        // macro number waiting for RunTimer
    bool WindowLoading = false;   // set during Form_Load: settings writes are not changes
    int HelpPage = 1;             // help page for LaunchInstructions
    bool HelpFirstRun = false;    // first-run flag for LaunchInstructions
    QString PopupText;            // text frmPopup shows

    void reset() { *this = AppState(); }
};

AppState &app();

} // namespace shell
