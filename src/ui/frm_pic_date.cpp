#include "ui/frm_pic_date.h"

#include "hotkeys/pic_date.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/form_controls.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace ui {

namespace {

QComboBox *List(QWidget *parent, const char *name, const QStringList &items, int current)
{
    QComboBox *list = DropDown(parent, name);
    list->addItems(items);
    list->setCurrentIndex(current);
    list->setMaxVisibleItems(12);
    return list;
}

} // namespace

frmPicDate::frmPicDate(bool future, const QDateTime &now, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint), m_future(future), m_now(now)
{
    setObjectName(QStringLiteral("frmPicDate"));
    setWindowTitle(QStringLiteral("Set Wait Time/Date"));
    const hotkeys::PicDateChoice start = hotkeys::PicDateDefaults(now);

    MonthView1 = new QCalendarWidget(this);
    MonthView1->setObjectName(QStringLiteral("MonthView1"));
    MonthView1->setSelectedDate(start.date);
    MonthView1->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    MonthView1->setGridVisible(true);

    cmbHour = List(this, "cmbHour", hotkeys::PicHourItems(), start.hour - 1);
    cmbMinute = List(this, "cmbMinute", hotkeys::PicMinuteItems(), start.minute);
    cmbSecond = List(this, "cmbSecond", hotkeys::PicMinuteItems(), start.second);
    optAM = new QRadioButton(QStringLiteral("&AM"), this);
    optAM->setObjectName(QStringLiteral("optAM"));
    optPM = new QRadioButton(QStringLiteral("&PM"), this);
    optPM->setObjectName(QStringLiteral("optPM"));
    (start.pm ? optPM : optAM)->setChecked(true);
    cmdOK = FormButton(this, "cmdOK", QStringLiteral("OK"), QStringLiteral("Take this date and time"));
    cmdCancel = FormButton(this, "cmdCancel", QStringLiteral("Cancel"), QStringLiteral("Close without a date"));
    cmdOK->setDefault(true);

    auto *time = new QGroupBox(QStringLiteral("Time"), this);
    auto *clock = new QGridLayout(time);
    const char *labels[] = {"&Hour", "&Minute", "&Second"};
    QComboBox *lists[] = {cmbHour, cmbMinute, cmbSecond};
    for (int i = 0; i < 3; ++i) {
        auto *label = new QLabel(QLatin1String(labels[i]), time);
        label->setBuddy(lists[i]);
        clock->addWidget(label, 0, i);
        clock->addWidget(lists[i], 1, i);
    }
    auto *halves = new QVBoxLayout;
    halves->addWidget(optAM);
    halves->addWidget(optPM);
    clock->addLayout(halves, 0, 3, 2, 1);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(MonthView1);
    layout->addWidget(time);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdOK, &QPushButton::clicked, this, &frmPicDate::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    ++shell::app().ChildFormDepth;
}

frmPicDate::~frmPicDate()
{
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmPicDate::cmdOK_Click()
{
    hotkeys::PicDateChoice choice;
    choice.date = MonthView1->selectedDate();
    choice.hour = cmbHour->currentIndex() + 1;
    choice.minute = cmbMinute->currentIndex();
    choice.second = cmbSecond->currentIndex();
    choice.pm = optPM->isChecked();
    const hotkeys::PicDateVerdict verdict = hotkeys::CheckPicDate(choice, m_future, m_now);
    if (!verdict.ok()) {
        shell::MsgBoxOT(verdict.message, 0, verdict.title);
        return;
    }
    DateText = hotkeys::PicDateText(choice.date);
    TimeText = hotkeys::PicTimeText(choice);
    accept();
}

bool frmPicDate::Ask(QWidget *parent, bool future, QString &date, QString &time)
{
    frmPicDate window(future, QDateTime::currentDateTime(), parent);
    if (window.exec() != QDialog::Accepted)
        return false;
    date = window.DateText;
    time = window.TimeText;
    return true;
}

} // namespace ui
