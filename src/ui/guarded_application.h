#pragma once
#include <QApplication>

namespace ui {

// The one guard at the UI event boundary: a fault escaping an event handler is
// reported with the handler's window and event, and the program goes on.
class GuardedApplication : public QApplication {
public:
    GuardedApplication(int &argc, char **argv);
    bool notify(QObject *receiver, QEvent *event) override;
    // "(Form) frmX::Sub Event" for the receiver of an event.
    static QString identity(QObject *receiver, QEvent *event);
};

} // namespace ui
