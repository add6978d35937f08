// The batch conversion of frmMP3Files on the real engine, encoder and antiword: twenty
// mixed documents, the reports, the captions, the names, and a cancel in each phase; the
// same with the helper process that reads every other document.
#include "audio/batch_conversion.h"
#include "audio/process_batch_helper.h"
#include "audio/read_to_file_dialog.h"
#include "audio/read_to_file_vars.h"
#include "audio_fixture.h"
#include "batch_corpus.h"
#include "fakes/fake_services.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/linux/antiword_files.h"
#include "reader/exceptions.h"
#include "search/find_files.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace batchtest;

namespace {

platform::espeak::EspeakEngine &Engine()
{
    static platform::espeak::EspeakEngine engine;
    return engine;
}

// frmMP3Files's controls as plain fields; onEvents stands for the user acting while the
// run lets events through.
struct View : audio::BatchView {
    QString caption;
    QStringList captions;  // every caption, in order
    QStringList files;
    QString filesText;
    QStringList qualities, bitRates;
    int quality = -1, bitRate = -1;
    QString encode = QLatin1String(audio::kBatchEncodeCaption);
    int progress = 0;
    int unloads = 0;
    int finderShown = 0;
    std::function<void()> onEvents;
    std::function<void()> finder;
    audio::BatchConversion *logic = nullptr;

    void setCaption(const QString &c) override { caption = c; captions << c; }
    void fillFiles(const QStringList &rows) override { files = rows; }
    void setFilesText(const QString &t) override { filesText = t; }
    void fillQualities(const QStringList &rows) override { qualities = rows; quality = -1; }
    void fillBitRates(const QStringList &rows) override { bitRates = rows; bitRate = -1; }
    int qualityIndex() const override { return quality; }
    void setQualityIndex(int row) override
    {
        quality = row;
        if (logic)
            logic->cboOption_Click();
    }
    int bitRateIndex() const override { return bitRate; }
    void setBitRateIndex(int row) override { bitRate = row; }
    QString encodeCaption() const override { return encode; }
    void setEncodeCaption(const QString &c) override { encode = c; }
    void setProgress(int p) override { progress = p; }
    void doEvents() override
    {
        QCoreApplication::processEvents();
        if (onEvents)
            onEvents();
    }
    void unload() override { ++unloads; }
    void showFileFinder() override
    {
        ++finderShown;
        if (finder)
            finder();
    }
    int voiceRow() override { return 0; }
};

class BatchConversionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Engine().ok());
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(word.installed()) << "antiword is needed";
        shell::app().reset();
        shell::app().AppFolder = dir.filePath("home") + '/';
        QDir().mkpath(dir.filePath("home"));
        QDir().mkpath(dir.filePath("docs"));
        shell::settings().reset();
        shell::settings().PitchOpt = QStringLiteral("0");
        shell::settings().Mp3QualityOpt = QStringLiteral("0");  // 32 kbps: small files
        reader::exceptionsState().reset();
        audio::readToFileVars().reset();
        search::findFilesState().reset();
        platform::services().speech = &Engine();
        platform::services().wordFiles = &word;
        corpus = MakeCorpus(dir.filePath("docs"), QStringLiteral(SONAMARK_READER_TEST_DATA "/quarterly_report.doc"));
        search::findFilesState().select(corpus.files, {});
    }
    void TearDown() override { search::findFilesState().reset(); }

    QStringList reports() const
    {
        QStringList shown;
        for (const platform::MessageSpec &m : fx.messages.shown)
            shown << m.title + QLatin1Char('|') + m.text.trimmed();
        return shown;
    }

    fakes::FakeServices fx;
    platform::AntiwordFiles word;
    QTemporaryDir dir;
    Corpus corpus;
    View view;
};

} // namespace

TEST(BatchNames, TheRulesOfTheDialog)
{
    EXPECT_TRUE(audio::FileFormatIsOk("a.txt"));
    EXPECT_TRUE(audio::FileFormatIsOk("/x/B.DOC"));
    EXPECT_FALSE(audio::FileFormatIsOk(".txt"));  // four characters are not enough
    EXPECT_FALSE(audio::FileFormatIsOk("notes.pdf"));
    EXPECT_EQ(audio::BatchMp3Name("/d/Notes.txt"), "/d/Notes.MP3");
    EXPECT_EQ(audio::BatchMp3Name("/d/Old.DOC"), "/d/Old.MP3");
    shell::app().AppFolder = "/home/u/.local/share/sonamark/";
    EXPECT_EQ(audio::BatchWavName("/d/Notes.MP3"), "/home/u/.local/share/sonamark/Notes.wav");
    EXPECT_EQ(audio::SelectionCaption(0), "Sonamark - No files selected");
    EXPECT_EQ(audio::SelectionCaption(1), "Sonamark - 1 file selected");
    EXPECT_EQ(audio::SelectionCaption(20), "Sonamark - 20 files selected");
    EXPECT_EQ(audio::BatchReport(0), "No files were converted.");
    EXPECT_EQ(audio::BatchReport(1), "There was 1 file converted.");
    EXPECT_EQ(audio::BatchReport(18), "There were 18 files converted.");
    EXPECT_EQ(audio::BatchCancelReport(0), "Read To Files cancelled by user.");
    EXPECT_EQ(audio::BatchCancelReport(1), "Read To Files cancelled by user. There was 1 file converted.");
    EXPECT_EQ(audio::BatchCancelReport(2), "Read To Files cancelled by user. There were 2 files converted.");
}

TEST_F(BatchConversionTest, TwentyMixedDocumentsGiveEighteenMp3sBesideThem)
{
    audio::BatchConversion logic(view);
    view.logic = &logic;
    logic.Form_Load();
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    EXPECT_EQ(view.caption, "Sonamark - 20 files selected");
    EXPECT_EQ(view.files.size(), 20);
    EXPECT_EQ(view.quality, 0);
    EXPECT_EQ(view.bitRate, 0);  // the quality row's bit rate: 32 kbps
    // A wave file left by an earlier cancelled run is overwritten without a question.
    ASSERT_TRUE(Write(dir.filePath("home/note1.wav"), "stale"));

    logic.cmdEncode_Click();

    EXPECT_EQ(reports(), QStringList{"Convert Files To MP3|There were 18 files converted."});
    for (const QString &doc : corpus.converted) {
        SCOPED_TRACE(doc.toStdString());
        EXPECT_TRUE(Mp3Decodes(Mp3Of(doc)));
    }
    for (const QString &doc : corpus.skipped)
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(doc))) << doc.toStdString();
    // The numbers in the caption are the documents' places in the selection.
    EXPECT_TRUE(view.captions.contains("Sonamark - Converting 1 of 20"));
    EXPECT_TRUE(view.captions.contains("Sonamark - Converting 18 of 20"));
    EXPECT_FALSE(view.captions.contains("Sonamark - Converting 19 of 20"));  // the empty one
    EXPECT_FALSE(view.captions.contains("Sonamark - Converting 20 of 20"));  // the unreadable one
    EXPECT_EQ(view.encode, audio::kBatchEncodeCaption);
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("home/note1.wav")));  // temporary: removed
    EXPECT_EQ(view.filesText.right(10), "report.MP3");
    logic.Form_Unload();
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}

TEST_F(BatchConversionTest, ExceptionsChangeWhatIsSpoken)
{
    // A word replaced by a long phrase speaks for much longer.
    const QString doc = dir.filePath("docs/short.txt");
    ASSERT_TRUE(Write(doc, "Hello.\r\n"));
    search::findFilesState().select({doc}, {});
    reader::exceptionsState().ExceptionsOn = false;
    audio::BatchConversion plain(view);
    view.logic = &plain;
    plain.Form_Load();
    plain.cmdEncode_Click();
    const qint64 plainSize = QFileInfo(Mp3Of(doc)).size();
    ASSERT_GT(plainSize, 0);

    reader::exceptionsState().ExceptionsOn = true;
    reader::exceptionsState().Exceptions.append(
        {QStringLiteral("Hello"), QStringLiteral("a much longer greeting that takes quite a while to say aloud")});
    plain.cmdEncode_Click();
    EXPECT_GT(QFileInfo(Mp3Of(doc)).size(), 2 * plainSize);
}

TEST_F(BatchConversionTest, CancelDuringTheSpeechOfTheThirdFileReportsNoCount)
{
    audio::BatchConversion logic(view);
    view.logic = &logic;
    logic.Form_Load();
    view.onEvents = [&] {
        if (view.caption == "Sonamark - Converting 3 of 20" && view.encode == audio::kCancelCaption
            && view.progress < 50)
            logic.cmdEncode_Click();  // the button reads "Cancel"
    };
    logic.cmdEncode_Click();
    EXPECT_EQ(reports(), QStringList{"Save To File|Read To File cancelled by user."});
    EXPECT_TRUE(Mp3Decodes(Mp3Of(corpus.files[0])));
    EXPECT_TRUE(Mp3Decodes(Mp3Of(corpus.files[1])));
    for (int i = 2; i < corpus.files.size(); ++i)
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(corpus.files[i]))) << i;
    EXPECT_EQ(view.encode, audio::kBatchEncodeCaption);
    EXPECT_FALSE(audio::readToFileVars().ReadToFileBusy);
}

TEST_F(BatchConversionTest, CancelDuringTheEncodingOfTheThirdFileReportsTwo)
{
    audio::BatchConversion logic(view);
    view.logic = &logic;
    logic.Form_Load();
    view.onEvents = [&] {
        if (view.caption == "Sonamark - Converting 3 of 20" && view.encode == audio::kCancelCaption
            && view.progress > 50)
            logic.cmdEncode_Click();
    };
    logic.cmdEncode_Click();
    EXPECT_EQ(reports(),
              QStringList{"Convert Files To MP3|Read To Files cancelled by user. There were 2 files converted."});
    for (int i = 3; i < corpus.files.size(); ++i)
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(corpus.files[i]))) << i;
    EXPECT_EQ(shell::settings().Mp3QualityOpt, "0");
}

TEST_F(BatchConversionTest, WithTheHelperTheSameMp3sAppearAndTheCaptionsStayInOrder)
{
    // Document 2 read here, for comparison: the helper must speak it with the same voice
    // and rate, so at a constant bit rate its MP3 has the same length, give or take a pause
    // (the speech library carries a little state from one text to the next; another rate
    // or voice changes the length by far more).
    const QString second = corpus.converted.at(1);
    search::findFilesState().select({second}, {});
    audio::BatchConversion alone(view);
    view.logic = &alone;
    alone.Form_Load();
    alone.cmdEncode_Click();
    QFile made(Mp3Of(second));
    ASSERT_TRUE(made.open(QIODevice::ReadOnly));
    const QByteArray here = made.readAll();
    made.close();
    ASSERT_FALSE(here.isEmpty());
    ASSERT_TRUE(QFile::remove(Mp3Of(second)));

    audio::ProcessBatchHelper helper(QStringLiteral(SONAMARK_CLI_PATH));
    platform::services().batchHelper = &helper;
    search::findFilesState().select(corpus.files, {});
    View helped;
    audio::BatchConversion logic(helped);
    helped.logic = &logic;
    logic.Form_Load();
    fx.messages.shown.clear();
    logic.cmdEncode_Click();
    platform::services().batchHelper = nullptr;

    EXPECT_EQ(reports(), QStringList{"Convert Files To MP3|There were 18 files converted."});
    for (const QString &doc : corpus.converted)
        EXPECT_TRUE(Mp3Decodes(Mp3Of(doc))) << doc.toStdString();
    for (const QString &doc : corpus.skipped)
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(doc))) << doc.toStdString();
    QStringList converting;
    for (const QString &caption : helped.captions)
        if (caption.startsWith("Sonamark - Converting ") && (converting.isEmpty() || converting.last() != caption))
            converting << caption;
    ASSERT_EQ(converting.size(), 18);
    for (int i = 0; i < 18; ++i)
        EXPECT_EQ(converting[i], QStringLiteral("Sonamark - Converting %1 of 20").arg(i + 1));
    EXPECT_NEAR(double(made.size()), double(here.size()), 0.03 * double(here.size()))
        << "the helper spoke document 2 differently";
}

TEST_F(BatchConversionTest, CancelWhileTheHelperReadsTheNextDocumentLeavesNoMp3OfIt)
{
    audio::ProcessBatchHelper helper(QStringLiteral(SONAMARK_CLI_PATH));
    platform::services().batchHelper = &helper;
    audio::BatchConversion logic(view);
    view.logic = &logic;
    logic.Form_Load();
    view.onEvents = [&] {
        if (view.caption == "Sonamark - Converting 1 of 20" && view.encode == audio::kCancelCaption
            && helper.state() != platform::BatchHelper::State::Idle && view.progress < 50)
            logic.cmdEncode_Click();
    };
    logic.cmdEncode_Click();
    platform::services().batchHelper = nullptr;
    EXPECT_EQ(reports(), QStringList{"Save To File|Read To File cancelled by user."});
    for (int i = 0; i < corpus.files.size(); ++i)
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(corpus.files[i]))) << i;
    EXPECT_EQ(helper.state(), platform::BatchHelper::State::Idle);
}

TEST_F(BatchConversionTest, AHelperThatFailsOrCannotStartLeavesTheWorkToTheWindow)
{
    const QStringList docs = corpus.converted.mid(0, 3);
    for (const char *program : {"/bin/false", "/nonexistent/sonamark-cli"}) {
        SCOPED_TRACE(program);
        for (const QString &doc : docs)
            QFile::remove(Mp3Of(doc));
        audio::ProcessBatchHelper helper(QString::fromLatin1(program));
        platform::services().batchHelper = &helper;
        search::findFilesState().select(docs, {});
        audio::BatchConversion logic(view);
        view.logic = &logic;
        logic.Form_Load();
        fx.messages.shown.clear();
        logic.cmdEncode_Click();
        platform::services().batchHelper = nullptr;
        EXPECT_EQ(reports(), QStringList{"Convert Files To MP3|There were 3 files converted."});
        for (const QString &doc : docs)
            EXPECT_TRUE(Mp3Decodes(Mp3Of(doc))) << doc.toStdString();
    }
}

TEST_F(BatchConversionTest, NothingSelectedAndNothingConvertible)
{
    search::findFilesState().reset();
    audio::BatchConversion logic(view);
    logic.Form_Load();
    EXPECT_EQ(view.caption, "Sonamark - No files selected");
    logic.cmdEncode_Click();
    EXPECT_EQ(reports(), QStringList{"No Files|No text files have been selected."});

    fx.messages.shown.clear();
    search::findFilesState().select({dir.filePath("docs/a.pdf"), corpus.skipped[0], dir.filePath("docs/gone.txt")}, {});
    ASSERT_TRUE(Write(dir.filePath("docs/a.pdf"), "%PDF"));
    logic.cmdEncode_Click();
    EXPECT_EQ(reports(), QStringList{"Convert Files To MP3|No files were converted."});
}

TEST_F(BatchConversionTest, BrowsingAsksForTheTextFilesFaceAndShowsTheChoice)
{
    audio::BatchConversion logic(view);
    logic.Form_Load();
    view.finder = [&] {
        EXPECT_EQ(search::findFilesState().SelectedCount, -1);
        EXPECT_TRUE(search::findFilesState().LastFolder.endsWith('/'));
        search::findFilesState().select({corpus.files[0]}, {});
    };
    logic.cmdFile_Click();
    EXPECT_EQ(view.finderShown, 1);
    EXPECT_EQ(view.caption, "Sonamark - 1 file selected");
    EXPECT_EQ(view.files.size(), 1);
    // Close leaves while idle; during a run it does nothing.
    view.encode = audio::kCancelCaption;
    logic.cmdCancel_Click();
    EXPECT_EQ(view.unloads, 0);
    view.encode = audio::kBatchEncodeCaption;
    logic.cmdCancel_Click();
    EXPECT_EQ(view.unloads, 1);
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
