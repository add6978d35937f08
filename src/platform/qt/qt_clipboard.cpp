#include "platform/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace platform {

QString QtClipboard::text() { return QGuiApplication::clipboard()->text(); }

void QtClipboard::setText(const QString &text) { QGuiApplication::clipboard()->setText(text); }

void QtClipboard::clear()
{
    // Taking ownership with an empty text clears the clipboard whoever owned it.
    QGuiApplication::clipboard()->setText(QString());
    QGuiApplication::clipboard()->clear();
}

} // namespace platform
