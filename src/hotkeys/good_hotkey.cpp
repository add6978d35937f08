#include "hotkeys/good_hotkey.h"

#include "macro/nonprint.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"

namespace hotkeys {

namespace {

const QString kTitle = QStringLiteral("Hotkeys");

// Quoted specials ("{^", "{%", ...) get their second character replaced so that they
// are counted neither as modifiers nor as braces of their own. ORDER: both columns.
constexpr char16_t kQuoted[] = u"^%+{}[]";
constexpr char16_t kHidden[] = u"\u00e7\u00c7\u00a8\u00e0\u00c0\u00e8\u00c8";

QString HideQuoted(const QString &text)
{
    QString out = text;
    for (int i = 0; i + 1 < out.size(); ++i) {
        if (out.at(i) != QLatin1Char('{'))
            continue;
        for (int k = 0; kQuoted[k]; ++k)
            if (out.at(i + 1) == QChar(kQuoted[k])) {
                out[i + 1] = QChar(kHidden[k]);
                ++i;  // the hidden character is no opening brace any more
                break;
            }
    }
    return out;
}

QString RevealQuoted(QString text)
{
    for (int k = 0; kQuoted[k]; ++k)
        text.replace(QChar(kHidden[k]), QChar(kQuoted[k]));
    return text;
}

bool Refuse(const char *message)
{
    shell::MsgBoxOT(QLatin1String(message), 0, kTitle);
    return false;
}

} // namespace

bool GoodHotkey(QString &text)
{
    if (text.isEmpty() || text == QLatin1String("^") || text == QLatin1String("%") || text == QLatin1String("+"))
        return Refuse("Your hotkey is not valid.");
    static const QStringList clipboardKeys = {QStringLiteral("^c"), QStringLiteral("^v"), QStringLiteral("^x"),
                                              QStringLiteral("^a"), QStringLiteral("^z"), QStringLiteral("^y")};
    if (clipboardKeys.contains(text.toLower()))
        return Refuse("You cannot redefine the clipboard hotkeys.");
    int opens = 0, closes = 0;
    macro::HowManyBraces(text, opens, closes);
    if (opens > 1 || closes > 1 || opens != closes)
        return Refuse("Your hotkey is not not valid.");

    const QString hidden = HideQuoted(text);
    const bool bareGroup = hidden.startsWith(QLatin1Char('{')) && hidden.endsWith(QLatin1Char('}'))
                           && hidden.count(QLatin1Char('}')) == 1;
    if (bareGroup || hidden.size() == 1) {
        shell::MsgBoxOT(QStringLiteral("WARNING A single character hotkey will disable this key for all "
                                       "applications. Continue?"),
                        1, kTitle);
        if (shell::app().MsgResult != shell::MsgYes)
            return false;
    }

    const int ctrls = int(hidden.count(QLatin1Char('^')));
    const int alts = int(hidden.count(QLatin1Char('%')));
    const int shifts = int(hidden.count(QLatin1Char('+')));
    if (ctrls > 1)
        return Refuse("Your hotkey has too many control keys.");
    if (alts > 1)
        return Refuse("Your hotkey has too many alt keys.");
    if (shifts > 1)
        return Refuse("Your hotkey has too many shift keys.");
    QString key = hidden;
    key.remove(QLatin1Char('^')).remove(QLatin1Char('%')).remove(QLatin1Char('+'));
    const QString prefix = QString(ctrls ? QStringLiteral("^") : QString()) + (alts ? QStringLiteral("%") : QString())
                           + (shifts ? QStringLiteral("+") : QString());

    const int open = int(key.indexOf(QLatin1Char('{')));
    const int close = int(key.indexOf(QLatin1Char('}')));
    const QString group = open >= 0 && close > open ? key.mid(open, close - open + 1) : QString();
    const int outside = int(key.size() - group.size());
    if (outside > 1)
        return Refuse("Your hotkey has too many keys.");
    if (!group.isEmpty()) {
        if (!macro::NonPrint().contains(RevealQuoted(group).toUpper()))
            return Refuse("Your non-printable {KEY} is invalid.");
    } else if (outside != 1) {
        return Refuse("Your hotkey is invalid.");
    }
    text = RevealQuoted(prefix + key);
    return true;
}

} // namespace hotkeys
