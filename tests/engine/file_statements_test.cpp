// The file statements on real files in a temporary folder, run as whole macros.
#include "engine_fixture.h"

#include "engine/open_files.h"
#include "search/find_files.h"
#include "reader/box_reader_text.h"
#include "reader/memory_text_box.h"
#include "reader/text_box.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList &list, std::ostream *os) { *os << list.join(QLatin1Char('|')).toStdString(); }
QT_END_NAMESPACE

namespace {

class FileStatementTest : public MacroRunTest {
protected:
    void SetUp() override
    {
        MacroRunTest::SetUp();
        ASSERT_TRUE(dir.isValid());
        reader::SetTextBox(&box);
        platform::services().readerText = &readerText;
    }
    void TearDown() override
    {
        reader::SetTextBox(nullptr);
        MacroRunTest::TearDown();
    }
    QString path(const QString &name) const { return dir.filePath(name); }
    // A literal naming a file in the folder.
    QString lit(const QString &name) const { return QLatin1Char('"') + path(name) + QLatin1Char('"'); }
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray read(const QString &name) const
    {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }

    QTemporaryDir dir;
    reader::MemoryTextBox box;
    reader::BoxReaderText readerText;
};

TEST_F(FileStatementTest, AReadLoopEndsAtTheEndOfTheFileWithoutATest)
{
    write("in.txt", "first\r\nsecond line\r\nthird\r\n");
    EXPECT_EQ(run({"[N=0]", "[OPEN 1 " + lit("in.txt") + "]", "[LOOP N<100]", "[READ 1 L]", "[N=N+1]",
                   "[LAST=L]", "[ENDLOOP]", "[CLOSE 1]", "[DONE=\"yes\"]"}),
              QString());
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("N"), "3");
    EXPECT_EQ(var("LAST"), "third");
    EXPECT_EQ(var("DONE"), "yes");
    EXPECT_EQ(engine::runState().OpenFileCount, 0);
}

TEST_F(FileStatementTest, ReadingPastTheEndOutsideALoopGivesAnEmptyString)
{
    write("one.txt", "only\n");
    run({"[OPEN 1 " + lit("one.txt") + "]", "[READ 1 A]", "[READ 1 B]", "[CLOSE 1]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("A"), "only");
    EXPECT_EQ(var("B"), "");
}

TEST_F(FileStatementTest, WrittenLinesReadBackAsUtf8WithCrLfAndQuotesRestored)
{
    run({"[V=\"müde Grüße\"]", "[F=" + lit("out.txt") + "]", "[OPEN 2 F]", "[WRITE 2 \"literal text\"]",
         "[WRITE 2 V]", "[WRITE 2 \"\"]", "[N=42]", "[WRITE 2 N]", "[CLOSE 2]", "[OPEN 3 F]", "[READ 3 A]",
         "[READ 3 B]", "[CLOSE 3]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(read("out.txt"), QByteArray("literal text\r\nm\xC3\xBC" "de Gr\xC3\xBC\xC3\x9F" "e\r\n\r\n42\r\n"));
    EXPECT_EQ(var("A"), "literal text");
    EXPECT_EQ(var("B"), QStringLiteral("müde Grüße"));
}

TEST_F(FileStatementTest, LinesInWindows1252AreDecodedAndAByteOrderMarkIsDropped)
{
    write("legacy.txt", "caf\xE9\r\n");
    write("bom.txt", "\xEF\xBB\xBFstart\n");
    run({"[OPEN 1 " + lit("legacy.txt") + "]", "[READ 1 A]", "[CLOSE 1]", "[OPEN 2 " + lit("bom.txt") + "]",
         "[READ 2 B]", "[CLOSE 2]"});
    EXPECT_EQ(var("A"), QStringLiteral("café"));
    EXPECT_EQ(var("B"), "start");
}

TEST_F(FileStatementTest, TheModeComesFromTheStatementsOfTheSameIdUpToItsClose)
{
    write("in.txt", "x\n");
    EXPECT_EQ(run({"[OPEN 1 " + lit("in.txt") + "]", "[CLOSE 1]"}), QString());
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Missing READ/WRITE statements"});
    run({"[OPEN 1 " + lit("in.txt") + "]", "[READ 1 A]", "[WRITE 1 A]", "[CLOSE 1]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Can't READ & WRITE to same file"});
    EXPECT_EQ(read("in.txt"), "x\n");  // not truncated by an output open
    run({"[OPEN 4 " + lit("missing.txt") + "]", "[READ 4 A]", "[CLOSE 4]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR File does not exist"});
    // A folder is not a file to read.
    run({"[OPEN 4 \"" + dir.path() + "\"]", "[READ 4 A]", "[CLOSE 4]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR File does not exist"});
}

TEST_F(FileStatementTest, AnOpenIdOpenedAgainAndATenthFileAreFatal)
{
    write("in.txt", "a\nb\n");
    QStringList again{"[N=0]", "[LOOP N<2]", "[OPEN 1 " + lit("in.txt") + "]", "[READ 1 A]", "[N=N+1]",
                      "[ENDLOOP]", "[CLOSE 1]"};
    run(again);
    EXPECT_EQ(messages(), QStringList{"1) Line 3 FATAL ERROR File already open"});

    QStringList nine;
    for (int id = 2; id <= 9; ++id)
        nine << QStringLiteral("[OPEN %1 ").arg(id) + lit("in.txt") + "]" << QStringLiteral("[READ %1 A]").arg(id);
    QStringList tenth = nine + again;
    for (int id = 2; id <= 9; ++id)
        tenth << QStringLiteral("[CLOSE %1]").arg(id);
    run(tenth);
    EXPECT_EQ(messages(), QStringList{"1) Line 19 FATAL ERROR Too many open files for [OPEN n File] statement"});
    EXPECT_EQ(engine::runState().OpenFileCount, 0);
}

TEST_F(FileStatementTest, NumbersBeyondAnyFileNumberAreInvalidNotWrappedRound)
{
    write("in.txt", "a\n");
    // 4294967297 would wrap round to 1 in a 32-bit conversion.
    run({"[OPEN 4294967297 " + lit("in.txt") + "]", "[READ 4294967297 A]", "[CLOSE 4294967297]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 FATAL ERROR Invalid file number for [OPEN n File] statement"});
    EXPECT_EQ(engine::runState().OpenFileCount, 0);

    run({"[N=66666666666666666666666]", "[OPEN 1 " + lit("in.txt") + "]", "[READ 1 A]", "[READ N A]", "[CLOSE 1]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 4 FATAL ERROR Invalid file number for [READ n Rec] statement"});
}

TEST_F(FileStatementTest, FilesLeftOpenByAFatalErrorAreClosedWithTheirDataComplete)
{
    QStringList lines{"[OPEN 1 " + lit("log.txt") + "]"};
    for (int i = 0; i < 500; ++i)
        lines << QStringLiteral("[WRITE 1 \"line %1\"]").arg(i);
    lines << "[OPEN 2 " + lit("missing.txt") + "]" << "[READ 2 X]" << "[CLOSE 2]" << "[CLOSE 1]";
    run(lines);
    EXPECT_EQ(messages(), QStringList{"1) Line 502 FATAL ERROR File does not exist"});
    EXPECT_FALSE(engine::IsFileOpen(1));
    const QByteArray data = read("log.txt");
    EXPECT_EQ(data.count('\n'), 500);
    EXPECT_TRUE(data.endsWith("line 499\r\n"));
    EXPECT_TRUE(QFile::remove(path("log.txt")));
}

TEST_F(FileStatementTest, AFileDeletedWhileOpenIsStillReadToItsEnd)
{
    write("Grüße 日本.txt", "one\ntwo\n");
    run({"[F=" + lit("Grüße 日本.txt") + "]", "[OPEN 1 F]", "[KILLFILE F]", "[READ 1 A]", "[READ 1 B]", "[CLOSE 1]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_FALSE(QFile::exists(path("Grüße 日本.txt")));
    EXPECT_EQ(var("A"), "one");
    EXPECT_EQ(var("B"), "two");
}

TEST_F(FileStatementTest, CloseWithNothingOpenIsReportedAndTheMacroGoesOn)
{
    write("in.txt", "a\n");
    run({"[OPEN 1 " + lit("in.txt") + "]", "[READ 1 A]", "[CLOSE 1]", "[CLOSE 1]", "[AFTER=1]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 4 No files open for [CLOSE n] statement"});
    EXPECT_EQ(var("AFTER"), "1");
}

TEST_F(FileStatementTest, WritesIntoAFolderThatCannotTakeFilesGoNowhereAndChangeNothing)
{
    run({"[OPEN 1 \"/proc/sonamark-test.txt\"]", "[WRITE 1 \"x\"]", "[CLOSE 1]", "[AFTER=1]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("AFTER"), "1");
    EXPECT_FALSE(QFile::exists("/proc/sonamark-test.txt"));
}

TEST_F(FileStatementTest, LoadAndSaveGoThroughTheReadersText)
{
    write("doc with blanks.txt", "Hello\r\nreader\r\n");
    run({"[LOADFILE " + lit("doc with blanks.txt") + "]", "[T=SONAMARKTEXT]", "[SAVEFILE " + lit("copy.txt") + "]",
         "[SAVEFILE " + lit("copy.rtf") + "]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("T"), "Hello\nreader");
    EXPECT_EQ(read("copy.txt"), "Hello\r\nreader\r\n");
    EXPECT_TRUE(read("copy.rtf").startsWith("{\\rtf1"));
    EXPECT_EQ(shell::app().CurrentFile, path("doc with blanks.txt"));
}

TEST_F(FileStatementTest, LoadAndSaveRefuseWhatCannotBeDone)
{
    box.loadPlainText(QString());
    run({"[LOADFILE " + lit("none.txt") + "]", "[SAVEFILE " + lit("empty.txt") + "]",
         "[SAVEFILE " + lit("no such folder/x.txt") + "]", "[LOADFILE Unset]"});
    EXPECT_EQ(messages(), (QStringList{"1) Line 1 File not found for [LOADFILE File] statement",
                                       "2) Line 2 No text to save for [SAVEFILE File] statement",
                                       "3) Line 3 Folder not found for [SAVEFILE File] statement",
                                       "4) Line 4 Illegal file name for [LOADFILE File] statement"}));
    box.loadPlainText("text");
    run({"[SAVEFILE \"/proc/sonamark-test.txt\"]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 Error saving file /proc/sonamark-test.txt for [SAVEFILE File] statement"});
}

TEST_F(FileStatementTest, AHugeFileIsRefusedBeforeItIsRead)
{
    QFile big(path("big.txt"));
    ASSERT_TRUE(big.open(QIODevice::WriteOnly));
    ASSERT_TRUE(big.resize(qint64(500) << 20));  // sparse: no disk used
    big.close();
    box.loadPlainText("kept");
    run({"[LOADFILE " + lit("big.txt") + "]"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 File too large (over 64 MB) for [LOADFILE File] statement"});
    EXPECT_EQ(box.text(), "kept");
}

TEST_F(FileStatementTest, CopyReplacesAnExistingFileAndIrenameMoves)
{
    write("a.txt", "new content");
    write("b.txt", "old content that is longer");
    run({"[D=" + lit("b.txt") + "]", "[COPYFILE " + lit("a.txt") + " D]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(read("b.txt"), "new content");
    EXPECT_EQ(read("a.txt"), "new content");
    run({"[IRENAME=" + lit("moved.txt") + "]", "[COPYFILE " + lit("a.txt") + " IRENAME]"});
    EXPECT_EQ(read("moved.txt"), "new content");
    EXPECT_FALSE(QFile::exists(path("a.txt")));
    // No temporary copies are left beside the destination.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(FileStatementTest, CopyRefusals)
{
    write("a.txt", "x");
    run({"[COPYFILE " + lit("none.txt") + " " + lit("b.txt") + "]",
         "[COPYFILE " + lit("a.txt") + " " + lit("nowhere/b.txt") + "]",
         "[COPYFILE " + lit("a.txt") + " " + lit("A.TXT") + "]", "[COPYFILE " + lit("a.txt") + " Unset]"});
    EXPECT_EQ(messages(),
              (QStringList{"1) Line 1 Source file does not exist for [COPYFILE FileS FileD] statement",
                           "2) Line 2 Destination path does not exist for [COPYFILE FileS FileD] statement",
                           "3) Line 3 Destination and source files must be different for [COPYFILE FileS FileD] statement",
                           "4) Line 4 2nd file variable not assigned for [COPYFILE FileS FileD] statement"}));
    EXPECT_EQ(read("a.txt"), "x");
}

TEST_F(FileStatementTest, KillRemovesFilesAndReportsMissingOnes)
{
    write("gone.txt", "x");
    run({"[KILLFILE " + lit("gone.txt") + "]", "[KILLFILE " + lit("gone.txt") + "]",
         "[KILLFILE \"" + dir.path() + "\"]"});
    EXPECT_FALSE(QFile::exists(path("gone.txt")));
    EXPECT_EQ(messages(), (QStringList{"1) Line 2 File not found for [KILLFILE File] statement",
                                       "2) Line 3 File not found for [KILLFILE File] statement"}));
    EXPECT_TRUE(QDir(dir.path()).exists());
}

TEST_F(FileStatementTest, PathExistsAnswersAndCreatesFolders)
{
    write("f.txt", "x");
    run({"[PATHEXISTS " + lit("f.txt") + " A]", "[PATHEXISTS " + lit("none") + " B]",
         "[PATHEXISTS \"" + dir.path() + "\" C]", "[PATHEXISTS " + lit("new/deep") + " CREATE]", "[D=CREATE]",
         "[PATHEXISTS " + lit("x.folder") + " CREATE]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("A"), "YES");
    EXPECT_EQ(var("B"), "NO");
    EXPECT_EQ(var("C"), "YES");
    EXPECT_EQ(var("D"), "YES");
    EXPECT_TRUE(QDir(path("new/deep")).exists());
    EXPECT_EQ(var("CREATE"), "NO");
    EXPECT_FALSE(QDir(path("x.folder")).exists());
}

TEST_F(FileStatementTest, ShortPathIsTheCanonicalAbsolutePath)
{
    write("real.txt", "x");
    ASSERT_TRUE(QFile::link(path("real.txt"), path("link.txt")));
    run({"[SHORTPATH " + lit("link.txt") + " P]", "[SHORTPATH \"" + dir.path() + "/./sub/../real.txt\" Q]"});
    const QString canonical = QFileInfo(path("real.txt")).canonicalFilePath();
    EXPECT_EQ(var("P"), canonical);
    EXPECT_EQ(var("Q"), canonical);
}

TEST_F(FileStatementTest, DateDiffCountsCalendarDaysAcrossLeapDaysAndClockChanges)
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
    write("stamped.txt", "x");
    QFile stamped(path("stamped.txt"));
    ASSERT_TRUE(stamped.open(QIODevice::ReadWrite));
    // 01:30 on the night the clocks go forward.
    ASSERT_TRUE(stamped.setFileTime(QDateTime(QDate(2024, 3, 31), QTime(1, 30)), QFileDevice::FileModificationTime));
    stamped.close();
    run({"[DATEDIFF \"2024-02-28\" \"2024-03-01\" A]", "[DATEDIFF \"2024-03-01\" \"2024-02-28\" B]",
         "[DATEDIFF " + lit("stamped.txt") + " \"2024-04-01 00:30\" C]", "[F=\"12/31/2023\"]",
         "[DATEDIFF F \"2024-01-01\" D]"});
    qunsetenv("TZ");
    tzset();
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("A"), "2");
    EXPECT_EQ(var("B"), "-2");
    EXPECT_EQ(var("C"), "1");
    EXPECT_EQ(var("D"), "1");
}

TEST_F(FileStatementTest, DateDiffTellsMissingFilesFromBadDates)
{
    run({"[DATEDIFF " + lit("missing.txt") + " \"2024-01-01\" A]", "[DATEDIFF \"2024-01-01\" \"someday\" B]",
         "[DATEDIFF \"2024-01-01\" \"C:\\nothing\" C]"});
    EXPECT_EQ(messages(),
              (QStringList{"1) Line 1 (DateFrom) File not found for [DATEDIFF DateFrom DateTo Diff] statement",
                           "2) Line 2 Invalid date for [DATEDIFF DateFrom DateTo Diff] statement",
                           "3) Line 3 (DateTo) File not found for [DATEDIFF DateFrom DateTo Diff] statement"}));
}

TEST_F(FileStatementTest, FindStringSearchesForwardBackwardAndBeyondLatin1)
{
    run({"[S=\"日本語のテキストとテキスト\"]", "[N=0]", "[FINDSTRING S \"テキスト\" N]", "[A=N]", "[N=A+1]",
         "[FINDSTRING S \"テキスト\" N]", "[B=N]", "[N=-1]", "[FINDSTRING S \"日\" N]", "[C=N]", "[N=-1]",
         "[FINDSTRING S \"本\" N]", "[D=N]", "[N=0-100]", "[FINDSTRING S \"と\" N]", "[E=N]", "[N=100]",
         "[FINDSTRING S \"日\" N]", "[F=N]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(var("A"), "5");
    EXPECT_EQ(var("B"), "10");
    EXPECT_EQ(var("C"), "1");
    EXPECT_EQ(var("D"), "0");   // backward from the first character only
    EXPECT_EQ(var("E"), "9");   // a start beyond the string searches back from its end
    EXPECT_EQ(var("F"), "1");   // and forward from its beginning
}

TEST_F(FileStatementTest, FindStringMessages)
{
    run({"[S=\"abc\"]", "[FINDSTRING Unset \"a\" N]", "[FINDSTRING S Unset N]", "[FINDSTRING S \"a\"]"});
    EXPECT_EQ(messages(),
              (QStringList{"1) Line 2 String variable not assigned for [FINDSTRING String Substring NChar] statement",
                           "2) Line 3 Sub-string variable not assigned for [FINDSTRING String Substring NChar] statement",
                           "3) Line 4 Search variable not defined for [FINDSTRING String Substring NChar] statement"}));
}

} // namespace

namespace {

// The finder window stand-in: picks the files it is given when it opens.
class FindFilesStatementTest : public FileStatementTest {
protected:
    void SetUp() override
    {
        FileStatementTest::SetUp();
        search::findFilesState().reset();
        search::SetFindFilesOpener([this] {
            ++opened;
            QList<QByteArray> bytes;
            for (const QString &p : std::as_const(picks))
                bytes << QFile::encodeName(p);
            search::findFilesState().select(picks, bytes);
        });
    }
    void TearDown() override
    {
        search::SetFindFilesOpener(nullptr);
        QDir::setCurrent(before);
        FileStatementTest::TearDown();
    }
    QStringList picks;
    int opened = 0;
    QString before = QDir::currentPath();
};

TEST_F(FindFilesStatementTest, PicksGoToTheVariableJoinedByCrLf)
{
    picks = {path("a.txt"), path("b.txt")};
    run({"[FINDFILES \"" + dir.path() + "\" Sel]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(var("SEL"), path("a.txt") + "\r\n" + path("b.txt"));
    EXPECT_EQ(search::findFilesState().LastFolder, dir.path() + "/");
}

TEST_F(FindFilesStatementTest, AVariableHoldingAPathGetsTheListWrittenToThatFile)
{
    picks = {path("a.txt"), path("b.txt")};
    run({"[OUT=\"" + dir.path() + "/list\"]", "[FINDFILES \"" + dir.path() + "\" OUT]"});
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(read("list.txt"), (path("a.txt") + "\r\n" + path("b.txt") + "\r\n").toUtf8());
}

TEST_F(FindFilesStatementTest, PicksForTheReadersTextAndNothingPicked)
{
    picks = {path("a.txt")};
    run({"[FINDFILES \"" + dir.path() + "\" SONAMARKTEXT]"});
    EXPECT_EQ(box.text(), path("a.txt"));
    picks.clear();
    run({"[S=\"old\"]", "[FINDFILES \"" + dir.path() + "\" S]"});
    EXPECT_EQ(var("S"), "");
}

TEST_F(FindFilesStatementTest, MissingFoldersAreReportedWithoutOpeningTheFinder)
{
    run({"[FINDFILES \"" + dir.path() + "/none\" S]", "[OUT=\"" + dir.path() + "/none/list.txt\"]",
         "[FINDFILES \"" + dir.path() + "\" OUT]"});
    EXPECT_EQ(messages(),
              (QStringList{"1) Line 1 Start-in folder does not exist for [FINDFILES StartPath Selection] statement",
                           "2) Line 3 Folder does not exist for Selection output for [FINDFILES StartPath Selection] statement"}));
    EXPECT_EQ(opened, 0);
}

} // namespace
