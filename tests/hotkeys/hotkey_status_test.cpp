// The whole-macro check: numbered reports, the error lines, and what is never checked.
#include "hotkeys/hotkey_status.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

QString status(const QStringList &lines)
{
    QString text = lines.join(QStringLiteral("\r\n"));
    return hotkeys::HotkeyStatus(text);
}

} // namespace

TEST(HotkeyStatus, CleanEmptyAndCommentOnlyMacrosReportNothing)
{
    EXPECT_EQ(status({}), "");
    EXPECT_EQ(status({"# a note", "#[WAIT 0]", "", "Hello {ENTER}"}), "");
    EXPECT_EQ(status({"[IF A=1]", "  [X=1]", "[ELSE]", "[X=2]", "[ENDIF]", "[CANCEL IF X=2]"}), "");
    EXPECT_EQ(hotkeys::ErrorLineCount(), 0);
}

TEST(HotkeyStatus, EveryLineIsCheckedAndTheErrorsAreNumbered)
{
    const QString report = status({"# two errors", "[WAIT 0.01]", "ok", "", "[ELSE]", "[X=1]"});
    EXPECT_EQ(report, QStringLiteral("1) ERROR line 2 Invalid time (0.1-3600 secs) for [WAIT Sec] statement\r\n"
                                     "2) ERROR line 4 Missing matching [IF Cond] statement\r\n"
                                     "\r\n"
                                     "There were 2 errors found."));
    EXPECT_EQ(hotkeys::ErrorLines(), (QList<int>{2, 4}));  // the blank line went with the tidying

    EXPECT_EQ(status({"[SENDKEYS \"open]"}),
              QStringLiteral("1) ERROR line 1 Missing quote\r\n\r\nThere was 1 error found."));
    EXPECT_EQ(hotkeys::ErrorLines(), QList<int>{1});
}

TEST(HotkeyStatus, ReadAndWriteOnOneFileReportBothLines)
{
    const QString report =
        status({"[OPEN 1 \"a.txt\"]", "[READ 1 X]", "[WRITE 1 Y]", "[CLOSE 1]"});
    EXPECT_EQ(hotkeys::ErrorLines(), (QList<int>{2, 3})) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("Can't mix READ/WRITE statements"))) << report.toStdString();
}

TEST(HotkeyStatus, TheMacroComesBackTidiedAndNumbersCountEveryLine)
{
    QString text = QStringLiteral("  [IF   a = 1 ]\r\n   # note\r\n[ENDIF]");
    EXPECT_EQ(hotkeys::HotkeyStatus(text), "");
    EXPECT_EQ(text, QStringLiteral("[IF a=1]\r\n# note\r\n[ENDIF]\r\n"));
    EXPECT_EQ(hotkeys::AddNumbers(QStringLiteral("a\r\nb")), QStringLiteral("1:a\r\n2:b\r\n"));
}
