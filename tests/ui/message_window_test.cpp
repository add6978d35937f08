#include "fakes/fake_services.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/frm_aot_msg.h"
#include "ui/frm_display_error.h"
#include "ui/guarded_application.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QMouseEvent>
#include <QTimer>
#include <stdexcept>
#include <gtest/gtest.h>
#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

using shell::app;

namespace {

// Presses the named button of the message window once it shows.
void pressWhenShown(const char *button)
{
    QTimer::singleShot(50, [button] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (w->objectName() == QLatin1String("frmAOTMsg") && w->isVisible()) {
                if (auto *b = w->findChild<QPushButton *>(QLatin1String(button)))
                    b->click();
                return;
            }
        }
    });
}

class RealMessages : public ::testing::Test {
protected:
    void SetUp() override
    {
        app().reset();
        platform::Services set = platform::services();
        set.messages = &windows;
        previous = platform::install(set);
    }
    void TearDown() override { platform::install(previous); }
    ui::MessageWindows windows;
    platform::Services previous;
};

} // namespace

TEST_F(RealMessages, ButtonsFollowTheType)
{
    const struct { int type; bool ok, yes, no, cancel; } rows[] = {
        {0, true, false, false, false}, {1, false, true, true, false}, {2, false, true, true, true}};
    for (const auto &row : rows) {
        platform::MessageSpec request;
        request.text = QStringLiteral("Question\r\n");
        request.type = row.type;
        ui::frmAOTMsg window(request);
        window.show();
        EXPECT_EQ(window.cmdOk->isVisible(), row.ok) << row.type;
        EXPECT_EQ(window.cmdYes->isVisible(), row.yes) << row.type;
        EXPECT_EQ(window.cmdNo->isVisible(), row.no) << row.type;
        EXPECT_EQ(window.cmdCancel->isVisible(), row.cancel) << row.type;
        EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_FALSE(window.Shape1->isVisible());  // no count-down
    }
}

TEST_F(RealMessages, ModalAnswerComesFromTheButton)
{
    pressWhenShown("cmdCancel");
    shell::MsgBoxOT(QStringLiteral("Save changes?"), 2, QStringLiteral("Save To File"));
    EXPECT_EQ(app().MsgResult, shell::MsgCancel);
    pressWhenShown("cmdYes");
    shell::MsgBoxOT(QStringLiteral("Quit?"), 1, QStringLiteral("End Program"));
    EXPECT_EQ(app().MsgResult, shell::MsgYes);
}

TEST_F(RealMessages, TimedMessageCountsDownAndAnswersNo)
{
    QStringList seen;
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *m = qobject_cast<ui::frmAOTMsg *>(w); m && m->isVisible()) {
                const QString shown = m->lbCountDown->text();
                if (seen.isEmpty() || seen.last() != shown)
                    seen << shown;
            }
    });
    probe.start(20);
    shell::MsgBoxOT(QStringLiteral("Carry on?"), 0, QStringLiteral("T"), 2);
    EXPECT_EQ(app().MsgResult, shell::MsgNo);  // even an OK box answers No on time-out
    EXPECT_EQ(seen, (QStringList{"2", "1"}));
}

TEST_F(RealMessages, LongTextShowsEveryLine)
{
    platform::MessageSpec request;
    QString text;
    for (int i = 0; i < 40; ++i)
        text += QStringLiteral("Line %1 of a long report\r\n").arg(i);
    request.text = shell::ShownMessageText(text);
    ui::frmAOTMsg window(request);
    window.show();
    QApplication::processEvents();
    const QLabel *label = window.lblPopup;
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    EXPECT_LE(label->geometry().bottom(), window.cmdOk->geometry().top());
}

TEST(ErrorWindow, CaptionTextAndButtons)
{
    ui::frmDisplayError window(QStringLiteral("Error 5 in (Form) frmX::Sub Y"));
    EXPECT_EQ(window.windowTitle(), "Sonamark - Error Condition Encountered");
    EXPECT_EQ(window.lblErrorStr->text(), "Error 5 in (Form) frmX::Sub Y");
    EXPECT_EQ(window.cmdContinue->text(), "&Continue");
    EXPECT_EQ(window.cmdQuit->text(), "&Quit Sonamark");
    EXPECT_EQ(window.cmdErrorReport->text(), "&Please Send Error Report!");
}

TEST(ErrorWindow, ReportButtonOpensMailAndKeepsWindow)
{
    fakes::FakeServices fx;
    const int depth = app().ChildFormDepth;
    {
        ui::frmDisplayError window(QStringLiteral("Error 5\r\nline"));
        EXPECT_EQ(app().ChildFormDepth, depth + 1);
        window.show();
        window.cmdErrorReport->click();
        EXPECT_TRUE(window.isVisible());
        ASSERT_EQ(fx.desktop.opened.size(), 1);
        EXPECT_TRUE(fx.desktop.opened[0].contains("&body=Error 5%0D%0Aline%0D%0A%0D%0APlease include"));
    }
    EXPECT_EQ(app().ChildFormDepth, depth);
}

// Qt's event delivery is not written for exceptions: a fault thrown through it leaves
// what Qt had allocated for the event on the way (a copy of the event point, a guard
// pointer's count, made when the button was shown) behind. The leak checker, when there
// is one, is told to overlook what the test allocates.
struct LeaksOfQtOverlooked {
    LeaksOfQtOverlooked()
    {
#if defined(__SANITIZE_ADDRESS__)
        __lsan_disable();
#endif
    }
    ~LeaksOfQtOverlooked()
    {
#if defined(__SANITIZE_ADDRESS__)
        __lsan_enable();
#endif
    }
};

TEST(GuardedEvents, FaultInHandlerIsReportedAndProgramGoesOn)
{
    const LeaksOfQtOverlooked overlooked;
    fakes::FakeServices fx;
    QPushButton button;
    button.window()->setObjectName(QStringLiteral("frmTest"));
    QObject::connect(&button, &QPushButton::clicked, [] { throw std::runtime_error("boom"); });
    button.show();
    QMouseEvent press(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                      Qt::NoButton, Qt::NoModifier);
    button.setDown(true);
    QApplication::sendEvent(&button, &press);
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("(Form) frmTest::Sub MouseButtonRelease"));
    EXPECT_TRUE(fx.errors.reports[0].endsWith("Error = 'boom'"));
}

TEST_F(RealMessages, LayoutFollowsTheWindowWidthAndTheLineCount)
{
    platform::MessageSpec shortQuestion;
    shortQuestion.text = shell::ShownMessageText(QStringLiteral("Save?"));
    shortQuestion.type = 0;
    ui::frmAOTMsg narrow(shortQuestion);
    EXPECT_EQ(narrow.layout(), 4);  // one button: a narrow window, a short text shrinks it
    shortQuestion.type = 2;
    ui::frmAOTMsg wide(shortQuestion);
    EXPECT_EQ(wide.layout(), 1);  // three buttons make a wide window; a short text widens it
}

TEST_F(RealMessages, CountDownFrameHidesWhileTheCounterHasThreeDigits)
{
    platform::MessageSpec request;
    request.text = shell::ShownMessageText(QStringLiteral("Wait"));
    request.timeout = 100;
    ui::frmAOTMsg window(request);
    window.show();
    EXPECT_FALSE(window.Shape1->isVisible());
    window.Timer1_Timer();
    EXPECT_EQ(window.counter(), 99);
    EXPECT_TRUE(window.Shape1->isVisible());
}
