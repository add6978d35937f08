// The spell window frmSpellIt on the real Hunspell dictionary, driven through its
// buttons and its "Change To" box as a user would: the result committed into txtSpeech,
// and, on the test desktop's X server, the clipboard face's result read back with xclip.
#include "fakes/fake_services.h"
#include "platform/hunspell/hunspell_checker.h"
#include "platform/qt/qt_clipboard.h"
#include "reader/clip_store.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "spell/spell_check.h"
#include "spell/spell_state.h"
#include "ui/document_box.h"
#include "ui/frm_spell_it.h"
#include "ui/guarded_application.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace {

constexpr int kGiveUpMs = 30000;  // a step that never comes closes the window

ui::frmSpellIt *OpenWindow()
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *window = qobject_cast<ui::frmSpellIt *>(w); window && window->isVisible())
            return window;
    return nullptr;
}

QString Selected(ui::frmSpellIt *w) { return w->rtfSpell->textCursor().selectedText(); }

// Types text into the "Change To" box over what it holds, key by key.
void TypeOver(QLineEdit *box, const QString &text)
{
    box->selectAll();
    QKeyEvent erase(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    QApplication::sendEvent(box, &erase);
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(box, &press);
    }
}

// Runs steps one after another while the modal window is up: each waits for the word it
// expects to stand selected, then acts. What the window showed at each step is kept.
class Driver {
public:
    using Step = std::pair<QString, std::function<void(ui::frmSpellIt *)>>;
    explicit Driver(QList<Step> steps) : m_steps(std::move(steps))
    {
        m_timer.setInterval(20);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
        m_clock.start();
        m_timer.start();
    }
    QStringList seen;     // the selection at each step
    QStringList status;   // the dictionary line
    int done = 0;

private:
    void tick()
    {
        ui::frmSpellIt *w = OpenWindow();
        if (!w)
            return;
        if (m_clock.elapsed() > kGiveUpMs) {
            w->cmdCancel->click();
            return;
        }
        if (done >= m_steps.size() || w->logic().walking() || Selected(w) != m_steps[done].first)
            return;
        seen << Selected(w);
        status << w->lblDictionary->text();
        m_steps[done++].second(w);
    }
    QList<Step> m_steps;
    QTimer m_timer;
    QElapsedTimer m_clock;
};

class SpellWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!hunspell.dictionaries().contains(QStringLiteral("en_US")))
            GTEST_SKIP() << "hunspell-en-us is not installed";
        platform::services().spell = &hunspell;
        shell::app().reset();
        shell::settings().VoiceOpt = QStringLiteral("English (America)");
        spell::spellState().reset();
        reader::clipStore().reset();
        ui::InstallSpellWindow();
    }
    void TearDown() override
    {
        spell::SetSpellWindowOpener(nullptr);
        shell::settings().VoiceOpt.clear();
    }

    fakes::FakeServices fakes;
    platform::HunspellChecker hunspell;
};

TEST_F(SpellWindowTest, ChangeIgnoreAndTypedChangeCommitIntoTheTextBox)
{
    QWidget mainWindow;
    auto *txtSpeech = new QTextEdit(&mainWindow);
    ui::DocumentBox box(&mainWindow, txtSpeech);
    txtSpeech->setPlainText(QStringLiteral("I recieve the speling of becuase today."));
    fakes.messages.answers = {shell::MsgYes};

    Driver driver({{QStringLiteral("recieve"), [](ui::frmSpellIt *w) { w->cmdChange->click(); }},
                   {QStringLiteral("speling"), [](ui::frmSpellIt *w) { w->cmdIgnore->click(); }},
                   {QStringLiteral("becuase"), [](ui::frmSpellIt *w) {
                        TypeOver(w->txtSpell, QStringLiteral("since"));
                        w->cmdChange->click();
                    }}});
    spell::mnuSpellCheck_Click();

    EXPECT_EQ(driver.done, 3);
    EXPECT_EQ(driver.seen, (QStringList{"recieve", "speling", "becuase"}));
    EXPECT_EQ(driver.status.value(0), QStringLiteral("Dictionary: English (United States) - en_US"));
    EXPECT_EQ(txtSpeech->toPlainText(), QStringLiteral("I receive the speling of since today."));
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text, QStringLiteral("Spell check completed. Commit the changes?\r\n"));
    EXPECT_FALSE(spell::spellState().SpellCancelled);
    EXPECT_TRUE(spell::spellState().SpellDone);
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
    EXPECT_EQ(OpenWindow(), nullptr);
}

TEST_F(SpellWindowTest, CancelLeavesTheTextBoxAlone)
{
    QWidget mainWindow;
    auto *txtSpeech = new QTextEdit(&mainWindow);
    ui::DocumentBox box(&mainWindow, txtSpeech);
    txtSpeech->setPlainText(QStringLiteral("Teh cat\r\nsat."));
    Driver driver({{QStringLiteral("Teh"), [](ui::frmSpellIt *w) { w->cmdCancel->click(); }}});
    spell::mnuSpellCheck_Click();
    EXPECT_EQ(driver.done, 1);
    EXPECT_EQ(txtSpeech->toPlainText(), QStringLiteral("Teh cat\nsat."));
    EXPECT_TRUE(spell::spellState().SpellCancelled);
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
}

TEST_F(SpellWindowTest, ClipboardFaceLeavesTheResultOnTheXClipboard)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        GTEST_SKIP() << "needs an X display";
    platform::QtClipboard clipboard;
    platform::services().clipboard = &clipboard;
    const QStringList tst = hunspell.useDictionary(QStringLiteral("en_US"), nullptr)
                                ? hunspell.suggestions(QStringLiteral("tst"))
                                : QStringList();
    ASSERT_FALSE(tst.isEmpty());

    Driver driver({{QStringLiteral("Thiss"), [](ui::frmSpellIt *w) {
                        TypeOver(w->txtSpell, QStringLiteral("This"));
                        w->cmdChange->click();
                    }},
                   // Words are cut at blanks: the line end and the word behind it come along,
                   // shown as one paragraph break.
                   {QStringLiteral("tst") + QChar::ParagraphSeparator + QStringLiteral("of"),
                    [](ui::frmSpellIt *w) { w->cmdChange->click(); }}});
    spell::SpellCheckClip(QStringLiteral("Thiss is a tst\r\nof the clipboard."));
    EXPECT_EQ(driver.done, 2);
    const QString expected = QStringLiteral("This is a ") + tst.first() + QStringLiteral("\r\nof the clipboard.");
    ASSERT_EQ(fakes.messages.shown.size(), 1);
    EXPECT_EQ(fakes.messages.shown[0].text,
              QStringLiteral("Spell check completed. Changes have been copied to the clipboard.\r\n"));
    EXPECT_EQ(reader::clipStore().ClipStore[0], expected);

    // xclip asks this process for the clipboard: keep its event loop turning meanwhile.
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    ASSERT_TRUE(xclip.waitForStarted(5000)) << "xclip is needed";
    QElapsedTimer clock;
    clock.start();
    while (xclip.state() != QProcess::NotRunning && clock.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(QString::fromUtf8(xclip.readAllStandardOutput()), expected);
    platform::services().clipboard = &fakes.clipboard;
}

} // namespace

int main(int argc, char **argv)
{
    // The real X server when the test desktop gives one (the clipboard face needs it).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsEmpty("DISPLAY") ? "offscreen" : "xcb");
    ui::GuardedApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
