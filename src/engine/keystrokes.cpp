#include "engine/keystrokes.h"

#include "engine/input_statements.h"
#include "engine/interpreter.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "platform/services.h"

namespace engine {

namespace {

const QString kPrintScreenToken = QStringLiteral("{PRTSC}");
const QString kNoKeySender = QStringLiteral("Keystrokes cannot be sent: there is no display to type into");

// A long text is typed with events served now and then, so that Esc can stop it.
void sendKeys(const QString &notation)
{
    platform::KeySender *keys = platform::services().keys;
    if (!keys)
        return;
    keys->keepGoing = [] {
        DoEvents();
        return !runState().AbortRequested;
    };
    keys->sendKeys(notation);
    keys->keepGoing = nullptr;
}

void pressKey(int virtualKey)
{
    if (platform::KeySender *keys = platform::services().keys)
        keys->pressKey(virtualKey);
}

} // namespace

QString Keystrokes_Only(int index)
{
    const QString text = runState().action(index).Text;
    if (text.startsWith(QLatin1Char('\'')))
        return {};
    if (text.isEmpty())
        return QStringLiteral("Invalid command line for sending keystrokes");
    if (!platform::services().keys)
        return kNoKeySender;
    if (!text.toUpper().contains(kPrintScreenToken)) {
        sendKeys(text);
        DoEvents();
        return {};
    }
    // The cut keeps length - p + 6 characters, so the token stays in the rest and the
    // loop goes on pressing the key for as long as the rest holds "{PRTSC}" in capitals.
    // [SENDKEYS String] drops the token instead; the two differ on purpose.
    QString rest = text;
    int p = macro::InStr(rest.toUpper(), kPrintScreenToken);
    while (p >= 1) {
        if (p > 1) {
            sendKeys(macro::Left(rest, p - 1));
            DoEvents();
        }
        pressKey(kPrintScreenKey);
        // The rest keeps the token, so this goes on until the user stops the macro
        // (Esc, a tray click); events run each time so that the request can arrive.
        DoEvents();
        // Each press counts as a statement, so the run still ends by its line limit and
        // its time-out, which the interpreter reports after this line.
        MacroRunState &state = runState();
        if (state.AbortRequested || ++state.LinesExecuted > kMaxLinesExecuted || MACRO_Expired())
            return {};
        const int n = macro::Len(rest) - p + 6;
        rest = n > 0 ? macro::Right(rest, n) : QString();
        p = macro::InStr(rest, kPrintScreenToken);
    }
    if (!rest.isEmpty()) {
        sendKeys(rest);
        DoEvents();
    }
    return {};
}

QString DoSENDKEYS(int line)
{
    QString text;
    if (!GetFName(line, text) || text.isEmpty())
        return QStringLiteral("Invalid format for [SENDKEYS String] statement");
    if (!platform::services().keys)
        return kNoKeySender;
    macro::ReplacevbCrLf(text);
    // Unlike a keystroke line, the cut drops the token (length - p - 6), so each
    // "{PRTSC}" is pressed once; the search after the first is case-sensitive.
    int p = macro::InStr(text.toUpper(), kPrintScreenToken);
    while (p >= 1) {
        if (p > 1) {
            sendKeys(macro::Left(text, p - 1));
            DoEvents();
        }
        pressKey(kPrintScreenKey);
        DoEvents();
        const int n = macro::Len(text) - p - 6;
        text = n > 0 ? macro::Right(text, n) : QString();
        p = macro::InStr(text, kPrintScreenToken);
    }
    if (!text.isEmpty()) {
        macro::RestoreQuotes(text);
        sendKeys(text);
        DoEvents();
    }
    return {};
}

} // namespace engine
