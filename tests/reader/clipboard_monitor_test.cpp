#include "clip_fixture.h"

using reader::monitor;
using reader::TrayEntry;

namespace {
class MonitorTest : public ClipTest {
protected:
    void SwitchOn()
    {
        reader::cmdClipToggle_Click();
        ASSERT_TRUE(monitor().Monitoring);
    }
};
} // namespace

TEST_F(MonitorTest, CopiedTextIsStoredShownClearedAndThenSpokenEveryTime)
{
    SwitchOn();
    Copy(QStringLiteral("Read me aloud"));
    reader::Timer1_Timer();
    EXPECT_EQ(view.speechText, "Read me aloud");
    EXPECT_TRUE(reader::IsInClipStore(QStringLiteral("Read me aloud")));
    // The clipboard is empty by the time Talk runs, so the next tick cannot take it again.
    EXPECT_EQ(view.talks, QStringList{QString()});
    EXPECT_EQ(view.fontResets, 1);
    reader::Timer1_Timer();
    EXPECT_EQ(view.talks.size(), 1);

    Copy(QStringLiteral("Read me aloud"));  // the same text again is read again, stored once
    reader::Timer1_Timer();
    EXPECT_EQ(view.talks.size(), 2);
    EXPECT_EQ(reader::clipStore().ClipCount, 1);
}

TEST_F(MonitorTest, ClipCopiedDuringSpeechWaitsForTheEndOfTheStream)
{
    SwitchOn();
    shell::app().SpeechState = 0;
    Copy(QStringLiteral("first"));
    Copy(QStringLiteral("second"));  // replaces the first, unread
    const int reads = fx.clipboard.reads;
    reader::Timer1_Timer();
    EXPECT_EQ(fx.clipboard.reads, reads);
    EXPECT_TRUE(view.talks.isEmpty());
    shell::app().SpeechState = 2;
    reader::Timer1_Timer();
    EXPECT_EQ(view.speechText, "second");
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("first")));
}

TEST_F(MonitorTest, PictureIsIgnoredWhileMonitoring)
{
    SwitchOn();
    fx.clipboard.setPicture(Picture(10, 10));
    reader::Timer1_Timer();
    EXPECT_TRUE(view.talks.isEmpty());
    EXPECT_EQ(fx.clipboard.pictureReads, 0);
    EXPECT_TRUE(fx.clipboard.pictureContent);
}

TEST_F(MonitorTest, CollectingStoresSameTextOnceLeavesTheClipboardAndTakesACommandOff)
{
    Copy(QStringLiteral("collected"));
    reader::Timer3_Timer();
    reader::Timer3_Timer();
    EXPECT_EQ(reader::clipStore().ClipCount, 1);
    EXPECT_EQ(fx.clipboard.content, "collected");
    EXPECT_TRUE(view.talks.isEmpty());

    Copy(QStringLiteral("/\u00e0 NoSuchMacro"));
    reader::Timer3_Timer();
    EXPECT_TRUE(fx.clipboard.content.isEmpty());
    EXPECT_EQ(reader::clipStore().ClipCount, 1);
}

TEST_F(MonitorTest, PictureCollectingStoresANewPictureOnce)
{
    fx.clipboard.setPicture(Picture(12, 9));
    reader::Timer5_Timer();
    reader::Timer5_Timer();
    EXPECT_EQ(reader::clipStore().PicCount, 1);
    EXPECT_EQ(view.picRows[0].caption, "Pic 1 (12x9)");
}

TEST_F(MonitorTest, SwitchingOnAsksAboutTextAlreadyThereNoDropsItAndYesKeepsIt)
{
    Copy(QStringLiteral("left over"));
    fx.messages.answers = {-1};
    reader::cmdClipToggle_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "Would you like to read the clipboard now?\r\n");
    EXPECT_EQ(fx.messages.shown[0].title, "Clip On");
    EXPECT_TRUE(fx.clipboard.content.isEmpty());
    EXPECT_EQ(view.toggle, "Clip On");
    EXPECT_EQ(view.toggleTip, "Monitoring the Clipboard");
    EXPECT_TRUE(view.timer1);
    EXPECT_FALSE(view.timer3);
    EXPECT_FALSE(view.timer5);
    EXPECT_FALSE(view.pasteClear);
    EXPECT_EQ(view.statusTexts.last(), "Monitoring Clipboard..");
    EXPECT_EQ(fx.tray.picture, platform::TrayPicture::Monitoring);

    reader::cmdClipToggle_Click();  // off; yes next time leaves the text for the next tick
    Copy(QStringLiteral("read it"));
    fx.messages.answers = {1};
    reader::cmdClipToggle_Click();
    EXPECT_EQ(fx.clipboard.content, "read it");
    reader::Timer1_Timer();
    EXPECT_EQ(view.speechText, "read it");
}

TEST_F(MonitorTest, SpellModeAsksAboutSpellCheckingThenHandsTheTextToTheCheckerAndStops)
{
    view.spellMode = true;
    Copy(QStringLiteral("Speling"));
    fx.messages.answers = {1};
    reader::cmdClipToggle_Click();
    EXPECT_EQ(fx.messages.shown[0].text, "Would you like to spellcheck the clipboard now?\r\n");
    EXPECT_EQ(fx.tray.picture, platform::TrayPicture::SpellMonitoring);
    reader::Timer1_Timer();
    EXPECT_EQ(view.spellChecks, QStringList{"Speling"});
    EXPECT_TRUE(view.talks.isEmpty());
    EXPECT_FALSE(monitor().Monitoring);
    EXPECT_EQ(view.toggle, reader::kClipOff);
}

TEST_F(MonitorTest, SkipPromptAndRunningMacroAskNothing)
{
    Copy(QStringLiteral("kept"));
    monitor().SkipClipPrompt = true;
    reader::cmdClipToggle_Click();
    EXPECT_FALSE(monitor().SkipClipPrompt);
    EXPECT_EQ(fx.clipboard.content, "kept");
    reader::cmdClipToggle_Click();  // off

    engine::runState().MacroRunning = true;
    reader::cmdClipToggle_Click();
    engine::runState().MacroRunning = false;
    EXPECT_TRUE(fx.clipboard.content.isEmpty());
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(MonitorTest, SwitchingOffRestartsCollecting)
{
    view.pics = true;
    SwitchOn();
    reader::cmdClipToggle_Click();
    EXPECT_FALSE(monitor().Monitoring);
    EXPECT_EQ(view.toggle, "Clip Off");
    EXPECT_EQ(view.toggleTip, "Not monitoring the Clipboard");
    EXPECT_FALSE(view.timer1);
    EXPECT_TRUE(view.timer3);
    EXPECT_TRUE(view.timer5);
    EXPECT_TRUE(view.pasteClear);
    EXPECT_EQ(view.statusTexts.last(), "Sonamark - Idle");
    EXPECT_EQ(fx.tray.picture, platform::TrayPicture::Idle);
}

TEST_F(MonitorTest, TrayClickSetsTheClipboardAsideAndOffersItBack)
{
    Copy(QStringLiteral("from before"));
    reader::TrayLeftClick();
    EXPECT_TRUE(monitor().Monitoring);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_EQ(monitor().TrayClipText, "from before");
    EXPECT_TRUE(fx.clipboard.content.isEmpty());
    EXPECT_EQ(view.panel1.last(), "Monitoring Clipboard..");
    EXPECT_EQ(view.trayPops, 1);
    EXPECT_EQ(view.captions[TrayEntry::Talk], "Read the clipboard");
    EXPECT_EQ(view.captions[TrayEntry::Pause], "Monitor the clipboard..");
    for (TrayEntry e : {TrayEntry::Stop, TrayEntry::Options, TrayEntry::Cancel, TrayEntry::Close,
                        TrayEntry::ClipStored})
        EXPECT_TRUE(view.hidden.value(e)) << int(e);
    EXPECT_EQ(reader::TrayMenuForm(), 1);

    reader::RestorePopUp();
    EXPECT_EQ(view.captions[TrayEntry::Talk], "Talk");
    EXPECT_EQ(view.captions[TrayEntry::Pause], "Pause");
    EXPECT_FALSE(view.hidden.value(TrayEntry::Close));
    EXPECT_TRUE(view.hidden.value(TrayEntry::ClipStored));  // nothing stored yet
    EXPECT_FALSE(view.disabled.value(TrayEntry::Talk));
}

TEST_F(MonitorTest, TrayClickWithAnEmptyClipboardJustFlips)
{
    reader::TrayLeftClick();
    EXPECT_TRUE(monitor().Monitoring);
    EXPECT_EQ(view.trayPops, 0);
    reader::TrayLeftClick();
    EXPECT_FALSE(monitor().Monitoring);
    EXPECT_EQ(fx.tray.picture, platform::TrayPicture::Idle);
}

TEST_F(MonitorTest, TrayClickDuringSpeechOffersPauseStopAndCancel)
{
    shell::app().SpeechState = 0;
    reader::TrayLeftClick();
    EXPECT_FALSE(monitor().Monitoring);
    EXPECT_EQ(view.trayPops, 1);
    for (TrayEntry e : {TrayEntry::Talk, TrayEntry::Options, TrayEntry::Close})
        EXPECT_TRUE(view.hidden.value(e)) << int(e);
    for (TrayEntry e : {TrayEntry::Pause, TrayEntry::Stop, TrayEntry::Cancel})
        EXPECT_FALSE(view.hidden.value(e)) << int(e);

    view.spellMode = true;
    reader::RestoreTrayMenu();  // the menu closed without a choice
    EXPECT_FALSE(view.hidden.value(TrayEntry::Talk));
    EXPECT_FALSE(view.hidden.value(TrayEntry::Close));
    EXPECT_TRUE(view.disabled.value(TrayEntry::Pause));
    EXPECT_TRUE(view.disabled.value(TrayEntry::Stop));
    EXPECT_EQ(reader::TrayMenuForm(), 0);
}
