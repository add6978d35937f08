// Recording a macro from keys and clicks, and the mouse hook's decisions.
#include "hooks_fixture.h"

#include "hotkeys/recording_text.h"
#include "shell/on_top_message.h"

#include <QFile>
#include <QTemporaryDir>

using namespace hotkeys;
namespace mouse = platform::mouse;

namespace {
const QString kCrLf = QStringLiteral("\r\n");
}

TEST(RecordingText, AKeyAfterAMouseStatementStartsANewLine)
{
    QString text;
    AppendRecordedKey(text, QStringLiteral("h"));
    AppendRecordedClick(text, mouse::LeftDown, 10, 20, 1.26);
    AppendRecordedKey(text, QStringLiteral("^c"));
    EXPECT_EQ(text, "h\r\n[WAIT 1.3]\r\n[LEFTDOWN 10 20]\r\n^c");
    // A short statement (under 11 characters) or any other statement is followed directly.
    for (const char *before : {"[WAIT 2.5]", "[SENDKEYS abc]", "abc]"}) {
        QString t = QString::fromLatin1(before);
        AppendRecordedKey(t, QStringLiteral("x"));
        EXPECT_EQ(t, QString::fromLatin1(before) + QLatin1Char('x'));
    }
}

TEST(RecordingText, ClicksGoOnLinesOfTheirOwnWithTheirWait)
{
    QString text;
    AppendRecordedClick(text, mouse::RightDown, 5, 6, 0.04);
    EXPECT_EQ(text, "[WAIT 0.]\r\n[RIGHTDOWN 5 6]");
    text += kCrLf;
    AppendRecordedClick(text, mouse::RightUp, 5, 6, 12);
    EXPECT_EQ(text, "[WAIT 0.]\r\n[RIGHTDOWN 5 6]\r\n[WAIT 12.]\r\n[RIGHTUP 5 6]");
    QString unknown = QStringLiteral("a");
    AppendRecordedClick(unknown, 0x207, 1, 2, 0.5);
    EXPECT_EQ(unknown, "a\r\n[WAIT 0.5]\r\n[? 1 2]");
}

TEST(RecordingText, TheEndingClickIsCutOff)
{
    const QString kept = "ab\r\n[WAIT 1.]\r\n[LEFTDOWN 1 2]\r\n[WAIT 0.1]\r\n[LEFTUP 1 2]\r\n";
    EXPECT_EQ(CutEndingClick(kept + "[WAIT 2.]\r\n[LEFTDOWN 9 9]\r\n[WAIT 0.1]\r\n[LEFTUP 9 9]"), kept);
    // Fewer than two waits, or one at the very start: nothing is cut.
    for (const char *t : {"abc", "x[WAIT 1.]\r\n[LEFTUP 1 2]", "[WAIT 1.]\r\n[LEFTUP 1 2]"})
        EXPECT_EQ(CutEndingClick(QString::fromLatin1(t)), QString::fromLatin1(t));
}

TEST_F(HooksTest, ARecordingTakesKeysAndClicksAndLetsThemThrough)
{
    addMacro(QStringLiteral("^a"));
    window.box = QStringLiteral("old text");
    StartRecording();
    EXPECT_EQ(window.box, QString());
    EXPECT_EQ(window.status, QStringLiteral("Sonamark - Creating Macro.."));
    EXPECT_EQ(window.title, window.status);
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Macro);
    EXPECT_EQ(window.monitorStops, 1);
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("0"));
    EXPECT_TRUE(fakes.inputHooks.keyPlan.hotkeys.isEmpty());  // hotkeys do not fire
    EXPECT_TRUE(fakes.inputHooks.mouseHooked);

    fakes.inputHooks.press('H', false, false, true);
    fakes.inputHooks.release('H');
    fakes.inputHooks.press('I');
    fakes.inputHooks.press('A', true);  // the hotkey's keys are only recorded
    EXPECT_FALSE(fakes.inputHooks.lastSwallowed);
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    fakes.inputHooks.press(platform::vk::LeftShift, false, false, true);  // modifiers alone: nothing
    clock += 1.5;
    fakes.inputHooks.click(mouse::LeftDown, 100, 200);
    clock += 0.2;
    fakes.inputHooks.click(mouse::LeftUp, 100, 200);
    fakes.inputHooks.click(mouse::LeftDown, 3, 4, /*synthetic*/ true);
    fakes.inputHooks.press(13);
    clock += 2;
    // The tray click that ends it arrives through the mouse hook too.
    fakes.inputHooks.click(mouse::LeftDown, 1200, 790);
    fakes.inputHooks.click(mouse::LeftUp, 1200, 790);
    const QString kept = "+Hi^a\r\n[WAIT 1.5]\r\n[LEFTDOWN 100 200]\r\n[WAIT 0.2]\r\n[LEFTUP 100 200]\r\n{ENTER}\r\n";
    EXPECT_EQ(window.box, kept + "[WAIT 2.]\r\n[LEFTDOWN 1200 790]\r\n[WAIT 0.]\r\n[LEFTUP 1200 790]");

    EndRecording();
    EXPECT_EQ(fakes.inputHooks.settleRequests, 2);  // at the start and at the end
    EXPECT_FALSE(hookState().MacroRecording);
    EXPECT_FALSE(fakes.inputHooks.mouseHooked);
    EXPECT_EQ(window.status, QStringLiteral("Sonamark - Idle"));
    EXPECT_EQ(window.title, QStringLiteral("Sonamark"));
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Idle);
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("1"));
    EXPECT_EQ(fakes.inputHooks.keyPlan.hotkeys.size(), 1);
    EXPECT_EQ(window.handed, QStringList{kept});
}

TEST_F(HooksTest, ARecordingWithoutMouseEventsEndsAtOnceAndIsNotCut)
{
    window.answerMouse = false;
    StartRecording();
    EXPECT_FALSE(fakes.inputHooks.mouseHooked);
    fakes.inputHooks.press('X');
    fakes.inputHooks.click(mouse::LeftDown, 1, 1);  // not asked for: the hook is not installed
    EndRecording();
    EXPECT_EQ(fakes.inputHooks.settleRequests, 1);  // only the start waits
    EXPECT_EQ(window.handed, QStringList{QStringLiteral("x")});
}

TEST_F(HooksTest, TheRecordingTakesNothingBeforeItsStartNorAfterItsEndingClick)
{
    fakes.inputHooks.settleAtOnce = false;
    StartRecording();
    fakes.inputHooks.press(13);  // the Return that answered the question, still on its way
    EXPECT_FALSE(hookState().MacroRecording);
    fakes.inputHooks.settle();
    EXPECT_TRUE(hookState().MacroRecording);
    fakes.inputHooks.press('X');
    EndRecording();
    EXPECT_TRUE(hookState().MacroRecording);
    fakes.inputHooks.click(mouse::LeftDown, 7, 7);
    fakes.inputHooks.click(mouse::LeftUp, 7, 7);
    EndRecording();  // a second click meanwhile changes nothing
    fakes.inputHooks.settle();
    EXPECT_FALSE(hookState().MacroRecording);
    EXPECT_EQ(window.handed, QStringList{QStringLiteral("x\r\n")});
}

TEST_F(HooksTest, NoOrAFailedMouseHookOnTheQuestion)
{
    window.answerYes = false;
    EXPECT_FALSE(StartRecording());
    EXPECT_FALSE(hookState().MacroRecording);
    EXPECT_EQ(shell::settings().HotkeysEnabledOpt, QStringLiteral("1"));

    window.answerYes = true;
    fakes.inputHooks.mouseAvailable = false;
    EXPECT_TRUE(StartRecording());
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, "Can't include mouse events, mouse hook failed.\r\n");
    EXPECT_EQ(fakes.messages.shown[0].title, QStringLiteral("Mouse Hook"));
    EXPECT_TRUE(hookState().MacroRecording);
    EXPECT_FALSE(hookState().RecordMouse);
}

TEST_F(HooksTest, PointCaptureTakesOneClickOutsideTheEditor)
{
    hookState().MousePointCapture = true;
    hookState().PointCaptureExcluded = QRect(0, 0, 100, 100);
    hookState().ClickX = kNoClick;
    UpdateHookPlan();
    EXPECT_TRUE(fakes.inputHooks.clickPlan.pointCapture);
    EXPECT_FALSE(MouseCallback({mouse::LeftDown, 50, 50}));
    EXPECT_TRUE(MouseCallback({mouse::LeftDown, 300, 40}));
    EXPECT_EQ(hookState().ClickX, 300.f);
    EXPECT_EQ(hookState().ClickY, 40.f);
    EXPECT_FALSE(fakes.inputHooks.clickPlan.pointCapture);
    EXPECT_FALSE(MouseCallback({mouse::LeftDown, 400, 40}));
    EXPECT_EQ(hookState().ClickX, 300.f);
}

TEST_F(HooksTest, AClickZoneHitIsSwallowedOnlyWithTrap)
{
    HookState &run = hookState();
    run.ClickZoneWaiting = true;
    run.ClickZoneXmin = 10, run.ClickZoneYmin = 10, run.ClickZoneXmax = 20, run.ClickZoneYmax = 20;
    EXPECT_FALSE(MouseCallback({mouse::LeftDown, 21, 15}));
    EXPECT_FALSE(run.ClickZoneHit);
    EXPECT_EQ(run.ClickX, 21.f);
    EXPECT_FALSE(MouseCallback({mouse::RightUp, 20, 20}));  // bounds included
    EXPECT_TRUE(run.ClickZoneHit);
    run.ClickZoneHit = false;
    run.ClickZoneTrap = true;
    UpdateHookPlan();
    EXPECT_TRUE(MouseCallback({mouse::LeftDown, 10, 10}));
    EXPECT_TRUE(run.ClickZoneHit);
    EXPECT_TRUE(platform::ConsumesClick(fakes.inputHooks.clickPlan, mouse::LeftDown, 10, 10));
    EXPECT_TRUE(platform::ConsumesClick(fakes.inputHooks.clickPlan, mouse::RightDown, 20, 20));
    EXPECT_FALSE(platform::ConsumesClick(fakes.inputHooks.clickPlan, mouse::LeftDown, 21, 10));
    EXPECT_FALSE(MouseCallback({0x20A, 15, 15}));  // the wheel is no click
}
