#include "hotkeys/recording_text.h"

#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "platform/input_hooks.h"

namespace hotkeys {

namespace {
constexpr int kShortStatement = 11;  // statements shorter than this are followed directly

QString MouseKeyword(int message)
{
    switch (message) {
    case platform::mouse::LeftUp:
        return QStringLiteral("[LEFTUP ");
    case platform::mouse::RightUp:
        return QStringLiteral("[RIGHTUP ");
    case platform::mouse::LeftDown:
        return QStringLiteral("[LEFTDOWN ");
    case platform::mouse::RightDown:
        return QStringLiteral("[RIGHTDOWN ");
    default:
        return QStringLiteral("[? ");
    }
}
} // namespace

void AppendRecordedKey(QString &text, const QString &key)
{
    if (!text.endsWith(QLatin1Char(']'))) {
        text += key;
        return;
    }
    const qsizetype open = text.lastIndexOf(QLatin1Char('['));
    if (open < 0) {
        text += key;
        return;
    }
    const QString statement = text.mid(open);
    if (statement.size() < kShortStatement) {
        text += key;
        return;
    }
    if (statement.startsWith(QLatin1String("[LEFT")) || statement.startsWith(QLatin1String("[RIGHT")))
        text += macro::kCrLf;
    text += key;
}

void AppendRecordedClick(QString &text, int message, int x, int y, double seconds)
{
    const QString line = QStringLiteral("[WAIT ") + macro::FormatNumber(seconds, "0.#") + QStringLiteral("]")
                         + macro::kCrLf + MouseKeyword(message) + QString::number(x) + QLatin1Char(' ')
                         + QString::number(y) + QLatin1Char(']');
    if (!text.isEmpty() && !text.endsWith(macro::kCrLf))
        text += macro::kCrLf;
    text += line;
}

QString CutEndingClick(const QString &text)
{
    const QString wait = QStringLiteral("[WAIT");
    const int p = macro::InStrRev(text, wait, -1);
    if (p <= 1)
        return text;
    const int p2 = macro::InStrRev(text, wait, p - 1);
    if (p2 == 0)
        return text;
    return text.left(p2 - 1);
}

} // namespace hotkeys
