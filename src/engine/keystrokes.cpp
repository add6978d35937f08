#include "engine/keystrokes.h"

#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "platform/services.h"

namespace engine {

namespace {

const QString kPrintScreenToken = QStringLiteral("{PRTSC}");

void sendKeys(const QString &notation)
{
    if (platform::KeySender *keys = platform::services().keys)
        keys->sendKeys(notation);
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
        return QStringLiteral("Keystrokes cannot be sent: no key sender is available in this version");
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
        if (runState().AbortRequested)
            break;
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

} // namespace engine
