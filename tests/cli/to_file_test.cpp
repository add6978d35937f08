// sonamark-cli to-file, run as a program: the files it makes read back by ffprobe, its
// refusals and their exit codes, and a run cancelled with Ctrl+C.
#include "../audio/audio_fixture.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <csignal>
#include <sys/stat.h>

using namespace audiotest;

namespace {

const QByteArray kText = "Sonamark turns articles into sound files for the road.\n";

struct Result {
    int exitCode = -1;
    QString out, err;
};

class ToFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(QDir().mkpath(tmp()));
        ASSERT_TRUE(WriteFile(input(), kText));
    }
    QString tmp() const { return dir.filePath("tmp"); }
    QString input() const { return dir.filePath("in.txt"); }
    QProcessEnvironment environment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("TMPDIR", tmp());
        env.insert("SONAMARK_HOME", dir.filePath("home"));
        env.insert("PULSE_SERVER", "unix:/nonexistent");
        return env;
    }
    Result run(const QStringList &args, const QByteArray &stdinBytes = QByteArray())
    {
        QProcess p;
        p.setProcessEnvironment(environment());
        p.start(SONAMARK_CLI_PATH, QStringList{"to-file"} + args);
        p.write(stdinBytes);
        p.closeWriteChannel();
        Result r;
        if (!p.waitForFinished(120000)) {
            p.kill();
            p.waitForFinished();
            return r;
        }
        r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
        r.out = QString::fromUtf8(p.readAllStandardOutput());
        r.err = QString::fromUtf8(p.readAllStandardError());
        return r;
    }
    // "codec rate channels bitrate" of the first audio stream.
    QString probe(const QString &file)
    {
        const auto out = RunTool("ffprobe", {"-v", "error", "-select_streams", "a:0", "-show_entries",
                                             "stream=codec_name,sample_rate,channels,bit_rate", "-of", "csv=p=0", file});
        return out ? QString::fromUtf8(*out).trimmed() : QString();
    }
    QTemporaryDir dir;
};

} // namespace

TEST_F(ToFileTest, HelpAndBadArguments)
{
    const Result help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains("usage: sonamark-cli to-file"));
    const QList<QStringList> bad = {
        {},
        {input()},
        {input(), "a.wav", "extra"},
        {"--colour", "red", input(), "a.wav"},
        {"--format", "31", input(), "a.wav"},
        {"--quality", "4", input(), "a.mp3"},
        {"--bitrate", "100", input(), "a.mp3"},
        {"--rate", "11", input(), "a.mp3"},
        {"--volume", "loud", input(), "a.mp3"},
        {"--voice", "No Such Voice", input(), "a.mp3"},
        {input(), "a.mp3", "--pitch"},
    };
    for (const QStringList &args : bad) {
        SCOPED_TRACE(args.join(' ').toStdString());
        const Result r = run(args);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_FALSE(r.err.isEmpty());
    }
}

struct MadeCase {
    const char *name;
    QStringList options;
    QString output;       // in the test folder
    QString made;         // the file expected
    QString probe;        // what ffprobe says of it
};

TEST_F(ToFileTest, MakesWaveAndMp3Files)
{
    const QList<MadeCase> cases = {
        {"standard wave", {}, "a.wav", "a.wav", "pcm_s16le,22050,1,352800"},
        {"8 kHz 8 bit wave", {"--format", "0"}, "b.WAV", "b.WAV", "pcm_u8,8000,1,64000"},
        {"GSM wave", {"--format", "27"}, "c.wav", "c.wav", "gsm_ms,8000,1,13000"},
        {"MP3 at 128 kbps", {}, "d.mp3", "d.mp3", "mp3,44100,1,128000"},
        {"no ending becomes MP3", {"--quality", "0"}, "e", "e.mp3", "mp3,44100,1,32000"},
        {"MP3 at 320 kbps", {"--bitrate", "320", "--rate", "5", "--pitch", "3"}, "f.mp3", "f.mp3", "mp3,44100,1,320000"},
    };
    for (const MadeCase &c : cases) {
        SCOPED_TRACE(c.name);
        const Result r = run(c.options + QStringList{input(), dir.filePath(c.output)});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_EQ(probe(dir.filePath(c.made)), c.probe);
        EXPECT_TRUE(r.out.startsWith("Saved to ")) << r.out.toStdString();
        EXPECT_EQ(QDir(tmp()).entryList(QDir::Files), QStringList());  // the temporary wave is gone
    }
}

TEST_F(ToFileTest, TheSameTextMakesTheSameFileEveryTime)
{
    // Resampled speech (22 kHz wave, 44 kHz for the MP3) must not carry random dither.
    for (const char *name : {"same.wav", "same.mp3"}) {
        QByteArray made[2];
        for (QByteArray &bytes : made) {
            const Result r = run({input(), dir.filePath(name)});
            ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
            QFile file(dir.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            bytes = file.readAll();
        }
        EXPECT_GT(made[0].size(), 1000) << name;
        EXPECT_TRUE(made[0] == made[1]) << name;
    }
}

TEST_F(ToFileTest, ReadsStandardInputAndRichText)
{
    const Result fromStdin = run({"-", dir.filePath("stdin.wav")}, kText);
    EXPECT_EQ(fromStdin.exitCode, 0) << fromStdin.err.toStdString();
    ASSERT_TRUE(WriteFile(dir.filePath("in.rtf"), "{\\rtf1\\ansi{\\b Bold} words to read.\\par}"));
    const Result fromRtf = run({dir.filePath("in.rtf"), dir.filePath("rtf.wav")});
    EXPECT_EQ(fromRtf.exitCode, 0) << fromRtf.err.toStdString();
    // Both are speech of some length, not an empty file.
    EXPECT_GT(QFileInfo(dir.filePath("stdin.wav")).size(), 22050);
    EXPECT_GT(QFileInfo(dir.filePath("rtf.wav")).size(), 22050);
}

struct RefusedCase {
    const char *name;
    QStringList args;
    QString message;
    QString absent;  // a file that must not exist afterwards
};

TEST_F(ToFileTest, RefusesWhatCannotBeMadeWithAReason)
{
    ASSERT_TRUE(WriteFile(dir.filePath("binary.txt"), QByteArray("\x7f" "ELF\x02\x01\x01\x00\x00\x00", 10)));
    ASSERT_TRUE(WriteFile(dir.filePath("empty.txt"), "  \r\n"));
    const QList<RefusedCase> cases = {
        {"missing input", {dir.filePath("none.txt"), dir.filePath("x.mp3")}, "Cannot read", dir.filePath("x.mp3")},
        {"binary input", {dir.filePath("binary.txt"), dir.filePath("x.mp3")}, "is not a text file", dir.filePath("x.mp3")},
        {"empty input", {dir.filePath("empty.txt"), dir.filePath("x.mp3")}, "There is no text to read", dir.filePath("x.mp3")},
        {"missing folder", {input(), dir.filePath("no/x.mp3")}, "The output folder does not exist.", dir.filePath("no")},
        {"True Speech", {"--format", "18", input(), dir.filePath("t.wav")}, "True Speech", dir.filePath("t.wav")},
        {"full disk, MP3", {input(), "/dev/full"}, "Failed to write buffer to file", "/dev/full.mp3"},
    };
    for (const RefusedCase &c : cases) {
        SCOPED_TRACE(c.name);
        const Result r = run(c.args);
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_TRUE(r.err.contains(c.message)) << r.err.toStdString();
        if (!c.absent.isEmpty()) {
            EXPECT_FALSE(QFileInfo::exists(c.absent));
        }
        EXPECT_EQ(QDir(tmp()).entryList(QDir::Files), QStringList());
    }
    struct stat st {};
    ASSERT_EQ(stat("/dev/full", &st), 0);
    EXPECT_TRUE(S_ISCHR(st.st_mode));  // never taken for a partial file and removed
}

TEST_F(ToFileTest, CtrlCCancelsAndLeavesNoFiles)
{
    QByteArray longText;
    for (int i = 0; i < 400; ++i)
        longText += "This sentence is one of many in a long text that takes a while to read. ";
    ASSERT_TRUE(WriteFile(input(), longText));
    const QString mp3 = dir.filePath("long.mp3");
    QProcess p;
    p.setProcessEnvironment(environment());
    p.start(SONAMARK_CLI_PATH, {"to-file", input(), mp3});
    ASSERT_TRUE(p.waitForStarted());
    // Once the temporary wave has speech in it, interrupt.
    for (int i = 0; i < 200; ++i) {
        const QStringList files = QDir(tmp()).entryList(QDir::Files);
        if (!files.isEmpty() && QFileInfo(QDir(tmp()).filePath(files.first())).size() > 100000)
            break;
        p.waitForFinished(50);
    }
    ::kill(pid_t(p.processId()), SIGINT);
    ASSERT_TRUE(p.waitForFinished(60000));
    EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(p.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(p.readAllStandardError()).contains("Read To File cancelled by user."));
    EXPECT_FALSE(QFileInfo::exists(mp3));
    EXPECT_EQ(QDir(tmp()).entryList(QDir::Files), QStringList());
}

TEST_F(ToFileTest, ProgressBarOnlyOnATerminal)
{
    const Result quiet = run({input(), dir.filePath("quiet.mp3")});
    EXPECT_EQ(quiet.exitCode, 0);
    EXPECT_FALSE(quiet.err.contains("] 100%")) << quiet.err.toStdString();
    if (QStandardPaths::findExecutable("script").isEmpty())
        GTEST_SKIP() << "script (util-linux) is not installed";
    // script gives the program a terminal for its standard error.
    QProcess p;
    p.setProcessEnvironment(environment());
    p.start("script", {"-qec", QStringLiteral("'%1' to-file '%2' '%3'").arg(SONAMARK_CLI_PATH, input(), dir.filePath("tty.mp3")),
                       "/dev/null"});
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString shown = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_EQ(p.exitCode(), 0);
    EXPECT_TRUE(shown.contains("] 50%")) << shown.toStdString();
    EXPECT_TRUE(shown.contains("[########################################] 100%")) << shown.toStdString();
}
