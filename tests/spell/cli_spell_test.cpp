// sonamark-cli spell, run as a program on the real dictionaries.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct CliRun {
    int status = -1;
    QString out, err;
};

CliRun Spell(const QStringList &args, const QByteArray &input = {})
{
    QProcess p;
    p.start(QStringLiteral(SONAMARK_CLI_PATH), QStringList{QStringLiteral("spell")} + args);
    EXPECT_TRUE(p.waitForStarted(10000));
    p.write(input);
    p.closeWriteChannel();
    EXPECT_TRUE(p.waitForFinished(120000));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

class CliSpell : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFile::exists(QStringLiteral("/usr/share/hunspell/en_US.dic")))
            GTEST_SKIP() << "hunspell-en-us is not installed";
    }
    QString file(const QByteArray &bytes)
    {
        const QString path = dir.filePath(QStringLiteral("in%1.txt").arg(++m_files));
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return path;
    }
    QTemporaryDir dir;

private:
    int m_files = 0;
};

TEST_F(CliSpell, UnknownWordsInTextOrderWithPlacesAndSuggestions)
{
    const CliRun r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), QStringLiteral("-")},
                        "All good here.\r\nBut (recieve) this,\nand recieve\xc3\xa9 it.\n");
    EXPECT_EQ(r.status, 1) << r.err.toStdString();
    const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << r.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("2:6\trecieve\treceive"))) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("3:5\trecieveé\t"))) << lines[1].toStdString();
}

TEST_F(CliSpell, AllKnownAndEmptyAreClean)
{
    CliRun r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), file("The cat sat on the mat.\n")});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(r.out.isEmpty());
    r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), file("")});
    EXPECT_EQ(r.status, 0);
}

TEST_F(CliSpell, SecondLanguage)
{
    if (!QFile::exists(QStringLiteral("/usr/share/hunspell/de_DE.dic")))
        GTEST_SKIP() << "hunspell-de-de is not installed";
    const CliRun r = Spell({QStringLiteral("--dict"), QStringLiteral("de_DE"), file("Die Stra\xc3\x9f" "e ist ein Tset.\n")});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("1:20\tTset\tTest"))) << r.out.toStdString();
}

TEST_F(CliSpell, BadInputGivesAClearMessageOrACleanResult)
{
    CliRun r = Spell({QStringLiteral("--dict"), QStringLiteral("xx_XX"), file("text\n")});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("xx_XX")));
    r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), dir.filePath(QStringLiteral("missing.txt"))});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("cannot read")));
    r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), file(QByteArray("ELF\0\x01\x02 binary", 14))});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("not a text")));
    r = Spell({});
    EXPECT_EQ(r.status, 2);
    r = Spell({QStringLiteral("--dict")});
    EXPECT_EQ(r.status, 2);
    // Invalid UTF-8 is read as Windows-1252: a clean result.
    r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), file("caf\xe9 and \xff\xfe wrld\n")});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.out.contains(QStringLiteral("\twrld\t")));
    // A word of 10,000 letters is unknown, without suggestions.
    r = Spell({QStringLiteral("--dict"), QStringLiteral("en_US"), file("good " + QByteArray(10000, 'a') + "\n")});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("1:6\t") + QString(10000, QLatin1Char('a')) + QStringLiteral("\t\n")));
}

TEST_F(CliSpell, DamagedDictionaryIsRefused)
{
    QFile::copy(QStringLiteral("/usr/share/hunspell/en_US.aff"), dir.filePath(QStringLiteral("zz_ZZ.aff")));
    file("");  // keeps the numbering apart
    QFile dic(dir.filePath(QStringLiteral("zz_ZZ.dic")));
    ASSERT_TRUE(dic.open(QIODevice::WriteOnly));
    dic.write("4000000000\nword\n");
    dic.close();
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DICPATH"), dir.path());
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(SONAMARK_CLI_PATH),
            {QStringLiteral("spell"), QStringLiteral("--dict"), QStringLiteral("zz_ZZ"), QStringLiteral("-")});
    p.closeWriteChannel();
    ASSERT_TRUE(p.waitForFinished(30000));
    EXPECT_EQ(p.exitCode(), 2);
    EXPECT_TRUE(QString::fromUtf8(p.readAllStandardError()).contains(QStringLiteral("damaged")));
}

} // namespace
