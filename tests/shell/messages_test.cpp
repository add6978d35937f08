#include "shell_fixture.h"

#include "platform/headless/headless_messages.h"
#include "platform/services.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"

using shell::app;

class MessagesTest : public ShellTest {
protected:
    void TearDown() override { shell::SetMessageClock(nullptr); }
};

TEST_F(MessagesTest, BlankTextShowsNothingAndLeavesZero)
{
    app().MsgResult = 5;
    shell::MsgBoxOT(QStringLiteral("   \r\n "), 1, QStringLiteral("T"), 0);
    EXPECT_EQ(app().MsgResult, 0);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(MessagesTest, ModalAnswerLandsInMsgResult)
{
    fx.messages.answers = {shell::MsgCancel};
    shell::MsgBoxOT(QStringLiteral("Save?"), 2, QStringLiteral("Save To File"));
    EXPECT_EQ(app().MsgResult, shell::MsgCancel);
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].type, 2);
    EXPECT_EQ(fx.messages.shown[0].title, "Save To File");
    EXPECT_EQ(fx.messages.shown[0].timeout, 0);
}

TEST_F(MessagesTest, LongTextIsCutTo2000AndEndsInLineBreak)
{
    shell::MsgBoxOT(QString(2500, QLatin1Char('x')), 0, QStringLiteral("T"));
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, QString(2000, QLatin1Char('x')) + "\r\n");
}

TEST_F(MessagesTest, AlignmentAppliesToOneMessageOnly)
{
    shell::SetMsgAlign(0);
    shell::MsgBoxOT(QStringLiteral("a"), 0, QStringLiteral("T"));
    shell::MsgBoxOT(QStringLiteral("b"), 0, QStringLiteral("T"));
    EXPECT_EQ(fx.messages.shown[0].align, 0);
    EXPECT_EQ(fx.messages.shown[1].align, 2);
}

TEST_F(MessagesTest, UnansweredTimedMessageEndsAtDeadlineWithDefault)
{
    // The clock advances a quarter second each time it is read.
    double now = 1000;
    shell::SetMessageClock([&] { return now += 0.25; });
    shell::MsgBoxOT(QStringLiteral("Continue?"), 2, QStringLiteral("T"), 3);
    EXPECT_EQ(fx.messages.unloads, 1);
    EXPECT_EQ(app().MsgResult, shell::MsgCancel);
    EXPECT_GE(now, 1004);  // timeout plus one second
    EXPECT_LT(now, 1005);
}

TEST_F(MessagesTest, TimedMessageAcrossMidnightEndsOnTime)
{
    double now = 86399.0;  // the clock passes midnight during the wait
    int reads = 0;
    shell::SetMessageClock([&] {
        ++reads;
        now += 0.25;
        if (now >= 86400)
            now -= 86400;
        return now;
    });
    shell::MsgBoxOT(QStringLiteral("Go on?"), 1, QStringLiteral("T"), 2);
    EXPECT_EQ(app().MsgResult, shell::MsgNo);
    EXPECT_LE(reads, 14);  // about 3 seconds of quarter steps, not a day
}

TEST_F(MessagesTest, AnsweredTimedMessageReturnsAtOnce)
{
    fx.messages.answers = {shell::MsgYes};
    shell::MsgBoxOT(QStringLiteral("Run?"), 1, QStringLiteral("T"), 30);
    EXPECT_EQ(app().MsgResult, shell::MsgYes);
    EXPECT_EQ(fx.messages.unloads, 0);
}

TEST_F(MessagesTest, HeadlessTimedMessageAnswersFromItsList)
{
    // The CLI's window: a listed answer, then the default (No) once the list is used up.
    platform::headless::HeadlessMessageWindow headless;
    headless.answers = {shell::MsgYes};
    platform::Services withHeadless = platform::services();
    withHeadless.messages = &headless;
    platform::install(withHeadless);
    double now = 1000;
    shell::SetMessageClock([&] { return now += 0.25; });
    shell::MsgBoxOT(QStringLiteral("Run?"), 2, QStringLiteral("T"), 30);
    EXPECT_EQ(app().MsgResult, shell::MsgYes);
    shell::MsgBoxOT(QStringLiteral("Again?"), 2, QStringLiteral("T"), 30);
    EXPECT_EQ(app().MsgResult, shell::MsgNo);
    EXPECT_EQ(headless.shown.size(), 2);
    withHeadless.messages = &fx.messages;
    platform::install(withHeadless);
}

TEST(MessageLayout, LineCountAndChoice)
{
    auto tenPerChar = [](const QString &s) { return int(s.size()) * 10; };
    EXPECT_EQ(shell::GetNumLines(QStringLiteral("abc\r\n\r\nabcdefghijkl"), 100, tenPerChar), 1 + 1 + 2);
    EXPECT_EQ(shell::GetNumLines(QStringLiteral("abcdefghij\r\n"), 100, tenPerChar), 2);
    // A bare line feed is no break: "abcde" and "fghij" make one stretch of 100.
    EXPECT_EQ(shell::GetNumLines(QStringLiteral("abcde\nfghij"), 100, tenPerChar), 2);
    EXPECT_EQ(shell::GetNumLines(QStringLiteral("ab\ncd\r\nef"), 100, tenPerChar), 2);
    // Narrow window: 6..11 taller, 12+ wider and smaller, below 4 narrower.
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 3), 4);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 4), 0);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 5), 0);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 6), 2);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 11), 2);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow, 12), 3);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow + 1, 5), 1);
    EXPECT_EQ(shell::ChooseMessageLayout(shell::kMsgWideWindow + 1, 6), 3);
}

TEST(DelayTest, SleepsInWholeSecondsThenTheRest)
{
    QList<int> steps;
    shell::SetDelaySleeper([&](int ms) { steps << ms; });
    shell::Delay(2.5);
    EXPECT_EQ(steps, (QList<int>{1000, 1000, 500}));
    steps.clear();
    shell::Delay(0.5);
    EXPECT_EQ(steps, (QList<int>{500}));
    steps.clear();
    // The stop flag ends the delay after the current second, and is cleared.
    shell::SetDelaySleeper([&](int ms) { steps << ms; shell::StopDelay(); });
    shell::Delay(5);
    EXPECT_EQ(steps, (QList<int>{1000}));
    steps.clear();
    shell::SetDelaySleeper([&](int ms) { steps << ms; });
    shell::Delay(2);
    EXPECT_EQ(steps, (QList<int>{1000, 1000}));
    shell::SetDelaySleeper(nullptr);
}
