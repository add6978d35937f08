#include "reader/box_reader_text.h"

#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "reader/text_box.h"
#include "shell/app_state.h"

namespace reader {

QString BoxReaderText::text()
{
    TextBox *box = textBox();
    return box ? box->text() : QString();
}

void BoxReaderText::setText(const QString &text)
{
    TextBox *box = textBox();
    if (!box)
        return;
    shell::AppState &app = shell::app();
    if (app.TextDirty && !app.CurrentFile.isEmpty())
        mnuFileSave_Click();
    box->loadPlainText(text);
    exceptionsState().ExceptionsMade = false;
    Reset_txtSpeech();
}

} // namespace reader
