// frmText as the report window: a modal report has a window of its own and holds its
// caller until the user closes it.
#include "ui/frm_text.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// The texts of the report windows open now.
QStringList openReports()
{
    QStringList texts;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *window = qobject_cast<ui::frmText *>(w); window && window->isVisible())
            texts << window->txtText->toPlainText();
    texts.sort();
    return texts;
}

} // namespace

TEST(ReportWindow, AModalReportIsClosedByTheUserAndASecondOneDoesNotReplaceIt)
{
    ui::TextWindows windows;
    QStringList whileBothOpen;
    QString firstAfterSecond, firstCaption;
    bool closedBeforeReturn = false;
    QTimer::singleShot(0, [&] {
        auto *first = qobject_cast<ui::frmText *>(QApplication::activeModalWidget());
        if (!first) {
            ADD_FAILURE() << "the report is not the modal window";
            for (QWidget *w : QApplication::topLevelWidgets())
                if (auto *window = qobject_cast<QDialog *>(w))
                    window->reject();
            return;
        }
        firstCaption = first->windowTitle();
        QTimer::singleShot(0, [&] {
            whileBothOpen = openReports();
            if (auto *second = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                second->reject();
        });
        windows.showModal(QStringLiteral("ERROR REPORT"), QStringLiteral("second\r\nreport"));
        firstAfterSecond = first->txtText->toPlainText();
        closedBeforeReturn = true;
        first->reject();
    });
    windows.showModal(QStringLiteral("ERROR REPORT"), QStringLiteral("first\r\nreport"));
    EXPECT_TRUE(closedBeforeReturn);
    EXPECT_EQ(firstCaption, QStringLiteral("ERROR REPORT"));
    EXPECT_EQ(whileBothOpen, (QStringList{QStringLiteral("first\nreport"), QStringLiteral("second\nreport")}));
    EXPECT_EQ(firstAfterSecond, QStringLiteral("first\nreport"));
    EXPECT_TRUE(openReports().isEmpty());
}
