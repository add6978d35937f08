// The Hotkeys editor's decisions on a view of plain fields: saving with each of its
// rules and questions, moving, removing, new and recorded macros, running, Check Code and
// Format Code, the file changed by another program, a read-only file and the table's limit.
#include "fakes/fake_services.h"
#include "hotkeys/editor.h"
#include "hotkeys/editor_commands.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/input_hooks.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using hotkeys::Hotkey;
using hotkeys::table;

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList &list, std::ostream *os) { *os << list.join(QLatin1Char('|')).toStdString(); }

namespace {

class FieldEditorView : public hotkeys::HotkeyEditorView {
public:
    QStringList keyList, nameList;
    int row = -1;
    QString keys, name, codeText, status, caption, label, runText = QStringLiteral("&Run"), runTip;
    bool newShown = false, enabled = false, navigation = true, hidden = false;
    QList<int> red;
    QStringList history;
    QString report;
    QList<int> reportRed;
    bool answerRun = true;
    double answerWait = 0;
    int popups = 0;
    int quitAtPopup = 0;  // the popup of this number (1-based) is answered Quit; 0 never
    QStringList events;
    QString folderReply, textReply, openReply, saveReply;

    void setLists(const QStringList &k, const QStringList &d) override { keyList = k, nameList = d; }
    void setListIndex(int r) override
    {
        row = r;
        keys = r < 0 ? QString() : keyList.value(r);
        name = r < 0 ? QString() : nameList.value(r);
    }
    int listIndex() const override { return row; }
    QString keysText() const override { return keys; }
    void setKeysText(const QString &t) override { keys = t; }
    QString descriptionText() const override { return name; }
    void showNewEntry(bool shown) override
    {
        newShown = shown;
        keys.clear(), name.clear();
    }
    QString code() const override { return codeText; }
    void setCode(const QString &c) override { codeText = c; }
    void colourErrorLines(const QList<int> &lines) override { red = lines; }
    bool enableChecked() const override { return enabled; }
    void setEnableChecked(bool c) override { enabled = c; }
    void setNumberLabel(const QString &t) override { label = t; }
    void setNavigationEnabled(bool e) override { navigation = e; }
    void setStatus(const QString &t) override { status = t; }
    void setCaption(const QString &c) override { caption = c; }
    void setHistory(const QStringList &paths) override { history = paths; }
    QString runCaption() const override { return runText; }
    void setRunCaption(const QString &c, const QString &tip) override { runText = c, runTip = tip; }
    bool askRunOptions(double &wait, bool &hide) override
    {
        events << QStringLiteral("popup");
        wait = answerWait;
        hide = false;
        return answerRun && ++popups != quitAtPopup;
    }
    void prepareRun(bool) override { events << QStringLiteral("prepare"); }
    void finishRun() override { events << QStringLiteral("finish"); }
    void showReport(const QString &text, const QList<int> &lines) override { report = text, reportRed = lines; }
    bool askFolder(const QString &, QString &f) override { return !(f = folderReply).isEmpty(); }
    bool askText(const QString &, const QString &, const QString &initial, QString &r) override
    {
        r = textReply.isEmpty() ? initial : textReply;
        return true;
    }
    bool askOpenFile(const QString &, const QString &, QString &p) override { return !(p = openReply).isEmpty(); }
    bool askSaveFile(const QString &, const QString &, QString &p) override { return !(p = saveReply).isEmpty(); }
    void setRecordingHidden(bool h) override { hidden = h; }

    // The user's typing: the fields change and the editor hears of it.
    void type(hotkeys::HotkeyEditor &editor, const QString &k, const QString &n, const QString &c)
    {
        keys = k, name = n, codeText = c;
        editor.fieldsEdited();
    }
};

class EditorTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        table().reset();
        shell::app().reset();
        shell::settings().reset();
        hotkeys::hookState().reset();
        shell::app().AppFolder = dir.path() + QLatin1Char('/');
        shell::settings().HotkeysEnabledOpt = QStringLiteral("1");
        ASSERT_TRUE(hotkeys::HookKeyboard());
        table().HotkeysFileName = dir.filePath(QStringLiteral("Hotkeys.txt"));
        shell::SetDelaySleeper([](int) {});
        links.running = [this] { return running; };
        links.stop = [this] { ++stops; };
        links.run = [this](int number) {
            ran << number;
            captionWhileRunning = view.runText;
            return runResult;
        };
        links.startRecording = [this] { return recordingStarts; };
    }
    void TearDown() override
    {
        shell::SetDelaySleeper(nullptr);
        hotkeys::hookState().reset();
    }
    void add(bool active, const QString &keys, const QString &name, const QString &code)
    {
        table().Hotkeys[size_t(table().HotkeyCount++)] = Hotkey{active, keys, name, code};
    }
    // The three macros of most tests, written to the file, and the editor opened on one.
    hotkeys::HotkeyEditor &open(int current = 0)
    {
        add(true, QStringLiteral("^%a"), QStringLiteral("Alpha"), QStringLiteral("a"));
        add(true, QStringLiteral("^%b"), QStringLiteral("Beta"), QStringLiteral("b"));
        add(false, QStringLiteral("^%c"), QStringLiteral("Gamma"), QStringLiteral("c"));
        EXPECT_TRUE(hotkeys::UpdateHotkeyWordsFile());
        table().CurrentHotkeyIndex = current;
        return load();
    }
    hotkeys::HotkeyEditor &load()
    {
        editor = std::make_unique<hotkeys::HotkeyEditor>(view, links);
        editor->Form_Load();
        return *editor;
    }
    QByteArray fileBytes() const
    {
        QFile f(table().HotkeysFileName);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void answer(std::initializer_list<int> answers)
    {
        for (int a : answers)
            fx.messages.answers.push_back(a);
    }
    // "title: text" of every message, without the line break the window adds.
    QStringList messages() const
    {
        QStringList out;
        for (const platform::MessageSpec &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text.trimmed();
        return out;
    }

    QTemporaryDir dir;
    fakes::FakeServices fx;
    FieldEditorView view;
    hotkeys::HotkeyEditorLinks links;
    std::unique_ptr<hotkeys::HotkeyEditor> editor;
    bool running = false;
    bool recordingStarts = true;
    int stops = 0;
    QList<int> ran;
    QString runResult;
    QString captionWhileRunning;
};

} // namespace

TEST_F(EditorTest, OpensOnTheCurrentMacroWithBothListsInStep)
{
    open(1);
    EXPECT_EQ(view.keyList, (QStringList{"^%a", "^%b", "^%c"}));
    EXPECT_EQ(view.nameList, (QStringList{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(view.row, 1);
    EXPECT_EQ(view.keys, QStringLiteral("^%b"));
    EXPECT_EQ(view.name, QStringLiteral("Beta"));
    EXPECT_EQ(view.codeText, QStringLiteral("b"));
    EXPECT_TRUE(view.enabled);
    EXPECT_EQ(view.label, QStringLiteral("Hotkey 2"));
    EXPECT_TRUE(view.caption.startsWith(QStringLiteral("Hotkeys - 3 hotkeys defined. ")));
    EXPECT_EQ(view.history, QStringList{table().HotkeysFileName});
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    EXPECT_TRUE(editor->Form_Unload());
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
    QFile his(dir.filePath(QStringLiteral("Hotkeys.his")));
    ASSERT_TRUE(his.open(QIODevice::ReadOnly));
    EXPECT_EQ(his.readAll(), table().HotkeysFileName.toUtf8() + "\r\n");
}

TEST_F(EditorTest, AnEmptyTableShowsNothingAndNoFileSaysSo)
{
    table().HotkeysFileName.clear();
    load();
    EXPECT_EQ(table().CurrentHotkeyIndex, -1);
    EXPECT_EQ(view.codeText, QString());
    EXPECT_EQ(view.caption, QStringLiteral("Hotkeys - 0 hotkeys defined. No hotkeys file has been defined."));
}

TEST_F(EditorTest, EditingTheCodeSavesItAndSavingTwiceHasNothingToSave)
{
    open(0);
    view.type(*editor, view.keys, view.name, QStringLiteral("a\r\n{ENTER}"));
    editor->cmdAdd_Click();
    EXPECT_TRUE(messages().isEmpty()) << messages().join('|').toStdString();
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 1 has been updated."));
    EXPECT_EQ(table().at(1).Code, QStringLiteral("a\r\n{ENTER}"));
    EXPECT_TRUE(fileBytes().contains("\"Alpha\",\"a\r\n{ENTER}\""));
    EXPECT_FALSE(table().HotkeysDirty);

    editor->cmdAdd_Click();
    EXPECT_EQ(messages(), QStringList{"No Changes: No changes to save."});
    EXPECT_EQ(view.status, QStringLiteral("There were no errors found in the code."));
}

TEST_F(EditorTest, AddingANewMacroAppendsItAndWritesTheFile)
{
    open(2);
    answer({shell::MsgNo});  // blank, not recorded
    editor->cmdNew_Click();
    EXPECT_TRUE(view.newShown);
    EXPECT_FALSE(view.navigation);
    EXPECT_EQ(view.status, QStringLiteral("Create new hotkey."));
    EXPECT_EQ(view.label, QStringLiteral("Hotkey 4"));
    view.type(*editor, QStringLiteral("+^D"), QStringLiteral("Delta"), QStringLiteral("hello"));
    editor->cmdAdd_Click();
    EXPECT_EQ(table().HotkeyCount, 4);
    EXPECT_EQ(table().at(4).Keys, QStringLiteral("^+D"));  // GoodHotkey's order
    EXPECT_EQ(table().at(4).Description, QStringLiteral("Delta"));
    EXPECT_TRUE(table().at(4).Active);
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 4 has been added."));
    EXPECT_FALSE(view.newShown);
    EXPECT_TRUE(view.navigation);
    EXPECT_EQ(view.keyList.size(), 4);
    EXPECT_EQ(view.row, 3);
    EXPECT_TRUE(view.caption.startsWith(QStringLiteral("Hotkeys - 4 hotkeys defined. ")));
    EXPECT_TRUE(fileBytes().contains("#TRUE#,\"^+D\",\"Delta\",\"hello\""));
    // The new hotkey is grabbed at once.
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 3);
}

TEST_F(EditorTest, TheFieldsMustBeFilledAndTheKeyGood)
{
    open(0);
    answer({shell::MsgNo});
    editor->cmdNew_Click();
    fx.messages.shown.clear();
    view.type(*editor, QString(), QStringLiteral("X"), QStringLiteral("x"));
    editor->cmdAdd_Click();
    view.type(*editor, QStringLiteral("^%x"), QString(), QStringLiteral("x"));
    editor->cmdAdd_Click();
    view.type(*editor, QStringLiteral("^%x"), QStringLiteral("X"), QStringLiteral("\r\n  \r\n"));
    editor->cmdAdd_Click();
    view.type(*editor, QStringLiteral("^c"), QStringLiteral("X"), QStringLiteral("x"));
    editor->cmdAdd_Click();
    EXPECT_EQ(messages(), (QStringList{"Hotkey Missing: You must define your hotkey.",
                                       "Description Missing: You must have a description for your macro.",
                                       "No Actions: There are no actions for your hotkey to perform.",
                                       "Hotkeys: You cannot redefine the clipboard hotkeys.",
                                       "Save Hotkey: Your hotkey is invalid."}));
    EXPECT_EQ(table().HotkeyCount, 3);
    EXPECT_FALSE(editor->savedFlag());
}

TEST_F(EditorTest, ACopyOfAnotherMacroIsRefused)
{
    open(0);
    answer({shell::MsgNo});
    editor->cmdNew_Click();
    fx.messages.shown.clear();
    view.type(*editor, QStringLiteral("^%b"), QStringLiteral("Beta"), QStringLiteral("b"));
    view.enabled = true;
    editor->cmdAdd_Click();
    EXPECT_EQ(messages(), QStringList{"Save Hotkey: This macro is a duplicate of macro \"Beta\". It must be modified to "
                                      "be saved."});
    EXPECT_EQ(table().HotkeyCount, 3);
}

TEST_F(EditorTest, TwoMacrosWithOneKeyAskFirst)
{
    open(0);
    answer({shell::MsgNo, shell::MsgNo});  // blank; then No to the duplicate key
    editor->cmdNew_Click();
    view.type(*editor, QStringLiteral("^%B"), QStringLiteral("Beta two"), QStringLiteral("b2"));
    editor->cmdAdd_Click();
    ASSERT_EQ(fx.messages.shown.size(), 2);
    EXPECT_EQ(messages()[1], QStringLiteral("Duplicate Hotkey: This will create a duplicate hotkey for macro \"Beta\". "
                                            "Only the 1st enabled hotkey will be available. Continue?"));
    EXPECT_EQ(table().HotkeyCount, 3);

    answer({shell::MsgYes});
    editor->cmdAdd_Click();
    EXPECT_EQ(table().HotkeyCount, 4);
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 4 has been added."));

    // A disabled macro with the key is no conflict: Gamma's key asks nothing.
    fx.messages.shown.clear();
    answer({shell::MsgNo});
    editor->cmdNew_Click();
    view.type(*editor, QStringLiteral("^%c"), QStringLiteral("Gamma two"), QStringLiteral("c2"));
    editor->cmdAdd_Click();
    EXPECT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(table().HotkeyCount, 5);
}

TEST_F(EditorTest, RenamingAsksAndChangingTheKeyAsksToo)
{
    open(1);
    view.type(*editor, view.keys, QStringLiteral("Beta renamed"), view.codeText);
    answer({shell::MsgNo});
    editor->cmdAdd_Click();
    EXPECT_EQ(messages().last(),
              QStringLiteral("Change Hotkey: Are you sure you want to change the hotkey description for macro \"Beta\"?"));
    EXPECT_EQ(table().at(2).Description, QStringLiteral("Beta"));
    answer({shell::MsgYes});
    editor->cmdAdd_Click();
    EXPECT_EQ(table().at(2).Description, QStringLiteral("Beta renamed"));
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 2 has been modified."));
    EXPECT_EQ(view.nameList[1], QStringLiteral("Beta renamed"));

    fx.messages.shown.clear();
    view.type(*editor, QStringLiteral("^%z"), view.name, view.codeText);
    answer({shell::MsgYes});
    editor->cmdAdd_Click();
    EXPECT_EQ(messages(), QStringList{"Change Hotkey: Are you sure you want to change the hotkey for macro \"Beta "
                                      "renamed\"?"});
    EXPECT_EQ(table().at(2).Keys, QStringLiteral("^%z"));
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 2 has been saved."));
    EXPECT_TRUE(fileBytes().contains("#TRUE#,\"^%z\",\"Beta renamed\",\"b\""));
}

TEST_F(EditorTest, MovingPastEitherEndStaysAndMovingAwayFromAChangeAsksOnce)
{
    open(0);
    editor->cmdBack_Click();
    EXPECT_EQ(table().CurrentHotkeyIndex, 0);
    editor->cmdForward_Click();
    editor->cmdForward_Click();
    EXPECT_EQ(table().CurrentHotkeyIndex, 2);
    EXPECT_EQ(view.status, QStringLiteral("Viewing hotkey 3"));
    editor->cmdForward_Click();
    EXPECT_EQ(table().CurrentHotkeyIndex, 2);
    EXPECT_EQ(view.codeText, QStringLiteral("c"));
    EXPECT_TRUE(fx.messages.shown.isEmpty());

    // Cancel stays, with the change.
    view.type(*editor, view.keys, view.name, QStringLiteral("c changed"));
    answer({shell::MsgCancel});
    editor->cmdBack_Click();
    EXPECT_EQ(table().CurrentHotkeyIndex, 2);
    EXPECT_EQ(view.codeText, QStringLiteral("c changed"));
    EXPECT_EQ(messages(), QStringList{"Save \"^%c\": Save changes to the current hotkey first?"});
    // No leaves the change behind.
    answer({shell::MsgNo});
    editor->Move2Hotkey(0);
    EXPECT_EQ(table().CurrentHotkeyIndex, 0);
    EXPECT_EQ(view.codeText, QStringLiteral("a"));
    EXPECT_EQ(table().at(3).Code, QStringLiteral("c"));
    // Yes saves it, then moves.
    view.type(*editor, view.keys, view.name, QStringLiteral("a changed"));
    answer({shell::MsgYes});
    editor->cmdForward_Click();
    EXPECT_EQ(table().at(1).Code, QStringLiteral("a changed"));
    EXPECT_EQ(table().CurrentHotkeyIndex, 1);
    EXPECT_EQ(fx.messages.shown.size(), 3);
}

TEST_F(EditorTest, ANotSavedChangeAsksWhetherToGoOn)
{
    open(0);
    view.type(*editor, QString(), view.name, view.codeText);  // the key erased
    answer({shell::MsgYes, shell::MsgOk, shell::MsgNo});
    EXPECT_FALSE(editor->SaveHKChanges());
    EXPECT_EQ(messages().last(), QStringLiteral("Save \"\": The hotkey was not saved. Continue?"));
}

TEST_F(EditorTest, RemovingTheLastMacroLeavesAFileWithItsHeader)
{
    add(true, QStringLiteral("^%a"), QStringLiteral("Alpha"), QStringLiteral("a"));
    add(true, QStringLiteral("^%b"), QStringLiteral("Beta"), QStringLiteral("b"));
    ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
    table().CurrentHotkeyIndex = 1;
    load();
    answer({shell::MsgNo});
    editor->cmdRemove_Click();
    EXPECT_EQ(table().HotkeyCount, 2);
    EXPECT_EQ(messages(), QStringList{"Delete \"^%b\": Are you sure you want to delete this hotkey?"});
    answer({shell::MsgYes});
    editor->cmdRemove_Click();
    EXPECT_EQ(table().HotkeyCount, 1);
    EXPECT_EQ(table().CurrentHotkeyIndex, 0);
    EXPECT_EQ(view.codeText, QStringLiteral("a"));
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 2 has been removed."));
    answer({shell::MsgYes});
    editor->cmdRemove_Click();
    EXPECT_EQ(table().HotkeyCount, 0);
    EXPECT_EQ(fileBytes(), QByteArray("\"<Hotkeys Macros v1.2>\"\r\n"));
    EXPECT_EQ(view.codeText, QString());
    editor->cmdRemove_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Delete Hotkey: No hotkeys to remove."));
}

TEST_F(EditorTest, ANewMacroRunsOnlyOnceSaved)
{
    open(0);
    answer({shell::MsgNo});
    editor->cmdNew_Click();
    editor->cmdRun_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Run Macro: There are no actions to run."));
    view.type(*editor, QString(), QString(), QStringLiteral("typed"));
    // Save? No; then Quit? Yes.
    answer({shell::MsgNo, shell::MsgYes});
    editor->cmdRun_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Run Macro: This macro must be saved before running. Quit?"));
    EXPECT_TRUE(ran.isEmpty());
    // Save? Yes, with its fields filled: it is added and runs as macro 4.
    view.keys = QStringLiteral("^%n"), view.name = QStringLiteral("New one");
    answer({shell::MsgYes});
    editor->cmdRun_Click();
    EXPECT_EQ(table().HotkeyCount, 4);
    EXPECT_EQ(ran, QList<int>{4});
    EXPECT_EQ(captionWhileRunning, QStringLiteral("&Stop"));
    EXPECT_EQ(view.runText, QStringLiteral("&Run"));
    EXPECT_EQ(view.runTip, hotkeys::kEditorRunTip);
    EXPECT_EQ(view.events, (QStringList{"popup", "prepare", "finish"}));
}

TEST_F(EditorTest, RunningADisabledMacroOrOneWithErrorsAsks)
{
    open(2);  // Gamma is disabled
    answer({shell::MsgCancel});
    editor->cmdRun_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Run Macro: This macro is disabled. Enable it?"));
    EXPECT_TRUE(ran.isEmpty());
    answer({shell::MsgYes});
    editor->cmdRun_Click();
    EXPECT_TRUE(table().at(3).Active);
    EXPECT_TRUE(fileBytes().contains("#TRUE#,\"^%c\""));
    EXPECT_EQ(ran, QList<int>{3});

    view.type(*editor, view.keys, view.name, QStringLiteral("[IF X=1]"));
    // Save: yes, keeping the errors; then, before the run, view them.
    answer({shell::MsgYes, shell::MsgNo, shell::MsgYes});
    editor->cmdRun_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Save \"Gamma\": There were errors found in the code. View the errors "
                                                "instead?"));
    EXPECT_EQ(ran, QList<int>{3});
    EXPECT_TRUE(view.report.contains(QStringLiteral("Error Check for \"^%c\"")));
    EXPECT_EQ(view.red, QList<int>{1});

    runResult = QStringLiteral("User abort");
    answer({shell::MsgNo});  // run anyway
    editor->cmdRun_Click();
    EXPECT_EQ(ran, (QList<int>{3, 3}));
    EXPECT_EQ(messages().last(), QStringLiteral("Error Status: User abort"));
}

TEST_F(EditorTest, StopSetsTheAbortLatchAndAWaitAboveAnHourIsRefused)
{
    open(0);
    view.runText = QStringLiteral("&Stop");
    running = true;
    editor->cmdRun_Click();
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(view.runText, QStringLiteral("&Run"));
    editor->cmdRun_Click();
    EXPECT_EQ(messages().last(), QStringLiteral("Run Macro: A macro is already running"));
    running = false;

    view.answerWait = 4000;
    view.quitAtPopup = 2;  // refused once; the popup comes back and the user quits
    editor->cmdRun_Click();
    EXPECT_EQ(view.popups, 2);
    EXPECT_TRUE(messages().last().startsWith(QStringLiteral("Run Macro: You can only wait 3600 secs")));
    EXPECT_TRUE(ran.isEmpty());
}

TEST_F(EditorTest, CheckCodeColoursTheLinesThatTheErrorsStandOn)
{
    open(0);
    // A blank line before the faulty one: tidying drops it, the colour must not.
    view.type(*editor, view.keys, view.name, QStringLiteral("a\r\n\r\n[LOOP X=1,2]\r\nb"));
    editor->mnuFormatCheckCode_Click();
    EXPECT_EQ(view.red, QList<int>{3});
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 1 has 1 line with an error."));
    ASSERT_FALSE(view.report.isEmpty());
    const QStringList lines = view.report.split(QStringLiteral("\r\n"));
    ASSERT_EQ(view.reportRed.size(), 1);
    EXPECT_EQ(lines.value(view.reportRed[0] - 1), QStringLiteral("2:[LOOP X=1,2]"));

    view.type(*editor, view.keys, view.name, QStringLiteral("a"));
    editor->mnuFormatCheckCode_Click();
    EXPECT_TRUE(view.red.isEmpty());
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 1 has no errors."));
    EXPECT_EQ(messages().last(), QStringLiteral("Check Code Errors: No errors were found in the code"));
}

TEST_F(EditorTest, FormatCodeIndentsOnYes)
{
    open(0);
    const QString code = QStringLiteral("[IF   X = 1 ]\r\n[VAR=2]\r\n[ENDIF]");
    view.type(*editor, view.keys, view.name, code);
    answer({shell::MsgNo});
    editor->mnuFormatCode_Click();
    EXPECT_EQ(view.codeText, code);
    answer({shell::MsgYes});
    editor->mnuFormatCode_Click();
    EXPECT_EQ(view.codeText, QStringLiteral("[IF X=1]\r\n    [VAR=2]\r\n[ENDIF]\r\n"));
    EXPECT_TRUE(table().HotkeysDirty);
}

TEST_F(EditorTest, ARecordingBecomesANewMacroReadyToName)
{
    open(0);
    answer({shell::MsgYes});  // record
    editor->cmdNew_Click();
    EXPECT_TRUE(view.hidden);
    editor->NewRecordedMacro(QStringLiteral("hi^%k"));
    EXPECT_TRUE(view.newShown);
    EXPECT_EQ(view.codeText, QStringLiteral("hi^%k"));
    EXPECT_TRUE(table().HotkeysDirty);
    EXPECT_EQ(table().HotkeyCount, 3);  // nothing stored until it is named and saved

    // A recording that does not start brings the window back.
    recordingStarts = false;
    editor->RecordNewMacro();
    EXPECT_FALSE(view.hidden);
}

TEST_F(EditorTest, AFileChangedByAnotherProgramIsReloadedOrKept)
{
    open(0);
    editor->CheckFileOnDisk();
    EXPECT_TRUE(fx.messages.shown.isEmpty());
    // Another program writes the file: one more macro.
    {
        QFile f(table().HotkeysFileName);
        ASSERT_TRUE(f.open(QIODevice::Append));
        f.write("#TRUE#,\"^%d\",\"Delta\",\"d\"\r\n");
    }
    view.type(*editor, view.keys, view.name, QStringLiteral("a kept"));
    answer({shell::MsgNo});  // keep
    editor->CheckFileOnDisk();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, QStringLiteral("Hotkeys File Changed"));
    EXPECT_EQ(view.codeText, QStringLiteral("a kept"));
    editor->CheckFileOnDisk();  // asked once for one change
    EXPECT_EQ(fx.messages.shown.size(), 1);
    editor->cmdAdd_Click();
    EXPECT_FALSE(fileBytes().contains("Delta"));
    EXPECT_TRUE(fileBytes().contains("a kept"));

    {
        QFile f(table().HotkeysFileName);
        ASSERT_TRUE(f.open(QIODevice::Append));
        f.write("#TRUE#,\"^%e\",\"Echo\",\"e\"\r\n");
    }
    answer({shell::MsgYes});  // load it again
    editor->CheckFileOnDisk();
    EXPECT_EQ(table().HotkeyCount, 4);
    EXPECT_EQ(view.nameList.last(), QStringLiteral("Echo"));
}

TEST_F(EditorTest, AFileThatCannotBeWrittenSaysSoAndTheEditStaysInTheWindow)
{
    open(0);
    // A folder where the file was: no one, root included, can write the file now.
    const QString name = table().HotkeysFileName;
    ASSERT_TRUE(QFile::rename(name, name + QStringLiteral(".away")));
    ASSERT_TRUE(QDir().mkdir(name));
    view.type(*editor, view.keys, view.name, QStringLiteral("a edited"));
    editor->cmdAdd_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_TRUE(fx.messages.shown[0].text.startsWith(QStringLiteral("Unable to save hotkey file.")));
    EXPECT_TRUE(fx.messages.shown[0].text.contains(QStringLiteral("Save As")));
    EXPECT_EQ(view.status, QStringLiteral("Hotkey 1 has not been updated."));
    EXPECT_EQ(view.codeText, QStringLiteral("a edited"));
    EXPECT_TRUE(table().HotkeysDirty);
    // Closing asks, and a failed save asks whether to quit anyway.
    answer({shell::MsgYes, shell::MsgOk, shell::MsgNo});
    EXPECT_FALSE(editor->Form_Unload());
    EXPECT_EQ(messages().last(), QStringLiteral("Save Hotkey: The hotkey changes were not saved. Quit anyway?"));
    // Writable again: saving without another change writes what the table holds.
    ASSERT_TRUE(QDir().rmdir(name));
    ASSERT_TRUE(QFile::rename(name + QStringLiteral(".away"), name));
    fx.messages.shown.clear();
    editor->cmdAdd_Click();
    EXPECT_TRUE(fx.messages.shown.isEmpty()) << messages().join('|').toStdString();
    EXPECT_TRUE(fileBytes().contains("a edited"));
}

TEST_F(EditorTest, AReadOnlyFileIsNamedAsSuch)
{
    open(0);
    QFile::setPermissions(table().HotkeysFileName, QFile::ReadOwner | QFile::ReadUser);
    if (QFileInfo(table().HotkeysFileName).isWritable())
        GTEST_SKIP() << "this user can write read-only files";
    view.type(*editor, view.keys, view.name, QStringLiteral("a edited"));
    editor->cmdAdd_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_TRUE(fx.messages.shown[0].text.contains(QStringLiteral("is read-only")));
    EXPECT_EQ(view.codeText, QStringLiteral("a edited"));
}

TEST_F(EditorTest, FiveHundredMacrosAreTheLimit)
{
    for (int i = 0; i < hotkeys::kMaxHotkeys; ++i)
        add(true, QStringLiteral("^%{F%1}").arg(i % 12 + 1), QStringLiteral("M%1").arg(i), QStringLiteral("x"));
    ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
    table().CurrentHotkeyIndex = 499;
    load();
    editor->cmdNew_Click();
    ASSERT_EQ(fx.messages.shown.size(), 1);
    EXPECT_EQ(fx.messages.shown[0].title, QStringLiteral("New Macro"));
    EXPECT_TRUE(fx.messages.shown[0].text.contains(QStringLiteral("500")));
    EXPECT_FALSE(view.newShown);
}

TEST_F(EditorTest, SortingIsRefusedWhileAMacroCallsAnotherByNumber)
{
    add(true, QStringLiteral("^%b"), QStringLiteral("Beta"), QStringLiteral("[HOTKEY 2]"));
    add(true, QStringLiteral("^%a"), QStringLiteral("Alpha"), QStringLiteral("a"));
    table().CurrentHotkeyIndex = 0;
    load();
    answer({shell::MsgYes});
    editor->mnuFileSort_Click();
    EXPECT_EQ(messages().last(),
              QStringLiteral("Sort Hotkeys: Cannot sort the Hotkeys because a [HOTKEY n] is referenced by number."));
    EXPECT_EQ(table().at(1).Description, QStringLiteral("Beta"));

    table().at(1).Code = QStringLiteral("[HOTKEY \"Alpha\"]");
    answer({shell::MsgYes});
    editor->mnuFileSort_Click();
    EXPECT_EQ(table().at(1).Description, QStringLiteral("Alpha"));
    EXPECT_EQ(table().CurrentHotkeyIndex, 1);  // Beta stays the macro shown
    EXPECT_EQ(view.codeText, QStringLiteral("[HOTKEY \"Alpha\"]"));
}

TEST_F(EditorTest, ANewFileIsMadeWhereTheUserSays)
{
    table().HotkeysFileName.clear();
    load();
    answer({shell::MsgNo});
    editor->cmdNew_Click();
    view.type(*editor, QStringLiteral("^%q"), QStringLiteral("Q"), QStringLiteral("q"));
    view.folderReply = dir.path();
    view.textReply = QStringLiteral("mine");
    editor->cmdAdd_Click();
    EXPECT_EQ(table().HotkeysFileName, dir.filePath(QStringLiteral("mine.TXT")));
    EXPECT_TRUE(fileBytes().contains("\"^%q\",\"Q\",\"q\""));
}

TEST_F(EditorTest, ErrorLinesOfTheTidiedTextMapToTheLinesShown)
{
    const QString text = QStringLiteral("\r\na\r\n\r\n\r\n  [X\r\nb");
    EXPECT_EQ(hotkeys::UntidiedLines(text, {1, 2, 3}), (QList<int>{2, 5, 6}));
    EXPECT_EQ(hotkeys::UntidiedLines(text, {4}), QList<int>{});
}

TEST_F(EditorTest, TheKeyFieldInUseLetsNoHotkeyFire)
{
    open(0);
    hotkeys::UpdateHookPlan();
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 2);
    hotkeys::hookState().HotkeysPaused = true;
    hotkeys::UpdateHookPlan();
    EXPECT_TRUE(fx.inputHooks.keyPlan.hotkeys.isEmpty());
    fx.inputHooks.press('A', true, true);
    EXPECT_EQ(shell::app().PendingHotkey, 0);
    hotkeys::hookState().HotkeysPaused = false;
    hotkeys::UpdateHookPlan();
    EXPECT_EQ(fx.inputHooks.keyPlan.hotkeys.size(), 2);
}

TEST_F(EditorTest, PrintHotkeyPrintsTheWindowsFieldsAsTheyStand)
{
    hotkeys::HotkeyEditor &e = open(1);
    view.type(e, QStringLiteral("^%q"), QStringLiteral("Beta renamed"), QStringLiteral("one\r\ntwo"));
    const QString text = e.PrintHotkeyText();
    EXPECT_TRUE(text.contains(QStringLiteral("Hotkey 2: Beta renamed"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Key: ^%q"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("1  one\r\n2  two"))) << text.toStdString();
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(EditorTest, PrintingWithNothingToPrintSaysSoAndGivesNoText)
{
    load();
    EXPECT_TRUE(editor->PrintHotkeyText().isEmpty());
    EXPECT_TRUE(editor->PrintAllText().isEmpty());
    EXPECT_EQ(messages(), (QStringList{"Print Hotkeys: No hotkey to print.", "Print Hotkeys: No hotkeys to print."}));
}

TEST_F(EditorTest, PrintAllHasEveryStoredMacroInOrder)
{
    hotkeys::HotkeyEditor &e = open();
    const QString text = e.PrintAllText();
    const int alpha = text.indexOf(QStringLiteral("Hotkey 1: Alpha"));
    const int beta = text.indexOf(QStringLiteral("Hotkey 2: Beta"));
    const int gamma = text.indexOf(QStringLiteral("Hotkey 3: Gamma"));
    EXPECT_GE(alpha, 0);
    EXPECT_GT(beta, alpha);
    EXPECT_GT(gamma, beta);
    EXPECT_TRUE(text.mid(gamma).contains(QStringLiteral("Disabled")));
}

TEST_F(EditorTest, DesktopIconRunsTheShownMacroByItsLaunchName)
{
    add(true, QStringLiteral("^%m"), QStringLiteral("Morning mail"), QStringLiteral("m"));
    ASSERT_TRUE(hotkeys::UpdateHotkeyWordsFile());
    table().CurrentHotkeyIndex = 0;
    load();
    const QString desk = dir.filePath(QStringLiteral("Desk"));
    editor->mnuFileIcon_Click(desk, QStringLiteral("/opt/s/sonamark-launch"));
    QFile file(desk + QLatin1Char('/') + hotkeys::MacroLauncherFileName(QStringLiteral("Morning mail")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << view.status.toStdString();
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("Exec=\"/opt/s/sonamark-launch\" \"Morning\\\\$mail\"\n")))
        << text.toStdString();
    EXPECT_TRUE(file.permissions() & QFile::ExeOwner);
    EXPECT_TRUE(view.status.startsWith(QStringLiteral("Desktop icon made: ")));

    // Made again: asked first, and No leaves the file alone.
    QFile::remove(file.fileName());
    ASSERT_TRUE(QFile(file.fileName()).open(QIODevice::WriteOnly));
    answer({shell::MsgNo});
    editor->mnuFileIcon_Click(desk, QStringLiteral("/opt/s/sonamark-launch"));
    EXPECT_EQ(messages(), QStringList{"Desktop Icon: A desktop icon for macro \"Morning mail\" already exists. Replace it?"});
    EXPECT_EQ(QFileInfo(file.fileName()).size(), 0);
}

TEST_F(EditorTest, DesktopIconNeedsAStoredMacro)
{
    hotkeys::HotkeyEditor &e = open();
    e.Blank_Macro();
    view.type(e, QStringLiteral("^%n"), QStringLiteral("New one"), QStringLiteral("n"));
    answer({shell::MsgNo});  // not saved now
    const QString desk = dir.filePath(QStringLiteral("Desk"));
    e.mnuFileIcon_Click(desk, QStringLiteral("sonamark-launch"));
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages().last(), "Desktop Icon: Save this macro before making a desktop icon for it.");
    EXPECT_FALSE(QFileInfo::exists(desk));
}

TEST_F(EditorTest, RefreshEnabledShowsAFlagChangedElsewhere)
{
    hotkeys::HotkeyEditor &e = open(2);
    ASSERT_FALSE(view.enabled);
    table().at(3).Active = true;  // the hotkey list's Apply
    e.RefreshEnabled();
    EXPECT_TRUE(view.enabled);
    // A new macro being entered keeps its own box.
    e.Blank_Macro();
    view.enabled = false;
    table().at(3).Active = false;
    e.RefreshEnabled();
    EXPECT_FALSE(view.enabled);
    table().at(3).Active = true;
    e.RefreshEnabled();
    EXPECT_FALSE(view.enabled);
}
