#include "clip_fixture.h"

using reader::clipStore;

TEST_F(ClipTest, SixClipsDropTheOldestAndNumberFromTheNewest)
{
    for (const char *clip : {"one", "two", "three", "four", "five", "six"})
        reader::Add2Clips(QLatin1String(clip));
    EXPECT_EQ(clipStore().ClipCount, 5);
    EXPECT_EQ(view.visibleClipCaptions(),
              QStringList({"1. \"six\"", "2. \"five\"", "3. \"four\"", "4. \"three\"", "5. \"two\""}));
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("one")));
    EXPECT_EQ(view.clipCount.caption, "5 Clips Stored");
    EXPECT_TRUE(view.clipCount.visible);
    EXPECT_FALSE(view.hidden.value(reader::TrayEntry::ClipStored, true));
}

TEST_F(ClipTest, TwentyCharactersShowWholeAndTwentyOneAreCut)
{
    const QString twenty = QStringLiteral("abcdefghij0123456789");
    const QString twentyOne = QStringLiteral("abcdefghij0123456789X");
    reader::Add2Clips(twenty);
    EXPECT_EQ(view.clipRows[0].caption, "1. \"abcdefghij0123456789\"");
    reader::Add2Clips(twentyOne);
    EXPECT_EQ(view.clipRows[0].caption, "1. \"abcdefghij...123456789X\"");
    EXPECT_EQ(view.clipRows[1].caption, "2. \"abcdefghij0123456789\"");
}

TEST_F(ClipTest, RepeatDoesNotMoveAClipToTheTop)
{
    for (const char *clip : {"first", "second", "third"})
        reader::Add2Clips(QLatin1String(clip));
    reader::Add2Clips(QStringLiteral("second"));
    EXPECT_EQ(clipStore().ClipCount, 3);
    EXPECT_EQ(clipStore().ClipStore[0], "third");
    EXPECT_EQ(clipStore().ClipStore[1], "second");
}

TEST_F(ClipTest, StoreCompareIsExactForShortAndLongTexts)
{
    reader::Add2Clips(QStringLiteral("a"));
    reader::Add2Clips(QStringLiteral("Hello there"));
    EXPECT_TRUE(reader::IsInClipStore(QStringLiteral("a")));
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("A")));
    EXPECT_TRUE(reader::IsInClipStore(QStringLiteral("Hello there")));
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("Hello there!")));  // same first two characters
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("hello there")));
    EXPECT_FALSE(reader::IsInClipStore(QString()));
}

TEST_F(ClipTest, RefreshClipsUsesTheShortCaptionsAndHidesRowsPastTheCount)
{
    reader::Add2Clips(QStringLiteral("x"));
    reader::Add2Clips(QStringLiteral("y"));
    reader::ClipStoreState &s = clipStore();
    s.ClipStore[0] = QStringLiteral("A slot written by a macro, long");
    s.ClipCount = 1;
    reader::RefreshClips();
    EXPECT_EQ(view.clipRows[0].caption, "1. A slot written by a ...");  // 20 characters, blank included
    EXPECT_FALSE(view.clipRows[1].visible);
    EXPECT_EQ(view.clipCount.caption, "1 Clip Stored");
}

TEST_F(ClipTest, PickedClipGoesToTheClipboardWithANoticeOrAStatusLine)
{
    reader::Add2Clips(QStringLiteral("older"));
    reader::Add2Clips(QStringLiteral("newer"));
    reader::mnuClipboardMRU_Click(1);  // the Clipboard menu: a status line, no notice
    EXPECT_EQ(fx.clipboard.content, "older");
    EXPECT_EQ(view.panel1.last(), "2 was copied to the clipboard.");
    EXPECT_TRUE(fx.messages.popups.isEmpty());

    reader::mnuClipMRU_Click(0, true);  // the monitor reads it; no notice
    EXPECT_EQ(fx.clipboard.content, "newer");
    EXPECT_TRUE(fx.messages.popups.isEmpty());
    reader::mnuClipMRU_Click(1, false);
    EXPECT_EQ(fx.clipboard.content, "older");
    EXPECT_EQ(fx.messages.popups, QStringList{"Copied To Clipboard"});
    EXPECT_FALSE(fx.messages.popupVisible);
    EXPECT_EQ(slept, 2000);
}

TEST_F(ClipTest, PictureOfANewSizeIsStoredAndCaptionedButTheSameOneAgainIsNot)
{
    EXPECT_FALSE(view.picCount.visible);
    reader::AddPicClip(Picture(64, 48));
    reader::AddPicClip(Picture(64, 48));
    EXPECT_EQ(clipStore().PicCount, 1);
    EXPECT_EQ(view.picCount.caption, "1 Pic Stored");
    reader::AddPicClip(Picture(64, 49));
    EXPECT_EQ(clipStore().PicCount, 2);
    EXPECT_EQ(view.picRows[0].caption, "Pic 1 (64x49)");
    EXPECT_EQ(view.picRows[1].caption, "Pic 2 (64x48)");
    EXPECT_EQ(view.picCount.caption, "2 Pics Stored");
    EXPECT_FALSE(view.hidden.value(reader::TrayEntry::Separator2, true));
}

TEST_F(ClipTest, OnlyAPixelOnTheSampleGridMakesAPictureNew)
{
    struct Row { int w, h, x, y, count; };
    for (const Row &r : {Row{30, 20, 3, 2, 2},    // steps are 3 and 2
                         Row{30, 20, 4, 3, 1},    // off the grid: unnoticed
                         Row{5, 5, 3, 0, 2}}) {   // 5/10 rounds to 0: the step is 1
        SCOPED_TRACE(testing::Message() << r.w << 'x' << r.h << " at " << r.x << ',' << r.y);
        clipStore().reset();
        reader::AddPicClip(Picture(r.w, r.h));
        auto changed = Picture(r.w, r.h);
        changed->setPixel(r.x, r.y, 0xffffffffu);
        reader::AddPicClip(changed);
        EXPECT_EQ(clipStore().PicCount, r.count);
    }
}

TEST_F(ClipTest, SixthPictureReusesTheOldestHolder)
{
    for (int w = 1; w <= 5; ++w)
        reader::AddPicClip(Picture(10 * w, 10));
    const int oldestHolder = clipStore().PicStore[4];
    reader::AddPicClip(Picture(60, 10));
    const reader::ClipStoreState &s = clipStore();
    EXPECT_EQ(s.PicCount, 5);
    EXPECT_EQ(s.PicStore[0], oldestHolder);
    EXPECT_EQ(s.ClipPic[size_t(oldestHolder)]->width(), 60);
    EXPECT_EQ(view.picRows[0].caption, "Pic 1 (60x10)");
    EXPECT_EQ(view.picRows[4].caption, "Pic 5 (20x10)");
}

TEST_F(ClipTest, PickedPictureGoesBackOnTheClipboard)
{
    auto first = Picture(10, 10);
    reader::AddPicClip(first);
    reader::AddPicClip(Picture(20, 10));
    reader::mnuClipboardPicMRU_Click(1);
    EXPECT_EQ(fx.clipboard.pictureContent, first);
    EXPECT_EQ(view.panel1.last(), "2 was copied to the clipboard.");
}

TEST_F(ClipTest, ClearWithNothingStoredSaysSoAndLeavesTheClipboard)
{
    Copy(QStringLiteral("keep me"));
    reader::mnuClipboardClearMultiClips_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].text, "There are no clips to clear.\r\n");
    EXPECT_EQ(fx.messages.shown[0].title, "Clear Clips");
    EXPECT_EQ(fx.clipboard.clears, 0);
    EXPECT_EQ(fx.clipboard.content, "keep me");
}

TEST_F(ClipTest, ClearAsksByWhatIsStoredAndNoKeepsEverything)
{
    reader::Add2Clips(QStringLiteral("text"));
    fx.messages.answers = {-1};
    reader::mnuClipboardClearMultiClips_Click();
    EXPECT_EQ(fx.messages.shown.last().text, "Are you sure you want to clear ALL text clips?\r\n");
    EXPECT_EQ(clipStore().ClipCount, 1);

    reader::AddPicClip(Picture(8, 8));
    fx.messages.answers = {-1};
    reader::mnuClipboardClearMultiClips_Click();
    EXPECT_EQ(fx.messages.shown.last().text, "Are you sure you want to clear ALL text & picture clips?\r\n");

    clipStore().ClipCount = 0;
    fx.messages.answers = {-1};
    reader::mnuClipboardClearMultiClips_Click();
    EXPECT_EQ(fx.messages.shown.last().text, "Are you sure you want to clear ALL picture clips?\r\n");
    EXPECT_EQ(clipStore().PicCount, 1);
}

TEST_F(ClipTest, ClearYesEmptiesStoreMenusAndClipboard)
{
    reader::Add2Clips(QStringLiteral("text"));
    reader::AddPicClip(Picture(8, 8));
    Copy(QStringLiteral("on the clipboard"));
    fx.messages.answers = {1};
    reader::mnuClipboardClearMultiClips_Click();
    EXPECT_EQ(clipStore().ClipCount, 0);
    EXPECT_EQ(clipStore().PicCount, 0);
    EXPECT_FALSE(clipStore().ClipPic[0]);
    EXPECT_TRUE(view.visibleClipCaptions().isEmpty());
    EXPECT_FALSE(view.picRows[0].visible);
    EXPECT_FALSE(view.clipCount.visible);
    EXPECT_FALSE(view.picCount.visible);
    EXPECT_TRUE(fx.clipboard.content.isEmpty());
    EXPECT_FALSE(reader::IsInClipStore(QStringLiteral("text")));
}

TEST_F(ClipTest, EnablingPicturesStartsTimer5OnlyWhenCollectingAndDisablingForgetsThem)
{
    reader::mnuClipboardEnablePics_Click(true);
    EXPECT_TRUE(view.pics);
    EXPECT_FALSE(view.timer5);
    reader::AddPicClip(Picture(8, 8));
    reader::mnuClipboardEnablePics_Click(false);  // off again
    EXPECT_FALSE(view.pics);
    EXPECT_FALSE(view.timer5);
    EXPECT_EQ(clipStore().PicCount, 0);
    EXPECT_FALSE(clipStore().ClipPic[0]);
    EXPECT_FALSE(view.picRows[0].visible);
    EXPECT_FALSE(view.picCount.visible);
    reader::mnuClipboardEnablePics_Click(false);
    EXPECT_TRUE(view.timer5);
}
