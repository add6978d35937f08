// frmFind on a real text box: directions, wrapping, options, Replace and Replace All,
// and the main window's Edit entries that share FindText.
#include "fakes/fake_services.h"
#include "search/find_replace.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/frm_find.h"
#include "ui/frm_sonamark.h"

#include <QAction>
#include <QCoreApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTextCursor>
#include <QTextEdit>
#include <gtest/gtest.h>

namespace {

class FindTextWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        shell::app().reset();
        search::findState().reset();
        dialog = std::make_unique<ui::frmFind>(&box);
    }
    void setText(const QString &text, int caret)
    {
        box.setPlainText(text);
        QTextCursor cursor = box.textCursor();
        cursor.setPosition(caret);
        box.setTextCursor(cursor);
    }
    void findNext(const QString &what, const char *direction = "All")
    {
        dialog->cmbFind->setEditText(what);
        dialog->cmbDirection->setCurrentText(QLatin1String(direction));
        dialog->cmdFindNext->click();
    }
    int selStart() const { return box.textCursor().selectionStart(); }
    int selLength() const { return box.textCursor().selectionEnd() - box.textCursor().selectionStart(); }
    QString lastMessage() const { return fx.messages.shown.isEmpty() ? QString() : fx.messages.shown.last().text.trimmed(); }
    QString lastTitle() const { return fx.messages.shown.isEmpty() ? QString() : fx.messages.shown.last().title; }

    fakes::FakeServices fx;
    QTextEdit box;
    std::unique_ptr<ui::frmFind> dialog;
};

TEST_F(FindTextWindowTest, TheDialogShowsItsControlsAsGiven)
{
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Sonamark - Find Text"));
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->cmbDirection->currentText(), QStringLiteral("All"));
    EXPECT_EQ(dialog->cmbDirection->count(), 3);
    EXPECT_EQ(dialog->cmbDirection->itemText(2), QStringLiteral("Up"));
    EXPECT_EQ(dialog->chkMatchCase->text(), QStringLiteral("&Match Case"));
    EXPECT_EQ(dialog->chkWholeWord->text(), QStringLiteral("Wh&ole Word"));
    EXPECT_EQ(dialog->cmdFindNext->text(), QStringLiteral("Find &Next"));
    EXPECT_EQ(dialog->cmdReplace->text(), QStringLiteral("&Replace"));
    EXPECT_EQ(dialog->cmdReplaceAll->text(), QStringLiteral("Replace &All"));
    EXPECT_EQ(dialog->cmdCancel->text(), QStringLiteral("Cancel"));
    EXPECT_TRUE(search::findState().FindOpen);
}

TEST_F(FindTextWindowTest, FindNextSelectsEachHitAndAllWraps)
{
    setText(QStringLiteral("one two\nthree two"), 0);
    findNext(QStringLiteral("two"));
    EXPECT_EQ(selStart(), 4);
    EXPECT_EQ(selLength(), 3);
    EXPECT_EQ(box.textCursor().selectedText(), QStringLiteral("two"));
    findNext(QStringLiteral("two"));
    EXPECT_EQ(selStart(), 14);  // across the paragraph break
    findNext(QStringLiteral("two"));
    EXPECT_EQ(selStart(), 4);  // wrapped
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_EQ(search::findState().FindText, QStringLiteral("two"));
    EXPECT_EQ(dialog->cmbFind->count(), 1);  // remembered once
}

TEST_F(FindTextWindowTest, DownStopsAtTheEndWithStringNotFound)
{
    setText(QStringLiteral("two one two"), 0);
    findNext(QStringLiteral("two"), "Down");
    EXPECT_EQ(selStart(), 8);  // the hit at the caret's own character is skipped
    findNext(QStringLiteral("two"), "Down");
    EXPECT_EQ(lastMessage(), QStringLiteral("String not found"));
    EXPECT_EQ(lastTitle(), QStringLiteral("Find String"));
    EXPECT_EQ(selStart(), 8);
}

TEST_F(FindTextWindowTest, AllNeverFindsAMatchAtTheVeryFirstCharacterByWrapping)
{
    setText(QStringLiteral("two and more"), 5);
    findNext(QStringLiteral("two"));
    EXPECT_EQ(lastMessage(), QStringLiteral("String not found"));
}

TEST_F(FindTextWindowTest, UpFindsTheNearestHitBeforeTheCaretAndDoesNotWrap)
{
    setText(QStringLiteral("ab ab ab"), 8);
    findNext(QStringLiteral("ab"), "Up");
    EXPECT_EQ(selStart(), 6);
    findNext(QStringLiteral("ab"), "Up");
    EXPECT_EQ(selStart(), 3);
    findNext(QStringLiteral("ab"), "Up");
    EXPECT_EQ(selStart(), 0);
    findNext(QStringLiteral("ab"), "Up");
    EXPECT_EQ(lastMessage(), QStringLiteral("String not found"));
}

TEST_F(FindTextWindowTest, MatchCaseAndWholeWord)
{
    setText(QStringLiteral("- Cat cat category cat"), 0);
    dialog->chkMatchCase->setChecked(true);
    findNext(QStringLiteral("Cat"));
    EXPECT_EQ(selStart(), 2);
    findNext(QStringLiteral("Cat"));
    EXPECT_EQ(selStart(), 2);  // the only one in these capitals, found again by wrapping
    dialog->chkMatchCase->setChecked(false);
    dialog->chkWholeWord->setChecked(true);
    setText(box.toPlainText(), 7);
    findNext(QStringLiteral("cat"));
    EXPECT_EQ(selStart(), 19);  // "category" is skipped
}

TEST_F(FindTextWindowTest, EnterInFindWhatRunsFindNext)
{
    setText(QStringLiteral("x needle"), 0);
    dialog->cmbFind->setEditText(QStringLiteral("needle"));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(dialog->cmbFind->lineEdit(), &enter);
    EXPECT_EQ(selStart(), 2);
    EXPECT_EQ(selLength(), 6);
}

TEST_F(FindTextWindowTest, ReplaceChangesTheSelectedHitAndLeavesTheNewTextSelected)
{
    setText(QStringLiteral("a cat and a cat"), 0);
    findNext(QStringLiteral("CAT"));
    ASSERT_EQ(selStart(), 2);
    dialog->cmbReplace->setEditText(QStringLiteral("dog"));
    dialog->cmdReplace->click();
    EXPECT_EQ(box.toPlainText(), QStringLiteral("a dog and a cat"));
    EXPECT_EQ(box.textCursor().selectedText(), QStringLiteral("dog"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    EXPECT_EQ(dialog->cmbReplace->count(), 1);
}

TEST_F(FindTextWindowTest, ReplaceWithoutASelectionOnlyMovesOn)
{
    setText(QStringLiteral("cat"), 1);
    dialog->cmbFind->setEditText(QStringLiteral("cat"));
    dialog->cmbReplace->setEditText(QStringLiteral("dog"));
    dialog->cmdReplace->click();
    EXPECT_EQ(box.toPlainText(), QStringLiteral("cat"));
    EXPECT_EQ(lastMessage(), QStringLiteral("String not found"));
}

TEST_F(FindTextWindowTest, ReplaceComparesWithTheLastSearchedText)
{
    setText(QStringLiteral("cat bird"), 0);
    findNext(QStringLiteral("bird"));
    ASSERT_EQ(selStart(), 4);
    dialog->cmbFind->setEditText(QStringLiteral("cat"));  // edited since the search
    dialog->cmbReplace->setEditText(QStringLiteral("fish"));
    dialog->cmdReplace->click();
    EXPECT_EQ(box.toPlainText(), QStringLiteral("cat fish"));
}

TEST_F(FindTextWindowTest, EqualTextsAreRefused)
{
    setText(QStringLiteral("same"), 0);
    dialog->cmbFind->setEditText(QStringLiteral("same"));
    dialog->cmbReplace->setEditText(QStringLiteral("same"));
    dialog->cmdReplace->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Find & Replace text must be different."));
    EXPECT_EQ(lastTitle(), QStringLiteral("Find & Replace"));
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(fx.messages.shown.size(), 2);
    EXPECT_EQ(box.toPlainText(), QStringLiteral("same"));
}

TEST_F(FindTextWindowTest, ReplaceAllAsksThenCountsItsReplacements)
{
    setText(QStringLiteral("a-b-a\nb-a"), 0);
    dialog->cmbFind->setEditText(QStringLiteral("a"));
    dialog->cmbReplace->setEditText(QStringLiteral("x"));
    fx.messages.answers = {shell::MsgNo};
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("Replace all text?"));
    EXPECT_EQ(box.toPlainText(), QStringLiteral("a-b-a\nb-a"));
    fx.messages.answers = {shell::MsgYes};
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(box.toPlainText(), QStringLiteral("x-b-x\nb-x"));
    EXPECT_EQ(lastMessage(), QStringLiteral("There were 3 replacements made."));
    EXPECT_EQ(lastTitle(), QStringLiteral("Find & Replace"));
    fx.messages.answers = {shell::MsgYes};
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("There were no replacements made."));
}

TEST_F(FindTextWindowTest, ReplaceAllWithTheSearchTextInsideTheReplacementStops)
{
    setText(QStringLiteral("a a a"), 0);
    dialog->cmbFind->setEditText(QStringLiteral("a"));
    dialog->cmbReplace->setEditText(QStringLiteral("aa"));
    fx.messages.answers = {shell::MsgYes};
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(lastMessage(), QStringLiteral("There were 1001 replacements made."));
    EXPECT_EQ(box.toPlainText().count(QLatin1Char('a')), 3 + 1001);
}

TEST_F(FindTextWindowTest, ReplaceAllWithWholeWordAndOneHit)
{
    setText(QStringLiteral("cat cats"), 0);
    dialog->chkWholeWord->setChecked(true);
    dialog->cmbFind->setEditText(QStringLiteral("cat"));
    dialog->cmbReplace->setEditText(QStringLiteral("dog"));
    fx.messages.answers = {shell::MsgYes};
    dialog->cmdReplaceAll->click();
    EXPECT_EQ(box.toPlainText(), QStringLiteral("dog cats"));
    EXPECT_EQ(lastMessage(), QStringLiteral("There was 1 replacement made."));
}

TEST_F(FindTextWindowTest, CancelHidesAndKeepsTheRows)
{
    dialog->show();
    setText(QStringLiteral("x y"), 0);
    findNext(QStringLiteral("y"));
    dialog->cmdCancel->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->cmbFind->count(), 1);
}

TEST_F(FindTextWindowTest, FindNextOfTheEditMenuUsesTheLastSearchText)
{
    setText(QStringLiteral("go on, go on"), 0);
    ui::FindNextText(&box, nullptr);
    EXPECT_TRUE(fx.messages.shown.isEmpty());  // no FindText yet: nothing happens
    search::findState().FindText = QStringLiteral("go");
    ui::FindNextText(&box, nullptr);
    EXPECT_EQ(selStart(), 7);
    ui::FindNextText(&box, nullptr);
    EXPECT_EQ(selStart(), 7);  // the wrap finds the caret's own hit again
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    setText(QStringLiteral("go home"), 3);
    ui::FindNextText(&box, nullptr);
    EXPECT_EQ(lastMessage(), QStringLiteral("String not found"));  // a hit at 0 is not found by wrapping
    EXPECT_EQ(lastTitle(), QStringLiteral("No String"));
}

TEST(FindMenuTest, TheMainWindowsEditMenuOpensTheDialogAndFindsNext)
{
    fakes::FakeServices fx;
    shell::app().reset();
    search::findState().reset();
    ui::frmSonamark window(&fx.tray);
    QAction *find = nullptr;
    QAction *next = nullptr;
    for (QAction *menu : window.menuBar()->actions())
        if (menu->text() == QLatin1String("&Edit"))
            for (QAction *entry : menu->menu()->actions()) {
                if (entry->text() == QLatin1String("Find.."))
                    find = entry;
                if (entry->text() == QLatin1String("Find Next"))
                    next = entry;
            }
    ASSERT_TRUE(find && next);
    EXPECT_TRUE(find->isEnabled());
    EXPECT_TRUE(next->isEnabled());
    window.txtSpeech->setPlainText(QStringLiteral("say hello, hello"));
    find->trigger();
    auto *dialog = window.findChild<ui::frmFind *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    dialog->cmbFind->setEditText(QStringLiteral("hello"));
    dialog->cmdFindNext->click();
    EXPECT_EQ(window.txtSpeech->textCursor().selectionStart(), 4);
    dialog->cmdCancel->click();
    next->trigger();
    EXPECT_EQ(window.txtSpeech->textCursor().selectionStart(), 11);
    find->trigger();
    EXPECT_EQ(window.findChildren<ui::frmFind *>().size(), 1);  // loaded once
}

} // namespace
