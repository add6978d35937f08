// [CLIP On/Off], [SPELLCHECKMODE On/Off], [SPELLCHECK], [MAKEMP3 File], [PRINTSELECTED],
// [PRINT File] and [LISTHOTKEYS]: the reader's own commands, run from a macro.
#include "engine/reader_statements.h"

#include "engine/interpreter.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "reader/borrowed_document.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"
#include "reader/documents.h"
#include "reader/text_box.h"
#include "shell/delay.h"
#include "spell/spell_check.h"
#include "shell/on_top_message.h"

#include <QFileInfo>

namespace engine {

namespace {

ReaderWindows g_windows;

const QString kMakeMp3Frame = QStringLiteral(" for [MAKEMP3 File] statement");
const QString kPrintFrame = QStringLiteral(" for [PRINT File] statement");

// The word of [CLIP On/Off] and [SPELLCHECKMODE On/Off], upper-cased; "" when none.
QString onOffWord(int line)
{
    return macro::UpperSameLength(OperandText(runState().action(line).Text).trimmed());
}

// What the selection of the foreground program copied onto the clipboard. The
// clipboard's text before is kept in kept.
QString copyForegroundSelection(platform::Clipboard &clipboard, QString &kept)
{
    kept = clipboard.text();
    clipboard.clear();
    if (platform::KeySender *keys = platform::services().keys)
        keys->sendKeys(QStringLiteral("^c"));
    DoEvents();
    shell::Delay(kCopyWaitSeconds);
    return clipboard.text();
}

// Puts the reader's box to text for a borrowed use; false when there is no box.
bool fillReader(const QString &text)
{
    reader::TextBox *box = reader::textBox();
    if (!box)
        return false;
    box->loadPlainText(text);
    return true;
}

QString needsDesktop(const QString &statement)
{
    return QStringLiteral("The desktop program is needed for ") + statement + QStringLiteral(" statement");
}

} // namespace

void SetReaderWindows(ReaderWindows windows) { g_windows = std::move(windows); }

QString DoCLIP(int line)
{
    const QString word = onOffWord(line);
    if (word.isEmpty())
        return QStringLiteral("Invalid parameter for [CLIP On/Off] statement");
    if (!reader::clipView())
        return needsDesktop(QStringLiteral("[CLIP On/Off]"));
    const bool monitoring = reader::monitor().Monitoring;
    if (word == QLatin1String("ON")) {
        if (!monitoring)
            reader::cmdClipToggle_Click();
    } else if (monitoring) {
        reader::cmdClipToggle_Click();
    }
    // The tray shows the state as it now is, the run's own picture coming back with the
    // next statement's status.
    RestoreCurrentState();
    return {};
}

QString DoSPELLCHECKMODE(int line)
{
    const QString word = onOffWord(line);
    if (word.isEmpty())
        return QStringLiteral("Invalid parameter for [SPELLCHECKMODE On/Off] statement");
    if (!reader::clipView())
        return needsDesktop(QStringLiteral("[SPELLCHECKMODE On/Off]"));
    spell::SetSpellClipMode(word == QLatin1String("ON"));
    return {};
}

QString DoSPELLCHECK(int)
{
    // Without a dictionary there is nothing to check with: said once, and the macro goes on.
    if (!spell::SpellCheckAvailable()) {
        shell::MsgBoxOT(spell::kNoDictionaryText, 0, spell::kNoDictionaryTitle);
        return {};
    }
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard || !reader::textBox())
        return needsDesktop(QStringLiteral("[SPELLCHECK]"));
    QString kept;
    const QString selection = copyForegroundSelection(*clipboard, kept);
    if (selection.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No selected text to spell check"), 0, QStringLiteral("Spell check"));
        if (!kept.isEmpty())
            clipboard->setText(kept);
        return {};
    }
    // The checked text goes onto the clipboard, ready to be pasted over the selection;
    // the reader's own document is only lent for the check.
    const reader::BorrowedDocument borrowed;
    fillReader(selection);
    const QString error = spell::SpellCheck_OnTop(selection, false);
    if (error.isEmpty())
        return {};
    shell::MsgBoxOT(QStringLiteral("Error spell checking the clipboard."), 0, QStringLiteral("Spell Check Error"));
    return QStringLiteral("Error spell checking the clipboard for [SPELLCHECK] statement");
}

QString DoMAKEMP3(int line)
{
    const reader::TextBox *box = reader::textBox();
    if (!box || box->text().isEmpty())
        return QStringLiteral("No text in the TTS reader") + kMakeMp3Frame;
    platform::SpeechEngine *speech = platform::services().speech;
    if (!speech || speech->voices().isEmpty())
        return QStringLiteral("There are no voices installed") + kMakeMp3Frame;
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Invalid filename") + kMakeMp3Frame;
    if (macro::UpperSameLength(name) == QLatin1String("ABORT"))
        return {};
    if (!g_windows.readToFile)
        return needsDesktop(QStringLiteral("[MAKEMP3 File]"));
    g_windows.readToFile(QFileInfo(name).absoluteFilePath());
    return {};
}

QString DoPRINTSELECTED(int)
{
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard || !reader::textBox() || !reader::textBox()->canPrint())
        return needsDesktop(QStringLiteral("[PRINTSELECTED]"));
    QString kept;
    const QString selection = copyForegroundSelection(*clipboard, kept);
    if (selection.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No selected text to print"), 0, QStringLiteral("Print Selected"));
    } else {
        const reader::BorrowedDocument borrowed;
        fillReader(selection);
        reader::PrintFile();
    }
    if (kept.isEmpty())
        clipboard->clear();
    else
        clipboard->setText(kept);
    return {};
}

QString DoPRINT(int line)
{
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Invalid filename") + kPrintFrame;
    if (!QFileInfo(name).isFile())
        return QStringLiteral("File not found") + kPrintFrame;
    const QString type = name.right(4).toUpper();
    if (type != QLatin1String(".TXT") && type != QLatin1String(".RTF") && type != QLatin1String(".XML")
        && type != QLatin1String(".DOC"))
        return QStringLiteral("Invalid file type") + kPrintFrame;
    if (!reader::textBox() || !reader::textBox()->canPrint())
        return needsDesktop(QStringLiteral("[PRINT File]"));
    const reader::BorrowedDocument borrowed;
    const QString message = reader::LoadFile2Reader(name);
    if (!message.isEmpty())
        return message + kPrintFrame;
    reader::PrintFile();
    return {};
}

QString DoLISTHOTKEYS(int)
{
    if (!g_windows.hotkeyList)
        return needsDesktop(QStringLiteral("[LISTHOTKEYS]"));
    g_windows.hotkeyList();
    return {};
}

} // namespace engine
