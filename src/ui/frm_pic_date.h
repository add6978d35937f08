#pragma once
// frmPicDate, "Set Wait Time/Date": a day in a month view and a time on a 12-hour clock,
// for the [WAIT] and [DATEDIFF] wizards. The checks are hotkeys::CheckPicDate's.
#include <QDateTime>
#include <QDialog>

class QCalendarWidget;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace ui {

class frmPicDate : public QDialog {
    Q_OBJECT
public:
    // future: a moment that is not after now is refused. The lists start at now.
    frmPicDate(bool future, const QDateTime &now, QWidget *parent = nullptr);
    ~frmPicDate() override;

    // Shows the window modally: true on OK, with the date as "dd/MMMM/yyyy" and the
    // time as "h:mm:ss AM".
    static bool Ask(QWidget *parent, bool future, QString &date, QString &time);

    QCalendarWidget *MonthView1 = nullptr;
    QComboBox *cmbHour = nullptr;
    QComboBox *cmbMinute = nullptr;
    QComboBox *cmbSecond = nullptr;
    QRadioButton *optAM = nullptr;
    QRadioButton *optPM = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    QString DateText;  // set by OK
    QString TimeText;

private:
    void cmdOK_Click();

    bool m_future;
    QDateTime m_now;
};

} // namespace ui
