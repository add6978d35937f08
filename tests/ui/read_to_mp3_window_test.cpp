// frmVBLame on real widgets and the real espeak-ng engine: its controls, a run cancelled
// in each phase, and a complete run read back by ffprobe.
#include "audio/read_to_file_vars.h"
#include "fakes/fake_services.h"
#include "platform/espeak/espeak_engine.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "ui/frm_sonamark.h"
#include "ui/frm_vb_lame.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

constexpr int kWatchMs = 2;

class ReadToMp3WindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!engine.ok())
            GTEST_SKIP() << "espeak-ng is not available";
        shell::app().reset();
        shell::settings().reset();
        shell::settings().Mp3QualityOpt = QStringLiteral("1");
        shell::settings().PitchOpt = QStringLiteral("0");
        reader::speechVars().reset();
        audio::readToFileVars().reset();
        shell::app().AppFolder = dir.filePath("home") + QLatin1Char('/');
        QDir().mkpath(shell::app().AppFolder);
        platform::Services withEngine = platform::services();
        withEngine.speech = &engine;
        m_previous = platform::install(withEngine);
        m_installed = true;
        window = std::make_unique<ui::frmSonamark>(&fx.tray);
        window->Form_Load();
        window->txtSpeech->setPlainText(
            QStringLiteral("Sonamark reads long articles into sound files for the road. ").repeated(60));
        dialog = std::make_unique<ui::frmVBLame>(window.get(), [] { return 0; });
        dialog->show();
    }
    void TearDown() override
    {
        if (!m_installed)
            return;
        dialog.reset();
        reader::ReleaseSpeechObject();
        window.reset();
        platform::install(m_previous);
        audio::readToFileVars().reset();
    }
    // Clicks Cancel (cmdEncode) as soon as when() holds during the run started by cmdEncode.
    void runCancellingWhen(std::function<bool()> when)
    {
        QTimer watch;
        watch.setInterval(kWatchMs);
        QObject::connect(&watch, &QTimer::timeout, [&] {
            if (dialog->cmdEncode->text() == QLatin1String("Cancel") && when()) {
                watch.stop();
                dialog->cmdEncode->click();
            }
        });
        watch.start();
        dialog->cmdEncode->click();
    }
    QString lastMessage() const { return fx.messages.shown.isEmpty() ? QString() : fx.messages.shown.last().text.trimmed(); }

    fakes::FakeServices fx;
    platform::espeak::EspeakEngine engine;
    std::unique_ptr<ui::frmSonamark> window;
    std::unique_ptr<ui::frmVBLame> dialog;
    QTemporaryDir dir;

private:
    platform::Services m_previous;
    bool m_installed = false;
};

} // namespace

TEST_F(ReadToMp3WindowTest, ShowsItsControlsAndLists)
{
    EXPECT_EQ(dialog->windowTitle(), "Sonamark - Read To MP3");
    EXPECT_EQ(dialog->lblMp3File->text(), "Output File");
    EXPECT_EQ(dialog->lblPreset->text(), "Sound Quality");
    EXPECT_EQ(dialog->cmdFile->text(), "...");
    EXPECT_EQ(dialog->cmdFile->toolTip(), "Set output file");
    EXPECT_EQ(dialog->cmdEncode->text(), "&Read To File");
    EXPECT_EQ(dialog->cmdEncode->toolTip(), "Save speech to a sound file");
    EXPECT_EQ(dialog->cmdCancel->text(), "&Close");
    EXPECT_EQ(dialog->cmdCancel->toolTip(), "Cancel Read To File");
    EXPECT_EQ(dialog->cboOption0->count(), 31);
    EXPECT_EQ(dialog->cboOption1->currentText(), "Standard Quality (CBR 44kHz, 64kbps)");
    EXPECT_EQ(dialog->cmbBitrate->currentText(), "64 kbps");
    EXPECT_TRUE(dialog->cboOption1->isVisibleTo(dialog.get()));
    EXPECT_FALSE(dialog->cboOption0->isVisibleTo(dialog.get()));
    EXPECT_EQ(shell::app().ChildFormDepth, 1);
    dialog->SettxtOutputMp3File(dir.filePath("speech.wav"));
    EXPECT_TRUE(dialog->cboOption0->isVisibleTo(dialog.get()));
    if (qEnvironmentVariableIsSet("SONAMARK_SHOT"))
        dialog->grab().save(qEnvironmentVariable("SONAMARK_SHOT"));
    // The main window's File menu opens it.
    bool offered = false;
    for (QAction *a : window->menuBar()->actions())
        if (a->text() == QLatin1String("&File"))
            for (QAction *entry : a->menu()->actions())
                offered |= entry->text() == QLatin1String("Save To MP3") && entry->isEnabled();
    EXPECT_TRUE(offered);
}

TEST_F(ReadToMp3WindowTest, SaveTextToMp3OffersAnMp3BesideTheOpenDocument)
{
    QAction *entry = nullptr;
    for (QAction *a : window->menuBar()->actions())
        if (a->text() == QLatin1String("&File"))
            for (QAction *e : a->menu()->actions())
                if (e->text() == QLatin1String("Save Text To MP3"))
                    entry = e;
    ASSERT_NE(entry, nullptr);
    ASSERT_TRUE(entry->isEnabled());
    // What the modal dialog shows, read as it opens; then it is closed.
    const auto offered = [&] {
        QString shown = QStringLiteral("(no dialog)");
        QTimer::singleShot(0, [&] {
            if (auto *opened = qobject_cast<ui::frmVBLame *>(QApplication::activeModalWidget())) {
                shown = opened->txtOutputMp3File->text();
                opened->close();
            }
        });
        entry->trigger();
        return shown;
    };
    shell::app().CurrentFile = dir.filePath("notes/Letter to Ann.rtf");
    EXPECT_EQ(offered(), dir.filePath("notes/Letter to Ann.mp3"));
    shell::app().CurrentFile.clear();
    EXPECT_EQ(offered(), QString());  // no document: the name is asked for, as Save To MP3 does
}

TEST_F(ReadToMp3WindowTest, CancelInEachPhaseThenAWholeRun)
{
    const QString mp3 = dir.filePath("article.mp3");
    const QString temporary = shell::app().AppFolder + QStringLiteral("article.wav");
    dialog->SettxtOutputMp3File(mp3);

    // During speech: the partly written wave stays.
    runCancellingWhen([&] { return audio::readToFileVars().ReadToFileBusy && QFileInfo(temporary).size() > 0; });
    EXPECT_EQ(lastMessage(), "Read To File cancelled by user.");
    EXPECT_EQ(dialog->cmdEncode->text(), "&Read To File");
    EXPECT_EQ(dialog->m_cProgress->value(), 0);
    EXPECT_TRUE(QFileInfo::exists(temporary));
    EXPECT_FALSE(QFileInfo::exists(mp3));

    // During encoding, after saying yes to overwriting the wave: neither file stays.
    fx.messages.answers = {1};
    runCancellingWhen([&] { return dialog->m_cProgress->value() > 55; });
    EXPECT_EQ(fx.messages.shown.at(fx.messages.shown.size() - 2).text.trimmed(),
              "WARNING: WAV file article.wav will be overwritten. Continue?");
    EXPECT_EQ(lastMessage(), "Read To File cancelled by user.");
    EXPECT_EQ(dialog->m_cProgress->value(), 100);
    EXPECT_FALSE(QFileInfo::exists(temporary));
    EXPECT_FALSE(QFileInfo::exists(mp3));

    // Again, to the end.
    dialog->cmdEncode->click();
    EXPECT_EQ(lastMessage(), "Saved to MP3 file : " + mp3);
    EXPECT_FALSE(QFileInfo::exists(temporary));
    QProcess probe;
    probe.start("ffprobe", {"-v", "error", "-show_entries", "stream=codec_name,sample_rate,channels,bit_rate",
                            "-of", "csv=p=0", mp3});
    ASSERT_TRUE(probe.waitForFinished(30000));
    EXPECT_EQ(QString::fromUtf8(probe.readAllStandardOutput()).trimmed(), "mp3,44100,1,64000");
    dialog->cmdCancel->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(shell::app().ChildFormDepth, 0);
}
