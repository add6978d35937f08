#include "ui/guarded_application.h"

#include "shell/failure_report.h"

#include <QEvent>
#include <QMetaEnum>
#include <QWidget>
#include <exception>

namespace ui {

GuardedApplication::GuardedApplication(int &argc, char **argv) : QApplication(argc, argv) {}

QString GuardedApplication::identity(QObject *receiver, QEvent *event)
{
    QString form = QStringLiteral("frmSonamark");
    if (auto *widget = qobject_cast<QWidget *>(receiver)) {
        const QWidget *window = widget->window();
        if (window && !window->objectName().isEmpty())
            form = window->objectName();
    }
    const char *eventName = QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
    return QStringLiteral("(Form) %1::Sub %2").arg(form, QLatin1String(eventName ? eventName : "Event"));
}

bool GuardedApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        shell::ReportCurrentFault(identity(receiver, event));
    }
    return false;
}

} // namespace ui
