// sonamark-cli batch, run as a program: twenty mixed documents converted side by side,
// the skipped ones listed, the exit codes, and Ctrl+C half-way.
#include "../audio/audio_fixture.h"
#include "../audio/batch_corpus.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <gtest/gtest.h>

using namespace batchtest;

namespace {

struct Result {
    int exitCode = -1;
    QString out, err;
};

class BatchCliTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        QDir().mkpath(dir.filePath("docs"));
        QDir().mkpath(dir.filePath("home"));
        corpus = MakeCorpus(dir.filePath("docs"), QStringLiteral(SONAMARK_READER_TEST_DATA "/quarterly_report.doc"));
    }
    void start(QProcess &p, const QStringList &args)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("SONAMARK_HOME", dir.filePath("home"));
        env.insert("PULSE_SERVER", "unix:/nonexistent");
        p.setProcessEnvironment(env);
        p.start(SONAMARK_CLI_PATH, QStringList{"batch"} + args);
    }
    Result run(const QStringList &args)
    {
        QProcess p;
        start(p, args);
        Result r;
        if (!p.waitForFinished(300000)) {
            p.kill();
            p.waitForFinished();
            return r;
        }
        r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
        r.out = QString::fromUtf8(p.readAllStandardOutput());
        r.err = QString::fromUtf8(p.readAllStandardError());
        return r;
    }
    QTemporaryDir dir;
    Corpus corpus;
};

} // namespace

TEST_F(BatchCliTest, TwentyDocumentsOnTwoJobs)
{
    const Result r = run(QStringList{"--jobs", "2", "--quality", "0"} + corpus.files);
    EXPECT_EQ(r.exitCode, 1) << r.err.toStdString();
    EXPECT_EQ(r.out, "There were 18 files converted.\n");
    for (const QString &doc : corpus.converted) {
        SCOPED_TRACE(doc.toStdString());
        EXPECT_TRUE(Mp3Decodes(Mp3Of(doc)));
    }
    for (const QString &doc : corpus.skipped) {
        EXPECT_FALSE(QFileInfo::exists(Mp3Of(doc)));
        EXPECT_TRUE(r.err.contains("skipped " + doc + ": ")) << r.err.toStdString();
    }
    EXPECT_TRUE(r.err.contains("empty.txt: no text to read"));
    EXPECT_TRUE(r.err.contains("binary.txt: cannot be read"));
    EXPECT_EQ(r.err.count("skipped "), 2);
    // No temporary wave file is left behind in the data folder.
    EXPECT_TRUE(QDir(dir.filePath("home")).entryList({"*.wav"}).isEmpty());
}

TEST_F(BatchCliTest, AllConvertedIsExitZeroAndTheQualityIsTheOneAsked)
{
    const QString doc = corpus.converted.first();
    const Result low = run({"--quality", "0", doc});
    EXPECT_EQ(low.exitCode, 0) << low.err.toStdString();
    EXPECT_EQ(low.out, "There was 1 file converted.\n");
    const qint64 lowSize = QFileInfo(Mp3Of(doc)).size();
    const Result high = run({"--bitrate", "256", doc});
    EXPECT_EQ(high.exitCode, 0);
    EXPECT_GT(QFileInfo(Mp3Of(doc)).size(), 6 * lowSize);  // 256 against 32 kbps
}

TEST_F(BatchCliTest, BadArgumentsAreExitTwo)
{
    for (const QStringList &args : {QStringList{}, QStringList{"--jobs", "0", "a.txt"},
                                    QStringList{"--bitrate", "100", "a.txt"}, QStringList{"--quality", "4", "a.txt"},
                                    QStringList{"--loud", "a.txt"}}) {
        const Result r = run(args);
        EXPECT_EQ(r.exitCode, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(r.err.contains("usage: sonamark-cli batch")) << r.err.toStdString();
    }
    const Result none = run({dir.filePath("docs/nothing.txt"), dir.filePath("docs/picture.png")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.out, "No files were converted.\n");
    EXPECT_TRUE(none.err.contains("nothing.txt: no such file"));
    EXPECT_TRUE(none.err.contains("picture.png: not a .txt, .rtf, .xml or .doc document"));
}

TEST_F(BatchCliTest, CtrlCHalfWayStopsTheRest)
{
    // Long documents, one job: the interrupt comes while the first ones are converted.
    QStringList docs;
    QByteArray longText;
    for (int i = 0; i < 40; ++i)
        longText += "This sentence makes the document long enough to take a while to read. ";
    for (int i = 0; i < 10; ++i) {
        docs << dir.filePath(QStringLiteral("docs/long%1.txt").arg(i));
        ASSERT_TRUE(Write(docs.last(), longText));
    }
    QProcess p;
    start(p, QStringList{"--jobs", "1"} + docs);
    ASSERT_TRUE(p.waitForStarted());
    // Wait until the first MP3 is there, then interrupt.
    for (int i = 0; i < 600 && !QFileInfo::exists(Mp3Of(docs[0])); ++i)
        QThread::msleep(50);
    ASSERT_TRUE(QFileInfo::exists(Mp3Of(docs[0])));
    QThread::msleep(100);
    ::kill(pid_t(p.processId()), SIGINT);
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_EQ(p.exitCode(), 1);
    EXPECT_TRUE(out.startsWith("Read To Files cancelled by user.")) << out.toStdString();
    EXPECT_FALSE(QFileInfo::exists(Mp3Of(docs.last())));
    int made = 0;
    for (const QString &doc : docs)
        made += QFileInfo::exists(Mp3Of(doc));
    EXPECT_LT(made, docs.size());
    // Every MP3 left is whole: a conversion cut off by the interrupt leaves none.
    for (const QString &doc : docs)
        if (QFileInfo::exists(Mp3Of(doc)))
            EXPECT_TRUE(Mp3Decodes(Mp3Of(doc))) << doc.toStdString();
}
