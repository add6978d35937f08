// The buffer the audio device pulls speech from.
#include "platform/espeak/pcm_player.h"

#include <gtest/gtest.h>

using platform::espeak::PcmFeed;

TEST(PcmFeed, HandsOverWhatWasAppendedInOrder)
{
    PcmFeed feed;
    feed.append(QByteArray("abc"));
    feed.append(QByteArray("def"));
    EXPECT_EQ(feed.read(4), QByteArray("abcd"));
    EXPECT_EQ(feed.consumed(), 4);
    EXPECT_EQ(feed.read(100), QByteArray("ef"));
    EXPECT_TRUE(feed.read(100).isEmpty());  // nothing more yet: the device waits
}

TEST(PcmFeed, AfterClearNothingOfThePurgedStreamIsHeard)
{
    PcmFeed feed;
    feed.append(QByteArray(8000, 'o'));  // the old stream, mostly not yet taken
    ASSERT_EQ(feed.read(10), QByteArray(10, 'o'));
    feed.clear();
    EXPECT_EQ(feed.consumed(), 0);
    EXPECT_EQ(feed.bytesAvailable(), 0);
    feed.append(QByteArray(20, 'n'));
    EXPECT_EQ(feed.read(100), QByteArray(20, 'n'));
    EXPECT_EQ(feed.consumed(), 20);
}
