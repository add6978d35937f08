// The read-to-file dialog's logic on a recording view, the fake speech engine and the
// fake message window: lists, names, refusals, the WAV and MP3 runs, cancel and unload.
#include "audio/read_to_file_dialog.h"
#include "audio/read_to_file_vars.h"
#include "audio/speech_formats.h"
#include "audio_fixture.h"
#include "fakes/fake_services.h"
#include "reader/exceptions.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using audio::ReadToFileDialog;
using audio::ReadToFileList;

namespace {

class FakeReadToFileView : public audio::ReadToFileView {
public:
    explicit FakeReadToFileView() : dialog(*this) {}
    QString text, tag, caption = QLatin1String(audio::kEncodeCaption), speech;
    QStringList lists[3];
    int rows[3] = {-1, -1, -1};
    bool formatVisible = false, encodeEnabled = false, progressVisible = false;
    QList<int> progress;
    int focused = 0, pumps = 0, unloads = 0, voice = 0;
    std::function<void(int pump)> onPump;  // what the user does while events run
    ReadToFileDialog dialog;

    QString outputText() const override { return text; }
    void setOutputText(const QString &t) override
    {
        text = t;
        dialog.txtOutputMp3File_Change();
    }
    QString outputTag() const override { return tag; }
    void setOutputTag(const QString &t) override { tag = t; }
    void selectAndFocusOutput() override { ++focused; }
    void fillList(ReadToFileList l, const QStringList &r) override { lists[l] = r, rows[l] = -1; }
    int listIndex(ReadToFileList l) const override { return rows[l]; }
    void setListIndex(ReadToFileList l, int row) override
    {
        rows[l] = row;
        dialog.cboOption_Click(l);
    }
    void setSpeechFormatVisible(bool v) override { formatVisible = v; }
    QString encodeCaption() const override { return caption; }
    void setEncodeCaption(const QString &c) override { caption = c; }
    void setEncodeEnabled(bool e) override { encodeEnabled = e; }
    void setProgress(int p) override { progress << p; }
    void setProgressVisible(bool v) override { progressVisible = v; }
    void doEvents() override
    {
        ++pumps;
        if (onPump)
            onPump(pumps);
    }
    void unload() override { ++unloads; }
    QString speechText() const override { return speech; }
    void setSpeechText(const QString &t) override { speech = t; }
    int voiceRow() override { return voice; }
};

class ReadToFileDialogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        shell::app().reset();
        shell::settings().reset();
        reader::exceptionsState().reset();
        audio::readToFileVars().reset();
        shell::app().AppFolder = dir.filePath("home") + "/";
        QDir().mkpath(shell::app().AppFolder);
        shell::settings().Mp3QualityOpt = "1";
        shell::settings().PitchOpt = "0";
        view.speech = "Hello there, reader.";
        // The speech ends after the third pump unless a test says otherwise.
        view.onPump = [this](int pump) {
            if (pump == 3)
                fakes.speech.state.RunningState = platform::kRunningDone;
        };
    }
    void TearDown() override
    {
        shell::app().reset();
        shell::settings().reset();
        reader::exceptionsState().reset();
        audio::readToFileVars().reset();
    }
    // The last message as "title|text".
    QString lastMessage() const
    {
        if (fakes.messages.shown.isEmpty())
            return QString();
        // The message window is given the text with its line break for display.
        return fakes.messages.shown.last().title + "|" + fakes.messages.shown.last().text.trimmed();
    }
    void encodeTo(const QString &name)
    {
        view.dialog.SettxtOutputMp3File(name);
        view.dialog.cmdEncode_Click();
    }
    QTemporaryDir dir;
    fakes::FakeServices fakes;
    FakeReadToFileView view;
};

} // namespace

struct LoadCase {
    const char *optX;
    const char *optAfter;
    bool dirty;
    bool formatVisible;
    int formatRow, qualityRow;
};

TEST_F(ReadToFileDialogTest, FormLoadFillsTheListsAndRestoresTheQuality)
{
    const QList<LoadCase> cases = {
        // Selecting the quality is a click on it: the 44 kHz speech format and its bit rate.
        {"1", "1", false, false, 15, 1},
        {"3", "3", false, false, 15, 3},
        {"0", "0", false, false, 15, 0},
        {"7", "1", true, false, 15, 1},
        {"-5", "-13", true, true, 13, -1},
        {"-30", "-13", true, true, 13, -1},
    };
    for (const LoadCase &c : cases) {
        SCOPED_TRACE(c.optX);
        shell::app().reset();
        shell::settings().Mp3QualityOpt = c.optX;
        FakeReadToFileView v;
        v.dialog.Form_Load();
        EXPECT_EQ(shell::app().ChildFormDepth, 1);
        EXPECT_EQ(v.lists[0].size(), 31);
        EXPECT_EQ(v.lists[0].at(6), "12 kHz, 8 bit (Low Quality)");
        EXPECT_EQ(v.lists[1], (QStringList{"Low Quality (CBR 44kHz, 32kbps)", "Standard Quality (CBR 44kHz, 64kbps)",
                                           "High Quality (CBR 44kHz, 96kbps)", "Very High Quality (CBR 44kHz, 128kbps)"}));
        EXPECT_EQ(v.lists[2].first(), "32 kbps");
        EXPECT_EQ(v.lists[2].last(), "320 kbps");
        EXPECT_EQ(shell::settings().Mp3QualityOpt, c.optAfter);
        EXPECT_EQ(shell::app().OptionsDirty, c.dirty);
        EXPECT_EQ(v.formatVisible, c.formatVisible);
        EXPECT_EQ(v.rows[0], c.formatRow);
        EXPECT_EQ(v.rows[1], c.qualityRow);
        EXPECT_EQ(v.rows[2], c.qualityRow < 0 ? audio::kDefaultBitRateRow
                                              : audio::Mp3Qualities()[c.qualityRow].bitRateRow);
    }
}

TEST_F(ReadToFileDialogTest, QualityClickPicksItsBitRateAndTheMp3SpeechFormat)
{
    view.dialog.Form_Load();
    const int bitRateRows[] = {0, 4, 6, 8};
    for (int row = 0; row < 4; ++row) {
        view.rows[0] = 2;
        view.setListIndex(audio::kQualityList, row);
        EXPECT_EQ(view.rows[0], audio::kMp3SpeechFormatRow);
        EXPECT_EQ(view.rows[2], bitRateRows[row]);
    }
    view.rows[2] = 11;
    view.setListIndex(audio::kSpeechFormatList, 3);  // index 0 is ignored
    EXPECT_EQ(view.rows[2], 11);
}

struct NameCase {
    const char *given;
    const char *kept;
    bool formatVisible;
};

TEST_F(ReadToFileDialogTest, OutputNameGetsMp3UnlessItEndsInWavOrMp3)
{
    const QList<NameCase> cases = {
        {"/tmp/talk", "/tmp/talk.mp3", false},
        {" /tmp/talk.txt ", "/tmp/talk.txt.mp3", false},
        {"/tmp/Talk.MP3", "/tmp/Talk.MP3", false},
        {"/tmp/talk.Wav", "/tmp/talk.Wav", true},
    };
    for (const NameCase &c : cases) {
        SCOPED_TRACE(c.given);
        view.formatVisible = !c.formatVisible;
        view.dialog.SettxtOutputMp3File(c.given);
        EXPECT_EQ(view.tag, c.kept);
        EXPECT_EQ(view.text, c.kept);
        EXPECT_EQ(view.formatVisible, c.formatVisible);
        EXPECT_TRUE(view.encodeEnabled);
    }
}

struct RefusalCase {
    const char *name;
    QString tag;
    QString message;
};

TEST_F(ReadToFileDialogTest, RefusalsSayWhyAndFocusTheName)
{
    const QList<RefusalCase> cases = {
        {"no name", "  ", "Invalid File|The MP3 output file is not specified."},
        {"missing folder", dir.filePath("none/x.mp3"), "Invalid File|Invalid MP3 output file."},
        {"no name behind the folder", dir.filePath("x"), "Invalid File|Invalid MP3 output file."},
    };
    for (const RefusalCase &c : cases) {
        SCOPED_TRACE(c.name);
        view.text = view.tag = c.tag;
        const int focusedBefore = view.focused;
        view.dialog.cmdEncode_Click();
        EXPECT_EQ(lastMessage(), c.message);
        EXPECT_EQ(view.focused, focusedBefore + 1);
        EXPECT_EQ(view.caption, audio::kEncodeCaption);
        EXPECT_TRUE(fakes.speech.calls.isEmpty());
    }
}

TEST_F(ReadToFileDialogTest, WaveRunSpeaksIntoTheChosenFile)
{
    shell::settings().PitchOpt = "4";
    view.dialog.Form_Load();
    view.rows[0] = 9;
    const QString wav = dir.filePath("speech.wav");
    encodeTo(wav);
    EXPECT_EQ(lastMessage(), "File Saved|Saved to WAV file : " + wav);
    EXPECT_TRUE(QFileInfo(wav).isFile());
    EXPECT_EQ(view.caption, audio::kEncodeCaption);
    EXPECT_EQ(view.progress.first(), 0);
    EXPECT_EQ(view.progress.last(), 100);
    EXPECT_TRUE(view.progressVisible);
    EXPECT_TRUE(fakes.speech.lastSpoken.contains("<PITCH MIDDLE=\"4\">Hello there, reader.</PITCH>"));
    const QStringList &calls = fakes.speech.calls;
    ASSERT_TRUE(calls.contains("stream") && calls.contains("device"));
    EXPECT_LT(calls.indexOf("stream"), calls.indexOf("speak 2 "));
    EXPECT_LT(calls.indexOf("speak 2 "), calls.indexOf("speak 9 " + fakes.speech.lastSpoken));
    EXPECT_GT(calls.indexOf("device"), calls.indexOf("speak 9 " + fakes.speech.lastSpoken));
    EXPECT_FALSE(audio::readToFileVars().ReadToFileBusy);
}

TEST_F(ReadToFileDialogTest, Mp3RunEncodesAndRemovesTheTemporaryWave)
{
    view.dialog.Form_Load();
    view.setListIndex(audio::kQualityList, 3);
    const QString mp3 = dir.filePath("speech.mp3");
    encodeTo(mp3);
    EXPECT_EQ(lastMessage(), "File Saved|Saved to MP3 file : " + mp3);
    EXPECT_TRUE(QFileInfo(mp3).isFile());
    EXPECT_EQ(audio::readToFileVars().WavFileName, shell::app().AppFolder + "speech.wav");
    EXPECT_FALSE(QFileInfo::exists(shell::app().AppFolder + "speech.wav"));
    EXPECT_EQ(shell::settings().Mp3QualityOpt, "3");
    EXPECT_TRUE(shell::app().OptionsDirty);
    EXPECT_EQ(view.dialog.encoder().BitRate(), 128);
    EXPECT_EQ(view.dialog.encoder().EncodingPreset(), audio::kPresetHighQuality);
    EXPECT_EQ(view.dialog.encoder().SampleRate(), 44100);
    EXPECT_EQ(view.progress.last(), 100);
}

TEST_F(ReadToFileDialogTest, ExistingTemporaryWaveIsOnlyOverwrittenOnYes)
{
    view.dialog.Form_Load();
    const QString temporary = shell::app().AppFolder + "talk.wav";
    ASSERT_TRUE(audiotest::WriteFile(temporary, "old"));
    fakes.messages.answers = {-1};
    encodeTo(dir.filePath("talk.mp3"));
    EXPECT_EQ(lastMessage(), "Save To File|WARNING: WAV file talk.wav will be overwritten. Continue?");
    EXPECT_EQ(fakes.messages.shown.last().type, 1);
    EXPECT_EQ(audiotest::ReadFile(temporary), "old");
    EXPECT_EQ(view.focused, 1);
    fakes.messages.answers = {1};
    view.dialog.cmdEncode_Click();
    EXPECT_EQ(lastMessage(), "File Saved|Saved to MP3 file : " + dir.filePath("talk.mp3"));
    EXPECT_FALSE(QFileInfo::exists(temporary));
}

TEST_F(ReadToFileDialogTest, CancelDuringSpeechKeepsThePartialWave)
{
    view.dialog.Form_Load();
    view.onPump = [this](int pump) {
        if (pump == 4)
            view.dialog.cmdEncode_Click();  // the button says "Cancel" now
    };
    encodeTo(dir.filePath("long.mp3"));
    EXPECT_EQ(lastMessage(), "Save To File|Read To File cancelled by user.");
    EXPECT_EQ(view.caption, audio::kEncodeCaption);
    EXPECT_EQ(view.progress.last(), 0);
    EXPECT_FALSE(audio::readToFileVars().ReadToFileBusy);
    EXPECT_TRUE(QFileInfo::exists(shell::app().AppFolder + "long.wav"));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("long.mp3")));
    EXPECT_TRUE(fakes.speech.calls.contains(QString("speak 2 ")));
}

TEST_F(ReadToFileDialogTest, ExceptionsRewriteTheTextForGood)
{
    reader::exceptionsState().Exceptions = {{"Dr", "Doctor"}};
    shell::app().CurrentFile = dir.filePath("letter.txt");
    view.speech = "Dr Who";
    view.dialog.Form_Load();
    encodeTo(dir.filePath("who.wav"));
    EXPECT_EQ(view.speech, "Doctor Who");
    EXPECT_EQ(fakes.speech.lastSpoken, "Doctor Who");
    EXPECT_TRUE(shell::app().TextDirty);
}

TEST_F(ReadToFileDialogTest, TrueSpeechIsRefusedWithAClearMessage)
{
    view.dialog.Form_Load();
    const QString wav = dir.filePath("ts.wav");
    view.dialog.SettxtOutputMp3File(wav);
    view.rows[0] = 18;
    view.dialog.cmdEncode_Click();
    EXPECT_TRUE(lastMessage().contains("True Speech, 8 kHz, 1 bit (Low Quality)"));
    EXPECT_FALSE(QFileInfo::exists(wav));
    EXPECT_EQ(view.caption, audio::kEncodeCaption);
}

TEST_F(ReadToFileDialogTest, UnloadWhileRunningAsksAndCancelsOnYes)
{
    view.dialog.Form_Load();
    view.caption = audio::kCancelCaption;
    fakes.messages.answers = {-1, 1};
    EXPECT_FALSE(view.dialog.Form_Unload());
    EXPECT_EQ(lastMessage(), "Cancel|Cancel MP3 conversion?");
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    view.dialog.cmdCancel_Click();  // the Close button does nothing while running
    EXPECT_EQ(view.unloads, 0);
    EXPECT_TRUE(view.dialog.Form_Unload());
    EXPECT_TRUE(audio::readToFileVars().CancelEncoding);
    EXPECT_EQ(view.caption, audio::kEncodeCaption);
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
    view.dialog.cmdCancel_Click();
    EXPECT_EQ(view.unloads, 1);
}

TEST_F(ReadToFileDialogTest, LongNameIsShownCondensedAndUsedInFull)
{
    view.dialog.Form_Load();
    const QString folder = dir.filePath("a folder with a rather long name/and another one below it");
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString mp3 = folder + "/speech.mp3";
    view.dialog.SettxtOutputMp3File(mp3);
    EXPECT_TRUE(view.text.contains("/../")) << view.text.toStdString();
    EXPECT_LE(view.text.size(), 60);
    EXPECT_EQ(view.tag, mp3);
    view.dialog.cmdEncode_Click();
    EXPECT_EQ(lastMessage(), "File Saved|Saved to MP3 file : " + mp3);
    EXPECT_TRUE(QFileInfo(mp3).isFile());
}
