// frmHotkeys on the real logic and the fake platform: its controls and captions, new
// macros typed into its boxes, a hotkey pressed into the key field, Check Code with red
// lines in the code box and the report, the ways in (main window, hotkey list, clipboard
// command, a finished recording) and the way out with unsaved changes.
#include "engine/clipboard_command.h"
#include "engine/reader_statements.h"
#include "engine/run_hooks.h"
#include "engine/run_state.h"
#include "engine/runner_links.h"
#include "fakes/fake_services.h"
#include "hotkeys/editor_commands.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "hotkeys/macro_recording.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "ui/code_box.h"
#include "ui/frm_hotkey_list.h"
#include "ui/frm_hotkeys.h"
#include "ui/frm_sonamark.h"
#include "ui/frm_text.h"
#include "ui/subsystem_calls.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFocusEvent>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTextBlock>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

namespace {

struct HotkeysWindowTest : ::testing::Test {
    void SetUp() override
    {
        delete ui::hotkeyEditor();
        shell::app().reset();
        shell::settings().reset();
        shell::settings().FontSizeOpt = QStringLiteral("12");
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        shell::app().AppFolder = dir.path() + QLatin1Char('/');
        hotkeys::hookState().reset();
        hotkeys::table().reset();
        engine::runState().reset();
        engine::ConnectRunner();
        ASSERT_TRUE(hotkeys::HookKeyboard());
        hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
        shell::SetDelaySleeper([](int) {});
        add(true, QStringLiteral("^%a"), QStringLiteral("Alpha"), QStringLiteral("a"));
        add(true, QStringLiteral("^%b"), QStringLiteral("Beta"), QStringLiteral("b"));
        add(false, QStringLiteral("^%c"), QStringLiteral("Gamma"), QStringLiteral("[IF X=1]"));
        ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
        hotkeys::UpdateHookPlan();
    }
    void TearDown() override
    {
        delete ui::hotkeyEditor();
        engine::SetStatusTextSink(nullptr);
        engine::SetReaderWindows({});
        engine::SetCommandLineUi({});
        ui::SetHotkeyEditorOpener(nullptr);
        shell::SetDelaySleeper(nullptr);
        hotkeys::hookState().reset();
    }
    void add(bool active, const QString &keys, const QString &name, const QString &code)
    {
        hotkeys::HotkeyTable &t = hotkeys::table();
        t.Hotkeys[size_t(t.HotkeyCount++)] = hotkeys::Hotkey{active, keys, name, code};
    }
    ui::frmHotkeys *open(int current)
    {
        hotkeys::table().CurrentHotkeyIndex = current;
        ui::ShowHotkeyEditor();
        return ui::hotkeyEditor();
    }
    void answer(std::initializer_list<int> answers)
    {
        for (int a : answers)
            fx.messages.answers.push_back(a);
    }
    // Types text into a widget as key presses, the way a user does.
    static void type(QWidget *into, const QString &text)
    {
        for (const QChar c : text) {
            const int key = c == QLatin1Char('\n') ? int(Qt::Key_Return) : 0;
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(into, &press);
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(into, &release);
        }
    }
    static void press(QWidget *into, int key, Qt::KeyboardModifiers mods, const QString &text = QString())
    {
        QKeyEvent event(QEvent::KeyPress, key, mods, text);
        QCoreApplication::sendEvent(into, &event);
    }
    QByteArray fileBytes() const
    {
        QFile f(hotkeys::table().HotkeysFileName);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QStringList messages() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text.trimmed();
        return out;
    }
    QAction *entry(QMenu *menu, const QString &caption)
    {
        for (QAction *action : menu->actions())
            if (action->text() == caption)
                return action;
        return nullptr;
    }

    QTemporaryDir dir;
    fakes::FakeServices fx;
};

} // namespace

TEST_F(HotkeysWindowTest, ShowsTheMacroInItsControls)
{
    ui::frmHotkeys *w = open(1);
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->windowTitle().startsWith(QStringLiteral("Hotkeys - 3 hotkeys defined. ")));
    EXPECT_EQ(w->txtNewItem->count(), 3);
    EXPECT_EQ(w->txtDescr->count(), 3);
    EXPECT_EQ(w->txtNewItem->currentText(), QStringLiteral("^%b"));
    EXPECT_EQ(w->txtDescr->currentText(), QStringLiteral("Beta"));
    EXPECT_EQ(w->lbHotkey->text(), QStringLiteral("Hotkey 2"));
    EXPECT_EQ(w->txtAction->toPlainText(), QStringLiteral("b"));
    EXPECT_TRUE(w->chkHotkeyEnable->isChecked());
    EXPECT_EQ(w->cmdRun->text(), QStringLiteral("&Run"));
    EXPECT_EQ(w->cmdRun->toolTip(), QStringLiteral("Run the current macro"));
    EXPECT_TRUE(QFontInfo(w->txtAction->font()).fixedPitch());
    EXPECT_GT(w->txtAction->numberAreaWidth(), 0);
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Hotkey 2 has no errors."));
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    // The statement wizards are there, enabled, under the help switch.
    ASSERT_NE(w->mnuFunctions, nullptr);
    EXPECT_EQ(w->mnuFunctions->actions().first(), w->mnuFunctionsHelp);
    EXPECT_TRUE(w->mnuFunctionsHelp->isCheckable());
    EXPECT_FALSE(w->mnuFunctionsHelp->isChecked());
    int wizards = 0;
    for (QAction *group : w->mnuFunctions->actions())
        if (group->menu())
            for (QAction *wizard : group->menu()->actions()) {
                ++wizards;
                EXPECT_TRUE(wizard->isEnabled());
            }
    EXPECT_GT(wizards, 40);
    // Moving with the list: the other list follows.
    w->txtDescr->setCurrentIndex(2);
    emit w->txtDescr->activated(2);
    EXPECT_EQ(w->txtNewItem->currentText(), QStringLiteral("^%c"));
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Viewing hotkey 3"));
    EXPECT_FALSE(w->chkHotkeyEnable->isChecked());
    w->cmdForward->click();  // already the last
    EXPECT_EQ(w->lbHotkey->text(), QStringLiteral("Hotkey 3"));
}

TEST_F(HotkeysWindowTest, ANewMacroIsTypedAndSaved)
{
    ui::frmHotkeys *w = open(0);
    answer({shell::MsgNo});
    w->cmdNew->click();
    EXPECT_FALSE(w->tNewItem->isHidden());
    EXPECT_TRUE(w->txtNewItem->isHidden());
    EXPECT_FALSE(w->cmdBack->isEnabled());
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Create new hotkey."));
    // Ctrl+Alt+D pressed into the key field becomes its notation.
    press(w->tNewItem, Qt::Key_D, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(w->tNewItem->text(), QStringLiteral("^%d"));
    type(w->tActDescr, QStringLiteral("Delta"));
    type(w->txtAction, QStringLiteral("Hello\n[ENDIF]"));
    // The code has an error: view it instead (Yes) opens the report, nothing is stored.
    answer({shell::MsgYes});
    w->cmdAdd->click();
    EXPECT_EQ(hotkeys::table().HotkeyCount, 3);
    ASSERT_NE(w->reportWindow(), nullptr);
    EXPECT_EQ(w->reportWindow()->windowTitle(), QStringLiteral("ERROR REPORT"));
    EXPECT_EQ(w->txtAction->errorLines(), QList<int>{2});
    // Fixed, then saved.
    w->txtAction->selectAll();
    type(w->txtAction, QStringLiteral("Hello"));
    w->cmdAdd->click();
    EXPECT_EQ(hotkeys::table().HotkeyCount, 4);
    EXPECT_EQ(hotkeys::table().at(4).Keys, QStringLiteral("^%d"));
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Hotkey 4 has been added."));
    EXPECT_TRUE(fileBytes().contains("#TRUE#,\"^%d\",\"Delta\",\"Hello\""));
    EXPECT_TRUE(w->tNewItem->isHidden());
    EXPECT_EQ(w->txtNewItem->count(), 4);
    EXPECT_EQ(w->txtNewItem->currentText(), QStringLiteral("^%d"));
    EXPECT_TRUE(w->windowTitle().startsWith(QStringLiteral("Hotkeys - 4 hotkeys defined. ")));
}

TEST_F(HotkeysWindowTest, TheKeyFieldTakesHotkeysAsTextAndKeepsItsEditingKeys)
{
    ui::frmHotkeys *w = open(0);
    QLineEdit *field = w->txtNewItem->lineEdit();
    QFocusEvent in(QEvent::FocusIn);
    QCoreApplication::sendEvent(field, &in);
    EXPECT_TRUE(hotkeys::hookState().HotkeysPaused);
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    press(field, Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(field->text(), QStringLiteral("+{F5}"));
    press(field, Qt::Key_Home, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(field->text(), QStringLiteral("^%{HOME}"));
    // Ctrl+A stays select-all, and plain letters are typed.
    press(field, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(field->selectedText(), QStringLiteral("^%{HOME}"));
    type(field, QStringLiteral("^x"));
    EXPECT_EQ(field->text(), QStringLiteral("^x"));
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(field, &out);
    EXPECT_FALSE(hotkeys::hookState().HotkeysPaused);
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 2);
}

TEST_F(HotkeysWindowTest, CheckCodePaintsTheErrorLinesRedInTheBoxAndTheReport)
{
    ui::frmHotkeys *w = open(0);
    w->txtAction->setPlainText(QStringLiteral("a\n[LOOP X=1,2]\nb"));
    w->mnuFormatCheckCode->trigger();
    EXPECT_EQ(w->txtAction->errorLines(), QList<int>{2});
    const QList<QTextEdit::ExtraSelection> marks = w->txtAction->extraSelections();
    ASSERT_EQ(marks.size(), 1);
    EXPECT_EQ(marks[0].cursor.selectedText(), QStringLiteral("[LOOP X=1,2]"));
    EXPECT_EQ(marks[0].format.foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Hotkey 1 has 1 line with an error."));
    ASSERT_NE(w->reportWindow(), nullptr);
    const QList<QTextEdit::ExtraSelection> reportMarks = w->reportWindow()->txtText->extraSelections();
    ASSERT_EQ(reportMarks.size(), 1);
    EXPECT_EQ(reportMarks[0].cursor.selectedText(), QStringLiteral("2:[LOOP X=1,2]"));
    // Undo takes the code back as typed; the box is an editor, not a view.
    w->txtAction->setCode(QStringLiteral("replaced"));
    w->txtAction->undo();
    EXPECT_EQ(w->txtAction->toPlainText(), QStringLiteral("a\n[LOOP X=1,2]\nb"));
}

TEST_F(HotkeysWindowTest, AStatementFromTheInsertMenuTakesTheBlocksIndent)
{
    ui::frmHotkeys *w = open(0);
    w->txtAction->setPlainText(QStringLiteral("Hello\n[IF X=1]"));
    w->txtAction->moveCursor(QTextCursor::End);
    w->mnuInsertComment->trigger();
    EXPECT_EQ(w->txtAction->toPlainText(), QStringLiteral("Hello\n[IF X=1]\n    # "));
    QMenu *keys = nullptr;
    for (QAction *a : w->mnuInsert->actions())
        if (a->menu() && a->text() == QStringLiteral("&Keys"))
            keys = a->menu();
    ASSERT_NE(keys, nullptr);
    entry(keys, QStringLiteral("{ENTER}"))->trigger();
    EXPECT_EQ(w->txtAction->toPlainText(), QStringLiteral("Hello\n[IF X=1]\n    # {ENTER}"));
}

TEST_F(HotkeysWindowTest, ClosingWithAChangeAsksAndCancelKeepsTheWindow)
{
    ui::frmHotkeys *w = open(0);
    type(w->txtAction, QStringLiteral("more"));
    EXPECT_TRUE(hotkeys::table().HotkeysDirty);
    answer({shell::MsgCancel});
    EXPECT_FALSE(w->close());
    EXPECT_EQ(messages(), QStringList{"Save \"^%a\": Save changes to hotkey first?"});
    ASSERT_EQ(ui::hotkeyEditor(), w);
    answer({shell::MsgYes});
    EXPECT_TRUE(w->close());
    EXPECT_TRUE(fileBytes().contains("\"Alpha\",\"morea\""));
}

TEST_F(HotkeysWindowTest, QuittingTheProgramAsksTheEditorFirstAndItsCancelKeepsBoth)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::frmHotkeys *w = open(0);
    type(w->txtAction, QStringLiteral("more"));
    answer({shell::MsgCancel});
    EXPECT_FALSE(window.close());
    EXPECT_EQ(messages(), QStringList{"Save \"^%a\": Save changes to hotkey first?"});
    EXPECT_EQ(ui::hotkeyEditor(), w);
    EXPECT_FALSE(fileBytes().contains("morea"));
    answer({shell::MsgYes});
    window.close();
    EXPECT_TRUE(fileBytes().contains("\"Alpha\",\"morea\""));
}

TEST_F(HotkeysWindowTest, TheMainWindowTheListAndTheClipboardCommandOpenIt)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::ConnectMacroRunner(&window);
    QAction *edit = entry(window.mnuHotkeys, QStringLiteral("Edit Hotkeys"));
    ASSERT_NE(edit, nullptr);
    EXPECT_TRUE(edit->isEnabled());
    edit->trigger();
    ASSERT_NE(ui::hotkeyEditor(), nullptr);
    delete ui::hotkeyEditor();

    // "Edit this macro instead?" answered Yes for a macro with errors: the editor opens
    // on it (Gamma, enabled first).
    answer({shell::MsgYes, shell::MsgYes});
    engine::RunCommandLineMacro(QStringLiteral("Gamma"));
    ASSERT_NE(ui::hotkeyEditor(), nullptr);
    EXPECT_EQ(ui::hotkeyEditor()->txtDescr->currentText(), QStringLiteral("Gamma"));
    EXPECT_FALSE(window.isVisible());

    // The list's Edit on macro 2, while the editor is open on 3: it opens on 2.
    hotkeys::table().CurrentHotkeyIndex = 1;
    ui::EditMacro(hotkeys::table().CurrentHotkeyIndex);
    ASSERT_NE(ui::hotkeyEditor(), nullptr);
    EXPECT_EQ(ui::hotkeyEditor()->txtDescr->currentText(), QStringLiteral("Beta"));
}

TEST_F(HotkeysWindowTest, AFinishedRecordingOpensTheEditorOnANewMacro)
{
    ui::frmSonamark window(&fx.tray);
    window.Form_Load();
    ui::ConnectMacroRunner(&window);
    hotkeys::HookState &h = hotkeys::hookState();
    h.MacroRecording = true;
    h.RecordMouse = false;
    window.txtSpeech->setPlainText(QStringLiteral("hi^%k"));
    hotkeys::FinishRecording();
    ui::frmHotkeys *w = ui::hotkeyEditor();
    ASSERT_NE(w, nullptr);
    EXPECT_FALSE(w->tNewItem->isHidden());
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("hi^%k"));
    EXPECT_EQ(w->lbHotkey->text(), QStringLiteral("Hotkey 4"));
    EXPECT_EQ(hotkeys::table().HotkeyCount, 3);
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeysWindowTest, AMegabyteMacroIsKeptWhole)
{
    ui::frmHotkeys *w = open(0);
    QString big;
    for (int i = 0; big.size() < 1'000'000; ++i)
        big += QStringLiteral("[IF X=%1]\nline %1 {ENTER}\n[ENDIF]\n").arg(i);
    w->txtAction->insertPlainText(big);  // as a paste does
    w->mnuFormatCheckCode->trigger();
    w->cmdAdd->click();
    EXPECT_EQ(hotkeys::table().at(1).Code.size(), w->txtAction->code().size());
    hotkeys::table().reset();
    hotkeys::table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
    ASSERT_EQ(hotkeys::GetHotKeys(), QString());
    EXPECT_EQ(hotkeys::table().at(1).Code, w->txtAction->code());
}

TEST_F(HotkeysWindowTest, PrintHotkeyPrintsTheShownMacroIntoThePrintersFile)
{
    ui::frmHotkeys *w = open(1);
    const QString pdf = dir.filePath(QStringLiteral("out.pdf"));
    w->choosePrinter = [pdf](QPrinter &printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    w->mnuFilePrintHotkey->trigger();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    QFile file(pdf);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.read(5) == "%PDF-");
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Printed to ") + pdf);
}

TEST_F(HotkeysWindowTest, PrintAllCancelledAtThePrinterPrintsNothing)
{
    ui::frmHotkeys *w = open(0);
    int asked = 0;
    w->choosePrinter = [&asked](QPrinter &) { return ++asked, false; };
    const QString before = w->sbStatusPanel->text();
    w->mnuFilePrintAll->trigger();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(w->sbStatusPanel->text(), before);
    EXPECT_TRUE(entry(w->mnuFile, QStringLiteral("Print A&ll Hotkeys...")) == w->mnuFilePrintAll);
}

TEST_F(HotkeysWindowTest, DesktopIconGoesIntoTheUsersDesktopFolder)
{
    const QByteArray home = qgetenv("HOME"), config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", dir.filePath(QStringLiteral("home")).toUtf8());
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("home/.config")).toUtf8());
    ui::frmHotkeys *w = open(1);
    w->mnuFileIcon->trigger();
    const QString launcher =
        dir.filePath(QStringLiteral("home/Desktop/")) + hotkeys::MacroLauncherFileName(w->txtDescr->currentText());
    const bool made = QFileInfo::exists(launcher);
    qputenv("HOME", home);
    if (config.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", config);
    EXPECT_TRUE(made) << w->sbStatusPanel->text().toStdString();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
}

TEST_F(HotkeysWindowTest, HelpMenuOpensTheEditorsHelpPage)
{
    ui::frmHotkeys *w = open(0);
    shell::app().HelpFirstRun = true;
    w->mnuHelpEditor->trigger();
    EXPECT_EQ(shell::app().HelpPage, 11);
    EXPECT_FALSE(shell::app().HelpFirstRun);
    // The test has no help viewer beside it: the missing viewer is reported, not ignored.
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages().first().contains(QStringLiteral("No help available."))) << messages().first().toStdString();
    w->mnuHelpMacros->trigger();
    EXPECT_EQ(shell::app().HelpPage, 10);
}

TEST_F(HotkeysWindowTest, HotkeyListApplyRefreshesTheEditorsEnabledBox)
{
    ui::frmHotkeys *w = open(2);
    ASSERT_FALSE(w->chkHotkeyEnable->isChecked());
    ui::frmHotkeyList list;
    QListWidget *rows = list.List1;
    ASSERT_EQ(rows->count(), 3);
    rows->item(2)->setCheckState(Qt::Checked);
    list.cmdSave->click();
    EXPECT_TRUE(hotkeys::table().at(3).Active);
    EXPECT_TRUE(w->chkHotkeyEnable->isChecked());
}

TEST_F(HotkeysWindowTest, InsertHotkeyPutsThePressedKeyIntoTheCodeBox)
{
    ui::frmHotkeys *w = open(0);
    w->txtAction->setCode(QStringLiteral("x"));
    w->txtAction->moveCursor(QTextCursor::End);
    w->mnuInsertHotkey->trigger();
    ASSERT_TRUE(hotkeys::hookState().HotkeyCapture);
    EXPECT_TRUE(fx.inputHooks.keyPlan.everyKey);
    fx.inputHooks.press('K', true, true);  // the hook takes it
    QElapsedTimer clock;
    clock.start();
    while (hotkeys::hookState().HotkeyCapture && clock.elapsed() < 2000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_FALSE(hotkeys::hookState().HotkeyCapture);
    EXPECT_EQ(w->txtAction->code(), QStringLiteral("x^%k"));
    EXPECT_EQ(w->sbStatusPanel->text(), QStringLiteral("Inserted hotkey ^%k"));
}

TEST_F(HotkeysWindowTest, ClosingTheEditorEndsAnInsertHotkeyCapture)
{
    ui::frmHotkeys *w = open(0);
    w->mnuInsertHotkey->trigger();
    ASSERT_TRUE(hotkeys::hookState().HotkeyCapture);
    ASSERT_TRUE(w->close());
    EXPECT_FALSE(hotkeys::hookState().HotkeyCapture);
    EXPECT_FALSE(fx.inputHooks.keyPlan.everyKey);
}
