// Macros that the fuzz target found breaking a run, run again the way it runs them.
#include "engine_fixture.h"

#include <QDir>
#include <QFile>

using namespace engine;

namespace {

const QString kFindings = QStringLiteral(SONAMARK_ENGINE_FUZZ_FINDINGS);

class FuzzFindingsTest : public MacroRunTest {
protected:
    void SetUp() override
    {
        MacroRunTest::SetUp();
        // As in the fuzz target: each look at the clock moves it a second on, and
        // delays do not sleep, so every run ends by its limits at once.
        SetMacroClock([this] { return m_now += 1; });
        shell::SetDelaySleeper([](int) {});
    }
    double m_now = 0;
};

} // namespace

TEST_F(FuzzFindingsTest, EveryFindingRunsToItsEnd)
{
    const QFileInfoList files = QDir(kFindings).entryInfoList({QStringLiteral("*.txt")}, QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QFileInfo &info : files) {
        SCOPED_TRACE(info.fileName().toStdString());
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        hotkeys::table().reset();
        m_now = 0;
        const int n = addMacro(QStringLiteral("Fuzzed"), QString::fromUtf8(file.readAll()));
        RunMacro(n);
        EXPECT_FALSE(runState().MacroRunning);
    }
}

TEST_F(FuzzFindingsTest, AConditionBeyondTheIntegerRangeIsAnOverflowFault)
{
    EXPECT_EQ(run({"[CANCEL IF 999999999999999999999999999900000000000000000000000000040]", "a"}), QString());
    ASSERT_EQ(fakes.errors.reports.size(), 1);
    EXPECT_TRUE(fakes.errors.reports[0].startsWith("Error 6 in ")) << fakes.errors.reports[0].toStdString();
    EXPECT_EQ(fakes.keys.sent, QStringList{"SENDKEYS a"});  // the run goes on behind the fault
}
