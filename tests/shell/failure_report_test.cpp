#include "shell_fixture.h"

#include "shell/failure_report.h"

#include "platform/error_window.h"
#include "platform/services.h"

#include <new>
#include <stdexcept>

TEST(FailureReport, ErrorTextShape)
{
    const QString text = shell::FormatErrorText(QStringLiteral("(Module) modMain::Sub SetDef"),
                                                QStringLiteral("Overflow"), 6);
    EXPECT_EQ(text, QStringLiteral("Error 6 in (Module) modMain::Sub SetDef\r\nwhile running sonamark v%1.%2.%3"
                                   "\r\n\r\nError = 'Overflow'")
                        .arg(SONAMARK_VERSION_MAJOR).arg(SONAMARK_VERSION_MINOR).arg(SONAMARK_VERSION_PATCH));
}

TEST(FailureReport, MailBodyEncodesOnlyLineBreaks)
{
    EXPECT_EQ(shell::EncodeMailBody(QStringLiteral("a b&c?\r\nd\ne")), "a b&c?%0D%0Ad%0D%0Ae");
    const QString url = shell::ErrorReportUrl(QStringLiteral("Error 5\r\nx"));
    EXPECT_TRUE(url.startsWith(QStringLiteral("mailto:") + QLatin1String(shell::kSupportAddress)
                               + "?subject=Sonamark Help - &body=Error 5%0D%0Ax"));
    EXPECT_TRUE(url.endsWith("%0D%0A%0D%0APlease include any comments below."));
}

class GuardTest : public ShellTest {};

TEST_F(GuardTest, FaultIsReportedWithIdentityAndWorkGoesOn)
{
    int after = 0;
    for (int i = 0; i < 3; ++i) {
        shell::Guarded("(Module) modDoHotkeys::Function DoAction", [&] {
            if (i == 1)
                throw std::runtime_error("Subscript out of range");
            ++after;
        });
    }
    EXPECT_EQ(after, 2);
    ASSERT_EQ(fx.errors.reports.size(), 1);
    EXPECT_TRUE(fx.errors.reports[0].contains("in (Module) modDoHotkeys::Function DoAction\r\n"));
    EXPECT_TRUE(fx.errors.reports[0].endsWith("Error = 'Subscript out of range'"));
    EXPECT_EQ(shell::ErrorText(), fx.errors.reports[0]);
}

TEST_F(GuardTest, QuitAfterStartUpRunsTheQuitHandler)
{
    bool quitCalled = false;
    shell::SetQuitHandler([&] { quitCalled = true; });
    shell::app().StartingUp = false;
    fx.errors.answer = platform::ErrorWindow::Choice::Quit;
    shell::ErrorHandler(QStringLiteral("(Form) frmSonamark::Sub X"), QStringLiteral("d"), 1);
    EXPECT_TRUE(quitCalled);
    shell::SetQuitHandler(nullptr);
}

TEST_F(GuardTest, FaultNamesTheInnermostRoutineItLeftAndItsKind)
{
    const auto inner = [] {
        shell::Routine routine("(Module) modX::Function Inner");
        throw std::out_of_range("Subscript out of range");
    };
    shell::Guarded("(Form) frmSonamark::Sub Handler", [&] {
        shell::Routine routine("(Module) modX::Function Outer");
        inner();
    });
    // A routine that finished normally before the fault is not named.
    shell::Guarded("(Form) frmSonamark::Sub Handler", [] {
        { shell::Routine done("(Module) modX::Function Done"); }
        throw std::bad_alloc();
    });
    ASSERT_EQ(fx.errors.reports.size(), 2);
    EXPECT_TRUE(fx.errors.reports[0].startsWith("Error 9 in (Module) modX::Function Inner\r\n"));
    EXPECT_TRUE(fx.errors.reports[1].startsWith("Error 7 in (Form) frmSonamark::Sub Handler\r\n"));
}

TEST(FailureNumbers, FollowTheKindOfFault)
{
    EXPECT_EQ(shell::FailureNumber(std::overflow_error("x")), 6);
    EXPECT_EQ(shell::FailureNumber(std::domain_error("x")), 11);
    EXPECT_EQ(shell::FailureNumber(std::invalid_argument("x")), 5);
    EXPECT_EQ(shell::FailureNumber(std::runtime_error("x")), 440);
}

// An error window that fails again while it is open, as a timer under it might.
class ReenteringErrorWindow : public platform::ErrorWindow {
public:
    QStringList shown;
    Choice showError(const QString &text) override
    {
        shown << text;
        if (shown.size() == 1)
            shell::ErrorHandler(QStringLiteral("(Form) frmSonamark::Sub Timer3_Timer"), QStringLiteral("second"), 5);
        return Choice::Continue;
    }
};

TEST_F(GuardTest, AFailureWhileTheWindowIsOpenIsShownAfterIt)
{
    ReenteringErrorWindow window;
    platform::Services set = platform::services();
    set.errors = &window;
    const platform::Services previous = platform::install(set);
    shell::ErrorHandler(QStringLiteral("(Form) frmSonamark::Sub First"), QStringLiteral("first"), 5);
    platform::install(previous);
    ASSERT_EQ(window.shown.size(), 2);
    EXPECT_TRUE(window.shown[0].endsWith("Error = 'first'"));
    EXPECT_TRUE(window.shown[1].endsWith("Error = 'second'"));
}
