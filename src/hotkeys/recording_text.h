#pragma once
// The text of a macro being recorded, as keys and clicks arrive.
#include <QString>

namespace hotkeys {

// Appends one recorded key in notation. After a mouse statement the key starts a new
// line; after any other text (a short statement too) it follows directly.
void AppendRecordedKey(QString &text, const QString &key);

// Appends "[WAIT s]" and the mouse statement of message at (x, y), on lines of their
// own; seconds is the time since the last recorded event ("0.#").
void AppendRecordedClick(QString &text, int message, int x, int y, double seconds);

// The recording without the click that ended it: everything before the last but one
// "[WAIT" (the tray icon's press and release), when there are two.
QString CutEndingClick(const QString &text);

} // namespace hotkeys
