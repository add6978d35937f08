// The statement wizards in the Hotkeys editor on the real logic, the program's dialogs
// and the fake platform: Functions entries paste where the caret says with the indent of
// their place, Cancel leaves the code box and its undo as they were, the help switch,
// the mouse pick-up window fed by the mouse hook, frmPicDate and frmComDiag.
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "ui/code_box.h"
#include "ui/frm_com_diag.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_pic_date.h"
#include "ui/frm_pick_point.h"
#include "ui/wizard_dialogs.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTimer>
#include <deque>
#include <gtest/gtest.h>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

constexpr int kModalPollMs = 10;

// Acts on the modal dialogs as they open, one step each, in order. A step gets the
// dialog and answers it (accept, reject, fill in); steps left over are a test failure,
// and a dialog past the last step is recorded in titles and closed.
class ModalScript : public QObject {
public:
    using Step = std::function<void(QWidget *dialog)>;
    explicit ModalScript(std::initializer_list<Step> steps) : m_steps(steps)
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { poll(); });
        m_timer.start(kModalPollMs);
    }
    ~ModalScript() override { m_timer.stop(); }
    size_t left() const { return m_steps.size(); }
    QStringList titles;  // the window titles of the dialogs met

private:
    void poll()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == m_last || !modal->isVisible())
            return;
        m_last = modal;
        titles << modal->windowTitle();
        if (m_steps.empty()) {
            // Not expected: recorded for the test to see, and closed so that it ends.
            if (auto *dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
            return;
        }
        const Step step = m_steps.front();
        m_steps.pop_front();
        step(modal);
    }
    std::deque<Step> m_steps;
    QPointer<QWidget> m_last;
    QTimer m_timer;
};

// Steps of ModalScript.
ModalScript::Step Type(const QString &reply)
{
    return [reply](QWidget *dialog) {
        auto *box = qobject_cast<QInputDialog *>(dialog);
        ASSERT_NE(box, nullptr) << dialog->metaObject()->className();
        EXPECT_EQ(box->objectName(), QStringLiteral("frmWizardInput"));
        box->setTextValue(reply);
        box->accept();
    };
}
ModalScript::Step Dismiss()
{
    return [](QWidget *dialog) { static_cast<QDialog *>(dialog)->reject(); };
}

struct WizardWindowTest : ::testing::Test {
    void SetUp() override
    {
        delete ui::hotkeyEditor();
        shell::app().reset();
        shell::settings().reset();
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        shell::app().AppFolder = dir.path() + QLatin1Char('/');
        hotkeys::hookState().reset();
        hotkeys::table().reset();
        engine::runState().reset();
        engine::ConnectRunner();
        ASSERT_TRUE(hotkeys::HookKeyboard());
        hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
        shell::SetDelaySleeper([](int) {});
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[size_t(t.HotkeyCount++)] = hotkeys::Hotkey{true, QStringLiteral("^%a"), QStringLiteral("Alpha"),
                                                             QStringLiteral("a")};
        ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
        hotkeys::table().CurrentHotkeyIndex = 0;
        ui::ShowHotkeyEditor();
        w = ui::hotkeyEditor();
        ASSERT_NE(w, nullptr);
    }
    void TearDown() override
    {
        delete ui::hotkeyEditor();
        shell::SetDelaySleeper(nullptr);
        hotkeys::hookState().reset();
    }
    // The code box holds code, the caret at 0-based character column of 1-based line.
    void place(const QString &code, int line, int column)
    {
        w->txtAction->setCode(code);
        QTextCursor cursor(w->txtAction->document()->findBlockByNumber(line - 1));
        cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
        w->txtAction->setTextCursor(cursor);
    }
    QAction *action(const char *name) const
    {
        auto *found = w->findChild<QAction *>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    // Triggers the entry with the dialogs scripted; fails when a step was not used.
    void run(const char *name, std::initializer_list<ModalScript::Step> steps)
    {
        ModalScript script(steps);
        QAction *entry = action(name);
        ASSERT_NE(entry, nullptr);
        entry->trigger();
        EXPECT_EQ(script.left(), 0u) << name << " left dialogs unanswered";
        titles = script.titles;
    }
    QStringList messages() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text.trimmed();
        return out;
    }

    QTemporaryDir dir;
    fakes::FakeServices fx;
    ui::frmHotkeys *w = nullptr;
    QStringList titles;
};

TEST_F(WizardWindowTest, TheMenuComesFromTheWizardsWithTheHelpSwitchOnTop)
{
    const QList<QAction *> top = w->mnuFunctions->actions();
    ASSERT_FALSE(top.isEmpty());
    EXPECT_EQ(top.first(), w->mnuFunctionsHelp);
    EXPECT_EQ(w->mnuFunctionsHelp->text(), QStringLiteral("&Help on Statements"));
    QStringList groups;
    for (QAction *a : top)
        if (a->menu())
            groups << a->text();
    EXPECT_EQ(groups, (QStringList{"&Control", "&Keys and Mouse", "&Files", "C&lipboard", "&Sonamark", "&Interaction"}));
    EXPECT_EQ(w->mnuFunctionsWizards.size(), 45);
    for (QAction *a : w->mnuFunctionsWizards)
        EXPECT_TRUE(a->isEnabled() && !a->objectName().isEmpty()) << a->text().toStdString();
    // frmComDiag is reached from Interaction.
    EXPECT_EQ(w->mnuFunctionsComDiag->parent(), w);
    EXPECT_TRUE(top.last()->menu()->actions().contains(w->mnuFunctionsComDiag));
    QStringList pickUps;
    for (QAction *a : w->mnuPUMouse)
        pickUps << a->objectName();
    EXPECT_EQ(pickUps, (QStringList{"mnuPUMouseLeftClick", "mnuPUMouseLeftDrag", "mnuPUMouseLeftDbl",
                                    "mnuPUMouseRightDrag", "mnuPUMouseRightDbl", "DefineMouseClickZone"}));
    EXPECT_EQ(w->txtAction->contextMenuPolicy(), Qt::CustomContextMenu);
}

TEST_F(WizardWindowTest, AStatementPastedMidLineGoesOnTheNextLine)
{
    place(QStringLiteral("hello world\r\n{ENTER}"), 1, 5);
    run("mnuFunctionsCancel", {Type(QStringLiteral("X=Y"))});
    EXPECT_EQ(titles, QStringList{"CANCEL IF"});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("hello world\r\n[CANCEL IF X=Y]\r\n{ENTER}"));
    EXPECT_EQ(w->txtAction->caretLine(), 2);
    EXPECT_TRUE(messages().isEmpty()) << messages().join('|').toStdString();
}

TEST_F(WizardWindowTest, AtTheEndOfTextWithoutALineEndOneComesFirst)
{
    place(QStringLiteral("abc"), 1, 3);
    run("mnuFunctionsCancel", {Type(QStringLiteral("A=1"))});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("abc\r\n[CANCEL IF A=1]"));
}

TEST_F(WizardWindowTest, ThreeLinesOfIfElseEachTakeTheirIndentInsideABlockAndUndoAsOne)
{
    const QString before = QStringLiteral("# outer\r\n[LOOP N=1,3]\r\n    {TAB}\r\n[ENDLOOP]");
    place(before, 2, 4);
    const int undoSteps = w->txtAction->document()->availableUndoSteps();
    run("mnuFunctionsIFTHENELSE", {Type(QStringLiteral("N=2"))});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("# outer\r\n[LOOP N=1,3]\r\n    [IF N=2]\r\n    [ELSE]\r\n"
                                                   "    [ENDIF]\r\n    {TAB}\r\n[ENDLOOP]"))
        << w->txtAction->code().toStdString();
    EXPECT_GT(w->txtAction->document()->availableUndoSteps(), undoSteps);
    w->txtAction->undo();  // one step takes all three lines back
    EXPECT_EQ(w->txtAction->code(), before);
}

TEST_F(WizardWindowTest, CancelLeavesTheBoxAndItsUndoAsTheyWere)
{
    place(QStringLiteral("line one\r\nline two"), 2, 2);
    QTextDocument *document = w->txtAction->document();
    const int undoSteps = document->availableUndoSteps();
    const bool modified = document->isModified();
    run("mnuFunctionsIFTHENELSE", {Dismiss()});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("line one\r\nline two"));
    EXPECT_EQ(document->availableUndoSteps(), undoSteps);
    EXPECT_EQ(document->isModified(), modified);
    EXPECT_EQ(w->txtAction->caretLine(), 2);
    // An empty answer ends the wizard the same way.
    run("mnuFunctionsCancel", {Type(QString())});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("line one\r\nline two"));
    EXPECT_EQ(document->availableUndoSteps(), undoSteps);
}

TEST_F(WizardWindowTest, WithTheHelpSwitchOnNoQuestionComesAndNothingIsPasted)
{
    place(QStringLiteral("abc"), 1, 0);
    w->mnuFunctionsHelp->setChecked(true);
    // The help is shown (or, without its file beside the tests, said to be missing) and
    // no question is asked.
    const auto helpShown = [this] { return fx.textWindow.shows + int(fx.messages.shown.size()); };
    for (const char *entry : {"mnuFunctionsIFTHENELSE", "mnuFunctionsComDiag", "mnuPUMouseLeftClick"}) {
        const int before = helpShown();
        run(entry, {});
        EXPECT_TRUE(titles.isEmpty()) << entry;
        EXPECT_EQ(helpShown(), before + 1) << entry;
    }
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("abc"));
    EXPECT_FALSE(fx.inputHooks.mouseHooked);
    w->mnuFunctionsHelp->setChecked(false);
    run("mnuFunctionsCancel", {Type(QStringLiteral("A=1"))});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("abc\r\n[CANCEL IF A=1]"));
}

// A pick-up step: a click inside the window itself is not taken, one outside is.
ModalScript::Step ClickAt(fakes::FakeInputHooks &hooks, QPoint at, const QString &title)
{
    return [&hooks, at, title](QWidget *dialog) {
        auto *picker = qobject_cast<ui::frmPickPoint *>(dialog);
        ASSERT_NE(picker, nullptr) << dialog->metaObject()->className();
        EXPECT_EQ(picker->windowTitle(), title);
        EXPECT_EQ(picker->lblPrompt->text(), QStringLiteral("Click the point on the screen (Esc cancels)"));
        EXPECT_TRUE(picker->windowFlags() & Qt::WindowStaysOnTopHint);
        const QPoint inside = picker->frameGeometry().center();
        ASSERT_FALSE(picker->frameGeometry().contains(at));
        EXPECT_TRUE(hooks.clickPlan.pointCapture);
        hooks.click(platform::mouse::LeftDown, inside.x(), inside.y());
        QApplication::processEvents();
        EXPECT_TRUE(picker->isVisible());
        hooks.click(platform::mouse::LeftDown, at.x(), at.y());
        EXPECT_FALSE(hooks.clickPlan.pointCapture);  // one point taken: no more clicks swallowed
    };
}

TEST_F(WizardWindowTest, LeftClickPicksAPointWithTheMouseHookAndPastesThePair)
{
    place(QStringLiteral("{ENTER}"), 1, 7);
    const QPoint at(630, 410);
    run("mnuPUMouseLeftClick", {ClickAt(fx.inputHooks, at, QStringLiteral("Define Left Click"))});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("{ENTER}\r\n[LEFTDOWN 630 410]\r\n[LEFTUP 630 410]"));
    // The hook and the capture are over.
    EXPECT_FALSE(fx.inputHooks.mouseHooked);
    EXPECT_FALSE(hotkeys::hookState().MousePointCapture);
    EXPECT_FALSE(fx.inputHooks.clickPlan.pointCapture);
}

TEST_F(WizardWindowTest, ADragTakesTwoPointsAndEscEndsThePickUpWithNothing)
{
    place(QString(), 1, 0);
    run("mnuPUMouseRightDrag", {ClickAt(fx.inputHooks, QPoint(5, 700), QStringLiteral("Define Right Down")),
                                ClickAt(fx.inputHooks, QPoint(6, 710), QStringLiteral("Define Right Up"))});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("[RIGHTDOWN 5 700]\r\n[RIGHTUP 6 710]"));

    const QString before = w->txtAction->code();
    run("mnuPUMouseLeftDbl", {[](QWidget *dialog) {
            QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QApplication::sendEvent(dialog, &esc);
        }});
    EXPECT_EQ(titles, QStringList{"Define Left Doubleclick"});
    EXPECT_EQ(w->txtAction->code(), before);
    EXPECT_FALSE(fx.inputHooks.mouseHooked);
    EXPECT_FALSE(fx.inputHooks.clickPlan.pointCapture);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(WizardWindowTest, AMouseThatCannotBeHookedIsToldAndNoWindowOpens)
{
    fx.inputHooks.mouseAvailable = false;
    place(QStringLiteral("x"), 1, 0);
    run("mnuPUMouseLeftClick", {});
    EXPECT_EQ(messages(), QStringList{"Mouse Hook: Can't hook the mouse for Left Click statement."});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("x"));
}

TEST_F(WizardWindowTest, WindowClassIsTheClassUnderThePointClicked)
{
    fx.windows.classUnderPoints = QStringLiteral("Gedit");
    ui::WizardDialogs dialogs(w, {});
    QString className;
    bool hooked = false;
    ModalScript script{ClickAt(fx.inputHooks, QPoint(700, 500), QStringLiteral("Get Class Name"))};
    EXPECT_TRUE(dialogs.windowClass(QStringLiteral("Get Class Name"), className, hooked));
    EXPECT_TRUE(hooked);
    EXPECT_EQ(className, QStringLiteral("Gedit"));
    EXPECT_EQ(fx.windows.classAsked, QList<QPoint>{QPoint(700, 500)});
}

TEST_F(WizardWindowTest, MessagesGoToTheMessageBoxWithItsTypesAndAnswers)
{
    ui::WizardDialogs dialogs(w, {});
    fx.messages.answers = {shell::MsgNo, shell::MsgCancel, shell::MsgYes, shell::MsgOk};
    EXPECT_EQ(dialogs.message(QStringLiteral("q1"), 3, QStringLiteral("T")), hotkeys::WizardNo);
    EXPECT_EQ(dialogs.message(QStringLiteral("q2"), 3, QStringLiteral("T")), hotkeys::WizardCancel);
    EXPECT_EQ(dialogs.message(QStringLiteral("q3"), 4, QStringLiteral("T")), hotkeys::WizardYes);
    EXPECT_EQ(dialogs.message(QStringLiteral("q4"), 0, QStringLiteral("T")), hotkeys::WizardOk);
    ASSERT_EQ(fx.messages.shown.size(), 4);
    EXPECT_EQ(fx.messages.shown[0].type, 2);  // Yes, No and Cancel
    EXPECT_EQ(fx.messages.shown[2].type, 1);  // Yes and No
    EXPECT_EQ(fx.messages.shown[3].type, 0);
    fx.mouse.screen = QSize(1280, 800);
    EXPECT_EQ(dialogs.screen(), QSize(1280, 800));
}

TEST_F(WizardWindowTest, FileFiltersBecomeTheDialogsOwn)
{
    EXPECT_EQ(ui::QtFileFilter(QStringLiteral("Copy File (*.*)|*.*")), QStringLiteral("Copy File (*)"));
    EXPECT_EQ(ui::QtFileFilter(QStringLiteral("MP3 File (*.mp3)|*.mp3")), QStringLiteral("MP3 File (*.mp3)"));
    EXPECT_EQ(ui::QtFileFilter(QStringLiteral("Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml")),
              QStringLiteral("Text & XML Files (*.txt *.rtf *.xml)"));
    EXPECT_EQ(ui::QtFileFilter(QStringLiteral("A (*.a)|*.a|All (*.*)|*.*")), QStringLiteral("A (*.a);;All (*)"));
    EXPECT_EQ(ui::QtFileFilter(QString()), QString());
}

TEST_F(WizardWindowTest, PicDateRefusesAPastTimeTodayByTheTimeCheckAndTakesTomorrow)
{
    const QDateTime now(QDate(2025, 3, 7), QTime(15, 4, 5));
    ui::frmPicDate window(true, now);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Set Wait Time/Date"));
    EXPECT_EQ(window.MonthView1->selectedDate(), now.date());
    EXPECT_EQ(window.cmbHour->currentText(), QStringLiteral("3"));
    EXPECT_EQ(window.cmbMinute->currentText(), QStringLiteral("04"));
    EXPECT_EQ(window.cmbSecond->currentText(), QStringLiteral("05"));
    EXPECT_TRUE(window.optPM->isChecked());
    EXPECT_EQ(window.cmbHour->count(), 12);
    EXPECT_EQ(window.cmbSecond->count(), 60);

    window.optAM->setChecked(true);  // 3:04:05 AM today: gone
    window.cmdOK->click();
    EXPECT_EQ(messages(), QStringList{"Invalid Time: The completion time is not valid."});
    EXPECT_EQ(window.result(), int(QDialog::Rejected));
    window.MonthView1->setSelectedDate(now.date().addDays(-1));
    window.cmdOK->click();
    EXPECT_EQ(messages().last(), QStringLiteral("Invalid Date: You must pick a date in the future"));
    window.MonthView1->setSelectedDate(now.date().addDays(1));
    window.cmdOK->click();
    EXPECT_EQ(fx.messages.shown.size(), 2);
    EXPECT_EQ(window.result(), int(QDialog::Accepted));
    EXPECT_EQ(window.DateText, QStringLiteral("08/March/2025"));
    EXPECT_EQ(window.TimeText, QStringLiteral("3:04:05 AM"));

    ui::frmPicDate past(false, now);  // [DATEDIFF]: the past is fine
    past.MonthView1->setSelectedDate(QDate(2001, 1, 2));
    past.cmdOK->click();
    EXPECT_EQ(past.result(), int(QDialog::Accepted));
    EXPECT_EQ(past.DateText, QStringLiteral("02/January/2001"));
}

TEST_F(WizardWindowTest, WaitForAMomentPastesTheMomentPickedInPicDate)
{
    place(QString(), 1, 0);
    fx.messages.answers = {shell::MsgYes};  // a time and date, not seconds
    const QDate tomorrow = QDate::currentDate().addDays(1);
    run("mnuFunctionsWait", {[tomorrow](QWidget *dialog) {
            auto *window = qobject_cast<ui::frmPicDate *>(dialog);
            ASSERT_NE(window, nullptr) << dialog->metaObject()->className();
            window->MonthView1->setSelectedDate(tomorrow);
            window->cmbHour->setCurrentIndex(10);    // 11
            window->cmbMinute->setCurrentIndex(30);
            window->cmbSecond->setCurrentIndex(0);
            window->optPM->setChecked(true);
            window->cmdOK->click();
        }});
    EXPECT_EQ(w->txtAction->code(),
              QStringLiteral("[WAIT \"") + tomorrow.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 23:30:00\"]"));
}

TEST_F(WizardWindowTest, ComDiagWritesTheDialogStatementIntoTheCode)
{
    place(QStringLiteral("{HOME}\r\n[IF A=1]\r\n[ENDIF]"), 2, 8);
    run("mnuFunctionsComDiag", {[](QWidget *dialog) {
            auto *form = qobject_cast<ui::frmComDiag *>(dialog);
            ASSERT_NE(form, nullptr) << dialog->metaObject()->className();
            EXPECT_EQ(form->windowTitle(), QStringLiteral("User Input - Common Dialog Control"));
            EXPECT_EQ(form->cmbDialogType->currentText(), QStringLiteral("Open"));
            EXPECT_EQ(form->cmbFlags->itemText(0), QString());
            EXPECT_EQ(form->cmbFlags->itemText(1), QStringLiteral("Allow Multiselect"));
            form->txtTitle->setText(QStringLiteral("Pick a list"));
            form->txtFolder->setText(QStringLiteral("/tmp"));
            form->txtFileExt->setText(QStringLiteral("txt"));
            form->cmbFlags->setCurrentIndex(form->cmbFlags->findText(QStringLiteral("File Must Exist")));
            form->cmdAddFlag->click();
            form->cmdAddFlag->click();  // once is enough: told, not added again
            form->txtVariable->setText(QStringLiteral("LIST"));
            form->cmdApply->click();
            EXPECT_EQ(form->txtOutput->text(), QStringLiteral("dialog+Open+Pick a list+/tmp+txt+cdlOFNFileMustExist"));
            form->cmdClose->click();
        }});
    EXPECT_EQ(messages(), QStringList{"User Input - Common Dialog Control: The flag File Must Exist is already in the list."});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("{HOME}\r\n[IF A=1]\r\n    [USERINPUT \"dialog+Open+Pick a list+/tmp+txt+"
                                                   "cdlOFNFileMustExist\" LIST]\r\n[ENDIF]"));
}

TEST_F(WizardWindowTest, ComDiagRefusesBadFieldsAndCancelPastesNothing)
{
    ui::frmComDiag form({});
    form.cmbDialogType->setCurrentIndex(form.cmbDialogType->findText(QStringLiteral("Folder")));
    EXPECT_FALSE(form.cmbFlags->isEnabled());
    EXPECT_FALSE(form.cmdAddFlag->isEnabled());
    form.chkShortPath->setChecked(true);
    form.txtTitle->setText(QStringLiteral("A+B"));
    form.cmdClose->click();
    EXPECT_EQ(messages(), QStringList{"User Input - Common Dialog Control: The Dialog Title cannot hold a plus sign (+) "
                                      "or a double quote (\")."});
    EXPECT_EQ(form.result(), int(QDialog::Rejected));
    form.txtTitle->setText(QStringLiteral("Where"));
    form.txtVariable->setText(QStringLiteral("A1"));
    form.cmdClose->click();
    EXPECT_EQ(fx.messages.shown.size(), 2);
    EXPECT_EQ(fx.messages.shown.last().title, QStringLiteral("USERINPUT"));
    EXPECT_TRUE(fx.messages.shown.last().text.contains(QStringLiteral("Try again.")));
    EXPECT_EQ(form.result(), int(QDialog::Rejected));
    form.txtVariable->setText(QStringLiteral("DIR"));
    form.cmdClose->click();
    EXPECT_EQ(form.result(), int(QDialog::Accepted));
    EXPECT_EQ(form.Statement, QStringLiteral("[USERINPUT \"dialgs+Folder+Where+++\" DIR]"));

    place(QStringLiteral("abc"), 1, 1);
    run("mnuFunctionsComDiag", {[](QWidget *dialog) {
            auto *cancel = dialog->findChild<QPushButton *>(QStringLiteral("cmdCancel"));
            ASSERT_NE(cancel, nullptr);
            cancel->click();
        }});
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("abc"));
}

} // namespace
