// The read-to-file rules that need no engine: progress estimate, speed correction, the
// output-name checks.
#include "audio/read_to_file.h"
#include "audio_fixture.h"
#include "shell/app_state.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

struct ProgressCase {
    double now, start, end;
    bool makeMp3;
    int percent;
};

TEST(ReadToFile, ProgressFillsHalfTheBarForAnMp3AndAllOfItForAWave)
{
    const ProgressCase cases[] = {
        {10, 10, 20, false, 0},  {15, 10, 20, false, 50}, {15, 10, 20, true, 25},
        {19, 10, 20, true, 45},  {25, 10, 20, true, 50},  {25, 10, 20, false, 100},
        {10, 10, 10, false, 100},
    };
    for (const ProgressCase &c : cases)
        EXPECT_EQ(audio::ProgressWAV(c.now, c.start, c.end, c.makeMp3), c.percent) << c.now << " " << c.makeMp3;
}

struct SpeedCase {
    int characters;
    double seconds;
    double before, after;
};

TEST(ReadToFile, SpeedIsCorrectedOnlyByRunsFasterThan500CharactersASecond)
{
    const SpeedCase cases[] = {
        {10000, 10, 800, 1000},  // 1000 a second
        {5010, 10, 800, 501},    // just above 500
        {5000, 10, 800, 800},    // 500: kept
        {1000, 10, 800, 800},    // slow run: kept
        {8000, 10, 800, 800},    // the same speed
        {100, 0, 800, 800},      // no time passed
    };
    for (const SpeedCase &c : cases) {
        audio::readToFileVars().CharsPerSecond = c.before;
        audio::CorrectCharsPerSecond(c.characters, c.seconds);
        EXPECT_EQ(audio::readToFileVars().CharsPerSecond, c.after) << c.characters;
    }
    audio::readToFileVars().reset();
}

TEST(ReadToFile, NamesAreCheckedAndTheTemporaryWaveLiesInTheDataFolder)
{
    QTemporaryDir dir;
    ASSERT_TRUE(audiotest::WriteFile(dir.filePath("there.mp3"), "x"));
    const std::pair<QString, bool> valid[] = {
        {dir.filePath("there.mp3"), true}, {dir.filePath("new.mp3"), true}, {dir.filePath("ab"), false},
        {dir.filePath("no/new.mp3"), false}, {"relative.mp3", false}, {"", false},
    };
    for (const auto &[name, expected] : valid)
        EXPECT_EQ(audio::ValidMissingFile(name), expected) << name.toStdString();

    shell::app().AppFolder = dir.path() + "/";
    audio::readToFileVars().reset();
    QString name = "/music/Talk.MP3";
    audio::SetFNameWAV_MP3(name, {});
    EXPECT_EQ(name, "/music/Talk.MP3");
    EXPECT_EQ(audio::readToFileVars().Mp3FileName, "/music/Talk.MP3");
    EXPECT_EQ(audio::readToFileVars().WavFileName, dir.path() + "/Talk.wav");
    EXPECT_TRUE(audio::readToFileVars().MakeMp3);
    name = "/music/talk.txt ";
    audio::SetFNameWAV_MP3(name, {});
    EXPECT_EQ(name, "/music/talk.txt.mp3");
    name = "/music/talk.wav";
    audio::SetFNameWAV_MP3(name, {});
    EXPECT_FALSE(audio::readToFileVars().MakeMp3);
    EXPECT_EQ(audio::readToFileVars().WavFileName, "/music/talk.wav");
    // A name with no folder asks about its wave with an empty name.
    ASSERT_TRUE(audiotest::WriteFile(dir.filePath("bare.wav"), "x"));
    QString asked = "unset";
    name = "bare.mp3";
    audio::SetFNameWAV_MP3(name, [&](const QString &bare) {
        asked = bare;
        return false;
    });
    EXPECT_EQ(asked, "");
    EXPECT_EQ(name, "");
    EXPECT_FALSE(audio::readToFileVars().MakeMp3);  // left as the wave name made it
    shell::app().reset();
    audio::readToFileVars().reset();
}
