// The ways into the spell checker: macros and the menus (SpellCheck_OnTop), the tray's
// Spell Check mode and its picture, the clipboard's spell face.
#include "spell_fixture.h"

#include "reader/clipboard_monitor.h"
#include "spell/spell_check.h"
#include "../reader/clip_fixture.h"

namespace {

class EntryTest : public SpellTest {
protected:
    void SetUp() override
    {
        SpellTest::SetUp();
        if (IsSkipped())
            return;
        reader::monitor().reset();
        reader::SetClipView(&clipView);
        clipView.clipboard = &fakes.clipboard;
        spell::SetSpellWindowOpener([this] {
            const spell::SpellState &s = spell::spellState();
            opened << (s.SpellCommit ? QStringLiteral("commit:") : QStringLiteral("clip:")) + s.SpellText;
            pictureWhileOpen = fakes.tray.picture;
        });
    }
    void TearDown() override
    {
        spell::SetSpellWindowOpener(nullptr);
        reader::SetClipView(nullptr);
        SpellTest::TearDown();
    }

    FakeClipView clipView;
    QStringList opened;
    platform::TrayPicture pictureWhileOpen = platform::TrayPicture::Idle;
};

TEST_F(EntryTest, OnTopShowsTheWindowWithTheTextAndTheSpellPicture)
{
    EXPECT_TRUE(spell::SpellCheckAvailable());
    EXPECT_EQ(spell::SpellCheck_OnTop(QStringLiteral("some text"), true), QString());
    EXPECT_EQ(opened, QStringList{QStringLiteral("commit:some text")});
    EXPECT_EQ(pictureWhileOpen, platform::TrayPicture::SpellMonitoring);
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Idle);  // not monitoring
}

TEST_F(EntryTest, OnTopTellsWhyItCannotRun)
{
    spell::SetSpellWindowOpener(nullptr);
    EXPECT_FALSE(spell::SpellCheck_OnTop(QStringLiteral("x"), true).isEmpty());
    spell::SetSpellWindowOpener([this] { opened << QStringLiteral("opened"); });
    EXPECT_TRUE(spell::SpellCheck_OnTop(QString(spell::kMaxWindowText + 1, QLatin1Char('a')), true)
                    .startsWith(QStringLiteral("The text is too long")));
    platform::services().spell = nullptr;
    EXPECT_FALSE(spell::SpellCheckAvailable());
    EXPECT_EQ(spell::SpellCheck_OnTop(QStringLiteral("x"), true), spell::kNoDictionaryText);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(EntryTest, MainMenuChecksTheSelectionElseTheWholeText)
{
    box.loadPlainText(QStringLiteral("one two three"));
    spell::mnuSpellCheck_Click();
    box.select(4, 3);
    spell::mnuSpellCheck_Click();
    box.loadPlainText(QStringLiteral("  \r\n "));
    spell::mnuSpellCheck_Click();  // nothing to check
    EXPECT_EQ(opened, (QStringList{"commit:one two three", "commit:two"}));
}

TEST_F(EntryTest, ClipFaceWithoutDictionarySaysSo)
{
    platform::services().spell = nullptr;
    spell::SpellCheckClip(QStringLiteral("text"));
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].title, spell::kNoDictionaryTitle);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(EntryTest, TrayEntryFlipsTheModeAndThePictureWhileMonitoring)
{
    spell::mnuPUSpellCheck_Click();
    EXPECT_TRUE(clipView.spellMode);
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Idle);  // not monitoring: no change
    reader::monitor().Monitoring = true;
    spell::SetSpellClipMode(false);
    EXPECT_FALSE(clipView.spellMode);
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Monitoring);
    spell::SetSpellClipMode(true);
    spell::SetSpellClipMode(true);  // already on: no second flip
    EXPECT_TRUE(spell::SpellClipMode());
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::SpellMonitoring);
}

TEST_F(EntryTest, MonitoredTextInSpellModeGoesToTheWindowForTheClipboard)
{
    spell::SetSpellClipMode(true);
    reader::cmdClipToggle_Click();  // monitoring on
    ASSERT_TRUE(reader::monitor().Monitoring);
    fakes.clipboard.content = QStringLiteral("Speling");
    // The fixture's view records the hand-over; the window does what SpellCheckClip does.
    reader::Timer1_Timer();
    ASSERT_EQ(clipView.spellChecks, QStringList{QStringLiteral("Speling")});
    EXPECT_FALSE(reader::monitor().Monitoring);
    spell::SpellCheckClip(clipView.spellChecks.first());
    EXPECT_EQ(opened, QStringList{QStringLiteral("clip:Speling")});
    EXPECT_EQ(fakes.tray.picture, platform::TrayPicture::Idle);
}

} // namespace
